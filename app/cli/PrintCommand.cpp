#include "PrintCommand.h"

#include "CliContext.h"

#include "entry/FormRegistry.h"
#include "shared/FormLogic.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString usage()
{
    return QStringLiteral("usage: tdsforms-cli print %1 --deductor CODE --year YYYY-YY (--text | --pdf FILE)")
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

} // namespace

int cmdPrint(const QStringList &argsIn)
{
    QStringList args = argsIn;
    if (!args.isEmpty() && args.first() == QLatin1String("print"))
        args.removeFirst();

    QString formName, deductor, year, pdfPath;
    bool text = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        auto value = [&](QString &into) {
            if (i + 1 >= args.size())
                return false;
            into = args.at(++i);
            return true;
        };
        if (a == QLatin1String("--deductor")) {
            if (!value(deductor))
                return fail(QStringLiteral("--deductor needs a code"), true);
        } else if (a == QLatin1String("--year")) {
            if (!value(year))
                return fail(QStringLiteral("--year needs an assessment year"), true);
        } else if (a == QLatin1String("--pdf")) {
            if (!value(pdfPath))
                return fail(QStringLiteral("--pdf needs a file name"), true);
        } else if (a == QLatin1String("--text")) {
            text = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            return fail(QStringLiteral("unknown option %1").arg(a), true);
        } else if (formName.isEmpty()) {
            formName = a;
        } else {
            return fail(QStringLiteral("unexpected argument %1").arg(a), true);
        }
    }

    const FormDescriptor *form = FormRegistry::byCliKey(formName);
    if (!form || !form->logic)
        return fail(formName.isEmpty() ? QStringLiteral("which form? %1").arg(FormRegistry::cliKeys())
                                       : QStringLiteral("unknown form %1 (%2)").arg(formName, FormRegistry::cliKeys()),
                    true);
    if (deductor.isEmpty())
        return fail(QStringLiteral("--deductor is required"), true);
    if (!cli::isAssessmentYear(year))
        return fail(QStringLiteral("\"%1\" is not an assessment year such as 2024-25").arg(year), true);
    if (text == !pdfPath.isEmpty())
        return fail(QStringLiteral("give exactly one of --text and --pdf FILE"), true);
    // A mistyped folder is refused, not created.
    const QFileInfo pdfFile(pdfPath);
    if (!pdfPath.isEmpty() && !pdfFile.absoluteDir().exists())
        return fail(QStringLiteral("the folder %1 does not exist; create it first or give --pdf a file in an existing folder")
                        .arg(QDir::toNativeSeparators(pdfFile.absolutePath())));

    IDataObject *data = cli::startServices();
    if (!data)
        return 1;
    IReportObject *report = modbase::reportObject();
    QString why;
    if (!cli::selectDeductorYear(*data, deductor, year, &why))
        return fail(why);
    std::unique_ptr<FormLogic> logic = form->logic();
    if (!logic->load())
        return fail(QStringLiteral("the stored %1 could not be read: %2").arg(QString::fromUtf8(form->caption), logic->loadError()));
    const bool built = modbase::errorTrap(QStringLiteral("tdsforms-cli"), QStringLiteral("print"), [&] {
        report->NewReport();
        report->setDocumentName(logic->documentName());
        logic->buildReport();
    });
    if (!built)
        return fail(QStringLiteral("the report could not be built (see the error log)"));

    if (text) {
        cli::out() << report->reportText();
        cli::out().flush();
        return 0;
    }
    if (!report->exportPdf(pdfPath))
        return fail(QStringLiteral("cannot write %1").arg(pdfPath));
    return 0;
}
