// The two challan windows from the keyboard: a challan typed and saved with its section
// chosen in the picker, rows of the list loaded, refusals and where they leave the cursor,
// the questions of Escape, and a failed load; then the form without its window: the
// header's columns, update, copy and delete. Unique access keys: tests/app TestKeyboard.
#include "../forms/FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"

#include "challan/ChallanWindow.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <memory>

using F = ChallanPrint::Field;

namespace {

QWidget *focused() { return QApplication::focusWidget(); }
QString focusName() { return focused() ? focused()->objectName() : QStringLiteral("<none>"); }
void press(int key, Qt::KeyboardModifiers mods = Qt::NoModifier) { QTest::keyClick(focused(), Qt::Key(key), mods); }

// One key at a time to whatever has the focus: a grid hands its first key to a new editor.
void type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(focused(), c.toLatin1());
}

QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }

} // namespace

class TestChallanWindow : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;

    template <class Window>
    std::unique_ptr<Window> open()
    {
        auto w = std::make_unique<Window>();
        w->setDialogs(&m_dialogs);
        w->show();
        return QTest::qWaitForWindowActive(w.get()) ? std::move(w) : nullptr;
    }

    static QTableWidget *grid(QWidget *w, const char *name) { return w->findChild<QTableWidget *>(QLatin1String(name)); }
    static QString text(ChallanWindow *w, int field) { return w->txtfields()->value(field); }

    // A stored current-form challan with one section row.
    static void store(const QString &number, const QString &key, const QString &tax)
    {
        ChallanForm f(ChallanForm::Kind::Current);
        QVERIFY(f.load());
        f.add();
        f.setField(F::ChallanNo, number);
        f.setField(F::ChallanDate, QStringLiteral("07/05/2024"));
        f.addSection({key, tax, {}, {}, {}});
        QVERIFY2(f.update(), qPrintable(f.refusal() + f.saveError()));
    }

    // Alt+A, the date typed, then `sections` rows added, the first given the picker's
    // first section when `pick`, and `amount` typed as its tax.
    void startChallan(bool date, int sections, bool pick, const QString &amount)
    {
        press(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_2"));
        if (date) {
            press(Qt::Key_Return);
            type(QStringLiteral("7-5-24"));
            press(Qt::Key_Return);
        }
        // An access key clicks after a short animation: each row is waited for.
        for (int i = 0; i < sections; ++i) {
            press(Qt::Key_I, Qt::AltModifier);
            QTRY_COMPARE(int(static_cast<ChallanWindow *>(focused()->window())->challan().sections().size()), i + 1);
        }
        if (pick) {
            QTRY_COMPARE(focusName(), QStringLiteral("VsMySec"));
            press(Qt::Key_Return);   // opens the picker on a row without its section
            QTRY_COMPARE(focusName(), QStringLiteral("VsSec"));
            press(Qt::Key_Return);
            QTRY_COMPARE(focusName(), QStringLiteral("VsMySec"));
        }
        if (!amount.isEmpty()) {
            type(amount);
            press(Qt::Key_Return);
        }
    }

    // A current-form challan ready to update: a date and one section row.
    static void fill(ChallanForm &f, const QString &number)
    {
        f.add();
        f.setField(F::ChallanNo, number);
        f.setField(F::ChallanDate, QStringLiteral("07/05/2024"));
        f.setField(F::Interest, QStringLiteral("150.00"));
        if (f.kind() == ChallanForm::Kind::Current)
            f.addSection({QStringLiteral("7"), QStringLiteral("1000.00"), {}, QStringLiteral("40.00"), {}});
        else
            f.setNatureOfPayment(QStringLiteral("22"));
    }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        m_dialogs = ScriptedDialogs();
        QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From Challan_ZeltOth")));
        QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From Challan_TDSSec")));
    }

    void currentSavedByKeysOnly()
    {
        auto w = open<ChallanNew>();
        QVERIFY(w);
        QCOMPARE(focusName(), QStringLiteral("vsf"));
        press(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_2"));
        QVERIFY(!grid(w.get(), "vsf")->isEnabled());
        QVERIFY(w->findChild<QWidget *>("famact2")->isVisible() && !w->findChild<QWidget *>("famact1")->isVisible());
        type(QStringLiteral("o'c 12"));
        press(Qt::Key_Return);
        type(QStringLiteral("7-5-24"));
        press(Qt::Key_Return);
        // Company deductees, then Enter on past the other option groups.
        QCOMPARE(focusName(), QStringLiteral("optnoncomp"));
        press(Qt::Key_Up);
        QTRY_COMPARE(focusName(), QStringLiteral("optcomp"));
        press(Qt::Key_Return);
        QCOMPARE(focusName(), QStringLiteral("optpaytype_0"));

        press(Qt::Key_I, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("VsMySec"));
        press(Qt::Key_Return);
        QTRY_VERIFY(w->findChild<QWidget *>("FrameSec")->isVisible());
        QVERIFY(!w->findChild<QWidget *>("Frame1")->isVisible());
        type(QStringLiteral("194C"));
        press(Qt::Key_Return);
        QTRY_VERIFY(w->findChild<QWidget *>("Frame1")->isVisible());
        QTableWidget *sections = grid(w.get(), "VsMySec");
        QCOMPARE(focused(), sections);
        QCOMPARE(sections->item(0, 1)->text(), QStringLiteral("194C - Payment to contractors and sub-contractors"));
        QCOMPARE(sections->currentColumn(), 2);
        for (const char *amount : {"1000", "", "40"}) {
            type(QString::fromLatin1(amount));
            press(Qt::Key_Return);
        }
        QCOMPARE(sections->item(0, 2)->text(), QStringLiteral("1000.00"));
        QCOMPARE(sections->item(0, 3)->text(), QString());
        QCOMPARE(text(w.get(), F::IncomeTax), QStringLiteral("1000.00"));
        QCOMPARE(text(w.get(), F::EducationCess), QStringLiteral("40.00"));
        QCOMPARE(text(w.get(), F::Total), QStringLiteral("1040.00"));

        press(Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(rows("Select srno, challan_no, challan_dt, tax = 1000, educess = 40, paymode, comp From Challan_ZeltOth"),
                     QStringList{"1|O'C 12|07/05/2024|1|1|Cheque|1"});
        QCOMPARE(rows("Select ChSrNo, PayNat, Tax = 1000, Surcharge = 0, HEducess = 40, Others = 0 From Challan_TDSSec"),
                 QStringList{"1|7|1|1|1|1"});
        QCOMPARE(w->statusText(), QStringLiteral("Challan 1 saved"));
        QTableWidget *list = grid(w.get(), "vsf");
        QVERIFY(list->isEnabled());
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->item(0, 3)->text(), QStringLiteral("1040.00"));
        QVERIFY(static_cast<QLineEdit *>(w->txtfields()->widget(F::ChallanNo))->isReadOnly());
        QVERIFY(!w->findChild<QWidget *>("optcomp")->isEnabled());
        QVERIFY(m_dialogs.asked.isEmpty());
    }

    void olderSavedByKeysOnly()
    {
        auto w = open<Challan>();
        QVERIFY(w);
        press(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_2"));
        press(Qt::Key_Return);
        type(QStringLiteral("1-6-24"));
        press(Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("Combo1"));
        QCOMPARE(text(w.get(), F::ChallanDate), QStringLiteral("01/06/2024"));
        type(QStringLiteral("194C"));
        auto *combo = w->findChild<QComboBox *>("Combo1");
        QCOMPARE(combo->currentText(), QStringLiteral("194C - Payment to contractors and sub-contractors"));
        // Enter walks on: the options, the cheque, then every amount.
        for (int i = 0; i < 8; ++i)
            press(Qt::Key_Return);
        QCOMPARE(focusName(), QStringLiteral("txtfields_4"));
        type(QStringLiteral("500"));
        press(Qt::Key_U, Qt::AltModifier);
        QTRY_COMPARE(rows("Select srno, paynat, tax = 500, paymode From Challan_ZeltOth"), QStringList{"1|7|1|Cheque"});
        QCOMPARE(rows("Select * From Challan_TDSSec"), QStringList());
        QCOMPARE(text(w.get(), F::Total), QStringLiteral("500.00"));
    }

    void listRowLoadsItsChallan()
    {
        store(QStringLiteral("101"), QStringLiteral("7"), QStringLiteral("100"));
        store(QStringLiteral("202"), QStringLiteral("13"), QStringLiteral("250"));
        auto w = open<ChallanNew>();
        QVERIFY(w);
        QTableWidget *list = grid(w.get(), "vsf");
        QTableWidget *sections = grid(w.get(), "VsMySec");
        QCOMPARE(list->rowCount(), 2);
        // Opened on the first challan, section rows included.
        QCOMPARE(text(w.get(), F::ChallanNo), QStringLiteral("101"));
        QCOMPARE(sections->rowCount(), 1);
        QCOMPARE(sections->item(0, 1)->data(Qt::UserRole).toString(), QStringLiteral("7"));

        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1, 1)).center());
        QTRY_COMPARE(text(w.get(), F::ChallanNo), QStringLiteral("202"));
        QCOMPARE(sections->item(0, 1)->text(), QStringLiteral("194H - Commission or Brokerage"));
        QCOMPARE(text(w.get(), F::Total), QStringLiteral("250.00"));
        QCOMPARE(w->statusText(), QStringLiteral("Challan 2 of 2"));
    }

    // Alt+E hands the challan on the screen to the e-pay form: heads, amounts (up to 2026
    // the fee is paid under others) and the sections with their codes.
    void ePayTaxGetsTheChallan()
    {
        ChallanForm f(ChallanForm::Kind::Current);
        QVERIFY(f.load());
        f.add();
        f.setField(F::ChallanNo, QStringLiteral("101"));
        f.setField(F::ChallanDate, QStringLiteral("07/05/2024"));
        f.setField(F::Interest, QStringLiteral("12"));
        f.setField(F::LateFee, QStringLiteral("50"));
        f.addSection({QStringLiteral("7"), QStringLiteral("900"), {}, QStringLiteral("40"), QStringLiteral("25")});
        f.addSection({QStringLiteral("13"), QStringLiteral("140"), {}, {}, {}});
        QVERIFY2(f.update(), qPrintable(f.refusal() + f.saveError()));

        auto w = open<ChallanNew>();
        QVERIFY(w);
        press(Qt::Key_E, Qt::AltModifier);
        QTRY_VERIFY(w->ePayWindow() && w->ePayWindow()->isVisible());
        const EPayPayment &p = w->ePayWindow()->payment();
        QStringList values;
        for (int v = EPayPayment::AssessmentYear; v <= EPayPayment::PayerKind; ++v)
            if (v != EPayPayment::ResidenceFlag)
                values << p.text(EPayPayment::Value(v));
        QCOMPARE(values, (QStringList{"2024", text(w.get(), F::Tan), "0021", "200", "1040", "0", "40", "12", "0", "50",
                                      "75", "94C,940,12,50,0,25;94H,140,,,,0", "TAN"}));
        QCOMPARE(p.residenceFlag(), qint16(0));
        QCOMPARE(p.caller(), w.get());
    }

    void refusalsMoveTheCursor_data()
    {
        QTest::addColumn<bool>("current");
        QTest::addColumn<bool>("date");
        QTest::addColumn<int>("sections");
        QTest::addColumn<bool>("pick");
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        QTest::addColumn<int>("column");
        QTest::newRow("no section row") << true << true << 0 << false << ""
                                        << "Please add Section-wise Payment details." << "VsMySec" << 1;
        QTest::newRow("row without its section") << true << true << 1 << false << ""
                                                 << "Please Select Section." << "VsMySec" << 1;
        QTest::newRow("row without amounts") << true << true << 1 << true << ""
                                             << "Please Enter Amount details." << "VsMySec" << 2;
        QTest::newRow("no date") << true << false << 1 << true << "100"
                                 << "Please Specity Date of Challan." << "txtfields_3" << -1;
        QTest::newRow("no nature of payment") << false << true << 0 << false << ""
                                              << "Please Select Type of Payment." << "Combo1" << -1;
    }
    void refusalsMoveTheCursor()
    {
        QFETCH(bool, current);
        QFETCH(bool, date);
        QFETCH(int, sections);
        QFETCH(bool, pick);
        QFETCH(QString, amount);
        QFETCH(QString, focus);
        QFETCH(int, column);
        std::unique_ptr<ChallanWindow> w = current ? std::unique_ptr<ChallanWindow>(open<ChallanNew>())
                                                   : std::unique_ptr<ChallanWindow>(open<Challan>());
        QVERIFY(w);
        startChallan(date, sections, pick, amount);
        press(Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(m_dialogs.asked.size(), 1);
        QTEST(m_dialogs.asked[0].message, "message");
        QCOMPARE(m_dialogs.asked[0].icon, Dialogs::Icon::Information);
        QTRY_COMPARE(focusName(), focus);
        if (column >= 0) {
            QTableWidget *grid = TestChallanWindow::grid(w.get(), "VsMySec");
            QCOMPARE(grid->rowCount(), qMax(sections, 1));   // with no rows the section entry opens
            QCOMPARE(grid->currentColumn(), column);
        }
        QVERIFY(w->challan().editing());
        QCOMPARE(rows("Select * From Challan_ZeltOth"), QStringList());
    }

    void escapeAsksByState()
    {
        auto w = open<ChallanNew>();
        QVERIFY(w);
        press(Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("Do you want to exit"));
        QCOMPARE(m_dialogs.asked[0].title, QStringLiteral("Confirmation"));
        QVERIFY(w->isVisible());

        startChallan(false, 1, false, QString());
        press(Qt::Key_R, Qt::AltModifier);
        QTRY_VERIFY(w->findChild<QWidget *>("FrameSec")->isVisible());
        // Escape in the picker only goes back.
        press(Qt::Key_Escape);
        QTRY_VERIFY(w->findChild<QWidget *>("Frame1")->isVisible());
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(focusName(), QStringLiteral("VsMySec"));

        m_dialogs.answers.enqueue(true);
        press(Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 2);
        QCOMPARE(m_dialogs.asked[1].message, QStringLiteral("Do you really want to Cancel?"));
        QVERIFY(w->isVisible());
        QVERIFY(!w->challan().editing());
        QTRY_COMPARE(focusName(), QStringLiteral("vsf"));

        m_dialogs.answers.enqueue(true);
        press(Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 3);
        QVERIFY(!w->isVisible());
    }

    void failedLoadSaysSoAndStaysReadOnly()
    {
        IDataObject *d = modbase::dataObject();
        QVERIFY(d->ConQuery(QStringLiteral("Rename Table Challan_ZeltOth To Challan_Away")));
        struct Restore {
            IDataObject *d;
            ~Restore() { d->ConQuery(QStringLiteral("Rename Table Challan_Away To Challan_ZeltOth")); }
        } restore{d};
        auto w = open<ChallanNew>();
        QVERIFY(w);
        QTRY_COMPARE(m_dialogs.asked.size(), 1);
        QVERIFY(m_dialogs.asked[0].message.startsWith(QStringLiteral("The stored data of Challan ITNS 281 could not be read")));
        QCOMPARE(m_dialogs.asked[0].icon, Dialogs::Icon::Critical);
        QCOMPARE(w->statusText(), QStringLiteral("Not loaded: nothing will be saved"));
        press(Qt::Key_A, Qt::AltModifier);
        press(Qt::Key_S, Qt::AltModifier);
        QVERIFY(!w->challan().editing());
        QVERIFY(static_cast<QLineEdit *>(w->txtfields()->widget(F::ChallanNo))->isReadOnly());
        QCOMPARE(m_dialogs.asked.size(), 1);
    }

    // Header columns in their positional order; the older form keeps its nature of payment.
    void storesThePositionalRow_data()
    {
        QTest::addColumn<bool>("older");
        QTest::addColumn<QString>("stored");
        QTest::newRow("current") << false << "D15|2024|1|O'C 1|07/05/2024|1|1|0|1000|0|150|0|0||||40|Cheque|0|0|0";
        QTest::newRow("older") << true << "D15|2024|1|O'C 1|07/05/2024|1|1|22|0|0|150|0|0||||0|Cheque|0|0|0";
    }
    void storesThePositionalRow()
    {
        QFETCH(bool, older);
        ChallanForm f(older ? ChallanForm::Kind::Older : ChallanForm::Kind::Current);
        f.setDialogs(&m_dialogs);
        QVERIFY(f.load());
        fill(f, QStringLiteral("O'C 1"));
        QVERIFY2(f.update(), qPrintable(f.refusal() + f.saveError()));
        QCOMPARE(f.currentSerial(), 1);
        QCOMPARE(f.field(F::Total), older ? QStringLiteral("150.00") : QStringLiteral("1190.00"));
        QTEST(rows(QStringLiteral("Select * From Challan_ZeltOth")).value(0).replace(QLatin1String(".00"), QString()), "stored");
        QCOMPARE(rows(QStringLiteral("Select ChSrNo, PayNat, Tax, HEducess From Challan_TDSSec")),
                 older ? QStringList() : QStringList{"1|7|1000|40"});
    }

    // Modify updates in place (the challan number too); copy takes the sections along;
    // delete removes the header only.
    void updateCopyDelete()
    {
        ChallanForm f(ChallanForm::Kind::Current);
        f.setDialogs(&m_dialogs);
        QVERIFY(f.load());
        fill(f, QStringLiteral("1"));
        QVERIFY(f.update());
        QVERIFY(f.modify());
        f.setField(F::ChallanNo, QStringLiteral("2"));
        f.addSection({QStringLiteral("15"), QStringLiteral("500"), {}, {}, {}});
        QVERIFY(f.update());
        QCOMPARE(rows(QStringLiteral("Select srno, challan_no, tax From Challan_ZeltOth")), QStringList{"1|2|1500"});

        m_dialogs.answers.enqueue(true);
        QVERIFY(f.copyChallan());
        QCOMPARE(f.currentSerial(), 2);
        QCOMPARE(m_dialogs.asked.last().title, QStringLiteral("Confirmation"));
        QCOMPARE(rows(QStringLiteral("Select ChSrNo, PayNat From Challan_TDSSec Order By ChSrNo, PayNat")),
                 (QStringList{"1|7", "1|15", "2|7", "2|15"}));

        QVERIFY(f.select(1));
        m_dialogs.answers.enqueue(false);
        QVERIFY(!f.deleteChallan());
        m_dialogs.answers.enqueue(true);
        QVERIFY(f.deleteChallan());
        QCOMPARE(f.serials(), QList<int>{2});
        QCOMPARE(rows(QStringLiteral("Select count(*) From Challan_TDSSec Where ChSrNo=1")), QStringList{"2"});
        // A later challan under serial 1 replaces the rows left behind.
        ChallanForm g(ChallanForm::Kind::Current);
        QVERIFY(g.load());
        fill(g, QStringLiteral("3"));
        QCOMPARE(g.store(1, false), 1);
        QCOMPARE(rows(QStringLiteral("Select PayNat From Challan_TDSSec Where ChSrNo=1")), QStringList{"7"});
    }

    void twentySectionsAtMost()
    {
        ChallanForm f(ChallanForm::Kind::Current);
        QVERIFY(f.load());
        f.add();
        for (int i = 0; i < ChallanForm::kMaxSections; ++i)
            QVERIFY(f.addSection());
        QVERIFY(!f.addSection());
        QCOMPARE(f.refusal(), QStringLiteral("Only 20 Rows can be added for section-wise payment."));
        QVERIFY(!f.deleteSection(-1));
        QCOMPARE(f.refusal(), QStringLiteral("Please select a Row to delete."));
    }
};

TDS_TEST(TestChallanWindow)
#include "TestChallanWindow.moc"
