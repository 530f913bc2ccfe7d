#include "HostStartup.h"

#include "host/DataHome.h"
#include "host/DataObject.h"
#include "host/ServiceRegistry.h"
#include "host/Settings.h"

namespace HostStartup {

std::unique_ptr<Forms> start(const QStringList &arguments, QString *error)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &opt = arguments[i];
        if ((opt == QLatin1String("--home") || opt == QLatin1String("--db")) && i + 1 < arguments.size()) {
            const QString value = arguments[++i];
            if (opt == QLatin1String("--home")) {
                DataHome::setOverride(value);
            } else {
                Settings::DatabaseConfig config;
                QString why;
                if (!Settings::parseDatabaseUrl(value, config, &why)) {
                    *error = QStringLiteral("--db: ") + why;
                    return nullptr;
                }
                Settings::setDatabaseUrlOverride(value);
            }
        }
    }

    ServiceRegistry::registerBuiltins();
    std::unique_ptr<Forms> component = Forms::create(error);
    if (!component)
        return nullptr;
    IDataObject *d = modbase::dataObject();
    if (!d->connect()) {
        *error = QStringLiteral("The database cannot be opened: ") + d->lastError();
        return nullptr;
    }

    // First start: an empty database gets the demo deductor so the forms can be tried at once.
    Recordset rs;
    if (d->RecordsetQuery(rs, QStringLiteral("Select Count(*) From Main_Info"), d->cnnobj()) && !rs.isEOF()
        && rs.field(0).toInt() == 0) {
        auto *real = dynamic_cast<DataObject *>(d);
        if (real && !real->loadDemo()) {
            *error = QStringLiteral("The demo deductor could not be loaded: ") + d->lastError();
            return nullptr;
        }
        d->setCodeno(QStringLiteral("DEMO01"));
    }
    return component;
}

} // namespace HostStartup
