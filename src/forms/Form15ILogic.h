#pragma once
// Form 15I: the sub-contractor's declaration; up to two heavy goods carriages per
// deductor-year, each line stored under its own SrNo (1 or 2).
#include <QString>

class Form15ILogic
{
public:
    static constexpr int lineCount = 2;

    QString module() const { return QStringLiteral("frm15i"); }

    // txtfields1 / txtfields2, indexed by SrNo 1..2.
    QString registration(int srNo) const;
    QString registrationDate(int srNo) const;
    void setRegistration(int srNo, const QString &text);
    void setRegistrationDate(int srNo, const QString &text);
    // The date field on leaving it: the data object's normalised date.
    void normaliseDate(int srNo);

    int periodCode() const { return m_periodCode; }

    void load();
    bool save();
    void buildReport();
    void print();

    // "2023-24" for the assessment year "2024-25".
    static QString financialYear(const QString &asYear);

private:
    static bool validLine(int srNo) { return srNo >= 1 && srNo <= lineCount; }

    QString m_registration[lineCount + 1];
    QString m_date[lineCount + 1];
    int m_periodCode = 0;
};
