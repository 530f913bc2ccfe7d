#include "CliRun.h"
#include "TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// tdsforms-cli print, run as a user would, on a data home of its own.
class TestPrintCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    using Run = CliRun;
    Run run(const QStringList &args) { return runCli(m_home.path(), args); }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        const Run demo = run({QStringLiteral("demo")});
        QVERIFY2(demo.exitCode == 0, qPrintable("tdsforms-cli demo: " + demo.err));
    }

    void text_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("expected");
        QTest::newRow("15c") << "15c" << "chargeable underthe provisions";
    }
    void text()
    {
        QFETCH(QString, form);
        QFETCH(QString, expected);
        const Run r = run({"print", form, "--deductor", "DEMO01", "--year", "2024-25", "--text"});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QStringList lines = r.out.split(QLatin1Char('\n'));
        QCOMPARE(lines.first().trimmed(), "FORM NO. " + form.toUpper());
        QVERIFY(r.out.simplified().contains(expected));
        for (const QString &l : lines)
            QVERIFY2(l.size() <= 78 && !l.contains(QChar(27)), qPrintable(l));
    }

    void pdf()
    {
        const QString file = m_home.filePath(QStringLiteral("15i.pdf"));
        const Run r = run({"print", "15i", "--deductor", "DEMO01", "--year", "2024-25", "--pdf", file});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(r.out.isEmpty());
        QFile f(file);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.read(5), QByteArray("%PDF-"));
    }

    void refused_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        const QStringList year{"--year", "2024-25"};
        QTest::newRow("unknown deductor") << QStringList{"print", "15c", "--deductor", "NOBODY", "--text"} + year
                                          << "unknown deductor NOBODY";
        QTest::newRow("unknown form") << QStringList{"print", "15x", "--deductor", "DEMO01", "--text"} + year
                                      << "unknown form 15x";
        QTest::newRow("record form without serial")
            << QStringList{"print", "15g", "--deductor", "DEMO01", "--pdf", "x.pdf"} + year << "give --serial N";
        QTest::newRow("text of a record form")
            << QStringList{"print", "15h", "--deductor", "DEMO01", "--serial", "1", "--text"} + year
            << "exactly one of --rtf FILE and --pdf FILE";
        QTest::newRow("no output") << QStringList{"print", "15c", "--deductor", "DEMO01"} + year
                                   << "exactly one of --text and --pdf";
    }
    void refused()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        const Run r = run(args);
        QVERIFY(r.exitCode > 0);
        QVERIFY(r.out.isEmpty());
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
    }
};

TDS_TEST(TestPrintCli)
#include "TestPrintCli.moc"
