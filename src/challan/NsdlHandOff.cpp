#include "challan/NsdlHandOff.h"

#include "host/IOnlineAction.h"
#include "host/ServiceRegistry.h"
#include "host/Settings.h"

namespace NsdlHandOff {

namespace {

// Thrown by a step that failed: its message, the wrapper's LastError added at the close.
struct StepFailed
{
    QString message;
    bool withLastError = true;
};
struct Stopped
{
};

void fillText(IOnlineElement &form, const QString &field, const QString &text)
{
    if (OnlineElementPtr input = form.Item(field))
        input->setValue(text);
}

// The option whose text is exactly this one, or that begins with it when prefix is given.
void choose(IOnlineElement &form, const QString &list, const QString &text, bool prefix)
{
    OnlineElementPtr select = form.Item(list);
    if (!select || text.isEmpty())
        return;
    for (const OnlineElementPtr &option : select->Options()) {
        const QString label = option->Text();
        if (prefix ? label.startsWith(text) : label == text) {
            select->setTextSelected(label);
            return;
        }
    }
}

void tick(IOnlineAction &browser, const QString &name, const QString &value)
{
    if (OnlineElementPtr radio = browser.getElementByTagOthAttrib(QStringLiteral("INPUT"), QStringLiteral("name,value"),
                                                                 name + QLatin1Char(',') + value))
        radio->setChecked(true);
}

} // namespace

Outcome run(IOnlineAction &browser, const Challan &c, const QString &tempFolder, const Progress &progress,
            const Cancelled &cancelled)
{
    const QString site = Settings::nsdlHost();
    const auto say = [&](const QString &text) {
        if (progress)
            progress(text);
    };
    const auto step = [&](bool ok, const char *message) {
        if (!ok)
            throw StepFailed{QString::fromUtf8(message)};
        if (cancelled && cancelled())
            throw Stopped{};
    };
    Outcome out;
    try {
        browser.SetLblProg(progress);
        if (!browser.InitComponent(tempFolder, QStringLiteral("Browser Selection")))
            throw StepFailed{QStringLiteral("Failed to Initialize Browser !\n\nError: ") + browser.LastError(), false};
        say(QStringLiteral("Connecting to e-Tax Payment System ..."));
        step(browser.OpenURL(site + QStringLiteral("/etaxnew/tdsnontds.jsp")), "Failed to Open 'e-Tax Payment System' Page !");
        step(browser.WaitForResponsePage(QStringLiteral("@URL=") + site
                                         + QStringLiteral("/etaxnew/tdsnontds.jsp;@ELEMENT=FORM:selectform|R2"))
                 == QLatin1String("OK"),
             "Failed to Verify 'e-Tax Payment System' Page !");

        say(QStringLiteral("Opening CHALLAN NO/ITNO 281 ..."));
        std::shared_ptr<IOnlineDocument> page = browser.CreateHtmlDocument();
        OnlineElementPtr select = page ? page->Forms(QStringLiteral("selectform")) : nullptr;
        // The choice is a list on some versions of the page and radio buttons on others.
        OnlineElementPtr choice = select ? select->Item(QStringLiteral("R2")) : nullptr;
        if (choice && choice->TagName() == QLatin1String("SELECT"))
            choice->setValue(QStringLiteral("281"));
        else
            tick(browser, QStringLiteral("R2"), QStringLiteral("281"));
        step(select && choice && browser.SubmitAndWait(select), "Failed to Submit 'CHALLAN NO/ITNO 281' Page !");
        step(browser.WaitForResponsePage(QStringLiteral("@URL=") + site
                                         + QStringLiteral("/etaxnew/PopServlet?rKey=;@ELEMENT=FORM:tax281|back"))
                 == QLatin1String("OK"),
             "Failed to Verify 'CHALLAN NO/ITNO 281' Page !");
        const bool ie = browser.ComponentType() == QLatin1String("IE");
        if (ie)
            browser.runScriptAndWait(QStringLiteral("window.MyDefOrgFuncAlert=window.alert; window.MyDefOrgFuncConfirm=window.confirm;"));

        say(QStringLiteral("Filling Challan ..."));
        page = browser.CreateHtmlDocument();
        OnlineElementPtr form = page ? page->Forms(QStringLiteral("tax281")) : nullptr;
        step(form != nullptr, "Failed to Verify 'CHALLAN NO/ITNO 281' Page !");
        tick(browser, QStringLiteral("MajorHead"), c.company ? QStringLiteral("0020") : QStringLiteral("0021"));
        tick(browser, QStringLiteral("MinorHead"), c.regularAssessment ? QStringLiteral("400") : QStringLiteral("200"));
        choose(*form, QStringLiteral("NaturePayment"), c.sectionCode + QStringLiteral(" -"), true);
        fillText(*form, QStringLiteral("TAN"), c.tan);
        choose(*form, QStringLiteral("AssessYear"), c.asYear, false);
        const QString lines[] = {c.address.flat, c.address.building, c.address.street, c.address.area, c.address.city};
        for (int i = 0; i < 5; ++i)
            fillText(*form, QStringLiteral("Add_Line%1").arg(i + 1), lines[i]);
        choose(*form, QStringLiteral("Add_State"), c.address.state, false);
        fillText(*form, QStringLiteral("Add_PIN"), c.address.pin);
        fillText(*form, QStringLiteral("Add_EMAIL"), c.address.email);
        fillText(*form, QStringLiteral("Add_MOBILE"), c.address.mobile);
        browser.FocusAndWait();
        if (ie)
            browser.runScriptAndWait(QStringLiteral("window.alert=window.MyDefOrgFuncAlert; window.confirm=window.MyDefOrgFuncConfirm;"));
        browser.ShowBrowser();
        return out;
    } catch (const StepFailed &failed) {
        out.message = failed.withLastError ? failed.message + QStringLiteral("\n\n") + browser.LastError() : failed.message;
    } catch (const Stopped &) {
        out.cancelled = true;
    }
    browser.Quit();
    return out;
}

Outcome run(const Challan &challan, const QString &tempFolder, const Progress &progress, const Cancelled &cancelled)
{
    std::shared_ptr<IOnlineAction> browser = createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction));
    if (!browser)
        return {QStringLiteral("Failed to Create ActiveX Component Object [oOOAW] !"), false};
    return run(*browser, challan, tempFolder, progress, cancelled);
}

} // namespace NsdlHandOff
