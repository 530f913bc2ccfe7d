#include "CliRun.h"

#include <QDir>

std::unique_ptr<QProcess> startCli(const QString &home, const QStringList &args)
{
    auto p = std::make_unique<QProcess>();
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("TDSFORMS_HOME"), home);
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), QDir(home).filePath(QStringLiteral("config")));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p->setProcessEnvironment(env);
    p->start(QStringLiteral(TDS_BIN_DIR "/tdsforms-cli"), args);
    return p;
}

CliRun finishCli(QProcess &p, const QByteArray &input)
{
    if (!input.isEmpty())
        p.write(input);
    p.closeWriteChannel();
    if (!p.waitForFinished(120000)) {
        p.kill();
        p.waitForFinished();
    }
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

CliRun runCli(const QString &home, const QStringList &args, const QByteArray &input)
{
    std::unique_ptr<QProcess> p = startCli(home, args);
    return finishCli(*p, input);
}
