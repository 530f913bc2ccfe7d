// Any byte string: the parser must neither crash, leak, hang nor overflow the stack, and a
// value it read without complaint must read back the same from its compact JSON.
#include "json/JSON.h"
#include "json/JsonWriter.h"

#include <cstdint>
#include <cstdlib>

namespace {

// Keys are read without escapes, so only keys the writer leaves as they are read back.
bool readsBack(const JsonValue &value)
{
    auto plain = [](const QString &text, bool key) {
        for (QChar c : text) {
            if (c.isSurrogate())
                return false;
            if (key && (c == u'"' || c == u'\\' || c.unicode() < 0x20))
                return false;
        }
        return true;
    };
    if (value.isString())
        return plain(value.toString(), false);
    if (const JsonDictionary *d = value.dictionary()) {
        for (const auto &item : *d)
            if (!plain(item.first, true) || !readsBack(item.second))
                return false;
    }
    if (const JsonCollection *c = value.collection()) {
        for (const JsonValue &item : *c)
            if (!readsBack(item))
                return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    JsonParser parser;
    const JsonValue value = parser.parse(text);
    const QByteArray json = toCompactJson(value);

    if (parser.errors().isEmpty() && !value.isNull() && readsBack(value)) {
        JsonParser again;
        const JsonValue reread = again.parse(QString::fromUtf8(json));
        if (!again.errors().isEmpty() || toCompactJson(reread) != json)
            std::abort();
    }

    // The module-level entry points share the same parser.
    const JsonValue moduleValue = ParseJson(text);
    if (ParserErrors() != parser.errors() || toCompactJson(moduleValue) != json)
        std::abort();
    return 0;
}
