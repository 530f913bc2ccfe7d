#pragma once
// The portal actions component ("prjITDAct.clsMain"): the same TAN payment as the e-pay
// form's own flow, offered as a component so that a host can run it without the form. One
// object drives one browser session: InitMe, LoginWHR_CL, then one of the GetePayChallan
// calls, then CheckForLoginCl.
#include "epay/PortalSteps.h"
#include "host/HostService.h"

#include <functional>

class IItdActions : public HostService
{
public:
    using Progress = std::function<void(const QString &)>;

    // exePath: the program folder; logFile: "\ZeltLogger.log" under it; tmpPath: the
    // browser's working folder; the screen ratios of the host; progress: the status texts.
    virtual void InitMe(const QString &exePath, const QString &logFile, const QString &tmpPath, double screenRatX,
                        double screenRatY, double screenRatFS, Progress progress) = 0;
    // The form's FlagCancel, read before every step.
    virtual void setCancelCheck(std::function<bool()> cancelled) = 0;
    // Opens the session and logs in; false when that failed (lastResult()).
    virtual bool LoginWHR_CL(const QString &loginId, const QString &password) = 0;
    // A TAN payment payable by the deductor: sections as EPayPayment::sectionsText.
    virtual bool GetePayChallan_TDS(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                                    const QString &minorHead, const QString &tax, const QString &surcharge,
                                    const QString &cess, const QString &interest, const QString &penalty,
                                    const QString &others, const QString &sections, const QString &modeCode,
                                    const QString &subMode, const QString &bankCode, int residenceFlag) = 0;
    // Any other TAN payment (a demand raised on regular assessment).
    virtual bool GetePayChallan_TDS_OTH(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                                        const QString &minorHead, const QString &tax, const QString &surcharge,
                                        const QString &cess, const QString &interest, const QString &penalty,
                                        const QString &others, const QString &demandReference,
                                        const QString &modeCode, const QString &subMode, const QString &bankCode,
                                        int residenceFlag) = 0;
    // The end of a run: a browser that reached the bank's page (or failed) is left to the
    // user, a stopped one is closed.
    virtual void CheckForLoginCl() = 0;
    virtual PortalResult lastResult() const = 0;
};

namespace ItdActions {
// Registers the real component under its name, unless a name is registered already.
void registerBuiltin();
} // namespace ItdActions
