#include "forms/FormSupport.h"

#include "host/ServiceRegistry.h"
#include "shared/modbase.h"

namespace FormSupport {

IDataObject &data()
{
    return modbase::data();
}

IReportObject &report()
{
    return modbase::report();
}

} // namespace FormSupport
