#include "host/DataHome.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
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
