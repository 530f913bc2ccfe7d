// Declaration print: what reaches the report object and in which order (the print through
// the real report object is checked by the command line's round trip).
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "TestDatabase.h"
#include "declarations/DeclarationPrint.h"
#include "host/DataObject.h"
#include "shared/modbase.h"

#include <QRegularExpression>
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

} // namespace

class DeclarationPrintTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_report;

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
};

TDS_TEST(DeclarationPrintTest)
#include "DeclarationPrintTest.moc"
