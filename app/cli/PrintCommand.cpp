#include "PrintCommand.h"

#include "CliContext.h"
#include "FormArguments.h"

#include "entry/FormRegistry.h"
#include "host/IReportObject.h"
#include "shared/FormLogic.h"
#include "shared/RecordTransfer.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString usage()
{
    return QStringLiteral("usage: tdsforms-cli print FORM --deductor CODE --year YYYY-YY (--text | --pdf FILE)\n"
                          "       tdsforms-cli print FORM --deductor CODE --year YYYY-YY --serial N (--rtf FILE | --pdf FILE)\n"
                          "FORM: %1")
        .arg(FormRegistry::cliKeys());
}

int fail(const QString &message, bool withUsage = false)
{
    cli::err() << "tdsforms-cli print: " << message << '\n';
    if (withUsage)
        cli::err() << usage() << '\n';
    cli::err().flush();
    return withUsage ? 2 : 1;
}

// A mistyped folder is refused, not created.
bool folderExists(const QString &path, QString *why)
{
    const QFileInfo file(path);
    if (path.isEmpty() || file.absoluteDir().exists())
        return true;
    *why = QStringLiteral("the folder %1 does not exist; create it first or give a file in an existing folder")
               .arg(QDir::toNativeSeparators(file.absolutePath()));
    return false;
}

// A form that keeps several records: one of them, filled into its template.
int printRecord(const FormArguments &a, IReportObject &report)
{
    std::unique_ptr<RecordTransfer> transfer = a.descriptor->transfer();
    QString why;
    if (!transfer->open(&why))
        return fail(QStringLiteral("the stored %1 could not be read: %2").arg(QString::fromUtf8(a.descriptor->caption), why));
    if (!transfer->render(a.serial, report, &why))
        return fail(why);
    if (!a.rtf.isEmpty() && !report.SaveMasterFile(a.rtf))
        return fail(QStringLiteral("cannot write %1").arg(a.rtf));
    if (!a.pdf.isEmpty() && !report.exportPdf(a.pdf))
        return fail(QStringLiteral("cannot write %1").arg(a.pdf));
    return 0;
}

// A form with one record per deductor and year, through its report builder.
int printForm(const FormArguments &a, IReportObject &report)
{
    std::unique_ptr<FormLogic> logic = a.descriptor->logic();
    if (!logic->load())
        return fail(QStringLiteral("the stored %1 could not be read: %2").arg(QString::fromUtf8(a.descriptor->caption), logic->loadError()));
    const bool built = modbase::errorTrap(QStringLiteral("tdsforms-cli"), QStringLiteral("print"), [&] {
        report.NewReport();
        report.setDocumentName(logic->documentName());
        logic->buildReport();
    });
    if (!built)
        return fail(QStringLiteral("the report could not be built (see the error log)"));
    if (a.text) {
        cli::out() << report.reportText();
        cli::out().flush();
        return 0;
    }
    if (!report.exportPdf(a.pdf))
        return fail(QStringLiteral("cannot write %1").arg(a.pdf));
    return 0;
}

} // namespace

int cmdPrint(const QStringList &argsIn)
{
    QStringList args = argsIn;
    if (!args.isEmpty() && args.first() == QLatin1String("print"))
        args.removeFirst();

    FormArguments a;
    QString why;
    if (!a.parse(args, &why) || !a.needsSelection(&why))
        return fail(why, true);
    if (!a.file.isEmpty())
        return fail(QStringLiteral("unexpected argument %1").arg(a.file), true);
    const bool records = a.descriptor->transfer != nullptr;
    if (records) {
        if (a.serial == 0)
            return fail(QStringLiteral("%1 keeps several records: give --serial N").arg(a.form), true);
        if (a.text || a.rtf.isEmpty() == a.pdf.isEmpty())
            return fail(QStringLiteral("give exactly one of --rtf FILE and --pdf FILE"), true);
    } else {
        if (!a.descriptor->logic)
            return fail(QStringLiteral("%1 cannot be printed here").arg(a.form), true);
        if (a.serial != 0 || !a.rtf.isEmpty())
            return fail(QStringLiteral("%1 has one record per deductor and year: no --serial, no --rtf").arg(a.form), true);
        if (a.text == !a.pdf.isEmpty())
            return fail(QStringLiteral("give exactly one of --text and --pdf FILE"), true);
    }
    if (!folderExists(a.pdf, &why) || !folderExists(a.rtf, &why))
        return fail(why);

    IDataObject *data = cli::startServices();
    if (!data)
        return 1;
    IReportObject *report = modbase::reportObject();
    if (!cli::selectDeductorYear(*data, a.deductor, a.year, &why))
        return fail(why);
    return records ? printRecord(a, *report) : printForm(a, *report);
}
