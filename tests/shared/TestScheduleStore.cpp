// Schedule rows stored and read back through the real database; a failed save keeps the old rows.
#include "TestRegistry.h"

#include "TestDatabase.h"
#include "host/IDataObject.h"
#include "shared/ScheduleStore.h"
#include "shared/modbase.h"

#include <QTest>

using Rows = QList<QStringList>;

class TestScheduleStore : public QObject
{
    Q_OBJECT

    std::shared_ptr<IDataObject> m_data;
    static constexpr int kPeriod = 7;
    static constexpr int kForm = 3;

    static ScheduleLayout schedule(const QString &table = QStringLiteral("TbSchedTest"))
    {
        using A = ScheduleColumn::Align;
        using K = ScheduleColumn::Kind;
        return ScheduleLayout{.title = QStringLiteral("SCHEDULE I"), .table = table, .columns = {
            {.heading = QStringLiteral("Name"), .align = A::Left, .kind = K::Text},
            {.heading = QStringLiteral("Date of payment"), .align = A::Centre, .kind = K::Date},
            {.heading = QStringLiteral("Amount"), .align = A::Right, .kind = K::Number, .format = QStringLiteral("###0.00")},
            {.heading = QStringLiteral("Range"), .align = A::Right, .kind = K::Number}}};
    }

    // Srno, then every data column as the server prints it, for the test's own key.
    QStringList stored(int formSrId = kForm)
    {
        return TestDatabase::rows(*m_data, QStringLiteral("Select Srno, Name, PaidOn, Amount, RangeFrom From TbSchedTest "
                                                          "Where Period_Code=%1 and FormSrId=%2 Order By Srno")
                                               .arg(kPeriod).arg(formSrId));
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        m_data = TestDatabase::dataObject();
        QVERIFY(m_data->ConQuery(QStringLiteral(
            "CREATE TABLE TbSchedTest (Period_Code int NOT NULL, FormSrId int NOT NULL, Srno int NOT NULL, "
            "Name varchar(12), PaidOn varchar(10), Amount decimal(14,2), RangeFrom int, "
            "PRIMARY KEY (Period_Code, FormSrId, Srno)) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4")));
    }

    void cleanupTestCase() { TestDatabase::tearDown(); }

    // Every case replaces three stored rows; a neighbouring form's row is never touched.
    void init()
    {
        QVERIFY(m_data->ConQuery(QStringLiteral("Delete From TbSchedTest")));
        ScheduleStore::store(*m_data, schedule(), kPeriod, kForm,
                             {{"ASHA", "01/04/2024", "100", "1-100"}, {"BALU", "", "200", "101-200"}, {"CHITRA", "", "300", "201-300"}});
        ScheduleStore::store(*m_data, schedule(), kPeriod, kForm + 1, {{"OTHER", "", "9", "9"}});
    }

    void storeReplacesTheRows_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("ranges by their start, numbered from 1") << Rows{{"ASHA", "01/04/2024", "100", "1-100"}, {"CHITRA", "", "300", "201-300"}}
                                                              << QStringList{"1|ASHA|01/04/2024|100|1", "2|CHITRA||300|201"};
        QTest::newRow("Nil and empty numbers stored as 0, short rows padded")
            << Rows{{"Nil", "", "Nil", ""}, {"X"}} << QStringList{"1|Nil||0|0", "2|X||0|0"};
        QTest::newRow("empty grid leaves no rows") << Rows{} << QStringList{};
    }
    void storeReplacesTheRows()
    {
        QFETCH(Rows, rows);
        QFETCH(QStringList, expected);
        ScheduleStore::store(*m_data, schedule(), kPeriod, kForm, rows);
        QCOMPARE(stored(), expected);
        QCOMPARE(stored(kForm + 1), QStringList{"1|OTHER||9|9"});
    }

    // A row the server refuses: the three rows it was to replace stay as they were.
    void failedStoreKeepsTheRows()
    {
        const QStringList before = stored();
        QVERIFY_THROWS_EXCEPTION(TdsError, ScheduleStore::store(*m_data, schedule(), kPeriod, kForm,
                                                                Rows{{"FINE"}, {QString(40, u'X'), "", "2", "2"}}));
        QCOMPARE(stored(), before);
    }

    void failedLoadThrows()
    {
        QVERIFY_THROWS_EXCEPTION(TdsError, ScheduleStore::load(*m_data, schedule(QStringLiteral("TbNoSuchTable")), kPeriod, kForm));
    }
};

TDS_TEST(TestScheduleStore)
#include "TestScheduleStore.moc"
