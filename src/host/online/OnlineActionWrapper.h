#pragma once
// The real online-action wrapper: Chromium through chromedriver (WebDriver). Paths, the page
// wait, the polling interval and headless mode come from the settings (browser/...).
#include "host/IOnlineAction.h"

#include <functional>
#include <memory>

class WebDriverSession;

class OnlineActionWrapper : public IOnlineAction
{
public:
    OnlineActionWrapper();
    // Closes the browser, unless it was handed to the user (ShowBrowser) and is visible.
    ~OnlineActionWrapper() override;

    using IOnlineAction::SetLblProg;

    bool InitComponent(const QString &hostText, const QString &browserKind, const QString &tempFolder, bool flag,
                       int mode) override;
    bool InitComponent(const QString &tempFolder, const QString &selectionTitle) override;
    QString ComponentType() const override;
    QString LastError() const override;
    void SetLblProg(ProgressCallback callback) override;
    void setSinglePageSite(bool on) override;
    void setErrorLocators(const QString &locator) override;
    QString ErrorLocators() const override;

    bool OpenURL(const QString &url) override;
    QString WaitForResponsePage(const QString &locator) override;
    void WaitForSeconds(int seconds) override;

    OnlineElementPtr getElementByTagOthAttrib(const QString &tag, const QString &attributes,
                                              const QString &values) override;
    OnlineElementPtr getElementById(const QString &id) override;
    bool ClickAndWait(const OnlineElementPtr &element) override;
    bool SubmitAndWait(const OnlineElementPtr &form) override;
    bool FocusAndWait(const OnlineElementPtr &element = {}) override;
    bool runScriptAndWait(const QString &script, QVariant *result = nullptr) override;
    std::shared_ptr<IOnlineDocument> CreateHtmlDocument() override;

    IOnlineDriver *objectSWC() override;
    QString getCookiesITD() override;

    void ShowBrowser() override;
    void Quit() override;

    // The running session (null when none): its driver process and browser profile.
    WebDriverSession *session() const { return m_session.get(); }

private:
    bool startBrowser(const QString &tempFolder);
    bool ready();
    // Runs the action and waits for the page it may have changed.
    bool actAndWait(const std::function<bool()> &action);
    void progress(const QString &text);
    int waitMs() const;

    std::shared_ptr<QString> m_lastError;
    std::shared_ptr<WebDriverSession> m_session;
    ProgressCallback m_progress;
    QString m_errorLocators;
    bool m_handedOver = false;
    bool m_singlePage = false;
};

std::shared_ptr<HostService> createOnlineAction();
