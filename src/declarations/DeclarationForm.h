#pragma once
// Forms 15G and 15H: any number of declarations per deductor-year, each a row of the
// declarant's and the payer's slots plus five schedules of the income it covers.
#include "declarations/DeclarationPrint.h"
#include "shared/RecordForm.h"

#include <optional>

class DeclarationForm : public RecordForm
{
public:
    explicit DeclarationForm(bool form15H);

    bool is15H() const { return m_15h; }
    QString module() const override;         // "frm15gNew" / "frm15hNew"
    QString documentBase() const override;   // "Form15G" / "Form15H"
    int declarantCount() const { return m_declarantCount; }

    // Whether source flag k (0..4) is ticked on screen.
    bool scheduleTicked(int k) const;

    void buildReport() override {}
    void print() override;

    // An import: the declaration and its five schedules (rows of data cells, already
    // checked) stored in one transaction; a serial of 0 takes the next free one. The serial
    // stored, or 0 with saveError().
    int storeDeclaration(int serial, const QStringList &values, const QList<QList<QStringList>> &schedules);
    // The five schedules of a stored declaration, as loaded into the grid.
    QList<QList<QStringList>> schedules(int serial) const;
    // What the print needs: the current values, and the rows of the ticked schedules.
    DeclarationPrint::Declaration printData() const;

protected:
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;
    QStringList newRecordValues() const override { return m_prefill; }
    QStringList deleteDetailStatements(int serial) const override;
    void copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial) override;

private:
    bool m_15h;
    int m_declarantCount;
    QStringList m_prefill;
    std::optional<QList<QList<QStringList>>> m_storedSchedules;
};
