#pragma once
// A rich-text template kept as its own bytes and edited in place: placeholders replaced,
// table cells written, rows copied and removed. Everything not touched stays byte for byte
// as the word processor wrote it.
#include <QByteArray>
#include <QList>
#include <QString>

struct RtfToken
{
    enum Kind { GroupOpen, GroupClose, Word, Symbol, Char };
    Kind kind = Char;
    int start = 0;
    int end = 0;             // exclusive; a control word's delimiting blank and a \u's
                             // fallback characters belong to it
    QByteArray word;         // Word: the name; Symbol: the character after the backslash
    int param = 0;
    bool hasParam = false;
    bool delimited = false;  // Word: ended by a blank
    bool hidden = false;     // inside a destination that is never shown
    QChar ch;                // Char: the character shown (\'hh, \uN, \{ ... decoded)
};

QList<RtfToken> tokenizeRtf(const QByteArray &rtf);

// Value text in RTF: backslash and braces escaped, line breaks as \line, everything
// outside ASCII as \uN? (N signed 16-bit).
QByteArray rtfEscape(const QString &text);

class RtfDocument
{
public:
    bool load(const QString &path, QString *error = nullptr);
    bool save(const QString &path, QString *error = nullptr) const;
    void setContent(const QByteArray &rtf) { m_rtf = rtf; }
    const QByteArray &content() const { return m_rtf; }
    bool isEmpty() const { return m_rtf.isEmpty(); }

    // Replaces every occurrence of the text, also when formatting codes or groups split it.
    int replaceText(const QString &placeholder, const QString &value);

    int tableCount() const;
    int rowCount(int table) const;        // tables 1-based, rows and columns 0-based
    int columnCount(int table, int row) const;
    QString cellText(int table, int row, int column) const;
    bool setCellText(int table, int row, int column, const QString &value);
    // New rows start at rowPosition; they copy the layout of the row at that position (the
    // last row when appending) with every cell emptied.
    bool insertRows(int table, int rowPosition, int count);
    bool deleteRow(int table, int rowPosition);

    // What a reader sees: paragraphs and rows end in "\n", cells end in "\t".
    QString plainText() const;

private:
    struct Row
    {
        int start = 0;          // byte offsets of the whole row
        int end = 0;
        int firstToken = 0;     // token range of the row
        int lastToken = 0;
        QList<int> cellTokens;  // the \cell tokens
    };
    struct Table
    {
        QList<Row> rows;
    };
    QList<Table> scanTables(const QList<RtfToken> &tokens) const;
    const Row *findRow(const QList<Table> &tables, int table, int row) const;
    // marksLast: the table's last row carried \lastrow before the edit
    void renumberRows(int table, bool marksLast);

    QByteArray m_rtf;
};
