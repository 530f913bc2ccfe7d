#include "TestRegistry.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// tdsforms-cli print, run as a user would, on a data home of its own.
class TestPrintCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    QString m_cli = QStringLiteral(TDS_BIN_DIR "/tdsforms-cli");

    struct Run {
        int exitCode = -1;
        QString out, err;
    };
    Run run(const QStringList &args)
    {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TDSFORMS_HOME"), m_home.path());
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(m_cli, args);
        if (!p.waitForFinished(60000))
            p.kill();
        return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
                QString::fromUtf8(p.readAllStandardError())};
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QVERIFY2(QFile::exists(m_cli), "build tdsforms-cli first");
        const Run demo = run({QStringLiteral("demo")});
        QVERIFY2(demo.exitCode == 0, qPrintable(demo.err));
    }

    void text_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        QTest::newRow("15c") << QStringLiteral("15c") << QStringLiteral("FORM NO. 15C")
                             << QStringLiteral("chargeable underthe provisions");
        QTest::newRow("15D") << QStringLiteral("15D") << QStringLiteral("FORM NO. 15D")
                             << QStringLiteral("(other than dividends and interest)");
        QTest::newRow("15i") << QStringLiteral("15i") << QStringLiteral("FORM NO. 15I")
                             << QStringLiteral("the Financial Year 2023-24");
    }
    void text()
    {
        QFETCH(QString, form);
        QFETCH(QString, title);
        QFETCH(QString, expected);
        const Run r = run({QStringLiteral("print"), form, QStringLiteral("--deductor"), QStringLiteral("DEMO01"),
                           QStringLiteral("--year"), QStringLiteral("2024-25"), QStringLiteral("--text")});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QStringList lines = r.out.split(QLatin1Char('\n'));
        QCOMPARE(lines.first().trimmed(), title);
        QVERIFY(r.out.simplified().contains(expected));
        for (const QString &l : lines)
            QVERIFY2(l.size() <= 78 && !l.contains(QChar(27)), qPrintable(l));
    }

    void pdf()
    {
        const QString file = m_home.filePath(QStringLiteral("15i.pdf"));
        const Run r = run({QStringLiteral("print"), QStringLiteral("15i"), QStringLiteral("--deductor"),
                           QStringLiteral("DEMO01"), QStringLiteral("--year"), QStringLiteral("2024-25"),
                           QStringLiteral("--pdf"), file});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(r.out.isEmpty());
        QFile f(file);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.read(5) == "%PDF-");
    }

    void refused_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown deductor") << QStringList{"print", "15c", "--deductor", "NOBODY", "--year", "2024-25", "--text"}
                                          << QStringLiteral("unknown deductor NOBODY");
        QTest::newRow("unknown form") << QStringList{"print", "15g", "--deductor", "DEMO01", "--year", "2024-25", "--text"}
                                      << QStringLiteral("unknown form 15g");
        QTest::newRow("bad year") << QStringList{"print", "15c", "--deductor", "DEMO01", "--year", "2024", "--text"}
                                  << QStringLiteral("not an assessment year");
        QTest::newRow("no output") << QStringList{"print", "15c", "--deductor", "DEMO01", "--year", "2024-25"}
                                   << QStringLiteral("exactly one of --text and --pdf");
        QTest::newRow("no deductor") << QStringList{"print", "15c", "--year", "2024-25", "--text"}
                                     << QStringLiteral("--deductor is required");
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
