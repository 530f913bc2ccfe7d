#include "host/DataHome.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace DataHome {

namespace {
QString &overridden()
{
    static QString dir;
    return dir;
}

QString clean(const QString &dir)
{
    QString p = QDir::cleanPath(QDir(dir).absolutePath());
    while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
        p.chop(1);
    return p;
}
} // namespace

void setOverride(const QString &dir)
{
    overridden() = dir.trimmed().isEmpty() ? QString() : clean(dir.trimmed());
}

QString overrideDir()
{
    return overridden();
}

QString path()
{
    if (!overridden().isEmpty())
        return overridden();
    const QString home = qEnvironmentVariable("TDSFORMS_HOME");
    if (!home.trimmed().isEmpty())
        return clean(home.trimmed());
    QString base = qEnvironmentVariable("XDG_DATA_HOME");
    if (base.trimmed().isEmpty())
        base = QDir::homePath() + QStringLiteral("/.local/share");
    return clean(base) + QStringLiteral("/tdsforms");
}

QString dataPath()
{
    return path() + QStringLiteral("/Data");
}

QString tempPath()
{
    return path() + QStringLiteral("/Temp/");
}

QString dbPath()
{
    return path() + QStringLiteral("/db");
}

QString docPath()
{
    QString base = qEnvironmentVariable("XDG_DOCUMENTS_DIR");
    if (base.trimmed().isEmpty())
        base = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (base.trimmed().isEmpty())
        base = QDir::homePath() + QStringLiteral("/Documents");
    const QString dir = clean(base) + QStringLiteral("/TDSForms");
    QDir().mkpath(dir);
    return dir;
}

int seed(const QString &sourceRoot, const QString &target)
{
    int copied = 0;
    const QDir source(sourceRoot);
    QDirIterator it(sourceRoot, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next();
        const QString to = target + QLatin1Char('/') + source.relativeFilePath(from);
        if (QFileInfo::exists(to))
            continue;   // the user's own copy wins
        QDir().mkpath(QFileInfo(to).absolutePath());
        if (QFile::copy(from, to)) {
            // Resource files come out read-only.
            QFile::setPermissions(to, QFile::permissions(to) | QFileDevice::WriteOwner | QFileDevice::ReadOwner);
            ++copied;
        }
    }
    return copied;
}

namespace {
// Schemas the server keeps for itself; tables there are not the user's data.
bool isServerSchema(const QString &name)
{
    for (const char *own : {"mysql", "performance_schema", "sys", "#innodb_temp", "#innodb_redo"}) {
        if (name.compare(QLatin1String(own), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool holdsTables(const QString &schemaDir)
{
    static const QStringList tableFiles{QStringLiteral("*.frm"), QStringLiteral("*.ibd"), QStringLiteral("*.MYD"),
                                        QStringLiteral("*.MYI"), QStringLiteral("*.MAD"), QStringLiteral("*.MAI"),
                                        QStringLiteral("*.CSV"), QStringLiteral("*.ARZ")};
    return !QDir(schemaDir).entryList(tableFiles, QDir::Files | QDir::Hidden).isEmpty();
}

bool writeMarker(const QString &path, const QByteArray &text, QString *error)
{
    QSaveFile marker(path);
    if (marker.open(QIODevice::WriteOnly) && marker.write(text) == text.size() && marker.commit())
        return true;
    if (error)
        *error = QStringLiteral("Cannot write %1 (%2); check that the folder is writable and the disk has space.")
                     .arg(QDir::toNativeSeparators(path), marker.errorString());
    return false;
}
} // namespace

QString dbCompleteMarker(const QString &dir)
{
    return dir + QStringLiteral("/tdsforms.complete");
}

QString dbBuildingMarker(const QString &dir)
{
    return dir + QStringLiteral("/tdsforms.building");
}

DbState inspectDb(const QString &dir)
{
    const QDir db(dir);
    if (!db.exists())
        return DbState::Empty;
    if (QFileInfo::exists(dbCompleteMarker(dir)))
        return DbState::Complete;
    // Our own first start never got as far as its tables: whatever is there holds no data,
    // even when the server had begun writing table files.
    if (QFileInfo::exists(dbBuildingMarker(dir)))
        return DbState::Unfinished;
    const QStringList schemas = db.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString &schema : schemas) {
        if (!isServerSchema(schema) && holdsTables(db.filePath(schema)))
            return DbState::HoldsData;
    }
    if (db.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System).isEmpty())
        return DbState::Empty;
    return DbState::Unfinished;
}

bool markDbBuilding(const QString &dir, QString *error)
{
    return writeMarker(dbBuildingMarker(dir),
                       "A first start is building this database; if it stays, that start was interrupted.\n", error);
}

bool markDbComplete(const QString &dir, QString *error)
{
    if (!writeMarker(dbCompleteMarker(dir), "Built completely by TDS Forms.\n", error))
        return false;
    const QString building = dbBuildingMarker(dir);
    if (QFileInfo::exists(building) && !QFile::remove(building)) {
        if (error)
            *error = QStringLiteral("Cannot remove %1; check that the folder is writable.")
                         .arg(QDir::toNativeSeparators(building));
        return false;
    }
    return true;
}

bool recoverUnfinishedDb(const QString &dir, QString *movedTo, QString *error)
{
    if (movedTo)
        movedTo->clear();
    if (inspectDb(dir) != DbState::Unfinished)
        return true;
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside = dir + QStringLiteral(".unfinished-") + stamp;
    for (int n = 2; QFileInfo::exists(aside); ++n)
        aside = dir + QStringLiteral(".unfinished-%1-%2").arg(stamp).arg(n);
    if (!QDir().rename(dir, aside) || !QDir().mkpath(dir)) {
        if (error)
            *error = QStringLiteral("The database folder %1 was left unfinished by an interrupted first start and "
                                    "cannot be moved aside to %2. Move or remove it yourself, then start again.")
                         .arg(QDir::toNativeSeparators(dir), QDir::toNativeSeparators(aside));
        return false;
    }
    if (movedTo)
        *movedTo = aside;
    return true;
}

bool ensure(QString *error)
{
    for (const QString &dir : {path(), dataPath(), tempPath(), dbPath()}) {
        if (!QDir().mkpath(dir)) {
            if (error)
                *error = QStringLiteral("Cannot create the folder %1").arg(QDir::toNativeSeparators(dir));
            return false;
        }
    }
    seed(QStringLiteral(":/data/seed"), dataPath());
    return true;
}

} // namespace DataHome
