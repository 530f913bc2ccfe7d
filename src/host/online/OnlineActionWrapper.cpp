#include "host/online/OnlineActionWrapper.h"

#include "host/Settings.h"
#include "host/online/PageLocator.h"
#include "host/online/WebDriverSession.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonArray>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QUuid>

namespace {

void pause(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Where the browser stood, for messages: the query may carry keys and is left out.
QString shownUrl(const QString &url)
{
    return QUrl(url).adjusted(QUrl::RemoveQuery).toString();
}

bool sessionGone(const QString &error)
{
    return error.startsWith(QLatin1String("invalid session id")) || error.startsWith(QLatin1String("no such window"))
           || error.startsWith(QLatin1String("The browser driver is not reachable"));
}

class HtmlDocument : public IOnlineDocument
{
public:
    explicit HtmlDocument(std::weak_ptr<WebDriverSession> session) : m_session(std::move(session)) {}

    OnlineElementPtr Forms(const QString &name, int index) override
    {
        auto s = m_session.lock();
        if (!s)
            return nullptr;
        return s->executeForElement(PageLocators::finderScript()
                                        + QStringLiteral("return tdsNamed(document.forms, arguments[0])[arguments[1]] || null;"),
                                    {name, index});
    }
    OnlineElementPtr getElementById(const QString &id) override
    {
        auto s = m_session.lock();
        return s ? s->findelementbyid(id) : nullptr;
    }

private:
    std::weak_ptr<WebDriverSession> m_session;
};

} // namespace

void IOnlineAction::SetLblProg(QLabel *label, float width)
{
    QPointer<QLabel> target(label);
    const int pixels = int(width);
    SetLblProg([target, pixels](const QString &text) {
        if (target)
            target->setText(pixels > 0 ? target->fontMetrics().elidedText(text, Qt::ElideRight, pixels) : text);
    });
}

OnlineActionWrapper::OnlineActionWrapper()
    : m_lastError(std::make_shared<QString>())
{
}

OnlineActionWrapper::~OnlineActionWrapper()
{
    if (m_session)
        m_session->close(m_handedOver);
}

std::shared_ptr<HostService> createOnlineAction()
{
    return std::make_shared<OnlineActionWrapper>();
}

bool OnlineActionWrapper::InitComponent(const QString &hostText, const QString &browserKind, const QString &tempFolder,
                                        bool flag, int mode)
{
    // The host's text and the last two arguments select nothing for Chromium.
    Q_UNUSED(hostText);
    Q_UNUSED(flag);
    Q_UNUSED(mode);
    m_lastError->clear();
    if (browserKind.trimmed().compare(QLatin1String("GC"), Qt::CaseInsensitive) != 0) {
        *m_lastError = QStringLiteral("Browser \"%1\" is not supported; only \"GC\" (Chromium) is.").arg(browserKind);
        return false;
    }
    return startBrowser(tempFolder);
}

bool OnlineActionWrapper::InitComponent(const QString &tempFolder, const QString &selectionTitle)
{
    Q_UNUSED(selectionTitle);   // one browser: nothing to choose
    m_lastError->clear();
    return startBrowser(tempFolder);
}

bool OnlineActionWrapper::startBrowser(const QString &tempFolder)
{
    Quit();
    m_lastError->clear();
    WebDriverSession::Options options;
    options.driverPath = Settings::driverPath();
    options.browserPath = Settings::browserPath();
    options.profileParent = tempFolder;
    // Without a display a visible browser cannot start at all.
    options.headless = Settings::headless()
                       || (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
    options.pageLoadSeconds = Settings::pageWaitSeconds();
    for (const auto &[path, what] : {std::pair{options.driverPath, "browser driver"}, std::pair{options.browserPath, "browser"}}) {
        if (!QFileInfo(path).isExecutable()) {
            *m_lastError = QStringLiteral("The %1 \"%2\" is not installed (settings browser/path, browser/driverPath).")
                               .arg(QLatin1String(what), path);
            return false;
        }
    }
    progress(QStringLiteral("Starting Browser ..."));
    m_session = std::make_shared<WebDriverSession>(m_lastError);
    m_session->setSinglePageSite(m_singlePage);
    m_handedOver = false;
    if (!m_session->start(options)) {
        m_session.reset();
        return false;
    }
    return true;
}

QString OnlineActionWrapper::ComponentType() const
{
    return QStringLiteral("GC");
}

QString OnlineActionWrapper::LastError() const
{
    return *m_lastError;
}

void OnlineActionWrapper::SetLblProg(ProgressCallback callback)
{
    m_progress = std::move(callback);
}

void OnlineActionWrapper::progress(const QString &text)
{
    if (m_progress)
        m_progress(text);
}

void OnlineActionWrapper::setErrorLocators(const QString &locator)
{
    m_errorLocators = locator;
}

QString OnlineActionWrapper::ErrorLocators() const
{
    return m_errorLocators;
}

int OnlineActionWrapper::waitMs() const
{
    return Settings::pageWaitSeconds() * 1000;
}

bool OnlineActionWrapper::ready()
{
    m_lastError->clear();
    if (m_session && m_session->isOpen())
        return true;
    *m_lastError = QStringLiteral("The browser is not started.");
    return false;
}

void OnlineActionWrapper::setSinglePageSite(bool on)
{
    m_singlePage = on;
    if (m_session)
        m_session->setSinglePageSite(on);
}

bool OnlineActionWrapper::OpenURL(const QString &url)
{
    return ready() && m_session->command("POST", QStringLiteral("/url"), QJsonObject{{QStringLiteral("url"), url}});
}

QString OnlineActionWrapper::WaitForResponsePage(const QString &locator)
{
    const QString failed = QStringLiteral("ERROR");
    if (!ready())
        return failed;
    PageLocator wanted;
    PageLocator errorPage;
    QString why;
    if (!PageLocators::parse(locator, wanted, &why)) {
        *m_lastError = QStringLiteral("Invalid page locator: ") + why;
        return failed;
    }
    const bool withErrorPage = !m_errorLocators.isEmpty();
    if (withErrorPage && !PageLocators::parse(m_errorLocators, errorPage, &why)) {
        *m_lastError = QStringLiteral("Invalid error locator: ") + why;
        return failed;
    }
    QList<const PageLocator *> checked{&wanted};
    if (withErrorPage)
        checked.append(&errorPage);
    const QVariantList argument{PageLocators::probeArgument(checked).toVariantList()};
    const QString script = PageLocators::probeScript();
    const int timeoutMs = waitMs();
    const int pollMs = Settings::pagePollMilliseconds();
    const QDeadlineTimer deadline(timeoutMs);
    QString lastUrl;
    int shownSeconds = -1;
    for (;;) {
        bool ok = false;
        const QVariant result = m_session->execute(script, argument, &ok);
        PageProbe probe;
        if (ok && PageLocators::readProbe(result, int(checked.size()), probe)) {
            lastUrl = probe.url;
            switch (PageLocators::judge(wanted, withErrorPage ? &errorPage : nullptr, probe)) {
            case PageVerdict::ErrorPage:
                *m_lastError = QStringLiteral("The page shows the error \"%1\" (%2).").arg(m_errorLocators, shownUrl(lastUrl));
                return failed;
            case PageVerdict::Matched:
                m_lastError->clear();
                return QStringLiteral("OK");
            case PageVerdict::Pending:
                break;
            }
        } else if (sessionGone(*m_lastError)) {
            return failed;
        }
        // Otherwise a page in the middle of loading: try again.
        if (deadline.hasExpired()) {
            *m_lastError = QStringLiteral("Timed out after %1 seconds waiting for the page \"%2\"; the browser shows %3.")
                               .arg(timeoutMs / 1000)
                               .arg(locator, lastUrl.isEmpty() ? QStringLiteral("no page") : shownUrl(lastUrl));
            return QStringLiteral("TIMEOUT");
        }
        const int secondsLeft = int((deadline.remainingTime() + 999) / 1000);
        if (secondsLeft != shownSeconds) {
            shownSeconds = secondsLeft;
            progress(QStringLiteral("Waiting for Page ... %1").arg(secondsLeft));
        }
        pause(pollMs);
    }
}

void OnlineActionWrapper::WaitForSeconds(int seconds)
{
    if (seconds > 0)
        pause(seconds * 1000);
}

OnlineElementPtr OnlineActionWrapper::getElementByTagOthAttrib(const QString &tag, const QString &attributes,
                                                               const QString &values)
{
    if (!ready())
        return nullptr;
    QStringList names = attributes.split(QLatin1Char(','));
    for (QString &n : names)
        n = n.trimmed();
    // One attribute takes the whole value, commas and all.
    QStringList wanted = names.size() == 1 ? QStringList{values} : values.split(QLatin1Char(','));
    if (wanted.size() != names.size()) {
        *m_lastError = QStringLiteral("%1 attributes but %2 values: \"%3\" / \"%4\"")
                           .arg(names.size()).arg(wanted.size()).arg(attributes, values);
        return nullptr;
    }
    for (QString &w : wanted)
        w = w.simplified();
    bool ok = false;
    auto element = m_session->execute(
        QStringLiteral("var all = document.getElementsByTagName(arguments[0]), names = arguments[1], values = arguments[2];"
                       "for (var i = 0; i < all.length; ++i) {"
                       "  var hit = true;"
                       "  for (var j = 0; hit && j < names.length; ++j) {"
                       "    var v = all[i].getAttribute(names[j]);"
                       "    hit = v !== null && v.replace(/\\s+/g, ' ').trim() === values[j];"
                       "  }"
                       "  if (hit) return all[i];"
                       "}"
                       "return null;"),
        {tag, names, wanted}, &ok).value<OnlineElementPtr>();
    if (ok && !element)
        *m_lastError = QStringLiteral("No %1 element with %2 \"%3\".").arg(tag, attributes, values);
    return element;
}

OnlineElementPtr OnlineActionWrapper::getElementById(const QString &id)
{
    return ready() ? m_session->findelementbyid(id) : nullptr;
}

bool OnlineActionWrapper::actAndWait(const std::function<bool()> &action)
{
    const QString mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return m_session->watchForLeaving(mark) && action() && m_session->waitUntilSettled(waitMs(), mark);
}

bool OnlineActionWrapper::ClickAndWait(const OnlineElementPtr &element)
{
    if (!ready())
        return false;
    if (!element) {
        *m_lastError = QStringLiteral("No element to click.");
        return false;
    }
    return actAndWait([&] { return element->Click(); });
}

bool OnlineActionWrapper::SubmitAndWait(const OnlineElementPtr &form)
{
    if (!ready())
        return false;
    if (!form) {
        *m_lastError = QStringLiteral("No form to submit.");
        return false;
    }
    // The prototype's submit: a field named "submit" hides the form's own.
    return actAndWait([&] {
        bool ok = false;
        m_session->execute(QStringLiteral("HTMLFormElement.prototype.submit.call(arguments[0]);"),
                           {QVariant::fromValue(form)}, &ok);
        return ok;
    });
}

bool OnlineActionWrapper::FocusAndWait(const OnlineElementPtr &element)
{
    if (!ready())
        return false;
    return actAndWait([&] {
        bool ok = false;
        if (element)
            m_session->execute(QStringLiteral("arguments[0].focus();"), {QVariant::fromValue(element)}, &ok);
        else
            m_session->execute(QStringLiteral("window.focus();"), {}, &ok);
        return ok;
    });
}

bool OnlineActionWrapper::runScriptAndWait(const QString &script, QVariant *result)
{
    if (!ready())
        return false;
    return actAndWait([&] {
        bool ok = false;
        const QVariant value = m_session->execute(script, {}, &ok);
        if (result)
            *result = value;
        return ok;
    });
}

std::shared_ptr<IOnlineDocument> OnlineActionWrapper::CreateHtmlDocument()
{
    return ready() ? std::make_shared<HtmlDocument>(m_session) : nullptr;
}

IOnlineDriver *OnlineActionWrapper::objectSWC()
{
    return m_session && m_session->isOpen() ? m_session.get() : nullptr;
}

QString OnlineActionWrapper::getCookiesITD()
{
    return ready() ? m_session->cookieHeader() : QString();
}

void OnlineActionWrapper::ShowBrowser()
{
    if (!m_session || !m_session->isOpen())
        return;
    m_handedOver = true;
    // The failure the form is reporting stays the last error.
    const QString kept = *m_lastError;
    m_session->command("POST", QStringLiteral("/window/maximize"), QJsonObject{});
    *m_lastError = kept;
}

void OnlineActionWrapper::Quit()
{
    if (m_session)
        m_session->close();
    m_session.reset();
    m_handedOver = false;
}
