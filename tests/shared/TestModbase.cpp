// modbase: period codes, the error trap and its log.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "TestDatabase.h"
#include "shared/modbase.h"

#include <QTest>

class TestModbase : public QObject
{
    Q_OBJECT

    IDataObject *d() const { return modbase::dataObject(); }
    static QStringList logLines() { return TestDatabase::logText().split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
    int periodCode(const QString &code, const QString &year)
    {
        d()->setCodeno(code);
        d()->setAsYear(year);
        return modbase::GETPERIODCODEOTH();
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
    }

    void cleanupTestCase()
    {
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void init()
    {
        TestDatabase::removeLog();
        QVERIFY(d()->ConQuery(QStringLiteral("Delete From Period_Det_Oth")));
    }

    // One code per deductor-year, shared by every process, is checked through the command line.
    void periodCodeContinuesAfterTheLargest()
    {
        QVERIFY(d()->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(41,'X','2020-21')")));
        QCOMPARE(periodCode(QStringLiteral("Y"), QStringLiteral("2020-21")), 42);
    }

    void periodCodeIsZeroAndLoggedWhenTheTableIsGone()
    {
        QVERIFY(d()->ConQuery(QStringLiteral("Rename Table Period_Det_Oth To Period_Det_Oth_Away")));
        const int code = periodCode(QStringLiteral("A1"), QStringLiteral("2024-25"));
        QVERIFY(d()->ConQuery(QStringLiteral("Rename Table Period_Det_Oth_Away To Period_Det_Oth")));
        QCOMPARE(code, 0);
        const QStringList lines = logLines();
        QVERIFY2(!lines.isEmpty() && lines.last().endsWith(QStringLiteral("\tMODBASE\tGETPERIODCODEOTH")), qPrintable(lines.join(QLatin1Char('\n'))));
    }

    void trappedFailureIsLoggedOnceWithItsLocation()
    {
        const bool ok = modbase::errorTrap(QStringLiteral("frm15c"), QStringLiteral("cmdupdate_Click"), [] {
            throw TdsError(3021, QStringLiteral("No current record"), QStringLiteral("ZeltBase.ClsData"));
        });
        QVERIFY(!ok);
        QCOMPARE(modbase::Err().number, 0L);   // cleared after logging
        const QStringList lines = logLines();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().split(QLatin1Char('\t')).mid(1),
                 (QStringList{"3021", "No current record", "ZeltBase.ClsData", "frm15c", "cmdupdate_Click"}));
    }
};

TDS_TEST(TestModbase)
#include "TestModbase.moc"
