#include "JSON.h"

#include "JsonRuntimeError.h"

#include <QSet>

namespace {

const QStringView CrLf(u"\r\n");

thread_local QString t_errors;

bool isNumberChar(char16_t c)
{
    return (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.' || c == u'e'
        || c == u'E';
}

// The four hexadecimal digits of \u, read as a hexadecimal number would be: blanks are
// passed over and reading stops at the first other character.
char16_t hexCode(QStringView digits)
{
    quint32 value = 0;
    for (QChar c : digits) {
        const char16_t u = c.unicode();
        if (u == u' ' || u == u'\t' || u == u'\n')
            continue;
        int v;
        if (u >= u'0' && u <= u'9')
            v = u - u'0';
        else if (u >= u'a' && u <= u'f')
            v = u - u'a' + 10;
        else if (u >= u'A' && u <= u'F')
            v = u - u'A' + 10;
        else
            break;
        value = value * 16 + quint32(v);
    }
    return char16_t(value & 0xFFFF);
}

} // namespace

JsonValue JsonParser::parse(QStringView text)
{
    m_text = text.data();
    m_size = text.size();
    m_pos = 0;
    m_depth = 0;
    m_aborted = false;
    m_failure.clear();
    m_errors.clear();

    skipBlanks();
    if (!atEnd() && current() == u'{')
        return parseObject();
    if (!atEnd() && current() == u'[')
        return parseArray();
    m_errors = QStringLiteral("Invalid JSON");
    return JsonValue();
}

QStringView JsonParser::rest() const
{
    if (atEnd())
        return {};
    return QStringView(m_text + m_pos, m_size - m_pos);
}

QStringView JsonParser::lastChars(qsizetype n) const
{
    const qsizetype take = qMin(n, m_size);
    return QStringView(m_text + m_size - take, take);
}

void JsonParser::appendError(QStringView a, QStringView b, QStringView c, QStringView d)
{
    m_errors.append(a).append(b).append(c).append(d).append(CrLf);
    if (m_errors.size() > MaxErrorText)
        m_aborted = true;
}

void JsonParser::appendPositionError(QStringView what)
{
    appendError(what, QString::number(m_pos + 1), u" : ", rest());
}

bool JsonParser::enter()
{
    if (m_depth >= MaxDepth) {
        appendError(u"Nesting too deep at position ", QString::number(m_pos + 1));
        m_aborted = true;
        return false;
    }
    ++m_depth;
    return true;
}

void JsonParser::skipBlanks()
{
    while (m_pos < m_size) {
        const char16_t c = m_text[m_pos].unicode();
        switch (c) {
        case u'\r':
        case u'\n':
        case u'\t':
        case u' ':
        case u'(':
        case u')':
        case u'*':  // a lone star: part of a comment opener that never came
            ++m_pos;
            continue;
        case u'/':
            if (m_pos + 1 < m_size && m_text[m_pos + 1] == u'/') {
                m_pos += 2;
                while (m_pos < m_size && m_text[m_pos] != u'\r' && m_text[m_pos] != u'\n')
                    ++m_pos;
            } else if (m_pos + 1 < m_size && m_text[m_pos + 1] == u'*') {
                const qsizetype close =
                    QStringView(m_text, m_size).indexOf(QStringView(u"*/"), m_pos + 2);
                m_pos = close < 0 ? m_size : close + 2;
            } else {
                ++m_pos;
            }
            continue;
        default:
            return;
        }
    }
}

JsonValue JsonParser::parseValue()
{
    skipBlanks();
    if (atEnd())
        return parseNumber();
    switch (current().unicode()) {
    case u'{':
        return parseObject();
    case u'[':
        return parseArray();
    case u'"':
    case u'\'':
        return JsonValue(parseString());
    case u't':
    case u'f':
        return parseBoolean();
    case u'n':
        return parseNull();
    default:
        return parseNumber();
    }
}

JsonValue JsonParser::parseObject()
{
    auto dict = std::make_shared<JsonDictionary>();
    skipBlanks();
    if (atEnd() || current() != u'{') {
        appendPositionError(u"Invalid Object at position ");
        return JsonValue(std::move(dict));
    }
    if (!enter())
        return JsonValue(std::move(dict));
    ++m_pos;
    const size_t base = m_members.size();
    QSet<QString> seen;  // only for large objects; a scan is faster below that
    constexpr size_t ScanLimit = 16;
    while (!m_aborted) {
        skipBlanks();
        if (!atEnd() && current() == u'}') {
            ++m_pos;
            break;
        }
        if (!atEnd() && current() == u',') {
            ++m_pos;
            skipBlanks();
            continue;
        }
        if (atEnd()) {
            appendError(u"Missing '}': ", lastChars(20));
            break;
        }
        QString key = parseKey();
        JsonValue value = parseValue();
        if (m_aborted)
            break;
        if (!m_failure.isEmpty()) {
            appendError(m_failure, u": ", key);
            m_failure.clear();
            break;
        }
        const size_t count = m_members.size() - base;
        bool duplicate = false;
        if (count < ScanLimit) {
            for (size_t i = base; i < m_members.size() && !duplicate; ++i)
                duplicate = m_members[i].first == key;
        } else {
            if (seen.isEmpty()) {
                for (size_t i = base; i < m_members.size(); ++i)
                    seen.insert(m_members[i].first);
            }
            duplicate = seen.contains(key);
            if (!duplicate)
                seen.insert(key);
        }
        if (duplicate) {
            appendError(JsonDictionary::duplicateKeyDescription(), u": ", key);
            break;
        }
        m_members.emplace_back(std::move(key), std::move(value));
    }
    dict->adopt(m_members.data() + base, m_members.data() + m_members.size());
    m_members.resize(base);
    --m_depth;
    return JsonValue(std::move(dict));
}

JsonValue JsonParser::parseArray()
{
    auto list = std::make_shared<JsonCollection>();
    skipBlanks();
    if (atEnd() || current() != u'[') {
        appendPositionError(u"Invalid Array at position ");
        return JsonValue(std::move(list));
    }
    if (!enter())
        return JsonValue(std::move(list));
    ++m_pos;
    const size_t base = m_values.size();
    while (!m_aborted) {
        skipBlanks();
        if (!atEnd() && current() == u']') {
            ++m_pos;
            break;
        }
        if (!atEnd() && current() == u',') {
            ++m_pos;
            skipBlanks();
            continue;
        }
        if (atEnd()) {
            appendError(u"Missing ']': ", lastChars(20));
            break;
        }
        const qsizetype before = m_pos;
        JsonValue value = parseValue();
        if (m_aborted)
            break;
        if (!m_failure.isEmpty()) {
            appendError(m_failure, u": ", rest().left(20));
            m_failure.clear();
            break;
        }
        m_values.push_back(std::move(value));
        // An invalid literal leaves the position where it was; reading it again would
        // never end.
        if (m_pos == before)
            break;
    }
    list->m_items.assign(std::make_move_iterator(m_values.begin() + qsizetype(base)),
                         std::make_move_iterator(m_values.end()));
    m_values.resize(base);
    --m_depth;
    return JsonValue(std::move(list));
}

QString JsonParser::intern(QStringView key)
{
    if (key.size() > 32)
        return key.toString();
    quint32 h = 2166136261u;
    for (QChar c : key)
        h = (h ^ c.unicode()) * 16777619u;
    QString &slot = m_keys[h % m_keys.size()];
    if (slot != key)
        slot = key.toString();
    return slot;
}

QString JsonParser::parseKey()
{
    // The usual key: one quoted part followed by ":".
    const qsizetype start = m_pos;
    if (start < m_size && (m_text[start] == u'"' || m_text[start] == u'\'')) {
        const QChar quote = m_text[start];
        qsizetype close = start + 1;
        while (close < m_size && m_text[close] != quote)
            ++close;
        if (close < m_size) {
            m_pos = close + 1;
            skipBlanks();
            if (!atEnd() && current() == u':') {
                ++m_pos;
                return intern(QStringView(m_text + start + 1, close - start - 1));
            }
        }
        m_pos = start;
    }
    return parseKeySlow();
}

QString JsonParser::parseKeySlow()
{
    QString key;
    while (m_pos < m_size) {
        const char16_t c = m_text[m_pos].unicode();
        if (c == u'"' || c == u'\'') {
            // Everything up to the same quote belongs to the key, ":" included.
            const qsizetype start = m_pos + 1;
            qsizetype close = start;
            while (close < m_size && m_text[close] != c)
                ++close;
            key.append(m_text + start, close - start);
            if (close >= m_size) {
                m_pos = m_size;
                return key;
            }
            m_pos = close + 1;
            skipBlanks();
            if (atEnd() || current() != u':') {
                appendPositionError(u"Invalid Key at position ");
                return key;
            }
            continue;
        }
        if (c == u':') {
            ++m_pos;
            return key;
        }
        if (c == u'\r' || c == u'\n' || c == u'\t' || c == u' ') {
            ++m_pos;
            continue;
        }
        const qsizetype start = m_pos;
        while (m_pos < m_size) {
            const char16_t d = m_text[m_pos].unicode();
            if (d == u'"' || d == u'\'' || d == u':' || d == u'\r' || d == u'\n' || d == u'\t'
                || d == u' ')
                break;
            ++m_pos;
        }
        key.append(m_text + start, m_pos - start);
    }
    return key;
}

QString JsonParser::parseString()
{
    const QChar quote = m_text[m_pos];
    ++m_pos;
    qsizetype start = m_pos;
    // Most strings have no escape: take them in one piece.
    while (m_pos < m_size) {
        const QChar c = m_text[m_pos];
        if (c == quote) {
            ++m_pos;
            return QString(m_text + start, m_pos - 1 - start);
        }
        if (c == u'\\')
            break;
        ++m_pos;
    }
    if (m_pos >= m_size)
        return QString(m_text + start, m_size - start);

    cStringBuilder &sb = m_builder;
    sb.Remove(0, sb.Length());
    while (m_pos < m_size) {
        const QChar c = m_text[m_pos];
        if (c == quote) {
            sb.Append(QStringView(m_text + start, m_pos - start));
            ++m_pos;
            return sb.toString();
        }
        if (c != u'\\') {
            ++m_pos;
            continue;
        }
        sb.Append(QStringView(m_text + start, m_pos - start));
        ++m_pos;
        if (m_pos >= m_size) {
            start = m_pos;
            break;
        }
        const char16_t e = m_text[m_pos].unicode();
        ++m_pos;
        switch (e) {
        case u'"':
        case u'\\':
        case u'/':
        case u'\'':
            sb.Append(QChar(e));
            break;
        case u'b':
            sb.Append(QChar(8));
            break;
        case u'f':
            sb.Append(QChar(12));
            break;
        case u'n':
            sb.Append(QChar(10));
            break;
        case u'r':
            sb.Append(QChar(13));
            break;
        case u't':
            sb.Append(QChar(9));
            break;
        case u'u': {
            const qsizetype take = qMin<qsizetype>(4, m_size - m_pos);
            sb.Append(QChar(hexCode(QStringView(m_text + m_pos, take))));
            // Past the four digits; fewer may be left before the end.
            m_pos += take;
            break;
        }
        default:
            break;  // any other escaped character is dropped
        }
        start = m_pos;
    }
    if (start < m_size)
        sb.Append(QStringView(m_text + start, m_size - start));
    return sb.toString();
}

JsonValue JsonParser::parseNumber()
{
    skipBlanks();
    const qsizetype start = m_pos;
    while (m_pos < m_size && isNumberChar(m_text[m_pos].unicode()))
        ++m_pos;
    Decimal::Status status = Decimal::Status::Ok;
    const Decimal d = Decimal::fromString(QStringView(m_text + start, m_pos - start), &status);
    if (status == Decimal::Status::Ok)
        return JsonValue(d);
    m_failure = JsonRuntimeError::fromNumber(status == Decimal::Status::Overflow
                                                 ? JsonRuntimeError::Overflow
                                                 : JsonRuntimeError::TypeMismatch)
                    .description();
    return JsonValue();
}

JsonValue JsonParser::parseBoolean()
{
    skipBlanks();
    const QStringView here = rest();
    if (here.startsWith(u"true")) {
        m_pos += 4;
        return JsonValue(true);
    }
    if (here.startsWith(u"false")) {
        m_pos += 5;
        return JsonValue(false);
    }
    appendPositionError(u"Invalid Boolean at position ");
    return JsonValue(false);
}

JsonValue JsonParser::parseNull()
{
    skipBlanks();
    if (rest().startsWith(u"null")) {
        m_pos += 4;
        return JsonValue();
    }
    appendPositionError(u"Invalid null value at position ");
    return JsonValue();
}

JsonValue ParseJson(QStringView text)
{
    JsonParser parser;
    JsonValue result = parser.parse(text);
    t_errors = parser.errors();
    return result;
}

QString ParserErrors()
{
    return t_errors;
}
