#include "FormArguments.h"

#include "CliContext.h"

#include "entry/FormRegistry.h"

bool FormArguments::parse(const QStringList &args, QString *why)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        const auto value = [&](QString &into, const char *what) {
            if (i + 1 >= args.size()) {
                *why = QStringLiteral("%1 needs %2").arg(a, QLatin1String(what));
                return false;
            }
            into = args.at(++i);
            return true;
        };
        if (a == QLatin1String("--deductor")) {
            if (!value(deductor, "a code"))
                return false;
        } else if (a == QLatin1String("--year")) {
            if (!value(year, "an assessment year"))
                return false;
        } else if (a == QLatin1String("--pdf")) {
            if (!value(pdf, "a file name"))
                return false;
        } else if (a == QLatin1String("--rtf")) {
            if (!value(rtf, "a file name"))
                return false;
        } else if (a == QLatin1String("--serial")) {
            QString s;
            if (!value(s, "a number"))
                return false;
            bool ok = false;
            serial = s.toInt(&ok);
            if (!ok || serial <= 0) {
                *why = QStringLiteral("--serial needs a positive number, not \"%1\"").arg(s);
                return false;
            }
        } else if (a == QLatin1String("--text")) {
            text = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            *why = QStringLiteral("unknown option %1").arg(a);
            return false;
        } else if (form.isEmpty()) {
            form = a;
        } else if (file.isEmpty()) {
            file = a;
        } else {
            *why = QStringLiteral("unexpected argument %1").arg(a);
            return false;
        }
    }
    descriptor = FormRegistry::byCliKey(form);
    if (!descriptor) {
        *why = form.isEmpty() ? QStringLiteral("which form? %1").arg(FormRegistry::cliKeys())
                              : QStringLiteral("unknown form %1 (%2)").arg(form, FormRegistry::cliKeys());
        return false;
    }
    return true;
}

bool FormArguments::needsSelection(QString *why) const
{
    if (deductor.trimmed().isEmpty()) {
        *why = QStringLiteral("--deductor is required");
        return false;
    }
    if (!cli::isAssessmentYear(year)) {
        *why = QStringLiteral("\"%1\" is not an assessment year such as 2024-25").arg(year);
        return false;
    }
    return true;
}
