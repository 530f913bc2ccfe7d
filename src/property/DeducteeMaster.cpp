#include "property/DeducteeMaster.h"

#include "host/IDataObject.h"
#include "shared/NewSerial.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

namespace {

void query(IDataObject &data, Recordset &rs, const QString &sql)
{
    if (!data.RecordsetQuery(rs, sql, data.cnnobj(), 3, 3, 1))
        throw TdsError(long(data.lastErrorNumber() ? data.lastErrorNumber() : 5), data.lastError(),
                       QStringLiteral("ZeltBase.ClsData"));
}

QString checkName(const QString &text)
{
    return text.trimmed().contains(QLatin1String("  ")) ? QStringLiteral("Name Should not Contain Double Spaces in Between.")
                                                        : QString();
}

QString checkPin(const QString &text)
{
    if (text.contains(QLatin1Char(' ')))
        return QStringLiteral("Pin Code can not contain Spaces");
    bool digits = text.size() == 6;
    for (const QChar c : text)
        digits = digits && c >= QLatin1Char('0') && c <= QLatin1Char('9');
    return digits ? QString() : QStringLiteral("Pin Code should be 6 digit Number");
}

Slot field(const char *caption, FieldKind kind, int width, QString (*check)(const QString &) = nullptr)
{
    Slot s;
    s.caption = QString::fromUtf8(caption);
    s.kind = kind;
    s.width = width;
    s.extraCheck = check;
    return s;
}

} // namespace

SlotTable DeducteeMaster::fields()
{
    // Access keys A, M, S, D, C, B and V belong to the buttons, E to the list.
    Slot pan = field("&PAN", FieldKind::Pan, 10);
    pan.message = QStringLiteral("PAN No is not Valid");
    Slot state = field("S&tate", FieldKind::Combo, 60);
    state.stateList = true;
    state.name = QStringLiteral("Combo2");
    return {
        field("&Name of Deductee", FieldKind::Text, 100, checkName),
        pan,
        field("Date of B&irth", FieldKind::Date, 10),
        field("&Flat/Door/Block No.", FieldKind::Text, 50),
        field("Premises/B&uilding Name", FieldKind::Text, 50),
        field("Road/St&reet ", FieldKind::Text, 50),
        field("Area/&Locality", FieldKind::Text, 50),
        field("Town/Cit&y/District", FieldKind::Text, 50),
        state,
        // Two messages of its own, so not the PIN kind with its one.
        field("Pin C&ode", FieldKind::Text, 6, checkPin),
    };
}

FieldRules::Outcome DeducteeMaster::leave(int index, const QString &text, const IDataObject &data)
{
    return FieldRules::leave(fields().value(index), text, data);
}

QString DeducteeMaster::codeText(const IDataObject &data) const
{
    return data.quoted(m_code);
}

bool DeducteeMaster::load()
{
    m_loadFailed = false;
    m_loadError.clear();
    m_groups.clear();
    m_rows.clear();
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("Form_Load"), [&] {
        IDataObject &d = modbase::data();
        m_code = d.codeno();
        if (m_code.trimmed().isEmpty())
            throw TdsError(5, QStringLiteral("No deductor is selected."));
        readGroups(d);
        readRows(d);
    }, &why);
    if (!ok) {
        m_rows.clear();
        m_loadFailed = true;
        m_loadError = why.isEmpty() ? QStringLiteral("The deductees could not be read.") : why;
    }
    m_position = m_rows.isEmpty() ? -1 : 0;
    showCurrent();
    return ok;
}

void DeducteeMaster::readGroups(IDataObject &data)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Group_Master order by Group_Desc"));
    m_groups.clear();
    for (; !rs.isEOF(); rs.moveNext())
        m_groups << DeducteeGroup{rs.field(0).toInt(), rs.text(1)};
}

void DeducteeMaster::readRows(IDataObject &data)
{
    Recordset rs;
    query(data, rs, QStringLiteral("select * from Form26QA_DedMaster Where Code_No=") + codeText(data)
                        + QStringLiteral(" order by DedSrNo"));
    m_rows.clear();
    for (; !rs.isEOF(); rs.moveNext()) {
        Deductee row;
        row.serial = rs.field(1).toInt();
        for (int i = 0; i < FieldCount; ++i)
            row.values << rs.text(i + 2);
        const int code = rs.field(FieldCount + 2).toInt();
        for (const DeducteeGroup &g : std::as_const(m_groups)) {
            if (g.code == code)
                row.group = g.desc;
        }
        m_rows << row;
    }
}

bool DeducteeMaster::reload(int serial)
{
    const bool ok = modbase::errorTrap(module(), QStringLiteral("FillGrid"), [&] {
        IDataObject &d = modbase::data();
        readGroups(d);
        readRows(d);
    });
    m_editing = false;
    m_adding = false;
    m_position = m_rows.isEmpty() ? -1 : 0;
    if (!moveToSerial(serial))
        showCurrent();
    return ok;
}

void DeducteeMaster::showCurrent()
{
    m_editing = false;
    m_adding = false;
    if (m_position >= m_rows.size())
        m_position = int(m_rows.size()) - 1;
    if (m_position < 0) {
        m_serial = 0;
        m_values = QStringList();
        m_values.resize(FieldCount);
        m_group.clear();
    } else {
        const Deductee &row = m_rows.at(m_position);
        m_serial = row.serial;
        m_values = row.values;
        m_group = row.group;
    }
    setPositionStatus();
}

void DeducteeMaster::setPositionStatus()
{
    m_status = m_rows.isEmpty() ? QStringLiteral("No deductees yet: Alt+A adds one")
                                : QStringLiteral("Deductee %1 of %2").arg(m_position + 1).arg(m_rows.size());
}

bool DeducteeMaster::moveTo(int position)
{
    if (m_editing || position < 0 || position >= m_rows.size())
        return false;
    m_position = position;
    showCurrent();
    return true;
}

bool DeducteeMaster::moveToSerial(int serial)
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).serial == serial)
            return moveTo(i);
    }
    return false;
}

void DeducteeMaster::setValues(const QStringList &values)
{
    m_values = values;
    m_values.resize(FieldCount);
}

void DeducteeMaster::add()
{
    if (m_loadFailed)
        return;
    m_values = QStringList();
    m_values.resize(FieldCount);
    m_group.clear();
    m_serial = 0;
    m_adding = true;
    m_editing = true;
    m_status = QStringLiteral("New deductee");
}

bool DeducteeMaster::modify()
{
    if (m_loadFailed || m_editing || m_position < 0)
        return false;
    m_editing = true;
    m_adding = false;
    m_status = QStringLiteral("Editing deductee %1").arg(m_serial);
    return true;
}

bool DeducteeMaster::ask(const Question &question)
{
    return m_dialogs && m_dialogs->ask(question.text, question.icon, question.yesIsDefault);
}

void DeducteeMaster::tell(const QString &message, Dialogs::Icon icon)
{
    if (m_dialogs)
        m_dialogs->inform(message, QString(), icon);
}

bool DeducteeMaster::cancel()
{
    if (!m_editing)
        return true;
    if (!ask(cancelQuestion))
        return false;
    showCurrent();
    return true;
}

bool DeducteeMaster::escape()
{
    if (m_editing) {
        cancel();
        return false;
    }
    return ask(exitQuestion);
}

bool DeducteeMaster::check(IDataObject &data, QStringList &values, bool imported, int *field, QString *message)
{
    values.resize(FieldCount);
    auto refuse = [&](int at, const QString &why) {
        *field = at;
        *message = why;
        return false;
    };
    if (values.at(Name).trimmed().isEmpty())
        return refuse(Name, QStringLiteral("Please Enter Deductee Name."));
    const SlotTable table = fields();
    for (int i = 0; i < FieldCount; ++i) {
        const Slot &slot = table.at(i);
        const FieldRules::Outcome outcome = imported ? FieldRules::imported(slot, values.at(i), data)
                                                     : FieldRules::leave(slot, values.at(i), data);
        if (!outcome.ok)
            return refuse(i, outcome.message);
        values[i] = outcome.text;
        if (!imported)
            continue;
        // A box holds no more than its column, and the state list only its states.
        if (slot.width > 0 && values.at(i).trimmed().size() > slot.width)
            return refuse(i, QStringLiteral("longer than %1 characters").arg(slot.width));
        if (slot.stateList && !values.at(i).trimmed().isEmpty() && data.GetStateCode(values.at(i)).isEmpty())
            return refuse(i, QStringLiteral("\"%1\" is not a state of the list").arg(values.at(i)));
    }
    return true;
}

int DeducteeMaster::groupCode(IDataObject &data, const QString &text)
{
    const QString desc = text.trimmed();
    auto known = [&]() {
        for (const DeducteeGroup &g : std::as_const(m_groups)) {
            if (g.desc.compare(desc, Qt::CaseInsensitive) == 0)
                return g.code;
        }
        return 0;
    };
    if (desc.isEmpty())
        return 0;
    if (const int code = known())
        return code;
    int code = 0;
    try {
        code = NewSerial::store(data, QStringLiteral("Select max(group_code) as maxcode from Group_Master"),
                                [&](TransactionGuard &guard, int next) {
                                    guard.run(QStringLiteral("Insert into Group_Master Values (") + QString::number(next)
                                              + QLatin1Char(',') + data.quoted(desc) + QLatin1Char(')'));
                                });
    } catch (const TdsError &) {
        // Another desk may have added the same group a moment ago.
        readGroups(data);
        if (const int theirs = known())
            return theirs;
        throw;
    }
    readGroups(data);
    return code;
}

int DeducteeMaster::write(IDataObject &data, int serial, const QStringList &values, int group)
{
    const auto insert = [&](int number) {
        QString sql = QStringLiteral("Insert into Form26QA_DedMaster Values (") + codeText(data) + QLatin1Char(',')
                      + QString::number(number);
        for (int i = 0; i < FieldCount; ++i)
            sql += QLatin1Char(',') + data.quoted(values.value(i).trimmed());
        return sql + QLatin1Char(',') + QString::number(group) + QLatin1Char(')');
    };
    if (serial == 0) {
        // The highest number of any deductor: a deductee number is unique in the whole table.
        return NewSerial::store(data, QStringLiteral("Select Max(DedSrNo) as MaxSr from Form26QA_DedMaster"),
                                [&](TransactionGuard &guard, int next) { guard.run(insert(next)); });
    }
    TransactionGuard guard(data);
    guard.run(QStringLiteral("Delete from Form26QA_DedMaster Where code_no=") + codeText(data) + QStringLiteral(" and DedSrNo=")
              + QString::number(serial));
    guard.run(insert(serial));
    guard.commitOrThrow();
    return serial;
}

bool DeducteeMaster::save()
{
    m_saveError.clear();
    m_refusedField = -1;
    if (m_loadFailed) {
        m_saveError = QStringLiteral("The deductees could not be read, so nothing is saved. Close the master and open it again.");
        tell(m_saveError, Dialogs::Icon::Critical);
        return false;
    }
    if (!m_editing)
        return false;
    IDataObject *data = modbase::dataObject();
    if (!data)
        return false;
    QStringList values = m_values;
    QString message;
    if (!check(*data, values, false, &m_refusedField, &message)) {
        m_saveError = message;
        tell(message, Dialogs::Icon::Information);
        return false;
    }
    m_values = values;
    int saved = 0;
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmdupdateded_Click"), [&] {
        const int group = groupCode(*data, m_group);
        saved = write(*data, m_serial, values, group);
    }, &why);
    if (!ok) {
        m_saveError = QStringLiteral("The deductee could not be saved; nothing was changed.\n\n")
                      + (why.isEmpty() ? QStringLiteral("See the error log.") : why);
        tell(m_saveError, Dialogs::Icon::Critical);
        return false;
    }
    reload(saved);
    m_status = QStringLiteral("Deductee %1 saved").arg(saved);
    return true;
}

bool DeducteeMaster::remove(int serial, QString *why)
{
    if (m_loadFailed) {
        *why = m_loadError;
        return false;
    }
    bool known = false;
    for (const Deductee &row : std::as_const(m_rows))
        known = known || row.serial == serial;
    if (!known) {
        *why = QStringLiteral("there is no deductee %1 of deductor %2").arg(serial).arg(m_code);
        return false;
    }
    return modbase::errorTrap(module(), QStringLiteral("cmddeleteded_Click"), [&] {
        IDataObject &d = modbase::data();
        const QString number = QString::number(serial);
        // The deductee's payments in every period of the deductor go with it, or nothing does.
        TransactionGuard guard(d);
        guard.run(QStringLiteral("Delete Form26QA_Payments from Form26QA_Payments, Period_Master Where "
                                 "Form26QA_Payments.Period_code=Period_Master.Period_Code and Period_Master.Code_No=")
                  + codeText(d) + QStringLiteral(" and Form26QA_Payments.DedSrNo=") + number);
        guard.run(QStringLiteral("Delete from Form26QA_DedMaster Where Code_No=") + codeText(d) + QStringLiteral(" and DedSrNo=")
                  + number);
        guard.commitOrThrow();
        m_rows.removeIf([serial](const Deductee &row) { return row.serial == serial; });
    }, why);
}

bool DeducteeMaster::deleteCurrent()
{
    m_saveError.clear();
    if (m_loadFailed || m_editing || m_position < 0)
        return false;
    if (!ask(deleteQuestion))
        return false;
    const int gone = m_serial;
    const int at = m_position;
    QString why;
    if (!remove(gone, &why)) {
        m_saveError = QStringLiteral("The deductee could not be deleted.\n\n") + why;
        tell(m_saveError, Dialogs::Icon::Critical);
        return false;
    }
    reload(0);
    // The deductee after the deleted one, or the new last one.
    m_position = qMin(at, int(m_rows.size()) - 1);
    showCurrent();
    m_status = QStringLiteral("Deductee %1 deleted").arg(gone);
    return true;
}

int DeducteeMaster::store(int serial, QStringList values, const QString &group, QString *why)
{
    m_refusedField = -1;
    if (m_loadFailed) {
        *why = m_loadError;
        return 0;
    }
    int at = -1;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).serial == serial)
            at = i;
    }
    if (serial > 0 && at < 0) {
        *why = QStringLiteral("there is no deductee %1 of deductor %2").arg(serial).arg(m_code);
        return 0;
    }
    IDataObject &data = modbase::data();
    const QString groupText = group.trimmed().toUpper();
    if (groupText.size() > 100) {
        m_refusedField = GroupField;
        *why = QStringLiteral("longer than 100 characters");
        return 0;
    }
    if (!check(data, values, true, &m_refusedField, why))
        return 0;
    int stored = 0;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmdupdateded_Click"), [&] {
        stored = write(data, serial, values, groupCode(data, groupText));
    }, why);
    if (!ok)
        return 0;
    Deductee row{stored, values, groupText};
    for (QString &v : row.values)
        v = v.trimmed();
    if (at >= 0)
        m_rows[at] = row;
    else
        m_rows << row;
    return stored;
}

QString DeducteeMaster::verifyPan(const QString &pan) const
{
    const QString text = pan.trimmed();
    if (text.isEmpty())
        return QStringLiteral("Type the PAN first.");
    const IDataObject *data = modbase::dataObject();
    if (!data || !data->ValidPan(text))
        return QStringLiteral("PAN No is not Valid");
    return QStringLiteral("PAN %1 is in the right form. Checking it against the Income Tax Department's records "
                          "is not available in this version.")
        .arg(text);
}
