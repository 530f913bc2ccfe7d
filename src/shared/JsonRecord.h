#pragma once
// One record of an import file: a JSON object read member by member, the first problem
// remembered with the member it concerns, and members nobody asked for refused (a
// misspelt key must not quietly drop a value).
#include "json/JsonValue.h"

#include <QList>
#include <QSet>
#include <QStringList>

class JsonRecordReader
{
public:
    explicit JsonRecordReader(const JsonValue &record);

    bool ok() const { return m_error.isEmpty(); }
    const QString &error() const { return m_error; }

    // "serial": a positive whole number; 0 when the member is absent.
    int serial();
    // A text member (a number as written); absent or null: empty.
    QString text(const QString &name);
    // An array of exactly count texts (numbers are taken as written, null as empty).
    QStringList texts(const QString &name, int count);
    // An array of tables, one per entry of columns, each an array of rows of at most that
    // many texts (short rows are padded). Absent or []: every table empty.
    QList<QList<QStringList>> tables(const QString &name, const QList<int> &columns);
    // One such table: an array of rows of at most columns texts. Absent or null: no rows.
    QList<QStringList> rows(const QString &name, int columns);
    // A true/false member; absent: fallback.
    bool flag(const QString &name, bool fallback);
    // An array of objects, each read by its own reader; absent: none.
    QList<JsonValue> objects(const QString &name);
    // A problem found by the caller, remembered like the reader's own.
    void fail(const QString &message);
    // Called last: refuses the members not read.
    bool finish();

    // A JSON array of texts, and one of tables, for the export.
    static JsonValue array(const QStringList &texts);
    static JsonValue array(const QList<QStringList> &rows);
    static JsonValue array(const QList<QList<QStringList>> &tables);

private:
    const JsonValue *member(const QString &name);
    bool text(const JsonValue &value, const QString &where, QString *out);
    // The rows of one table into *out; false (failed) when they are not rows of texts.
    bool readRows(const JsonValue &value, const QString &where, int columns, QList<QStringList> *out);

    const JsonDictionary *m_record = nullptr;
    QSet<QString> m_read;
    QString m_error;
};
