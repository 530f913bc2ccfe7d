#include "host/ServiceRegistry.h"

#include <QHash>
#include <QMutex>

namespace {
QMutex &mutex()
{
    static QMutex m;
    return m;
}
QHash<QString, ServiceFactory> &factories()
{
    static QHash<QString, ServiceFactory> f;
    return f;
}
} // namespace

namespace ServiceRegistry {

void registerFactory(const QString &progId, ServiceFactory factory)
{
    QMutexLocker lock(&mutex());
    factories().insert(progId.toLower(), std::move(factory));
}

void unregisterFactory(const QString &progId)
{
    QMutexLocker lock(&mutex());
    factories().remove(progId.toLower());
}

bool isRegistered(const QString &progId)
{
    QMutexLocker lock(&mutex());
    return factories().contains(progId.toLower());
}

} // namespace ServiceRegistry

std::shared_ptr<HostService> createObject(const QString &progId)
{
    ServiceFactory factory;
    {
        QMutexLocker lock(&mutex());
        factory = factories().value(progId.toLower());
    }
    return factory ? factory() : nullptr;
}
