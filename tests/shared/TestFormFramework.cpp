// The shared form pieces on a real database: the transaction guard and the record form's
// life cycle (its windows are walked by keys in the forms tests).
#include "TestRegistry.h"

#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "host/ServiceRegistry.h"
#include "shared/FieldRules.h"
#include "shared/ColumnEncoder.h"
#include "shared/RecordForm.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

#include <QTest>

namespace {

SlotTable testSlots()
{
    return {{.caption = QStringLiteral("Nam&e"), .width = 50},
            {.caption = QStringLiteral("PAN &1"), .kind = FieldKind::Pan, .width = 10},
            {.caption = QStringLiteral("Amo&unt"), .kind = FieldKind::Amount},
            {.caption = QStringLiteral("Date &2"), .kind = FieldKind::Date, .width = 10},
            {.caption = QStringLiteral("Sources"), .kind = FieldKind::Flags,
             .items = {QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}}};
}

// A record form over TbRec with one detail table that travels with each record.
class TestRecords : public RecordForm
{
public:
    explicit TestRecords(RecordStatements statements = RecordStatements::forTable(QStringLiteral("TbRec")))
        : RecordForm(std::move(statements), testSlots(), QStringLiteral("Record")) {}
    QString module() const override { return QStringLiteral("frmrec"); }
    QString documentBase() const override { return QStringLiteral("Rec"); }
    void buildReport() override {}

protected:
    QStringList deleteDetailStatements(int serial) const override
    {
        return {QStringLiteral("Delete From TbRecT Where Period_Code=") + periodText() + QStringLiteral(" and FormSrId=")
                + QString::number(serial)};
    }
    void copyDetails(IDataObject &, TransactionGuard &guard, int from, int to) override
    {
        guard.run(QStringLiteral("Insert Into TbRecT Select Period_Code, %1, Srno, Txt From TbRecT Where Period_Code=%2 "
                                 "and FormSrId=%3")
                      .arg(to)
                      .arg(periodText())
                      .arg(from));
    }
};

} // namespace

class TestFormFramework : public QObject
{
    Q_OBJECT

    IDataObject *d() const { return modbase::dataObject(); }
    QStringList rows(const QString &sql) const { return TestDatabase::rows(*d(), sql); }
    // Loads the form and saves each record as a new one, its values slot by slot.
    static bool addRecords(TestRecords &f, const QList<QStringList> &records)
    {
        bool ok = f.load();
        for (const QStringList &values : records) {
            f.add();
            for (int i = 0; i < values.size(); ++i)
                f.setValue(i, values[i]);
            ok = ok && f.saveRecord();
        }
        return ok;
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        ServiceRegistry::registerBuiltins();
        modbase::resetForTests();
        QVERIFY(modbase::Main());
        QVERIFY(d()->ConQuery(QStringLiteral(
            "Create Table TbRec (Period_Code Int Not Null, FormSrNo Int Not Null, Name Varchar(50), Pan Varchar(10), "
            "Amt Decimal(15,2), Dt Varchar(10), Flags Varchar(5), Primary Key (Period_Code, FormSrNo)) Engine=InnoDB")));
        QVERIFY(d()->ConQuery(QStringLiteral(
            "Create Table TbRecT (Period_Code Int Not Null, FormSrId Int Not Null, Srno Int Not Null, Txt Varchar(20), "
            "Primary Key (Period_Code, FormSrId, Srno)) Engine=InnoDB")));
        QVERIFY(d()->ConQuery(QStringLiteral("Insert Into Main_Info (Code_No, Name) Values ('R1', 'RECORDS')")));
        d()->setCodeno(QStringLiteral("R1"));
        d()->setAsYear(QStringLiteral("2025-26"));
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *table : {"TbRec", "TbRecT"})
            QVERIFY(d()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(table)));
    }

    // What each encoding lets into a statement: text always made safe, numbers unquoted.
    void encodings_data()
    {
        QTest::addColumn<int>("encoding");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("sql");
        QTest::newRow("apostrophe") << int(Encoding::Text) << "O'NEIL\\" << "'O''NEIL\\\\'";
        QTest::newRow("amount") << int(Encoding::Amount) << "-12.50%" << "-12.5";
        QTest::newRow("flags cannot carry a quote") << int(Encoding::Flags) << "1'0); --" << "'10'";
    }
    void encodings()
    {
        QFETCH(int, encoding);
        QFETCH(QString, value);
        QFETCH(QString, sql);
        QCOMPARE(ColumnEncoder::encode(*d(), Encoding(encoding), value), sql);
    }

    // A failing statement leaves the earlier rows as they were, with the server's message.
    void transactionGuardRollsBack()
    {
        QVERIFY(d()->ConQuery(QStringLiteral("Insert Into TbRec (Period_Code, FormSrNo, Name) Values (9, 1, 'OLD')")));
        TransactionGuard guard(*d());
        guard.run({QStringLiteral("Delete From TbRec"),
                   QStringLiteral("Insert Into TbRec (Period_Code, FormSrNo, Name) Values (9, 3, '%1')").arg(QString(60, u'X'))});
        QVERIFY(!guard.commit());
        QVERIFY2(guard.error().contains(QLatin1String("Name")), qPrintable(guard.error()));
        QCOMPARE(rows(QStringLiteral("Select Period_Code, FormSrNo, Name From TbRec")), QStringList{"9|1|OLD"});
    }

    void serialsAndStorage()
    {
        TestRecords f;
        QVERIFY(addRecords(f, {{"D'SOUZA", "AAACO1234B", "Nil", "01/04/2025", "000"}, {"O'NEIL \\ SONS", "", "99.5", "", "101"}}));
        // Modifying keeps the serial and replaces the row.
        f.first();
        QVERIFY(f.modify());
        f.setValue(0, QStringLiteral("FIRST"));
        QVERIFY(f.saveRecord());
        QCOMPARE(f.currentSerial(), 1);
        QCOMPARE(rows(QStringLiteral("Select FormSrNo, Name, Pan, Amt, Dt, Flags From TbRec Order By FormSrNo")),
                 (QStringList{"1|FIRST|AAACO1234B|0|01/04/2025|000", "2|O'NEIL \\ SONS||99.5||101"}));
    }

    void deleteAndCopy()
    {
        ScriptedDialogs dialogs;
        TestRecords f;
        f.setDialogs(&dialogs);
        QVERIFY(addRecords(f, {{"A"}, {"B"}, {"C"}}));
        QVERIFY(d()->ConQuery(QStringLiteral("Insert Into TbRecT Values (%1, 2, 1, 'ROW OF B')").arg(f.periodCode())));

        // No keeps everything; the question has No as its default button.
        f.moveTo(1);
        QVERIFY(!f.deleteRecord());
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Do you really want to Delete the Selected Item ?"));
        QVERIFY(!dialogs.asked.last().yesIsDefault);

        // A copy takes the next serial, its detail rows and enters editing.
        dialogs.answers.enqueue(true);
        QVERIFY(f.copyRecord());
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Do you really want to Make a Copy of the Selected Item ?"));
        QCOMPARE(f.currentSerial(), 4);
        QVERIFY(f.editing());
        QCOMPARE(rows(QStringLiteral("Select FormSrId, Txt From TbRecT Order By FormSrId")), (QStringList{"2|ROW OF B", "4|ROW OF B"}));
        f.cancel();

        // Deleting the last record leaves the new last one current; details go with it.
        f.last();
        dialogs.answers.enqueue(true);
        QVERIFY(f.deleteRecord());
        QCOMPARE(f.currentSerial(), 3);
        QCOMPARE(rows(QStringLiteral("Select FormSrId From TbRecT")), QStringList{"2"});
    }

    // Another desk saves the serial this one was about to use: the insert meets the key,
    // nothing of the other desk's record is touched, and the next serial is taken.
    void serialTakenMeanwhile()
    {
        TestRecords f;
        QVERIFY(addRecords(f, {{"A"}, {"B"}}));
        // Each look at the highest serial is one step less stale than the last.
        QVERIFY(d()->ConQuery(QStringLiteral("Create Or Replace Sequence s_race Start With 0 Minvalue 0")));
        RecordStatements late = RecordStatements::forTable(QStringLiteral("TbRec"));
        late.maxSerial = QStringLiteral("Select Max(FormSrNo) - 2 + NextVal(s_race) From TbRec Where Period_Code=");
        TestRecords racing(late);
        QVERIFY(addRecords(racing, {{"C"}}));
        QCOMPARE(rows(QStringLiteral("Select FormSrNo, Name From TbRec Order By FormSrNo")), (QStringList{"1|A", "2|B", "3|C"}));
    }
};

TDS_TEST(TestFormFramework)
#include "TestFormFramework.moc"
