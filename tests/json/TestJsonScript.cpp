#include "TestRegistry.h"

#include "json/Dialogs.h"
#include "json/JSON.h"
#include "json/cJSONScript.h"

#include <QTest>

namespace {

// Answers input boxes from a list and records every box shown.
class ScriptedDialogs : public Dialogs
{
public:
    QStringList answers;
    QStringList shown;

    void inform(const QString &message, const QString &title, Icon icon) override
    {
        shown << QStringLiteral("alert %1|%2|%3").arg(title, message).arg(int(icon));
    }
    bool askYesNo(const QString &message, const QString &, Icon) override
    {
        shown << QStringLiteral("ask %1").arg(message);
        return false;
    }
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        shown << QStringLiteral("input %1|%2|%3").arg(title, prompt, defaultText);
        return answers.isEmpty() ? defaultText : answers.takeFirst();
    }
};

QString nested(int depth, const QString &leaf)
{
    return QString(depth, QLatin1Char('[')) + leaf + QString(depth, QLatin1Char(']'));
}

} // namespace

class TestJsonScript : public QObject
{
    Q_OBJECT

private slots:
    void eval_data();
    void eval();
    void variablesKeptBetweenCalls();
    void execCommandOnNode();
    void runawayOutputStops();
};

void TestJsonScript::eval_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("shown");

    const QStringList none;
    const QString nesting = cJSONScript::nestingMessage();

    QTest::newRow("one text") << R"(["hello"])" << none << "hello" << none;
    QTest::newRow("scalars") << "[null, true, false, 2.50, -0]" << none << "nulltruefalse2.50" << none;
    QTest::newRow("top-level command object") << R"({"return":{"value":"v"}})" << none << "v" << none;
    QTest::newRow("command names ignore case") << R"([{"ReTuRn":{"value":"v"}}])" << none << "v" << none;
    QTest::newRow("only the first key is the command")
        << R"([{"return":{"value":"a"},"alert":{"message":"m"}}])" << none << "a" << none;
    QTest::newRow("empty command object") << "[{}, \"x\"]" << none << "x" << none;
    QTest::newRow("lists concatenate") << R"([["a",["b",1]],"c"])" << none << "ab1c" << none;

    QTest::newRow("unknown command, list of arguments")
        << R"([{"calc":[1,"x"]}])" << none << "<%CALC(1,x)%>" << none;
    QTest::newRow("unknown command, named arguments evaluated")
        << R"([{"Fmt":{"a":"p","b":{"return":{"value":"q"}},"c":true}}])" << none
        << "<%FMT(p,q,true)%>" << none;
    QTest::newRow("unknown command without arguments") << R"([{"now":{}}])" << none << "<%NOW()%>" << none;
    QTest::newRow("unknown command, one plain argument")
        << R"([{"pad":5}])" << none << "<%PAD(5)%>" << none;

    QTest::newRow("set, get, set again")
        << R"([{"set":{"name":"v","value":"one"}},{"get":{"name":"v"}},)"
           R"({"set":{"name":"v","value":"two"}},"-",{"get":{"name":"v"}}])"
        << none << "one-two" << none;
    QTest::newRow("get of an unknown variable") << R"(["<",{"get":{"name":"nope"}},">"])" << none << "<>" << none;
    QTest::newRow("set stores the evaluated value")
        << R"([{"set":{"name":"n","value":[1,{"return":{"value":"x"}}]}},{"get":{"name":"n"}}])"
        << none << "1x" << none;
    QTest::newRow("variable names are case-sensitive")
        << R"([{"set":{"name":"a","value":"1"}},{"get":{"name":"A"}},"|",{"get":{"name":"a"}}])"
        << none << "|1" << none;
    QTest::newRow("missing argument is empty") << R"([{"return":{}},"."])" << none << "." << none;

    QTest::newRow("alert yields nothing")
        << R"(["a",{"alert":{"message":"Hi","title":"T"}},"b"])" << none << "ab"
        << QStringList{"alert T|Hi|0"};
    QTest::newRow("alert arguments evaluated")
        << R"([{"set":{"name":"x","value":"42"}},{"alert":{"title":"Value","message":["x=",{"get":{"name":"x"}}]}}])"
        << none << "" << QStringList{"alert Value|x=42|0"};
    QTest::newRow("input answered")
        << R"([{"input":{"prompt":"PAN?","title":"Ask","default":"d"}}])" << QStringList{"ABCDE1234F"}
        << "ABCDE1234F" << QStringList{"input Ask|PAN?|d"};
    QTest::newRow("input default accepted")
        << R"([{"input":{"prompt":"p","title":"t","default":"dflt"}}])" << none << "dflt"
        << QStringList{"input t|p|dflt"};
    QTest::newRow("input into a variable")
        << R"([{"set":{"name":"y","value":{"input":{"prompt":"Year","title":"t","default":"2024"}}}},)"
           R"("AY ",{"get":{"name":"y"}}])"
        << QStringList{"2025"} << "AY 2025" << QStringList{"input t|Year|2024"};

    QTest::newRow("switch ignores case")
        << R"([{"switch":{"value":"B","case":{"a":"A!","b":"B!"},"default":"D"}}])" << none << "B!" << none;
    QTest::newRow("switch case keys ignore case")
        << R"([{"switch":{"value":"x","case":{"X":"big"},"default":"D"}}])" << none << "big" << none;
    QTest::newRow("switch default")
        << R"([{"switch":{"value":"z","case":{"a":"A!"},"default":{"return":{"value":"D"}}}}])"
        << none << "D" << none;
    QTest::newRow("switch without default") << R"([{"switch":{"value":"z","case":{"a":"A"}}},"."])" << none << "." << none;
    QTest::newRow("switch runs only the chosen case")
        << R"([{"switch":{"value":"1","case":{"1":"one","2":{"alert":{"message":"no"}}}}}])"
        << none << "one" << none;
    QTest::newRow("switch on a computed value")
        << R"([{"set":{"name":"k","value":"Two"}},{"switch":{"value":{"get":{"name":"k"}},"case":{"one":1,"two":2}}}])"
        << none << "2" << none;

    auto ifRow = [&](const char *name, const char *v1, const char *v2, const char *type,
                     const char *expected) {
        QTest::newRow(name) << QStringLiteral(R"([{"if":{"value1":%1,"value2":%2,"type":"%3","true":"T","false":"F"}}])")
                                   .arg(QLatin1String(v1), QLatin1String(v2), QLatin1String(type))
                            << QStringList() << QString::fromLatin1(expected) << QStringList();
    };
    ifRow("numbers compare as numbers", "\"10\"", "\"9\"", "gt", "T");
    ifRow("text compares as text", "\"10\"", "\"9a\"", "gt", "F");
    ifRow("equal numbers with other scales", "\"1.50\"", "1.5", "eq", "T");
    ifRow("equal text differing in case", "\"abc\"", "\"ABC\"", "eq", "F");
    ifRow("lt", "\"abc\"", "\"abd\"", "lt", "T");
    ifRow("gte when equal", "2", "\"2.0\"", "gte", "T");
    ifRow("lte when greater", "\"-1\"", "\"-2\"", "lte", "F");
    ifRow("type ignores case", "1", "2", "LT", "T");
    ifRow("unknown type is false", "1", "1", "ne", "F");
    ifRow("empty is not a number", "\"\"", "\"0\"", "lt", "T");
    QTest::newRow("if without the branch taken")
        << R"([{"if":{"value1":1,"value2":2,"type":"eq","true":"T"}},"."])" << none << "." << none;
    QTest::newRow("if runs only its branch")
        << R"([{"if":{"value1":1,"value2":1,"type":"eq","true":"T","false":{"alert":{"message":"no"}}}}])"
        << none << "T" << none;

    QTest::newRow("items") << R"([{"items":["a",{"return":{"value":"b"}},3]}])" << none << "ab3" << none;

    QTest::newRow("parser error") << "[1" << none << "Parser ErrorMissing ']': [1\r\n" << none;
    QTest::newRow("not a script") << R"("hi")" << none << "Parser ErrorInvalid JSON" << none;

    QTest::newRow("40 levels") << nested(40, "\"x\"") << none << "x" << none;
    QTest::newRow("41 levels") << nested(41, "\"x\"") << none << nesting << none;
    QTest::newRow("nesting message in place of the deeper output")
        << "[\"a\"," + nested(45, "\"x\"") + ",\"b\"]" << none << "a" + nesting + "b" << none;
    QString deepReturn = QStringLiteral("\"x\"");
    for (int i = 0; i < 45; ++i)
        deepReturn = QStringLiteral(R"({"return":{"value":%1}})").arg(deepReturn);
    QTest::newRow("nested commands count levels too") << "[" + deepReturn + "]" << none << nesting << none;
}

void TestJsonScript::eval()
{
    QFETCH(QString, script);
    QFETCH(QStringList, answers);
    QFETCH(QString, output);
    QFETCH(QStringList, shown);

    ScriptedDialogs dialogs;
    dialogs.answers = answers;
    cJSONScript interpreter(&dialogs);
    QCOMPARE(interpreter.Eval(script), output);
    QCOMPARE(dialogs.shown, shown);
}

void TestJsonScript::variablesKeptBetweenCalls()
{
    cJSONScript interpreter;
    QCOMPARE(interpreter.Eval(uR"([{"set":{"name":"who","value":"DEMO01"}}])"), QString());
    QCOMPARE(interpreter.variable(QStringLiteral("who")), QStringLiteral("DEMO01"));
    QCOMPARE(interpreter.Eval(uR"(["Hi ",{"get":{"name":"who"}}])"), QStringLiteral("Hi DEMO01"));
    // Without dialogs an input box accepts its default.
    QCOMPARE(interpreter.Eval(uR"([{"input":{"prompt":"p","title":"t","default":"d"}}])"),
             QStringLiteral("d"));

    cJSONScript other;
    QCOMPARE(other.Eval(uR"([{"get":{"name":"who"}}])"), QString());
}

void TestJsonScript::execCommandOnNode()
{
    cJSONScript interpreter;
    const JsonValue node = ParseJson(uR"({"if":{"value1":"3","value2":"20","type":"lt","true":"yes","false":"no"}})");
    QCOMPARE(interpreter.ExecCommand(node), QStringLiteral("yes"));
    QCOMPARE(interpreter.ExecCommand(JsonValue(Decimal::parse(u"1.250"))), QStringLiteral("1.25"));
    QCOMPARE(interpreter.ExecCommand(JsonValue()), QStringLiteral("null"));
}

void TestJsonScript::runawayOutputStops()
{
    // Each "set" doubles the variable: without a limit this would need 2^60 characters.
    QString script = QStringLiteral(R"([{"set":{"name":"x","value":"ab"}})");
    for (int i = 0; i < 60; ++i)
        script += QStringLiteral(R"(,{"set":{"name":"x","value":[{"get":{"name":"x"}},{"get":{"name":"x"}}]}})");
    script += QStringLiteral(R"(,{"get":{"name":"x"}}])");
    cJSONScript interpreter;
    QCOMPARE(interpreter.Eval(script), cJSONScript::outputLimitMessage());
    // The object is still usable afterwards.
    QCOMPARE(interpreter.Eval(uR"(["ok"])"), QStringLiteral("ok"));
}

TDS_TEST(TestJsonScript)
#include "TestJsonScript.moc"
