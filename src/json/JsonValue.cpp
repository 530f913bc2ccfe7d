#include "JsonValue.h"

#include "JsonRuntimeError.h"

JsonValue JsonValue::newDictionary()
{
    return JsonValue(std::make_shared<JsonDictionary>());
}

JsonValue JsonValue::newCollection()
{
    return JsonValue(std::make_shared<JsonCollection>());
}

bool JsonValue::toBool() const
{
    const bool *b = std::get_if<bool>(&m_value);
    return b && *b;
}

Decimal JsonValue::toDecimal() const
{
    const Decimal *d = std::get_if<Decimal>(&m_value);
    return d ? *d : Decimal();
}

QString JsonValue::toString() const
{
    const QString *s = std::get_if<QString>(&m_value);
    return s ? *s : QString();
}

JsonDictionary *JsonValue::dictionary() const
{
    const auto *p = std::get_if<std::shared_ptr<JsonDictionary>>(&m_value);
    return p ? p->get() : nullptr;
}

JsonCollection *JsonValue::collection() const
{
    const auto *p = std::get_if<std::shared_ptr<JsonCollection>>(&m_value);
    return p ? p->get() : nullptr;
}

QString JsonDictionary::duplicateKeyDescription()
{
    return QStringLiteral("This key is already associated with an element of this collection");
}

qsizetype JsonDictionary::indexOf(QStringView key) const
{
    if (!m_index.isEmpty())
        return m_index.value(QString::fromRawData(key.data(), key.size()), -1);
    for (size_t i = 0; i < m_items.size(); ++i)
        if (m_items[i].first == key)
            return qsizetype(i);
    return -1;
}

bool JsonDictionary::add(QString key, JsonValue value)
{
    if (indexOf(key) >= 0)
        return false;
    const qsizetype at = count();
    if (at + 1 == IndexFrom) {
        m_index.reserve(IndexFrom * 2);
        for (qsizetype i = 0; i < at; ++i)
            m_index.insert(m_items[size_t(i)].first, i);
    }
    if (at + 1 >= IndexFrom)
        m_index.insert(key, at);
    m_items.emplace_back(std::move(key), std::move(value));
    return true;
}

void JsonDictionary::adopt(Item *first, Item *last)
{
    m_items.reserve(m_items.size() + size_t(last - first));
    for (; first != last; ++first) {
        if (m_items.size() + 1 >= size_t(IndexFrom)) {
            if (m_index.isEmpty()) {
                for (size_t i = 0; i < m_items.size(); ++i)
                    m_index.insert(m_items[i].first, qsizetype(i));
            }
            m_index.insert(first->first, count());
        }
        m_items.push_back(std::move(*first));
    }
}

void JsonDictionary::set(const QString &key, JsonValue value)
{
    const qsizetype i = indexOf(key);
    if (i >= 0)
        m_items[size_t(i)].second = std::move(value);
    else
        add(key, std::move(value));
}

const JsonValue *JsonDictionary::find(QStringView key) const
{
    const qsizetype i = indexOf(key);
    return i < 0 ? nullptr : &m_items[size_t(i)].second;
}

JsonValue JsonDictionary::item(QStringView key) const
{
    const JsonValue *v = find(key);
    return v ? *v : JsonValue();
}

QStringList JsonDictionary::keys() const
{
    QStringList out;
    out.reserve(count());
    for (const Item &item : m_items)
        out.append(item.first);
    return out;
}

const JsonValue &JsonCollection::item(qsizetype index) const
{
    if (index < 1 || index > count())
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::SubscriptOutOfRange);
    return m_items[size_t(index - 1)];
}
