// The real implementations of the host services, registered under their programmatic names.
#include "host/DataObject.h"
#include "host/GeneralHelper.h"
#include "host/ServiceRegistry.h"
#include "host/online/OnlineActionWrapper.h"
#include "host/report/ReportObject.h"

namespace ServiceRegistry {

void registerBuiltins()
{
    // A name already taken (a test's fake) keeps its factory.
    if (!isRegistered(QString::fromLatin1(ProgId::DataObject)))
        registerFactory(QString::fromLatin1(ProgId::DataObject), createDataObject);
    if (!isRegistered(QString::fromLatin1(ProgId::ReportObject)))
        registerFactory(QString::fromLatin1(ProgId::ReportObject), createReportObject);
    if (!isRegistered(QString::fromLatin1(ProgId::OnlineAction)))
        registerFactory(QString::fromLatin1(ProgId::OnlineAction), createOnlineAction);
    if (!isRegistered(QString::fromLatin1(ProgId::GeneralHelper)))
        registerFactory(QString::fromLatin1(ProgId::GeneralHelper), createGeneralHelper);
}

} // namespace ServiceRegistry
