#pragma once
// Lenient JSON reader: single-quoted strings, unquoted keys, comments, round brackets and
// extra commas are accepted; problems go into an error text instead of being raised.
#include "JsonValue.h"
#include "cStringBuilder.h"

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

class JsonParser
{
public:
    // Deeper nesting is refused (and reported) instead of exhausting the stack.
    static constexpr int MaxDepth = 512;
    // An error text this long stops the parse: only hostile input gets there.
    static constexpr qsizetype MaxErrorText = qsizetype(1) << 24;

    // A dictionary or collection; the null value when the text starts with neither.
    JsonValue parse(QStringView text);
    // What went wrong in the last parse, one message per line, each ending in CR LF.
    const QString &errors() const { return m_errors; }

private:
    void skipBlanks();
    JsonValue parseValue();
    JsonValue parseObject();
    JsonValue parseArray();
    QString parseKey();
    QString parseKeySlow();
    QString intern(QStringView key);
    QString parseString();
    JsonValue parseNumber();
    JsonValue parseBoolean();
    JsonValue parseNull();

    bool atEnd() const { return m_pos >= m_size; }
    QChar current() const { return m_text[m_pos]; }
    QStringView rest() const;
    QStringView lastChars(qsizetype n) const;
    void appendError(QStringView a, QStringView b = {}, QStringView c = {},
                     QStringView d = {});
    void appendPositionError(QStringView what);
    bool enter();

    const QChar *m_text = nullptr;
    qsizetype m_size = 0;
    qsizetype m_pos = 0;  // zero-based; messages show it one-based
    int m_depth = 0;
    bool m_aborted = false;
    QString m_failure;  // description of a value that could not be converted
    QString m_errors;
    cStringBuilder m_builder;
    // Members of the containers being built, handed over in one piece when each closes.
    std::vector<JsonValue> m_values;
    std::vector<JsonDictionary::Item> m_members;
    // Keys repeat from object to object; share one copy of each recent one.
    std::array<QString, 512> m_keys;
};

// Parses with a module-wide error text, read afterwards with ParserErrors().
JsonValue ParseJson(QStringView text);
QString ParserErrors();
