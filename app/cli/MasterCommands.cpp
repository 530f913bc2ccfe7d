#include "MasterCommands.h"

#include "CliContext.h"

#include "host/IDataObject.h"
#include "json/JSON.h"
#include "json/JsonWriter.h"
#include "property/DeducteeMaster.h"
#include "shared/DeductorMaster.h"
#include "shared/JsonRecord.h"
#include "shared/modbase.h"

#include <QFile>

namespace {

// The members of a deductee in txtfields order.
const char *const kDeducteeKeys[] = {"name", "pan", "dob", "flat", "building", "street", "area", "city", "state", "pin"};
const QString kGroup = QStringLiteral("group");

int fail(const QString &command, const QString &message, bool usage = false)
{
    cli::err() << "tdsforms-cli " << command << ": " << message << '\n';
    if (usage)
        cli::err() << "usage: tdsforms-cli deductees import --deductor CODE [FILE]\n"
                   << "       tdsforms-cli deductees export --deductor CODE\n"
                   << "       tdsforms-cli deductees delete --deductor CODE --serial N\n"
                   << "       tdsforms-cli deductors import [FILE]\n"
                   << "       tdsforms-cli deductors export\n";
    cli::err().flush();
    return usage ? 2 : 1;
}

QString captionOf(const Slot &slot)
{
    return QString(slot.caption).remove(QLatin1Char('&')).trimmed();
}

// A JSON array of records from the file, or standard input for none or "-".
bool readRecords(const QString &name, JsonValue *records, QString *why)
{
    QFile file;
    const bool stdIn = name.isEmpty() || name == QLatin1String("-");
    const bool opened = stdIn ? file.open(stdin, QIODevice::ReadOnly)
                              : (file.setFileName(name), file.open(QIODevice::ReadOnly));
    const QString shown = stdIn ? QStringLiteral("standard input") : name;
    if (!opened) {
        *why = QStringLiteral("cannot read %1: %2").arg(shown, file.errorString());
        return false;
    }
    JsonParser parser;
    *records = parser.parse(QString::fromUtf8(file.readAll()));
    if (!parser.errors().isEmpty() || !records->isCollection()) {
        *why = QStringLiteral("%1 is not a JSON array of records: %2")
                   .arg(shown, parser.errors().isEmpty() ? QStringLiteral("it does not start with [") : parser.errors().trimmed());
        return false;
    }
    return true;
}

// The deductor made the data object's current one (the code as stored).
bool selectDeductor(IDataObject &data, const QString &code, QString *why)
{
    Recordset rs;
    if (!data.RecordsetQuery(rs, QStringLiteral("Select Code_No From Main_Info Where Code_No=") + data.quoted(code),
                             data.cnnobj(), 3, 3, 1)) {
        *why = QStringLiteral("the deductors cannot be read: %1").arg(data.lastError());
        return false;
    }
    if (rs.isEOF()) {
        *why = QStringLiteral("unknown deductor %1; add it in the TDS Forms window or with "
                              "`tdsforms-cli deductors import`")
                   .arg(code);
        return false;
    }
    data.setCodeno(rs.text(0));
    return true;
}

void writeArray(const QList<JsonValue> &records)
{
    QByteArray text = "[";
    for (qsizetype i = 0; i < records.size(); ++i) {
        text += i ? ",\n" : "\n";
        text += toCompactJson(records[i]);
    }
    text += records.isEmpty() ? "]\n" : "\n]\n";
    cli::out().flush();
    fwrite(text.constData(), 1, size_t(text.size()), stdout);
    fflush(stdout);
}

int importDeductees(DeducteeMaster &master, const JsonValue &records)
{
    const SlotTable table = DeducteeMaster::fields();
    bool refused = false;
    qsizetype position = 0;
    for (const JsonValue &record : *records.collection()) {
        ++position;
        JsonRecordReader reader(record);
        const int serial = reader.serial();
        QStringList values;
        for (const char *key : kDeducteeKeys)
            values << reader.text(QLatin1String(key));
        const QString group = reader.text(kGroup);
        QString why;
        int stored = 0;
        if (!reader.finish()) {
            why = reader.error();
        } else {
            stored = master.store(serial, values, group, &why);
            const int field = master.refusedField();
            if (!stored && field == DeducteeMaster::GroupField)
                why = QStringLiteral("\"group\": ") + why;
            else if (!stored && field >= 0)
                why = QStringLiteral("\"%1\" (%2): %3").arg(QLatin1String(kDeducteeKeys[field]), captionOf(table.at(field)), why);
        }
        if (stored) {
            cli::out() << stored << '\n';
        } else {
            refused = true;
            cli::err() << "tdsforms-cli deductees import: record " << position << " not stored: " << why << '\n';
        }
    }
    cli::out().flush();
    cli::err().flush();
    return refused ? 1 : 0;
}

void exportDeductees(const DeducteeMaster &master)
{
    QList<JsonValue> out;
    for (const Deductee &d : master.deductees()) {
        JsonValue record = JsonValue::newDictionary();
        JsonDictionary *dict = record.dictionary();
        dict->add(QStringLiteral("serial"), JsonValue(Decimal(d.serial)));
        for (int i = 0; i < DeducteeMaster::FieldCount; ++i)
            dict->add(QLatin1String(kDeducteeKeys[i]), JsonValue(d.values.value(i)));
        dict->add(kGroup, JsonValue(d.group));
        out << record;
    }
    writeArray(out);
}

QString deductorCaption(const QString &column)
{
    for (const DeductorMaster::Page &page : DeductorMaster::pages()) {
        for (const Slot &slot : page.fields) {
            if (DeductorMaster::columnOf(slot) == column)
                return captionOf(slot);
        }
    }
    return column;
}

int importDeductors(IDataObject &data, const JsonValue &records)
{
    const QStringList columns = DeductorMaster::columns();
    bool refused = false;
    qsizetype position = 0;
    for (const JsonValue &value : *records.collection()) {
        ++position;
        JsonRecordReader reader(value);
        DeductorMaster::Record record;
        for (const QString &column : columns)
            record[column] = reader.text(column);
        QString why;
        bool stored = false;
        if (!reader.finish()) {
            why = reader.error();
        } else {
            std::optional<DeductorMaster::Refusal> refusal;
            // A code already stored is replaced, as the dialog's Save replaces it.
            stored = modbase::errorTrap(QStringLiteral("tdsforms-cli"), QStringLiteral("deductors import"), [&] {
                refusal = DeductorMaster::check(data, record, false, true);
                if (!refusal)
                    DeductorMaster::save(data, record);
            }, &why) && !refusal;
            if (refusal)
                why = QStringLiteral("\"%1\" (%2): %3").arg(refusal->column, deductorCaption(refusal->column), refusal->message);
        }
        if (stored) {
            cli::out() << record.value(QStringLiteral("Code_No")) << '\n';
        } else {
            refused = true;
            const QString code = record.value(QStringLiteral("Code_No")).trimmed();
            cli::err() << "tdsforms-cli deductors import: record " << position
                       << (code.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(code)) << " not stored: " << why << '\n';
        }
    }
    cli::out().flush();
    cli::err().flush();
    return refused ? 1 : 0;
}

int exportDeductors(IDataObject &data)
{
    QList<JsonValue> out;
    QString why;
    const bool ok = modbase::errorTrap(QStringLiteral("tdsforms-cli"), QStringLiteral("deductors export"), [&] {
        for (const QString &code : DeductorMaster::codes(data)) {
            const DeductorMaster::Record record = DeductorMaster::load(data, code);
            JsonValue object = JsonValue::newDictionary();
            for (const QString &column : DeductorMaster::columns())
                object.dictionary()->add(column, JsonValue(record.value(column)));
            out << object;
        }
    }, &why);
    if (!ok)
        return fail(QStringLiteral("deductors export"), QStringLiteral("the deductors could not be read: ") + why);
    writeArray(out);
    return 0;
}

} // namespace

int cmdDeductees(const QStringList &args)
{
    QString command = QStringLiteral("deductees");
    if (args.isEmpty())
        return fail(command, QStringLiteral("import, export or delete?"), true);
    const QString action = args.first();
    command += QLatin1Char(' ') + action;
    QString deductor;
    QString file;
    int serial = 0;
    for (int i = 1; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (a == QLatin1String("--deductor") || a == QLatin1String("--serial")) {
            if (i + 1 >= args.size())
                return fail(command, a + QStringLiteral(" needs a value"), true);
            const QString value = args.at(++i);
            if (a == QLatin1String("--deductor")) {
                deductor = value;
                continue;
            }
            bool ok = false;
            serial = value.toInt(&ok);
            if (!ok || serial <= 0)
                return fail(command, QStringLiteral("--serial needs a positive number, not \"%1\"").arg(value), true);
        } else if (a.startsWith(QLatin1String("--"))) {
            return fail(command, QStringLiteral("unknown option %1").arg(a), true);
        } else if (file.isEmpty() && action == QLatin1String("import")) {
            file = a;
        } else {
            return fail(command, QStringLiteral("unexpected argument %1").arg(a), true);
        }
    }
    if (action != QLatin1String("import") && action != QLatin1String("export") && action != QLatin1String("delete"))
        return fail(QStringLiteral("deductees"), QStringLiteral("unknown action %1").arg(action), true);
    if (deductor.trimmed().isEmpty())
        return fail(command, QStringLiteral("--deductor is required"), true);
    if ((action == QLatin1String("delete")) != (serial > 0))
        return fail(command, action == QLatin1String("delete") ? QStringLiteral("which deductee? give --serial N")
                                                                : QStringLiteral("--serial is only for delete"),
                    true);

    // The whole file is read and parsed before anything is stored.
    JsonValue records;
    QString why;
    if (action == QLatin1String("import") && !readRecords(file, &records, &why))
        return fail(command, why);
    IDataObject *data = cli::startServices();
    if (!data)
        return 1;
    if (!selectDeductor(*data, deductor, &why))
        return fail(command, why);
    DeducteeMaster master;
    if (!master.load())
        return fail(command, QStringLiteral("the deductees could not be read: ") + master.loadError());
    if (action == QLatin1String("import"))
        return importDeductees(master, records);
    if (action == QLatin1String("export")) {
        exportDeductees(master);
        return 0;
    }
    if (!master.remove(serial, &why))
        return fail(command, why);
    return 0;
}

int cmdDeductors(const QStringList &args)
{
    QString command = QStringLiteral("deductors");
    if (args.isEmpty())
        return fail(command, QStringLiteral("import or export?"), true);
    const QString action = args.first();
    command += QLatin1Char(' ') + action;
    const bool importing = action == QLatin1String("import");
    if (!importing && action != QLatin1String("export"))
        return fail(QStringLiteral("deductors"), QStringLiteral("unknown action %1").arg(action), true);
    if (args.size() > (importing ? 2 : 1))
        return fail(command, QStringLiteral("unexpected argument %1").arg(args.last()), true);
    if (args.size() == 2 && args.at(1).startsWith(QLatin1String("--")))
        return fail(command, QStringLiteral("unknown option %1").arg(args.at(1)), true);

    JsonValue records;
    QString why;
    if (importing && !readRecords(args.value(1), &records, &why))
        return fail(command, why);
    IDataObject *data = cli::startServices();
    if (!data)
        return 1;
    return importing ? importDeductors(*data, records) : exportDeductors(*data);
}
