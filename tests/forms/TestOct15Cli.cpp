// Forms 15G and 15H of October 2015 through tdsforms-cli: import with a refusal, export in
// the shape of the import, the same record imported again, print to RTF.
#include "CliRun.h"
#include "TestRegistry.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

class TestOct15Cli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    const QStringList m_period{"--deductor", "DEMO01", "--year", "2025-26"};

    CliRun cli(const QStringList &args, const QByteArray &input = QByteArray())
    {
        return runCli(m_home.path(), args, input);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
    }

    void importExportPrint_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QJsonArray>("declarant");
        QTest::addColumn<QJsonArray>("shown");
        QTest::addColumn<QString>("column");   // the estimated income's column in the declaration
        // Typed in lower case; the marks in the income cells must not split them.
        QTest::newRow("15G") << "15g-oct15"
                             << QJsonArray{"ravi d'souza", "aaapr1234k", "individual", "resident", "12/b", "", "mg road",
                                           "kothrud", "pune", "MAHARASHTRA", "411038", "Ravi@Example.com", "020",
                                           "25431234", "9822012345", "yes", "180000", "300000", "2", "60000", "2023-24",
                                           "2024-25"}
                             << QJsonArray{"RAVI D'SOUZA", "AAAPR1234K", "INDIVIDUAL", "RESIDENT", "12/B", "", "MG ROAD",
                                           "KOTHRUD", "PUNE", "MAHARASHTRA", "411038", "Ravi@Example.com", "020",
                                           "25431234", "9822012345", "Yes", "180000.00", "300000.00", "2", "60000.00",
                                           "2023-24", "2024-25"}
                             << "column 16";
        QTest::newRow("15H") << "15h-oct15"
                             << QJsonArray{"sita devi", "aaaps1234k", "5-3-1950", "4 lake view", "", "fc road", "", "pune",
                                           "", "411005", "", "", "", "", "no", "180000", "300000", "0", "", "", "2024-25"}
                             << QJsonArray{"SITA DEVI", "AAAPS1234K", "05/03/1950", "4 LAKE VIEW", "", "FC ROAD", "", "PUNE",
                                           "", "411005", "", "", "", "", "No", "180000.00", "300000.00", "0", "0.00", "",
                                           "2024-25"}
                             << "column 15";
    }
    void importExportPrint()
    {
        QFETCH(QString, form);
        QFETCH(QJsonArray, declarant);
        QFETCH(QJsonArray, shown);
        QFETCH(QString, column);
        const QJsonArray payer{"o'neil bank", "17", "", "mumbai", "MUMO12345A", "", "", "", "", "45000", "1-4-24", ""};
        const QJsonArray income{QJsonArray{"fd 12¦34", "interest^on fd", "194a", "150000"},
                                QJsonArray{"rd 7", "interest", "194A", "30000"}};
        QJsonArray noTan = payer;
        noTan[4] = "";
        const QJsonArray file{QJsonObject{{"declarant", declarant}, {"payer", noTan}, {"income", income}},
                              QJsonObject{{"declarant", declarant}, {"payer", payer}, {"income", income}}};
        CliRun r = cli(QStringList{"import", form} + m_period + QStringList{"-"}, QJsonDocument(file).toJson());
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 1 not stored: Please specify valid 'TAN'.")), qPrintable(r.err));

        r = cli(QStringList{"export", form} + m_period);
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QJsonArray all = QJsonDocument::fromJson(r.out.toUtf8()).array();
        QCOMPARE(all.size(), 1);
        const QJsonObject stored = all[0].toObject();
        QCOMPARE(stored["serial"].toInt(), 1);
        QCOMPARE(stored["declarant"].toArray(), shown);
        QCOMPARE(stored["payer"].toArray()[0].toString(), QStringLiteral("O'NEIL BANK"));
        QCOMPARE(stored["payer"].toArray()[9].toString(), QStringLiteral("45000.00"));
        QCOMPARE(stored["payer"].toArray()[10].toString(), QStringLiteral("01/04/2024"));
        QCOMPARE(stored["income"].toArray(),
                 (QJsonArray{QJsonArray{"FD 1234", "INTERESTON FD", "194A", "150000.00"},
                             QJsonArray{"RD 7", "INTEREST", "194A", "30000.00"}}));

        // What export gives, import takes back unchanged under its serial.
        r = cli(QStringList{"import", form} + m_period + QStringList{"-"}, QJsonDocument(all).toJson());
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("1\n"));
        r = cli(QStringList{"export", form} + m_period);
        QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).array(), all);

        const QString rtf = m_home.filePath(form + QStringLiteral(".rtf"));
        r = cli(QStringList{"print", form} + m_period + QStringList{"--serial", "1", "--rtf", rtf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile f(rtf);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(f.readAll());
        QVERIFY(!text.contains(QLatin1String("##")));
        QVERIFY(!text.contains(QLatin1String("---NIL---")));
        for (const QString &printed : {shown[0].toString(), QStringLiteral("3,00,000.00"), QStringLiteral("1,50,000.00"),
                                       QStringLiteral("FD 1234"), QStringLiteral("45,000.00"), QStringLiteral("MUMO12345A"),
                                       QStringLiteral("31/03/2025"), QStringLiteral("assessment year 2025-26"), column})
            QVERIFY2(text.contains(printed), qPrintable(printed));
    }
};

TDS_TEST(TestOct15Cli)
#include "TestOct15Cli.moc"
