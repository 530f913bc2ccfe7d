#pragma once
// A client-side recordset: the whole result is fetched when it opens, then navigated.
// Fields by position (0-based) and by name (case-insensitive); SQL NULL is a null QVariant
// of the column's type (isNull() true, isValid() true); out of range gives an invalid one.
// Integers come as qlonglong, DECIMAL and floating columns as double, DATE as QDate,
// DATETIME/TIMESTAMP as QDateTime, binary columns as QByteArray, the rest as QString.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

class Recordset
{
public:
    using Rows = QList<QList<QVariant>>;
    // Runs the statement again for requery(); returns false when it fails.
    using Loader = std::function<bool(const QString &sql, QStringList &names, Rows &rows)>;

    Recordset() = default;

    // Used by the data object to fill the recordset.
    void open(const QString &sql, QStringList names, Rows rows, Loader loader = {});

    bool isOpen() const { return m_open; }
    void close();
    bool requery();

    bool isBOF() const;
    bool isEOF() const;
    void moveFirst();
    void moveNext();
    void movePrevious();
    void moveLast();
    int recordCount() const;
    int absolutePosition() const { return m_pos; }   // 0-based, -1 before the first row

    int fieldCount() const { return int(m_names.size()); }
    QString fieldName(int index) const;
    int fieldIndex(const QString &name) const;        // -1 when absent
    QVariant field(int index) const;                  // invalid QVariant when out of range or no row
    QVariant field(const QString &name) const;
    QString text(int index) const;                    // null as empty text
    QString text(const QString &name) const;

    // "Column=value", "Column='text'", operators = <> < > <= >= and LIKE (* or % wildcards);
    // "Column=Null" / "Column<>Null" test for nulls. Numbers compare as numbers when both
    // sides are numeric, texts case-insensitively. Searches forward from the current row
    // (inclusive). Returns true and stays on the hit, else ends at EOF.
    bool find(const QString &criteria);

    const QString &statement() const { return m_sql; }

private:
    bool m_open = false;
    QString m_sql;
    QStringList m_names;
    Rows m_rows;
    int m_pos = -1;
    Loader m_loader;
};
