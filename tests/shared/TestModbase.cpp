// modbase: period codes, the state table, the error trap and its log, the report-row wrapper.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "TestDatabase.h"
#include "host/ErrorLog.h"
#include "shared/modbase.h"

#include <QFile>
#include <QTest>

class TestModbase : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_report;

    IDataObject *d() const { return modbase::dataObject(); }
    QString logPath() const { return d()->ExePath() + QLatin1Char('/') + ErrorLog::fileName(); }
    QStringList logLines() const
    {
        QFile f(logPath());
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
            return {};
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    int periodCode(const QString &code, const QString &year)
    {
        d()->setCodeno(code);
        d()->setAsYear(year);
        return modbase::GETPERIODCODEOTH();
    }
    int periodRows()
    {
        Recordset rs;
        if (!d()->RecordsetQuery(rs, QStringLiteral("Select Count(*) From Period_Det_Oth")))
            return -1;
        return rs.field(0).toInt();
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        m_report = RecordingReportObject::install();
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
        QFile::remove(logPath());
        QVERIFY(d()->ConQuery(QStringLiteral("Delete From Period_Det_Oth")));
    }

    void periodCodesAreAllocatedOnceAndGlobally()
    {
        QCOMPARE(periodCode(QStringLiteral("A1"), QStringLiteral("2024-25")), 1);
        QCOMPARE(periodCode(QStringLiteral("A1"), QStringLiteral("2024-25")), 1);
        QCOMPARE(periodRows(), 1);
        // Other deductors and years share one counter.
        QCOMPARE(periodCode(QStringLiteral("B2"), QStringLiteral("2024-25")), 2);
        QCOMPARE(periodCode(QStringLiteral("A1"), QStringLiteral("2025-26")), 3);
        QCOMPARE(periodCode(QStringLiteral("O'NEIL"), QStringLiteral("2024-25")), 4);
        QCOMPARE(periodCode(QStringLiteral("O'NEIL"), QStringLiteral("2024-25")), 4);
        QCOMPARE(periodCode(QStringLiteral("B2"), QStringLiteral("2024-25")), 2);
        QCOMPARE(periodRows(), 4);
        QVERIFY(logLines().isEmpty());
    }

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
        QVERIFY(!lines.isEmpty());
        QVERIFY2(lines.last().endsWith(QStringLiteral("\tMODBASE\tGETPERIODCODEOTH")), qPrintable(lines.last()));
    }

    void stateCodes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("delhi no leading zero") << "DELHI" << "9";
        QTest::newRow("capital chhattisgarh") << "CHHATTISGARH" << "";
        QTest::newRow("lakhswadeep spelling") << "LAKHSWADEEP" << "17";
        QTest::newRow("tamilnadu one word") << "TAMILNADU" << "29";
        QTest::newRow("case counts") << "Delhi" << "";
        QTest::newRow("empty") << "" << "";
    }

    void stateCodes()
    {
        QFETCH(QString, name);
        QFETCH(QString, code);
        QCOMPARE(modbase::StateCodeFromName(name), code);
    }

    void noErrorWritesNoLog()
    {
        modbase::clearErr();
        modbase::LogError();
        QVERIFY(!QFile::exists(logPath()));
        QVERIFY(modbase::errorTrap(QStringLiteral("frm15c"), QStringLiteral("cmdupdate_Click"), [] {}));
        QVERIFY(!QFile::exists(logPath()));
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

    void failingReportRowIsLoggedAndSkipped()
    {
        m_report->clear();
        m_report->failRow(1);
        for (int i = 0; i < 3; ++i) {
            QVariantList values{QVariant(), QStringLiteral("row %1").arg(i)};
            QList<qint16> widths{0, 78};
            QList<qint32> aligns{0, 0};
            QStringList first{QString(), QString()};
            QStringList prefixes{QString(), QString()};
            modbase::MULTISPCJS1(values, widths, aligns, first, prefixes, true, QStringLiteral("0"),
                                 QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0"));
        }
        m_report->failRow(-1);
        QCOMPARE(m_report->rows().size(), 2);
        QCOMPARE(m_report->rows()[1].values.value(1).toString(), QStringLiteral("row 2"));
        // The flag moved to the end, the borders kept their order.
        QCOMPARE(m_report->rows()[0].tableRow, true);
        const QStringList lines = logLines();
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().endsWith(QStringLiteral("\tMODBASE\tMULTISPCJS1")));
    }
};

TDS_TEST(TestModbase)
#include "TestModbase.moc"
