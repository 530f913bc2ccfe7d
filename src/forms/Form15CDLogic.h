#pragma once
// Forms 15C and 15D: one row of text fields per deductor-year, saved by replacing it,
// printed as the statutory application. The two differ only in table, field count and
// printed text.
#include <QString>
#include <QStringList>

class ReportRows;

class Form15CDLogic
{
public:
    enum class Kind { C, D };

    explicit Form15CDLogic(Kind kind);

    Kind kind() const { return m_kind; }
    QString tableName() const;     // "Form15C" / "Form15D"
    QString module() const;        // error-log tag: "frm15c" / "frm15d"
    int fieldCount() const { return int(m_fields.size()); }   // 4 / 5

    // txtfields in index order (= column order after period_code).
    QString field(int index) const { return m_fields.value(index); }
    void setField(int index, const QString &text);
    const QStringList &fields() const { return m_fields; }

    int periodCode() const { return m_periodCode; }

    // Period code of the current deductor and year, then its row (fields blank if none).
    void load();
    // Replaces the period's row in one transaction. False when the save failed (logged;
    // the previous row is kept).
    bool save();
    // The statutory text, row by row, into the report object's current report.
    void buildReport();
    // The print button: asks for the output, then builds and shows the report.
    void print();

private:
    void buildReport15C();
    void buildReport15D();
    void salutation(ReportRows &row);
    void closing(ReportRows &row);

    Kind m_kind;
    QStringList m_fields;
    int m_periodCode = 0;
};
