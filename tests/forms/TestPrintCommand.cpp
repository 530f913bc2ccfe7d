#include "FormsFixture.h"
#include "RecordingReportObject.h"
#include "TestRegistry.h"
#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"
#include "host/DataObject.h"

#include <QGuiApplication>

namespace {
const QString esc = QString(QChar(27));

// Runs the print button of the given form ("15c", "15d", "15i").
void printForm(const QString &form)
{
    if (form == QLatin1String("15i")) {
        Form15ILogic f;
        f.load();
        f.print();
        return;
    }
    Form15CDLogic f(form == QLatin1String("15c") ? Form15CDLogic::Kind::C : Form15CDLogic::Kind::D);
    f.load();
    f.print();
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
        DataObject::setFormInfoPrompt({});
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
            for (int mode : {0, 1, 2, 3, 4})
                QTest::addRow("%s mode %d", form, mode) << QString::fromLatin1(form) << mode;
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
        printForm(form);
        DataObject::setFormInfoPrompt({});

        QCOMPARE(asked, 1);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        const QStringList &calls = m_recorder->calls();
        if (mode <= 1) {
            QVERIFY2(calls.isEmpty(), qPrintable(calls.join(QLatin1Char(' '))));
            return;
        }
        QCOMPARE(calls.value(0), QStringLiteral("WinModeReport:") + (mode == 2 ? "true" : "false"));
        QCOMPARE(calls.value(1), QStringLiteral("NewReport"));
        QCOMPARE(calls.last(), QStringLiteral("ShowReport"));
        QCOMPARE(calls.count(QStringLiteral("NewReport")), 1);
        QCOMPARE(calls.count(QStringLiteral("ShowReport")), 1);
        QVERIFY(m_recorder->count(QStringLiteral("WriteToReport")) > 5);
    }

    void rowsFollowTheTableProtocol_data()
    {
        QTest::addColumn<QString>("form");
        QTest::newRow("15c") << QStringLiteral("15c");
        QTest::newRow("15d") << QStringLiteral("15d");
        QTest::newRow("15i") << QStringLiteral("15i");
    }
    void rowsFollowTheTableProtocol()
    {
        QFETCH(QString, form);
        DataObject::setFormInfoPrompt([] { return 2; });
        printForm(form);
        DataObject::setFormInfoPrompt({});
        const QList<RecordingReportObject::Row> &rows = m_recorder->rows();
        QVERIFY(!rows.isEmpty());

        // Title: one centred column of 78, bold form number, a free row.
        const RecordingReportObject::Row &title = rows.first();
        QCOMPARE(title.widths.value(1), qint16(78));
        QCOMPARE(title.alignments.value(1), 1);
        QVERIFY(!title.tableRow);
        QVERIFY(title.values.value(1).toString().startsWith(esc + QStringLiteral("EFORM NO. 15") + form.right(1).toUpper()
                                                            + esc + QStringLiteral("F\r\n[See ")));
        QCOMPARE((QStringList{title.border1, title.border2, title.border3, title.border4}), QStringList(4, "0"));

        for (const RecordingReportObject::Row &row : rows) {
            // Arrays from 1: index 0 unused, the widths of a row fill the 78 positions.
            QVERIFY(row.values.value(0).toString().isEmpty());
            int total = 0;
            for (int i = 1; i < row.widths.size(); ++i)
                total += row.widths[i];
            QCOMPARE(total, 78);
            for (int i = 1; i < row.prefixes.size(); ++i) {
                if (!row.prefixes[i].isEmpty())
                    QVERIFY2(row.values[i].toString().startsWith(row.prefixes[i]), qPrintable(row.prefixes[i]));
            }
        }
        // The signature block is a two-column table of 50 and 28, right column right-aligned.
        const RecordingReportObject::Row &last = rows.last();
        QCOMPARE(last.widths.mid(1, 2), (QList<qint16>{50, 28}));
        QCOMPARE(last.alignments.mid(1, 2), (QList<qint32>{0, 2}));
        QVERIFY(last.tableRow);
        QVERIFY(m_recorder->calls().contains(QStringLiteral("createtable:1,2")));
    }

    void form15iTables()
    {
        Form15ILogic form;
        form.load();
        form.setRegistration(2, QStringLiteral("KA01XY0001"));
        DataObject::setFormInfoPrompt([] { return 3; });
        form.print();
        DataObject::setFormInfoPrompt({});
        const QList<RecordingReportObject::Row> &rows = m_recorder->rows();
        QVERIFY(m_recorder->calls().contains(QStringLiteral("createtable:1,3")));

        QList<RecordingReportObject::Row> particulars, vehicles;
        for (const auto &r : rows) {
            if (r.widths.value(1) == 30)
                particulars << r;
            if (r.widths.value(1) == 10)
                vehicles << r;
        }
        QCOMPARE(particulars.size(), 5);
        for (int i = 0; i < 5; ++i) {
            const auto &r = particulars[i];
            QCOMPARE(r.widths.value(2), qint16(48));
            QCOMPARE(r.prefixes.value(1), QString::number(i + 1) + QStringLiteral(". "));
            QVERIFY(r.values.value(2).toString().startsWith(esc + QStringLiteral("E: ")));
            QVERIFY(r.values.value(2).toString().endsWith(esc + QStringLiteral("F")));
            QVERIFY(r.tableRow);
        }
        QCOMPARE(particulars[0].values.value(2).toString(), esc + QStringLiteral("E: RAVI KUMAR") + esc + QStringLiteral("F"));

        QCOMPARE(vehicles.size(), 3);
        const auto borders = [](const RecordingReportObject::Row &r) {
            return QStringList{r.border1, r.border2, r.border3, r.border4};
        };
        QCOMPARE(vehicles[0].widths.mid(1), (QList<qint16>{10, 48, 20}));
        QCOMPARE(vehicles[0].alignments.mid(1), (QList<qint32>{1, 1, 1}));
        QCOMPARE(borders(vehicles[0]), (QStringList{"111", "001", "111", "111"}));
        QCOMPARE(vehicles[0].values.value(1).toString(), QStringLiteral("S. No."));
        for (int i = 1; i <= 2; ++i) {
            QCOMPARE(borders(vehicles[i]), (QStringList{"111", "001", "0", "111"}));
            QCOMPARE(vehicles[i].values.value(1).toString(), QString::number(i) + QLatin1Char('.'));
            QVERIFY(vehicles[i].tableRow);
        }
        QCOMPARE(vehicles[1].values.value(2).toString(), QString());
        QCOMPARE(vehicles[2].values.value(2).toString(), QStringLiteral("KA01XY0001"));
        // The financial year of the heading is underlined.
        QVERIFY(rows.first().values.value(1).toString().endsWith(esc + QStringLiteral("-12023-24") + esc
                                                                 + QStringLiteral("-0")));
    }

    void aFailingRowIsLoggedAndThePrintGoesOn()
    {
        m_recorder->failRow(3);
        DataObject::setFormInfoPrompt([] { return 2; });
        printForm(QStringLiteral("15c"));
        DataObject::setFormInfoPrompt({});
        QVERIFY(m_recorder->calls().contains(QStringLiteral("WriteToReport:failed")));
        QCOMPARE(m_recorder->calls().last(), QStringLiteral("ShowReport"));
        QVERIFY(m_recorder->rows().size() > 8);
        QVERIFY(TestDatabase::logText().contains(QStringLiteral("MODBASE\tMULTISPCJS1")));
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }
};

TDS_TEST(TestPrintCommand)
#include "TestPrintCommand.moc"
