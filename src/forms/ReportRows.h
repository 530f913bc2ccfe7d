#pragma once
// The five parallel arrays of a line-table report row, sized once and reused for every
// row, so a builder states only what a row holds.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace ReportText {
// Printer control sequences understood by the report object.
inline const QString boldOn = QStringLiteral("\x1b" "E");
inline const QString boldOff = QStringLiteral("\x1b" "F");
inline const QString underlineOn = QStringLiteral("\x1b" "-1");
inline const QString underlineOff = QStringLiteral("\x1b" "-0");
inline const QString lineBreak = QStringLiteral("\r\n");
inline QString bold(const QString &text) { return boldOn + text + boldOff; }
inline QString underlined(const QString &text) { return underlineOn + text + underlineOff; }
} // namespace ReportText

class ReportRows
{
public:
    enum Align : qint32 { Left = 0, Centre = 1, Right = 2 };

    // Arrays indexed from 1; index 0 stays empty.
    explicit ReportRows(int columns);

    int columns() const { return m_columns; }

    // Clears every column (width 0, empty text, no prefix).
    void clear();
    void setCell(int column, const QString &text, int width, Align align = Left,
                 const QString &prefix = QString());

    // Writes the row through modbase::MULTISPCJS1 with the four border texts in its
    // argument order (left, right, top, bottom).
    void write(bool tableRow, const QString &left = QStringLiteral("0"),
               const QString &right = QStringLiteral("0"), const QString &top = QStringLiteral("0"),
               const QString &bottom = QStringLiteral("0"));

    // One-column rows of the full width and two-column rows, the common shapes.
    void line(const QString &text, Align align = Left, const QString &prefix = QString(),
              bool tableRow = false);
    void pair(const QString &left, int leftWidth, Align leftAlign, const QString &right,
              int rightWidth, Align rightAlign, const QString &prefix = QString(), bool tableRow = true);

    static constexpr int rowWidth = 78;

private:
    int m_columns;
    QVariantList m_values;
    QList<qint16> m_widths;
    QList<qint32> m_alignments;
    QStringList m_firstTexts;
    QStringList m_prefixes;
};
