// Forms 15G and 15H: schedules deleted and copied with their declaration, a failed replace,
// and the window by keys (the slots are checked by the command line's round trip).
#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "declarations/DeclarationSlots.h"
#include "declarations/DeclarationWindow.h"
#include "declarations/First15Slots.h"
#include "declarations/First15Window.h"
#include "entry/FormRegistry.h"
#include "shared/ScheduleStore.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>

class TestDeclarations : public QObject
{
    Q_OBJECT

    static QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *t : {"Tb15gM", "Tb15hM", "Tb15gT1", "Tb15gT3", "Tb15hT2", "Form15G"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(t)));
    }

    // Delete takes the schedules with it; a copy takes the ticked ones only.
    void schedulesTravelWithTheDeclaration()
    {
        ScriptedDialogs dialogs;
        DeclarationForm f(false);
        f.setDialogs(&dialogs);
        QVERIFY(f.load());
        f.add();
        f.setValue(0, QStringLiteral("A"));
        f.setValue(31, QStringLiteral("10000"));
        QVERIFY(f.saveRecord());
        IDataObject &d = modbase::data();
        ScheduleStore::store(d, DeclarationSlots::schedule(false, 0), f.periodCode(), 1,
                             {{QStringLiteral("100"), QStringLiteral("EQUITY 10"), QStringLiteral("1000"),
                               QStringLiteral("101-200"), QStringLiteral("01/04/2020")}});
        ScheduleStore::store(d, DeclarationSlots::schedule(false, 2), f.periodCode(), 1,
                             {{QStringLiteral("BANK"), QStringLiteral("5000"), QString(), QString(), QStringLiteral("7")}});
        dialogs.answers.enqueue(true);
        QVERIFY(f.copyRecord());
        QCOMPARE(f.currentSerial(), 2);
        QCOMPARE(rows(QStringLiteral("Select FormSrId, DistinctiveNos From Tb15gT1 Order By FormSrId")),
                 (QStringList{"1|101", "2|101"}));
        QCOMPARE(rows(QStringLiteral("Select FormSrId From Tb15gT3")), QStringList{"1"});
        f.cancel();
        f.first();
        dialogs.answers.enqueue(true);
        QVERIFY(f.deleteRecord());
        QCOMPARE(rows(QStringLiteral("Select FormSrId From Tb15gT1")), QStringList{"2"});
        QVERIFY(rows(QStringLiteral("Select * From Tb15gT3")).isEmpty());
    }

    // A replace that fails half-way (a cell too long for its column) leaves the stored
    // declaration and its schedules as they were.
    void failedReplaceKeepsThePrevious()
    {
        DeclarationForm f(true);
        QVERIFY(f.load());
        QStringList values(f.slotTable().size());
        values[0] = QStringLiteral("KEPT");
        const QList<QStringList> kept{{QStringLiteral("BOND"), QStringLiteral("2"), QStringLiteral("500.00"), {}, {}}};
        QCOMPARE(f.storeDeclaration(0, values, {{}, kept, {}, {}, {}}), 1);
        values[0] = QStringLiteral("LOST");
        QCOMPARE(f.storeDeclaration(1, values, {{}, {{QString(300, QLatin1Char('X')), {}, {}, {}, {}}}, {}, {}, {}}), 0);
        QVERIFY2(f.saveError().startsWith(QLatin1String("The declaration could not be saved; nothing was changed.")),
                 qPrintable(f.saveError()));
        QCOMPARE(rows(QStringLiteral("Select FormSrNo, Name From Tb15hM")), QStringList{"1|KEPT"});
        QCOMPARE(f.schedules(1).value(1), kept);
    }

    // Opens on its first field once adding; Enter walks the declarant's fields and goes on
    // to the payer's; the PAN and TAN are checked on leaving; Alt+S saves; Escape asks.
    void windowByKeys()
    {
        ScriptedDialogs dialogs;
        std::unique_ptr<QDialog> window(FormRegistry::byCliKey(QStringLiteral("15g-first"))->window());
        auto *w = qobject_cast<DeclarationWindow *>(window.get());
        QVERIFY(w);
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
        const First15Slots::Declarant at = First15Slots::declarant(false);
        // The PAN refused on leaving keeps the cursor.
        m->widget(at.pan)->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(m->widget(at.pan)->hasFocus());
        static_cast<QLineEdit *>(m->widget(at.pan))->clear();
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
        QTRY_COMPARE(QApplication::focusWidget(), p->widget(First15Slots::PayerName));
        QCOMPARE(tabs->currentIndex(), 1);
        for (int i = 0; i < First15Slots::PayerTan; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), p->widget(First15Slots::PayerTan));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("mumo1234"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Invalid TAN."));
        QTRY_COMPARE(QApplication::focusWidget(), p->widget(First15Slots::PayerTan));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5a"));

        // Saving without the source of the income names it and puts the cursor there.
        QTest::keyClick(w, Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(dialogs.asked.last().message, QStringLiteral("Please specify valid 'Income From'."));
        QTRY_COMPARE(QApplication::focusWidget(), m->widget(at.incomeFrom));
        QCOMPARE(tabs->currentIndex(), 0);
        QVERIFY(rows(QStringLiteral("Select * From Form15G")).isEmpty());
        // Chosen by its first letter.
        QTest::keyClick(m->widget(at.incomeFrom), Qt::Key_D);
        QCOMPARE(static_cast<QComboBox *>(m->widget(at.incomeFrom))->currentText(), QStringLiteral("DIVIDENDS"));
        const int asked = int(dialogs.asked.size());
        QTest::keyClick(w, Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(rows(QStringLiteral("Select FormSrNo, Name, PTan, Income_From From Form15G")),
                     QStringList{"1|RAVI|MUMO12345A|DIVIDENDS"});
        QCOMPARE(w->statusText(), QStringLiteral("Declaration 1 saved"));
        QCOMPARE(dialogs.asked.size(), asked);

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

TDS_TEST(TestDeclarations)
#include "TestDeclarations.moc"
