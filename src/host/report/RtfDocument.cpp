#include "host/report/RtfDocument.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

// Windows-1252 for \'80..\'9f; the rest of \'hh is Latin-1.
QChar fromCodePage(uchar byte)
{
    static const char16_t high[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    if (byte >= 0x80 && byte < 0xA0)
        return QChar(high[byte - 0x80]);
    return QChar(byte);
}

bool isHiddenDestination(const QByteArray &word)
{
    static const char *const names[] = {
        "fonttbl", "colortbl", "stylesheet", "info", "pict", "listtable",
        "listoverridetable", "rsidtbl", "generator", "xmlnstbl", "themedata",
        "colorschememapping", "latentstyles", "datastore", "filetbl", "revtbl",
        "object", "objdata", "fldinst", "mmathPr", "defchp", "defpap", "pgdsctbl",
        "operator", "author", "title", "subject", "keywords", "comment"};
    for (const char *name : names) {
        if (word == name)
            return true;
    }
    return false;
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

int hexValue(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isWord(const RtfToken &t, const char *name) { return t.kind == RtfToken::Word && t.word == name; }

// Control words that end a line of text as a reader sees it.
bool isBreakWord(const RtfToken &t)
{
    if (t.kind != RtfToken::Word)
        return false;
    static const char *const names[] = {"par", "line", "cell", "row", "tab", "sect", "page",
                                        "nestcell", "nestrow", "column"};
    for (const char *name : names) {
        if (t.word == name)
            return true;
    }
    return false;
}

struct Edit
{
    int start;
    int end;
    QByteArray text;
};

void applyEdits(QByteArray &rtf, QList<Edit> edits)
{
    // from the end backwards; at one position the replacement goes before an insertion
    std::sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) {
        return a.start != b.start ? a.start > b.start : a.end > b.end;
    });
    for (const Edit &e : edits)
        rtf.replace(e.start, e.end - e.start, e.text);
}

// Text placed right after a control word that has no delimiting blank would be read as
// part of the word ("\b" + "old" = "\bold"): give the word its blank.
QByteArray delimitAfter(const QList<RtfToken> &tokens, int tokenIndex, int position, const QByteArray &text)
{
    if (tokenIndex > 0) {
        const RtfToken &before = tokens.at(tokenIndex - 1);
        if (before.kind == RtfToken::Word && !before.delimited && before.end == position)
            return ' ' + text;
    }
    return text;
}

} // namespace

QList<RtfToken> tokenizeRtf(const QByteArray &rtf)
{
    struct State
    {
        bool hidden = false;
        int uc = 1;
    };
    QList<State> stack{State()};
    bool groupStart = false;
    QList<RtfToken> out;
    const int n = int(rtf.size());

    auto push = [&](RtfToken t) {
        State &s = stack.last();
        if (groupStart) {
            groupStart = false;
            if ((t.kind == RtfToken::Symbol && t.word == "*") || (t.kind == RtfToken::Word && isHiddenDestination(t.word)))
                s.hidden = true;
        }
        t.hidden = s.hidden;
        out.append(t);
    };

    // A brace token takes the hidden state of the group it opens or closes.
    auto pushBrace = [&](RtfToken::Kind kind, int at) {
        RtfToken t;
        t.kind = kind;
        t.start = at;
        t.end = at + 1;
        t.hidden = stack.last().hidden;
        out.append(t);
    };

    int i = 0;
    while (i < n) {
        const char c = rtf.at(i);
        if (c == '{') {
            groupStart = false;
            pushBrace(RtfToken::GroupOpen, i);
            stack.append(stack.last());
            groupStart = true;
            ++i;
            continue;
        }
        if (c == '}') {
            groupStart = false;
            pushBrace(RtfToken::GroupClose, i);
            if (stack.size() > 1)
                stack.removeLast();
            ++i;
            continue;
        }
        if (c == '\r' || c == '\n') {
            ++i;
            continue;
        }
        if (c != '\\') {
            RtfToken t;
            t.kind = RtfToken::Char;
            t.start = i;
            t.end = i + 1;
            t.ch = fromCodePage(uchar(c));
            push(t);
            ++i;
            continue;
        }
        if (i + 1 >= n)
            break;
        const char next = rtf.at(i + 1);
        RtfToken t;
        t.start = i;
        if (isLetter(next)) {
            int j = i + 1;
            while (j < n && isLetter(rtf.at(j)))
                ++j;
            t.kind = RtfToken::Word;
            t.word = rtf.mid(i + 1, j - i - 1);
            int p = j;
            if (p < n && rtf.at(p) == '-' && p + 1 < n && isDigit(rtf.at(p + 1)))
                ++p;
            while (p < n && isDigit(rtf.at(p)))
                ++p;
            if (p > j) {
                t.hasParam = true;
                t.param = rtf.mid(j, p - j).toInt();
            }
            j = p;
            if (j < n && rtf.at(j) == ' ') {
                t.delimited = true;
                ++j;
            }
            if (t.word == "bin" && t.hasParam && t.param > 0)
                j = std::min(n, j + t.param);
            if (t.word == "uc" && t.hasParam)
                stack.last().uc = std::max(0, t.param);
            if (t.word == "u" && t.hasParam) {
                t.kind = RtfToken::Char;
                t.ch = QChar(char16_t(t.param < 0 ? t.param + 65536 : t.param));
                // the fallback characters for readers without Unicode
                for (int k = stack.last().uc; k > 0 && j < n;) {
                    const char f = rtf.at(j);
                    if (f == '\r' || f == '\n') {
                        ++j;
                    } else if (f == '\\' && j + 3 < n && rtf.at(j + 1) == '\'') {
                        j += 4;
                        --k;
                    } else if (f == '\\' || f == '{' || f == '}') {
                        break;
                    } else {
                        ++j;
                        --k;
                    }
                }
            }
            t.end = j;
            push(t);
            i = j;
            continue;
        }
        if (next == '\'' && i + 3 < n && hexValue(rtf.at(i + 2)) >= 0 && hexValue(rtf.at(i + 3)) >= 0) {
            t.kind = RtfToken::Char;
            t.word = "'";
            t.ch = fromCodePage(uchar(hexValue(rtf.at(i + 2)) * 16 + hexValue(rtf.at(i + 3))));
            t.end = i + 4;
            push(t);
            i += 4;
            continue;
        }
        t.end = i + 2;
        t.word = QByteArray(1, next);
        if (next == '\\' || next == '{' || next == '}') {
            t.kind = RtfToken::Char;
            t.ch = QLatin1Char(next);
        } else if (next == '~') {
            t.kind = RtfToken::Char;
            t.ch = QChar(0x00A0);
        } else if (next == '_') {
            t.kind = RtfToken::Char;
            t.ch = QLatin1Char('-');
        } else if (next == '\r' || next == '\n') {
            t.kind = RtfToken::Word;   // a backslash before a line end is a paragraph mark
            t.word = "par";
            t.delimited = true;
        } else {
            t.kind = RtfToken::Symbol;
        }
        push(t);
        i += 2;
    }
    return out;
}

QByteArray rtfEscape(const QString &text)
{
    QByteArray out;
    out.reserve(text.size() + 8);
    const int n = int(text.size());
    for (int i = 0; i < n; ++i) {
        const char16_t c = text.at(i).unicode();
        if (c == u'\\' || c == u'{' || c == u'}') {
            out.append('\\');
            out.append(char(c));
        } else if (c == u'\r') {
            if (i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            out.append("\\line ");
        } else if (c == u'\n') {
            out.append("\\line ");
        } else if (c == u'\t') {
            out.append("\\tab ");
        } else if (c < 32) {
            continue;
        } else if (c > 127) {
            out.append("\\u");
            out.append(QByteArray::number(int(qint16(c))));
            out.append('?');
        } else {
            out.append(char(c));
        }
    }
    return out;
}

bool RtfDocument::load(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot open %1: %2").arg(path, file.errorString());
        return false;
    }
    const QByteArray data = file.readAll();
    // a UTF-8 byte order mark some editors put in front
    const int skip = data.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (!data.mid(skip).startsWith("{\\rtf")) {
        if (error)
            *error = QStringLiteral("%1 is not a rich-text document").arg(path);
        return false;
    }
    m_rtf = data.mid(skip);
    return true;
}

bool RtfDocument::save(const QString &path, QString *error) const
{
    const QFileInfo info(path);
    QDir().mkpath(info.absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_rtf) != m_rtf.size() || !file.commit()) {
        if (error)
            *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

int RtfDocument::replaceText(const QString &placeholder, const QString &value)
{
    if (placeholder.isEmpty() || m_rtf.isEmpty())
        return 0;
    const QList<RtfToken> tokens = tokenizeRtf(m_rtf);
    QString visible;
    QList<int> origin;   // token of each visible character, -1 for a break
    for (int t = 0; t < tokens.size(); ++t) {
        const RtfToken &tok = tokens.at(t);
        if (tok.hidden)
            continue;
        if (tok.kind == RtfToken::Char && !tok.ch.isNull()) {
            visible.append(tok.ch);
            origin.append(t);
        } else if (isBreakWord(tok)) {
            visible.append(QLatin1Char('\n'));
            origin.append(-1);
        }
    }
    const QByteArray escaped = rtfEscape(value);
    QList<Edit> edits;
    int count = 0;
    qsizetype from = 0;
    while ((from = visible.indexOf(placeholder, from)) >= 0) {
        bool whole = true;
        for (qsizetype k = from; k < from + placeholder.size(); ++k)
            whole = whole && origin.at(k) >= 0;
        if (!whole) {
            ++from;
            continue;
        }
        for (qsizetype k = from; k < from + placeholder.size(); ++k) {
            const int t = origin.at(k);
            const RtfToken &tok = tokens.at(t);
            // the value takes the place (and the formatting) of the first character
            const QByteArray text = k == from ? escaped : QByteArray();
            edits.append({tok.start, tok.end, delimitAfter(tokens, t, tok.start, text)});
        }
        ++count;
        from += placeholder.size();
    }
    applyEdits(m_rtf, edits);
    return count;
}

QList<RtfDocument::Table> RtfDocument::scanTables(const QList<RtfToken> &tokens) const
{
    QList<Table> tables;
    bool inRow = false;
    bool sameTable = false;
    Row row;
    const int n = int(tokens.size());
    for (int t = 0; t < n; ++t) {
        const RtfToken &tok = tokens.at(t);
        if (tok.hidden)
            continue;
        if (!inRow) {
            if (isWord(tok, "trowd")) {
                inRow = true;
                row = Row();
                row.firstToken = t;
            } else if ((tok.kind == RtfToken::Char && !tok.ch.isNull() && !tok.ch.isSpace()) || isWord(tok, "par")
                       || isWord(tok, "sect") || isWord(tok, "page")) {
                sameTable = false;   // text between rows: the next row starts a new table
            }
            continue;
        }
        if (isWord(tok, "cell")) {
            row.cellTokens.append(t);
            continue;
        }
        if (!isWord(tok, "row"))
            continue;
        row.lastToken = t;
        // A row is cut out and copied whole, so its braces must balance: take in the group
        // a word processor opens inside the row (the repeated row definition) and closes
        // after \row, or the one it opened just before \trowd.
        int depth = 0;
        int lowest = 0;
        for (int k = row.firstToken; k <= row.lastToken; ++k) {
            if (tokens.at(k).kind == RtfToken::GroupOpen)
                ++depth;
            else if (tokens.at(k).kind == RtfToken::GroupClose)
                lowest = std::min(lowest, --depth);
        }
        for (int need = -lowest, k = row.firstToken - 1, inner = 0; need > 0 && k >= 0; --k) {
            if (tokens.at(k).kind == RtfToken::GroupClose) {
                ++inner;
            } else if (tokens.at(k).kind == RtfToken::GroupOpen) {
                if (inner > 0) {
                    --inner;
                } else {
                    --need;
                    row.firstToken = k;
                    ++depth;
                }
            }
        }
        for (int k = row.lastToken + 1; depth > 0 && k < n; ++k) {
            if (tokens.at(k).kind == RtfToken::GroupOpen)
                ++depth;
            else if (tokens.at(k).kind == RtfToken::GroupClose)
                --depth;
            row.lastToken = k;
        }
        row.start = tokens.at(row.firstToken).start;
        row.end = tokens.at(row.lastToken).end;
        if (!sameTable || tables.isEmpty())
            tables.append(Table());
        tables.last().rows.append(row);
        sameTable = true;
        inRow = false;
        t = row.lastToken;
    }
    return tables;
}

const RtfDocument::Row *RtfDocument::findRow(const QList<Table> &tables, int table, int row) const
{
    if (table < 1 || table > tables.size())
        return nullptr;
    const QList<Row> &rows = tables.at(table - 1).rows;
    if (row < 0 || row >= rows.size())
        return nullptr;
    return &rows.at(row);
}

int RtfDocument::tableCount() const
{
    return int(scanTables(tokenizeRtf(m_rtf)).size());
}

int RtfDocument::rowCount(int table) const
{
    const QList<Table> tables = scanTables(tokenizeRtf(m_rtf));
    return (table >= 1 && table <= tables.size()) ? int(tables.at(table - 1).rows.size()) : 0;
}

int RtfDocument::columnCount(int table, int row) const
{
    const QList<Table> tables = scanTables(tokenizeRtf(m_rtf));
    const Row *r = findRow(tables, table, row);
    return r ? int(r->cellTokens.size()) : 0;
}

QString RtfDocument::cellText(int table, int row, int column) const
{
    const QList<RtfToken> tokens = tokenizeRtf(m_rtf);
    const QList<Table> tables = scanTables(tokens);
    const Row *r = findRow(tables, table, row);
    if (!r || column < 0 || column >= r->cellTokens.size())
        return QString();
    const int first = column == 0 ? r->firstToken : r->cellTokens.at(column - 1) + 1;
    QString text;
    for (int t = first; t < r->cellTokens.at(column); ++t) {
        const RtfToken &tok = tokens.at(t);
        if (tok.hidden)
            continue;
        if (tok.kind == RtfToken::Char && !tok.ch.isNull())
            text.append(tok.ch);
        else if (isWord(tok, "par") || isWord(tok, "line"))
            text.append(QLatin1Char('\n'));
        else if (isWord(tok, "tab"))
            text.append(QLatin1Char('\t'));
    }
    while (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

bool RtfDocument::setCellText(int table, int row, int column, const QString &value)
{
    const QList<RtfToken> tokens = tokenizeRtf(m_rtf);
    const QList<Table> tables = scanTables(tokens);
    const Row *r = findRow(tables, table, row);
    if (!r || column < 0 || column >= r->cellTokens.size())
        return false;
    const int first = column == 0 ? r->firstToken : r->cellTokens.at(column - 1) + 1;
    const int cellToken = r->cellTokens.at(column);
    QList<Edit> edits;
    for (int t = first; t < cellToken; ++t) {
        const RtfToken &tok = tokens.at(t);
        if (tok.hidden)
            continue;
        const bool content = (tok.kind == RtfToken::Char && !tok.ch.isNull()) || isWord(tok, "par")
                             || isWord(tok, "line") || isWord(tok, "tab");
        if (content) {
            // the new text keeps the formatting of the old text's first character
            const QByteArray text = edits.isEmpty() ? rtfEscape(value) : QByteArray();
            edits.append({tok.start, tok.end, delimitAfter(tokens, t, tok.start, text)});
        }
    }
    if (edits.isEmpty()) {
        const int at = tokens.at(cellToken).start;
        edits.append({at, at, delimitAfter(tokens, cellToken, at, rtfEscape(value))});
    }
    applyEdits(m_rtf, edits);
    return true;
}

bool RtfDocument::insertRows(int table, int rowPosition, int count)
{
    const QList<Table> tables = scanTables(tokenizeRtf(m_rtf));
    if (table < 1 || table > tables.size() || count < 1)
        return false;
    const QList<Row> &rows = tables.at(table - 1).rows;
    if (rowPosition < 0 || rowPosition > rows.size())
        return false;
    const Row &model = rowPosition < rows.size() ? rows.at(rowPosition) : rows.last();

    RtfDocument blank;
    blank.m_rtf = m_rtf.mid(model.start, model.end - model.start);
    for (int c = 0, cells = blank.columnCount(1, 0); c < cells; ++c)
        blank.setCellText(1, 0, c, QString());

    const bool marksLast = m_rtf.mid(rows.first().start, rows.last().end - rows.first().start).contains("\\lastrow");
    const int at = rowPosition < rows.size() ? model.start : rows.last().end;
    m_rtf.insert(at, blank.m_rtf.repeated(count));
    renumberRows(table, marksLast);
    return true;
}

bool RtfDocument::deleteRow(int table, int rowPosition)
{
    const QList<RtfToken> tokens = tokenizeRtf(m_rtf);
    const QList<Table> tables = scanTables(tokens);
    const Row *r = findRow(tables, table, rowPosition);
    if (!r)
        return false;
    const QList<Row> &rows = tables.at(table - 1).rows;
    const bool marksLast = m_rtf.mid(rows.first().start, rows.last().end - rows.first().start).contains("\\lastrow");
    const QByteArray filler = delimitAfter(tokens, r->firstToken, r->start, QByteArray());
    m_rtf.replace(r->start, r->end - r->start, filler);
    if (rows.size() > 1)   // else the table is gone and the number belongs to the next one
        renumberRows(table, marksLast);
    return true;
}

void RtfDocument::renumberRows(int table, bool marksLast)
{
    // Word numbers the rows of a table (\irow, \irowband) and marks the last one (\lastrow);
    // keep that true after rows came and went.
    const QList<RtfToken> tokens = tokenizeRtf(m_rtf);
    const QList<Table> tables = scanTables(tokens);
    if (table < 1 || table > tables.size())
        return;
    const QList<Row> &rows = tables.at(table - 1).rows;
    QList<Edit> edits;
    for (int k = 0; k < rows.size(); ++k) {
        const Row &row = rows.at(k);
        const bool last = k == rows.size() - 1;
        int shift = 0;
        bool shiftKnown = false;
        bool hasLast = false;
        for (int t = row.firstToken; t <= row.lastToken; ++t) {
            const RtfToken &tok = tokens.at(t);
            if (tok.kind != RtfToken::Word)
                continue;
            const QByteArray tail = tok.delimited ? QByteArray(" ") : QByteArray();
            if (tok.word == "irow" && tok.hasParam) {
                if (!shiftKnown) {
                    shift = k - tok.param;
                    shiftKnown = true;
                }
                edits.append({tok.start, tok.end, "\\irow" + QByteArray::number(k) + tail});
            } else if (tok.word == "irowband" && tok.hasParam && shiftKnown) {
                edits.append({tok.start, tok.end, "\\irowband" + QByteArray::number(tok.param + shift) + tail});
            } else if (tok.word == "lastrow") {
                hasLast = true;
                if (!last)
                    edits.append({tok.start, tok.end, delimitAfter(tokens, t, tok.start, QByteArray())});
            }
        }
        if (last && marksLast && !hasLast) {
            for (int t = row.firstToken; t <= row.lastToken; ++t) {
                if (isWord(tokens.at(t), "trowd"))
                    edits.append({tokens.at(t).end, tokens.at(t).end,
                                  delimitAfter(tokens, t + 1, tokens.at(t).end, "\\lastrow ")});
            }
        }
    }
    applyEdits(m_rtf, edits);
}

QString RtfDocument::plainText() const
{
    QString text;
    for (const RtfToken &tok : tokenizeRtf(m_rtf)) {
        if (tok.hidden)
            continue;
        if (tok.kind == RtfToken::Char && !tok.ch.isNull())
            text.append(tok.ch);
        else if (isWord(tok, "cell") || isWord(tok, "tab"))
            text.append(QLatin1Char('\t'));
        else if (isBreakWord(tok))
            text.append(QLatin1Char('\n'));
    }
    return text;
}
