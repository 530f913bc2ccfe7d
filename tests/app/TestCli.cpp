// tdsforms-cli as a user runs it: separate processes on one data home.
#include "TestRegistry.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};
} // namespace

class TestCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    Run cli(const QStringList &args, const QString &home = QString())
    {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TDSFORMS_HOME"), home.isEmpty() ? m_home.path() : home);
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(TDS_BIN_DIR "/tdsforms-cli"), args);
        if (!p.waitForFinished(120000)) {
            p.kill();
            p.waitForFinished();
        }
        return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
                QString::fromUtf8(p.readAllStandardError())};
    }

private slots:
    void version()
    {
        const Run r = cli({QStringLiteral("--version")});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QStringLiteral("2.26.5.2\n"));
    }

    void words_data()
    {
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("words");
        QTest::newRow("grouping") << "250075.25" << "Rupees Two Lakh Fifty Thousand Seventy Five and Paise Twenty Five Only";
        QTest::newRow("rounded to paise") << "10.999" << "Rupees Eleven Only";
        QTest::newRow("only paise") << "0.07" << "Rupees Nil and Paise Seven Only";
        QTest::newRow("crore") << "30000001" << "Rupees Three Crore One Only";
    }

    void words()
    {
        QFETCH(QString, amount);
        QFETCH(QString, words);
        const Run r = cli({QStringLiteral("words"), amount});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, words + QLatin1Char('\n'));
    }

    void errorsGoToStandardErrorWithAFailingStatus_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("no command") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("not an amount") << QStringList{"words", "12x"};
        QTest::newRow("year without hyphen") << QStringList{"period-code", "A1", "202425"};
        QTest::newRow("years not consecutive") << QStringList{"period-code", "A1", "2024-26"};
        QTest::newRow("missing year") << QStringList{"period-code", "A1"};
        QTest::newRow("bad db url") << QStringList{"--db", "postgres://x", "init"};
        QTest::newRow("home without value") << QStringList{"--home"};
    }

    void errorsGoToStandardErrorWithAFailingStatus()
    {
        QFETCH(QStringList, args);
        const Run r = cli(args);
        QVERIFY(r.exitCode != 0);
        QVERIFY(r.out.isEmpty());
        QVERIFY(!r.err.trimmed().isEmpty());
    }

    void periodCodesSurviveARestart()
    {
        QTemporaryDir home;
        const QString year = QStringLiteral("2024-25");
        QCOMPARE(cli({QStringLiteral("init")}, home.path()).exitCode, 0);
        QVERIFY(QDir(home.filePath(QStringLiteral("Data"))).exists());
        QVERIFY(QDir(home.filePath(QStringLiteral("Temp"))).exists());
        QVERIFY(QDir(home.filePath(QStringLiteral("db"))).exists());

        QCOMPARE(cli({QStringLiteral("period-code"), QStringLiteral("DEMO01"), year}, home.path()).out, QStringLiteral("1\n"));
        QCOMPARE(cli({QStringLiteral("period-code"), QStringLiteral("OTHER"), year}, home.path()).out, QStringLiteral("2\n"));
        // Each call is a new process: the codes were stored, not kept in memory.
        QCOMPARE(cli({QStringLiteral("period-code"), QStringLiteral("DEMO01"), year}, home.path()).out, QStringLiteral("1\n"));
        QCOMPARE(cli({QStringLiteral("--home"), home.path(), QStringLiteral("period-code"), QStringLiteral("DEMO01"),
                      QStringLiteral("2025-26")}, m_home.path()).out,
                 QStringLiteral("3\n"));
        QVERIFY(!QFile::exists(home.filePath(QStringLiteral("ZeltLogger.log"))));
    }

    void demoIsLoadedOnce()
    {
        QTemporaryDir home;
        const Run first = cli({QStringLiteral("demo")}, home.path());
        QCOMPARE(first.exitCode, 0);
        QCOMPARE(cli({QStringLiteral("demo")}, home.path()).exitCode, 0);
        const Run printed = cli({QStringLiteral("print"), QStringLiteral("15c"), QStringLiteral("--deductor"),
                                 QStringLiteral("DEMO01"), QStringLiteral("--year"), QStringLiteral("2025-26"),
                                 QStringLiteral("--text")}, home.path());
        QCOMPARE(printed.exitCode, 0);
        QVERIFY2(printed.out.contains(QLatin1String("DEMO TRADERS PRIVATE LIMITED")), qPrintable(printed.out));
    }
};

TDS_TEST(TestCli)
#include "TestCli.moc"
