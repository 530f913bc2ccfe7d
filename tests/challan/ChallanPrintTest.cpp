// Challan print: the texts of the placeholders, the seeded template filled through the real
// report object, and the print button's calls.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "challan/ChallanPrint.h"
#include "host/DataHome.h"
#include "host/DataObject.h"
#include "host/report/ReportObject.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using ChallanPrint::Challan;

namespace {

const char *const Seeded = ":/data/seed/TDSChallan.doc";
enum { Company = 1, Regular = 2 };

Challan sample(int flags = 0, const QString &paymode = QStringLiteral("Cheque"), const QStringList &codes = {"194C"})
{
    Challan c;
    c.fields = QStringList{"PNEA12345B", "SUNRISE O'BRIEN WORKS", "00012", "15/05/2025", "1000", "200", "30.50", "10",
                           "", "100", "5", "", "1346.50", "004512", "14/05/2025", "STATE BANK OF INDIA"};
    c.company = flags & Company;
    c.regularAssessment = flags & Regular;
    c.paymode = paymode;
    c.address.flat = QStringLiteral("FLAT 12");
    c.address.city = QStringLiteral("PUNE");
    c.address.state = QStringLiteral("MAHARASHTRA");
    c.address.pin = QStringLiteral("411005");
    c.sectionCodes = codes;
    return c;
}

} // namespace

Q_DECLARE_METATYPE(Challan)

class ChallanPrintTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_report;
    int m_mode = 2;
    IDataObject *data() const { return modbase::dataObject(); }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        DataObject::setFormInfoPrompt([this] { return m_mode; });
        modbase::resetForTests();
        m_report = RecordingReportObject::install();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
        data()->setCodeno(QStringLiteral("DEMO01"));
        data()->setAsYear(QStringLiteral("2025-26"));
    }
    void cleanupTestCase()
    {
        DataObject::setFormInfoPrompt({});
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void wordsByPlace_data()
    {
        QTest::addColumn<QString>("total");
        QTest::addColumn<QStringList>("words");
        const QStringList zeros(6, QStringLiteral("Zero"));
        QTest::newRow("zero") << "0" << zeros;
        QTest::newRow("every place") << "123456789" << QStringList{"Twelve", "Thirty Four", "Fifty Six", "Seven", "Eight", "Nine"};
        QTest::newRow("crores above 99, paise dropped") << "1,00,00,00,000.75" << QStringList{"One Hundred", "Zero", "Zero", "Zero", "Zero", "Zero"};
    }
    void wordsByPlace()
    {
        QFETCH(QString, total);
        QTEST(ChallanPrint::wordsByPlace(total), "words");
    }

    void placeholderText_data()
    {
        QTest::addColumn<Challan>("challan");
        QTest::addColumn<QString>("asYear");
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<QString>("text");
        const Challan c = sample();
        QTest::newRow("deduction") << sample(0, "Cash", {"194C", "", "192"}) << "2025-26" << "##HEAD1##" << "TAX DEDUCTED AT SOURCE FROM";
        QTest::newRow("collection") << sample(0, "Cash", {"206C(1H)", "6CA"}) << "2025-26" << "##HEAD1##" << "TAX COLLECTED AT SOURCE FROM";
        QTest::newRow("company ticked") << sample(Company) << "2025-26" << "##1##" << "_/";
        QTest::newRow("cash in place of the cheque") << sample(0, "Cash") << "2025-26" << "##25##" << "Cash";
        QTest::newRow("cash: no bank") << sample(0, "Cash") << "2025-26" << "##27##" << "";
        QTest::newRow("debit keeps the bank") << sample(0, "Debit to A/c") << "2025-26" << "##27##" << "STATE BANK OF INDIA";
        QTest::newRow("amount") << c << "2025-26" << "##13##" << "1,000.00";
        QTest::newRow("both cesses") << c << "2025-26" << "##15##" << "40.50";
        QTest::newRow("penalty, empty others") << c << "2025-26" << "##17##" << "5.00";
        QTest::newRow("words, whole") << c << "2025-26" << "##33##" << "Rupees One Thousand Three Hundred Forty Six and Paise Fifty Only";
        QTest::newRow("counterfoil address") << c << "2025-26" << "##34##" << "FLAT 12, PUNE, MAHARASHTRA, 411005";
    }
    void placeholderText()
    {
        QFETCH(Challan, challan);
        QFETCH(QString, asYear);
        QFETCH(QString, placeholder);
        QString found = QStringLiteral("<none>");
        for (const auto &[name, value] : ChallanPrint::placeholders(challan, asYear)) {
            if (name == placeholder)
                found = value;
        }
        QTEST(found, "text");
    }

    // The seeded template holds exactly the placeholders filled (the command line's print
    // fills it through the real report object).
    void templateFilled()
    {
        QTemporaryDir home;
        DataHome::seed(QStringLiteral(":/data/seed"), home.path() + QStringLiteral("/Data"));
        const QString seeded = home.path() + ChallanPrint::templatePath();
        RtfDocument blank;
        QVERIFY(blank.load(seeded));
        QSet<QString> inTemplate, filledIn;
        for (auto it = QRegularExpression(QStringLiteral("##[^#]+##")).globalMatch(blank.plainText()); it.hasNext();)
            inTemplate.insert(it.next().captured());
        for (const auto &entry : ChallanPrint::placeholders(sample(), QStringLiteral("2025-26")))
            filledIn.insert(entry.first);
        QCOMPARE(inTemplate, filledIn);

    }

    void printButton_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("withTemplate");
        QTest::addColumn<QString>("first");   // the first call, or the message
        QTest::newRow("preview") << 2 << true << "WinModeReport:true";
        QTest::newRow("cancelled") << 1 << true << "";
        QTest::newRow("template missing") << 2 << false << "Template File is missing.";
    }
    void printButton()
    {
        QFETCH(int, mode);
        QFETCH(bool, withTemplate);
        QFETCH(QString, first);
        m_mode = mode;
        m_report->clear();
        const QString file = data()->ExePath() + ChallanPrint::templatePath();
        QFile::remove(file);
        QDir().mkpath(QFileInfo(file).absolutePath());
        QVERIFY(!withTemplate || QFile::copy(QString::fromLatin1(Seeded), file));
        ScriptedDialogs dialogs;
        QCOMPARE(ChallanPrint::print(QStringLiteral("ChallanNew"), sample(), dialogs), mode > 1 && withTemplate);
        QCOMPARE(dialogs.asked.isEmpty() ? QString() : dialogs.asked.first().message, withTemplate ? QString() : first);
        QStringList expected;
        if (mode > 1 && withTemplate) {
            expected << first << "setDocumentName:Challan_DEMO01_2025-26" << "newreportnew:" + file;
            for (const auto &[placeholder, text] : ChallanPrint::placeholders(sample(), QStringLiteral("2025-26")))
                expected << QStringLiteral("SetText:%1=%2").arg(placeholder, text);
            expected << QStringLiteral("ShowReport");
        }
        QCOMPARE(m_report->calls(), expected);
    }

    void addressOfTheDeductor()
    {
        QVERIFY(data()->ConQuery(QStringLiteral("Insert into Main_Info (Code_No, flat, city, PIN, Mobile1) values "
                                                "('CH01', 'D''SOUZA HOUSE', 'PUNE', '411005', '98')")));
        const ChallanPrint::Address a = ChallanPrint::readAddress(*data(), QStringLiteral("CH01"));
        QCOMPARE(QStringList({a.flat, a.city, a.pin, a.mobile1, a.street}), QStringList({"D'SOUZA HOUSE", "PUNE", "411005", "98", ""}));
        QCOMPARE(ChallanPrint::readAddress(*data(), QStringLiteral("NONE")).city, QString());
    }
};

TDS_TEST(ChallanPrintTest)
#include "ChallanPrintTest.moc"
