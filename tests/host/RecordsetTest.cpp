#include "TestRegistry.h"

#include "host/Recordset.h"

#include <QTest>

namespace {
// FormSrNo, Name, Amount (a text column holding numbers), Remark (null in row 2)
Recordset sample()
{
    const QVariant null(QMetaType::fromType<QString>());
    Recordset rs;
    rs.open(QStringLiteral("Select ..."),
            {QStringLiteral("FormSrNo"), QStringLiteral("Name"), QStringLiteral("Amount"), QStringLiteral("Remark")},
            {{qlonglong(1), QStringLiteral("ANIL"), QStringLiteral("100"), QStringLiteral("first")},
             {qlonglong(2), QStringLiteral("D'SOUZA"), QStringLiteral("2500.50"), null},
             {qlonglong(5), QStringLiteral("anil"), QStringLiteral("007"), QStringLiteral("third")},
             {qlonglong(10), QStringLiteral("ZED"), QStringLiteral("90"), QStringLiteral("fourth")}});
    return rs;
}
} // namespace

class RecordsetTest : public QObject
{
    Q_OBJECT
private slots:
    void emptyOrClosedIsBothEnds()
    {
        Recordset rs;
        rs.open(QStringLiteral("Select 1 From t Where 0"), {QStringLiteral("a")}, {});
        QVERIFY(rs.isOpen() && rs.isBOF() && rs.isEOF());
        rs.moveNext();
        QVERIFY(rs.isEOF());
        QVERIFY(!rs.field(0).isValid());
        QVERIFY(!rs.find(QStringLiteral("a=1")));

        rs = sample();
        rs.close();
        QVERIFY(!rs.isOpen() && rs.isBOF() && rs.isEOF());
        QCOMPARE(rs.recordCount(), 0);
        QVERIFY(!rs.requery());   // no loader: nothing to run again
    }

    void navigationAndFields()
    {
        Recordset rs = sample();
        QCOMPARE(rs.recordCount(), 4);
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
        QVERIFY(rs.isBOF() && !rs.isEOF());
        rs.moveNext();
        QCOMPARE(rs.field(0).toInt(), 1);
        rs.moveNext();
        QVERIFY(rs.field(QStringLiteral("REMARK")).isNull());
        QCOMPARE(rs.text(QStringLiteral("remark")), QString());
        rs.moveLast();
        QCOMPARE(rs.text(QStringLiteral("name")), QStringLiteral("ZED"));
        QCOMPARE(rs.absolutePosition(), 3);
    }

    void find_data()
    {
        QTest::addColumn<QString>("criteria");
        QTest::addColumn<int>("start");      // row to start from
        QTest::addColumn<int>("expected");   // FormSrNo found, 0 for none
        QTest::newRow("number") << "FormSrNo=5" << 0 << 5;
        QTest::newRow("quoted number against a number") << "FormSrNo='2'" << 0 << 2;
        QTest::newRow("current row is included") << "FormSrNo<=5" << 2 << 5;
        QTest::newRow("rows before the start are not searched") << "FormSrNo=1" << 1 << 0;
        QTest::newRow("text ignores case") << "Name='ANIL'" << 1 << 5;
        QTest::newRow("doubled apostrophe") << "Name='D''SOUZA'" << 0 << 2;
        QTest::newRow("007 equals 7 as a number") << "Amount=7" << 0 << 5;
        QTest::newRow("quoted '7' is text: not 007") << "Amount='7'" << 0 << 0;
        QTest::newRow("numeric not textual order") << "Amount<95" << 0 << 5;
        QTest::newRow("like with star") << "Name LIKE 'Z*'" << 0 << 10;
        QTest::newRow("null") << "Remark=Null" << 0 << 2;
        QTest::newRow("null never equals a text") << "Remark<>'first'" << 1 << 5;
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
        QCOMPARE(rs.find(criteria), expected != 0);
        QCOMPARE(rs.isEOF() ? 0 : rs.field(QStringLiteral("FormSrNo")).toInt(), expected);
    }
};

TDS_TEST(RecordsetTest)
#include "RecordsetTest.moc"
