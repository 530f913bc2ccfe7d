#include "JsonCommands.h"

#include "json/Dialogs.h"
#include "json/JSON.h"
#include "json/JsonWriter.h"
#include "json/cJSONScript.h"

#include <QFile>

#include <cstdio>
#include <optional>

namespace {

void writeOut(FILE *stream, const QByteArray &bytes)
{
    if (!bytes.isEmpty())
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

std::optional<QString> readText(const QString &name)
{
    QFile file;
    const bool opened = name == QLatin1String("-")
        ? file.open(stdin, QIODevice::ReadOnly)
        : (file.setFileName(name), file.open(QIODevice::ReadOnly));
    if (!opened) {
        writeOut(stderr, QStringLiteral("cannot read %1: %2\n").arg(name, file.errorString()).toUtf8());
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    return QString::fromUtf8(bytes);
}

// Message boxes become lines on standard error; input boxes take the answers in order.
class CliDialogs : public Dialogs
{
public:
    explicit CliDialogs(QStringList answers) : m_answers(std::move(answers)) {}

    void inform(const QString &message, const QString &title, Icon) override
    {
        writeOut(stderr, (title + QLatin1String(": ") + message + QLatin1Char('\n')).toUtf8());
        std::fflush(stderr);
    }

    bool askYesNo(const QString &, const QString &, Icon) override
    {
        // Scripts never ask; a headless run must not say yes to anything by itself.
        return false;
    }

    QString input(const QString &, const QString &, const QString &defaultText) override
    {
        return m_answers.isEmpty() ? defaultText : m_answers.takeFirst();
    }

private:
    QStringList m_answers;
};

} // namespace

int cmdJson(const QStringList &args)
{
    if (args.size() != 1) {
        writeOut(stderr, "usage: tdsforms-cli json FILE|-\n");
        return 2;
    }
    const std::optional<QString> text = readText(args.first());
    if (!text)
        return 2;
    JsonParser parser;
    const JsonValue value = parser.parse(*text);
    if (!value.isNull()) {
        QByteArray out = toCompactJson(value);
        out.append('\n');
        writeOut(stdout, out);
    }
    std::fflush(stdout);
    writeOut(stderr, parser.errors().toUtf8());
    return parser.errors().isEmpty() ? 0 : 1;
}

int cmdScript(const QStringList &args)
{
    QString fileName;
    QStringList answers;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--answer") && i + 1 < args.size()) {
            answers.append(args[++i]);
        } else if (fileName.isEmpty() && !args[i].startsWith(QLatin1String("--"))) {
            fileName = args[i];
        } else {
            fileName.clear();
            break;
        }
    }
    if (fileName.isEmpty()) {
        writeOut(stderr, "usage: tdsforms-cli script FILE [--answer TEXT]...\n");
        return 2;
    }
    const std::optional<QString> text = readText(fileName);
    if (!text)
        return 2;
    CliDialogs dialogs(answers);
    cJSONScript script(&dialogs);
    const QString result = script.Eval(*text);
    // Eval answers its failures as its result; here they belong on standard error, and the
    // caller must not take them for output.
    QString failure;
    if (!ParserErrors().isEmpty() || result == cJSONScript::outputLimitMessage())
        failure = result;
    else if (result.contains(cJSONScript::nestingMessage()))
        failure = cJSONScript::nestingMessage();
    if (!failure.isEmpty()) {
        if (!failure.endsWith(QLatin1Char('\n')))
            failure += QLatin1Char('\n');
        writeOut(stderr, failure.toUtf8());
        return 1;
    }
    QByteArray out = result.toUtf8();
    out.append('\n');
    writeOut(stdout, out);
    std::fflush(stdout);
    return 0;
}
