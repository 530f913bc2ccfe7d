// The challan form without its window: serials, insert versus update, copy and delete,
// and what goes into the header's columns.
#include "../forms/FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"

#include "challan/ChallanForm.h"

using F = ChallanPrint::Field;

class TestChallanForm : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;

    static QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }

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
        m_dialogs.asked.clear();
        m_dialogs.answers.clear();
        QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From Challan_ZeltOth")));
        QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From Challan_TDSSec")));
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

TDS_TEST(TestChallanForm)
#include "TestChallanForm.moc"
