#include "MockPortal.h"

#include <QHostAddress>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QMetaEnum>
#include <QUrlQuery>

QByteArray MockPortal::Request::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return QByteArray();
}

QString MockPortal::Request::field(const QString &name) const
{
    // Browsers encode a blank as "+", which QUrlQuery leaves alone.
    QByteArray form = header("Content-Type").startsWith("application/x-www-form-urlencoded") ? body : query.toUtf8();
    form.replace('+', ' ');
    return QUrlQuery(QString::fromUtf8(form)).queryItemValue(name, QUrl::FullyDecoded);
}

bool MockPortal::start()
{
    m_port = listen(QHostAddress::LocalHost, 0);
    return m_port != 0;
}

void MockPortal::setPage(const QString &path, const QString &html, const QList<QByteArray> &setCookies)
{
    Reply reply;
    reply.body = html.toUtf8();
    reply.setCookies = setCookies;
    setReply(path, reply);
}

MockPortal::Request MockPortal::lastRequest(const QString &path) const
{
    for (auto it = m_requests.crbegin(); it != m_requests.crend(); ++it)
        if (it->path == path)
            return *it;
    return Request{};
}

bool MockPortal::handleRequest(const QHttpServerRequest &request, QTcpSocket *socket)
{
    Request seen;
    seen.method = QByteArray(QMetaEnum::fromType<QHttpServerRequest::Method>().valueToKey(int(request.method()))).toUpper();
    seen.path = request.url().path();
    seen.query = request.url().query(QUrl::FullyEncoded);
    seen.body = request.body();
    seen.headers = request.headers();
    m_requests.append(seen);
    const auto handler = m_handlers.constFind(seen.path);
    if (handler == m_handlers.cend())
        return false;
    const Reply reply = (*handler)(seen);
    QHttpServerResponder responder = makeResponder(request, socket);
    responder.writeStatusLine(QHttpServerResponder::StatusCode(reply.status));
    responder.writeHeader("Content-Type", reply.contentType);
    responder.writeHeader("Content-Length", QByteArray::number(reply.body.size()));
    responder.writeHeader("Cache-Control", "no-store");
    for (const QByteArray &cookie : reply.setCookies)
        responder.writeHeader("Set-Cookie", cookie);
    responder.writeBody(reply.body);
    return true;
}

void MockPortal::missingHandler(const QHttpServerRequest &request, QTcpSocket *socket)
{
    makeResponder(request, socket).write(QByteArrayLiteral("Not Found"), "text/plain", QHttpServerResponder::StatusCode::NotFound);
}
