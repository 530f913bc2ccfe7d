#include "TransferCommands.h"

#include "CliContext.h"
#include "FormArguments.h"

#include "entry/FormRegistry.h"
#include "json/JSON.h"
#include "json/JsonWriter.h"
#include "shared/RecordTransfer.h"

#include <QFile>

namespace {

int fail(const QString &command, const QString &message, bool withUsage = false)
{
    cli::err() << "tdsforms-cli " << command << ": " << message << '\n';
    if (withUsage) {
        QStringList keys;
        for (const FormDescriptor &form : FormRegistry::all()) {
            if (form.transfer)
                keys << QString::fromLatin1(form.cliKey);
        }
        cli::err() << "usage: tdsforms-cli import FORM --deductor CODE --year YYYY-YY FILE\n"
                   << "       tdsforms-cli export FORM --deductor CODE --year YYYY-YY [--serial N]\n"
                   << "FORM: " << keys.join(QLatin1Char('|')) << '\n';
    }
    cli::err().flush();
    return withUsage ? 2 : 1;
}

// Arguments checked, the services started, the records of the period read.
std::unique_ptr<RecordTransfer> openTransfer(const QString &command, const FormArguments &a, int *rc)
{
    QString why;
    *rc = 2;
    if (!a.needsSelection(&why)) {
        fail(command, why, true);
        return nullptr;
    }
    if (!a.descriptor->transfer) {
        fail(command, QStringLiteral("%1 cannot be moved in or out of files").arg(a.form), true);
        return nullptr;
    }
    if (!a.pdf.isEmpty() || !a.rtf.isEmpty() || a.text) {
        fail(command, QStringLiteral("no output options here: the records go to standard output"), true);
        return nullptr;
    }
    *rc = 1;
    IDataObject *data = cli::startServices();
    if (!data)
        return nullptr;
    if (!cli::selectDeductorYear(*data, a.deductor, a.year, &why)) {
        fail(command, why);
        return nullptr;
    }
    std::unique_ptr<RecordTransfer> transfer = a.descriptor->transfer();
    if (!transfer->open(&why)) {
        fail(command, QStringLiteral("the stored records could not be read: ") + why);
        return nullptr;
    }
    return transfer;
}

bool readAll(const QString &name, QByteArray *bytes, QString *why)
{
    QFile file;
    const bool opened = name == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : (file.setFileName(name), file.open(QIODevice::ReadOnly));
    if (!opened) {
        *why = QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
        return false;
    }
    *bytes = file.readAll();
    return true;
}

} // namespace

int cmdImport(const QStringList &args)
{
    const QString command = QStringLiteral("import");
    FormArguments a;
    QString why;
    if (!a.parse(args, &why))
        return fail(command, why, true);
    if (a.file.isEmpty())
        return fail(command, QStringLiteral("which file? (- reads standard input)"), true);
    if (a.serial != 0)
        return fail(command, QStringLiteral("--serial is not for import: give \"serial\" in the record"), true);

    // The whole file is read and parsed before anything is stored.
    QByteArray bytes;
    if (!readAll(a.file, &bytes, &why))
        return fail(command, why);
    JsonParser parser;
    const JsonValue records = parser.parse(QString::fromUtf8(bytes));
    if (!parser.errors().isEmpty() || !records.isCollection())
        return fail(command, QStringLiteral("%1 is not a JSON array of records: %2")
                                 .arg(a.file, parser.errors().isEmpty() ? QStringLiteral("it does not start with [")
                                                                        : parser.errors().trimmed()));

    int rc = 0;
    std::unique_ptr<RecordTransfer> transfer = openTransfer(command, a, &rc);
    if (!transfer)
        return rc;
    bool refused = false;
    qsizetype position = 0;
    for (const JsonValue &record : *records.collection()) {
        ++position;
        const int serial = transfer->importRecord(record, &why);
        if (serial > 0) {
            cli::out() << serial << '\n';
        } else {
            refused = true;
            cli::err() << "tdsforms-cli import: record " << position << " not stored: " << why << '\n';
        }
    }
    cli::out().flush();
    cli::err().flush();
    return refused ? 1 : 0;
}

int cmdExport(const QStringList &args)
{
    const QString command = QStringLiteral("export");
    FormArguments a;
    QString why;
    if (!a.parse(args, &why))
        return fail(command, why, true);
    if (!a.file.isEmpty())
        return fail(command, QStringLiteral("unexpected argument %1").arg(a.file), true);
    int rc = 0;
    std::unique_ptr<RecordTransfer> transfer = openTransfer(command, a, &rc);
    if (!transfer)
        return rc;
    const QList<int> serials = a.serial ? QList<int>{a.serial} : transfer->serials();
    QByteArray text = "[";
    for (qsizetype i = 0; i < serials.size(); ++i) {
        const JsonValue record = transfer->exportRecord(serials[i], &why);
        if (record.isNull())
            return fail(command, why);
        text += i ? ",\n" : "\n";
        text += toCompactJson(record);
    }
    text += serials.isEmpty() ? "]\n" : "\n]\n";
    cli::out().flush();
    fwrite(text.constData(), 1, size_t(text.size()), stdout);
    fflush(stdout);
    return 0;
}
