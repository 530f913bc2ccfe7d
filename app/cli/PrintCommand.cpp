#include "PrintCommand.h"

#include "CliContext.h"

#include "forms/StoredFormPrint.h"
#include "shared/modbase.h"

namespace {

QString usage()
{
    return QStringLiteral("usage: tdsforms-cli print 15c|15d|15i --deductor CODE --year YYYY-YY (--text | --pdf FILE)");
}

int fail(const QString &message, bool withUsage = false)
{
    cli::err() << "tdsforms-cli print: " << message << '\n';
    if (withUsage)
        cli::err() << usage() << '\n';
    cli::err().flush();
    return withUsage ? 2 : 1;
}

bool deductorExists(IDataObject &data, const QString &code)
{
    Recordset rs;
    if (!data.RecordsetQuery(rs, QStringLiteral("Select * From Main_Info Where Code_No='") + data.TruncVarSQL(code)
                                     + QStringLiteral("'"),
                             data.cnnobj(), 3, 3, 1))
        return false;
    const bool found = !rs.isBOF() && !rs.isEOF();
    rs.close();
    return found;
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

    const std::optional<StoredFormPrint::Form> form = StoredFormPrint::parseForm(formName);
    if (!form)
        return fail(formName.isEmpty() ? QStringLiteral("which form? 15c, 15d or 15i")
                                       : QStringLiteral("unknown form %1 (15c, 15d or 15i)").arg(formName),
                    true);
    if (deductor.isEmpty())
        return fail(QStringLiteral("--deductor is required"), true);
    if (!cli::isAssessmentYear(year))
        return fail(QStringLiteral("\"%1\" is not an assessment year such as 2024-25").arg(year), true);
    if (text == !pdfPath.isEmpty())
        return fail(QStringLiteral("give exactly one of --text and --pdf FILE"), true);

    IDataObject *data = cli::startServices();
    if (!data)
        return 1;
    IReportObject *report = modbase::reportObject();
    if (!deductorExists(*data, deductor))
        return fail(QStringLiteral("unknown deductor %1").arg(deductor));

    data->setCodeno(deductor);
    data->setAsYear(year);
    const bool built = modbase::errorTrap(QStringLiteral("tdsforms-cli"), QStringLiteral("print"),
                                          [&] { StoredFormPrint::build(*form); });
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
