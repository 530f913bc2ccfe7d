#include "epay/PortalSteps.h"

PortalSteps::PortalSteps(IOnlineAction *browser, Progress progress, CancelCheck cancelled)
    : m_browser(browser), m_progress(std::move(progress)), m_cancelled(std::move(cancelled))
{
}

void PortalSteps::progress(const QString &text) const
{
    if (m_progress)
        m_progress(text);
}

void PortalSteps::keepOut(const QString &secret)
{
    // Shorter texts would blank out ordinary words of a message.
    if (secret.size() >= 4 && !m_secrets.contains(secret))
        m_secrets << secret;
}

QString PortalSteps::scrubbed(QString text) const
{
    for (const QString &secret : m_secrets)
        text.replace(secret, QStringLiteral("********"));
    return text;
}

bool PortalSteps::noBrowser(PortalResult &result) const
{
    if (m_browser)
        return false;
    const QString text = QStringLiteral("Failed to Create ActiveX Component Object [OOAW].");
    result = failWith(text, text);
    return true;
}

PortalResult PortalSteps::cancel() const
{
    PortalResult result;
    result.outcome = PortalResult::Outcome::Cancelled;
    return result;
}

PortalResult PortalSteps::fail(const QString &failure) const
{
    return fail(failure, m_browser ? m_browser->LastError() : QString());
}

PortalResult PortalSteps::fail(const QString &failure, const QString &lastError) const
{
    return failWith(failure, failure + QStringLiteral("\r\n\r\n") + lastError);
}

PortalResult PortalSteps::failWith(const QString &failure, const QString &message) const
{
    PortalResult result;
    result.outcome = PortalResult::Outcome::Failed;
    result.failure = failure;
    result.message = scrubbed(message);
    return result;
}

bool PortalSteps::waitFor(const QString &locator) const
{
    return m_browser->WaitForResponsePage(locator) == QLatin1String("OK");
}

bool PortalSteps::clickAndWait(const OnlineElementPtr &element) const
{
    return element && m_browser->ClickAndWait(element);
}

OnlineElementPtr PortalSteps::buttonOfClass(const QString &className) const
{
    return m_browser->getElementByTagOthAttrib(QStringLiteral("button"), QStringLiteral("class"), className);
}

void PortalSteps::script(const QString &text) const
{
    // Scrolling only brings the next control into view; its result does not matter.
    if (IOnlineDriver *driver = m_browser->objectSWC())
        driver->executeScript(text);
}
