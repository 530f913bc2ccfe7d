// Forms 15G and 15H: the declaration row in slot order, the master's pre-fill, schedules
// deleted and copied with their declaration, and the window by keys.
#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "declarations/DeclarationSlots.h"
#include "declarations/DeclarationWindow.h"
#include "shared/ScheduleStore.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QLineEdit>

class TestDeclarations : public QObject
{
    Q_OBJECT

    static QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }

private slots:
    void initTestCase()
    {
        FORMS_START();
        QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral(
            "Update Main_Info_oth Set panno='AAAPR1234K', dob='01/01/1950', city='PUNE', asofficer='ITO 3(1)' Where code_no='D15'")));
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *t : {"Tb15gM", "Tb15hM", "Tb15gT1", "Tb15gT3", "Tb15hT2"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(t)));
    }

    void storedInSlotOrder_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("stored");
        QTest::newRow("15G") << false << "Select FormSrNo, Name, Status, Town, Occupation, EstIncome, SourceFlags, PName, AmountPaid From Tb15gM"
                             << "1|D'SOUZA|INDIVIDUAL|PUNE|FARMER|0|00000|O'NEIL BANK|1500";
        QTest::newRow("15H") << true << "Select FormSrNo, Name, DOB, Town, Occupation, EstIncome, SourceFlags, PName, AmountPaid From Tb15hM"
                             << "1|D'SOUZA|01/01/1950|PUNE|FARMER|0|00000|O'NEIL BANK|1500";
    }
    void storedInSlotOrder()
    {
        QFETCH(bool, form15H);
        QFETCH(QString, query);
        QFETCH(QString, stored);
        DeclarationForm f(form15H);
        QVERIFY(f.load());
        f.add();
        // The declarant block starts from the deductor's master row.
        QCOMPARE(f.value(1), QStringLiteral("AAAPR1234K"));
        QCOMPARE(f.value(23), QStringLiteral("ITO 3(1)"));
        f.setValue(0, QStringLiteral("D'SOUZA"));
        if (!form15H)
            f.setValue(2, QStringLiteral("INDIVIDUAL"));
        f.setValue(DeclarationSlots::flagsSlot(form15H) - 2, QStringLiteral("FARMER"));
        f.setValue(DeclarationSlots::flagsSlot(form15H), QStringLiteral("00000"));
        f.setValue(f.declarantCount(), QStringLiteral("O'NEIL BANK"));
        f.setValue(f.declarantCount() + 11, QStringLiteral("1500.00"));
        QVERIFY2(f.saveRecord(), qPrintable(f.saveError()));
        QCOMPARE(f.currentSerial(), 1);
        QCOMPARE(rows(query), QStringList{stored});
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

    void windowByKeys()
    {
        ScriptedDialogs dialogs;
        frm15gNew w;
        w.setDialogs(&dialogs);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTest::keyClick(&w, Qt::Key_A, Qt::AltModifier);
        QTRY_VERIFY(w.declaration().editing());
        auto *name = static_cast<QLineEdit *>(w.txtfieldsM()->widget(0));
        QTRY_VERIFY(name->hasFocus());
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("ravi"));
        auto *amount = static_cast<QLineEdit *>(w.txtfieldsM()->widget(30));
        amount->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(amount, QStringLiteral("2500"));
        QTest::keyClick(&w, Qt::Key_V, Qt::AltModifier);
        QTRY_COMPARE(rows(QStringLiteral("Select FormSrNo, Name, EstIncome, SourceFlags From Tb15gM")),
                     QStringList{"1|RAVI|2500|00000"});
        QCOMPARE(w.statusText(), QStringLiteral("Declaration 1 saved"));
        QCOMPARE(amount->text(), QStringLiteral("2500.00"));
    }
};

TDS_TEST(TestDeclarations)
#include "TestDeclarations.moc"
