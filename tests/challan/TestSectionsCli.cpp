// `tdsforms-cli sections` as a user runs it, on a fresh data home.
#include "TestRegistry.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestSectionsCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

private slots:
    void initTestCase() { QVERIFY(m_home.isValid()); }

    void output_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("firstLine");
        QTest::newRow("built-in list")
            << QStringList{"--year", "2025-26"} << 0 << 68
            << "0|92A|192 - Payment to Govt. Employees other than Union Govt. employees";
        // The section file is seeded into the new data home on the way.
        QTest::newRow("seeded section file") << QStringList{"--year", "2027-28"} << 0 << 92
                                             << "1001|192|1001 : [192] - Section 392 - Salary-Salary paid to Union Government employees";
        QTest::newRow("missing key") << QStringList{"--get-code", "57", "--year", "2025-26"} << 0 << 1 << "";
        QTest::newRow("no year") << QStringList{"--get-li", "5"} << 2 << 0 << "";
        QTest::newRow("not a year") << QStringList{"--year", "2025-27"} << 2 << 0 << "";
    }

    void output()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(int, lines);
        QFETCH(QString, firstLine);
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(TDS_BIN_DIR "/tdsforms-cli"),
                QStringList{QStringLiteral("--home"), m_home.filePath(QStringLiteral("home")), QStringLiteral("sections")}
                    + args);
        QVERIFY(p.waitForFinished(60000));
        const QString err = QString::fromUtf8(p.readAllStandardError());
        QCOMPARE(p.exitCode(), exitCode);
        const QString out = QString::fromUtf8(p.readAllStandardOutput());
        if (exitCode != 0) {
            QVERIFY(out.isEmpty());
            QVERIFY(err.contains(QLatin1String("usage: tdsforms-cli sections")));
            return;
        }
        QVERIFY2(err.isEmpty(), qPrintable(err));
        QVERIFY(out.endsWith(QLatin1Char('\n')));
        const QStringList got = out.chopped(1).split(QLatin1Char('\n'));
        QCOMPARE(got.size(), lines);
        QCOMPARE(got.first(), firstLine);
    }
};

TDS_TEST(TestSectionsCli)
#include "TestSectionsCli.moc"
