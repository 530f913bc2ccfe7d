#include "TestRegistry.h"

#include "json/JSON.h"
#include "json/JsonRuntimeError.h"
#include "json/JsonWriter.h"

#include <QTest>

namespace {

QString crlf(const QString &s)
{
    QString out = s;
    return out.replace(QLatin1String("|"), QLatin1String("\r\n"));
}

} // namespace

class TestJsonParser : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
    void moduleErrorText();
    void nestingIsBounded();
    void deepButAllowedNesting();
    void largeObjectDuplicate();
    void valueTypes();
    void writerEscapes_data();
    void writerEscapes();
};

// Each row: the text, the value written back as compact JSON (empty when the parse gave
// no value) and the error text, where "|" stands for CR LF.
void TestJsonParser::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("json");
    QTest::addColumn<QString>("errors");

    // comments and blanks
    QTest::newRow("line comment, single-quoted key") << "// c\n{'a':1}" << R"({"a":1})" << "";
    QTest::newRow("block comment with stars inside")
        << R"(/* a * b **/ {/* x */"a" /*y*/ : /* z */ 1})" << R"({"a":1})" << "";
    QTest::newRow("line comment ends at CR") << "[1, // one\r2]" << "[1,2]" << "";
    QTest::newRow("unclosed block comment") << "[1 /* 2, 3]" << "[1]" << R"(Missing ']': [1 /* 2, 3]|)";
    QTest::newRow("lone slash and star are blanks") << "[1 / * 2]" << "[1,2]" << "";
    QTest::newRow("round brackets around the top") << R"(({"a":1}))" << R"({"a":1})" << "";
    QTest::newRow("round brackets around a value") << R"({"a":(2)})" << R"({"a":2})" << "";
    QTest::newRow("only a comment") << "// nothing" << "" << "Invalid JSON";
    QTest::newRow("empty") << "" << "" << "Invalid JSON";
    QTest::newRow("bare number") << "42" << "" << "Invalid JSON";
    QTest::newRow("bare string") << R"("x")" << "" << "Invalid JSON";
    QTest::newRow("text after the top value is ignored") << R"({"a":1} xyz)" << R"({"a":1})" << "";

    // separators
    QTest::newRow("two commas in a row") << R"({"a":1,,"b":2})" << R"({"a":1,"b":2})" << "";
    QTest::newRow("leading and trailing commas") << "[,1,2,]" << "[1,2]" << "";
    QTest::newRow("missing comma") << R"({"a":1 "b":[1 2]})" << R"({"a":1,"b":[1,2]})" << "";
    QTest::newRow("empty containers") << R"({"a":{},"b":[]})" << R"({"a":{},"b":[]})" << "";

    // keys
    QTest::newRow("unquoted key, blanks dropped") << "{a b\t:1}" << R"({"ab":1})" << "";
    QTest::newRow("colon inside a quoted key") << R"({"a:b":1})" << R"({"a:b":1})" << "";
    QTest::newRow("other quote inside a key") << R"({"it's":1,'say "x"':2})"
                                             << R"({"it's":1,"say \"x\"":2})" << "";
    QTest::newRow("blank before the colon") << R"({"a"  :1})" << R"({"a":1})" << "";
    QTest::newRow("no colon after the key") << R"({"a" 1})" << R"({"a":1})"
                                           << "Invalid Key at position 6 : 1}|";
    QTest::newRow("key running out of text") << R"({"ab)" << "{}" << "Type mismatch: ab|";

    // duplicate keys
    QTest::newRow("duplicate key keeps the first")
        << R"({"a":1,"a":2,"b":3})" << R"({"a":1})"
        << "This key is already associated with an element of this collection: a|";
    QTest::newRow("keys are case-sensitive") << R"({"a":1,"A":2})" << R"({"a":1,"A":2})" << "";
    QTest::newRow("duplicate in a nested object")
        << R"([{"k":1,"k":2},3])" << R"([{"k":1}])"
        << "This key is already associated with an element of this collection: k|"
           "Type mismatch: },3]|";

    // missing brackets
    QTest::newRow("missing brace") << R"({"a":1)" << R"({"a":1})" << R"(Missing '}': {"a":1|)";
    QTest::newRow("missing bracket, last 20 characters")
        << R"(["abcdefghijklmnopqrstuvwxyz",12345)" << R"(["abcdefghijklmnopqrstuvwxyz",12345])"
        << R"(Missing ']': nopqrstuvwxyz",12345|)";
    QTest::newRow("both missing")
        << R"({"a":[1,2)" << R"({"a":[1,2]})" << R"(Missing ']': {"a":[1,2|Missing '}': {"a":[1,2|)";
    QTest::newRow("unterminated string")
        << R"({"a":"abc)" << R"({"a":"abc"})" << R"(Missing '}': {"a":"abc|)";

    // strings and escapes
    QTest::newRow("all escapes") << R"(["\"\\\/\'\b\f\n\r\t"])" << R"(["\"\\/'\b\f\n\r\t"])" << "";
    QTest::newRow("u escape") << R"(["caf\u00e9", "\u00C9"])" << "[\"caf\u00e9\",\"\u00c9\"]" << "";
    QTest::newRow("surrogate pair") << R"(["\ud83d\ude00"])" << "[\"\U0001F600\"]" << "";
    QTest::newRow("u escape eats four characters")
        << R"(["\u41"])" << R"(["A"])" << R"(Missing ']': ["\u41"]|)";
    QTest::newRow("u escape stops at a non-digit") << R"(["\u4x00z"])" << R"(["\u0004z"])" << "";
    QTest::newRow("unknown escape dropped") << R"(["a\qb"])" << R"(["ab"])" << "";
    QTest::newRow("single-quoted string") << R"(['say "hi"'])" << R"(["say \"hi\""])" << "";
    QTest::newRow("other quote needs no escape") << R"(["it's"])" << R"(["it's"])" << "";
    QTest::newRow("raw control characters kept") << "[\"a\tb\"]" << R"(["a\tb"])" << "";

    // literals
    QTest::newRow("literals") << "[true,false,null]" << "[true,false,null]" << "";
    QTest::newRow("invalid boolean in an array")
        << "[1, tru]" << "[1,false]" << "Invalid Boolean at position 5 : tru]|";
    QTest::newRow("invalid boolean in an object")
        << R"({"a":fals})" << R"({"a":false})"
        << "Invalid Boolean at position 6 : fals}|Type mismatch: fals}|";
    QTest::newRow("invalid null")
        << R"({"a":nul,"b":2})" << R"({"a":null,"nul,b":2})"
        << R"(Invalid null value at position 6 : nul,"b":2}|)";
    QTest::newRow("literals are case-sensitive")
        << "[True]" << "[]" << "Type mismatch: True]|";

    // numbers
    QTest::newRow("decimals")
        << "[1.50, -0, 1e3, 0.1, -2.5E-1, .5, +7, 79228162514264337593543950335]"
        << "[1.5,0,1000,0.1,-0.25,0.5,7,79228162514264337593543950335]" << "";
    QTest::newRow("more than 28 places rounded")
        << "[0.12345678901234567890123456789]" << "[0.1234567890123456789012345679]" << "";
    QTest::newRow("number that does not convert, object")
        << R"({"x":0,"a":1-2,"b":3})" << R"({"x":0})" << "Type mismatch: a|";
    QTest::newRow("number that does not convert, array")
        << "[1,1-2,3]" << "[1]" << "Type mismatch: ,3]|";
    QTest::newRow("number too large") << "[1e29]" << "[]" << "Overflow: ]|";
    QTest::newRow("value missing after comma") << "[1,:]" << "[1]" << "Type mismatch: :]|";

    // nesting
    QTest::newRow("nested")
        << R"({"a":[1,{"b":[[],{"c":null}]}],"d":{"e":{"f":"g"}}})"
        << R"({"a":[1,{"b":[[],{"c":null}]}],"d":{"e":{"f":"g"}}})" << "";
}

void TestJsonParser::parse()
{
    QFETCH(QString, text);
    QFETCH(QString, json);
    QFETCH(QString, errors);

    JsonParser parser;
    const JsonValue value = parser.parse(text);
    QCOMPARE(parser.errors(), crlf(errors));
    if (json.isEmpty())
        QVERIFY(value.isNull());
    else
        QCOMPARE(QString::fromUtf8(toCompactJson(value)), json);
}

void TestJsonParser::moduleErrorText()
{
    ParseJson(u"{\"a\":1");
    QCOMPARE(ParserErrors(), QStringLiteral("Missing '}': {\"a\":1\r\n"));
    // Each parse starts with an empty error text.
    const JsonValue v = ParseJson(u"[1]");
    QCOMPARE(ParserErrors(), QString());
    QCOMPARE(v.collection()->count(), 1);
}

void TestJsonParser::nestingIsBounded()
{
    for (const QString &open : {QStringLiteral("["), QStringLiteral("{\"k\":")}) {
        const QString text = open.repeated(200000);
        JsonParser parser;
        const JsonValue value = parser.parse(text);
        const qsizetype position = open.size() * JsonParser::MaxDepth + 1;
        QCOMPARE(parser.errors(),
                 QStringLiteral("Nesting too deep at position %1\r\n").arg(position));
        QVERIFY(!value.isNull());
    }
}

void TestJsonParser::deepButAllowedNesting()
{
    const int depth = JsonParser::MaxDepth;
    const QString text = QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
    JsonParser parser;
    const JsonValue value = parser.parse(text);
    QCOMPARE(parser.errors(), QString());
    QCOMPARE(QString::fromUtf8(toCompactJson(value)), text);
}

void TestJsonParser::largeObjectDuplicate()
{
    // Enough keys that duplicates are found through the index, not a scan.
    QString text = QStringLiteral("{");
    for (int i = 0; i < 40; ++i)
        text += QStringLiteral("\"k%1\":%1,").arg(i);
    text += QStringLiteral("\"k7\":0,\"z\":1}");
    JsonParser parser;
    const JsonValue value = parser.parse(text);
    QCOMPARE(parser.errors(),
             QStringLiteral("This key is already associated with an element of this collection: k7\r\n"));
    const JsonDictionary *dict = value.dictionary();
    QVERIFY(dict);
    QCOMPARE(dict->count(), 40);
    QCOMPARE(dict->item(u"k7").toDecimal().toString(), QStringLiteral("7"));
    QCOMPARE(dict->item(u"k39").toDecimal().toString(), QStringLiteral("39"));
    QVERIFY(!dict->contains(u"z"));
}

void TestJsonParser::valueTypes()
{
    const JsonValue v = ParseJson(uR"({"s":'t', "n":2.50, "b":true, "z":null, "l":["x",1]})");
    const JsonDictionary *d = v.dictionary();
    QVERIFY(d);
    QCOMPARE(d->keys(), (QStringList{"s", "n", "b", "z", "l"}));
    QCOMPARE(d->item(u"s").toString(), QStringLiteral("t"));
    QVERIFY(d->item(u"n").isNumber());
    QCOMPARE(d->item(u"n").toDecimal().scale(), 2);
    QVERIFY(d->item(u"b").toBool());
    QVERIFY(d->find(u"z") && d->find(u"z")->isNull());
    QVERIFY(!d->find(u"missing"));
    const JsonCollection *l = d->item(u"l").collection();
    QVERIFY(l);
    // Collections count from 1.
    QCOMPARE(l->item(1).toString(), QStringLiteral("x"));
    QCOMPARE(l->item(2).toDecimal().toString(), QStringLiteral("1"));
    QVERIFY_THROWS_EXCEPTION(JsonRuntimeError, l->item(0));
    QVERIFY_THROWS_EXCEPTION(JsonRuntimeError, l->item(3));
}

void TestJsonParser::writerEscapes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("utf8");

    QTest::newRow("control characters in lower-case hex")
        << QStringLiteral("a\x01\x1f\x7f") << QByteArray("\"a\\u0001\\u001f\x7f\"");
    QTest::newRow("named escapes") << QStringLiteral("\"\\\b\f\n\r\t/")
                                   << QByteArray(R"("\"\\\b\f\n\r\t/")");
    QTest::newRow("two and three bytes") << QStringLiteral("\u00e9\u20b9")
                                         << QByteArray("\"\xc3\xa9\xe2\x82\xb9\"");
    QTest::newRow("four bytes") << QString::fromUcs4(U"\U0001F600")
                                << QByteArray("\"\xf0\x9f\x98\x80\"");
    QTest::newRow("nul") << QString(QChar(0)) << QByteArray("\"\\u0000\"");
}

void TestJsonParser::writerEscapes()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, utf8);
    QCOMPARE(toCompactJson(JsonValue(text)), utf8);
}

TDS_TEST(TestJsonParser)
#include "TestJsonParser.moc"
