#include "shared/RecordForm.h"

#include "host/IDataObject.h"
#include "shared/ColumnEncoder.h"
#include "shared/FieldRules.h"
#include "shared/NewSerial.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

RecordStatements RecordStatements::forTable(const QString &table, const QString &serialColumn)
{
    return {QStringLiteral("Select * From ") + table + QStringLiteral(" Where Period_Code="),
            QStringLiteral(" Order by ") + serialColumn,
            QStringLiteral("Select Max(") + serialColumn + QStringLiteral(") From ") + table
                + QStringLiteral(" Where Period_Code="),
            QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE Period_Code="),
            QStringLiteral(" AND ") + serialColumn + QLatin1Char('='),
            QStringLiteral("INSERT INTO ") + table + QStringLiteral(" VALUES (")};
}

RecordForm::RecordForm(RecordStatements statements, SlotTable slotTable, QString recordName)
    : m_statements(std::move(statements)), m_slots(std::move(slotTable)), m_recordName(std::move(recordName))
{
    clear();
}

void RecordForm::setValue(int slot, const QString &text)
{
    if (slot >= 0 && slot < m_values.size())
        m_values[slot] = text;
}

void RecordForm::clear()
{
    m_serials.clear();
    m_rows.clear();
    m_values = QStringList();
    m_values.resize(m_slots.size());
    m_position = -1;
    m_serial = 0;
    m_editing = false;
    m_adding = false;
}

void RecordForm::readRows(IDataObject &data)
{
    Recordset rs;
    query(data, rs, m_statements.browse + periodText() + m_statements.order);
    for (; !rs.isEOF(); rs.moveNext()) {
        m_serials << rs.field(1).toInt();
        QStringList row;
        for (int i = 0; i < m_slots.size(); ++i) {
            const QString value = rs.text(i + 2);
            // Amounts show as typed amounts do, whatever the column's own scale.
            row << (m_slots.at(i).kind == FieldKind::Amount && !value.isEmpty() ? FieldRules::plainAmount(value) : value);
        }
        m_rows << row;
    }
    rs.close();
    m_position = m_serials.isEmpty() ? -1 : 0;
    showCurrent();
}

bool RecordForm::requery(int serial)
{
    const int keep = m_serial;
    m_serials.clear();
    m_rows.clear();
    const bool ok = modbase::errorTrap(module(), QStringLiteral("Requery"), [&] {
        IDataObject *d = &modbase::data();
        readRows(*d);
    });
    if (!ok)
        return false;
    int at = -1;
    for (int i = 0; i < m_serials.size(); ++i) {
        if (m_serials.at(i) <= (serial ? serial : keep))
            at = i;
    }
    if (at < 0 && !m_serials.isEmpty())
        at = 0;
    m_position = at;
    showCurrent();
    return true;
}

void RecordForm::showCurrent()
{
    m_editing = false;
    m_adding = false;
    if (m_position < 0 || m_position >= m_serials.size()) {
        m_position = m_serials.isEmpty() ? -1 : int(m_serials.size()) - 1;
    }
    if (m_position < 0) {
        m_serial = 0;
        m_values = QStringList();
        m_values.resize(m_slots.size());
    } else {
        m_serial = m_serials.at(m_position);
        m_values = m_rows.at(m_position);
    }
    setPositionStatus();
}

void RecordForm::setPositionStatus()
{
    if (m_serials.isEmpty())
        m_status = QStringLiteral("No %1 yet: %2 adds one").arg(m_recordName.toLower(), addKeyHint);
    else
        m_status = QStringLiteral("%1 %2 of %3").arg(m_recordName).arg(m_position + 1).arg(m_serials.size());
}

bool RecordForm::moveTo(int position)
{
    if (m_editing || position < 0 || position >= m_serials.size())
        return false;
    m_position = position;
    showCurrent();
    return true;
}

void RecordForm::first() { moveTo(0); }
void RecordForm::previous() { moveTo(m_position - 1); }
void RecordForm::next() { moveTo(m_position + 1); }
void RecordForm::last() { moveTo(int(m_serials.size()) - 1); }

void RecordForm::add()
{
    if (loadFailed())
        return;
    m_values = newRecordValues();
    m_values.resize(m_slots.size());
    m_serial = 0;
    m_adding = true;
    m_editing = true;
    m_status = QStringLiteral("New %1").arg(m_recordName.toLower());
}

bool RecordForm::modify()
{
    if (loadFailed() || m_position < 0)
        return false;
    m_editing = true;
    m_adding = false;
    m_status = QStringLiteral("Editing %1 %2").arg(m_recordName.toLower()).arg(m_serial);
    return true;
}

void RecordForm::cancel()
{
    showCurrent();
}

bool RecordForm::ask(const Question &question)
{
    if (!m_dialogs)
        return false;
    return m_dialogs->ask(question.text, question.icon, question.yesIsDefault);
}

bool RecordForm::escape()
{
    if (m_editing) {
        if (ask(cancelQuestion))
            cancel();
        return false;
    }
    return ask(exitQuestion);
}

Refusal RecordForm::specifyValid(int slot) const
{
    const QString caption = QString(m_slots.value(slot).caption).remove(QLatin1Char('&'));
    return {slot, QStringLiteral("Please specify valid '") + caption + QStringLiteral("'.")};
}

QStringList RecordForm::deleteDetailStatements(int serial) const
{
    Q_UNUSED(serial);
    return {};
}

void RecordForm::copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial)
{
    Q_UNUSED(data);
    Q_UNUSED(guard);
    Q_UNUSED(fromSerial);
    Q_UNUSED(toSerial);
}

QStringList RecordForm::saveStatements(IDataObject &data)
{
    const QString p = periodText();
    const QString s = QString::number(m_serial);
    return {m_statements.deleteRow + p + m_statements.deleteSerial + s,
            ColumnEncoder::positionalInsert(m_statements.insertRow, {p, s}, data, m_slots, m_values)};
}

bool RecordForm::writeRecord(int sourceSerialForDetails)
{
    QString why;
    const bool allocate = m_serial == 0;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmdupdate_Click"), [&] {
        IDataObject &d = modbase::data();
        const auto write = [&](TransactionGuard &guard) {
            QStringList statements = saveStatements(d);
            if (allocate)
                statements.removeFirst();   // a new serial is only inserted
            guard.run(statements);
            if (sourceSerialForDetails > 0 && !guard.failed())
                copyDetails(d, guard, sourceSerialForDetails, m_serial);
        };
        if (allocate) {
            NewSerial::store(d, m_statements.maxSerial + periodText(), [&](TransactionGuard &guard, int serial) {
                m_serial = serial;
                write(guard);
            });
        } else {
            TransactionGuard guard(d);
            write(guard);
            guard.commitOrThrow();
        }
    }, &why);
    if (!ok) {
        if (allocate)
            m_serial = 0;
        setSaveError(QStringLiteral("The %1 could not be saved; nothing was changed.\n\n").arg(m_recordName.toLower())
                     + (why.isEmpty() ? QStringLiteral("See the error log.") : why));
    }
    return ok;
}

bool RecordForm::refusedByChecks()
{
    const Refusal refusal = checkBeforeSave();
    m_refusedSlot = refusal.slot;
    if (refusal.slot < 0)
        return false;
    setSaveError(refusal.message);
    return true;
}

bool RecordForm::saveRecord()
{
    m_refusedSlot = -1;
    if (refusedAfterFailedLoad() || !m_editing || refusedByChecks())
        return false;
    if (!writeRecord(0))
        return false;
    const int saved = m_serial;
    requery(saved);
    m_status = QStringLiteral("%1 %2 saved").arg(m_recordName).arg(saved);
    return true;
}

int RecordForm::storeRecord(int serial, const QStringList &values)
{
    setSaveError(QString());
    if (refusedAfterFailedLoad())
        return 0;
    m_serial = serial;
    setValues(values);
    m_refusedSlot = -1;
    if (refusedByChecks())
        return 0;
    return writeRecord(0) ? m_serial : 0;
}

bool RecordForm::deleteRecord()
{
    setSaveError(QString());
    if (loadFailed() || m_editing || m_position < 0)
        return false;
    if (!ask(deleteQuestion))
        return false;
    const int gone = m_serial;
    const int at = m_position;
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmddelete_Click"), [&] {
        IDataObject *d = &modbase::data();
        TransactionGuard guard(*d);
        guard.run(deleteDetailStatements(gone));
        guard.run(m_statements.deleteRow + periodText() + m_statements.deleteSerial + QString::number(gone));
        guard.commitOrThrow();
    }, &why);
    if (!ok) {
        setSaveError(QStringLiteral("The %1 could not be deleted.\n\n").arg(m_recordName.toLower()) + why);
        return false;
    }
    requery(0);
    // The record after the deleted one, or the new last one.
    m_position = qMin(at, int(m_serials.size()) - 1);
    showCurrent();
    m_status = QStringLiteral("%1 %2 deleted").arg(m_recordName).arg(gone);
    return true;
}

bool RecordForm::copyRecord()
{
    setSaveError(QString());
    if (loadFailed() || m_editing || m_position < 0)
        return false;
    if (!ask(copyQuestion))
        return false;
    const int from = m_serial;
    m_serial = 0;
    m_adding = true;
    if (!writeRecord(from)) {
        m_serial = from;
        m_adding = false;
        return false;
    }
    const int copy = m_serial;
    requery(copy);
    modify();
    m_status = QStringLiteral("%1 %2 copied to %3").arg(m_recordName).arg(from).arg(copy);
    return true;
}
