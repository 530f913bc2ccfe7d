#include "TestRegistry.h"

#include "json/JsonRuntimeError.h"
#include "json/cStringBuilder.h"

#include <QTest>

class TestStringBuilder : public QObject
{
    Q_OBJECT

private slots:
    void growth_data();
    void growth();
    void operations_data();
    void operations();
    void replaceAndClear();
};

// Appends, then a Remove down to `keep` characters, then HeapMinimize.
void TestStringBuilder::growth_data()
{
    QTest::addColumn<int>("chunk");
    QTest::addColumn<QList<int>>("appends");
    QTest::addColumn<int>("keep");
    QTest::addColumn<int>("capacity");
    QTest::addColumn<int>("minimized");

    QTest::newRow("empty append allocates nothing") << 8192 << QList<int>{0} << 0 << 0 << 0;
    QTest::newRow("one past a chunk") << 8192 << QList<int>{8192, 1} << 8193 << 16384 << 16384;
    QTest::newRow("big append, whole chunks") << 8192 << QList<int>{20000} << 20000 << 24576 << 24576;
    QTest::newRow("small chunk") << 100 << QList<int>{60, 60, 60, 60} << 240 << 300 << 300;
    QTest::newRow("minimize 10 of 24576") << 8192 << QList<int>{24576} << 10 << 24576 << 8192;
    QTest::newRow("minimize 9000 of 32768") << 8192 << QList<int>{32768} << 9000 << 32768 << 16384;
    QTest::newRow("a chunk and one free") << 8192 << QList<int>{16384} << 8191 << 16384 << 8192;
}

void TestStringBuilder::growth()
{
    QFETCH(int, chunk);
    QFETCH(QList<int>, appends);
    QFETCH(int, keep);
    QFETCH(int, capacity);
    QFETCH(int, minimized);

    cStringBuilder sb;
    sb.setChunkSize(chunk);
    QString expected;
    char letter = 'a';
    for (int n : appends) {
        const QString piece(n, QLatin1Char(letter++));
        sb.Append(piece);
        expected += piece;
    }
    QCOMPARE(sb.toString(), expected);
    QCOMPARE(sb.Capacity(), capacity);
    sb.Remove(keep, sb.Length() - keep);
    QCOMPARE(sb.Capacity(), capacity);   // removing never shrinks
    sb.HeapMinimize();
    QCOMPARE(sb.Capacity(), minimized);
    sb.Append(u"yz");
    QCOMPARE(sb.toString(), expected.left(keep) + QLatin1String("yz"));
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
    QTest::newRow("insert by value") << "insertByVal" << 5 << 0 << "XY" << "HelloXY hello";
    QTest::newRow("append by value") << "appendByVal" << 0 << 0 << "XY" << "Hello helloXY";
    QTest::newRow("remove inside") << "remove" << 2 << 2 << "" << "Heo hello";
    QTest::newRow("insert past the length") << "insert" << 12 << 0 << "XY" << "";
    QTest::newRow("remove reaching past the end") << "remove" << 10 << 2 << "" << "";
    QTest::newRow("remove negative index") << "remove" << -1 << 1 << "" << "";
    QTest::newRow("find ignoring case") << "find" << 1 << 0 << "hello" << "1";
    QTest::newRow("find with case") << "findCase" << 1 << 0 << "hello" << "7";
    QTest::newRow("start below 1 searches all") << "find" << -5 << 0 << "lo" << "4";
    QTest::newRow("start past the content") << "findCase" << 12 << 0 << "o" << "0";
    QTest::newRow("blank padding is not content") << "findCase" << 7 << 0 << " " << "0";
    QTest::newRow("hit running into the padding") << "findCase" << 5 << 0 << "lo " << "0";
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
        else if (operation == "insertByVal")
            sb.InsertByVal(index, text);
        else if (operation == "remove")
            sb.Remove(index, count);
        else
            sb.AppendByVal(text);
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

void TestStringBuilder::replaceAndClear()
{
    cStringBuilder sb;
    sb.Append(QString(9000, QLatin1Char('x')));
    sb.setTheString(u"ab");   // a shorter text keeps the capacity
    QCOMPARE(sb.toString(), QStringLiteral("ab"));
    QCOMPARE(sb.Capacity(), 16384);
    sb.Insert(1, sb.view());   // inserting its own content
    sb.AppendNL(u"");
    QCOMPARE(sb.toString(), QStringLiteral("aabb\r\n"));
    sb.setTheString(QString());
    QCOMPARE(sb.Capacity(), 0);
    QVERIFY_THROWS_EXCEPTION(JsonRuntimeError, sb.setChunkSize(0));
    QCOMPARE(sb.ChunkSize(), 8192);
}

TDS_TEST(TestStringBuilder)
#include "TestStringBuilder.moc"
