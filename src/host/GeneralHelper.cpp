#include "host/GeneralHelper.h"

#include "host/AmountWords.h"
#include "host/Settings.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace {
const QString ErrorMark = QStringLiteral("#ERROR;");
}

QString GeneralHelper::HttpPost(const QString &url, const QString &authorization, const QString &cookies,
                                const QString &body, const QString &contentType, const QString &extraHeaders)
{
    const QUrl address(url, QUrl::StrictMode);
    if (!address.isValid() || address.scheme().isEmpty() || address.host().isEmpty())
        return ErrorMark + QStringLiteral("Not an address: ") + url;

    QNetworkRequest request(address);
    request.setHeader(QNetworkRequest::ContentTypeHeader, contentType.toUtf8());
    if (!authorization.isEmpty())
        request.setRawHeader("Authorization", authorization.toUtf8());
    // The session's cookies go as they are; the manager's own jar stays empty.
    if (!cookies.isEmpty())
        request.setRawHeader("Cookie", cookies.toUtf8());
    for (const QString &line : extraHeaders.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        const qsizetype colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0)
            request.setRawHeader(line.left(colon).trimmed().toUtf8(), line.mid(colon + 1).trimmed().toUtf8());
    }
    const int timeoutMs = Settings::pageWaitSeconds() * 1000;
    request.setTransferTimeout(timeoutMs);

    QNetworkAccessManager network;
    QNetworkReply *reply = network.post(request, body.toUtf8());
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    const QByteArray answer = reply->readAll();
    const auto error = reply->error();
    const QString why = reply->errorString();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    delete reply;

    // An error status with a body is the site's answer: its "errors" say what was wrong.
    if (status != 0 && !answer.isEmpty())
        return QString::fromUtf8(answer);
    if (error == QNetworkReply::OperationCanceledError || error == QNetworkReply::TimeoutError)
        return ErrorMark + QStringLiteral("No answer from %1 within %2 seconds.").arg(address.host()).arg(timeoutMs / 1000);
    if (error != QNetworkReply::NoError)
        return ErrorMark + why;
    return QString::fromUtf8(answer);
}

QString GeneralHelper::ConvertToWord(const QString &amount)
{
    QString words = AmountWords::ConvertToWord(amount);
    if (words.startsWith(QLatin1String("Rupees ")))
        words.remove(0, 7);
    return words;
}

std::shared_ptr<HostService> createGeneralHelper()
{
    return std::make_shared<GeneralHelper>();
}
