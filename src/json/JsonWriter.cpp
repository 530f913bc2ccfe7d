#include "JsonWriter.h"

namespace {

void writeText(QByteArray &out, QStringView text)
{
    static const char Hex[] = "0123456789abcdef";
    out.append('"');
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c < 0x80) {
            switch (c) {
            case u'"': out.append("\\\"", 2); break;
            case u'\\': out.append("\\\\", 2); break;
            case 8: out.append("\\b", 2); break;
            case 12: out.append("\\f", 2); break;
            case 10: out.append("\\n", 2); break;
            case 13: out.append("\\r", 2); break;
            case 9: out.append("\\t", 2); break;
            default:
                if (c < 0x20) {
                    const char esc[] = {'\\', 'u', '0', '0', Hex[c >> 4], Hex[c & 15]};
                    out.append(esc, 6);
                } else {
                    out.append(char(c));
                }
            }
            continue;
        }
        char32_t cp = c;
        if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(text[i + 1].unicode())) {
            cp = QChar::surrogateToUcs4(c, text[i + 1].unicode());
            ++i;
        } else if (QChar::isSurrogate(c)) {
            cp = 0xFFFD;  // a lone half of a pair has no UTF-8 form
        }
        if (cp < 0x800) {
            out.append(char(0xC0 | (cp >> 6)));
            out.append(char(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.append(char(0xE0 | (cp >> 12)));
            out.append(char(0x80 | ((cp >> 6) & 0x3F)));
            out.append(char(0x80 | (cp & 0x3F)));
        } else {
            out.append(char(0xF0 | (cp >> 18)));
            out.append(char(0x80 | ((cp >> 12) & 0x3F)));
            out.append(char(0x80 | ((cp >> 6) & 0x3F)));
            out.append(char(0x80 | (cp & 0x3F)));
        }
    }
    out.append('"');
}

void writeValue(QByteArray &out, const JsonValue &value)
{
    switch (value.type()) {
    case JsonValue::Type::Null:
        out.append("null", 4);
        break;
    case JsonValue::Type::Bool:
        out.append(value.toBool() ? "true" : "false");
        break;
    case JsonValue::Type::Number:
        out.append(value.toDecimal().toString().toLatin1());
        break;
    case JsonValue::Type::String:
        writeText(out, value.toString());
        break;
    case JsonValue::Type::Dictionary: {
        out.append('{');
        bool first = true;
        for (const auto &[key, item] : *value.dictionary()) {
            if (!first)
                out.append(',');
            first = false;
            writeText(out, key);
            out.append(':');
            writeValue(out, item);
        }
        out.append('}');
        break;
    }
    case JsonValue::Type::Collection: {
        out.append('[');
        bool first = true;
        for (const JsonValue &item : *value.collection()) {
            if (!first)
                out.append(',');
            first = false;
            writeValue(out, item);
        }
        out.append(']');
        break;
    }
    }
}

} // namespace

QByteArray toCompactJson(const JsonValue &value)
{
    QByteArray out;
    writeValue(out, value);
    return out;
}
