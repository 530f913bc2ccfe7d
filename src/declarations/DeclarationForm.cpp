#include "declarations/DeclarationForm.h"

#include "declarations/DeclarationPrint.h"
#include "declarations/First15Print.h"
#include "host/IDataObject.h"
#include "shared/ScheduleStore.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

DeclarationForm::DeclarationForm(bool form15H) : DeclarationForm(DeclarationSlots::current(form15H)) {}

DeclarationForm::DeclarationForm(DeclarationSlots::Design design)
    : RecordForm(RecordStatements::forTable(design.mainTable), design.declarant + design.payer, QStringLiteral("Declaration")),
      m_design(std::move(design))
{
}

QString DeclarationForm::module() const
{
    return m_design.module;
}

QString DeclarationForm::documentBase() const
{
    return m_design.documentBase;
}

bool DeclarationForm::scheduleTicked(int k) const
{
    if (k < 0 || k >= scheduleCount())
        return false;
    if (m_design.flagsSlot < 0)
        return true;
    const QString flags = value(m_design.flagsSlot);
    return k < flags.size() && flags.at(k) == QLatin1Char('1');
}

void DeclarationForm::readRows(IDataObject &data)
{
    // The declarant block of a new declaration starts from the deductor's master row.
    m_prefill = QStringList();
    m_prefill.resize(slotTable().size());
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Main_Info_oth where code_no=") + data.quoted(data.codeno()));
    if (!rs.isBOF() && !rs.isEOF()) {
        for (const auto &[column, slot] : m_design.prefill) {
            if (!rs.field(column).isNull())
                m_prefill[slot] = rs.text(column);
        }
    }
    rs.close();
    RecordForm::readRows(data);
    if (isEmpty())
        setValues(m_prefill);
}

Refusal DeclarationForm::checkBeforeSave() const
{
    for (int slot : m_design.required) {
        if (value(slot).trimmed().isEmpty())
            return specifyValid(slot);
    }
    return {};
}

QStringList DeclarationForm::deleteDetailStatements(int serial) const
{
    QStringList out;
    for (const ScheduleLayout &layout : m_design.schedules)
        out << ScheduleStore::statements(modbase::data(), layout, m_periodCode, serial, {});
    return out;
}

void DeclarationForm::copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial)
{
    for (int k = 0; k < scheduleCount(); ++k) {
        if (!scheduleTicked(k))
            continue;
        const ScheduleLayout &layout = m_design.schedules.at(k);
        guard.run(ScheduleStore::statements(data, layout, m_periodCode, toSerial,
                                            ScheduleStore::load(data, layout, m_periodCode, fromSerial)));
    }
}

QStringList DeclarationForm::saveStatements(IDataObject &data)
{
    QStringList out = RecordForm::saveStatements(data);
    if (m_storedSchedules) {
        for (int k = 0; k < scheduleCount(); ++k)
            out << ScheduleStore::statements(data, m_design.schedules.at(k), m_periodCode, currentSerial(),
                                             m_storedSchedules->value(k));
    }
    return out;
}

int DeclarationForm::storeDeclaration(int serial, const QStringList &values, const QList<QList<QStringList>> &schedules)
{
    m_storedSchedules = schedules;
    const int stored = storeRecord(serial, values);
    m_storedSchedules.reset();
    return stored;
}

QList<QList<QStringList>> DeclarationForm::schedules(int serial) const
{
    QList<QList<QStringList>> out;
    for (const ScheduleLayout &layout : m_design.schedules)
        out << ScheduleStore::load(modbase::data(), layout, m_periodCode, serial);
    return out;
}

DeclarationPrint::Declaration DeclarationForm::printData() const
{
    DeclarationPrint::Declaration d;
    d.form15H = is15H();
    d.declarant = values().mid(0, declarantCount());
    d.payer = values().mid(declarantCount());
    for (int k = 0; k < scheduleCount(); ++k)
        d.schedules << (scheduleTicked(k) ? ScheduleStore::load(modbase::data(), m_design.schedules.at(k), m_periodCode,
                                                                currentSerial())
                                          : QList<QStringList>());
    return d;
}

void DeclarationForm::buildReport()
{
    if (m_design.lineReport)
        First15Print::build(m_design, printData());
}

void DeclarationForm::print()
{
    if (isEmpty() || editing())
        return;
    if (m_design.lineReport) {
        RecordForm::print();
        return;
    }
    modbase::errorTrap(module(), QStringLiteral("cmdshowrep_Click"), [this] {
        const DeclarationPrint::Declaration d = printData();
        if (dialogs())
            DeclarationPrint::print(module(), d, *dialogs());
    });
}
