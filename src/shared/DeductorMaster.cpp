#include "shared/DeductorMaster.h"

#include "host/IDataObject.h"
#include "shared/FieldRules.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

#include <QDate>

namespace DeductorMaster {

namespace {

Slot makeSlot(const char *caption, FieldKind kind, int width, const char *column, const char *message = nullptr)
{
    Slot s;
    s.caption = QString::fromUtf8(caption);
    s.kind = kind;
    s.width = width;
    s.name = QStringLiteral("txt") + QString::fromLatin1(column);
    if (message)
        s.message = QString::fromUtf8(message);
    return s;
}

Slot withCheck(Slot s, QString (*check)(const QString &))
{
    s.extraCheck = check;
    return s;
}

Slot stateList(Slot s)
{
    s.stateList = true;
    return s;
}

QString checkEmail(const QString &text)
{
    return text.contains(QLatin1Char('@')) ? QString() : QStringLiteral("Invalid e-mail address.");
}

QString checkDate(const QString &text)
{
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy")).isValid() ? QString()
                                                                             : QStringLiteral("Type the date as dd/mm/yyyy.");
}

const char *const kInvalidTan = "Invalid TAN: four letters, five digits and a letter, such as MUMD12345E.";
const char *const kInvalidPan = "Invalid PAN: five letters, four digits and a letter, such as AABCD1234E.";

// Every access key of the dialog is its own: tabs D, R, O; buttons S, C.
SlotTable deductorTab()
{
    return {
        makeSlot("Deductor cod&e", FieldKind::Text, 20, "Code_No"),
        makeSlot("&Name of the deductor", FieldKind::Text, 150, "Name"),
        makeSlot("&TAN", FieldKind::Tan, 10, "Tanno", kInvalidTan),
        makeSlot("&PAN", FieldKind::Pan, 10, "panno", kInvalidPan),
        makeSlot("Branch / division", FieldKind::Text, 75, "Branch"),
        makeSlot("Flat / door / block", FieldKind::Text, 50, "flat"),
        makeSlot("Building / premises", FieldKind::Text, 50, "building"),
        makeSlot("Road / street", FieldKind::Text, 50, "street"),
        makeSlot("Area / locality", FieldKind::Text, 50, "area"),
        makeSlot("Town / city / district", FieldKind::Text, 50, "city"),
        stateList(makeSlot("St&ate", FieldKind::Combo, 60, "State")),
        makeSlot("PIN code", FieldKind::Pin, 6, "PIN"),
        makeSlot("Telephone", FieldKind::Text, 50, "Phone_Nos"),
        withCheck(makeSlot("E-mail", FieldKind::Email, 100, "Email"), checkEmail),
        withCheck(makeSlot("Alternate e-mail", FieldKind::Email, 100, "Email1"), checkEmail),
        makeSlot("Mobile", FieldKind::Text, 10, "Mobile"),
        makeSlot("Alternate mobile", FieldKind::Text, 10, "Mobile1"),
    };
}

SlotTable responsibleTab()
{
    return {
        makeSlot("Na&me of the responsible person", FieldKind::Text, 100, "Resp_Name"),
        makeSlot("Father's name", FieldKind::Text, 100, "Resp_FName"),
        makeSlot("Designation", FieldKind::Text, 50, "Resp_Desig"),
        makeSlot("PAN of the responsible person", FieldKind::Pan, 10, "Resp_Pan", kInvalidPan),
        makeSlot("Mobile of the responsible person", FieldKind::Text, 10, "Resp_Mobile"),
        withCheck(makeSlot("E-mail of the responsible person", FieldKind::Email, 100, "Resp_Email"), checkEmail),
        makeSlot("Flat / door / block", FieldKind::Text, 50, "Resp_Flat"),
        makeSlot("Building / premises", FieldKind::Text, 50, "Resp_Building"),
        makeSlot("Road / street", FieldKind::Text, 50, "Resp_Street"),
        makeSlot("Area / locality", FieldKind::Text, 50, "Resp_Area"),
        makeSlot("Town / city / district", FieldKind::Text, 50, "Resp_City"),
        stateList(makeSlot("State", FieldKind::Combo, 60, "Resp_State")),
        makeSlot("PIN code", FieldKind::Pin, 6, "Resp_PIN"),
        makeSlot("P&lace of signing forms", FieldKind::Text, 50, "FormPlace"),
        withCheck(makeSlot("Date of si&gning forms", FieldKind::Date, 10, "FormDate"), checkDate),
    };
}

SlotTable otherTab()
{
    Slot residence = makeSlot("Residential status", FieldKind::Combo, 20, "resident_status");
    residence.items = QStringList{QStringLiteral("RESIDENT"), QStringLiteral("NON-RESIDENT")};
    return {
        makeSlot("Stat&us", FieldKind::Combo, 2, "status"),
        withCheck(makeSlot("Date of birth / incorporation", FieldKind::Date, 10, "dob"), checkDate),
        makeSlot("Ward / circle", FieldKind::Text, 100, "ward"),
        makeSlot("Assessing officer", FieldKind::Text, 100, "asofficer"),
        residence,
    };
}

void query(IDataObject &data, Recordset &rs, const QString &sql)
{
    if (!data.RecordsetQuery(rs, sql, data.cnnobj(), 3, 3, 1))
        throw TdsError(long(data.lastErrorNumber() ? data.lastErrorNumber() : 5), data.lastError(),
                       QStringLiteral("ZeltBase.ClsData"));
}

bool isStatusCode(IDataObject &data, const QString &code, QStringList *all)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select Status_Code From Status_Master Order By Status_Code"));
    bool found = false;
    for (; !rs.isEOF(); rs.moveNext()) {
        *all << rs.text(0);
        found = found || rs.text(0) == code;
    }
    return found;
}

} // namespace

QList<Page> pages()
{
    return {{QStringLiteral("&Deductor"), deductorTab()},
            {QStringLiteral("&Responsible person"), responsibleTab()},
            {QStringLiteral("&Other particulars"), otherTab()}};
}

QString columnOf(const Slot &slot)
{
    return slot.name.mid(3);
}

QStringList columns()
{
    QStringList out;
    for (const Page &page : pages()) {
        for (const Slot &slot : page.fields)
            out << columnOf(slot);
    }
    return out;
}

QStringList copiedToOther()
{
    return {QStringLiteral("Name"), QStringLiteral("panno"), QStringLiteral("flat"), QStringLiteral("building"),
            QStringLiteral("street"), QStringLiteral("area"), QStringLiteral("city"), QStringLiteral("State"),
            QStringLiteral("PIN"), QStringLiteral("Phone_Nos"), QStringLiteral("Email")};
}

std::optional<Refusal> check(IDataObject &data, Record &record, bool isNew, bool imported)
{
    const QString codeColumn = QStringLiteral("Code_No");
    const QString nameColumn = QStringLiteral("Name");
    if (record.value(codeColumn).trimmed().isEmpty())
        return Refusal{codeColumn, QStringLiteral("Enter the deductor code.")};
    if (record.value(nameColumn).trimmed().isEmpty())
        return Refusal{nameColumn, QStringLiteral("Enter the name of the deductor.")};
    for (const Page &page : pages()) {
        for (const Slot &slot : page.fields) {
            const QString column = columnOf(slot);
            const QString text = record.value(column);
            // The status list comes from Status_Master, checked below rather than by the slot.
            const bool fromTable = slot.kind == FieldKind::Combo && slot.items.isEmpty() && !slot.stateList;
            const FieldRules::Outcome outcome = imported && !fromTable
                                                    ? FieldRules::imported(slot, text, data)
                                                    : FieldRules::leave(slot, imported ? FieldRules::typed(slot, text) : text, data);
            if (!outcome.ok)
                return Refusal{column, outcome.message};
            record[column] = outcome.text.trimmed();
            if (!imported || outcome.text.isEmpty())
                continue;
            // Typed, these come from lists; from a file they are checked against them.
            if (slot.width > 0 && outcome.text.size() > slot.width)
                return Refusal{column, QStringLiteral("longer than %1 characters").arg(slot.width)};
            if (slot.stateList && data.GetStateCode(outcome.text).isEmpty())
                return Refusal{column, QStringLiteral("\"%1\" is not a state of the list").arg(outcome.text)};
            QStringList statuses;
            if (column == QLatin1String("status") && !isStatusCode(data, outcome.text, &statuses))
                return Refusal{column, QStringLiteral("\"%1\" is not a status code (%2)")
                                           .arg(outcome.text, statuses.join(QStringLiteral(", ")))};
        }
    }
    if (isNew && exists(data, record.value(codeColumn)))
        return Refusal{codeColumn, QStringLiteral("A deductor with this code already exists.")};
    return std::nullopt;
}

bool exists(IDataObject &data, const QString &code)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select Code_No From Main_Info Where Code_No=") + data.quoted(code));
    return !rs.isEOF();
}

QStringList codes(IDataObject &data)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select Code_No From Main_Info Order By Code_No"));
    QStringList out;
    for (; !rs.isEOF(); rs.moveNext())
        out << rs.text(0);
    return out;
}

Record load(IDataObject &data, const QString &code)
{
    Record record;
    const QList<Page> all = pages();
    for (const bool main : {true, false}) {
        Recordset rs;
        query(data, rs, main ? QStringLiteral("Select * From Main_Info Where Code_No=") + data.quoted(code)
                             : QStringLiteral("Select * From Main_Info_oth Where code_no=") + data.quoted(code));
        const QList<Page> owned = main ? all.mid(0, 2) : all.mid(2);
        for (const Page &page : owned) {
            for (const Slot &slot : page.fields) {
                const QString column = columnOf(slot);
                record[column] = rs.isEOF() ? QString() : rs.text(column);
            }
        }
    }
    return record;
}

void save(IDataObject &data, const Record &record)
{
    const QString code = record.value(QStringLiteral("Code_No"));
    const QList<Page> all = pages();
    // Both rows are replaced together or not at all.
    QStringList statements;
    for (const bool main : {true, false}) {
        const QString table = main ? QStringLiteral("Main_Info") : QStringLiteral("Main_Info_oth");
        const QString keyColumn = main ? QStringLiteral("Code_No") : QStringLiteral("code_no");
        QStringList names{keyColumn};
        QStringList values{data.quoted(code)};
        const QList<Page> owned = main ? all.mid(0, 2) : all.mid(2);
        for (const Page &page : owned) {
            for (const Slot &slot : page.fields) {
                const QString column = columnOf(slot);
                if (column == QLatin1String("Code_No"))
                    continue;
                names << column;
                values << data.quoted(record.value(column));
            }
        }
        if (!main) {
            for (const QString &column : copiedToOther()) {
                names << column;
                values << data.quoted(record.value(column));
            }
        }
        statements << QStringLiteral("Delete From %1 Where %2=%3").arg(table, keyColumn, data.quoted(code))
                   << QStringLiteral("Insert Into %1 (%2) Values (%3)")
                          .arg(table, names.join(QLatin1Char(',')), values.join(QLatin1Char(',')));
    }
    TransactionGuard::apply(data, statements);
}

} // namespace DeductorMaster
