// JSON through QJsonDocument: WebDriver speaks strict JSON both ways and script results map
// straight onto QVariant; the project's lenient parser is for the portal's own replies.
#include "host/online/WebDriverSession.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTimer>
#include <QUrl>

#include <csignal>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace {

constexpr int CommandSlackMs = 30000;

void pause(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QString firstLine(const QString &text)
{
    const qsizetype end = text.indexOf(QLatin1Char('\n'));
    return (end < 0 ? text : text.left(end)).trimmed();
}

// Events a page's scripts listen to when the user types or chooses.
const char *const FireScript = "function tdsFire(e, n) { e.dispatchEvent(new Event(n, {bubbles: true})); }";

class WebDriverElement : public IOnlineElement
{
public:
    WebDriverElement(std::weak_ptr<WebDriverSession> session, std::shared_ptr<QString> lastError, QString id)
        : m_session(std::move(session)), m_lastError(std::move(lastError)), m_id(std::move(id))
    {
    }

    QString id() const { return m_id; }

    QString TagName() override
    {
        QJsonValue v;
        auto s = session();
        return s && s->command("GET", elementPath(QStringLiteral("/name")), QJsonValue(), &v)
                   ? v.toString().toUpper() : QString();
    }
    QString Text() override
    {
        return run("var e = arguments[0]; return e.tagName === 'OPTION' ? e.text : e.innerText;").toString();
    }
    QString getAttribute(const QString &name) override
    {
        return run("var e = arguments[0], n = arguments[1];"
                   "if (n === 'value' && 'value' in e) return String(e.value);"
                   "return e.getAttribute(n);", {name}).toString();
    }
    bool SendKeys(const QString &keys) override
    {
        auto s = session();
        return s && s->command("POST", elementPath(QStringLiteral("/value")), QJsonObject{{QStringLiteral("text"), keys}});
    }
    bool Click() override
    {
        auto s = session();
        if (!s)
            return false;
        if (!s->singlePageSite() && s->command("POST", elementPath(QStringLiteral("/click")), QJsonObject{}))
            return true;
        // Overlays and off-screen buttons refuse a pointer click; the page's handler still runs.
        const QString why = s->error();
        if (!s->singlePageSite() && !why.startsWith(QLatin1String("element click intercepted"))
            && !why.startsWith(QLatin1String("element not interactable")))
            return false;
        bool ok = false;
        s->execute(QStringLiteral("arguments[0].click();"), {self()}, &ok);
        return ok;
    }
    QString Value() override { return run("var e = arguments[0]; return 'value' in e ? String(e.value) : '';").toString(); }
    bool setValue(const QString &value) override
    {
        return run("var e = arguments[0]; e.value = arguments[1]; tdsFire(e, 'input'); tdsFire(e, 'change');"
                   "return true;", {value}).toBool();
    }
    bool Checked() override { return run("var e = arguments[0]; return !!(e.checked || e.selected);").toBool(); }
    bool setChecked(bool checked) override
    {
        // A click first, so that the page's own handlers run; the property when a click
        // cannot do it (a radio button is never unchecked by a click).
        return run("var e = arguments[0], v = arguments[1];"
                   "if (e.tagName === 'OPTION') {"
                   "  if (e.selected !== v) { e.selected = v; if (e.parentNode) tdsFire(e.parentNode, 'change'); }"
                   "  return e.selected === v;"
                   "}"
                   "if (!!e.checked !== v) e.click();"
                   "if (!!e.checked !== v) { e.checked = v; tdsFire(e, 'change'); }"
                   "return !!e.checked === v;", {checked}).toBool();
    }
    QList<OnlineElementPtr> Options() override
    {
        auto s = session();
        return s ? s->executeForElements(QStringLiteral("return Array.prototype.slice.call(arguments[0].options || []);"),
                                         {self()})
                 : QList<OnlineElementPtr>();
    }
    QString TextSelected() override
    {
        return run("var s = arguments[0];"
                   "return s.options && s.selectedIndex >= 0 ? s.options[s.selectedIndex].text : '';").toString();
    }
    bool setTextSelected(const QString &text) override
    {
        return run("var s = arguments[0], t = arguments[1].trim();"
                   "for (var i = 0; s.options && i < s.options.length; ++i) {"
                   "  if (s.options[i].text.trim() !== t) continue;"
                   "  if (s.selectedIndex !== i) { s.selectedIndex = i; tdsFire(s, 'input'); tdsFire(s, 'change'); }"
                   "  return true;"
                   "}"
                   "return false;", {text}).toBool();
    }
    OnlineElementPtr Item(const QString &name, int index) override
    {
        auto s = session();
        return s ? s->executeForElement(QStringLiteral(
                                            "var n = arguments[1];"
                                            "var m = Array.prototype.filter.call(arguments[0].elements || [], function (e) {"
                                            "  return e.getAttribute('name') === n || e.id === n; });"
                                            "return m[arguments[2]] || null;"),
                                        {self(), name, index})
                 : nullptr;
    }

private:
    std::shared_ptr<WebDriverSession> session()
    {
        auto s = m_session.lock();
        if (!s || !s->isOpen()) {
            *m_lastError = QStringLiteral("The browser session has ended.");
            return nullptr;
        }
        return s;
    }
    QString elementPath(const QString &tail) const { return QStringLiteral("/element/") + m_id + tail; }
    QVariant self() const
    {
        return QVariant::fromValue(OnlineElementPtr(std::make_shared<WebDriverElement>(m_session, m_lastError, m_id)));
    }
    QVariant run(const char *body, QVariantList args = {})
    {
        auto s = session();
        if (!s)
            return QVariant();
        args.prepend(self());
        return s->execute(QLatin1String(FireScript) + QLatin1String(body), args);
    }

    std::weak_ptr<WebDriverSession> m_session;
    std::shared_ptr<QString> m_lastError;
    QString m_id;
};

int freeLocalPort()
{
    QTcpServer probe;
    if (!probe.listen(QHostAddress::LocalHost, 0))
        return 0;
    return probe.serverPort();
}

} // namespace

WebDriverSession::WebDriverSession(std::shared_ptr<QString> lastError)
    : m_lastError(std::move(lastError))
{
    // The driver is on this machine; a proxy from the environment must not get in between.
    m_network.setProxy(QNetworkProxy::NoProxy);
}

WebDriverSession::~WebDriverSession()
{
    close();
}

QString WebDriverSession::elementKey()
{
    return QStringLiteral("element-6066-11e4-a52e-4f735466cecf");
}

qint64 WebDriverSession::driverPid() const
{
    return m_driver ? m_driver->processId() : 0;
}

bool WebDriverSession::startDriver()
{
    m_port = freeLocalPort();
    if (m_port == 0) {
        setError(QStringLiteral("No free local port for the browser driver."));
        return false;
    }
    m_driver = std::make_unique<QProcess>();
    m_driver->setProgram(m_options.driverPath);
    m_driver->setArguments({QStringLiteral("--port=%1").arg(m_port)});
    m_driver->setProcessChannelMode(QProcess::MergedChannels);
#ifdef Q_OS_LINUX
    // The driver goes with this process even when it dies without cleaning up.
    m_driver->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
#endif
    m_driver->start();
    if (!m_driver->waitForStarted(10000)) {
        setError(QStringLiteral("Cannot start the browser driver %1: %2").arg(m_options.driverPath, m_driver->errorString()));
        m_driver.reset();
        return false;
    }
    const QDeadlineTimer deadline(20000);
    while (!deadline.hasExpired()) {
        QJsonValue status;
        if (request("GET", QStringLiteral("/status"), QJsonValue(), &status, 2000)
            && status.toObject().value(QStringLiteral("ready")).toBool())
            return true;
        if (m_driver->state() == QProcess::NotRunning)
            break;
        pause(100);
    }
    const QString output = QString::fromLocal8Bit(m_driver->readAll()).trimmed().right(400);
    setError(QStringLiteral("The browser driver %1 did not get ready. %2").arg(m_options.driverPath, output));
    stopDriver();
    return false;
}

void WebDriverSession::stopDriver()
{
    if (!m_driver)
        return;
    if (m_driver->state() != QProcess::NotRunning) {
        m_driver->terminate();
        if (!m_driver->waitForFinished(5000)) {
            m_driver->kill();
            m_driver->waitForFinished(2000);
        }
    }
    m_driver.reset();
}

bool WebDriverSession::start(const Options &options)
{
    close();
    m_options = options;
    const QString parent = options.profileParent.isEmpty() ? QDir::tempPath() : options.profileParent;
    QDir().mkpath(parent);
    m_profile = std::make_unique<QTemporaryDir>(parent + QStringLiteral("/tdsbrowser-XXXXXX"));
    if (!m_profile->isValid()) {
        setError(QStringLiteral("Cannot create the browser profile folder in %1.").arg(parent));
        m_profile.reset();
        return false;
    }
    if (!startDriver())
        return false;

    QJsonArray args{QStringLiteral("--user-data-dir=") + m_profile->path(), QStringLiteral("--no-first-run"),
                    QStringLiteral("--no-default-browser-check"), QStringLiteral("--disable-background-networking"),
                    QStringLiteral("--disable-component-update"), QStringLiteral("--disable-sync"),
                    QStringLiteral("--disable-dev-shm-usage")};
    if (::geteuid() == 0)
        args.append(QStringLiteral("--no-sandbox"));   // Chromium refuses to run as root otherwise
    if (options.headless) {
        args.append(QStringLiteral("--headless"));
        args.append(QStringLiteral("--disable-gpu"));
        args.append(QStringLiteral("--window-size=1366,768"));
    }
    const QJsonObject chrome{{QStringLiteral("binary"), options.browserPath},
                             {QStringLiteral("args"), args},
                             // A visible browser outlives the driver, so the user can finish by hand.
                             {QStringLiteral("detach"), !options.headless}};
    const int loadMs = qMax(1, options.pageLoadSeconds) * 1000;
    const QJsonObject capabilities{
        {QStringLiteral("browserName"), QStringLiteral("chrome")},
        {QStringLiteral("pageLoadStrategy"), QStringLiteral("none")},
        // The portal's own alerts and confirmations would otherwise fail the next command.
        {QStringLiteral("unhandledPromptBehavior"), QStringLiteral("accept")},
        {QStringLiteral("timeouts"), QJsonObject{{QStringLiteral("pageLoad"), loadMs},
                                                 {QStringLiteral("script"), CommandSlackMs},
                                                 {QStringLiteral("implicit"), 0}}},
        {QStringLiteral("goog:chromeOptions"), chrome}};
    QJsonValue reply;
    if (!request("POST", QStringLiteral("/session"),
                 QJsonObject{{QStringLiteral("capabilities"), QJsonObject{{QStringLiteral("alwaysMatch"), capabilities}}}},
                 &reply, loadMs + CommandSlackMs)) {
        if (error().contains(QLatin1String("only supports Chrome version")))
            setError(QStringLiteral("Incompatible Version !"));
        stopDriver();
        m_profile.reset();
        return false;
    }
    m_sessionId = reply.toObject().value(QStringLiteral("sessionId")).toString();
    if (m_sessionId.isEmpty()) {
        setError(QStringLiteral("The browser driver gave no session."));
        stopDriver();
        return false;
    }
    return true;
}

void WebDriverSession::close(bool keepBrowser)
{
    const bool leaveOpen = keepBrowser && !m_options.headless && isOpen();
    if (isOpen() && !leaveOpen) {
        request("DELETE", QStringLiteral("/session/") + m_sessionId, QJsonValue(), nullptr, CommandSlackMs);
    }
    m_sessionId.clear();
    stopDriver();
    if (m_profile && leaveOpen)
        m_profile->setAutoRemove(false);   // the running browser still uses it
    m_profile.reset();
}

bool WebDriverSession::request(const QByteArray &method, const QString &path, const QJsonValue &body,
                               QJsonValue *value, int timeoutMs)
{
    QNetworkRequest req(QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path)));
    req.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json; charset=utf-8"));
    req.setTransferTimeout(timeoutMs);
    QByteArray payload;
    if (method == "POST")
        payload = body.isObject() ? QJsonDocument(body.toObject()).toJson(QJsonDocument::Compact) : QByteArrayLiteral("{}");
    QNetworkReply *reply = m_network.sendCustomRequest(req, method, payload);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    const QByteArray data = reply->readAll();
    const auto netError = reply->error();
    const QString netText = reply->errorString();
    reply->deleteLater();

    const QJsonValue answer = QJsonDocument::fromJson(data).object().value(QStringLiteral("value"));
    const QString wireError = answer.toObject().value(QStringLiteral("error")).toString();
    if (!wireError.isEmpty()) {
        const QString message = firstLine(answer.toObject().value(QStringLiteral("message")).toString());
        setError(message.startsWith(wireError) ? message : wireError + QStringLiteral(": ") + message);
        return false;
    }
    if (netError != QNetworkReply::NoError) {
        setError(netError == QNetworkReply::OperationCanceledError || netError == QNetworkReply::TimeoutError
                     ? QStringLiteral("The browser driver did not answer within %1 seconds.").arg(timeoutMs / 1000)
                     : QStringLiteral("The browser driver is not reachable: ") + netText);
        return false;
    }
    if (value)
        *value = answer;
    return true;
}

bool WebDriverSession::command(const QByteArray &method, const QString &path, const QJsonValue &body, QJsonValue *value)
{
    if (!isOpen()) {
        setError(QStringLiteral("The browser is not started."));
        return false;
    }
    return request(method, QStringLiteral("/session/") + m_sessionId + path, body, value,
                   qMax(1, m_options.pageLoadSeconds) * 1000 + CommandSlackMs);
}

QJsonValue WebDriverSession::toWire(const QVariant &value) const
{
    if (value.metaType() == QMetaType::fromType<OnlineElementPtr>()) {
        if (auto *element = dynamic_cast<WebDriverElement *>(value.value<OnlineElementPtr>().get()))
            return QJsonObject{{elementKey(), element->id()}};
        return QJsonValue();
    }
    if (value.typeId() == QMetaType::QVariantList) {
        QJsonArray list;
        for (const QVariant &v : value.toList())
            list.append(toWire(v));
        return list;
    }
    return QJsonValue::fromVariant(value);
}

QVariant WebDriverSession::fromWire(const QJsonValue &value)
{
    if (value.isNull() || value.isUndefined())
        return QVariant();   // a script without a value
    if (value.isArray()) {
        QVariantList list;
        for (const QJsonValue &v : value.toArray())
            list.append(fromWire(v));
        return list;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        if (object.contains(elementKey()))
            return QVariant::fromValue(OnlineElementPtr(
                std::make_shared<WebDriverElement>(weak_from_this(), m_lastError, object.value(elementKey()).toString())));
        QVariantMap map;
        for (auto it = object.begin(); it != object.end(); ++it)
            map.insert(it.key(), fromWire(it.value()));
        return map;
    }
    return value.toVariant();
}

QVariant WebDriverSession::execute(const QString &script, const QVariantList &args, bool *ok)
{
    QJsonArray wireArgs;
    for (const QVariant &a : args)
        wireArgs.append(toWire(a));
    QJsonValue value;
    const bool done = command("POST", QStringLiteral("/execute/sync"),
                              QJsonObject{{QStringLiteral("script"), script}, {QStringLiteral("args"), wireArgs}}, &value);
    if (ok)
        *ok = done;
    return done ? fromWire(value) : QVariant();
}

OnlineElementPtr WebDriverSession::executeForElement(const QString &script, const QVariantList &args)
{
    return execute(script, args).value<OnlineElementPtr>();
}

QList<OnlineElementPtr> WebDriverSession::executeForElements(const QString &script, const QVariantList &args)
{
    QList<OnlineElementPtr> elements;
    for (const QVariant &v : execute(script, args).toList())
        if (auto e = v.value<OnlineElementPtr>())
            elements.append(e);
    return elements;
}

bool WebDriverSession::watchForLeaving(const QString &mark)
{
    // A form posted by a click leaves the page a moment after the click has returned; the
    // page's own navigate event tells that it is on its way (routes within the page do not count).
    bool ok = false;
    execute(QStringLiteral(
                "window.tdsLeaveMark = arguments[0]; window.tdsLeaving = false;"
                "if (!window.tdsWatching) {"
                "  window.tdsWatching = true;"
                "  if (window.navigation) navigation.addEventListener('navigate', function (e) {"
                "    if (!e.destination.sameDocument && !e.downloadRequest) window.tdsLeaving = true; });"
                "  window.addEventListener('beforeunload', function () { window.tdsLeaving = true; });"
                "}"),
            {mark}, &ok);
    return ok;
}

bool WebDriverSession::waitUntilSettled(int timeoutMs, const QString &mark)
{
    // Long enough for a posted form to start leaving (its navigation is planned in a task of
    // its own, after the click has returned); a single-page site posts none.
    const int quietMs = m_singlePage ? 0 : 300;
    const QDeadlineTimer deadline(timeoutMs);
    const QDeadlineTimer quiet(quietMs);
    for (;;) {
        bool ok = false;
        const QVariantList state = execute(
            QStringLiteral("return [document.readyState, window.tdsLeaveMark || '', !!window.tdsLeaving];"), {}, &ok)
                                       .toList();
        // While a navigation is under way the script may fail; that is not the page's answer.
        if (ok && state.size() == 3 && state.at(0).toString() == QLatin1String("complete")) {
            const bool replaced = state.at(1).toString() != mark;
            if (replaced || (!state.at(2).toBool() && quiet.hasExpired())) {
                m_lastError->clear();   // what failed on the way was the navigation, not the call
                return true;
            }
        }
        if (!isOpen())
            return false;
        if (deadline.hasExpired()) {
            setError(QStringLiteral("The page did not finish loading within %1 seconds.").arg(timeoutMs / 1000));
            return false;
        }
        pause(50);
    }
}

OnlineElementPtr WebDriverSession::findBy(const QString &strategy, const QString &value)
{
    QJsonValue found;
    if (!command("POST", QStringLiteral("/element"),
                 QJsonObject{{QStringLiteral("using"), strategy}, {QStringLiteral("value"), value}}, &found))
        return nullptr;
    return fromWire(found).value<OnlineElementPtr>();
}

OnlineElementPtr WebDriverSession::findelementbyid(const QString &id)
{
    bool ok = false;
    auto e = execute(QStringLiteral("return document.getElementById(arguments[0]);"), {id}, &ok).value<OnlineElementPtr>();
    if (ok && !e)
        setError(QStringLiteral("No element with the id \"%1\".").arg(id));
    return e;
}

QList<OnlineElementPtr> WebDriverSession::findelementsbytagname(const QString &tag)
{
    QJsonValue found;
    if (!command("POST", QStringLiteral("/elements"),
                 QJsonObject{{QStringLiteral("using"), QStringLiteral("tag name")}, {QStringLiteral("value"), tag}}, &found))
        return {};
    QList<OnlineElementPtr> elements;
    for (const QVariant &v : fromWire(found).toList())
        elements.append(v.value<OnlineElementPtr>());
    return elements;
}

QList<OnlineElementPtr> WebDriverSession::findelementsbyclassname(const QString &className)
{
    return executeForElements(
        QStringLiteral("return Array.prototype.slice.call(document.getElementsByClassName(arguments[0]));"), {className});
}

OnlineElementPtr WebDriverSession::findElementByxpath(const QString &xpath)
{
    return findBy(QStringLiteral("xpath"), xpath);
}

QVariant WebDriverSession::executeScript(const QString &script, const QVariantList &args)
{
    return execute(script, args);
}

QString WebDriverSession::getCookieByName(const QString &name)
{
    QJsonValue cookie;
    if (!command("GET", QStringLiteral("/cookie/") + QString::fromLatin1(QUrl::toPercentEncoding(name)), QJsonValue(), &cookie))
        return QString();
    return cookie.toObject().value(QStringLiteral("value")).toString();
}

QString WebDriverSession::cookieHeader()
{
    QJsonValue cookies;
    if (!command("GET", QStringLiteral("/cookie"), QJsonValue(), &cookies))
        return QString();
    QStringList pairs;
    for (const QJsonValue &c : cookies.toArray())
        pairs.append(c.toObject().value(QStringLiteral("name")).toString() + QLatin1Char('=')
                     + c.toObject().value(QStringLiteral("value")).toString());
    return pairs.join(QStringLiteral("; "));
}
