// Challans and the section list through tdsforms-cli: import with a refusal, export,
// replace, print; the sections of a year and the usage errors.
#include "CliRun.h"
#include "TestRegistry.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

class TestChallanCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    CliRun cli(const QStringList &args, const QByteArray &input = QByteArray())
    {
        return runCli(m_home.path(), args, input);
    }
    static QStringList period(const QString &year) { return {"--deductor", "DEMO01", "--year", year}; }
    CliRun import(const QString &year, const QJsonArray &challans)
    {
        return cli(QStringList{"challan", "import"} + period(year) + QStringList{"-"}, QJsonDocument(challans).toJson());
    }
    QJsonArray exported(const QString &year)
    {
        return QJsonDocument::fromJson(cli(QStringList{"challan", "export"} + period(year)).out.toUtf8()).array();
    }
    QString printed(const QString &year, int serial)
    {
        const QString rtf = m_home.filePath(QStringLiteral("c.rtf"));
        const CliRun r = cli(QStringList{"print", "challan"} + period(year) + QStringList{"--serial", QString::number(serial), "--rtf", rtf});
        if (r.exitCode != 0)
            return r.err;
        QFile f(rtf);
        return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
    }

    void importExportPrint()
    {
        const QJsonObject current{{"form", "new"}, {"challan_no", "00417"}, {"challan_dt", "9-7-24"}, {"interest", "61"},
                                  {"paymode", "Cheque"}, {"chq_no", "884412"}, {"bank_nm", "o'neil co-op bank"},
                                  {"company", true}, {"regular_assessment", true},
                                  {"sections", QJsonArray{QJsonObject{{"key", "7"}, {"tax", "31000"}, {"cess", "1240"}},
                                                          QJsonObject{{"key", "22"}, {"tax", "2500.5"}}}}};
        const QJsonObject refused{{"form", "old"}, {"challan_dt", "1/8/2024"}, {"paynat", "57"}};
        const QJsonObject older{{"form", "old"}, {"challan_no", "9"}, {"challan_dt", "1/8/2024"}, {"paynat", "4"},
                                {"tax", "1000"}, {"paymode", "Debit to A/c"}};
        CliRun r = import("2025-26", {current, refused, older});
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n2\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 2 not stored: \"paynat\": \"57\" is no section of 2025-26")), qPrintable(r.err));

        QJsonArray all = exported("2025-26");
        QCOMPARE(all.size(), 2);
        QJsonObject first = all[0].toObject();
        QCOMPARE(first["form"].toString(), QStringLiteral("new"));
        QCOMPARE(first["challan_dt"].toString(), QStringLiteral("09/07/2024"));
        QCOMPARE(first["tax"].toString(), QStringLiteral("33500.50"));
        QCOMPARE(first["bank_nm"].toString(), QStringLiteral("O'NEIL CO-OP BANK"));
        QCOMPARE(first["sections"].toArray().size(), 2);
        QCOMPARE(all[1].toObject()["paynat"].toString(), QStringLiteral("4"));
        // The options stored as the form's comp and pay-mode word, and read back.
        QCOMPARE(first["paymode"].toString(), QStringLiteral("Cheque"));
        QCOMPARE(all[1].toObject()["paymode"].toString(), QStringLiteral("Debit to A/c"));
        QVERIFY(first["company"].toBool() && first["regular_assessment"].toBool());
        QVERIFY(!all[1].toObject()["company"].toBool() && !all[1].toObject()["regular_assessment"].toBool());

        // Printed with the words of 34,801.50 by place, the head line of 194C and 206C-A.
        const QString text = printed("2025-26", 1);
        QVERIFY2(!text.contains(QLatin1String("##")), qPrintable(text.left(300)));
        for (const char *expected : {"TAX DEDUCTED / COLLECTED AT SOURCE FROM", "Thirty Four", "Eight", "Zero", "One",
                                     "34,801.50", "884412", "Assessmant Year", "234E"})
            QVERIFY2(text.contains(QLatin1String(expected)), expected);

        // The exported challan edited and imported under its serial replaces it.
        first["challan_no"] = "00418";
        first["sections"] = QJsonArray{QJsonObject{{"key", "7"}, {"tax", "100"}}};
        first.remove("tax");
        first.remove("educess");
        r = import("2025-26", {first});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("1\n"));
        all = exported("2025-26");
        QCOMPARE(all.size(), 2);
        QCOMPARE(all[0].toObject()["challan_no"].toString(), QStringLiteral("00418"));
        QCOMPARE(all[0].toObject()["tax"].toString(), QStringLiteral("100.00"));
    }

    // From 2027-28 the codes of the new law and the labels of the tax year.
    void taxYearLabels()
    {
        const CliRun r = import("2027-28", {QJsonObject{{"form", "new"}, {"challan_dt", "1/5/2027"},
                                                        {"sections", QJsonArray{QJsonObject{{"key", "1001"}, {"tax", "5"}}}}}});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QString text = printed("2027-28", 1);
        QVERIFY(text.contains(QLatin1String("Tax Year")));
        QVERIFY(text.contains(QLatin1String("427")));
        QVERIFY(!text.contains(QLatin1String("Assessmant")));
    }

    void sections_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("firstLine");
        // The built-in list's rows: TestSectionList.
        QTest::newRow("seeded section file") << QStringList{"--year", "2027-28"} << 0 << 92
                                             << "1001|192|1001 : [192] - Section 392 - Salary-Salary paid to Union Government employees";
        QTest::newRow("missing key") << QStringList{"--get-code", "57", "--year", "2025-26"} << 0 << 1 << "";
        QTest::newRow("no year") << QStringList{"--get-li", "5"} << 2 << 0 << "";
        QTest::newRow("not a year") << QStringList{"--year", "2025-27"} << 2 << 0 << "";
    }
    void sections()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(int, lines);
        const CliRun r = cli(QStringList{"sections"} + args);
        QCOMPARE(r.exitCode, exitCode);
        if (exitCode != 0) {
            QVERIFY(r.out.isEmpty());
            QVERIFY(r.err.contains(QLatin1String("usage: tdsforms-cli sections")));
            return;
        }
        QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
        QVERIFY(r.out.endsWith(QLatin1Char('\n')));
        const QStringList got = r.out.chopped(1).split(QLatin1Char('\n'));
        QCOMPARE(got.size(), lines);
        QTEST(got.first(), "firstLine");
    }
};

TDS_TEST(TestChallanCli)
#include "TestChallanCli.moc"
