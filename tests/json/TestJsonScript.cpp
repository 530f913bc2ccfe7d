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
    bool askYesNo(const QString &, const QString &, Icon) override { return false; }
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        shown << QStringLiteral("input %1|%2|%3").arg(title, prompt, defaultText);
        return answers.isEmpty() ? defaultText : answers.takeFirst();
    }
};

} // namespace

class TestJsonScript : public QObject
{
    Q_OBJECT

private slots:
    void eval_data();
    void eval();
    void variablesKeptBetweenCalls();
};

void TestJsonScript::eval_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("shown");

    const QStringList none;
    const QString nesting = cJSONScript::nestingMessage();

    QTest::newRow("lists and scalars concatenate")
        << R"([["a",["b",1]],"|",null,true,false,2.50,"|",-0])" << none << "ab1|nulltruefalse2.5|0" << none;
    QTest::newRow("set evaluates, get is case-sensitive")
        << R"([{"set":{"name":"v","value":"one"}},{"get":{"name":"v"}},"-",{"get":{"name":"V"}},)"
           R"({"set":{"name":"v","value":[1,{"return":{"value":"x"}}]}},"-",{"get":{"name":"v"}}])"
        << none << "one--1x" << none;

    QTest::newRow("alert yields nothing, arguments evaluated")
        << R"(["a",{"set":{"name":"x","value":"42"}},)"
           R"({"alert":{"title":"Value","message":["x=",{"get":{"name":"x"}}]}},"b"])"
        << none << "ab" << QStringList{"alert Value|x=42|0"};

    QTest::newRow("switch on a computed value, ignoring case")
        << R"([{"set":{"name":"k","value":"Two"}},{"switch":{"value":{"get":{"name":"k"}},"case":{"one":1,"two":2}}}])"
        << none << "2" << none;

    QTest::newRow("if: numbers compare as numbers")
        << R"([{"if":{"value1":"10","value2":"9","type":"gt","true":"T","false":"F"}}])" << none << "T" << none;

    const QString forty = QString(40, '[') + "\"x\"" + QString(40, ']');
    QTest::newRow("41 levels: the message in place of the deeper output")
        << "[\"a\"," + forty + ",\"b\"]" << none << "a" + nesting + "b" << none;
    // Each "set" doubles the variable: without a limit this would need 2^60 characters.
    QString doubling = QStringLiteral(R"([{"set":{"name":"x","value":"ab"}})");
    for (int i = 0; i < 60; ++i)
        doubling += QStringLiteral(R"(,{"set":{"name":"x","value":[{"get":{"name":"x"}},{"get":{"name":"x"}}]}})");
    QTest::newRow("runaway output stops") << doubling + "]" << none << cJSONScript::outputLimitMessage() << none;
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
    QCOMPARE(interpreter.Eval(uR"(["ok"])"), QStringLiteral("ok"));   // usable after any script
}

void TestJsonScript::variablesKeptBetweenCalls()
{
    cJSONScript interpreter;   // without dialogs an input box accepts its default
    QCOMPARE(interpreter.Eval(uR"([{"set":{"name":"who","value":{"input":{"default":"DEMO01"}}}}])"), QString());
    QCOMPARE(interpreter.Eval(uR"(["Hi ",{"get":{"name":"who"}}])"), QStringLiteral("Hi DEMO01"));
    QCOMPARE(cJSONScript().Eval(uR"([{"get":{"name":"who"}}])"), QString());
}

TDS_TEST(TestJsonScript)
#include "TestJsonScript.moc"
