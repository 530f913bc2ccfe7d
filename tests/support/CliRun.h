#pragma once
// tdsforms-cli run as a user runs it: its own data home, its configuration under it, no
// screen, standard input when given.
#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

struct CliRun
{
    int exitCode = -1;   // -1: crashed or timed out
    QString out;
    QString err;
};

// Started, not waited for (several at once); the caller waits.
std::unique_ptr<QProcess> startCli(const QString &home, const QStringList &args);
CliRun finishCli(QProcess &process, const QByteArray &input = QByteArray());
CliRun runCli(const QString &home, const QStringList &args, const QByteArray &input = QByteArray());
