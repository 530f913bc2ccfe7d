#pragma once
// What the portal steps have in common: the status text before each step, the cancel flag
// tested before it acts, and the failure message (the step's text, CR LF, CR LF, the
// wrapper's last error). The caller shows a failure and then calls ShowBrowser, so that
// the user sees the page where the run stopped.
#include "host/IOnlineAction.h"

#include <QString>
#include <QStringList>
#include <functional>

struct PortalResult
{
    enum class Outcome { Done, Failed, Cancelled };

    Outcome outcome = Outcome::Done;
    QString failure;   // the step's own text: "Failed to Verify 'Welcome' Page !"
    QString message;   // what the user is shown
    QString detail;    // what the site answered, for the log

    bool ok() const { return outcome == Outcome::Done; }
    bool failed() const { return outcome == Outcome::Failed; }
    bool cancelled() const { return outcome == Outcome::Cancelled; }
};

class PortalSteps
{
public:
    using Progress = std::function<void(const QString &)>;
    // The form's FlagCancel, read before every step.
    using CancelCheck = std::function<bool()>;

    PortalSteps(IOnlineAction *browser, Progress progress, CancelCheck cancelled);

protected:
    bool cancelled() const { return m_cancelled && m_cancelled(); }
    void progress(const QString &text) const;
    // A text that must never reach a message (a password, a session token).
    void keepOut(const QString &secret);

    PortalResult cancel() const;
    // failure + CR LF + CR LF + lastError (the wrapper's, when not given).
    PortalResult fail(const QString &failure) const;
    PortalResult fail(const QString &failure, const QString &lastError) const;
    // A message that stands on its own.
    PortalResult failWith(const QString &failure, const QString &message) const;

    bool waitFor(const QString &locator) const;
    bool clickAndWait(const OnlineElementPtr &element) const;
    OnlineElementPtr buttonOfClass(const QString &className) const;
    void script(const QString &text) const;

    // The text with every kept-out secret blanked.
    QString scrubbed(QString text) const;
    // Null when no wrapper was created: the failure of its creation.
    bool noBrowser(PortalResult &result) const;

    IOnlineAction *m_browser;

private:

    Progress m_progress;
    CancelCheck m_cancelled;
    QStringList m_secrets;
};
