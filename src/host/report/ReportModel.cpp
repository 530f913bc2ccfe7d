#include "host/report/ReportModel.h"

namespace ReportCodes {
QString boldOn() { return QString(Escape) + QLatin1Char('E'); }
QString boldOff() { return QString(Escape) + QLatin1Char('F'); }
QString underlineOn() { return QString(Escape) + QLatin1String("-1"); }
QString underlineOff() { return QString(Escape) + QLatin1String("-0"); }
} // namespace ReportCodes

namespace {
// The underline switch is ESC "-" followed by "1"/"0"; printers also take the bytes 1/0.
bool underlineArgument(QChar c, bool *on)
{
    if (c == QLatin1Char('1') || c == QChar(1)) {
        *on = true;
        return true;
    }
    if (c == QLatin1Char('0') || c == QChar(0)) {
        *on = false;
        return true;
    }
    return false;
}
} // namespace

QList<StyledText> parseCellText(const QString &text)
{
    QList<StyledText> lines(1);
    bool bold = false;
    bool underline = false;
    const int n = int(text.size());
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == ReportCodes::Escape) {
            if (i + 1 >= n)
                break;
            const QChar code = text.at(i + 1);
            if (code == QLatin1Char('E')) {
                bold = true;
                ++i;
            } else if (code == QLatin1Char('F')) {
                bold = false;
                ++i;
            } else if (code == QLatin1Char('-')) {
                bool on = false;
                if (i + 2 < n && underlineArgument(text.at(i + 2), &on)) {
                    underline = on;
                    i += 2;
                } else {
                    ++i;
                }
            } else {
                ++i;   // an unknown printer code: drop it with its letter
            }
            continue;
        }
        if (c == QLatin1Char('\r')) {
            if (i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            lines.append(StyledText());
            continue;
        }
        if (c == QLatin1Char('\n')) {
            lines.append(StyledText());
            continue;
        }
        StyledChar sc;
        sc.ch = (c == QLatin1Char('\t') || c.unicode() < 32) ? QLatin1Char(' ') : c;
        sc.bold = bold;
        sc.underline = underline;
        lines.last().append(sc);
    }
    return lines;
}

QString stripCellText(const QString &text)
{
    QStringList out;
    for (const StyledText &line : parseCellText(text)) {
        QString s;
        s.reserve(line.size());
        for (const StyledChar &c : line)
            s.append(c.ch);
        out.append(s);
    }
    return out.join(QLatin1Char('\n'));
}

void ReportModel::clear()
{
    m_items.clear();
    m_tableCount = 0;
    m_tableColumns = 0;
}

void ReportModel::addParagraph(const QString &text)
{
    ReportItem item;
    item.kind = ReportItem::Paragraph;
    item.text = text;
    m_items.append(item);
}

void ReportModel::addEmptyLine()
{
    m_items.append(ReportItem());
}

void ReportModel::beginTable(int columns)
{
    ++m_tableCount;
    m_tableColumns = columns;
}

void ReportModel::addRow(const QList<ReportColumn> &columns, bool tableRow)
{
    ReportItem item;
    item.kind = ReportItem::Row;
    item.columns = columns;
    item.tableRow = tableRow;
    item.table = tableRow ? m_tableCount : 0;
    m_items.append(item);
}
