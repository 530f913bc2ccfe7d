#pragma once
// A form that keeps one row per deductor-year: its slots after period_code, read from
// "Select * from <table> where period_code=" and saved by delete and positional insert.
#include "shared/FormLogic.h"
#include "shared/Slot.h"

class PeriodRowForm : public FormLogic
{
public:
    PeriodRowForm(QString table, SlotTable slotTable);

    QString tableName() const { return m_table; }
    const SlotTable &slotTable() const { return m_slots; }
    int fieldCount() const { return int(m_slots.size()); }

    QString field(int index) const { return m_values.value(index); }
    void setField(int index, const QString &text);
    const QStringList &fields() const { return m_values; }

protected:
    void clear() override;
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;

private:
    QString m_table;
    SlotTable m_slots;
    QStringList m_values;
};
