#include "TestRegistry.h"

#include "json/JsonRuntimeError.h"
#include "json/cStringBuilder.h"

#include <QTest>

class TestStringBuilder : public QObject
{
    Q_OBJECT

private slots:
    void growth();
    void operations_data();
    void operations();
};

// Grows a chunk of 8192 at a time; removing never shrinks, HeapMinimize keeps whole chunks.
void TestStringBuilder::growth()
{
    cStringBuilder sb;
    sb.Append(QString(8192, QLatin1Char('a')));
    sb.Append(QString(8193, QLatin1Char('b')));
    QCOMPARE(sb.Capacity(), 24576);
    sb.Remove(10, sb.Length() - 10);
    QCOMPARE(sb.Capacity(), 24576);
    sb.HeapMinimize();
    QCOMPARE(sb.Capacity(), 8192);
    sb.Append(u"yz");
    QCOMPARE(sb.toString(), QString(10, QLatin1Char('a')) + QLatin1String("yz"));
}

// Operations on "Hello hello". An edit's result is the content, empty for error 9 (with the
// content left as it was); a search's is the one-based position, 0 when not found.
void TestStringBuilder::operations_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("insert at start") << "insert" << 0 << 0 << "XY" << "XYHello hello";
    QTest::newRow("remove inside") << "remove" << 2 << 2 << "" << "Heo hello";
    QTest::newRow("insert past the length") << "insert" << 12 << 0 << "XY" << "";
    QTest::newRow("find ignoring case") << "find" << 1 << 0 << "hello" << "1";
    QTest::newRow("find with case") << "findCase" << 1 << 0 << "hello" << "7";
    QTest::newRow("blank padding is not content") << "findCase" << 7 << 0 << " " << "0";
}

void TestStringBuilder::operations()
{
    QFETCH(QString, operation);
    QFETCH(int, index);
    QFETCH(int, count);
    QFETCH(QString, text);
    QFETCH(QString, result);

    cStringBuilder sb;
    sb.Append(u"Hello hello");
    if (operation.startsWith("find")) {
        const auto cs = operation == "find" ? Qt::CaseInsensitive : Qt::CaseSensitive;
        QCOMPARE(QString::number(sb.Find(text, index, cs)), result);
        return;
    }
    try {
        if (operation == "insert")
            sb.Insert(index, text);
        else
            sb.Remove(index, count);
        QVERIFY2(!result.isEmpty(), "no error raised");
    } catch (const JsonRuntimeError &e) {
        QVERIFY(result.isEmpty());
        QCOMPARE(e.number(), 9);
        QCOMPARE(e.description(), QStringLiteral("Subscript out of range"));
        result = QStringLiteral("Hello hello");
        QCOMPARE(sb.Capacity(), 8192);
    }
    QCOMPARE(sb.toString(), result);
    QCOMPARE(sb.Length(), result.size());
}

TDS_TEST(TestStringBuilder)
#include "TestStringBuilder.moc"
