#pragma once
// A private MariaDB server for the `server` tests: its own data folder, socket and port on
// 127.0.0.1, root without a password; stopped (by its process) when the object goes.
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

class PrivateMariaDb
{
public:
    explicit PrivateMariaDb(int lowerCaseTableNames = 1);
    ~PrivateMariaDb();

    // Empty when mariadbd and mariadb-install-db are installed, else why not.
    static QString unavailableReason();

    bool start();
    void stop();
    bool isRunning() const;

    int port() const { return m_port; }
    QString socketPath() const;
    // mysql://root@127.0.0.1:PORT/database
    QString url(const QString &database = QStringLiteral("tdsforms")) const;
    QString error() const { return m_error; }
    QString serverLog() const;

    PrivateMariaDb(const PrivateMariaDb &) = delete;
    PrivateMariaDb &operator=(const PrivateMariaDb &) = delete;

private:
    int m_lowerCaseTableNames;
    int m_port = 0;
    QTemporaryDir m_dir;
    std::unique_ptr<QProcess> m_server;
    QString m_error;
};

// Skips the test when the server programs are missing, fails it when the server won't start.
#define TDS_START_PRIVATE_MARIADB(server)                                     \
    do {                                                                      \
        const QString tdsWhyNot_ = PrivateMariaDb::unavailableReason();       \
        if (!tdsWhyNot_.isEmpty())                                            \
            QSKIP(qPrintable(tdsWhyNot_));                                    \
        if (!(server).start())                                                \
            QFAIL(qPrintable((server).error()));                              \
    } while (false)
