// Declaration print: what reaches the report object and in which order, the tables grown
// on the real templates, and one print through the real report object.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "declarations/DeclarationPrint.h"
#include "host/DataObject.h"
#include "host/ServiceRegistry.h"
#include "host/report/ReportObject.h"
#include "host/report/RtfDocument.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using DeclarationPrint::Declaration;

namespace {

// Every slot reads "D<n>" (declarant) or "P<n>" (payer), amounts and flags as given.
Declaration declaration(bool form15H, const QString &flags)
{
    Declaration d;
    d.form15H = form15H;
    const int count = form15H ? 32 : 33;
    for (int i = 0; i < count; ++i)
        d.declarant.append(QStringLiteral("D%1").arg(i));
    for (int i = 0; i < 16; ++i)
        d.payer.append(QStringLiteral("P%1").arg(i));
    d.declarant[0] = QStringLiteral("RAVI KUMAR");
    d.declarant[form15H ? 29 : 30] = QStringLiteral("150000.00");
    d.declarant[form15H ? 30 : 31] = flags;
    d.declarant[form15H ? 31 : 32] = QStringLiteral("245000");
    d.payer[11] = QStringLiteral("150000");
    for (int k = 0; k < 5; ++k)
        d.schedules.append(QList<QStringList>());
    return d;
}

// One row per schedule, each cell "S<k>C<c>", amount columns 150000.
void oneRowEach(Declaration &d)
{
    const QList<QList<int>> amounts = {{2}, {2}, {1, 4}, {4}, {2}};
    for (int k = 0; k < 5; ++k) {
        QStringList row;
        for (int c = 0; c < (k == 4 ? 3 : 5); ++c)
            row.append(amounts[k].contains(c) ? QStringLiteral("150000") : QStringLiteral("S%1C%2").arg(k + 1).arg(c));
        d.schedules[k] = {row};
    }
}

QString resourceTemplate(bool form15H)
{
    return form15H ? QStringLiteral(":/data/seed/Form15H.rtf") : QStringLiteral(":/data/seed/Form15G.rtf");
}

// The words of a PDF, blanks collapsed; empty without pdftotext.
QString pdfText(const QString &pdf)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    return process.waitForFinished(30000) ? QString::fromUtf8(process.readAllStandardOutput()).simplified() : QString();
}

} // namespace

class DeclarationPrintTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_report;

    IDataObject *data() const { return modbase::dataObject(); }

    // The calls the fill makes, through the recording report object.
    QStringList calls(const Declaration &d, const QString &asYear = QStringLiteral("2014-15"))
    {
        m_report->clear();
        DeclarationPrint::fill(d, asYear, QStringLiteral("PUNE"), QStringLiteral("01/04/2014")).apply(*m_report);
        return m_report->calls();
    }

    static QStringList matching(const QStringList &calls, const QString &pattern)
    {
        return calls.filter(QRegularExpression(pattern));
    }

    static void installTemplate(bool form15H, const QString &exePath)
    {
        const QString target = exePath + DeclarationPrint::templatePath(form15H);
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::remove(target);   // another test may have left a stand-in there
        QVERIFY(QFile::copy(resourceTemplate(form15H), target));
        QFile::setPermissions(target, QFile::permissions(target) | QFileDevice::WriteOwner);
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        DataObject::setFormInfoPrompt([] { return 2; });
        modbase::resetForTests();
        m_report = RecordingReportObject::install();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
    }

    void cleanupTestCase()
    {
        DataObject::setFormInfoPrompt({});
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    // Part I in item order, Part II after the schedules, place and date twice.
    void sectionsInOrder_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<QStringList>("partOne");   // the declarant values in the order written
        const QStringList g{"D1", "RAVI KUMAR", "2014-15", "D2", "D3", "D4", "D14", "D15", "D5", "D6", "D8",
                            "D16", "D17", "D18", "D19", "D7", "D9", "D20", "D22", "D10", "D11-D13", "D28",
                            "D29", "D23", "D24", "D25", "D26", "D27", "1,50,000.00",
                            "Yes", "No", "Yes", "No", "No", "2,45,000.00"};
        QTest::newRow("15G") << false << g;
        QStringList h = g;
        h.removeOne(QStringLiteral("D29"));
        QTest::newRow("15H: date of birth, no residential status") << true << h;
    }
    void sectionsInOrder()
    {
        QFETCH(bool, form15H);
        QFETCH(QStringList, partOne);
        Declaration d = declaration(form15H, QStringLiteral("10100"));
        oneRowEach(d);
        const QStringList c = calls(d);
        QStringList values;
        for (const QString &call : matching(c, QStringLiteral("^(TextMatrix|FindTable:5$)")))
            values.append(call.section(QLatin1Char('='), 1));
        const qsizetype scheduleAt = values.indexOf(QString());   // FindTable:5 carries no value
        QCOMPARE(values.mid(0, scheduleAt), partOne);
        const QStringList tail = values.mid(values.size() - 17);
        QCOMPARE(tail, (QStringList{"PUNE", "01/04/2014", "P0", "P1", "P2", "P3", "P4", "P5", "P6-P7", "P9", "P12", "P13",
                                    "P10", "1,50,000.00", "P14", "PUNE", "01/04/2014"}));
    }

    // Ticked schedules with rows print them, amounts grouped; the others print ---NIL---.
    void schedules_data()
    {
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QList<int>>("rowsPerSchedule");
        QTest::addColumn<QStringList>("nil");   // the five NIL texts
        QTest::addColumn<int>("deleted");
        QTest::newRow("nothing ticked: rows are not printed") << "00000" << QList<int>{2, 2, 2, 2, 2}
                                                              << QStringList(5, "---NIL---") << 5;
        QTest::newRow("ticked but empty is NIL") << "11111" << QList<int>{0, 1, 0, 0, 0}
                                                 << QStringList{"---NIL---", "", "---NIL---", "---NIL---", "---NIL---"} << 4;
        QTest::newRow("flags and rows") << "10101" << QList<int>{1, 1, 1, 1, 1}
                                        << QStringList{"", "---NIL---", "", "---NIL---", ""} << 2;
    }
    void schedules()
    {
        QFETCH(QString, flags);
        QFETCH(QList<int>, rowsPerSchedule);
        QFETCH(QStringList, nil);
        QFETCH(int, deleted);
        Declaration d = declaration(false, flags);
        for (int k = 0; k < 5; ++k)
            for (int r = 0; r < rowsPerSchedule[k]; ++r)
                d.schedules[k].append(QStringList{QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("1000")});
        const QStringList c = calls(d);
        QStringList printedNil;
        for (int k = 1; k <= 5; ++k) {
            const QStringList hit = matching(c, QStringLiteral("^NewSetText:##NIL%1##=").arg(k));
            QCOMPARE(hit.size(), 1);
            printedNil.append(hit[0].section(QLatin1Char('='), 1));
        }
        QCOMPARE(printedNil, nil);
        QCOMPARE(c.count(QStringLiteral("deleteRow:1")), deleted);
    }

    // The template's table grows to the number of rows, on the real document.
    void tableGrows_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<int>("schedule");
        QTest::addColumn<int>("rows");
        QTest::newRow("15G schedule I, ten rows") << false << 0 << 10;
        QTest::newRow("15H schedule V, ten rows") << true << 4 << 10;
    }
    void tableGrows()
    {
        QFETCH(bool, form15H);
        QFETCH(int, schedule);
        QFETCH(int, rows);
        QString flags = QStringLiteral("00000");
        flags[schedule] = QLatin1Char('1');
        Declaration d = declaration(form15H, flags);
        for (int r = 0; r < rows; ++r)
            d.schedules[schedule].append(QStringList{QStringLiteral("ROW%1").arg(r + 1)});
        const QStringList c = calls(d);
        if (rows > 1)
            QVERIFY(c.contains(QStringLiteral("InsertRows:1,%1").arg(rows - 1)));

        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("template.rtf"));
        QVERIFY(QFile::copy(resourceTemplate(form15H), copy));
        ReportObject report;
        QVERIFY(report.OpenMasterFileOnly(copy));
        DeclarationPrint::fill(d, QStringLiteral("2014-15"), QString(), QString()).apply(report);
        const int table = DeclarationPrint::layout(form15H).scheduleTable[schedule];
        QCOMPARE(report.document().rowCount(table), 1 + rows);   // the header row stays
        for (int r = 0; r < rows; ++r)
            QCOMPARE(report.document().cellText(table, 1 + r, 0), QStringLiteral("ROW%1").arg(r + 1));
        QVERIFY(!report.document().plainText().contains(QLatin1String("##")));
    }

    // Through the real report object: no screen, so the document becomes a PDF.
    void printsToPdf_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<QString>("title");
        QTest::newRow("15G") << false << "FORM NO. 15G";
        QTest::newRow("15H") << true << "FORM NO. 15H";
    }
    void printsToPdf()
    {
        QFETCH(bool, form15H);
        QFETCH(QString, title);
        auto real = std::make_shared<ReportObject>();
        ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::ReportObject), [real] { return real; });
        modbase::resetForTests();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
        const auto restore = qScopeGuard([this] {
            m_report = RecordingReportObject::install();
            modbase::resetForTests();
            modbase::Main();
        });
        installTemplate(form15H, data()->ExePath());
        data()->setCodeno(QStringLiteral("DEMO01"));
        data()->setAsYear(QStringLiteral("2014-15"));
        QTemporaryDir temp;
        real->setTempFolder(temp.path());

        Declaration d = declaration(form15H, QStringLiteral("10000"));
        d.schedules[0] = {QStringList{"100", "EQUITY 10", "150000", "1001", "01/04/2013"}};
        ScriptedDialogs dialogs;
        QVERIFY(DeclarationPrint::print(form15H ? QStringLiteral("frm15hNew") : QStringLiteral("frm15gNew"), d, dialogs));
        QVERIFY(dialogs.asked.isEmpty());
        QVERIFY(!QFile::exists(data()->vTmpPath() + DeclarationPrint::tempName(form15H)));
        const QString name = DeclarationPrint::documentName(form15H, QStringLiteral("DEMO01"), QStringLiteral("2014-15"));
        QCOMPARE(name, form15H ? QStringLiteral("Form15H_DEMO01_2014-15") : QStringLiteral("Form15G_DEMO01_2014-15"));
        QCOMPARE(real->lastOutput(), QDir(temp.path()).filePath(name + QStringLiteral(".pdf")));
        const QString printed = pdfText(real->lastOutput());
        if (printed.isEmpty())
            QSKIP("pdftotext is not available");
        QVERIFY2(printed.contains(title), qPrintable(printed));
        QVERIFY2(printed.contains(QLatin1String("RAVI KUMAR")), qPrintable(printed));
        QVERIFY(printed.contains(QLatin1String("1,50,000.00")));
        QVERIFY(printed.contains(QLatin1String("31/03/2014")));
        QCOMPARE(printed.count(QLatin1String("---NIL---")), 4);
        QVERIFY(!printed.contains(QLatin1String("##")));
    }
};

TDS_TEST(DeclarationPrintTest)
#include "DeclarationPrintTest.moc"
