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
        if (opt == QLatin1String("--home") || opt == QLatin1String("--db")) {
            if (i + 1 >= arguments.size()) {
                *error = opt + QStringLiteral(" needs a value; start TDS Forms again with one, or without ") + opt;
                return nullptr;
            }
            const QString value = arguments[++i];
            if (opt == QLatin1String("--home")) {
                // An empty value would quietly open the default home instead.
                if (value.trimmed().isEmpty()) {
                    *error = QStringLiteral("--home was given an empty folder; give the data home's folder, or leave "
                                            "--home out to use the default one.");
                    return nullptr;
                }
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
