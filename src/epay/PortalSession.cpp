#include "epay/PortalSession.h"

#include "epay/PortalPages.h"

PortalSession::PortalSession(IOnlineAction *browser, Progress progress, CancelCheck cancelled)
    : PortalSteps(browser, std::move(progress), std::move(cancelled))
{
}

PortalResult PortalSession::open(const QString &hostText, const QString &tempFolder)
{
    PortalResult missing;
    if (noBrowser(missing))
        return missing;
    if (cancelled())
        return cancel();
    if (!m_browser->InitComponent(hostText, QStringLiteral("GC"), tempFolder, false, 1)) {
        const QString why = m_browser->LastError();
        const PortalResult result =
            why == QLatin1String("Incompatible Version !")
                ? failWith(QStringLiteral("Incompatible Version of Component [OOAW] !"),
                           QStringLiteral("Incompatible Version of Component [OOAW] !\r\n\r\nPlease update the latest software."))
                : failWith(QStringLiteral("Failed to Initialize Component [OOAW] !"),
                           QStringLiteral("Failed to Initialize Component [OOAW] !\r\n\r\nError: ") + why);
        m_browser->Quit();
        return result;
    }
    m_browser->setErrorLocators(PortalPages::sessionExpiredLocator());
    // The portal is one page whose routes change; its controls answer the click event.
    m_browser->setSinglePageSite(true);

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Home Page ..."));
    if (!m_browser->OpenURL(PortalPages::homeAddress()))
        return fail(QStringLiteral("Failed to Open Home Page !"));
    if (!waitFor(PortalPages::homeLocator()))
        return fail(QStringLiteral("Failed to Verify 'Home' Page !"));
    m_browser->WaitForSeconds(2);
    return {};
}

PortalResult PortalSession::login(const QString &loginId, const QString &password)
{
    keepOut(password);
    PortalResult missing;
    if (noBrowser(missing))
        return missing;
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Login Home Page ..."));
    const auto loginLink = m_browser->getElementByTagOthAttrib(QStringLiteral("a"), QStringLiteral("href"),
                                                               PortalPages::loginAddress());
    if (!clickAndWait(loginLink))
        return fail(QStringLiteral("Failed to Open 'Login Home' Page !"));
    if (!waitFor(PortalPages::loginLocator()))
        return fail(QStringLiteral("Failed to Verify 'Login Home' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Filling Login Id ..."));
    IOnlineDriver *driver = m_browser->objectSWC();
    const auto userField = driver ? driver->findelementbyid(QStringLiteral("panAdhaarUserId")) : nullptr;
    if (!userField || !userField->SendKeys(loginId)
        || !clickAndWait(buttonOfClass(QStringLiteral("large-button-primary width marTop16"))))
        return fail(QStringLiteral("Failed to Open 'Filling Login Id' Page !"));
    if (!waitFor(PortalPages::passwordLocator()))
        return fail(QStringLiteral("Failed to Verify 'Filling Login Id' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Filling Login Password ..."));
    const auto secureAccess = m_browser->getElementById(QStringLiteral("passwordCheckBox"));
    const auto passwordField = driver->findelementbyid(QStringLiteral("loginPasswordField"));
    if (!secureAccess || !secureAccess->setChecked(true) || !passwordField || !passwordField->SendKeys(password))
        return fail(QStringLiteral("Failed to 'Login' !"));
    m_browser->WaitForSeconds(7);
    if (!clickAndWait(buttonOfClass(QStringLiteral("large-button-primary width marTop26"))))
        return fail(QStringLiteral("Failed to 'Login' !"));

    if (!waitFor(PortalPages::dashboardLocator())) {
        // The probe below replaces the wrapper's last error; the wait's is the one to show.
        const QString why = m_browser->LastError();
        if (!driver->findelementbyid(QStringLiteral("loginMaxAttemptsPopup")))
            return fail(QStringLiteral("Failed to Verify 'Welcome' Page !"), why);
        if (cancelled())
            return cancel();
        progress(QStringLiteral("Forced Login ..."));
        if (!clickAndWait(buttonOfClass(QStringLiteral("defaultButton primaryButton primaryBtnMargin"))))
            return fail(QStringLiteral("Failed to 'Forced Login' !"));
        if (!waitFor(PortalPages::dashboardLocator()))
            return fail(QStringLiteral("Failed to Verify 'Welcome' Page !"));
    }

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Skip Profile Update ..."));
    if (!clickAndWait(buttonOfClass(QStringLiteral("largeButton secondaryButton"))))
        return fail(QStringLiteral("Failed to 'Skip Profile' !"));
    if (!waitFor(PortalPages::dashboardLocator()))
        return fail(QStringLiteral("Failed to Verify 'Skip Profile' Page !"));
    return {};
}

PortalResult PortalSession::openEPayTax(const QString &locator)
{
    PortalResult missing;
    if (noBrowser(missing))
        return missing;
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening e-Pay Tax Page ..."));
    script(QStringLiteral("scroll(0, -250);"));
    IOnlineDriver *driver = m_browser->objectSWC();
    if (!driver || !clickAndWait(driver->findElementByxpath(QStringLiteral("//span[contains(.,\" e-File \")]"))))
        return fail(QStringLiteral("Failed to Open 'e-Pay Tax' !"));
    OnlineElementPtr ePayTax;
    for (const auto &button : driver->findelementsbytagname(QStringLiteral("button")))
        if (button->Text().trimmed() == QLatin1String("e-Pay Tax")) {
            ePayTax = button;
            break;
        }
    if (!clickAndWait(ePayTax))
        return fail(QStringLiteral("Failed to Open 'e-Pay Tax' !"));
    if (!waitFor(locator))
        return fail(QStringLiteral("Failed to Verify 'e-Pay Tax' Page !"));
    return {};
}
