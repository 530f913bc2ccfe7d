#include "epay/ItdActions.h"

#include "epay/EPayPayment.h"
#include "epay/PortalSession.h"
#include "epay/TanPaymentFlow.h"
#include "host/IOnlineAction.h"
#include "host/ServiceRegistry.h"

namespace {

// prjITDAct.clsMain: one browser session, logged in by LoginWHR_CL and paid by one of the
// GetePayChallan calls, through the same steps as the e-pay form's own flow.
class ItdActionsComponent : public IItdActions
{
public:
    void InitMe(const QString &exePath, const QString &logFile, const QString &tmpPath, double, double, double,
                Progress progress) override
    {
        m_exePath = exePath;
        m_logFile = logFile;
        m_tmpPath = tmpPath;
        m_progress = std::move(progress);
    }

    void setCancelCheck(std::function<bool()> cancelled) override { m_cancelled = std::move(cancelled); }

    bool LoginWHR_CL(const QString &loginId, const QString &password) override
    {
        m_browser = createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction));
        m_tan = loginId;
        PortalSession session(m_browser.get(), m_progress, m_cancelled);
        m_result = session.open(m_exePath, m_tmpPath);
        if (m_result.ok())
            m_result = session.login(loginId, password);
        return m_result.ok();
    }

    bool GetePayChallan_TDS(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                            const QString &minorHead, const QString &tax, const QString &surcharge, const QString &cess,
                            const QString &interest, const QString &penalty, const QString &others,
                            const QString &sections, const QString &modeCode, const QString &subMode,
                            const QString &bankCode, int residenceFlag) override
    {
        TanPayment p = payment(assessmentYear, tan, majorHead, minorHead, tax, surcharge, cess, interest, penalty,
                               others, modeCode, subMode, bankCode, residenceFlag);
        p.sections = EPayPayment::parseSections(sections);
        return pay(p);
    }

    bool GetePayChallan_TDS_OTH(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                                const QString &minorHead, const QString &tax, const QString &surcharge,
                                const QString &cess, const QString &interest, const QString &penalty,
                                const QString &others, const QString &demandReference, const QString &modeCode,
                                const QString &subMode, const QString &bankCode, int residenceFlag) override
    {
        TanPayment p = payment(assessmentYear, tan, majorHead, minorHead, tax, surcharge, cess, interest, penalty,
                               others, modeCode, subMode, bankCode, residenceFlag);
        p.demandReference = demandReference;
        return pay(p);
    }

    void CheckForLoginCl() override
    {
        if (!m_browser)
            return;
        // A stopped run closes its browser; any other end leaves it to the user.
        if (m_result.cancelled())
            m_browser->Quit();
        else
            m_browser->ShowBrowser();
    }

    PortalResult lastResult() const override { return m_result; }

private:
    TanPayment payment(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                       const QString &minorHead, const QString &tax, const QString &surcharge, const QString &cess,
                       const QString &interest, const QString &penalty, const QString &others,
                       const QString &modeCode, const QString &subMode, const QString &bankCode,
                       int residenceFlag) const
    {
        TanPayment p;
        p.tan = tan.isEmpty() ? m_tan : tan;
        p.assessmentYear = assessmentYear;
        p.majorHead = majorHead;
        p.minorHead = minorHead;
        p.tax = tax;
        p.surcharge = surcharge;
        p.cess = cess;
        p.interest = interest;
        p.penalty = penalty;
        p.others = others;
        p.modeCode = modeCode;
        p.subMode = subMode;
        p.bankCode = bankCode;
        p.nonResident = residenceFlag == 1;
        return p;
    }

    bool pay(const TanPayment &p)
    {
        if (!m_result.ok())
            return false;
        TanPaymentFlow flow(m_browser.get(), m_progress, m_cancelled);
        m_result = flow.pay(TanPaymentFlow::kindOf(p.assessmentYear, false), p);
        return m_result.ok();
    }

    QString m_exePath;
    QString m_logFile;
    QString m_tmpPath;
    QString m_tan;
    Progress m_progress;
    std::function<bool()> m_cancelled;
    std::shared_ptr<IOnlineAction> m_browser;
    PortalResult m_result;
};

} // namespace

namespace ItdActions {

void registerBuiltin()
{
    if (!ServiceRegistry::isRegistered(QString::fromLatin1(ProgId::ItdActions)))
        ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::ItdActions),
                                         [] { return std::make_shared<ItdActionsComponent>(); });
}

} // namespace ItdActions
