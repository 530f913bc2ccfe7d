#pragma once
// A W3C WebDriver session: chromedriver started as a child process on a free local port,
// Chromium driven through it over HTTP. Calls are synchronous; while one waits, window
// events go on (the forms' cancel buttons stay alive).
#include "host/IOnlineAction.h"

#include <QJsonValue>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>

class WebDriverSession : public IOnlineDriver, public std::enable_shared_from_this<WebDriverSession>
{
public:
    struct Options {
        QString driverPath;
        QString browserPath;
        QString profileParent;   // the browser's profile is made in here
        bool headless = false;
        int pageLoadSeconds = 60;
    };

    // Failures are written to *lastError, which the wrapper shares.
    explicit WebDriverSession(std::shared_ptr<QString> lastError);
    ~WebDriverSession() override;

    bool start(const Options &options);
    // Ends the session and stops the driver. keepBrowser leaves a visible browser running
    // for the user (it was started detached from the driver).
    void close(bool keepBrowser = false);
    bool isOpen() const { return !m_sessionId.isEmpty(); }
    // See IOnlineAction::setSinglePageSite.
    void setSinglePageSite(bool on) { m_singlePage = on; }
    bool singlePageSite() const { return m_singlePage; }
    QString profileDir() const { return m_profile ? m_profile->path() : QString(); }
    qint64 driverPid() const;

    // A command on the session ("POST", "/url", {url}); *value gets the reply's value.
    bool command(const QByteArray &method, const QString &path, const QJsonValue &body = QJsonValue(),
                 QJsonValue *value = nullptr);
    QVariant execute(const QString &script, const QVariantList &args, bool *ok = nullptr);
    OnlineElementPtr executeForElement(const QString &script, const QVariantList &args);
    QList<OnlineElementPtr> executeForElements(const QString &script, const QVariantList &args);
    // Before an action that may change the page: marks the document and watches whether it
    // starts to leave.
    bool watchForLeaving(const QString &mark);
    // After it: until a new document has replaced the marked one and loaded, or, when the
    // page did not start to leave, until it has loaded itself.
    bool waitUntilSettled(int timeoutMs, const QString &mark);

    void setError(const QString &text) { *m_lastError = text; }
    QString error() const { return *m_lastError; }

    // IOnlineDriver
    OnlineElementPtr findelementbyid(const QString &id) override;
    QList<OnlineElementPtr> findelementsbytagname(const QString &tag) override;
    QList<OnlineElementPtr> findelementsbyclassname(const QString &className) override;
    OnlineElementPtr findElementByxpath(const QString &xpath) override;
    QVariant executeScript(const QString &script, const QVariantList &args = {}) override;
    QString getCookieByName(const QString &name) override;

    QString cookieHeader();

    // The wire form of an element reference.
    static QString elementKey();

private:
    bool request(const QByteArray &method, const QString &path, const QJsonValue &body, QJsonValue *value,
                 int timeoutMs);
    bool startDriver();
    void stopDriver();
    QJsonValue toWire(const QVariant &value) const;
    QVariant fromWire(const QJsonValue &value);
    OnlineElementPtr findBy(const QString &strategy, const QString &value);

    std::shared_ptr<QString> m_lastError;
    Options m_options;
    std::unique_ptr<QProcess> m_driver;
    std::unique_ptr<QTemporaryDir> m_profile;
    QNetworkAccessManager m_network;
    int m_port = 0;
    QString m_sessionId;
    bool m_singlePage = false;
};
