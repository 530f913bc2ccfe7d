#include "forms/FormSupport.h"

#include "host/ServiceRegistry.h"
#include "shared/modbase.h"

namespace FormSupport {

IDataObject &data()
{
    if (IDataObject *d = modbase::dataObject())
        return *d;
    throw TdsError(91, QStringLiteral("Object variable not set (%1)").arg(QLatin1String(ProgId::DataObject)));
}

IReportObject &report()
{
    if (IReportObject *r = modbase::reportObject())
        return *r;
    throw TdsError(91, QStringLiteral("Object variable not set (%1)").arg(QLatin1String(ProgId::ReportObject)));
}

int leadingNumber(const QString &text)
{
    const QString trimmed = text.trimmed();
    int end = 0;
    while (end < trimmed.size() && end < 9 && trimmed.at(end).isDigit())
        ++end;
    return trimmed.left(end).toInt();
}

} // namespace FormSupport
