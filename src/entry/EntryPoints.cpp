#include "entry/EntryPoints.h"

#include <QAtomicInt>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <dlfcn.h>

namespace {
QAtomicInt g_factories;

class Factory final : public FormsClassFactory
{
public:
    Factory() { g_factories.ref(); }
    ~Factory() override { g_factories.deref(); }
    Forms *createInstance(QString *error) override { return Forms::create(error).release(); }
    void release() override { delete this; }
};

QString libraryPath()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void *>(&tdsforms_register_server), &info) && info.dli_fname)
        return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absoluteFilePath();
    return QString();
}

QString classGroup()
{
    return QStringLiteral("CLSID/") + QString::fromLatin1(kFormsClassId);
}
} // namespace

QString tdsformsRegistryFile()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
        .filePath(QStringLiteral("tdsforms/registry.ini"));
}

int tdsforms_register_server()
{
    const QString path = libraryPath();
    if (path.isEmpty())
        return TDS_E_FAIL;
    QDir().mkpath(QFileInfo(tdsformsRegistryFile()).absolutePath());
    QSettings reg(tdsformsRegistryFile(), QSettings::IniFormat);
    reg.beginGroup(classGroup());
    reg.setValue(QStringLiteral("Class"), QStringLiteral("Forms"));
    reg.setValue(QStringLiteral("ProgID"), QString::fromLatin1(kFormsProgId));
    reg.setValue(QStringLiteral("InprocServer"), path);
    reg.setValue(QStringLiteral("Version"), Forms::fileVersion());
    reg.setValue(QStringLiteral("Interface"), QStringLiteral("_Forms"));
    reg.endGroup();
    reg.setValue(QStringLiteral("ProgID/") + QString::fromLatin1(kFormsProgId), QString::fromLatin1(kFormsClassId));
    reg.sync();
    return reg.status() == QSettings::NoError ? TDS_S_OK : TDS_E_FAIL;
}

int tdsforms_unregister_server()
{
    QSettings reg(tdsformsRegistryFile(), QSettings::IniFormat);
    reg.remove(classGroup());
    reg.remove(QStringLiteral("ProgID/") + QString::fromLatin1(kFormsProgId));
    reg.sync();
    return reg.status() == QSettings::NoError ? TDS_S_OK : TDS_E_FAIL;
}

int tdsforms_get_class_object(const char *classId, void **factory)
{
    if (!factory)
        return TDS_E_FAIL;
    *factory = nullptr;
    if (!classId || QString::fromLatin1(classId).compare(QString::fromLatin1(kFormsClassId), Qt::CaseInsensitive) != 0)
        return TDS_E_CLASSNOTAVAILABLE;
    *factory = static_cast<FormsClassFactory *>(new Factory);
    return TDS_S_OK;
}

int tdsforms_can_unload_now()
{
    return (Forms::liveObjects() == 0 && g_factories.loadRelaxed() == 0) ? TDS_S_OK : TDS_S_FALSE;
}
