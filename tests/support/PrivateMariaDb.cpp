#include "PrivateMariaDb.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <unistd.h>

namespace {
QString findProgram(const QStringList &names)
{
    const QStringList extra = {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/local/sbin"),
                               QStringLiteral("/usr/bin"), QStringLiteral("/usr/local/bin")};
    for (const QString &name : names) {
        QString path = QStandardPaths::findExecutable(name);
        if (path.isEmpty())
            path = QStandardPaths::findExecutable(name, extra);
        if (!path.isEmpty())
            return path;
    }
    return QString();
}

QString serverProgram()
{
    return findProgram({QStringLiteral("mariadbd"), QStringLiteral("mysqld")});
}

QString installProgram()
{
    return findProgram({QStringLiteral("mariadb-install-db"), QStringLiteral("mysql_install_db")});
}

int freePort()
{
    QTcpServer probe;
    if (!probe.listen(QHostAddress::LocalHost, 0))
        return 0;
    return probe.serverPort();
}

bool runningAsRoot()
{
    return ::geteuid() == 0;
}
} // namespace

PrivateMariaDb::PrivateMariaDb(int lowerCaseTableNames)
    : m_lowerCaseTableNames(lowerCaseTableNames),
      m_dir(QDir::tempPath() + QStringLiteral("/tdsforms-mariadb-XXXXXX"))
{
}

PrivateMariaDb::~PrivateMariaDb()
{
    stop();
}

QString PrivateMariaDb::unavailableReason()
{
    if (serverProgram().isEmpty())
        return QStringLiteral("mariadbd is not installed (Debian package mariadb-server)");
    if (installProgram().isEmpty())
        return QStringLiteral("mariadb-install-db is not installed (Debian package mariadb-server)");
    return QString();
}

QString PrivateMariaDb::socketPath() const
{
    return m_dir.filePath(QStringLiteral("sock"));
}

QString PrivateMariaDb::url(const QString &database) const
{
    return QStringLiteral("mysql://root@127.0.0.1:%1/%2").arg(m_port).arg(database);
}

QString PrivateMariaDb::serverLog() const
{
    QFile file(m_dir.filePath(QStringLiteral("server.log")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool PrivateMariaDb::isRunning() const
{
    return m_server && m_server->state() != QProcess::NotRunning;
}

bool PrivateMariaDb::start()
{
    if (isRunning())
        return true;
    if (!m_dir.isValid()) {
        m_error = QStringLiteral("Cannot create a temporary folder: ") + m_dir.errorString();
        return false;
    }
    const QString dataDir = m_dir.filePath(QStringLiteral("data"));
    if (!QFile::exists(dataDir)) {
        QProcess install;
        install.setProcessChannelMode(QProcess::MergedChannels);
        QStringList args = {QStringLiteral("--no-defaults"), QStringLiteral("--datadir=") + dataDir,
                            QStringLiteral("--auth-root-authentication-method=normal"),
                            QStringLiteral("--skip-test-db")};
        if (runningAsRoot())
            args << QStringLiteral("--user=root");
        install.start(installProgram(), args);
        if (!install.waitForFinished(180000) || install.exitStatus() != QProcess::NormalExit || install.exitCode() != 0) {
            m_error = QStringLiteral("mariadb-install-db failed: ") + QString::fromLocal8Bit(install.readAll()).right(2000);
            if (install.state() != QProcess::NotRunning) {
                install.kill();
                install.waitForFinished(5000);
            }
            return false;
        }
    }

    m_port = freePort();
    if (m_port == 0) {
        m_error = QStringLiteral("No free port on 127.0.0.1");
        return false;
    }
    const qsizetype logStart = serverLog().size();
    m_server = std::make_unique<QProcess>();
    m_server->setProcessChannelMode(QProcess::MergedChannels);
    m_server->setStandardOutputFile(m_dir.filePath(QStringLiteral("server.log")), QIODevice::Append);
    QStringList args = {QStringLiteral("--no-defaults"),
                        QStringLiteral("--datadir=") + dataDir,
                        QStringLiteral("--socket=") + socketPath(),
                        QStringLiteral("--port=%1").arg(m_port),
                        QStringLiteral("--bind-address=127.0.0.1"),
                        QStringLiteral("--lower-case-table-names=%1").arg(m_lowerCaseTableNames),
                        QStringLiteral("--pid-file=") + m_dir.filePath(QStringLiteral("mariadbd.pid")),
                        QStringLiteral("--innodb-buffer-pool-size=32M"),
                        QStringLiteral("--skip-log-bin")};
    if (runningAsRoot())
        args << QStringLiteral("--user=root");
    m_server->start(serverProgram(), args);
    if (!m_server->waitForStarted(30000)) {
        m_error = QStringLiteral("mariadbd did not start: ") + m_server->errorString();
        m_server.reset();
        return false;
    }

    // Ready only once it says so: a server stopped while still starting ignores SIGTERM.
    const QDeadlineTimer deadline(60000);
    while (!deadline.hasExpired()) {
        if (m_server->state() == QProcess::NotRunning) {
            m_error = QStringLiteral("mariadbd stopped at start-up: ") + serverLog().mid(logStart).right(2000);
            m_server.reset();
            return false;
        }
        if (serverLog().mid(logStart).contains(QLatin1String("ready for connections"))) {
            QTcpSocket probe;
            probe.connectToHost(QHostAddress::LocalHost, quint16(m_port));
            if (probe.waitForConnected(1000))
                return true;
        }
        QThread::msleep(50);
    }
    m_error = QStringLiteral("mariadbd does not accept connections on port %1: ").arg(m_port)
              + serverLog().mid(logStart).right(2000);
    stop();
    return false;
}

void PrivateMariaDb::stop()
{
    if (!m_server)
        return;
    if (m_server->state() != QProcess::NotRunning) {
        m_server->terminate();   // SIGTERM: a clean shutdown
        if (!m_server->waitForFinished(30000)) {
            m_server->kill();
            m_server->waitForFinished(5000);
        }
    }
    m_server.reset();
}
