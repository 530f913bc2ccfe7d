#include "TestRegistry.h"

#include "host/Recordset.h"

#include <QTest>

namespace {
// FormSrNo, Name, Amount (a text column holding numbers), Remark (null in row 2)
Recordset sample()
{
    Recordset rs;
    Recordset::Rows rows;
    rows << QList<QVariant>{qlonglong(1), QStringLiteral("ANIL"), QStringLiteral("100"), QStringLiteral("first")};
    rows << QList<QVariant>{qlonglong(2), QStringLiteral("D'SOUZA"), QStringLiteral("2500.50"), QVariant(QMetaType::fromType<QString>())};
    rows << QList<QVariant>{qlonglong(5), QStringLiteral("anil"), QStringLiteral("007"), QStringLiteral("third")};
    rows << QList<QVariant>{qlonglong(10), QStringLiteral("ZED"), QStringLiteral("90"), QStringLiteral("fourth")};
    rs.open(QStringLiteral("Select ..."), {QStringLiteral("FormSrNo"), QStringLiteral("Name"), QStringLiteral("Amount"), QStringLiteral("Remark")}, rows);
    return rs;
}
} // namespace

class RecordsetTest : public QObject
{
    Q_OBJECT
private slots:
    void emptyIsBothEnds()
    {
        Recordset rs;
        rs.open(QStringLiteral("Select 1 From t Where 0"), {QStringLiteral("a")}, {});
        QVERIFY(rs.isOpen());
        QVERIFY(rs.isBOF());
        QVERIFY(rs.isEOF());
        QCOMPARE(rs.recordCount(), 0);
        rs.moveFirst();
        rs.moveNext();
        QVERIFY(rs.isEOF());
        QVERIFY(!rs.field(0).isValid());
        QVERIFY(!rs.find(QStringLiteral("a=1")));
    }

    void navigation()
    {
        Recordset rs = sample();
        QCOMPARE(rs.recordCount(), 4);
        QVERIFY(!rs.isBOF() && !rs.isEOF());
        QCOMPARE(rs.field(0).toInt(), 1);

        QList<int> seen;
        for (; !rs.isEOF(); rs.moveNext())
            seen << rs.field(QStringLiteral("FormSrNo")).toInt();
        QCOMPARE(seen, (QList<int>{1, 2, 5, 10}));
        rs.moveNext();   // past the end stays at the end
        QVERIFY(rs.isEOF());
        QVERIFY(!rs.field(0).isValid());

        rs.movePrevious();
        QCOMPARE(rs.field(0).toInt(), 10);
        rs.moveFirst();
        rs.movePrevious();
        QVERIFY(rs.isBOF());
        QVERIFY(!rs.isEOF());
        rs.moveNext();
        QCOMPARE(rs.field(0).toInt(), 1);
        rs.moveLast();
        QCOMPARE(rs.text(QStringLiteral("name")), QStringLiteral("ZED"));
        QCOMPARE(rs.absolutePosition(), 3);
    }

    void fieldsByNameAndNulls()
    {
        Recordset rs = sample();
        QCOMPARE(rs.fieldIndex(QStringLiteral("REMARK")), 3);
        QCOMPARE(rs.fieldIndex(QStringLiteral("missing")), -1);
        QCOMPARE(rs.fieldName(1), QStringLiteral("Name"));
        QVERIFY(!rs.field(QStringLiteral("missing")).isValid());
        QVERIFY(!rs.field(4).isValid());
        rs.moveNext();
        QVERIFY(rs.field(QStringLiteral("remark")).isNull());
        QVERIFY(rs.field(QStringLiteral("remark")).isValid());
        QCOMPARE(rs.text(QStringLiteral("remark")), QString());
    }

    void find_data()
    {
        QTest::addColumn<QString>("criteria");
        QTest::addColumn<int>("start");      // row to start from
        QTest::addColumn<int>("expected");   // FormSrNo found, 0 for none
        QTest::newRow("number") << "FormSrNo=5" << 0 << 5;
        QTest::newRow("blanks around the operator") << "FormSrNo = 10" << 0 << 10;
        QTest::newRow("quoted number against a number") << "FormSrNo='2'" << 0 << 2;
        QTest::newRow("absent number") << "FormSrNo=7" << 0 << 0;
        QTest::newRow("greater than, numerically") << "FormSrNo>2" << 0 << 5;
        QTest::newRow("not equal") << "FormSrNo<>1" << 0 << 2;
        QTest::newRow("less or equal from the current row") << "FormSrNo<=5" << 2 << 5;
        QTest::newRow("current row is included") << "FormSrNo=5" << 2 << 5;
        QTest::newRow("rows before the start are not searched") << "FormSrNo=1" << 1 << 0;
        QTest::newRow("text ignores case") << "Name='anil'" << 0 << 1;
        QTest::newRow("text ignores case, second hit") << "Name='ANIL'" << 1 << 5;
        QTest::newRow("doubled apostrophe") << "Name='D''SOUZA'" << 0 << 2;
        QTest::newRow("text column numbers compare numerically") << "Amount>1000" << 0 << 2;
        QTest::newRow("007 equals 7 as a number") << "Amount=7" << 0 << 5;
        QTest::newRow("quoted '7' is text: not 007") << "Amount='7'" << 0 << 0;
        QTest::newRow("numeric not textual order") << "Amount<95" << 0 << 5;
        QTest::newRow("like with star") << "Name LIKE 'Z*'" << 0 << 10;
        QTest::newRow("like with percent") << "Name like '%SOU%'" << 0 << 2;
        QTest::newRow("null") << "Remark=Null" << 0 << 2;
        QTest::newRow("not null") << "Remark<>Null" << 1 << 5;
        QTest::newRow("null never equals a text") << "Remark<>'first'" << 1 << 5;
        QTest::newRow("column in brackets") << "[Name]='ZED'" << 0 << 10;
        QTest::newRow("unknown column") << "Nope=1" << 0 << 0;
        QTest::newRow("no operator") << "FormSrNo 5" << 0 << 0;
    }
    void find()
    {
        QFETCH(QString, criteria);
        QFETCH(int, start);
        QFETCH(int, expected);
        Recordset rs = sample();
        for (int i = 0; i < start; ++i)
            rs.moveNext();
        const bool found = rs.find(criteria);
        QCOMPARE(found, expected != 0);
        if (found)
            QCOMPARE(rs.field(QStringLiteral("FormSrNo")).toInt(), expected);
        else
            QVERIFY(rs.isEOF());
    }

    void requeryRunsTheStatementAgain()
    {
        int calls = 0;
        Recordset rs;
        auto loader = [&calls](const QString &sql, QStringList &names, Recordset::Rows &rows) {
            if (sql != QLatin1String("Select n From t"))
                return false;
            ++calls;
            names = {QStringLiteral("n")};
            rows.clear();
            for (int i = 0; i < calls; ++i)
                rows << QList<QVariant>{qlonglong(i)};
            return true;
        };
        QStringList names;
        Recordset::Rows rows;
        loader(QStringLiteral("Select n From t"), names, rows);
        rs.open(QStringLiteral("Select n From t"), names, rows, loader);
        QCOMPARE(rs.recordCount(), 1);
        rs.moveNext();
        QVERIFY(rs.isEOF());
        QVERIFY(rs.requery());
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(rs.absolutePosition(), 0);   // back on the first row
    }

    void closedRecordset()
    {
        Recordset rs = sample();
        rs.close();
        QVERIFY(!rs.isOpen());
        QVERIFY(rs.isBOF() && rs.isEOF());
        QCOMPARE(rs.recordCount(), 0);
        QVERIFY(!rs.requery());   // no loader: nothing to run again
        QVERIFY(!rs.find(QStringLiteral("FormSrNo=1")));
    }
};

TDS_TEST(RecordsetTest)
#include "RecordsetTest.moc"
