#include "declarations/Oct15Transfer.h"

#include "shared/FieldRules.h"
#include "shared/JsonRecord.h"
#include "shared/modbase.h"

namespace {
const QString kDeclarant = QStringLiteral("declarant");
const QString kPayer = QStringLiteral("payer");
const QString kIncome = QStringLiteral("income");
} // namespace

Oct15Transfer::Oct15Transfer(bool form15H) : RecordFormTransfer(m_form), m_form(form15H) {}

int Oct15Transfer::importRecord(const JsonValue &record, QString *why)
{
    JsonRecordReader reader(record);
    const int serial = reader.serial();
    QStringList declarant = reader.texts(kDeclarant, m_form.declarantCount());
    QStringList payer = reader.texts(kPayer, Oct15Slots::PayerCount);
    QList<QStringList> income = reader.rows(kIncome, Oct15Slots::IncomeColumns);
    if (!reader.finish()) {
        *why = reader.error();
        return 0;
    }
    const IDataObject &data = modbase::data();
    const SlotTable &table = m_form.slotTable();
    if (!FieldRules::importBlock(kDeclarant, table, 0, declarant, data, why)
        || !FieldRules::importBlock(kPayer, table, m_form.payerSlot(0), payer, data, why))
        return 0;
    FieldRules::scheduleRows(Oct15Slots::incomeLayout(m_form.is15H()), income, &data);
    const int stored = m_form.storeRecord(serial, declarant + QStringList{Oct15Slots::packIncome(income)} + payer);
    if (!stored)
        *why = m_form.saveError();
    return stored;
}

JsonValue Oct15Transfer::exportRecord(int serial, QString *why)
{
    if (!show(serial, why))
        return JsonValue();
    const QStringList &values = m_form.values();
    JsonValue out = JsonValue::newDictionary();
    JsonDictionary *d = out.dictionary();
    d->add(QStringLiteral("serial"), JsonValue(Decimal(serial)));
    d->add(kDeclarant, JsonRecordReader::array(values.mid(0, m_form.declarantCount())));
    d->add(kPayer, JsonRecordReader::array(values.mid(m_form.payerSlot(0))));
    d->add(kIncome, JsonRecordReader::array(m_form.income()));
    return out;
}

bool Oct15Transfer::render(int serial, IReportObject &report, QString *why)
{
    if (!show(serial, why))
        return false;
    return modbase::errorTrap(m_form.module(), QStringLiteral("cmdshowrep_Click"),
                              [&] { Oct15Print::render(report, m_form.printData()); }, why);
}
