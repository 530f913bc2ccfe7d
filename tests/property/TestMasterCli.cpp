// Deductees and deductors through tdsforms-cli: a refused record named and the others
// stored, modify and delete by serial, the deductor master in and out.
#include "CliRun.h"
#include "TestRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

class TestMasterCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    CliRun cli(const QStringList &args, const QJsonArray &input = {})
    {
        return runCli(m_home.path(), args, QJsonDocument(input).toJson());
    }
    QJsonArray exported(const QStringList &command)
    {
        const CliRun r = cli(command);
        if (r.exitCode != 0)
            qWarning().noquote() << r.err;
        return QJsonDocument::fromJson(r.out.toUtf8()).array();
    }
    QJsonArray deductees(const char *deductor = "DEMO01")
    {
        return exported({"deductees", "export", "--deductor", deductor});
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
    }

    // The refused one in the middle: named with its message, nothing of it kept.
    void importStoresAllButTheRefused()
    {
        const QJsonArray file{
            QJsonObject{{"name", "ravi kumar"}, {"pan", "aaapr1234k"}, {"dob", "5-3-1950"}, {"city", "pune"},
                        {"state", "maharashtra"}, {"pin", "411001"}, {"group", "family"}},
            QJsonObject{{"name", "refused"}, {"pin", "41101"}},
            QJsonObject{{"name", "d'souza"}}};
        const CliRun r = cli({"deductees", "import", "--deductor", "DEMO01"}, file);
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n2\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 2 not stored: \"pin\" (Pin Code): Pin Code should be 6 digit Number")),
                 qPrintable(r.err));
        const QJsonArray all = deductees();
        QCOMPARE(all.size(), 2);
        QCOMPARE(all[0].toObject(), (QJsonObject{{"serial", 1}, {"name", "RAVI KUMAR"}, {"pan", "AAAPR1234K"},
                                                 {"dob", "05/03/1950"}, {"flat", ""}, {"building", ""}, {"street", ""},
                                                 {"area", ""}, {"city", "PUNE"}, {"state", "MAHARASHTRA"},
                                                 {"pin", "411001"}, {"group", "FAMILY"}}));
        QCOMPARE(all[1].toObject()["name"].toString(), QStringLiteral("D'SOUZA"));
    }

    void modifyAndDeleteBySerial()
    {
        CliRun r = cli({"deductees", "import", "--deductor", "DEMO01"},
                       {QJsonObject{{"serial", 2}, {"name", "d'souza & sons"}, {"group", "family"}}});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("2\n"));
        r = cli({"deductees", "import", "--deductor", "DEMO01"}, {QJsonObject{{"serial", 9}, {"name", "x"}}});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains(QLatin1String("there is no deductee 9 of deductor DEMO01")), qPrintable(r.err));

        r = cli({"deductees", "delete", "--deductor", "DEMO01", "--serial", "1"});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QJsonArray all = deductees();
        QCOMPARE(all.size(), 1);
        QCOMPARE(all[0].toObject()["serial"].toInt(), 2);
        QCOMPARE(all[0].toObject()["name"].toString(), QStringLiteral("D'SOUZA & SONS"));
        QCOMPARE(all[0].toObject()["group"].toString(), QStringLiteral("FAMILY"));
    }

    // A deductor failing the dialog's checks is named and not stored; the other is, and its
    // first deductee takes the next number of the whole table.
    void deductorsInAndOut()
    {
        const QJsonArray file{QJsonObject{{"Code_No", "new01"}, {"Name", "bad tan"}, {"Tanno", "PUNE1234X5"}},
                              QJsonObject{{"Code_No", "new02"}, {"Name", "o'neil traders"}, {"status", "C"},
                                          {"dob", "1-4-2001"}, {"State", "goa"}}};
        CliRun r = cli({"deductors", "import"}, file);
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("NEW02\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 1 (NEW01) not stored: \"Tanno\" (TAN): Invalid TAN")), qPrintable(r.err));

        QJsonObject stored;
        for (const QJsonValue &d : exported({"deductors", "export"})) {
            QVERIFY(d.toObject()["Code_No"].toString() != QLatin1String("NEW01"));
            if (d.toObject()["Code_No"].toString() == QLatin1String("NEW02"))
                stored = d.toObject();
        }
        QCOMPARE(stored["Name"].toString(), QStringLiteral("O'NEIL TRADERS"));
        QCOMPARE(stored["status"].toString(), QStringLiteral("C"));
        QCOMPARE(stored["dob"].toString(), QStringLiteral("01/04/2001"));
        QCOMPARE(stored["State"].toString(), QStringLiteral("GOA"));

        r = cli({"deductees", "import", "--deductor", "new02"}, {QJsonObject{{"name", "first"}}});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("3\n"));
        QCOMPARE(deductees("NEW02").size(), 1);
    }

    void refused_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QJsonArray>("input");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("no deductor") << QStringList{"deductees", "export"} << QJsonArray() << 2 << "--deductor is required";
        QTest::newRow("delete without serial") << QStringList{"deductees", "delete", "--deductor", "DEMO01"} << QJsonArray()
                                               << 2 << "give --serial N";
        QTest::newRow("unknown deductor") << QStringList{"deductees", "export", "--deductor", "NOBODY"} << QJsonArray() << 1
                                          << "unknown deductor NOBODY";
        QTest::newRow("misspelt member") << QStringList{"deductees", "import", "--deductor", "DEMO01"}
                                         << QJsonArray{QJsonObject{{"name", "x"}, {"pincode", "411001"}}} << 1
                                         << "record 1 not stored: unknown member \"pincode\"";
        QTest::newRow("state not listed") << QStringList{"deductors", "import"}
                                          << QJsonArray{QJsonObject{{"Code_No", "n3"}, {"Name", "n"}, {"State", "utopia"}}}
                                          << 1 << "\"State\" (State): \"UTOPIA\" is not a state of the list";
    }
    void refused()
    {
        QFETCH(QStringList, args);
        QFETCH(QJsonArray, input);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        const CliRun r = cli(args, input);
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY(r.out.isEmpty());
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
    }
};

TDS_TEST(TestMasterCli)
#include "TestMasterCli.moc"
