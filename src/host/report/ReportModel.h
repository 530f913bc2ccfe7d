#pragma once
// The line-table report as the forms describe it: free paragraphs, empty lines and rows of
// columns, each row a fixed number of character positions wide.
#include <QList>
#include <QString>

struct StyledChar
{
    QChar ch = QLatin1Char(' ');
    bool bold = false;
    bool underline = false;

    bool operator==(const StyledChar &other) const = default;
};
using StyledText = QList<StyledChar>;

// Printer control sequences the forms embed in cell texts.
namespace ReportCodes {
inline constexpr QChar Escape = QChar(27);
QString boldOn();        // ESC "E"
QString boldOff();       // ESC "F"
QString underlineOn();   // ESC "-1"
QString underlineOff();  // ESC "-0"
} // namespace ReportCodes

// Splits a cell text into its lines (CR LF, LF or CR) of styled characters. The control
// sequences set the style and are dropped; every cell starts plain, so a form that forgets
// to switch bold off spoils one cell, not the rest of the page.
QList<StyledText> parseCellText(const QString &text);
// The text without control sequences and line breaks turned into "\n".
QString stripCellText(const QString &text);

enum class ReportAlignment { Left = 0, Centre = 1, Right = 2 };

struct ReportColumn
{
    QString text;
    int width = 0;                 // character positions; 0: the column takes no space
    ReportAlignment alignment = ReportAlignment::Left;
    QString prefix;                // continuation lines hang by its length
    bool left = false;
    bool right = false;
    bool top = false;
    bool bottom = false;
};

struct ReportItem
{
    enum Kind { Paragraph, EmptyLine, Row };
    Kind kind = EmptyLine;
    QString text;                  // Paragraph
    QList<ReportColumn> columns;   // Row
    bool tableRow = false;         // Row: part of a table begun with createtable
    int table = 0;                 // Row: which createtable it belongs to (0: none yet)
};

class ReportModel
{
public:
    static constexpr int NarrowWidth = 78;
    static constexpr int WideWidth = 130;

    void clear();
    int width() const { return m_width; }
    void setWidth(int positions) { m_width = positions; }

    void addParagraph(const QString &text);
    void addEmptyLine();
    void beginTable(int columns);
    void addRow(const QList<ReportColumn> &columns, bool tableRow);

    const QList<ReportItem> &items() const { return m_items; }
    bool isEmpty() const { return m_items.isEmpty(); }
    int tableColumns() const { return m_tableColumns; }

private:
    int m_width = NarrowWidth;
    QList<ReportItem> m_items;
    int m_tableCount = 0;
    int m_tableColumns = 0;
};
