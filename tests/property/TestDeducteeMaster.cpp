// The deductee master: numbers over every deductor, a deductee deleted with its payments of
// every period, the field checks with their messages, and the window by keys.
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "TestRegistry.h"
#include "host/IDataObject.h"
#include "host/ServiceRegistry.h"
#include "property/frmdedmaster2.h"
#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/SlotFields.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

namespace {

QStringList rows(const QString &sql)
{
    return TestDatabase::rows(*modbase::dataObject(), sql);
}

void selectDeductor(const char *code)
{
    modbase::dataObject()->setCodeno(QLatin1String(code));
}

// A deductee added as the Add and Save buttons would; its number, or 0.
int addDeductee(const QString &name)
{
    ScriptedDialogs dialogs;
    DeducteeMaster m;
    m.setDialogs(&dialogs);
    if (!m.load())
        return 0;
    m.add();
    m.setValues({name});
    return m.save() ? m.currentSerial() : 0;
}

QString focusName()
{
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QStringLiteral("<none>");
}

void press(int key, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    QWidget *to = QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
    QTest::keyClick(to, Qt::Key(key), mods);
}

} // namespace

class TestDeducteeMaster : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        ServiceRegistry::registerBuiltins();
        modbase::resetForTests();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
        IDataObject *d = modbase::dataObject();
        QVERIFY(d->isConnected() || d->connect());
        for (const char *sql : {"Insert into Main_Info (Code_No, Name) Values ('D1', 'O''NEIL TRADERS'), ('D2', 'SECOND')",
                                "Insert into Period_Master Values (101, 'D1', '2024-25', 'Q1'), (102, 'D1', '2025-26', 'Q4'), "
                                "(201, 'D2', '2024-25', 'Q1')"})
            QVERIFY2(d->ConQuery(QLatin1String(sql)), qPrintable(d->lastError()));
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *t : {"Form26QA_DedMaster", "Form26QA_Payments", "Group_Master"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(t)));
        selectDeductor("D1");
    }

    // One counter over the whole table; a modified deductee keeps its number.
    void serialsRunOverEveryDeductor()
    {
        QCOMPARE(addDeductee(QStringLiteral("FIRST")), 1);
        QCOMPARE(addDeductee(QStringLiteral("SECOND")), 2);
        selectDeductor("D2");
        QCOMPARE(addDeductee(QStringLiteral("OTHER")), 3);
        selectDeductor("D1");
        QCOMPARE(addDeductee(QStringLiteral("THIRD")), 4);

        DeducteeMaster m;
        QVERIFY(m.load());
        QVERIFY(m.moveToSerial(2));
        QVERIFY(m.modify());
        m.setValues({QStringLiteral("CHANGED")});
        QVERIFY(m.save());
        QCOMPARE(m.currentSerial(), 2);
        QCOMPARE(rows(QStringLiteral("Select Code_No, DedSrNo, DedName From Form26QA_DedMaster Order By DedSrNo")),
                 (QStringList{"D1|1|FIRST", "D1|2|CHANGED", "D2|3|OTHER", "D1|4|THIRD"}));
    }

    void deleteTakesThePaymentsOfEveryPeriod()
    {
        const int gone = addDeductee(QStringLiteral("GONE"));
        const int kept = addDeductee(QStringLiteral("KEPT"));
        const QString sql = QStringLiteral("Insert into Form26QA_Payments (Period_Code, DedSrNo, SrNo) Values "
                                           "(101, %1, 1), (102, %1, 1), (101, %2, 1), (201, %1, 1)")
                                .arg(gone)
                                .arg(kept);
        QVERIFY(modbase::dataObject()->ConQuery(sql));
        const QString payments = QStringLiteral("Select Period_Code, DedSrNo From Form26QA_Payments Order By Period_Code, DedSrNo");

        ScriptedDialogs dialogs;
        DeducteeMaster m;
        m.setDialogs(&dialogs);
        QVERIFY(m.load());
        // Modifying keeps the payments.
        QVERIFY(m.moveToSerial(gone) && m.modify());
        QVERIFY(m.save());
        QCOMPARE(rows(payments).size(), 4);

        dialogs.answers << false;
        QVERIFY(!m.deleteCurrent());
        QCOMPARE(dialogs.asked.value(0).message, QStringLiteral("Do you want to Delete Selected Item? All the Details of "
                                                                 "Selected Deductee will be Deleted."));
        QVERIFY(!dialogs.asked.value(0).yesIsDefault);
        QCOMPARE(rows(payments).size(), 4);

        dialogs.answers << true;
        QVERIFY(m.deleteCurrent());
        // Another deductor's period is not this deductor's to clear.
        QCOMPARE(rows(payments), (QStringList{QStringLiteral("101|%1").arg(kept), QStringLiteral("201|%1").arg(gone)}));
        QCOMPARE(rows(QStringLiteral("Select DedSrNo From Form26QA_DedMaster")), QStringList{QString::number(kept)});
        QCOMPARE(m.currentSerial(), kept);
    }

    void fieldChecks_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");    // as the box shows it after leaving
        QTest::addColumn<QString>("message");   // empty: accepted
        QTest::addColumn<bool>("onLeave");      // refused when the box is left, not only on saving
        QTest::newRow("empty name") << int(DeducteeMaster::Name) << "" << "" << "Please Enter Deductee Name." << false;
        QTest::newRow("double space") << int(DeducteeMaster::Name) << "RAVI  KUMAR" << "" << "Name Should not Contain Double Spaces in Between." << true;
        QTest::newRow("apostrophe") << int(DeducteeMaster::Name) << "O'NEIL D'SOUZA" << "O'NEIL D'SOUZA" << "" << true;
        QTest::newRow("pan status letter") << int(DeducteeMaster::Pan) << "ABCDE1234F" << "" << "PAN No is not Valid" << true;
        QTest::newRow("pin with a blank") << int(DeducteeMaster::Pin) << "4110 1" << "" << "Pin Code can not contain Spaces" << true;
    }
    void fieldChecks()
    {
        QFETCH(int, field);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QFETCH(QString, message);
        QFETCH(bool, onLeave);
        const FieldRules::Outcome left = DeducteeMaster::leave(field, typed, *modbase::dataObject());
        QCOMPARE(left.ok, !onLeave || message.isEmpty());
        QCOMPARE(left.message, onLeave ? message : QString());

        // Saving refuses with the same message and the information icon, and stores nothing.
        ScriptedDialogs dialogs;
        DeducteeMaster m;
        m.setDialogs(&dialogs);
        QVERIFY(m.load());
        m.add();
        QStringList values(DeducteeMaster::FieldCount);
        values[DeducteeMaster::Name] = QStringLiteral("NAME");
        values[field] = typed;
        m.setValues(values);
        if (message.isEmpty()) {   // accepted values of the other fields are stored by windowByKeys
            QVERIFY(m.save());
            QCOMPARE(rows(QStringLiteral("Select DedName From Form26QA_DedMaster")), QStringList{stored});
            return;
        }
        QVERIFY(!m.save());
        QCOMPARE(dialogs.asked.size(), 1);
        QCOMPARE(dialogs.asked[0].message, message);
        QCOMPARE(dialogs.asked[0].icon, Dialogs::Icon::Information);
        QCOMPARE(m.refusedField(), field);
        QVERIFY(m.editing());
        QVERIFY(rows(QStringLiteral("Select * From Form26QA_DedMaster")).isEmpty());
    }

    // Opens in its first field, Enter walks the fields, a new group is added on saving,
    // Alt+S saves, Escape asks before typing is lost.
    void windowByKeys()
    {
        ScriptedDialogs dialogs;
        frmdedmaster2 w;
        w.setDialogs(&dialogs);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_0"));

        QStringList keys;
        for (QWidget *child : w.findChildren<QWidget *>()) {
            const auto *label = qobject_cast<QLabel *>(child);
            const auto *button = qobject_cast<QAbstractButton *>(child);
            const QString key = QKeySequence::mnemonic(label ? label->text() : button ? button->text() : QString()).toString();
            QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(key));
            keys << key;
        }

        press(Qt::Key_A, Qt::AltModifier);
        QTRY_VERIFY(w.master().editing());
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_0"));
        const QStringList typed{"ravi kumar", "aaapr1234k", "5-3-1950", "", "", "", "", "pune", "maha", "411001", "family"};
        const QStringList walked{"txtfields_1", "txtfields_2", "txtfields_3", "txtfields_4", "txtfields_5", "txtfields_6",
                                 "txtfields_7", "Combo2", "txtfields_9", "Combo5", "cmdupdateded"};
        for (int i = 0; i < typed.size(); ++i) {
            QTest::keyClicks(QApplication::focusWidget(), typed[i]);
            press(Qt::Key_Return);
            QTRY_COMPARE(focusName(), walked[i]);
        }
        QCOMPARE(FieldBehaviour::textOf(w.txtfields()->widget(DeducteeMaster::BirthDate)), QStringLiteral("05/03/1950"));

        press(Qt::Key_V, Qt::AltModifier);
        QTRY_COMPARE(dialogs.asked.size(), 1);
        QVERIFY2(dialogs.asked[0].message.startsWith(QLatin1String("PAN AAAPR1234K is in the right form.")),
                 qPrintable(dialogs.asked[0].message));

        press(Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(!w.master().editing());
        QCOMPARE(rows(QStringLiteral("Select DedSrNo, DedName, DedPan, DedDob, DedCity, DedState, DedPin, DedGroup "
                                     "From Form26QA_DedMaster")),
                 QStringList{"1|RAVI KUMAR|AAAPR1234K|05/03/1950|PUNE|MAHARASHTRA|411001|1"});
        QCOMPARE(rows(QStringLiteral("Select * From Group_Master")), QStringList{"1|FAMILY"});
        QCOMPARE(w.statusText(), QStringLiteral("Deductee 1 saved"));
        QCOMPARE(w.vsf()->rowCount(), 1);
        QCOMPARE(w.vsf()->item(0, 7)->text(), QStringLiteral("FAMILY"));
        QVERIFY(w.Combo5()->findText(QStringLiteral("FAMILY")) > 0);

        // Editing, Escape asks to cancel the entry: No keeps what was typed, Yes drops it.
        press(Qt::Key_M, Qt::AltModifier);
        QTRY_COMPARE(focusName(), QStringLiteral("txtfields_0"));
        press(Qt::Key_End);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" jr"));
        dialogs.asked.clear();
        dialogs.answers << false;
        press(Qt::Key_Escape);
        QTRY_COMPARE(dialogs.asked.size(), 1);
        QCOMPARE(dialogs.asked[0].message, QStringLiteral("Do you want to Cancel the Entry?"));
        QVERIFY(w.isVisible() && w.master().editing());
        auto *name = qobject_cast<QLineEdit *>(w.txtfields()->widget(DeducteeMaster::Name));
        QCOMPARE(name->text(), QStringLiteral("RAVI KUMAR JR"));
        dialogs.answers << true;
        press(Qt::Key_Escape);
        QTRY_VERIFY(!w.master().editing());
        QCOMPARE(name->text(), QStringLiteral("RAVI KUMAR"));

        // Browsing, Escape asks to exit.
        dialogs.asked.clear();
        dialogs.answers << true;
        press(Qt::Key_Escape);
        QTRY_VERIFY(!w.isVisible());
        QCOMPARE(dialogs.asked.value(0).message, QStringLiteral("Do you want to exit ?"));
    }
};

TDS_TEST(TestDeducteeMaster)
#include "TestDeducteeMaster.moc"
