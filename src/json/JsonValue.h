#pragma once
// Values produced by the JSON parser. Dictionaries and collections are shared objects:
// copying a JsonValue that holds one copies the reference, as the parser's callers expect.
#include "Decimal.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <variant>
#include <vector>

class JsonDictionary;
class JsonCollection;

class JsonValue
{
public:
    enum class Type : quint8 { Null, Bool, Number, String, Dictionary, Collection };

    JsonValue() noexcept = default;
    explicit JsonValue(bool value) : m_value(value) {}
    explicit JsonValue(const Decimal &value) : m_value(value) {}
    explicit JsonValue(const QString &value) : m_value(value) {}
    explicit JsonValue(QString &&value) : m_value(std::move(value)) {}
    explicit JsonValue(std::shared_ptr<JsonDictionary> value) : m_value(std::move(value)) {}
    explicit JsonValue(std::shared_ptr<JsonCollection> value) : m_value(std::move(value)) {}
    JsonValue(const char *) = delete;

    static JsonValue newDictionary();
    static JsonValue newCollection();

    Type type() const { return Type(m_value.index()); }
    bool isNull() const { return type() == Type::Null; }
    bool isBool() const { return type() == Type::Bool; }
    bool isNumber() const { return type() == Type::Number; }
    bool isString() const { return type() == Type::String; }
    bool isDictionary() const { return type() == Type::Dictionary; }
    bool isCollection() const { return type() == Type::Collection; }

    // Each returns the empty/zero value when the value is of another type.
    bool toBool() const;
    Decimal toDecimal() const;
    QString toString() const;
    JsonDictionary *dictionary() const;
    JsonCollection *collection() const;

private:
    std::variant<std::monostate, bool, Decimal, QString, std::shared_ptr<JsonDictionary>,
                 std::shared_ptr<JsonCollection>>
        m_value;
};

// Keys in insertion order; adding a key that is already there fails. Keys compare exactly.
class JsonDictionary
{
public:
    using Item = std::pair<QString, JsonValue>;

    qsizetype count() const { return qsizetype(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }

    // False, and nothing changes, when the key is already present.
    bool add(QString key, JsonValue value);
    // Replaces the value of an existing key or adds the key at the end.
    void set(const QString &key, JsonValue value);
    bool contains(QStringView key) const { return indexOf(key) >= 0; }
    // Null when the key is missing.
    const JsonValue *find(QStringView key) const;
    JsonValue item(QStringView key) const;

    // Zero-based, in insertion order.
    const QString &keyAt(qsizetype i) const { return m_items[size_t(i)].first; }
    const JsonValue &valueAt(qsizetype i) const { return m_items[size_t(i)].second; }
    QStringList keys() const;

    std::vector<Item>::const_iterator begin() const { return m_items.begin(); }
    std::vector<Item>::const_iterator end() const { return m_items.end(); }
    void reserve(qsizetype n) { m_items.reserve(size_t(n)); }

    // The failure's description when a key is added twice.
    static QString duplicateKeyDescription();

private:
    friend class JsonParser;  // hands over members it has already checked
    qsizetype indexOf(QStringView key) const;
    void adopt(Item *first, Item *last);

    static constexpr qsizetype IndexFrom = 16;  // below this a scan beats hashing
    std::vector<Item> m_items;
    QHash<QString, qsizetype> m_index;
};

// An ordered list whose items are numbered from 1.
class JsonCollection
{
public:
    qsizetype count() const { return qsizetype(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    void add(JsonValue value) { m_items.push_back(std::move(value)); }
    // One-based; error 9 outside 1..count.
    const JsonValue &item(qsizetype index) const;
    // Zero-based, unchecked.
    const JsonValue &at(qsizetype i) const { return m_items[size_t(i)]; }

    std::vector<JsonValue>::const_iterator begin() const { return m_items.begin(); }
    std::vector<JsonValue>::const_iterator end() const { return m_items.end(); }
    void reserve(qsizetype n) { m_items.reserve(size_t(n)); }

private:
    friend class JsonParser;
    std::vector<JsonValue> m_items;
};
