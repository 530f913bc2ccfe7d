#include "cJSONScript.h"

#include "Decimal.h"
#include "Dialogs.h"
#include "JSON.h"
#include "cStringBuilder.h"

#include <optional>

namespace {

std::optional<Decimal> asNumber(const QString &text)
{
    Decimal::Status status = Decimal::Status::Ok;
    const Decimal d = Decimal::fromString(QStringView(text).trimmed(), &status);
    if (status != Decimal::Status::Ok)
        return std::nullopt;
    return d;
}

struct DepthGuard
{
    int &depth;
    explicit DepthGuard(int &d) : depth(d) { ++depth; }
    ~DepthGuard() { --depth; }
    DepthGuard(const DepthGuard &) = delete;
    DepthGuard &operator=(const DepthGuard &) = delete;
};

} // namespace

QString cJSONScript::nestingMessage()
{
    return QStringLiteral("ERROR: Nesting level exceeded.");
}

QString cJSONScript::outputLimitMessage()
{
    return QStringLiteral("ERROR: Output limit exceeded.");
}

QString cJSONScript::Eval(QStringView script)
{
    const JsonValue root = ParseJson(script);
    const QString errors = ParserErrors();
    if (!errors.isEmpty())
        return QStringLiteral("Parser Error") + errors;

    m_depth = 0;
    m_produced = 0;
    try {
        cStringBuilder out;
        if (const JsonCollection *list = root.collection()) {
            for (const JsonValue &element : *list) {
                if (element.isNull())
                    put(out, u"null");
                else if (element.isString())
                    put(out, element.toString());
                else
                    put(out, exec(element));
            }
        } else {
            put(out, exec(root));
        }
        return out.toString();
    } catch (const OutputLimit &) {
        return outputLimitMessage();
    }
}

QString cJSONScript::ExecCommand(const JsonValue &node)
{
    if (m_depth == 0)
        m_produced = 0;
    try {
        return exec(node);
    } catch (const OutputLimit &) {
        return outputLimitMessage();
    }
}

void cJSONScript::put(cStringBuilder &out, QStringView text)
{
    m_produced += text.size();
    if (m_produced > MaxOutput)
        throw OutputLimit{};
    out.Append(text);
}

QString cJSONScript::exec(const JsonValue &node)
{
    if (m_depth >= MaxNesting)
        return nestingMessage();
    DepthGuard guard(m_depth);

    switch (node.type()) {
    case JsonValue::Type::Null:
        return QStringLiteral("null");
    case JsonValue::Type::Bool:
        return node.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case JsonValue::Type::Number:
        return node.toDecimal().toString();
    case JsonValue::Type::String:
        return node.toString();
    case JsonValue::Type::Collection: {
        cStringBuilder out;
        for (const JsonValue &element : *node.collection())
            put(out, exec(element));
        return out.toString();
    }
    case JsonValue::Type::Dictionary: {
        const JsonDictionary *dict = node.dictionary();
        if (dict->isEmpty())
            return QString();
        // The first key names the command; its value carries the arguments.
        return command(dict->keyAt(0), dict->valueAt(0));
    }
    }
    return QString();
}

QString cJSONScript::argument(const JsonValue &args, QStringView name)
{
    const JsonDictionary *dict = args.dictionary();
    const JsonValue *value = dict ? dict->find(name) : nullptr;
    return value ? exec(*value) : QString();
}

QString cJSONScript::command(const QString &name, const JsonValue &args)
{
    const QString lower = name.toLower();
    if (lower == u"alert") {
        const QString message = argument(args, u"message");
        const QString title = argument(args, u"title");
        if (m_dialogs)
            m_dialogs->inform(message, title, Dialogs::Icon::Information);
        return QString();
    }
    if (lower == u"input") {
        const QString prompt = argument(args, u"prompt");
        const QString title = argument(args, u"title");
        const QString defaultText = argument(args, u"default");
        return m_dialogs ? m_dialogs->input(prompt, title, defaultText) : defaultText;
    }
    if (lower == u"switch")
        return switchCommand(args);
    if (lower == u"return")
        return argument(args, u"value");
    if (lower == u"set") {
        const QString variable = argument(args, u"name");
        m_variables.insert(variable, argument(args, u"value"));
        return QString();
    }
    if (lower == u"get")
        return m_variables.value(argument(args, u"name"));
    if (lower == u"if")
        return ifCommand(args);
    if (lower == u"items") {
        const JsonCollection *list = args.collection();
        if (!list)
            return exec(args);
        cStringBuilder out;
        for (const JsonValue &element : *list)
            put(out, exec(element));
        return out.toString();
    }
    return templateCall(name, args);
}

QString cJSONScript::switchCommand(const JsonValue &args)
{
    const JsonDictionary *dict = args.dictionary();
    if (!dict)
        return QString();
    // The tested value is "value"; a script may also name it otherwise, as long as it is
    // not "case" or "default".
    const JsonValue *tested = dict->find(u"value");
    for (qsizetype i = 0; !tested && i < dict->count(); ++i) {
        if (dict->keyAt(i) != u"case" && dict->keyAt(i) != u"default")
            tested = &dict->valueAt(i);
    }
    const QString value = tested ? exec(*tested).toLower() : QString();
    if (const JsonValue *cases = dict->find(u"case")) {
        if (const JsonDictionary *caseDict = cases->dictionary()) {
            for (const auto &[key, node] : *caseDict) {
                if (key.toLower() == value)
                    return exec(node);
            }
        }
    }
    const JsonValue *fallback = dict->find(u"default");
    return fallback ? exec(*fallback) : QString();
}

QString cJSONScript::ifCommand(const JsonValue &args)
{
    const QString value1 = argument(args, u"value1");
    const QString value2 = argument(args, u"value2");
    const QString type = argument(args, u"type").toLower();

    int order;
    const std::optional<Decimal> n1 = asNumber(value1);
    const std::optional<Decimal> n2 = n1 ? asNumber(value2) : std::nullopt;
    if (n1 && n2)
        order = n1->compare(*n2);
    else
        order = QString::compare(value1, value2, Qt::CaseSensitive);

    bool holds = false;
    if (type == u"eq")
        holds = order == 0;
    else if (type == u"gt")
        holds = order > 0;
    else if (type == u"lt")
        holds = order < 0;
    else if (type == u"gte")
        holds = order >= 0;
    else if (type == u"lte")
        holds = order <= 0;

    const JsonDictionary *dict = args.dictionary();
    const JsonValue *branch = dict ? dict->find(holds ? u"true" : u"false") : nullptr;
    return branch ? exec(*branch) : QString();
}

QString cJSONScript::templateCall(const QString &name, const JsonValue &args)
{
    cStringBuilder out;
    put(out, u"<%");
    put(out, name.toUpper());
    put(out, u"(");
    bool first = true;
    auto addArgument = [&](const JsonValue &value) {
        if (!first)
            put(out, u",");
        first = false;
        put(out, exec(value));
    };
    if (const JsonDictionary *dict = args.dictionary()) {
        for (const JsonDictionary::Item &item : *dict)
            addArgument(item.second);
    } else if (const JsonCollection *list = args.collection()) {
        for (const JsonValue &value : *list)
            addArgument(value);
    } else {
        addArgument(args);
    }
    put(out, u")%>");
    return out.toString();
}
