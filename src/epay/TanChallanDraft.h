#pragma once
// A TAN challan saved on the e-filing portal as a draft through the portal's payment API,
// in three requests (one per page of the portal's payment), inside the logged-in browser
// session; the browser then goes on from the draft. The requests carry the session's
// "AuthToken" cookie and nothing is written to disk.
#include "epay/PortalSteps.h"

#include <QByteArray>

struct TanDraftPayment
{
    QString tan;               // TxtTAN
    QString assessmentYear;    // as handed to InitMe: "2025"
    QString majorHead;         // "0020", "0021"
    QString minorHead;         // "200", "400"
    QString basicTax;
    QString surCharge;
    QString eduCess;
    QString interest;
    QString penalty;
    QString others;
    QString paymentMode;       // "EPY", "OTC", "NER"
    QString subPayMode;        // "IB", "DC", "CA", ...
    QString bankCode;          // "SBIN", ...
    QString paymentModeDesc;   // "e-Payment/Internet Banking", ...
};

class TanChallanDraft : public PortalSteps
{
public:
    enum class Page { TaxApplicableDetails = 1, TaxBreakupDetails = 2, PaymentDetails = 3 };

    explicit TanChallanDraft(IOnlineAction *browser, Progress progress = {}, CancelCheck cancelled = {});

    // The body of one request, keys in the portal's order. reference: the pymntRefNum of
    // the first reply (unused for the first page); totalWords: "Rupees " + the total in words.
    static QByteArray body(Page page, const TanDraftPayment &payment, const QString &reference,
                           const QString &totalWords);
    // The sum of the six amounts, as "1234.50".
    static QString total(const TanDraftPayment &payment);
    // The portal's serial numbers of the heads; major head "0020" has its own.
    static int majorSerial(const QString &majorHead);
    static int minorSerial(const QString &majorHead, const QString &minorHead);
    // The check of a reply: empty when "successFlag" is TRUE and "pymntRefNum" is there,
    // else the failure text of the page ("Failed to Save '...' Page !" or "Failed to verify
    // '...' Page !"). reference receives pymntRefNum; detail what went wrong, for the log.
    static QString replyFailure(const QString &reply, const QString &pageName, QString *reference,
                                QString *detail = nullptr);

    // The three requests, each reply checked. The session must be logged in.
    PortalResult save(const TanDraftPayment &payment);
    // save(), then the browser on the e-pay dashboard, where the flow goes on from the draft.
    PortalResult run(const TanDraftPayment &payment);

    // The payment reference the portal gave the draft.
    QString paymentReference() const { return m_reference; }

private:
    QString m_reference;
};
