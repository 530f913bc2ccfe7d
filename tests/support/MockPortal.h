#pragma once
// A stand-in for the portal sites on 127.0.0.1 (a free port), for the browser tests: pages
// and replies set by the test, every request recorded. Paths match without the query, so
// "/etaxnew/PopServlet" also serves "/etaxnew/PopServlet?rKey=12".
#include <QAbstractHttpServer>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <functional>

class MockPortal : public QAbstractHttpServer
{
public:
    struct Request {
        QByteArray method;   // "GET", "POST", ...
        QString path;
        QString query;
        QByteArray body;
        QList<QPair<QByteArray, QByteArray>> headers;
        QByteArray header(const QByteArray &name) const;
        // A posted HTML form's field (application/x-www-form-urlencoded), or the query's.
        QString field(const QString &name) const;
    };
    struct Reply {
        int status = 200;
        QByteArray contentType = "text/html; charset=utf-8";
        QByteArray body;
        QList<QByteArray> setCookies;   // one Set-Cookie header each
    };
    using Handler = std::function<Reply(const Request &)>;

    explicit MockPortal(QObject *parent = nullptr) : QAbstractHttpServer(parent) {}

    bool start();
    quint16 port() const { return m_port; }
    QString baseUrl() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }
    QString url(const QString &path) const { return baseUrl() + path; }

    void setPage(const QString &path, const QString &html, const QList<QByteArray> &setCookies = {});
    void setReply(const QString &path, const Reply &reply)
    {
        m_handlers.insert(path, [reply](const Request &) { return reply; });
    }
    void setHandler(const QString &path, Handler handler) { m_handlers.insert(path, std::move(handler)); }

    // The last request to that path; an empty one (no method) when there was none.
    Request lastRequest(const QString &path) const;

protected:
    bool handleRequest(const QHttpServerRequest &request, QTcpSocket *socket) override;
    void missingHandler(const QHttpServerRequest &request, QTcpSocket *socket) override;

private:
    quint16 m_port = 0;
    QHash<QString, Handler> m_handlers;
    QList<Request> m_requests;
};
