// Schedule rows stored and read back through the real database: renumbering, number
// columns, quoting, and a failed save that keeps the rows it was to replace.
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

    static ScheduleSpec spec(const QString &table = QStringLiteral("TbSchedTest"))
    {
        using A = ScheduleColumn::Align;
        using K = ScheduleColumn::Kind;
        return ScheduleSpec{
            .title = QStringLiteral("SCHEDULE I"),
            .table = table,
            .columns = {
                {.heading = QStringLiteral("Name"), .align = A::Left, .kind = K::Text},
                {.heading = QStringLiteral("Date of payment"), .align = A::Centre, .kind = K::Date},
                {.heading = QStringLiteral("Amount"), .align = A::Right, .kind = K::Number, .format = QStringLiteral("###0.00")},
                {.heading = QStringLiteral("Range"), .align = A::Right, .kind = K::Number},
                {.heading = QStringLiteral("Remarks"), .align = A::Left, .kind = K::Text},
            },
        };
    }

    // Srno, then every data column as the server prints it, for the test's own key.
    QStringList stored(int formSrId = kForm)
    {
        return TestDatabase::rows(*m_data, QStringLiteral("Select Srno, Name, PaidOn, Amount, RangeFrom, Remarks From "
                                                          "TbSchedTest Where Period_Code=%1 and FormSrId=%2 Order By Srno")
                                               .arg(kPeriod).arg(formSrId));
    }

    static Rows threeRows()
    {
        return {{"ASHA", "01/04/2024", "100", "1-100", "ONE"},
                {"BALU", "02/04/2024", "200", "101-200", "TWO"},
                {"CHITRA", "03/04/2024", "300", "201-300", "THREE"}};
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        m_data = TestDatabase::dataObject();
        QVERIFY(m_data);
        QVERIFY(m_data->ConQuery(QStringLiteral(
            "CREATE TABLE TbSchedTest (Period_Code int NOT NULL, FormSrId int NOT NULL, Srno int NOT NULL, "
            "Name varchar(12), PaidOn varchar(10), Amount decimal(14,2), RangeFrom int, Remarks varchar(30), "
            "PRIMARY KEY (Period_Code, FormSrId, Srno)) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4")));
    }

    void cleanupTestCase() { TestDatabase::tearDown(); }

    // Every case replaces three stored rows; a neighbouring form's row is never touched.
    void init()
    {
        QVERIFY(m_data->ConQuery(QStringLiteral("Delete From TbSchedTest")));
        ScheduleStore::store(*m_data, spec(), kPeriod, kForm, threeRows());
        ScheduleStore::store(*m_data, spec(), kPeriod, kForm + 1, {{"OTHER", "", "9", "9", ""}});
    }

    void storeReplacesTheRows_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QStringList>("expected");
        Rows withoutMiddle = threeRows();
        withoutMiddle.removeAt(1);
        QTest::newRow("middle row removed, numbered again")
            << withoutMiddle << QStringList{"1|ASHA|01/04/2024|100|1|ONE", "2|CHITRA|03/04/2024|300|201|THREE"};
        QTest::newRow("Nil and empty numbers stored as 0")
            << Rows{{"NIL", "", "Nil", "", "Nil"}, {"X", "", "", "Nil", ""}}
            << QStringList{"1|NIL||0|0|Nil", "2|X||0|0|"};
        QTest::newRow("apostrophe and backslash kept")
            << Rows{{"D'SOUZA", "", "1", "1", "O'BRIEN \\ SONS'"}} << QStringList{"1|D'SOUZA||1|1|O'BRIEN \\ SONS'"};
        QTest::newRow("short row padded") << Rows{{"A"}} << QStringList{"1|A||0|0|"};
        QTest::newRow("empty grid leaves no rows") << Rows{} << QStringList{};
    }
    void storeReplacesTheRows()
    {
        QFETCH(Rows, rows);
        QFETCH(QStringList, expected);
        ScheduleStore::store(*m_data, spec(), kPeriod, kForm, rows);
        QCOMPARE(stored(), expected);
        QCOMPARE(stored(kForm + 1), QStringList{"1|OTHER||9|9|"});
    }

    void loadShowsStoredRows()
    {
        QCOMPARE(ScheduleStore::load(*m_data, spec(), kPeriod, kForm),
                 (Rows{{"ASHA", "01/04/2024", "100.00", "1", "ONE"},
                       {"BALU", "02/04/2024", "200.00", "101", "TWO"},
                       {"CHITRA", "03/04/2024", "300.00", "201", "THREE"}}));
        QCOMPARE(ScheduleStore::load(*m_data, spec(), kPeriod, 99), Rows{});
    }

    void failedStoreKeepsTheRows_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<Rows>("rows");
        QTest::newRow("last row too long")
            << "TbSchedTest" << Rows{{"FINE", "", "1", "1", ""}, {"FINE", "", "2", "2", "A REMARK THAT IS FAR TOO LONG TO FIT"}};
        QTest::newRow("table missing") << "TbNoSuchTable" << Rows{{"A", "", "1", "1", ""}};
    }
    void failedStoreKeepsTheRows()
    {
        QFETCH(QString, table);
        QFETCH(Rows, rows);
        const QStringList before = stored();
        QCOMPARE(before.size(), 3);
        bool thrown = false;
        try {
            ScheduleStore::store(*m_data, spec(table), kPeriod, kForm, rows);
        } catch (const TdsError &e) {
            thrown = true;
            QVERIFY(!e.description().isEmpty());
        }
        QVERIFY(thrown);
        QCOMPARE(stored(), before);
    }

    void failedLoadThrows()
    {
        try {
            ScheduleStore::load(*m_data, spec(QStringLiteral("TbNoSuchTable")), kPeriod, kForm);
            QFAIL("an unreadable schedule must not load as empty");
        } catch (const TdsError &e) {
            QVERIFY2(e.description().contains(QLatin1String("TbNoSuchTable"), Qt::CaseInsensitive),
                     qPrintable(e.description()));
        }
    }
};

TDS_TEST(TestScheduleStore)
#include "TestScheduleStore.moc"
