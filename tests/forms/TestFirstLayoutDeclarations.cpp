// Forms 15G and 15H in their first layout: the detail tables with their declaration, the
// source of the income stored and read back, the command line's round trip and its prints
// with every value in its place of the statutory text, and the window by keys.
#include "CliRun.h"
#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "declarations/First15Slots.h"
#include "declarations/First15Window.h"
#include "entry/FormRegistry.h"
#include "forms/ReportRows.h"
#include "shared/FieldRules.h"
#include "host/report/ReportObject.h"
#include "ui/FieldBehaviour.h"
#include "ui/ScheduleFrame.h"
#include "ui/ScheduleGrid.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

using namespace First15Slots;

namespace {

using Rows = QList<QStringList>;

// What a reader sees of a line report's rich text: codes gone, lines joined, blanks single.
QString readable(QString rtf)
{
    rtf.remove(QRegularExpression(QStringLiteral("\\\\(b0|b|ulnone|ul)( |(?=\\\\))")));
    rtf.replace(QLatin1String("\\par"), QLatin1String(" "));
    rtf.replace(QRegularExpression(QStringLiteral("\\\\u8212\\?")), QStringLiteral("-"));
    return rtf.simplified();
}

} // namespace

class TestFirstLayoutDeclarations : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    const QStringList m_period{"--deductor", "DEMO01", "--year", "2025-26"};

    static QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }
    CliRun cli(const QStringList &args, const QByteArray &input = QByteArray())
    {
        return runCli(m_home.path(), args, input);
    }

private slots:
    void initTestCase()
    {
        FORMS_START();
        QVERIFY(m_home.isValid());
        QCOMPARE(cli({"demo"}).exitCode, 0);
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *t : {"Form15G", "Form15G_Sch1", "Form15G_Sch2", "Form15G_Sch5", "Form15H", "Form15H_Table"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(t)));
    }

    // The source of the income is a column of its own, read back into its slot; the
    // schedules of Form 15G are Form15G_Sch1..5, securities first.
    void incomeFromStoredAndReloaded()
    {
        DeclarationForm f(design(false));
        QVERIFY(f.load());
        QStringList values(f.slotTable().size());
        values[GName] = QStringLiteral("D'SOUZA");
        values[GIncomeFrom] = QStringLiteral("DIVIDENDS");
        values[GEstIncome] = QStringLiteral("1500.00");
        values[GFlags] = QStringLiteral("11000");
        const Rows securities{{QStringLiteral("BONDS"), QStringLiteral("10"), QStringLiteral("1000.00"), {}, {}}};
        const Rows shares{{QStringLiteral("100"), QStringLiteral("EQUITY"), QStringLiteral("1000.00"), QStringLiteral("101"), {}}};
        QVERIFY2(f.storeDeclaration(0, values, {securities, shares, {}, {}, {}}) == 1, qPrintable(f.saveError()));
        QCOMPARE(rows(QStringLiteral("Select FormSrNo, Name, Income_From, EstTotalIncome, SourceFlags From Form15G")),
                 QStringList{"1|D'SOUZA|DIVIDENDS|1500|11000"});
        QCOMPARE(rows(QStringLiteral("Select FormSrId, Srno, Description From Form15G_Sch1")), QStringList{"1|1|BONDS"});
        QCOMPARE(rows(QStringLiteral("Select FormSrId, Srno, ShareClass From Form15G_Sch2")), QStringList{"1|1|EQUITY"});

        DeclarationForm again(design(false));
        QVERIFY(again.load());
        QCOMPARE(again.value(GIncomeFrom), QStringLiteral("DIVIDENDS"));
        QCOMPARE(again.value(GEstIncome), QStringLiteral("1500.00"));
        QCOMPARE(again.schedules(1).value(1), shares);
    }

    // A declaration without its declarant (or, on Form 15G, without the income it claims) is
    // refused and nothing is stored; the age is a number of years.
    void refusedBeforeSaving_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("message");
        QTest::newRow("15G name") << false << int(GName) << "Please specify valid 'Name'.";
        QTest::newRow("15H name") << true << int(HName) << "Please specify valid 'Name'.";
    }
    void refusedBeforeSaving()
    {
        QFETCH(bool, form15H);
        QFETCH(int, slot);
        QFETCH(QString, message);
        DeclarationForm f(design(form15H));
        QVERIFY(f.load());
        QStringList values(f.slotTable().size());
        values[GName] = QStringLiteral("RAVI");
        if (!form15H)
            values[GIncomeFrom] = QStringLiteral("DIVIDENDS");
        values[slot].clear();
        QCOMPARE(f.storeDeclaration(0, values, QList<Rows>(f.scheduleCount())), 0);
        QCOMPARE(f.saveError(), message);
        QCOMPARE(f.refusedSlot(), slot);
        QVERIFY(rows(QStringLiteral("Select FormSrNo From Form15G Union All Select FormSrNo From Form15H")).isEmpty());
        const Slot age = design(true).declarant.at(HAge);
        QCOMPARE(FieldRules::imported(age, QStringLiteral("7O"), modbase::data()).message,
                 QStringLiteral("The age is a whole number of years."));
        QVERIFY(FieldRules::imported(age, QStringLiteral("72"), modbase::data()).ok);
    }

    // Form 15H has no source flags: its table of income goes with every copy and delete.
    void tableOfIncomeTravelsWithTheDeclaration()
    {
        ScriptedDialogs dialogs;
        DeclarationForm f(design(true));
        f.setDialogs(&dialogs);
        QVERIFY(f.load());
        QStringList values(f.slotTable().size());
        values[HName] = QStringLiteral("SITA");
        const Rows table{{QStringLiteral("INTEREST"), QStringLiteral("FD 1"), {}, QStringLiteral("500.00")},
                         {QStringLiteral("DIVIDEND"), QStringLiteral("SHARES"), {}, QStringLiteral("70.00")}};
        QCOMPARE(f.storeDeclaration(0, values, {table}), 1);
        QVERIFY(f.requery(1));
        dialogs.answers.enqueue(true);
        QVERIFY(f.copyRecord());
        QCOMPARE(f.currentSerial(), 2);
        QCOMPARE(rows(QStringLiteral("Select FormSrId, SrNo, NatureOfIncome, Amount From Form15H_Table Order By FormSrId, SrNo")),
                 (QStringList{"1|1|INTEREST|500", "1|2|DIVIDEND|70", "2|1|INTEREST|500", "2|2|DIVIDEND|70"}));
        f.cancel();
        f.first();
        dialogs.answers.enqueue(true);
        QVERIFY(f.deleteRecord());
        QCOMPARE(rows(QStringLiteral("Select FormSrId, SrNo From Form15H_Table Order By SrNo")), (QStringList{"2|1", "2|2"}));
        QCOMPARE(f.schedules(2).value(0), table);
    }

    // The command line: a refused record named, the rest stored as typed by the rules of
    // the window, the export taken back unchanged, and the print to rich text.
    void commandLineRoundTrip_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QJsonArray>("declarant");
        QTest::addColumn<QJsonArray>("shown");
        QTest::addColumn<QJsonArray>("schedules");
        QTest::addColumn<QJsonArray>("stored");
        QTest::addColumn<int>("refusedSlot");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QStringList>("printed");
        QTest::newRow("15G") << "15g-first"
                             << QJsonArray{"ravi d'souza", "mohan d'souza", "individual", "12 mg road, pune", "aaapr1234k",
                                           "2023-24", "ward 2(1)", "", "dividends", "180000", "01001"}
                             << QJsonArray{"RAVI D'SOUZA", "MOHAN D'SOUZA", "INDIVIDUAL", "12 MG ROAD, PUNE", "AAAPR1234K",
                                           "2023-24", "WARD 2(1)", "", "DIVIDENDS", "180000.00", "01001"}
                             << QJsonArray{QJsonArray{}, QJsonArray{QJsonArray{"100", "equity of rs 10", "1000", "101-200", "1-4-2020"}},
                                           QJsonArray{}, QJsonArray{}, QJsonArray{QJsonArray{"post office, pune", "1-1-22", "900"}}}
                             << QJsonArray{QJsonArray{}, QJsonArray{QJsonArray{"100", "EQUITY OF RS 10", "1000.00", "101", "01/04/2020"}},
                                           QJsonArray{}, QJsonArray{}, QJsonArray{QJsonArray{"POST OFFICE, PUNE", "01/01/2022", "900.00"}}}
                             << int(GIncomeFrom) << "declarant slot 8"
                             << QStringList{"*I/We, RAVI D'SOUZA *son/daughter/wife of MOHAN D'SOUZA resident of 12 MG ROAD, "
                                            "PUNE do hereby declare",
                                            "that the dividends in respect of",
                                            "given in Schedule II, Schedule V below",
                                            "estimated total income of Rs. 1,80,000.00, including",
                                            "previous year ending on 31/03/2025 relevant to the assessment year 2025-26",
                                            "EQUITY OF RS", "POST OFFICE, PUNE", "900.00", "---NIL---"};
        QTest::newRow("15H") << "15h-first"
                             << QJsonArray{"sita devi", "ram lal", "4 lake view, pune", "5-3-1950", "75", "aaaps1234k", "",
                                           "", "cit pune", "90000"}
                             << QJsonArray{"SITA DEVI", "RAM LAL", "4 LAKE VIEW, PUNE", "05/03/1950", "75", "AAAPS1234K", "",
                                           "", "CIT PUNE", "90000.00"}
                             << QJsonArray{QJsonArray{QJsonArray{"interest", "fd 12", "1-4-24", "150000"},
                                                      QJsonArray{"dividend", "shares", "", "0"}}}
                             << QJsonArray{QJsonArray{QJsonArray{"INTEREST", "FD 12", "01/04/2024", "150000.00"},
                                                      QJsonArray{"DIVIDEND", "SHARES", "", "0.00"}}}
                             << int(HPan) << "declarant slot 5 (\"PAN\"): Invalid PAN."
                             << QStringList{"I, SITA DEVI *son/daughter/wife of RAM LAL resident of 4 LAKE VIEW, PUNE do hereby "
                                            "declare",
                                            "that my date of birth is 05/03/1950 and I am of the age of 75 years and am entitled "
                                            "to a deduction from the amount of income-tax on my total income referred to in "
                                            "section 88B;",
                                            "for the assessment year .................... by the Assessing Officer "
                                            "....................",
                                            "Income-tax CIT PUNE;", "FD 12", "1,50,000.00"};
    }
    void commandLineRoundTrip()
    {
        QFETCH(QString, form);
        QFETCH(QJsonArray, declarant);
        QFETCH(QJsonArray, shown);
        QFETCH(QJsonArray, schedules);
        QFETCH(QJsonArray, stored);
        QFETCH(int, refusedSlot);
        QFETCH(QString, refusal);
        QFETCH(QStringList, printed);
        const QJsonArray payer{"o'neil bank ltd", "fort, mumbai", "mumo12345a", "1-4-24", "april to june", "45000", "30-6-24",
                               "cit mumbai"};
        QJsonArray refused = declarant;
        refused[refusedSlot] = QStringLiteral("salary");
        const QJsonArray file{QJsonObject{{"declarant", refused}, {"payer", payer}, {"schedules", schedules}},
                              QJsonObject{{"declarant", declarant}, {"payer", payer}, {"schedules", schedules}}};
        CliRun r = cli(QStringList{"import", form} + m_period + QStringList{"-"}, QJsonDocument(file).toJson());
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QStringLiteral("1\n"));
        QVERIFY2(r.err.contains(QLatin1String("record 1 not stored: ") + refusal), qPrintable(r.err));

        r = cli(QStringList{"export", form} + m_period);
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QJsonArray all = QJsonDocument::fromJson(r.out.toUtf8()).array();
        QCOMPARE(all.size(), 1);
        const QJsonObject one = all[0].toObject();
        QCOMPARE(one["serial"].toInt(), 1);
        QCOMPARE(one["declarant"].toArray(), shown);
        QCOMPARE(one["payer"].toArray(), (QJsonArray{"O'NEIL BANK LTD", "FORT, MUMBAI", "MUMO12345A", "01/04/2024",
                                                      "APRIL TO JUNE", "45000.00", "30/06/2024", "CIT MUMBAI"}));
        QCOMPARE(one["schedules"].toArray(), stored);

        r = cli(QStringList{"import", form} + m_period + QStringList{"-"}, QJsonDocument(all).toJson());
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("1\n"));
        r = cli(QStringList{"export", form} + m_period);
        QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).array(), all);

        const QString rtf = m_home.filePath(form + QStringLiteral(".rtf"));
        r = cli(QStringList{"print", form} + m_period + QStringList{"--serial", "1", "--rtf", rtf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QFile f(rtf);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray content = f.readAll();
        QVERIFY(content.startsWith("{\\rtf1"));
        // The values written into the text keep their bold.
        QVERIFY(content.contains("\\b " + shown[0].toString().toLatin1() + "\\b0 "));
        const QString text = readable(QString::fromLatin1(content));
        for (const QString &phrase : printed)
            QVERIFY2(text.contains(phrase), qPrintable(phrase));
        // Part II: each payer item beside its caption.
        for (const QJsonValue &value : one["payer"].toArray()) {
            const QString item = value.toString() == QLatin1String("45000.00") ? QStringLiteral("45,000.00") : value.toString();
            QVERIFY2(text.contains(QLatin1String(": ") + item), qPrintable(item));
        }
    }

    // Opens on its first field once adding; Enter walks the declarant's fields and goes on
    // to the payer's; the PAN and TAN are checked on leaving; Alt+S saves; Escape asks.
    void windowByKeys_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::newRow("15G") << false;
        QTest::newRow("15H") << true;
    }
    void windowByKeys()
    {
        QFETCH(bool, form15H);
        ScriptedDialogs dialogs;
        std::unique_ptr<QDialog> window(FormRegistry::byCliKey(form15H ? QStringLiteral("15h-first") : QStringLiteral("15g-first"))->window());
        auto *w = qobject_cast<DeclarationWindow *>(window.get());
        QVERIFY(w);
        QCOMPARE(w->objectName(), form15H ? QStringLiteral("frm15h") : QStringLiteral("frm15g"));
        w->setDialogs(&dialogs);
        w->show();
        QVERIFY(QTest::qWaitForWindowActive(w));

        QTabWidget *tabs = w->findChild<QTabWidget *>();
        QTest::keyClick(w, Qt::Key_A, Qt::AltModifier);
        QTRY_VERIFY(w->declaration().editing());
        SlotFields *m = w->txtfieldsM();
        QTRY_COMPARE(QApplication::focusWidget(), m->widget(0));
        // A new declaration starts from the deductor's master row.
        auto *name = static_cast<QLineEdit *>(m->widget(0));
        QCOMPARE(name->text(), QStringLiteral("O'NEIL BANK LTD"));
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("ravi"));
        const Declarant at = declarant(form15H);
        // The PAN refused on leaving keeps the cursor.
        m->widget(at.pan)->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(m->widget(at.pan)->hasFocus());
        QTest::keyClicks(m->widget(at.pan), QStringLiteral("aaa"));
        QTest::keyClick(m->widget(at.pan), Qt::Key_Return);
        QCOMPARE(dialogs.asked.size(), 1);
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Invalid PAN."));
        QTRY_COMPARE(QApplication::focusWidget(), m->widget(at.pan));
        static_cast<QLineEdit *>(m->widget(at.pan))->clear();

        // From the first field, Enter visits every field of the block, then Part II.
        m->widget(0)->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(m->widget(0)->hasFocus());
        QList<QWidget *> walked;
        for (int i = 0; i < m->count(); ++i) {
            const QList<QCheckBox *> boxes = m->checkBoxes(i);
            if (boxes.isEmpty())
                walked << m->widget(i);
            for (QCheckBox *box : boxes)
                walked << box;
        }
        for (QWidget *expected : walked) {
            QCOMPARE(QApplication::focusWidget(), expected);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        SlotFields *p = w->txtfieldsP();
        QTRY_COMPARE(QApplication::focusWidget(), p->widget(PayerName));
        QCOMPARE(tabs->currentIndex(), 1);
        for (int i = 0; i < PayerTan; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), p->widget(PayerTan));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("mumo1234"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Invalid TAN."));
        QTRY_COMPARE(QApplication::focusWidget(), p->widget(PayerTan));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5a"));

        if (!form15H) {
            // Saving without the source of the income names it and puts the cursor there.
            QTest::keyClick(w, Qt::Key_S, Qt::AltModifier);
            QTRY_COMPARE(dialogs.asked.last().message, QStringLiteral("Please specify valid 'Income From'."));
            QTRY_COMPARE(QApplication::focusWidget(), m->widget(at.incomeFrom));
            QCOMPARE(tabs->currentIndex(), 0);
            QVERIFY(rows(QStringLiteral("Select * From Form15G")).isEmpty());
            // Chosen by its first letter.
            QTest::keyClick(m->widget(at.incomeFrom), Qt::Key_D);
            QCOMPARE(static_cast<QComboBox *>(m->widget(at.incomeFrom))->currentText(), QStringLiteral("DIVIDENDS"));
        }
        const int asked = int(dialogs.asked.size());
        QTest::keyClick(w, Qt::Key_S, Qt::AltModifier);
        const QString table = form15H ? QStringLiteral("Form15H") : QStringLiteral("Form15G");
        QTRY_COMPARE(rows(QStringLiteral("Select FormSrNo, Name, PTan From ") + table), QStringList{"1|RAVI|MUMO12345A"});
        if (!form15H)
            QCOMPARE(rows(QStringLiteral("Select Income_From From Form15G")), QStringList{"DIVIDENDS"});
        QCOMPARE(w->statusText(), QStringLiteral("Declaration 1 saved"));
        QCOMPARE(dialogs.asked.size(), asked);

        if (form15H) {
            // Alt+I opens the table of income of the saved declaration; Escape stores its rows.
            QString opened;
            QTimer poll;
            poll.setInterval(20);
            connect(&poll, &QTimer::timeout, this, [&] {
                auto *frame = qobject_cast<ScheduleFrame *>(QApplication::activeModalWidget());
                if (!frame)
                    return;
                poll.stop();
                opened = frame->windowTitle();
                frame->grid()->setRows({{QStringLiteral("INTEREST"), QStringLiteral("FD 1"), {}, QStringLiteral("500.00")}});
                QTest::keyClick(frame, Qt::Key_Escape);
            });
            poll.start();
            // The button sits on the declarant's tab: Alt+E shows it first.
            QTest::keyClick(w, Qt::Key_E, Qt::AltModifier);
            QTRY_COMPARE(tabs->currentIndex(), 0);
            QTest::keyClick(w, Qt::Key_I, Qt::AltModifier);
            QTRY_COMPARE(opened, QStringLiteral("TABLE OF INCOME"));
            QTRY_COMPARE(rows(QStringLiteral("Select FormSrId, SrNo, NatureOfIncome, Amount From Form15H_Table")),
                         QStringList{"1|1|INTEREST|500"});
            QCOMPARE(w->statusText(), QStringLiteral("TABLE OF INCOME saved"));
            QTRY_VERIFY(!QApplication::activeModalWidget());
            w->activateWindow();   // the offscreen platform gives no window back its activation
            QVERIFY(QTest::qWaitForWindowActive(w));
        }

        // Editing again: Escape asks before the changes are lost; No keeps them.
        QTest::keyClick(w, Qt::Key_M, Qt::AltModifier);
        QTRY_VERIFY(w->declaration().editing());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QCOMPARE(dialogs.asked.last().message,
                 QStringLiteral("You are currently editing a record. Do you really want to cancel changes ?"));
        QVERIFY(w->declaration().editing());
        QVERIFY(w->isVisible());
        dialogs.answers.enqueue(true);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!w->declaration().editing());
        QTest::keyClick(w, Qt::Key_Escape);
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Do you really want to exit ?"));
        QVERIFY(w->isVisible());
    }
};

TDS_TEST(TestFirstLayoutDeclarations)
#include "TestFirstLayoutDeclarations.moc"
