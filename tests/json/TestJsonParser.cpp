#include "TestRegistry.h"

#include "json/JSON.h"
#include "json/JsonRuntimeError.h"
#include "json/JsonWriter.h"

#include <QTest>

class TestJsonParser : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
    void moduleFunctions();
};

// Each row: the text, the value written back as compact JSON (empty when the parse gave
// no value) and the error text, where "|" stands for CR LF.
void TestJsonParser::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("json");
    QTest::addColumn<QString>("errors");

    QTest::newRow("comments; lone slash and star are blanks")
        << "// c\n/* a * b **/ {/* x */'a' /*y*/ : /* z */ [1, // one\r2 / * 3]}" << R"({"a":[1,2,3]})" << "";

    QTest::newRow("no colon after the key")
        << R"({"a" 1})" << R"({"a":1})" << "Invalid Key at position 6 : 1}|";

    QTest::newRow("missing bracket, last 20 characters")
        << R"(["abcdefghijklmnopqrstuvwxyz",12345)" << R"(["abcdefghijklmnopqrstuvwxyz",12345])"
        << R"(Missing ']': nopqrstuvwxyz",12345|)";

    QTest::newRow("escapes, unknown one dropped, single quotes")
        << R"(["\"\\\/\'\b\f\n\r\t\q", 'say "hi"'])" << R"(["\"\\/'\b\f\n\r\t","say \"hi\""])" << "";
    QTest::newRow("u escapes; control characters written in lower-case hex")
        << R"(["caf\u00e9\u00C9\ud83d\ude00\u0000\u001F\u007F\u4x00z"])"
        << "[\"caf\u00e9\u00c9\U0001F600\\u0000\\u001f\x7f\\u0004z\"]" << "";


    QTest::newRow("literals and decimals")
        << "[true,false,null,1.50, -0, 1e3, 0.1, -2.5E-1, .5, +7, 79228162514264337593543950335]"
        << "[true,false,null,1.5,0,1000,0.1,-0.25,0.5,7,79228162514264337593543950335]" << "";
    QTest::newRow("number too large") << "[1e29]" << "[]" << "Overflow: ]|";

    const int depth = JsonParser::MaxDepth;
    // Parsing stops at the limit; only the outermost container is left.
    QTest::newRow("too deep, arrays")
        << QString(200000, '[') << "[]" << QStringLiteral("Nesting too deep at position %1|").arg(depth + 1);
}

void TestJsonParser::parse()
{
    QFETCH(QString, text);
    QFETCH(QString, json);
    QFETCH(QString, errors);

    JsonParser parser;
    const JsonValue value = parser.parse(text);
    QCOMPARE(parser.errors(), errors.replace(QLatin1String("|"), QLatin1String("\r\n")));
    if (json.isEmpty())
        QVERIFY(value.isNull());
    else
        QCOMPARE(QString::fromUtf8(toCompactJson(value)), json);
}

void TestJsonParser::moduleFunctions()
{
    ParseJson(u"{\"a\":1");
    QCOMPARE(ParserErrors(), QStringLiteral("Missing '}': {\"a\":1\r\n"));
    const JsonValue v = ParseJson(uR"([{"s":'t', "n":2.50, "b":true, "z":null}, "x"])");
    QCOMPARE(ParserErrors(), QString());   // each parse starts afresh
    const JsonCollection *l = v.collection();
    QVERIFY(l);
    QCOMPARE(l->item(2).toString(), QStringLiteral("x"));   // counted from 1
    QVERIFY_THROWS_EXCEPTION(JsonRuntimeError, l->item(0));
    QCOMPARE(l->item(1).dictionary()->item(u"n").toDecimal().scale(), 2);   // the written scale kept
}

TDS_TEST(TestJsonParser)
#include "TestJsonParser.moc"
