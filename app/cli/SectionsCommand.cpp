#include "SectionsCommand.h"

#include "CliContext.h"

#include "challan/SectionList.h"
#include "host/DataHome.h"

namespace {

int fail(const QString &message, int status = 2)
{
    cli::err() << "tdsforms-cli sections: " << message << '\n';
    if (status == 2)
        cli::err() << "usage: tdsforms-cli sections --year YYYY-YY [--get-li KEY | --get-code KEY]\n";
    cli::err().flush();
    return status;
}

} // namespace

int cmdSections(const QStringList &args)
{
    QString year, action, key;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (a != QLatin1String("--year") && a != QLatin1String("--get-li") && a != QLatin1String("--get-code"))
            return fail(QStringLiteral("unknown argument %1").arg(a));
        if (i + 1 >= args.size())
            return fail(QStringLiteral("%1 needs a value").arg(a));
        const QString value = args.at(++i);
        if (a == QLatin1String("--year")) {
            year = value;
            continue;
        }
        if (!action.isEmpty())
            return fail(QStringLiteral("give one of --get-li and --get-code"));
        action = a == QLatin1String("--get-li") ? QStringLiteral("GETLI") : QStringLiteral("GETCODE");
        key = value;
    }
    if (year.isEmpty())
        return fail(QStringLiteral("--year is required"));
    if (!cli::isAssessmentYear(year))
        return fail(QStringLiteral("\"%1\" is not an assessment year such as 2025-26").arg(year));

    // A fresh data home gets its section file here, as on the first start of the window.
    QString why;
    if (!DataHome::ensure(&why))
        return fail(why, 1);
    const QString home = SectionList::exePath();
    if (!action.isEmpty()) {
        cli::out() << SectionList::sectionList(action, key, year, home) << '\n';
        return 0;
    }
    for (const SectionList::SectionEntry &e : SectionList::entries(year, home))
        cli::out() << e.key << '|' << e.code << '|' << e.text << '\n';
    return 0;
}
