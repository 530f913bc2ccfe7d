#pragma once
// A TAN payment driven page by page on the e-filing portal, up to the bank's choice, where
// the operator pays by hand: the older flow (assessment years up to 2026), the newer flow
// (2027 on, section by section) and the pre-login flow (TAN and mobile OTP, no password).
// No widgets: the e-pay form passes its wrapper, a progress callback and its cancel flag.
#include "epay/PortalSteps.h"

#include <QList>
#include <functional>

// One section of the newer portal's section-wise page.
struct TanSectionPayment
{
    QString code;       // the section as the portal's list shows it: "1024", "194C"
    QString amount;     // the tax of the section
    QString interest;
    QString fee;
    QString penalty;
    QString others;
};

struct TanPayment
{
    QString tan;               // login id and payer (TxtTAN)
    QString password;          // TxtPwd; empty for the pre-login flow
    QString mobile;            // txtMobile, the pre-login flow
    QString assessmentYear;    // first year, four digits: "2025"
    QString majorHead;         // "0020" company deductees, "0021" the others
    QString minorHead;         // "200" payable by taxpayer, "400" regular assessment (demand)
    QString demandReference;   // minor head 400 ("demandRefNum" on the break-up page)
    bool nonResident = false;  // the newer flow's deductee type

    // The older flow's break-up; up to 2026 others already holds fee + others.
    QString tax;
    QString surcharge;
    QString cess;
    QString interest;
    QString penalty;
    QString others;
    // The newer flow: one row per section (at least one); a demand payment (minor head 400)
    // has no sections and takes the break-up above.
    QList<TanSectionPayment> sections;

    int modeTab = 0;           // SSTab1: 0 net banking .. 4 payment gateway
    QString modeCode;          // "EPY", "OTC", "NER"
    QString subMode;           // "IB", "DC", "CA", "CQ", "DD", "PG", ""
    QString bankCode;          // "SBIN"; empty for RTGS/NEFT
    QString modeDescription;   // "e-Payment/Internet Banking", ...
};

class TanPaymentFlow : public PortalSteps
{
public:
    enum class Kind { Older, Newer, PreLogin };

    // Without login: the pre-login flow; else by year (2027 on: newer).
    static Kind kindOf(const QString &assessmentYear, bool withoutLogin);

    explicit TanPaymentFlow(IOnlineAction *browser, Progress progress = {}, CancelCheck cancelled = {});

    // The whole run: session opened (hostText and tempFolder as PortalSession::open), login
    // (not for the pre-login flow), the pages up to the bank's choice. On success the last
    // progress text is "FillChallan_GC" ("FillChallan_GC_Prelogin") and the browser is
    // shown; on failure the browser is shown on the page where the run stopped; a
    // cancelled run closes the browser.
    PortalResult run(Kind kind, const TanPayment &payment, const QString &hostText, const QString &tempFolder);

    // The checks made before any portal work: "Please specify TAN !", "Please specify
    // Mobile No !" (pre-login only); empty when the payment may go.
    static QString missingInput(Kind kind, const TanPayment &payment);

    // The pages after the session's login (for the pre-login flow, from the portal's home)
    // up to the bank's choice; the browser is left as it is. For a caller that logged in
    // itself.
    PortalResult pay(Kind kind, const TanPayment &payment);

private:
    struct Pages;

    PortalResult steps(Kind kind, const TanPayment &payment, const QString &hostText, const QString &tempFolder);
    PortalResult preLogin(const TanPayment &payment);
    PortalResult newPayment(Kind kind, const Pages &pages);
    PortalResult taxApplicable(Kind kind, const TanPayment &payment, const Pages &pages);
    PortalResult sectionWise(const TanPayment &payment, const Pages &pages);
    PortalResult breakup(const TanPayment &payment, const Pages &pages, bool typeAmounts);
    PortalResult paymentDetails(const TanPayment &payment, const Pages &pages);

    // The element once the page shows it (the portal draws lists and panels a moment after
    // the click), within the page wait; null when it never comes.
    OnlineElementPtr await(const std::function<OnlineElementPtr()> &find) const;
    OnlineElementPtr awaitXpath(const QString &xpath) const;
    bool press(const QString &xpath) const;

    Progress m_report;      // the same callbacks, for the session's steps
    CancelCheck m_stop;
};
