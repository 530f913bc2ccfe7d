#include "FormsFixture.h"
#include "RecordingReportObject.h"
#include "TestRegistry.h"
#include "host/DataObject.h"

#include <QGuiApplication>

namespace {
const QString esc = QString(QChar(27));
using Row = RecordingReportObject::Row;

QStringList borders(const Row &r)
{
    return {r.border1, r.border2, r.border3, r.border4};
}

// Presses the form's print button with `mode` as the answer to the print question.
void print(const QString &form, int mode, const QStringList &fields = {})
{
    DataObject::setFormInfoPrompt([mode] { return mode; });
    FormsFixture::withForm(form, fields, [](auto &f) { f.print(); });
    DataObject::setFormInfoPrompt({});
}
} // namespace

class TestPrintCommand : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_recorder;

private slots:
    void initTestCase()
    {
        FORMS_START();
        m_recorder = RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY(modbase::Main());
        QCOMPARE(modbase::reportObject(), static_cast<IReportObject *>(m_recorder.get()));
    }
    void cleanupTestCase()
    {
        RecordingReportObject::uninstall();
        modbase::resetForTests();
        TestDatabase::tearDown();
    }
    void init()
    {
        m_recorder->clear();
        TestDatabase::removeLog();
    }

    void modePrint_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("mode");
        for (const char *form : {"15c", "15d", "15i"}) {
            for (int mode : {0, 1, 2, 3})
                QTest::newRow(qPrintable(QStringLiteral("%1 mode %2").arg(QLatin1String(form)).arg(mode)))
                    << QString::fromLatin1(form) << mode;
        }
    }
    void modePrint()
    {
        QFETCH(QString, form);
        QFETCH(int, mode);
        int asked = 0;
        DataObject::setFormInfoPrompt([&] {
            ++asked;
            // The hourglass comes only after the question.
            return QGuiApplication::overrideCursor() ? -100 : mode;
        });
        FormsFixture::withForm(form, {}, [](auto &f) { f.print(); });
        DataObject::setFormInfoPrompt({});
        QCOMPARE(asked, 1);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        const QStringList &calls = m_recorder->calls();
        if (mode <= 1) {
            QVERIFY2(calls.isEmpty(), qPrintable(calls.join(QLatin1Char(' '))));
            return;
        }
        QCOMPARE(calls.mid(0, 2), (QStringList{QStringLiteral("WinModeReport:") + (mode == 2 ? "true" : "false"), "NewReport"}));
        QCOMPARE(calls.last(), QStringLiteral("ShowReport"));
        QCOMPARE(calls.count(QStringLiteral("NewReport")) + calls.count(QStringLiteral("ShowReport")), 2);
        QVERIFY(calls.contains(QStringLiteral("createtable:1,2")));

        // Title: one centred column of 78, bold form number, a free row.
        const QList<Row> &rows = m_recorder->rows();
        QVERIFY(rows.size() > 5);
        const Row &title = rows.first();
        QCOMPARE(title.widths.value(1), qint16(78));
        QCOMPARE(title.alignments.value(1), 1);
        QVERIFY(!title.tableRow);
        QVERIFY(title.values.value(1).toString().startsWith(esc + "EFORM NO. " + form.toUpper() + esc + "F\r\n[See "));
        QCOMPARE(borders(title), QStringList(4, "0"));
        for (const Row &row : rows) {
            // Arrays from 1: index 0 unused, the widths of a row fill the 78 positions.
            QVERIFY(row.values.value(0).toString().isEmpty());
            int total = 0;
            for (int i = 1; i < row.widths.size(); ++i) {
                total += row.widths[i];
                QVERIFY(row.values.value(i).toString().startsWith(row.prefixes.value(i)));
            }
            QCOMPARE(total, 78);
        }
        // The signature block is a two-column table of 50 and 28, right column right-aligned.
        QCOMPARE(rows.last().widths.mid(1, 2), (QList<qint16>{50, 28}));
        QCOMPARE(rows.last().alignments.mid(1, 2), (QList<qint32>{0, 2}));
        QVERIFY(rows.last().tableRow);
    }

    void form15iTables()
    {
        print(QStringLiteral("15i"), 3, {"", "", "KA01XY0001", ""});
        QVERIFY(m_recorder->calls().contains(QStringLiteral("createtable:1,3")));
        QList<Row> particulars, vehicles;
        for (const Row &r : m_recorder->rows()) {
            if (r.widths.value(1) == 30)
                particulars << r;
            if (r.widths.value(1) == 10)
                vehicles << r;
        }
        QCOMPARE(particulars.size(), 5);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(particulars[i].widths.value(2), qint16(48));
            QCOMPARE(particulars[i].prefixes.value(1), QString::number(i + 1) + QStringLiteral(". "));
            QVERIFY(particulars[i].values.value(2).toString().startsWith(esc + QStringLiteral("E: ")));
            QVERIFY(particulars[i].values.value(2).toString().endsWith(esc + QStringLiteral("F")));
            QVERIFY(particulars[i].tableRow);
        }
        QCOMPARE(particulars[0].values.value(2).toString(), esc + "E: RAVI KUMAR" + esc + "F");

        // A closed header, then item rows with no line above them.
        QCOMPARE(vehicles.size(), 3);
        QCOMPARE(vehicles[0].widths.mid(1), (QList<qint16>{10, 48, 20}));
        QCOMPARE(vehicles[0].alignments.mid(1), (QList<qint32>{1, 1, 1}));
        QCOMPARE(borders(vehicles[0]), (QStringList{"111", "001", "111", "111"}));
        QCOMPARE(vehicles[0].values.value(1).toString(), QStringLiteral("S. No."));
        for (int i = 1; i <= 2; ++i) {
            QCOMPARE(borders(vehicles[i]), (QStringList{"111", "001", "0", "111"}));
            QCOMPARE(vehicles[i].values.value(1).toString(), QString::number(i) + QLatin1Char('.'));
        }
        QCOMPARE(vehicles[1].values.value(2).toString(), QString());
        QCOMPARE(vehicles[2].values.value(2).toString(), QStringLiteral("KA01XY0001"));
        // The financial year of the heading is underlined.
        QVERIFY(m_recorder->rows().first().values.value(1).toString().endsWith(esc + "-12023-24" + esc + "-0"));
    }

    void aFailingRowIsLoggedAndThePrintGoesOn()
    {
        m_recorder->failRow(3);
        print(QStringLiteral("15c"), 2);
        QVERIFY(m_recorder->calls().contains(QStringLiteral("WriteToReport:failed")));
        QCOMPARE(m_recorder->calls().last(), QStringLiteral("ShowReport"));
        QVERIFY(m_recorder->rows().size() > 8);
        QVERIFY(TestDatabase::logText().contains(QStringLiteral("MODBASE\tMULTISPCJS1")));
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }
};

TDS_TEST(TestPrintCommand)
#include "TestPrintCommand.moc"
