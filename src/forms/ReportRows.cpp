#include "forms/ReportRows.h"

#include "shared/modbase.h"

ReportRows::ReportRows(int columns) : m_columns(columns)
{
    m_values.resize(columns + 1);
    m_widths.resize(columns + 1);
    m_alignments.resize(columns + 1);
    m_firstTexts.resize(columns + 1);
    m_prefixes.resize(columns + 1);
    clear();
}

void ReportRows::clear()
{
    for (int i = 0; i <= m_columns; ++i) {
        m_values[i] = QString();
        m_widths[i] = 0;
        m_alignments[i] = Left;
        m_firstTexts[i].clear();
        m_prefixes[i].clear();
    }
}

void ReportRows::setCell(int column, const QString &text, int width, Align align, const QString &prefix)
{
    Q_ASSERT(column >= 1 && column <= m_columns);
    m_values[column] = text;
    m_widths[column] = qint16(width);
    m_alignments[column] = align;
    m_prefixes[column] = prefix;
}

void ReportRows::write(bool tableRow, const QString &left, const QString &right, const QString &top,
                       const QString &bottom)
{
    modbase::MULTISPCJS1(m_values, m_widths, m_alignments, m_firstTexts, m_prefixes, tableRow, left,
                         right, top, bottom);
}

void ReportRows::line(const QString &text, Align align, const QString &prefix, bool tableRow)
{
    clear();
    setCell(1, text, rowWidth, align, prefix);
    write(tableRow);
}

void ReportRows::pair(const QString &left, int leftWidth, Align leftAlign, const QString &right,
                      int rightWidth, Align rightAlign, const QString &prefix, bool tableRow)
{
    clear();
    setCell(1, left, leftWidth, leftAlign, prefix);
    setCell(2, right, rightWidth, rightAlign);
    write(tableRow);
}
