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

} // namespace FormSupport
