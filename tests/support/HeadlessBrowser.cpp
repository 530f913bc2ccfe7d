#include "HeadlessBrowser.h"

#include "TestDatabase.h"

#include "host/ServiceRegistry.h"
#include "host/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace HeadlessBrowser {

bool configure(int waitSeconds, int pollMilliseconds, QString *error)
{
    if (!TestDatabase::prepareHome(error))
        return false;
    qputenv("TDSFORMS_BROWSER_HEADLESS", "1");
    setWaitSeconds(waitSeconds);
    Settings::setValue(QStringLiteral("browser/pollMilliseconds"), pollMilliseconds);
    return true;
}

void setWaitSeconds(int seconds)
{
    Settings::setValue(QStringLiteral("browser/pageWaitSeconds"), seconds);
}

QString unavailableReason()
{
    for (const QString &path : {Settings::browserPath(), Settings::driverPath()})
        if (!QFileInfo(path).isExecutable())
            return QStringLiteral("%1 is not installed (scripts/install-deps installs chromium and chromium-driver)").arg(path);
    return QString();
}

std::shared_ptr<IOnlineAction> create()
{
    ServiceRegistry::registerBuiltins();
    return createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction));
}

bool processRunsWith(const QString &text)
{
    const QByteArray wanted = text.toLocal8Bit();
    const QStringList pids = QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString &pid : pids) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(wanted))
            return true;
    }
    return false;
}

} // namespace HeadlessBrowser
