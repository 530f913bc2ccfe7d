#include "TestRegistry.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

// Runs the two commands of tdsforms-cli and compares their output byte for byte.
class TestJsonCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void json_data();
    void json();
    void jsonFromStandardInput();
    void script_data();
    void script();
    void usageErrors();

private:
    struct Result
    {
        QByteArray out;
        QByteArray err;
        int exitCode = -1;
    };
    Result run(const QStringList &args, const QByteArray &input = QByteArray());
    QString writeFile(const QByteArray &content);

    QString m_cli;
    QTemporaryDir m_dir;
    int m_files = 0;
};

void TestJsonCli::initTestCase()
{
    m_cli = QStringLiteral(TDS_BIN_DIR "/tdsforms-cli");
    if (!QFile::exists(m_cli))
        QSKIP("tdsforms-cli is not built");
    QVERIFY(m_dir.isValid());
}

TestJsonCli::Result TestJsonCli::run(const QStringList &args, const QByteArray &input)
{
    QProcess process;
    // As in CI: no display and no runtime folder. Nothing of that may reach the output.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    env.remove(QStringLiteral("DISPLAY"));
    env.insert(QStringLiteral("TDSFORMS_HOME"), m_dir.filePath(QStringLiteral("home")));
    process.setProcessEnvironment(env);
    process.start(m_cli, args);
    if (!process.waitForStarted())
        return {};
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(30000))
        process.kill();
    return {process.readAllStandardOutput(), process.readAllStandardError(),
            process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1};
}

QString TestJsonCli::writeFile(const QByteArray &content)
{
    const QString name = m_dir.filePath(QStringLiteral("in%1.json").arg(++m_files));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return name;
}

void TestJsonCli::json_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    QTest::addColumn<int>("exitCode");

    QTest::newRow("clean") << QByteArray("// note\n{'b':[1.50, -0, true, null], a: \"x\"}")
                           << QByteArray("{\"b\":[1.5,0,true,null],\"a\":\"x\"}\n") << QByteArray() << 0;
    QTest::newRow("utf-8 both ways")
        << QByteArray("[\"caf\xc3\xa9 \\u20b9\\u0001\"]")
        << QByteArray("[\"caf\xc3\xa9 \xe2\x82\xb9\\u0001\"]\n") << QByteArray() << 0;
    QTest::newRow("duplicate key")
        << QByteArray("{\"a\":1,\"a\":2}") << QByteArray("{\"a\":1}\n")
        << QByteArray("This key is already associated with an element of this collection: a\r\n") << 1;
    QTest::newRow("no value") << QByteArray("42") << QByteArray() << QByteArray("Invalid JSON") << 1;
    QTest::newRow("two messages")
        << QByteArray("{\"a\":[1,tru") << QByteArray("{\"a\":[1,false]}\n")
        << QByteArray("Invalid Boolean at position 9 : tru\r\nType mismatch: tru\r\n") << 1;
}

void TestJsonCli::json()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QFETCH(int, exitCode);

    const QString file = writeFile(input);
    QVERIFY(!file.isEmpty());
    const Result r = run({QStringLiteral("json"), file});
    QCOMPARE(r.err, err);
    QCOMPARE(r.out, out);
    QCOMPARE(r.exitCode, exitCode);
}

void TestJsonCli::jsonFromStandardInput()
{
    const Result r = run({QStringLiteral("json"), QStringLiteral("-")}, QByteArray("[1,{\"k\":'v'}"));
    QCOMPARE(r.out, QByteArray("[1,{\"k\":\"v\"}]\n"));
    QCOMPARE(r.err, QByteArray("Missing ']': [1,{\"k\":'v'}\r\n"));
    QCOMPARE(r.exitCode, 1);
}

void TestJsonCli::script_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");

    QTest::newRow("answers in order, then defaults")
        << QByteArray(R"([{"input":{"prompt":"a","title":"t","default":"d1"}},"|",)"
                      R"({"input":{"prompt":"b","title":"t","default":"d2"}},"|",)"
                      R"({"input":{"prompt":"c","title":"t","default":"d3"}}])")
        << QStringList{"first", "second one"} << QByteArray("first|second one|d3\n") << QByteArray();
    QTest::newRow("alert on standard error")
        << QByteArray(R"([{"alert":{"message":"Saved \u20b9 5","title":"TDS"}},"done"])") << QStringList()
        << QByteArray("done\n") << QByteArray("TDS: Saved \xe2\x82\xb9 5\n");
    QTest::newRow("parser error is the result")
        << QByteArray("[1") << QStringList() << QByteArray("Parser ErrorMissing ']': [1\r\n\n") << QByteArray();
}

void TestJsonCli::script()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, answers);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);

    const QString file = writeFile(script);
    QVERIFY(!file.isEmpty());
    QStringList args{QStringLiteral("script"), file};
    for (const QString &a : answers)
        args << QStringLiteral("--answer") << a;
    const Result r = run(args);
    QCOMPARE(r.err, err);
    QCOMPARE(r.out, out);
    QCOMPARE(r.exitCode, 0);
}

void TestJsonCli::usageErrors()
{
    QCOMPARE(run({QStringLiteral("json")}).exitCode, 2);
    QCOMPARE(run({QStringLiteral("json"), m_dir.filePath(QStringLiteral("missing.json"))}).exitCode, 2);
    QCOMPARE(run({QStringLiteral("script"), QStringLiteral("--answer")}).exitCode, 2);
}

TDS_TEST(TestJsonCli)
#include "TestJsonCli.moc"
