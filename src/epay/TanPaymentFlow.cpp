#include "epay/TanPaymentFlow.h"

#include "epay/PortalPages.h"
#include "epay/PortalSession.h"
#include "host/Settings.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <array>

// How the payment's codes meet the portal's controls:
// - the minor head is the radio of that value in the group "tdsRadiobtn"; the major head
//   ("0020" company deductees, "0021" and the others as they are) goes into the input
//   beside it;
// - minor head "400" (regular assessment) is a demand payment: the tile that names the
//   demand, the "demand-tan-details" pages and "demandRefNum" on the break-up page; every
//   other minor head takes the first tile and the pages of tax payable by the taxpayer;
// - the mode is the tab of SSTab1's index, the bank the option of that id in the
//   "mat-select-" list after "Other Bank"; at the bank counter the sub-mode is the radio of
//   its value (CA, CQ, DD).

struct TanPaymentFlow::Pages
{
    QString tiles;
    QString minorHead;
    QString breakup;
    QString payment;
    bool demand = false;
};

namespace {

const QString ActOf1961 = QStringLiteral("Income-tax Act, 1961");
const QString ActOf2025 = QStringLiteral("Income-tax Act, 2025");
// A user typing the OTP is given this many page waits while the OTP page stays.
constexpr int OtpRounds = 5;

const std::array<const char *, 5> ModeTabs{"Net Banking", "Debit Card", "Pay at Bank Counter", "RTGS/NEFT",
                                          "Payment Gateway"};

void pause(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

bool isDemand(const TanPayment &payment)
{
    return payment.minorHead.trimmed() == QLatin1String("400");
}

// An amount as the portal takes it: digits and a decimal point, nothing typed as "0".
QString typedAmount(const QString &amount)
{
    const QString text = amount.trimmed();
    return text.isEmpty() ? QStringLiteral("0") : text;
}

// The portal shows "1,500.50" or "₹ 1500.5": the same amount once the marks are gone.
bool sameAmount(const QString &shown, const QString &typed)
{
    QString digits;
    for (const QChar c : shown)
        if (c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-'))
            digits += c;
    bool shownOk = false;
    bool typedOk = false;
    const double a = digits.toDouble(&shownOk);
    const double b = typed.toDouble(&typedOk);
    return shownOk && typedOk && qAbs(a - b) < 0.005;
}

QString xpathText(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

TanPaymentFlow::Kind TanPaymentFlow::kindOf(const QString &assessmentYear, bool withoutLogin)
{
    if (withoutLogin)
        return Kind::PreLogin;
    return assessmentYear.trimmed().left(4).toInt() >= 2027 ? Kind::Newer : Kind::Older;
}

TanPaymentFlow::TanPaymentFlow(IOnlineAction *browser, Progress progress, CancelCheck cancelled)
    : PortalSteps(browser, progress, cancelled), m_report(std::move(progress)), m_stop(std::move(cancelled))
{
}

QString TanPaymentFlow::missingInput(Kind kind, const TanPayment &payment)
{
    if (kind != Kind::PreLogin)
        return QString();
    if (payment.tan.trimmed().isEmpty())
        return QStringLiteral("Please specify TAN !");
    if (payment.mobile.trimmed().isEmpty())
        return QStringLiteral("Please specify Mobile No !");
    return QString();
}

PortalResult TanPaymentFlow::run(Kind kind, const TanPayment &payment, const QString &hostText, const QString &tempFolder)
{
    keepOut(payment.password);
    const QString missing = missingInput(kind, payment);
    if (!missing.isEmpty())
        return failWith(missing, missing);
    PortalResult missingBrowser;
    if (noBrowser(missingBrowser))
        return missingBrowser;

    const PortalResult result = steps(kind, payment, hostText, tempFolder);
    if (result.cancelled())
        m_browser->Quit();
    else
        m_browser->ShowBrowser();   // the bank's choice, or the page where the run stopped
    return result;
}

PortalResult TanPaymentFlow::steps(Kind kind, const TanPayment &payment, const QString &hostText, const QString &tempFolder)
{
    PortalSession session(m_browser, m_report, m_stop);
    PortalResult result = session.open(hostText, tempFolder);
    if (result.ok() && kind != Kind::PreLogin)
        result = session.login(payment.tan, payment.password);
    if (!result.ok())
        return result;
    return pay(kind, payment);
}

PortalResult TanPaymentFlow::pay(Kind kind, const TanPayment &payment)
{
    PortalResult missingBrowser;
    if (noBrowser(missingBrowser))
        return missingBrowser;
    PortalResult result;
    Pages pages;
    pages.demand = isDemand(payment) && kind != Kind::PreLogin;
    if (kind == Kind::PreLogin) {
        pages.tiles = PortalPages::preloginTilesLocator();
        pages.minorHead = PortalPages::preloginMinorHeadLocator();
        pages.breakup = PortalPages::preloginBreakupLocator();
        pages.payment = PortalPages::preloginPaymentModeLocator();
        result = preLogin(payment);
    } else {
        pages.tiles = kind == Kind::Newer ? PortalPages::tilesTanLocator() : PortalPages::tilesPanLocator();
        pages.minorHead = pages.demand            ? PortalPages::minorHeadDemandLocator()
                          : kind == Kind::Newer ? PortalPages::minorHeadTanLocator()
                                                : PortalPages::minorHeadPanLocator();
        pages.breakup = pages.demand && kind == Kind::Older ? PortalPages::breakupDemandLocator()
                        : kind == Kind::Newer               ? PortalPages::breakupTanLocator()
                                                            : PortalPages::breakupPanLocator();
        pages.payment = PortalPages::paymentModeLocator();
        result = PortalSession(m_browser, m_report, m_stop).openEPayTax(PortalPages::actSelectionLocator());
        if (result.ok())
            result = newPayment(kind, pages);
    }
    if (!result.ok())
        return result;
    if (!(result = taxApplicable(kind, payment, pages)).ok())
        return result;
    // The newer portal takes TDS section by section; a demand keeps the break-up.
    const bool bySection = kind == Kind::Newer && !pages.demand;
    if (bySection && !(result = sectionWise(payment, pages)).ok())
        return result;
    if (!(result = breakup(payment, pages, !bySection)).ok())
        return result;
    if (!(result = paymentDetails(payment, pages)).ok())
        return result;
    progress(kind == Kind::PreLogin ? QStringLiteral("FillChallan_GC_Prelogin") : QStringLiteral("FillChallan_GC"));
    return {};
}

PortalResult TanPaymentFlow::preLogin(const TanPayment &payment)
{
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening e-Pay Tax Page ..."));
    IOnlineDriver *driver = m_browser->objectSWC();
    if (!driver || !clickAndWait(driver->findElementByxpath(QStringLiteral("//span[contains(.,\"e-Pay Tax\")]"))))
        return fail(QStringLiteral("Failed to Open 'e-Pay Tax' !"));
    if (!waitFor(PortalPages::preloginUserDetailsLocator()))
        return fail(QStringLiteral("Failed to Verify 'e-Pay Tax' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Filling TAN Details ..."));
    const auto pan = driver->findelementbyid(QStringLiteral("pantan"));
    const auto confirm =
        m_browser->getElementByTagOthAttrib(QStringLiteral("input"), QStringLiteral("formcontrolname"), QStringLiteral("confirmPanTan"));
    const auto phone = driver->findelementbyid(QStringLiteral("phone"));
    if (!pan || !pan->SendKeys(payment.tan.trimmed()) || !confirm || !confirm->SendKeys(payment.tan.trimmed()) || !phone
        || !phone->SendKeys(payment.mobile.trimmed()))
        return fail(QStringLiteral("Failed to fill data on 'TAN Details' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("OTP Generation ..."));
    script(QStringLiteral("scroll(0, 300);"));
    if (!press(QStringLiteral("//button[contains(.,\" Continue \")]")) || !waitFor(PortalPages::preloginOtpLocator()))
        return fail(QStringLiteral("Failed to Submit 'OTP Generation' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("OTP Verification ..."));
    // The user types the OTP in the browser; the wait goes on while the OTP page stays.
    m_browser->ShowBrowser();
    bool verified = waitFor(PortalPages::preloginOtpAcceptedLocator());
    for (int round = 1; !verified && round < OtpRounds && !cancelled(); ++round) {
        const QString why = m_browser->LastError();
        const bool stillTyping = driver->executeScript(QStringLiteral("return location.hash.indexOf('/mob-otp') >= 0;")).toBool();
        if (!stillTyping)
            return fail(QStringLiteral("Failed to Submit 'OTP Varification' Page !"), why);
        verified = waitFor(PortalPages::preloginOtpAcceptedLocator());
    }
    if (cancelled())
        return cancel();
    if (!verified)
        return fail(QStringLiteral("Failed to Submit 'OTP Varification' Page !"));

    progress(QStringLiteral("Opening Create New Payment Page ..."));
    if (!press(QStringLiteral("//button[contains(.,\"Continue\")]")))
        return fail(QStringLiteral("Failed to Open 'New Payment' Page !"));
    if (!waitFor(PortalPages::preloginTilesLocator()))
        return fail(QStringLiteral("Failed to Verify 'New Payment' Page !"));
    return {};
}

PortalResult TanPaymentFlow::newPayment(Kind kind, const Pages &pages)
{
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Select Act Page ..."));
    // Up to 2026 the payment falls under the old act; the newer portal has only the new one.
    const QString act = kind == Kind::Newer ? ActOf2025 : ActOf1961;
    if (!press(QStringLiteral("//mat-radio-button[normalize-space(.)=%1]").arg(xpathText(act)))
        || !press(QStringLiteral("//button[normalize-space(.)=\"CONTINUE\"]")))
        return fail(QStringLiteral("Failed to Open 'Select Act' Page !"));
    if (!waitFor(PortalPages::newPaymentLocator()))
        return fail(QStringLiteral("Failed to Verify 'Select Act' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Create New Payment Page ..."));
    if (!press(QStringLiteral("//button[contains(.,\"New Payment\")]")))
        return fail(QStringLiteral("Failed to Open 'New Payment' Page !"));
    if (!waitFor(pages.tiles))
        return fail(QStringLiteral("Failed to Verify 'New Payment' Page !"));
    return {};
}

PortalResult TanPaymentFlow::taxApplicable(Kind kind, const TanPayment &payment, const Pages &pages)
{
    if (cancelled())
        return cancel();
    script(QStringLiteral("document.body.style.zoom='80%';"));
    const QString year = payment.assessmentYear.trimmed().left(4);
    const auto yearList = m_browser->getElementByTagOthAttrib(QStringLiteral("mat-select"), QStringLiteral("formcontrolname"),
                                                              QStringLiteral("assessmentYear"));
    // The list shows "2025-26" for the year 2025.
    if (year.isEmpty() || !yearList || !yearList->Click()
        || !press(QStringLiteral("//mat-option[starts-with(normalize-space(.),%1)]").arg(xpathText(year))))
        return fail(QStringLiteral("Failed to fill data on 'Tax Applicable Details' Page !"));
    script(QStringLiteral("document.body.style.zoom='100%';"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Tax Applicable Details Page ..."));
    const QString tile = pages.demand
                             ? QStringLiteral("//*[contains(@class,\"largervf\")][contains(.,\"Demand\")][contains(translate(.,\"PROCED\",\"proced\"),\"proceed\")]")
                             : QStringLiteral("//*[contains(@class,\"largervf\")][contains(translate(.,\"PROCED\",\"proced\"),\"proceed\")]");
    if (!press(tile))
        return fail(QStringLiteral("Failed to Open 'Tax Applicable Details' Page !"));
    if (!waitFor(pages.minorHead))
        return fail(QStringLiteral("Failed to Verify 'Tax Applicable Details' Page !"));

    if (cancelled())
        return cancel();
    script(QStringLiteral("scroll(0, 400);"));
    const QString radio =
        QStringLiteral("//*[@name=\"tdsRadiobtn\"]//mat-radio-button[@value=%1]").arg(xpathText(payment.minorHead.trimmed()));
    const auto beside = [&] { return m_browser->objectSWC()->findElementByxpath(radio + QStringLiteral("/following-sibling::*")); };
    bool done = press(radio);
    if (done) {
        const auto input = await(beside);
        done = input && input->setValue(QString()) && input->SendKeys(payment.majorHead.trimmed());
    }
    if (done && kind == Kind::Newer && !pages.demand) {
        const QString type = payment.nonResident ? QStringLiteral("Non-Resident Deductee(s)") : QStringLiteral("Resident Deductee(s)");
        done = press(QStringLiteral("//mat-radio-button[normalize-space(.)=%1]").arg(xpathText(type)));
    }
    const auto next = done ? m_browser->getElementByTagOthAttrib(QStringLiteral("img"), QStringLiteral("alt"), QStringLiteral("next page"))
                           : nullptr;
    if (!next || !next->Click())
        return fail(QStringLiteral("Failed to Submit 'Tax Applicable Details' Page !"));

    if (cancelled())
        return cancel();
    progress(QStringLiteral("Submitting Tax Applicable Details Page ..."));
    script(QStringLiteral("scroll(0, 1000);"));
    if (!press(QStringLiteral("//button[contains(.,\"Continue\")]")))
        return fail(QStringLiteral("Failed to Submit 'Tax Applicable Details' Page !"));
    if (kind == Kind::Newer && !pages.demand) {
        if (!waitFor(PortalPages::sectionWiseLocator()))
            return fail(QStringLiteral("Failed to Verify 'tds section wise payment' Page !"));
    } else if (!waitFor(pages.breakup)) {
        return fail(QStringLiteral("Failed to Verify 'Tax break up Details' Page !"));
    }
    return {};
}

PortalResult TanPaymentFlow::sectionWise(const TanPayment &payment, const Pages &pages)
{
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Submitting tds section wise payment Page ..."));
    const QString failure = QStringLiteral("Failed to fill data on 'tds section wise payment' Page !");
    if (payment.sections.isEmpty())
        return fail(failure, QStringLiteral("No section to pay."));
    script(QStringLiteral("document.body.style.zoom='40%';"));
    for (const TanSectionPayment &section : payment.sections) {
        if (cancelled())
            return cancel();
        const QString code = section.code.trimmed();
        const auto list = m_browser->getElementByTagOthAttrib(QStringLiteral("mat-select"), QStringLiteral("formcontrolname"),
                                                              QStringLiteral("selectedSection"));
        if (!list || !list->Click())
            return fail(failure);
        const auto search = await([&] {
            return m_browser->getElementByTagOthAttrib(QStringLiteral("input"), QStringLiteral("aria-label"), QStringLiteral("dropdown search"));
        });
        // The list shows the code, then its description: "194C - Payment to contractors".
        if (!search || !search->SendKeys(code)
            || !press(QStringLiteral("//mat-option[normalize-space(.)=%1 or starts-with(normalize-space(.),%2)]")
                          .arg(xpathText(code), xpathText(code + QLatin1Char(' ')))))
            return fail(failure);
        const std::array<std::pair<const char *, QString>, 5> fields{{{"amount", section.amount},
                                                                      {"interest", section.interest},
                                                                      {"fee", section.fee},
                                                                      {"penalty", section.penalty},
                                                                      {"others", section.others}}};
        for (const auto &[name, value] : fields) {
            const auto input = m_browser->getElementByTagOthAttrib(QStringLiteral("input"), QStringLiteral("formcontrolname"),
                                                                   QLatin1String(name));
            if (!input || !input->setValue(QString()) || !input->SendKeys(typedAmount(value)))
                return fail(failure);
        }
        if (!press(QStringLiteral("//button[normalize-space(.)=\"ADD\"]")))
            return fail(failure);
    }
    script(QStringLiteral("document.body.style.zoom='100%';"));
    if (!press(QStringLiteral("//button[contains(.,\"Continue\")]")))
        return fail(failure);
    if (!waitFor(pages.breakup))
        return fail(QStringLiteral("Failed to Verify 'Tax break up Details' Page !"));
    return {};
}

PortalResult TanPaymentFlow::breakup(const TanPayment &payment, const Pages &pages, bool typeAmounts)
{
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Submitting Tax break up Details Page ..."));
    const QString failure = QStringLiteral("Failed to Submit 'Tax break up Details' Page !");
    script(QStringLiteral("scroll(0, 450);"));
    IOnlineDriver *driver = m_browser->objectSWC();
    if (!driver)
        return fail(failure);
    if (pages.demand) {
        const auto reference = driver->findelementbyid(QStringLiteral("demandRefNum"));
        if (!reference || !reference->setValue(QString()) || !reference->SendKeys(payment.demandReference.trimmed()))
            return fail(failure);
    }
    if (typeAmounts) {
        const std::array<std::pair<const char *, QString>, 6> amounts{{{"taxAmt", payment.tax},
                                                                       {"surchargeAmt", payment.surcharge},
                                                                       {"cessAmt", payment.cess},
                                                                       {"interestAmt", payment.interest},
                                                                       {"penaltyAmt", payment.penalty},
                                                                       {"othersAmt", payment.others}}};
        // One call fills the six boxes (with the input and change events the page listens
        // to) and one reads the six totals: each call to the browser costs a round trip.
        QVariantList ids;
        QVariantList values;
        QVariantList totals;
        for (int i = 0; i < int(amounts.size()); ++i) {
            ids << QString::fromLatin1(amounts[size_t(i)].first);
            values << typedAmount(amounts[size_t(i)].second);
            totals << QStringLiteral("paid%1").arg(i + 1);
        }
        const QVariant filled = driver->executeScript(
            QStringLiteral("var ids = arguments[0], values = arguments[1];"
                           "for (var i = 0; i < ids.length; ++i) {"
                           "  var e = document.getElementById(ids[i]);"
                           "  if (!e) return ids[i];"
                           "  e.focus(); e.value = values[i];"
                           "  e.dispatchEvent(new Event('input', {bubbles: true}));"
                           "  e.dispatchEvent(new Event('change', {bubbles: true}));"
                           "  e.blur();"
                           "}"
                           "return '';"),
            {QVariant(ids), QVariant(values)});
        if (!filled.isValid() || !filled.toString().isEmpty())
            return fail(failure);
        // The page adds up what it was given; a figure it read otherwise is not paid.
        const QVariantList shownTotals =
            driver->executeScript(QStringLiteral("return arguments[0].map(function (id) {"
                                                 "  var e = document.getElementById(id); return e ? e.value : null; });"),
                                  {QVariant(totals)})
                .toList();
        for (int i = 0; i < int(amounts.size()); ++i) {
            const QString id = totals[i].toString();
            if (i >= shownTotals.size() || shownTotals[i].isNull())
                return fail(failure);
            const QString shown = shownTotals[i].toString();
            if (!sameAmount(shown, typedAmount(amounts[size_t(i)].second)))
                return fail(failure, QStringLiteral("The page shows %1 in \"%2\" for the amount %3 typed into \"%4\".")
                                         .arg(shown.isEmpty() ? QStringLiteral("nothing") : shown, id,
                                              typedAmount(amounts[size_t(i)].second), QLatin1String(amounts[size_t(i)].first)));
        }
    }
    if (!press(QStringLiteral("//button[contains(.,\"Continue\")]")))
        return fail(failure);
    return {};
}

PortalResult TanPaymentFlow::paymentDetails(const TanPayment &payment, const Pages &pages)
{
    if (cancelled())
        return cancel();
    progress(QStringLiteral("Opening Payment Details Page ..."));
    if (!waitFor(pages.payment))
        return fail(QStringLiteral("Failed to Verify 'Payment Details' Page !"));
    const QString failure = QStringLiteral("Failed to fill data on 'Payment Details' Page !");
    script(QStringLiteral("scroll(0, 250);"));
    if (payment.modeTab < 0 || payment.modeTab >= int(ModeTabs.size()))
        return fail(failure, QStringLiteral("No payment mode %1.").arg(payment.modeTab));
    const QString tab = QLatin1String(ModeTabs[size_t(payment.modeTab)]);
    if (!press(QStringLiteral("//*[contains(concat(\" \",normalize-space(@class),\" \"),\" mdc-tab \")][contains(.,%1)]")
                   .arg(xpathText(tab))))
        return fail(failure);
    // RTGS/NEFT names no bank: the portal gives a mandate form instead.
    if (payment.modeTab == 3)
        return {};
    if (payment.modeTab == 2 && !payment.subMode.trimmed().isEmpty()
        && !press(QStringLiteral("//mat-radio-button[@value=%1]").arg(xpathText(payment.subMode.trimmed()))))
        return fail(failure);
    if (!press(QStringLiteral("//*[normalize-space(text())=\"Other Bank\"]"))
        || !press(QStringLiteral("//mat-select[starts-with(@id,\"mat-select-\")]"))
        || !press(QStringLiteral("//mat-option[@id=%1]").arg(xpathText(payment.bankCode.trimmed()))))
        return fail(failure);
    return {};
}

OnlineElementPtr TanPaymentFlow::await(const std::function<OnlineElementPtr()> &find) const
{
    const QDeadlineTimer deadline(qint64(Settings::pageWaitSeconds()) * 1000);
    const int pollMs = Settings::pagePollMilliseconds();
    for (;;) {
        if (!m_browser->objectSWC())
            return nullptr;
        if (auto element = find())
            return element;
        if (deadline.hasExpired())
            return nullptr;
        pause(pollMs);
    }
}

OnlineElementPtr TanPaymentFlow::awaitXpath(const QString &xpath) const
{
    return await([&] { return m_browser->objectSWC()->findElementByxpath(xpath); });
}

bool TanPaymentFlow::press(const QString &xpath) const
{
    const auto element = awaitXpath(xpath);
    return element && element->Click();
}
