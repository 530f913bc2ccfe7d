// tdsforms-cli as a user runs it: separate processes on one data home.
#include "TestRegistry.h"

#include "CliRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class TestCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    int m_allocated = 0;   // period codes handed out on m_home

    CliRun cli(const QStringList &args, const QString &home = QString())
    {
        return runCli(home.isEmpty() ? m_home.path() : home, args);
    }

    QString periodCode(const QString &home, const QString &year)
    {
        const CliRun r = cli({QStringLiteral("period-code"), QStringLiteral("DEMO01"), year}, home);
        return r.exitCode == 0 ? r.out : QStringLiteral("exit %1: %2").arg(r.exitCode).arg(r.err);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        const CliRun demo = cli({QStringLiteral("demo")});
        QVERIFY2(demo.exitCode == 0, qPrintable(demo.err));
    }

    // Usage errors exit with 2, refusals of what was asked for with 1.
    void errorsGoToStandardErrorWithAFailingStatus_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("mention");
        const QString missing = m_home.filePath(QStringLiteral("missing/folder"));
        QTest::newRow("no command") << QStringList{} << 2 << "no command";
        QTest::newRow("not an amount") << QStringList{"words", "12x"} << 1 << "12x";
        QTest::newRow("year without hyphen") << QStringList{"period-code", "A1", "202425"} << 2 << "202425";
        QTest::newRow("year before the range") << QStringList{"period-code", "DEMO01", "1949-50"} << 1 << "1949-50";
        QTest::newRow("quote in the deductor") << QStringList{"period-code", "X' OR '1'='1", "2025-26"} << 1
                                               << "unknown deductor X' OR '1'='1";
        QTest::newRow("pdf into a missing folder")
            << QStringList{"print", "15c", "--deductor", "DEMO01", "--year", "2025-26", "--pdf", missing + "/15c.pdf"} << 1
            << missing;
        QTest::newRow("db url password hidden") << QStringList{"--db", "mysql://tds:TopSecret9@/x", "init"} << 2
                                                << "mysql://tds:***@/x";
        QTest::newRow("blank home") << QStringList{"--home", "  ", "period-code", "DEMO01", "2025-26"} << 2 << "--home";
    }

    void errorsGoToStandardErrorWithAFailingStatus()
    {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QString, mention);
        const CliRun r = cli(args);
        QCOMPARE(r.exitCode, status);
        QVERIFY2(r.out.isEmpty(), qPrintable(r.out));
        QVERIFY2(r.err.contains(mention), qPrintable(r.err));
        QVERIFY2(!r.err.contains(QLatin1String("Secret9")), qPrintable(r.err));
        QVERIFY(!QFileInfo::exists(m_home.filePath(QStringLiteral("missing"))));
        // No period code went to what was refused: the next one allocated is the next number.
        const int next = ++m_allocated;
        QCOMPARE(periodCode(m_home.path(), QStringLiteral("%1-%2").arg(2000 + next).arg((2001 + next) % 100, 2, 10, QLatin1Char('0'))),
                 QString::number(next) + QLatin1Char('\n'));
    }

    void periodCodesSurviveARestart()
    {
        QTemporaryDir home;
        QCOMPARE(cli({QStringLiteral("init")}, home.path()).exitCode, 0);
        QCOMPARE(cli({QStringLiteral("demo")}, home.path()).exitCode, 0);

        QCOMPARE(periodCode(home.path(), QStringLiteral("2024-25")), QStringLiteral("1\n"));
        QCOMPARE(periodCode(home.path(), QStringLiteral("2023-24")), QStringLiteral("2\n"));
        // Each call is a new process: the codes were stored, not kept in memory.
        QCOMPARE(periodCode(home.path(), QStringLiteral("2024-25")), QStringLiteral("1\n"));
        // Code_No compares without case; the code is the deductor's as stored.
        QCOMPARE(cli({QStringLiteral("--home"), home.path(), QStringLiteral("period-code"), QStringLiteral("demo01"),
                      QStringLiteral("2025-26")}, m_home.path()).out,
                 QStringLiteral("3\n"));
        QCOMPARE(periodCode(home.path(), QStringLiteral("2025-26")), QStringLiteral("3\n"));
        QVERIFY(!QFile::exists(home.filePath(QStringLiteral("ZeltLogger.log"))));
    }

    // A first start killed half-way is finished by the next start, whatever the moment.
    void firstStartKilledHalfWay_data()
    {
        QTest::addColumn<QString>("moment");   // a file of the database folder
        QTest::newRow("system tablespace appears") << "db/ibdata1";
        QTest::newRow("first tables written") << "db/tdsforms/period_det_oth.frm";
    }
    void firstStartKilledHalfWay()
    {
        QFETCH(QString, moment);
        QTemporaryDir home;
        const auto process = startCli(home.path(), {QStringLiteral("init")});
        QProcess &first = *process;
        QVERIFY(first.waitForStarted());
        const QString watched = home.filePath(moment);
        while (!QFileInfo::exists(watched) && first.state() != QProcess::NotRunning)
            first.waitForFinished(1);
        QVERIFY2(first.state() == QProcess::Running, qPrintable(moment + " was not seen while init ran"));
        first.kill();   // SIGKILL to its pid: nothing gets to clean up
        QVERIFY(first.waitForFinished());

        const CliRun again = cli({QStringLiteral("init")}, home.path());
        QVERIFY2(again.exitCode == 0, qPrintable(again.err));
        const CliRun demo = cli({QStringLiteral("demo")}, home.path());
        QVERIFY2(demo.exitCode == 0, qPrintable(demo.err));
        QCOMPARE(periodCode(home.path(), QStringLiteral("2025-26")), QStringLiteral("1\n"));
        QVERIFY(QFileInfo::exists(home.filePath(QStringLiteral("db/tdsforms.complete"))));
        QVERIFY(!QFileInfo::exists(home.filePath(QStringLiteral("db/tdsforms.building"))));
    }

    // A database without the marker of a finished build, as earlier versions left it, is kept
    // with its rows, whether or not the server can start on it.
    void earlierDatabasesAreKept()
    {
        QTemporaryDir home;
        QCOMPARE(cli({QStringLiteral("demo")}, home.path()).exitCode, 0);
        QCOMPARE(periodCode(home.path(), QStringLiteral("2024-25")), QStringLiteral("1\n"));
        QVERIFY(QFile::remove(home.filePath(QStringLiteral("db/tdsforms.complete"))));

        QCOMPARE(periodCode(home.path(), QStringLiteral("2025-26")), QStringLiteral("2\n"));
        QCOMPARE(periodCode(home.path(), QStringLiteral("2024-25")), QStringLiteral("1\n"));
        const QStringList aside = QDir(home.path()).entryList({QStringLiteral("db.*")}, QDir::Dirs);
        QVERIFY2(aside.isEmpty(), qPrintable(aside.join(QLatin1Char(' '))));

        // A server that cannot start on it leaves it in place, and says so.
        QVERIFY(QFile::remove(home.filePath(QStringLiteral("db/tdsforms.complete"))));
        QFile system(home.filePath(QStringLiteral("db/ibdata1")));
        QVERIFY(system.open(QIODevice::WriteOnly | QIODevice::Truncate));
        system.write("not a tablespace");
        system.close();
        const CliRun broken = cli({QStringLiteral("period-code"), QStringLiteral("DEMO01"), QStringLiteral("2024-25")},
                               home.path());
        QVERIFY(broken.exitCode != 0);
        QVERIFY2(broken.err.contains(QLatin1String("could not start")), qPrintable(broken.err));
        QVERIFY(QFileInfo::exists(home.filePath(QStringLiteral("db/tdsforms/period_det_oth.frm"))));
        QVERIFY(QDir(home.path()).entryList({QStringLiteral("db.*")}, QDir::Dirs).isEmpty());
    }

    void demoIsLoadedOnce()
    {
        QTemporaryDir home;
        const CliRun first = cli({QStringLiteral("demo")}, home.path());
        QCOMPARE(first.exitCode, 0);
        QCOMPARE(cli({QStringLiteral("demo")}, home.path()).exitCode, 0);
        const CliRun printed = cli({QStringLiteral("print"), QStringLiteral("15c"), QStringLiteral("--deductor"),
                                 QStringLiteral("DEMO01"), QStringLiteral("--year"), QStringLiteral("2025-26"),
                                 QStringLiteral("--text")}, home.path());
        QCOMPARE(printed.exitCode, 0);
        QVERIFY2(printed.out.contains(QLatin1String("DEMO TRADERS PRIVATE LIMITED")), qPrintable(printed.out));
    }
};

TDS_TEST(TestCli)
#include "TestCli.moc"
