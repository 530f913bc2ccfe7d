#pragma once
// Lays a ReportModel out as lines of fixed-pitch character cells. The plain text, the PDF
// and the printer all draw this one layout, so they agree position for position.
//
// Cell geometry: a column of width w starting at position x owns positions x .. x+w-1.
// A left border takes position x (drawn '|') and leaves x+1 blank; a right border takes
// x+w-1 and leaves x+w-2 blank. Two neighbouring columns with no border between them keep
// one blank position at the end of the first, so their texts never touch. Top and bottom
// borders are lines of their own between text lines; where one row's bottom line meets the
// next row's top line the two are drawn once.
#include "host/report/ReportModel.h"

#include <QList>
#include <QString>
#include <QStringList>

struct ReportBand
{
    enum Kind { Text, Rule };
    Kind kind = Text;
    StyledText chars;          // Text: one entry per position of the row
    QList<int> verticals;      // Text: positions holding a vertical border
    QList<bool> segments;      // Rule: positions covered by the horizontal line
    QList<int> above;          // Rule: vertical borders reaching the line from above
    QList<int> below;          // Rule: vertical borders leaving the line downwards

    bool isCorner(int position) const;
    QString toText() const;    // trailing blanks removed
};

struct LaidRow
{
    QList<ReportBand> bands;
    // The line closing the row above, repeated when this row has to open a new page.
    QList<ReportBand> carried;
};

struct ReportLayout
{
    int width = ReportModel::NarrowWidth;
    QList<LaidRow> rows;

    QStringList lines() const;
    QString text() const;      // lines joined by "\n", ending in "\n" unless empty
    // The same lines as a fixed-pitch rich-text document, bold and underline kept.
    QByteArray rtf() const;
};

// Word wrap of one line of text into pieces of at most firstWidth, then restWidth,
// characters: breaks at blanks, cuts words longer than a line, keeps leading blanks of the
// first piece (paragraph indents) and drops the blanks at each break.
QList<StyledText> wrapStyledText(const StyledText &text, int firstWidth, int restWidth);

ReportLayout layoutReport(const ReportModel &model);
