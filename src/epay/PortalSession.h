#pragma once
// The opening of an e-filing session and the portal login, step by step through the
// online-action wrapper, with the status texts and failure messages of each step.
// No widgets: the e-pay form passes its wrapper, a progress callback and its cancel flag.
#include "epay/PortalSteps.h"

class PortalSession : public PortalSteps
{
public:
    // browser: the wrapper created by name, or null ("Failed to Create ActiveX Component
    // Object [OOAW]." on open()).
    explicit PortalSession(IOnlineAction *browser, Progress progress = {}, CancelCheck cancelled = {});

    // InitComponent(hostText, "GC", tempFolder, False, 1), the session-expired error
    // locator, the home page and its two-second pause. A wrapper that does not start is
    // told to Quit.
    PortalResult open(const QString &hostText, const QString &tempFolder);
    // From the home page to the dashboard: the login id, the password, a forced login when
    // the portal says the maximum of sessions is reached, the profile update skipped.
    PortalResult login(const QString &loginId, const QString &password);
    // "Opening e-Pay Tax Page ...": the e-File menu and its "e-Pay Tax" button, then a wait
    // for the page of locator.
    PortalResult openEPayTax(const QString &locator);
};
