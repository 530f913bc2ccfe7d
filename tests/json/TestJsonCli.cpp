#include "TestRegistry.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// Runs the two commands of tdsforms-cli and compares their output byte for byte.
class TestJsonCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void run_data();
    void run();

private:
    QString m_cli;
    QTemporaryDir m_dir;
};

void TestJsonCli::initTestCase()
{
    m_cli = QStringLiteral(TDS_BIN_DIR "/tdsforms-cli");
    if (!QFile::exists(m_cli))
        QSKIP("tdsforms-cli is not built");
    QVERIFY(m_dir.isValid());
}

// "FILE" in the arguments names a file holding the input, which standard input gets too.
void TestJsonCli::run_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");   // not compared for usage errors (exit status 2)
    QTest::addColumn<int>("exitCode");

    const QStringList json{"json", "FILE"};
    const QStringList script{"script", "FILE"};
    const QByteArray none;
    QTest::newRow("json") << json << QByteArray("// note\n{'b':[1.50, -0, true, null], a: \"x\"}")
                          << QByteArray("{\"b\":[1.5,0,true,null],\"a\":\"x\"}\n") << none << 0;
    QTest::newRow("json, utf-8 both ways") << json << QByteArray("[\"caf\xc3\xa9 \\u20b9\\u0001\"]")
                                           << QByteArray("[\"caf\xc3\xa9 \xe2\x82\xb9\\u0001\"]\n") << none << 0;
    QTest::newRow("json, duplicate key")
        << json << QByteArray("{\"a\":1,\"a\":2}") << QByteArray("{\"a\":1}\n")
        << QByteArray("This key is already associated with an element of this collection: a\r\n") << 1;
    QTest::newRow("json, no value") << json << QByteArray("42") << none << QByteArray("Invalid JSON") << 1;
    QTest::newRow("json, two messages")
        << json << QByteArray("{\"a\":[1,tru") << QByteArray("{\"a\":[1,false]}\n")
        << QByteArray("Invalid Boolean at position 9 : tru\r\nType mismatch: tru\r\n") << 1;
    QTest::newRow("json from standard input")
        << QStringList{"json", "-"} << QByteArray("[1,{\"k\":'v'}") << QByteArray("[1,{\"k\":\"v\"}]\n")
        << QByteArray("Missing ']': [1,{\"k\":'v'}\r\n") << 1;
    QTest::newRow("script, answers in order, then defaults")
        << script + QStringList{"--answer", "first", "--answer", "second one"}
        << QByteArray(R"([{"input":{"prompt":"a","title":"t","default":"d1"}},"|",)"
                      R"({"input":{"prompt":"b","title":"t","default":"d2"}},"|",)"
                      R"({"input":{"prompt":"c","title":"t","default":"d3"}}])")
        << QByteArray("first|second one|d3\n") << none << 0;
    QTest::newRow("script, alert on standard error")
        << script << QByteArray(R"([{"alert":{"message":"Saved \u20b9 5","title":"TDS"}},"done"])")
        << QByteArray("done\n") << QByteArray("TDS: Saved \xe2\x82\xb9 5\n") << 0;
    QTest::newRow("script, parser error on standard error")
        << script << QByteArray("[1") << none << QByteArray("Parser ErrorMissing ']': [1\r\n") << 1;
    QTest::newRow("script, nesting error on standard error")
        << script << QByteArray("[\"a\",") + QByteArray(45, '[') + "\"deep\"" + QByteArray(45, ']') + "]" << none
        << QByteArray("ERROR: Nesting level exceeded.\n") << 1;
    QTest::newRow("json, file missing") << QStringList{"json", "FILE.missing"} << none << none << none << 2;
    QTest::newRow("script, answer missing") << QStringList{"script", "--answer"} << none << none << none << 2;
}

void TestJsonCli::run()
{
    QFETCH(QStringList, args);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QFETCH(int, exitCode);

    const QString name = m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(input) == input.size());
    file.close();
    args.replaceInStrings(QRegularExpression("^FILE"), name);

    QProcess process;
    // As in CI: no display and no runtime folder. Nothing of that may reach the output.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    env.remove(QStringLiteral("DISPLAY"));
    env.insert(QStringLiteral("TDSFORMS_HOME"), m_dir.filePath(QStringLiteral("home")));
    process.setProcessEnvironment(env);
    process.start(m_cli, args);
    QVERIFY(process.waitForStarted());
    if (args.contains(QStringLiteral("-")))
        process.write(input);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    if (exitCode != 2)
        QCOMPARE(process.readAllStandardError(), err);
    QCOMPARE(process.readAllStandardOutput(), out);
    QCOMPARE(process.exitCode(), exitCode);
}

TDS_TEST(TestJsonCli)
#include "TestJsonCli.moc"
