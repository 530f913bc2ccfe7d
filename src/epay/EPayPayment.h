#pragma once
// The payment the e-pay form is handed (InitMe's sixteen values) and what the flows make of
// it. Values 5 to 11 are the challan's amounts: tax, surcharge, cess, interest, penalty,
// fee, others; up to assessment year 2026 the portal has no fee box, so the fee is paid
// under others.
#include "epay/TanPaymentFlow.h"

#include <QDateTime>
#include <QList>
#include <QPointer>
#include <QString>
#include <array>

class QObject;

class EPayPayment
{
public:
    // 1-based positions of InitMe's values.
    enum Value {
        AssessmentYear = 1,   // "2025"
        Tan = 2,              // the challan's TAN
        MajorHead = 3,        // "0020", "0021"
        MinorHead = 4,        // "200", "400"
        Tax = 5,
        Surcharge = 6,
        Cess = 7,
        Interest = 8,
        Penalty = 9,
        Fee = 10,
        Others = 11,
        Sections = 12,        // sectionsText(): the newer portal's section-wise rows
        ResidenceFlag = 13,   // 1: non-resident deductees
        PayerKind = 14,       // "26QB", "26QC", "26QD"; anything else a TAN payment
        Caller = 15,          // the calling form; a 26Q payer's grid vsM
        DemandReference = 16  // minor head 400
    };

    void InitMe(const QString &assessmentYear, const QString &tan, const QString &majorHead, const QString &minorHead,
                const QString &tax, const QString &surcharge, const QString &cess, const QString &interest,
                const QString &penalty, const QString &fee, const QString &others, const QString &sections,
                qint16 residenceFlag, const QString &payerKind, QObject *caller, const QString &demandReference);

    // A text value (1 to 14, 16) as kept.
    QString text(Value value) const;
    qint16 residenceFlag() const { return m_flag; }
    QObject *caller() const { return m_caller; }
    int yearNumber() const;
    bool tanPayer() const;
    // The Id in the caller's grid vsM at its current row; empty without one.
    QString partyId() const;

    // The flow's payment, with the mode chosen on the form.
    TanPayment tanPayment(int modeTab, int counterOption, const QString &bankName) const;

    // Section rows as value 12 carries them: "code,amount,interest,fee,penalty,others", rows
    // joined by ";". Commas and semicolons are taken out of the cells first.
    static QString sectionsText(const QList<TanSectionPayment> &sections);
    static QList<TanSectionPayment> parseSections(const QString &text);

    // Amounts as the challan hands them ("", "1,250.00", "1250") and as the portal takes
    // them ("1250", "12.50").
    static double amountOf(const QString &text);
    static QString amountText(double value);

    // Whole seconds from 1 January 1970 00:00:00 to the date and time as they stand (no
    // time-zone shift), as a 32-bit count; 0 for a date outside its range.
    static qint32 DateToUnixTime(const QDateTime &when);

private:
    std::array<QString, 17> m_values;   // [1..16]; 13 and 15 kept apart
    qint16 m_flag = 0;
    QPointer<QObject> m_caller;
};
