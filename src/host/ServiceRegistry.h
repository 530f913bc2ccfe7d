#pragma once
// Process-wide registry of host services by programmatic name ("ZeltBase.ClsData", ...).
// Production code registers the real services at start-up; tests register fakes under
// the same names.
#include "host/HostService.h"

#include <QString>
#include <functional>
#include <memory>

using ServiceFactory = std::function<std::shared_ptr<HostService>()>;

namespace ServiceRegistry {
void registerFactory(const QString &progId, ServiceFactory factory);
void unregisterFactory(const QString &progId);
bool isRegistered(const QString &progId);
// Registers the real implementations of every service this library provides
// (only names not registered yet, so a test's fake stays in place).
void registerBuiltins();
} // namespace ServiceRegistry

// Nothing when the name is not registered.
std::shared_ptr<HostService> createObject(const QString &progId);

template <class Interface>
std::shared_ptr<Interface> createObjectAs(const QString &progId)
{
    return std::dynamic_pointer_cast<Interface>(createObject(progId));
}

namespace ProgId {
inline const char *const DataObject = "ZeltBase.ClsData";
inline const char *const ReportObject = "PrjOrvikReporter.ClsMain";
inline const char *const OnlineAction = "OrvikOlActWrapper.ClsBaseMain";
inline const char *const GeneralHelper = "OrvikVelCom.TalvoCom";
inline const char *const ItdActions = "prjITDAct.clsMain";
} // namespace ProgId
