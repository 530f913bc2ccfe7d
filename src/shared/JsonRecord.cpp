#include "shared/JsonRecord.h"

JsonRecordReader::JsonRecordReader(const JsonValue &record) : m_record(record.dictionary())
{
    if (!m_record)
        fail(QStringLiteral("it is not an object {...}"));
}

void JsonRecordReader::fail(const QString &message)
{
    if (m_error.isEmpty())
        m_error = message;
}

const JsonValue *JsonRecordReader::member(const QString &name)
{
    if (!m_record)
        return nullptr;
    m_read.insert(name);
    return m_record->find(name);
}

bool JsonRecordReader::text(const JsonValue &value, const QString &where, QString *out)
{
    switch (value.type()) {
    case JsonValue::Type::String:
        *out = value.toString();
        return true;
    case JsonValue::Type::Number:
        *out = value.toDecimal().toString();
        return true;
    case JsonValue::Type::Null:
        out->clear();
        return true;
    default:
        fail(where + QStringLiteral(" is not a text"));
        return false;
    }
}

int JsonRecordReader::serial()
{
    const JsonValue *value = member(QStringLiteral("serial"));
    if (!value || value->isNull())
        return 0;
    bool whole = false;
    const int serial = value->isNumber() ? value->toDecimal().toString().toInt(&whole) : 0;
    if (!whole || serial <= 0) {
        fail(QStringLiteral("\"serial\" is not a positive whole number"));
        return 0;
    }
    return serial;
}

QString JsonRecordReader::text(const QString &name)
{
    QString out;
    if (const JsonValue *value = member(name))
        text(*value, QStringLiteral("\"%1\"").arg(name), &out);
    return out;
}

QStringList JsonRecordReader::texts(const QString &name, int count)
{
    QStringList out;
    const JsonValue *value = member(name);
    const JsonCollection *items = value ? value->collection() : nullptr;
    if (!items) {
        fail(QStringLiteral("\"%1\" is missing or not an array").arg(name));
        return out;
    }
    if (items->count() != count) {
        fail(QStringLiteral("\"%1\" has %2 values; it needs %3").arg(name).arg(items->count()).arg(count));
        return out;
    }
    for (qsizetype i = 0; i < count; ++i) {
        QString t;
        if (!text(items->at(i), QStringLiteral("%1 slot %2").arg(name).arg(i), &t))
            return {};
        out << t;
    }
    return out;
}

QList<QList<QStringList>> JsonRecordReader::tables(const QString &name, const QList<int> &columns)
{
    QList<QList<QStringList>> out(columns.size());
    const JsonValue *value = member(name);
    if (!value || value->isNull())
        return out;
    const JsonCollection *list = value->collection();
    if (list && list->isEmpty())
        return out;
    if (!list || list->count() != columns.size()) {
        fail(QStringLiteral("\"%1\" is not an array of %2 tables").arg(name).arg(columns.size()));
        return out;
    }
    for (qsizetype t = 0; t < columns.size(); ++t) {
        if (!readRows(list->at(t), QStringLiteral("%1 %2").arg(name).arg(t + 1), columns[t], &out[t]))
            return out;
    }
    return out;
}

QList<QStringList> JsonRecordReader::rows(const QString &name, int columns)
{
    QList<QStringList> out;
    const JsonValue *value = member(name);
    if (value && !value->isNull())
        readRows(*value, QStringLiteral("\"%1\"").arg(name), columns, &out);
    return out;
}

bool JsonRecordReader::readRows(const JsonValue &value, const QString &where, int columns, QList<QStringList> *out)
{
    const JsonCollection *rows = value.collection();
    if (!rows) {
        fail(where + QStringLiteral(" is not an array of rows"));
        return false;
    }
    for (qsizetype r = 0; r < rows->count(); ++r) {
        const QString at = QStringLiteral("%1 row %2").arg(where).arg(r + 1);
        const JsonCollection *cells = rows->at(r).collection();
        if (!cells || cells->count() > columns) {
            fail(at + QStringLiteral(" is not an array of at most %1 cells").arg(columns));
            return false;
        }
        QStringList row;
        for (const JsonValue &cell : *cells) {
            QString c;
            if (!text(cell, at, &c))
                return false;
            row << c;
        }
        row.resize(columns);
        *out << row;
    }
    return true;
}

bool JsonRecordReader::flag(const QString &name, bool fallback)
{
    const JsonValue *value = member(name);
    if (!value || value->isNull())
        return fallback;
    if (!value->isBool()) {
        fail(QStringLiteral("\"%1\" is not true or false").arg(name));
        return fallback;
    }
    return value->toBool();
}

QList<JsonValue> JsonRecordReader::objects(const QString &name)
{
    QList<JsonValue> out;
    const JsonValue *value = member(name);
    if (!value || value->isNull())
        return out;
    const JsonCollection *list = value->collection();
    if (!list) {
        fail(QStringLiteral("\"%1\" is not an array").arg(name));
        return out;
    }
    for (const JsonValue &item : *list)
        out << item;
    return out;
}

bool JsonRecordReader::finish()
{
    if (m_record) {
        for (const QString &key : m_record->keys()) {
            if (!m_read.contains(key))
                fail(QStringLiteral("unknown member \"%1\"").arg(key));
        }
    }
    return ok();
}

JsonValue JsonRecordReader::array(const QStringList &texts)
{
    JsonValue out = JsonValue::newCollection();
    for (const QString &t : texts)
        out.collection()->add(JsonValue(t));
    return out;
}

JsonValue JsonRecordReader::array(const QList<QStringList> &rows)
{
    JsonValue out = JsonValue::newCollection();
    for (const QStringList &row : rows)
        out.collection()->add(array(row));
    return out;
}

JsonValue JsonRecordReader::array(const QList<QList<QStringList>> &tables)
{
    JsonValue out = JsonValue::newCollection();
    for (const QList<QStringList> &rows : tables)
        out.collection()->add(array(rows));
    return out;
}
