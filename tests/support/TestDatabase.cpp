#include "TestDatabase.h"

#include "host/DataHome.h"
#include "host/DataObject.h"
#include "host/Database.h"
#include "host/ErrorLog.h"
#include "host/ServiceRegistry.h"
#include "host/Settings.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace TestDatabase {

namespace {
QString &currentName()
{
    static QString name;
    return name;
}
} // namespace

bool prepareHome(QString *error)
{
    // Created before the server starts, so it is removed only after the server stopped.
    static QTemporaryDir root(QDir::tempPath() + QStringLiteral("/tdsforms-test-XXXXXX"));
    if (!root.isValid()) {
        if (error)
            *error = QStringLiteral("Cannot create a temporary folder: ") + root.errorString();
        return false;
    }
    static bool done = false;
    if (done)
        return true;
    const QString home = root.filePath(QStringLiteral("home"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(root.filePath(QStringLiteral("config"))));
    qputenv("XDG_DOCUMENTS_DIR", QFile::encodeName(root.filePath(QStringLiteral("documents"))));
    qputenv("TDSFORMS_HOME", QFile::encodeName(home));   // for child processes as well
    DataHome::setOverride(home);
    if (!DataHome::ensure(error))
        return false;
    done = true;
    return true;
}

QString homePath()
{
    return DataHome::path();
}

bool setUp(QString *error)
{
    if (!prepareHome(error))
        return false;
    DbConnection &db = DbConnection::instance();
    if (!db.open()) {
        if (error)
            *error = QStringLiteral("Embedded database: ") + db.lastError();
        return false;
    }
    const QString name = QStringLiteral("t_%1").arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0'));
    if (!db.useDatabase(name)) {
        if (error)
            *error = QStringLiteral("Test database %1: %2 [%3]").arg(name, db.lastError(), db.lastStatement());
        return false;
    }
    currentName() = name;
    DataObject::resetState();
    DataObject::setFormInfoPrompt({});
    DataObject::setMessageHook({});
    ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::DataObject), [] { return createDataObject(); });
    return true;
}

void tearDown()
{
    if (!currentName().isEmpty())
        DbConnection::instance().dropDatabase(currentName());
    currentName().clear();
    DataObject::resetState();
}

QString databaseName()
{
    return currentName();
}

std::shared_ptr<IDataObject> dataObject()
{
    return std::dynamic_pointer_cast<IDataObject>(createDataObject());
}

QStringList rows(IDataObject &d, const QString &sql)
{
    Recordset rs;
    if (!d.RecordsetQuery(rs, sql, d.cnnobj(), 3, 3, 1))
        return {QStringLiteral("<failed: %1>").arg(d.lastError())};
    QStringList out;
    for (; !rs.isEOF(); rs.moveNext()) {
        QStringList fields;
        for (int i = 0; i < rs.fieldCount(); ++i)
            fields << rs.text(i);
        out << fields.join(QLatin1Char('|'));
    }
    return out;
}

QString logText()
{
    QFile file(QDir(DataHome::path()).filePath(ErrorLog::fileName()));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void removeLog()
{
    QFile::remove(QDir(DataHome::path()).filePath(ErrorLog::fileName()));
}

} // namespace TestDatabase
