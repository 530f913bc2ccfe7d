#pragma once
// Form 15I: the sub-contractor's declaration; up to two heavy goods carriages per
// deductor-year, each line stored under its own SrNo (1 or 2).
#include "shared/FormLogic.h"
#include "shared/Slot.h"

class Form15ILogic : public FormLogic
{
public:
    static constexpr int lineCount = 2;

    QString module() const override { return QStringLiteral("frm15i"); }
    QString documentBase() const override { return QStringLiteral("Form15I"); }

    // txtfields1 / txtfields2, indexed by SrNo 1..2.
    QString registration(int srNo) const;
    QString registrationDate(int srNo) const;
    void setRegistration(int srNo, const QString &text);
    void setRegistrationDate(int srNo, const QString &text);

    void buildReport() override;

    // The two columns of a line: registration number, date of registration.
    static const Slot &registrationSlot();
    static const Slot &dateSlot();

    // "2023-24" for the assessment year "2024-25".
    static QString financialYear(const QString &asYear);

protected:
    void clear() override;
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;

private:
    static bool validLine(int srNo) { return srNo >= 1 && srNo <= lineCount; }

    QString m_registration[lineCount + 1];
    QString m_date[lineCount + 1];
};
