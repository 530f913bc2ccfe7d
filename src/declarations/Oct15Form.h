#pragma once
// Forms 15G and 15H of October 2015 (frm15gOct15, frm15hOct15): any number of declarations
// per deductor-year, each one row of Tb15gNew / Tb15hNew holding the declarant's items, the
// income details and Part II. Part II starts from the deductor, who pays the income.
#include "declarations/Oct15Print.h"
#include "declarations/Oct15Slots.h"
#include "shared/RecordForm.h"

class Oct15Form : public RecordForm
{
public:
    explicit Oct15Form(bool form15H);

    bool is15H() const { return m_15h; }
    QString module() const override;         // "frm15gOct15" / "frm15hOct15"
    QString documentBase() const override;   // "Form15G_Oct15" / "Form15H_Oct15"

    const Oct15Slots::Declarant &at() const { return m_at; }
    int declarantCount() const { return m_at.count; }
    int incomeSlot() const { return m_at.count; }
    int payerSlot(int payer) const { return m_at.count + 1 + payer; }

    // The income details of the screen, rows of their four data cells.
    QList<QStringList> income() const { return Oct15Slots::unpackIncome(value(incomeSlot())); }
    void setIncome(const QList<QStringList> &rows) { setValue(incomeSlot(), Oct15Slots::packIncome(rows)); }

    void buildReport() override {}
    void print() override;
    Oct15Print::Declaration printData() const;

protected:
    void readRows(IDataObject &data) override;
    QStringList newRecordValues() const override { return m_prefill; }
    Refusal checkBeforeSave() const override;

private:
    bool m_15h;
    Oct15Slots::Declarant m_at;
    QStringList m_prefill;
};
