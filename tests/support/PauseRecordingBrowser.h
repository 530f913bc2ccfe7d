#pragma once
// A real online-action wrapper whose mandated pauses (WaitForSeconds) are recorded instead
// of waited, so that a flow test checks them without sitting through them. Everything
// else goes to the wrapper.
#include "host/IOnlineAction.h"

#include <QList>
#include <memory>

class PauseRecordingBrowser : public IOnlineAction
{
public:
    explicit PauseRecordingBrowser(std::shared_ptr<IOnlineAction> browser) : m_browser(std::move(browser)) {}

    QList<int> pauses;   // seconds, in order

    IOnlineAction &inner() { return *m_browser; }

    using IOnlineAction::SetLblProg;
    bool InitComponent(const QString &hostText, const QString &browserKind, const QString &tempFolder, bool flag,
                       int mode) override
    {
        return m_browser->InitComponent(hostText, browserKind, tempFolder, flag, mode);
    }
    bool InitComponent(const QString &tempFolder, const QString &selectionTitle) override
    {
        return m_browser->InitComponent(tempFolder, selectionTitle);
    }
    QString ComponentType() const override { return m_browser->ComponentType(); }
    QString LastError() const override { return m_browser->LastError(); }
    void SetLblProg(ProgressCallback callback) override { m_browser->SetLblProg(std::move(callback)); }
    void setSinglePageSite(bool on) override { m_browser->setSinglePageSite(on); }
    void setErrorLocators(const QString &locator) override { m_browser->setErrorLocators(locator); }
    QString ErrorLocators() const override { return m_browser->ErrorLocators(); }
    bool OpenURL(const QString &url) override { return m_browser->OpenURL(url); }
    QString WaitForResponsePage(const QString &locator) override { return m_browser->WaitForResponsePage(locator); }
    void WaitForSeconds(int seconds) override { pauses << seconds; }
    OnlineElementPtr getElementByTagOthAttrib(const QString &tag, const QString &attributes,
                                              const QString &values) override
    {
        return m_browser->getElementByTagOthAttrib(tag, attributes, values);
    }
    OnlineElementPtr getElementById(const QString &id) override { return m_browser->getElementById(id); }
    bool ClickAndWait(const OnlineElementPtr &element) override { return m_browser->ClickAndWait(element); }
    bool SubmitAndWait(const OnlineElementPtr &form) override { return m_browser->SubmitAndWait(form); }
    bool FocusAndWait(const OnlineElementPtr &element = {}) override { return m_browser->FocusAndWait(element); }
    bool runScriptAndWait(const QString &script, QVariant *result = nullptr) override
    {
        return m_browser->runScriptAndWait(script, result);
    }
    std::shared_ptr<IOnlineDocument> CreateHtmlDocument() override { return m_browser->CreateHtmlDocument(); }
    IOnlineDriver *objectSWC() override { return m_browser->objectSWC(); }
    QString getCookiesITD() override { return m_browser->getCookiesITD(); }
    void ShowBrowser() override { m_browser->ShowBrowser(); }
    void Quit() override { m_browser->Quit(); }

private:
    std::shared_ptr<IOnlineAction> m_browser;
};
