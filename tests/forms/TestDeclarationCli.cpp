// Every declaration layout through tdsforms-cli as a user moves it: import (a refused record
// named, nothing of it kept), export as the window shows it, the export imported again
// unchanged under its serial, and the print with the values in place; then the refusals.
#include "CliRun.h"
#include "TestRegistry.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

// What a reader sees of the rich text: codes gone, lines joined, blanks single.
QString readable(QString rtf)
{
    rtf.remove(QRegularExpression(QStringLiteral("\\\\(b0|b|ulnone|ul)( |(?=\\\\))")));
    rtf.replace(QLatin1String("\\par"), QLatin1String(" "));
    rtf.replace(QRegularExpression(QStringLiteral("\\\\u8212\\?")), QStringLiteral("-"));
    return rtf.simplified();
}

// `count` empty slots with `set` written over them.
QJsonArray blanks(int count, const QMap<int, QString> &set)
{
    QJsonArray a;
    for (int i = 0; i < count; ++i)
        a.append(set.value(i));
    return a;
}

// The record with one slot of one block changed.
QJsonObject with(QJsonObject record, const QString &block, int slot, const QString &value)
{
    QJsonArray a = record[block].toArray();
    a[slot] = value;
    record[block] = a;
    return record;
}

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
    CliRun importFile(const QString &form, const QByteArray &file)
    {
        return cli(QStringList{"import", form} + m_period + QStringList{"-"}, file);
    }
    QJsonArray exported(const QString &form)
    {
        const CliRun r = cli(QStringList{"export", form} + m_period);
        if (r.exitCode != 0)
            qWarning().noquote() << r.err;
        return QJsonDocument::fromJson(r.out.toUtf8()).array();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QJsonObject>("record");
        QTest::addColumn<QJsonObject>("refused");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QJsonObject>("shown");   // blocks of the export compared whole
        QTest::addColumn<QStringList>("printed");

        // Current layout: typed in lower case; schedules I and III ticked, the rest print NIL.
        const QJsonArray payer = blanks(16, {{0, "o'neil bank"}, {3, ""}, {4, "COMPANY"}, {11, "15000"}});
        const QJsonArray schedules{
            QJsonArray{QJsonArray{"100", "equity of rs 10", "1000", "101-200", "1-4-2020"}, QJsonArray{"0", "preference", "", "", ""}},
            QJsonArray{}, QJsonArray{QJsonArray{"d'souza finance, pune", "50000", "1-6-21", "1 year", "7.5"}}, QJsonArray{},
            QJsonArray{}};
        const QJsonArray schedulesShown{
            QJsonArray{QJsonArray{"100", "EQUITY OF RS 10", "1000.00", "101", "01/04/2020"}, QJsonArray{"0", "PREFERENCE", "0.00", "0", ""}},
            QJsonArray{}, QJsonArray{QJsonArray{"D'SOUZA FINANCE, PUNE", "50000.00", "01/06/2021", "1 YEAR", "7.50"}}, QJsonArray{},
            QJsonArray{}};
        const QStringList printedSchedules{"EQUITY OF RS 10", "PREFERENCE", "D'SOUZA FINANCE, PUNE", "50,000.00", "---NIL---"};
        const QJsonObject h{{"declarant", blanks(32, {{0, "ravi kumar"}, {1, "aaapr1234k"}, {2, "5-3-1950"}, {7, "pune"},
                                                    {10, "Ravi.K@Example.com"}, {29, "240000"}, {30, "10100"}, {31, "1200000.5"}})},
                            {"payer", payer}, {"schedules", schedules}};
        QTest::newRow("15h") << "15h" << h << with(h, "payer", 3, "PUNE1234X5") << "payer slot 3 (\"TAN\"): Invalid TAN."
                             << QJsonObject{{"declarant", blanks(32, {{0, "RAVI KUMAR"}, {1, "AAAPR1234K"}, {2, "05/03/1950"},
                                                                     {7, "PUNE"}, {10, "Ravi.K@Example.com"}, {29, "240000.00"},
                                                                     {30, "10100"}, {31, "1200000.50"}})},
                                            {"schedules", schedulesShown}}
                             << printedSchedules + QStringList{"RAVI KUMAR", "31/03/2025"};
        const QJsonObject g{{"declarant", blanks(33, {{0, "sita devi"}, {1, "aaaps1234k"}, {2, "individual"}, {8, "pune"},
                                                    {30, "180000"}, {31, "10100"}, {32, "250000"}})},
                            {"payer", payer}, {"schedules", schedules}};
        QTest::newRow("15g") << "15g" << g << with(g, "declarant", 31, "12") << "declarant slot 31"
                             << QJsonObject{{"declarant", blanks(33, {{0, "SITA DEVI"}, {1, "AAAPS1234K"}, {2, "INDIVIDUAL"},
                                                                     {8, "PUNE"}, {30, "180000.00"}, {31, "10100"},
                                                                     {32, "250000.00"}})},
                                            {"schedules", schedulesShown}}
                             << printedSchedules + QStringList{"SITA DEVI"};

        // October 2015: the marks in the income cells must not split them.
        const QJsonArray oct15Payer{"o'neil bank", "17", "", "mumbai", "MUMO12345A", "", "", "", "", "45000", "1-4-24", ""};
        const QJsonArray income{QJsonArray{"fd 12¦34", "interest^on fd", "194a", "150000"}, QJsonArray{"rd 7", "interest", "194A", "30000"}};
        const QJsonArray incomeShown{QJsonArray{"FD 1234", "INTERESTON FD", "194A", "150000.00"},
                                     QJsonArray{"RD 7", "INTEREST", "194A", "30000.00"}};
        const QStringList printedOct15{"3,00,000.00", "1,50,000.00", "FD 1234", "45,000.00", "MUMO12345A", "31/03/2025",
                                       "assessment year 2025-26"};
        const QJsonObject gOct15{{"declarant", QJsonArray{"ravi d'souza", "aaapr1234k", "individual", "resident", "12/b", "",
                                                          "mg road", "kothrud", "pune", "MAHARASHTRA", "411038", "Ravi@Example.com",
                                                          "020", "25431234", "9822012345", "yes", "180000", "300000", "2",
                                                          "60000", "2023-24", "2024-25"}},
                                 {"payer", oct15Payer}, {"income", income}};
        QTest::newRow("15g-oct15") << "15g-oct15" << gOct15 << with(gOct15, "payer", 4, "") << "Please specify valid 'TAN'."
                                   << QJsonObject{{"declarant", QJsonArray{"RAVI D'SOUZA", "AAAPR1234K", "INDIVIDUAL", "RESIDENT",
                                                                           "12/B", "", "MG ROAD", "KOTHRUD", "PUNE", "MAHARASHTRA",
                                                                           "411038", "Ravi@Example.com", "020", "25431234",
                                                                           "9822012345", "Yes", "180000.00", "300000.00", "2",
                                                                           "60000.00", "2023-24", "2024-25"}},
                                                  {"income", incomeShown}}
                                   << printedOct15 + QStringList{"RAVI D'SOUZA", "column 16"};
        const QJsonObject hOct15{{"declarant", QJsonArray{"sita devi", "aaaps1234k", "5-3-1950", "4 lake view", "", "fc road", "",
                                                          "pune", "", "411005", "", "", "", "", "no", "180000", "300000", "0", "",
                                                          "", "2024-25"}},
                                 {"payer", oct15Payer}, {"income", income}};
        QTest::newRow("15h-oct15") << "15h-oct15" << hOct15 << with(hOct15, "payer", 4, "") << "Please specify valid 'TAN'."
                                   << QJsonObject{{"declarant", QJsonArray{"SITA DEVI", "AAAPS1234K", "05/03/1950", "4 LAKE VIEW",
                                                                           "", "FC ROAD", "", "PUNE", "", "411005", "", "", "", "",
                                                                           "No", "180000.00", "300000.00", "0", "0.00", "",
                                                                           "2024-25"}},
                                                  {"payer", QJsonArray{"O'NEIL BANK", "17", "", "MUMBAI", "MUMO12345A", "", "",
                                                                       "", "", "45000.00", "01/04/2024", ""}},
                                                  {"income", incomeShown}}
                                   << printedOct15 + QStringList{"SITA DEVI", "column 15"};

        // First layout: the values are written into the running text of the declaration.
        const QJsonArray firstPayer{"o'neil bank ltd", "fort, mumbai", "mumo12345a", "1-4-24", "april to june", "45000",
                                    "30-6-24", "cit mumbai"};
        const QJsonArray firstPayerShown{"O'NEIL BANK LTD", "FORT, MUMBAI", "MUMO12345A", "01/04/2024", "APRIL TO JUNE",
                                         "45000.00", "30/06/2024", "CIT MUMBAI"};
        const QStringList printedPayer{": O'NEIL BANK LTD", ": FORT, MUMBAI", ": MUMO12345A", ": 45,000.00", ": 30/06/2024"};
        const QJsonObject gFirst{{"declarant", QJsonArray{"ravi d'souza", "mohan d'souza", "individual", "12 mg road, pune",
                                                          "aaapr1234k", "2023-24", "ward 2(1)", "", "dividends", "180000", "01001"}},
                                 {"payer", firstPayer},
                                 {"schedules", QJsonArray{QJsonArray{}, QJsonArray{QJsonArray{"100", "equity of rs 10", "1000", "101-200", "1-4-2020"}},
                                                          QJsonArray{}, QJsonArray{},
                                                          QJsonArray{QJsonArray{"post office, pune", "1-1-22", "900"}}}}};
        QTest::newRow("15g-first")
            << "15g-first" << gFirst << with(gFirst, "declarant", 8, "salary") << "declarant slot 8"
            << QJsonObject{{"declarant", QJsonArray{"RAVI D'SOUZA", "MOHAN D'SOUZA", "INDIVIDUAL", "12 MG ROAD, PUNE", "AAAPR1234K",
                                                    "2023-24", "WARD 2(1)", "", "DIVIDENDS", "180000.00", "01001"}},
                           {"payer", firstPayerShown},
                           {"schedules", QJsonArray{QJsonArray{}, QJsonArray{QJsonArray{"100", "EQUITY OF RS 10", "1000.00", "101", "01/04/2020"}},
                                                    QJsonArray{}, QJsonArray{},
                                                    QJsonArray{QJsonArray{"POST OFFICE, PUNE", "01/01/2022", "900.00"}}}}}
            << printedPayer + QStringList{"*I/We, RAVI D'SOUZA *son/daughter/wife of MOHAN D'SOUZA resident of 12 MG ROAD, PUNE do hereby declare",
                                          "that the dividends in respect of", "given in Schedule II, Schedule V below",
                                          "estimated total income of Rs. 1,80,000.00, including",
                                          "previous year ending on 31/03/2025 relevant to the assessment year 2025-26",
                                          "POST OFFICE, PUNE", "900.00", "---NIL---"};
        const QJsonObject hFirst{{"declarant", QJsonArray{"sita devi", "ram lal", "4 lake view, pune", "5-3-1950", "75",
                                                          "aaaps1234k", "", "", "cit pune", "90000"}},
                                 {"payer", firstPayer},
                                 {"schedules", QJsonArray{QJsonArray{QJsonArray{"interest", "fd 12", "1-4-24", "150000"},
                                                                     QJsonArray{"dividend", "shares", "", "0"}}}}};
        QTest::newRow("15h-first")
            << "15h-first" << hFirst << with(hFirst, "declarant", 5, "salary") << "declarant slot 5 (\"PAN\"): Invalid PAN."
            << QJsonObject{{"declarant", QJsonArray{"SITA DEVI", "RAM LAL", "4 LAKE VIEW, PUNE", "05/03/1950", "75", "AAAPS1234K",
                                                    "", "", "CIT PUNE", "90000.00"}},
                           {"payer", firstPayerShown},
                           {"schedules", QJsonArray{QJsonArray{QJsonArray{"INTEREST", "FD 12", "01/04/2024", "150000.00"},
                                                               QJsonArray{"DIVIDEND", "SHARES", "", "0.00"}}}}}
            << printedPayer + QStringList{"I, SITA DEVI *son/daughter/wife of RAM LAL resident of 4 LAKE VIEW, PUNE do hereby declare",
                                          "that my date of birth is 05/03/1950 and I am of the age of 75 years",
                                          "Income-tax CIT PUNE;", "FD 12", "1,50,000.00"};
    }
    void roundTrip()
    {
        QFETCH(QString, form);
        QFETCH(QJsonObject, record);
        QFETCH(QJsonObject, refused);
        QFETCH(QString, refusal);
        QFETCH(QJsonObject, shown);
        QFETCH(QStringList, printed);
        CliRun r = importFile(form, QJsonDocument(QJsonArray{refused, record}).toJson());
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 1 not stored: ") + refusal), qPrintable(r.err));

        const QJsonArray all = exported(form);
        QCOMPARE(all.size(), 1);
        const QJsonObject one = all[0].toObject();
        QCOMPARE(one["serial"].toInt(), 1);
        for (auto it = shown.begin(); it != shown.end(); ++it)
            QCOMPARE(one[it.key()].toArray(), it.value().toArray());

        // What export gives, import takes back unchanged under its serial.
        r = importFile(form, QJsonDocument(all).toJson());
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("1\n"));
        QCOMPARE(exported(form), all);

        const QString rtf = m_home.filePath(form + QStringLiteral(".rtf"));
        r = cli(QStringList{"print", form} + m_period + QStringList{"--serial", "1", "--rtf", rtf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile f(rtf);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString text = readable(QString::fromLatin1(f.readAll()));
        QVERIFY(!text.contains(QLatin1String("##")));
        for (const QString &phrase : printed)
            QVERIFY2(text.contains(phrase), qPrintable(phrase));
    }

    void printsPdf()
    {
        const QString pdf = m_home.filePath(QStringLiteral("d1.pdf"));
        const CliRun r = cli(QStringList{"print", "15h"} + m_period + QStringList{"--serial", "1", "--pdf", pdf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile p(pdf);
        QVERIFY(p.open(QIODevice::ReadOnly));
        QCOMPARE(p.read(5), QByteArray("%PDF-"));
    }

    // Refused files and prints: a failing status, the reason, nothing stored.
    void refused_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("message");
        const QStringList importArgs = QStringList{"import", "15h"} + m_period + QStringList{"-"};
        const QStringList print = QStringList{"print", "15h"} + m_period;
        QTest::newRow("not json") << importArgs << QByteArray("{declarant: ") << "is not a JSON array of records";
        QTest::newRow("short block") << importArgs << QByteArray(R"([{"declarant": ["A"], "payer": []}])")
                                     << "\"declarant\" has 1 values; it needs 32";
        QTest::newRow("no such declaration") << print + QStringList{"--serial", "9", "--rtf", "x.rtf"} << QByteArray()
                                             << "no declaration 9";
        QTest::newRow("no serial") << print + QStringList{"--pdf", "x.pdf"} << QByteArray() << "give --serial N";
        QTest::newRow("unknown form") << QStringList{"print", "15x", "--text"} + m_period << QByteArray() << "unknown form 15x";
    }
    void refused()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, input);
        QFETCH(QString, message);
        const CliRun r = cli(args, input);
        QVERIFY(r.exitCode > 0);
        QVERIFY(r.out.isEmpty());
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
        QCOMPARE(exported(QStringLiteral("15h")).size(), 1);
    }
};

TDS_TEST(TestDeclarationCli)
#include "TestDeclarationCli.moc"
