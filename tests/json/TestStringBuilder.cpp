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
    void heapMinimize_data();
    void heapMinimize();
    void edit_data();
    void edit();
    void outOfRange_data();
    void outOfRange();
    void find_data();
    void find();
    void theString();
    void removeAllKeepsCapacity();
    void insertOwnContent();
    void appendNLAndClear();
};

void TestStringBuilder::growth_data()
{
    QTest::addColumn<int>("chunk");
    QTest::addColumn<QList<int>>("appends");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("capacity");

    QTest::newRow("new builder") << 8192 << QList<int>{} << 0 << 0;
    QTest::newRow("empty append changes nothing") << 8192 << QList<int>{0} << 0 << 0;
    QTest::newRow("ten characters") << 8192 << QList<int>{10} << 10 << 8192;
    QTest::newRow("exactly one chunk") << 8192 << QList<int>{8192} << 8192 << 8192;
    QTest::newRow("one past a chunk") << 8192 << QList<int>{8192, 1} << 8193 << 16384;
    QTest::newRow("two appends crossing") << 8192 << QList<int>{5000, 5000} << 10000 << 16384;
    QTest::newRow("one big append, whole chunks") << 8192 << QList<int>{20000} << 20000 << 24576;
    QTest::newRow("small chunk") << 100 << QList<int>{250} << 250 << 300;
    QTest::newRow("small chunk, many appends") << 100 << QList<int>{60, 60, 60, 60} << 240 << 300;
}

void TestStringBuilder::growth()
{
    QFETCH(int, chunk);
    QFETCH(QList<int>, appends);
    QFETCH(int, length);
    QFETCH(int, capacity);

    cStringBuilder sb;
    QCOMPARE(sb.ChunkSize(), 8192);
    sb.setChunkSize(chunk);
    QString expected;
    char letter = 'a';
    for (int n : appends) {
        const QString piece(n, QLatin1Char(letter++));
        sb.Append(piece);
        expected += piece;
    }
    QCOMPARE(sb.Length(), length);
    QCOMPARE(sb.Capacity(), capacity);
    QCOMPARE(sb.toString(), expected);
}

void TestStringBuilder::heapMinimize_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("capacity");   // reached by appending first
    QTest::addColumn<int>("minimized");

    QTest::newRow("10 of 24576") << 10 << 24576 << 8192;
    QTest::newRow("one chunk free or less stays") << 10 << 8192 << 8192;
    QTest::newRow("empty of 16384") << 0 << 16384 << 8192;
    QTest::newRow("9000 of 32768") << 9000 << 32768 << 16384;
    QTest::newRow("exactly one chunk free") << 8192 << 16384 << 16384;
    QTest::newRow("one more than a chunk free") << 8191 << 16384 << 8192;
}

void TestStringBuilder::heapMinimize()
{
    QFETCH(int, length);
    QFETCH(int, capacity);
    QFETCH(int, minimized);

    cStringBuilder sb;
    sb.Append(QString(capacity, QLatin1Char('x')));
    QCOMPARE(sb.Capacity(), capacity);
    sb.Remove(length, capacity - length);
    QCOMPARE(sb.Capacity(), capacity);
    sb.HeapMinimize();
    QCOMPARE(sb.Capacity(), minimized);
    QCOMPARE(sb.Length(), length);
    QCOMPARE(sb.toString(), QString(length, QLatin1Char('x')));
    // Still usable after shrinking.
    sb.Append(u"yz");
    QCOMPARE(sb.toString(), QString(length, QLatin1Char('x')) + QLatin1String("yz"));
}

void TestStringBuilder::edit_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("result");

    QTest::newRow("insert at start") << "insert" << 0 << "X" << 0 << "Xabcdef";
    QTest::newRow("insert at end") << "insert" << 6 << "X" << 0 << "abcdefX";
    QTest::newRow("insert inside") << "insert" << 3 << "XY" << 0 << "abcXYdef";
    QTest::newRow("insert empty") << "insert" << 2 << "" << 0 << "abcdef";
    QTest::newRow("insert by value") << "insertByVal" << 1 << "--" << 0 << "a--bcdef";
    QTest::newRow("remove inside") << "remove" << 2 << "" << 2 << "abef";
    QTest::newRow("remove tail") << "remove" << 4 << "" << 2 << "abcd";
    QTest::newRow("remove nothing at end") << "remove" << 6 << "" << 0 << "abcdef";
    QTest::newRow("append by value") << "appendByVal" << 0 << "gh" << 0 << "abcdefgh";
}

void TestStringBuilder::edit()
{
    QFETCH(QString, operation);
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(QString, result);

    cStringBuilder sb;
    sb.Append(u"abcdef");
    if (operation == "insert")
        sb.Insert(index, text);
    else if (operation == "insertByVal")
        sb.InsertByVal(index, text);
    else if (operation == "remove")
        sb.Remove(index, count);
    else
        sb.AppendByVal(text);
    QCOMPARE(sb.toString(), result);
    QCOMPARE(sb.Length(), result.size());
}

void TestStringBuilder::outOfRange_data()
{
    QTest::addColumn<bool>("insert");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");

    QTest::newRow("insert past the length") << true << 7 << 0;
    QTest::newRow("insert before the start") << true << -1 << 0;
    QTest::newRow("remove index past the length") << false << 7 << 0;
    QTest::newRow("remove reaching past the end") << false << 5 << 2;
    QTest::newRow("remove more than all") << false << 0 << 7;
    QTest::newRow("remove negative index") << false << -1 << 1;
    QTest::newRow("remove negative count") << false << 2 << -1;
}

void TestStringBuilder::outOfRange()
{
    QFETCH(bool, insert);
    QFETCH(int, index);
    QFETCH(int, count);

    cStringBuilder sb;
    sb.Append(u"abcdef");
    try {
        if (insert)
            sb.Insert(index, u"XYZ");
        else
            sb.Remove(index, count);
        QFAIL("no error raised");
    } catch (const JsonRuntimeError &e) {
        QCOMPARE(e.number(), 9);
        QCOMPARE(e.description(), QStringLiteral("Subscript out of range"));
    }
    QCOMPARE(sb.toString(), QStringLiteral("abcdef"));
    QCOMPARE(sb.Length(), 6);
    QCOMPARE(sb.Capacity(), 8192);
}

void TestStringBuilder::find_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("needle");
    QTest::addColumn<int>("start");
    QTest::addColumn<bool>("caseSensitive");
    QTest::addColumn<int>("position");

    QTest::newRow("first, ignoring case") << "Hello hello" << "hello" << 1 << false << 1;
    QTest::newRow("first, exact case") << "Hello hello" << "hello" << 1 << true << 7;
    QTest::newRow("start skips the first") << "Hello hello" << "hello" << 2 << false << 7;
    QTest::newRow("start 0 searches all") << "Hello hello" << "HELLO" << 0 << false << 1;
    QTest::newRow("negative start searches all") << "Hello hello" << "lo" << -5 << false << 4;
    QTest::newRow("last character") << "Hello hello" << "o" << 11 << true << 11;
    QTest::newRow("start past the content") << "Hello hello" << "o" << 12 << true << 0;
    QTest::newRow("not there") << "Hello hello" << "xyz" << 1 << false << 0;
    QTest::newRow("blank padding is not content") << "ab" << " " << 1 << true << 0;
    QTest::newRow("hit running into the padding") << "ab" << "b " << 1 << true << 0;
}

void TestStringBuilder::find()
{
    QFETCH(QString, content);
    QFETCH(QString, needle);
    QFETCH(int, start);
    QFETCH(bool, caseSensitive);
    QFETCH(int, position);

    cStringBuilder sb;
    sb.Append(content);
    QCOMPARE(sb.Find(needle, start, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive),
             position);
}

void TestStringBuilder::theString()
{
    cStringBuilder sb;
    sb.setTheString(u"abc");
    QCOMPARE(sb.toString(), QStringLiteral("abc"));
    QCOMPARE(sb.Capacity(), 8192);

    sb.Append(QString(9000, QLatin1Char('x')));
    QCOMPARE(sb.Capacity(), 16384);
    // A shorter text replaces all of the content; the capacity it already has suffices.
    sb.setTheString(u"short");
    QCOMPARE(sb.toString(), QStringLiteral("short"));
    QCOMPARE(sb.Length(), 5);
    QCOMPARE(sb.Capacity(), 16384);
    QCOMPARE(sb.Find(u"x"), 0);

    sb.setTheString(QString(20000, QLatin1Char('y')));
    QCOMPARE(sb.Capacity(), 24576);

    sb.setTheString(QString());
    QCOMPARE(sb.Length(), 0);
    QCOMPARE(sb.Capacity(), 0);
    QCOMPARE(sb.toString(), QString());
}

void TestStringBuilder::removeAllKeepsCapacity()
{
    cStringBuilder sb;
    sb.Append(QString(10000, QLatin1Char('x')));
    sb.Remove(0, sb.Length());
    QCOMPARE(sb.toString(), QString());
    QCOMPARE(sb.Length(), 0);
    QCOMPARE(sb.Capacity(), 16384);
}

void TestStringBuilder::insertOwnContent()
{
    cStringBuilder sb;
    sb.Append(u"ab");
    sb.Insert(1, sb.view());
    QCOMPARE(sb.toString(), QStringLiteral("aabb"));
}

void TestStringBuilder::appendNLAndClear()
{
    cStringBuilder sb;
    sb.AppendNL(u"line");
    sb.AppendNL(u"");
    QCOMPARE(sb.toString(), QStringLiteral("line\r\n\r\n"));
    sb.Clear();
    QCOMPARE(sb.Length(), 0);
    QCOMPARE(sb.Capacity(), 0);
    try {
        sb.setChunkSize(0);
        QFAIL("a zero chunk was accepted");
    } catch (const JsonRuntimeError &e) {
        QCOMPARE(e.number(), 5);
    }
    QCOMPARE(sb.ChunkSize(), 8192);
}

TDS_TEST(TestStringBuilder)
#include "TestStringBuilder.moc"
