#include "declarations/DeclarationForm.h"

#include "declarations/DeclarationPrint.h"
#include "declarations/DeclarationSlots.h"
#include "host/IDataObject.h"
#include "shared/ScheduleStore.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

namespace {
SlotTable allSlots(bool form15H)
{
    return DeclarationSlots::declarant(form15H) + DeclarationSlots::payer();
}
} // namespace

DeclarationForm::DeclarationForm(bool form15H)
    : RecordForm(RecordStatements::forTable(form15H ? QStringLiteral("Tb15hM") : QStringLiteral("Tb15gM")),
                 allSlots(form15H), QStringLiteral("Declaration")),
      m_15h(form15H), m_declarantCount(int(DeclarationSlots::declarant(form15H).size()))
{
}

QString DeclarationForm::module() const
{
    return m_15h ? QStringLiteral("frm15hNew") : QStringLiteral("frm15gNew");
}

QString DeclarationForm::documentBase() const
{
    return m_15h ? QStringLiteral("Form15H") : QStringLiteral("Form15G");
}

bool DeclarationForm::scheduleTicked(int k) const
{
    const QString flags = value(DeclarationSlots::flagsSlot(m_15h));
    return k >= 0 && k < flags.size() && flags.at(k) == QLatin1Char('1');
}

void DeclarationForm::readRows(IDataObject &data)
{
    // The declarant block of a new declaration starts from the deductor's master row.
    m_prefill = QStringList();
    m_prefill.resize(slotTable().size());
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Main_Info_oth where code_no=") + data.quoted(data.codeno()));
    if (!rs.isBOF() && !rs.isEOF()) {
        const std::pair<const char *, int> copied[] = {
            {"Name", 0}, {"panno", 1}, {m_15h ? "dob" : "status", 2}, {"flat", 3}, {"building", 4}, {"street", 5},
            {"area", 6}, {"city", 7}, {"State", 8}, {"PIN", 9}, {"ward", 22}, {"asofficer", 23}};
        for (const auto &[column, slot] : copied) {
            if (!rs.field(QLatin1String(column)).isNull())
                m_prefill[slot] = rs.text(QLatin1String(column));
        }
        if (!m_15h && !rs.field(QStringLiteral("resident_status")).isNull())
            m_prefill[28] = rs.text(QStringLiteral("resident_status"));
    }
    rs.close();
    RecordForm::readRows(data);
    if (isEmpty())
        setValues(m_prefill);
}

QStringList DeclarationForm::deleteDetailStatements(int serial) const
{
    QStringList out;
    for (int k = 0; k < 5; ++k)
        out << QStringLiteral("Delete From ") + DeclarationSlots::schedule(m_15h, k).table + QStringLiteral(" Where Period_Code=")
                   + periodText() + QStringLiteral(" and FormSrId=") + QString::number(serial);
    return out;
}

void DeclarationForm::copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial)
{
    for (int k = 0; k < 5; ++k) {
        if (!scheduleTicked(k))
            continue;
        const ScheduleLayout layout = DeclarationSlots::schedule(m_15h, k);
        guard.run(ScheduleStore::statements(data, layout, m_periodCode, toSerial,
                                            ScheduleStore::load(data, layout, m_periodCode, fromSerial)));
    }
}

QStringList DeclarationForm::saveStatements(IDataObject &data)
{
    QStringList out = RecordForm::saveStatements(data);
    if (m_storedSchedules) {
        for (int k = 0; k < 5; ++k)
            out << ScheduleStore::statements(data, DeclarationSlots::schedule(m_15h, k), m_periodCode, currentSerial(),
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
    for (int k = 0; k < 5; ++k)
        out << ScheduleStore::load(modbase::data(), DeclarationSlots::schedule(m_15h, k), m_periodCode, serial);
    return out;
}

DeclarationPrint::Declaration DeclarationForm::printData() const
{
    DeclarationPrint::Declaration d;
    d.form15H = m_15h;
    d.declarant = values().mid(0, m_declarantCount);
    d.payer = values().mid(m_declarantCount);
    for (int k = 0; k < 5; ++k)
        d.schedules << (scheduleTicked(k) ? ScheduleStore::load(modbase::data(), DeclarationSlots::schedule(m_15h, k),
                                                                m_periodCode, currentSerial())
                                          : QList<QStringList>());
    return d;
}

void DeclarationForm::print()
{
    if (isEmpty() || editing())
        return;
    modbase::errorTrap(module(), QStringLiteral("cmdshowrep_Click"), [this] {
        const DeclarationPrint::Declaration d = printData();
        if (dialogs())
            DeclarationPrint::print(module(), d, *dialogs());
    });
}
