#pragma once
// Forms 15G and 15H: any number of declarations per deductor-year, each a row of the
// declarant's and the payer's slots plus the detail tables of the income it covers (the
// five schedules, or the first Form 15H's table of income).
#include "declarations/DeclarationPrint.h"
#include "declarations/DeclarationSlots.h"
#include "shared/RecordForm.h"

#include <optional>

class DeclarationForm : public RecordForm
{
public:
    explicit DeclarationForm(bool form15H);
    explicit DeclarationForm(DeclarationSlots::Design design);

    const DeclarationSlots::Design &design() const { return m_design; }
    bool is15H() const { return m_design.form15H; }
    QString module() const override;         // "frm15gNew" / "frm15hNew"
    QString documentBase() const override;   // "Form15G" / "Form15H"
    int declarantCount() const { return int(m_design.declarant.size()); }
    int scheduleCount() const { return int(m_design.schedules.size()); }

    // Whether source flag k is ticked on screen; always, where the design has no flags.
    bool scheduleTicked(int k) const;

    // The line report of the first layouts; nothing for the templates.
    void buildReport() override;
    void print() override;

    // An import: the declaration and its schedules (rows of data cells, already checked)
    // stored in one transaction; a serial of 0 takes the next free one. The serial
    // stored, or 0 with saveError().
    int storeDeclaration(int serial, const QStringList &values, const QList<QList<QStringList>> &schedules);
    // The schedules of a stored declaration, as loaded into the grid.
    QList<QList<QStringList>> schedules(int serial) const;
    // What the print needs: the current values, and the rows of the ticked schedules.
    DeclarationPrint::Declaration printData() const;

protected:
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;
    QStringList newRecordValues() const override { return m_prefill; }
    Refusal checkBeforeSave() const override;
    QStringList deleteDetailStatements(int serial) const override;
    void copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial) override;

private:
    DeclarationSlots::Design m_design;
    QStringList m_prefill;
    std::optional<QList<QList<QStringList>>> m_storedSchedules;
};
