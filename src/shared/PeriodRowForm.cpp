#include "shared/PeriodRowForm.h"

#include "host/IDataObject.h"
#include "shared/ColumnEncoder.h"

PeriodRowForm::PeriodRowForm(QString table, SlotTable slotTable) : m_table(std::move(table)), m_slots(std::move(slotTable))
{
    clear();
}

void PeriodRowForm::setField(int index, const QString &text)
{
    if (index >= 0 && index < m_values.size())
        m_values[index] = text;
}

void PeriodRowForm::clear()
{
    m_values = QStringList();
    m_values.resize(m_slots.size());
}

void PeriodRowForm::readRows(IDataObject &data)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from ") + m_table + QStringLiteral(" where period_code=")
                        + QString::number(m_periodCode));
    if (!rs.isBOF() && !rs.isEOF()) {
        for (int i = 0; i < m_values.size(); ++i)
            m_values[i] = rs.text(i + 1);
    }
    rs.close();
}

QStringList PeriodRowForm::saveStatements(IDataObject &data)
{
    const QString code = QString::number(m_periodCode);
    return {QStringLiteral("Delete from ") + m_table + QStringLiteral(" where period_code=") + code,
            ColumnEncoder::positionalInsert(QStringLiteral("Insert into ") + m_table + QStringLiteral(" Values ("),
                                            {code}, data, m_slots, m_values)};
}
