#include "declarations/DeclarationTransfer.h"

#include "declarations/DeclarationPrint.h"
#include "declarations/First15Print.h"
#include "host/IReportObject.h"
#include "shared/FieldRules.h"
#include "shared/JsonRecord.h"
#include "shared/modbase.h"

namespace {

const QString kDeclarant = QStringLiteral("declarant");
const QString kPayer = QStringLiteral("payer");
const QString kSchedules = QStringLiteral("schedules");

} // namespace

DeclarationTransfer::DeclarationTransfer(bool form15H) : RecordFormTransfer(m_form), m_form(form15H) {}

DeclarationTransfer::DeclarationTransfer(DeclarationSlots::Design design)
    : RecordFormTransfer(m_form), m_form(std::move(design))
{
}

int DeclarationTransfer::importRecord(const JsonValue &record, QString *why)
{
    const DeclarationSlots::Design &design = m_form.design();
    QList<int> columns;
    for (const ScheduleLayout &layout : design.schedules)
        columns << int(layout.columns.size());

    JsonRecordReader reader(record);
    const int serial = reader.serial();
    QStringList declarant = reader.texts(kDeclarant, m_form.declarantCount());
    QStringList payer = reader.texts(kPayer, int(design.payer.size()));
    QList<QList<QStringList>> schedules = reader.tables(kSchedules, columns);
    if (!reader.finish()) {
        *why = reader.error();
        return 0;
    }

    const SlotTable &table = m_form.slotTable();
    const IDataObject &data = modbase::data();
    if (!FieldRules::importBlock(kDeclarant, table, 0, declarant, data, why)
        || !FieldRules::importBlock(kPayer, table, m_form.declarantCount(), payer, data, why))
        return 0;
    for (int k = 0; k < columns.size(); ++k)
        FieldRules::scheduleRows(design.schedules.at(k), schedules[k], &data);

    const int stored = m_form.storeDeclaration(serial, declarant + payer, schedules);
    if (!stored)
        *why = m_form.saveError();
    return stored;
}

JsonValue DeclarationTransfer::exportRecord(int serial, QString *why)
{
    if (!show(serial, why))
        return JsonValue();
    QList<QList<QStringList>> schedules;
    if (!modbase::errorTrap(m_form.module(), QStringLiteral("export"), [&] { schedules = m_form.schedules(serial); }, why))
        return JsonValue();
    const QStringList &values = m_form.values();
    JsonValue out = JsonValue::newDictionary();
    JsonDictionary *d = out.dictionary();
    d->add(QStringLiteral("serial"), JsonValue(Decimal(serial)));
    d->add(kDeclarant, JsonRecordReader::array(values.mid(0, m_form.declarantCount())));
    d->add(kPayer, JsonRecordReader::array(values.mid(m_form.declarantCount())));
    d->add(kSchedules, JsonRecordReader::array(schedules));
    return out;
}

bool DeclarationTransfer::render(int serial, IReportObject &report, QString *why)
{
    if (!show(serial, why))
        return false;
    return modbase::errorTrap(m_form.module(), QStringLiteral("cmdshowrep_Click"), [&] {
        if (!m_form.design().lineReport) {
            DeclarationPrint::render(report, m_form.printData());
            return;
        }
        report.NewReport();
        report.setDocumentName(m_form.documentName());
        First15Print::build(m_form.design(), m_form.printData());
    }, why);
}
