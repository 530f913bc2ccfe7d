// Declarations moved through tdsforms-cli: import (with refusals), export, replace, print.
#include "CliRun.h"
#include "TestRegistry.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {

QJsonArray texts(const QStringList &list)
{
    return QJsonArray::fromStringList(list);
}

// A Form 15H declarant (32 slots) as an operator would type it, in lower case.
QStringList declarant15H(const QString &name)
{
    QStringList d(32);
    d[0] = name;
    d[1] = QStringLiteral("aaapr1234k");
    d[2] = QStringLiteral("5-3-1950");
    d[7] = QStringLiteral("pune");
    d[10] = QStringLiteral("Ravi.K@Example.com");
    d[29] = QStringLiteral("240000");
    d[30] = QStringLiteral("10100");   // Schedules I and III
    d[31] = QStringLiteral("1200000.5");
    return d;
}

QStringList payer(const QString &tan)
{
    QStringList p(16);
    p[0] = QStringLiteral("o'neil bank");
    p[3] = tan;
    p[4] = QStringLiteral("COMPANY");
    p[11] = QStringLiteral("15000");
    return p;
}

QJsonObject declaration(const QString &name, const QString &tan, const QJsonArray &schedules)
{
    return {{"declarant", texts(declarant15H(name))}, {"payer", texts(payer(tan))}, {"schedules", schedules}};
}

const QJsonArray kSchedules{
    QJsonArray{QJsonArray{"100", "equity of rs 10", "1000", "101-200", "1-4-2020"},
               QJsonArray{"0", "preference", "", "", ""}},
    QJsonArray{},
    QJsonArray{QJsonArray{"d'souza finance, pune", "50000", "1-6-21", "1 year", "7.5"}},
    QJsonArray{},
    QJsonArray{}};

} // namespace

class TestDeclarationCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    const QStringList m_period{"--deductor", "DEMO01", "--year", "2025-26"};

    CliRun cli(const QStringList &args, const QByteArray &input = QByteArray())
    {
        return runCli(m_home.path(), args, input);
    }
    QJsonArray exported(const QStringList &extra = {})
    {
        const CliRun r = cli(QStringList{"export", "15h"} + m_period + extra);
        if (r.exitCode != 0)
            qWarning().noquote() << r.err;
        return QJsonDocument::fromJson(r.out.toUtf8()).array();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
        // The refused one in the middle: the others are stored, it is named, nothing of it kept.
        const QJsonArray file{declaration("ravi kumar", "", kSchedules), declaration("refused", "PUNE1234X5", {}),
                              declaration("sita", "", {})};
        const CliRun r = cli(QStringList{"import", "15h"} + m_period + QStringList{"-"},
                             QJsonDocument(file).toJson());
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n2\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 2 not stored: payer slot 3 (\"TAN\"): Invalid TAN.")), qPrintable(r.err));
    }

    // What comes back is what the window shows: the rules of typing applied.
    void exportShowsTheRulesOfTyping()
    {
        const QJsonArray all = exported();
        QCOMPARE(all.size(), 2);
        const QJsonObject first = all[0].toObject();
        QCOMPARE(first["serial"].toInt(), 1);
        const QJsonArray d = first["declarant"].toArray();
        QCOMPARE(d.size(), 32);
        QCOMPARE(d[0].toString(), QStringLiteral("RAVI KUMAR"));
        QCOMPARE(d[1].toString(), QStringLiteral("AAAPR1234K"));
        QCOMPARE(d[2].toString(), QStringLiteral("05/03/1950"));
        QCOMPARE(d[10].toString(), QStringLiteral("Ravi.K@Example.com"));
        QCOMPARE(d[29].toString(), QStringLiteral("240000.00"));
        QCOMPARE(d[30].toString(), QStringLiteral("10100"));
        QCOMPARE(first["payer"].toArray()[0].toString(), QStringLiteral("O'NEIL BANK"));
        const QJsonArray s = first["schedules"].toArray();
        QCOMPARE(s.size(), 5);
        QCOMPARE(s[0].toArray()[0].toArray(), (QJsonArray{"100", "EQUITY OF RS 10", "1000.00", "101", "01/04/2020"}));
        QCOMPARE(s[0].toArray()[1].toArray(), (QJsonArray{"0", "PREFERENCE", "0.00", "0", ""}));
        QCOMPARE(s[2].toArray()[0].toArray()[0].toString(), QStringLiteral("D'SOUZA FINANCE, PUNE"));
        QCOMPARE(all[1].toObject()["declarant"].toArray()[0].toString(), QStringLiteral("SITA"));
    }

    // An exported declaration imported again under its serial replaces it: same serial,
    // one declaration, the new schedules only.
    void replaceKeepsTheSerial()
    {
        QJsonObject second = exported({"--serial", "2"})[0].toObject();
        QJsonArray d = second["declarant"].toArray();
        d[0] = "SITA DEVI";
        second["declarant"] = d;
        second["schedules"] = QJsonArray{QJsonArray{}, QJsonArray{}, QJsonArray{}, QJsonArray{},
                                         QJsonArray{QJsonArray{"post office, pune 1234", "1-1-22", "900"}}};
        const CliRun r = cli(QStringList{"import", "15h"} + m_period + QStringList{"-"},
                             QJsonDocument(QJsonArray{second}).toJson());
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("2\n"));
        const QJsonArray all = exported();
        QCOMPARE(all.size(), 2);
        QCOMPARE(all[1].toObject()["declarant"].toArray()[0].toString(), QStringLiteral("SITA DEVI"));
        QCOMPARE(all[1].toObject()["schedules"].toArray()[4].toArray()[0].toArray(),
                 (QJsonArray{"POST OFFICE, PUNE 1234", "01/01/2022", "900.00"}));
    }

    void refusedFiles_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        QTest::newRow("not json") << QByteArray("{declarant: ") << "is not a JSON array of records";
        QTest::newRow("object") << QByteArray("{}") << "is not a JSON array of records";
        QTest::newRow("short block") << QByteArray(R"([{"declarant": ["A"], "payer": []}])") << "\"declarant\" has 1 values; it needs 32";
        QTest::newRow("misspelt member") << QJsonDocument(QJsonArray{declaration("x", "", {})}).toJson().replace("payer", "payee")
                                         << "\"payer\" is missing";
        QTest::newRow("flags") << QJsonDocument(QJsonArray{declaration("x", "", {})}).toJson().replace("10100", "12")
                               << "declarant slot 30";
    }
    void refusedFiles()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        const CliRun r = cli(QStringList{"import", "15h"} + m_period + QStringList{"-"}, file);
        QCOMPARE(r.exitCode, 1);
        QVERIFY(r.out.isEmpty());
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
        QCOMPARE(exported().size(), 2);
    }

    // Ticked schedules print as tables, the rest "---NIL---"; no placeholder is left.
    void printsToRtfAndPdf()
    {
        const QString rtf = m_home.filePath(QStringLiteral("d1.rtf"));
        CliRun r = cli(QStringList{"print", "15h"} + m_period + QStringList{"--serial", "1", "--rtf", rtf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile f(rtf);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(f.readAll());
        QVERIFY(!text.contains(QLatin1String("##")));
        QCOMPARE(text.count(QLatin1String("---NIL---")), 3);
        for (const char *cell : {"EQUITY OF RS 10", "PREFERENCE", "D'SOUZA FINANCE, PUNE", "50,000.00", "31/03/2025"})
            QVERIFY2(text.contains(QLatin1String(cell)), cell);

        const QString pdf = m_home.filePath(QStringLiteral("d1.pdf"));
        r = cli(QStringList{"print", "15h"} + m_period + QStringList{"--serial", "1", "--pdf", pdf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile p(pdf);
        QVERIFY(p.open(QIODevice::ReadOnly));
        QCOMPARE(p.read(5), QByteArray("%PDF-"));

        r = cli(QStringList{"print", "15h"} + m_period + QStringList{"--serial", "9", "--pdf", pdf});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains(QLatin1String("no declaration 9")), qPrintable(r.err));
    }
};

TDS_TEST(TestDeclarationCli)
#include "TestDeclarationCli.moc"
