#include "host/report/RtfRenderer.h"

#include "host/report/RtfDocument.h"

#include <QAbstractTextDocumentLayout>
#include <QColor>
#include <QHash>
#include <QGuiApplication>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QScreen>
#include <QSet>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <utility>

namespace RtfRenderer {

double layoutDpi()
{
    // the resolution QTextDocument assumes without a paint device
    if (QCoreApplication::testAttribute(Qt::AA_Use96Dpi))
        return 96;
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        return qRound(screen->logicalDotsPerInchY());
    return 100;
}

double fromTwips(double twips)
{
    return twips * layoutDpi() / 1440.0;
}

} // namespace RtfRenderer

namespace {

using RtfRenderer::fromTwips;

// A4 with one-inch margins when the document does not say.
constexpr int DefaultPaperWidth = 11906;
constexpr int DefaultPaperHeight = 16838;
constexpr int DefaultMargin = 1440;
constexpr int DefaultTab = 720;
constexpr int DefaultBorderWidth = 10;

// Destinations the tokenizer lets through that never appear in the body of a page.
bool isSkippedDestination(const QByteArray &word)
{
    static const char *const names[] = {"header", "headerl", "headerr", "headerf", "footer", "footerl",
                                        "footerr", "footerf", "footnote", "annotation", "atnid", "atnauthor",
                                        "pn", "xe", "tc", "txe", "nonshppict", "nonesttables", "template"};
    for (const char *name : names) {
        if (word == name)
            return true;
    }
    return false;
}

bool isUnderline(const QByteArray &word)
{
    return word.startsWith("ul") && word != "ulnone" && word != "ulc";
}

struct FontEntry
{
    QString name;
    QString generic;
    QFont::StyleHint hint = QFont::AnyStyle;
};

struct CharState
{
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    bool hidden = false;
    bool caps = false;
    int halfPoints = 24;
    int font = -1;        // -1: the document's default font
    int colour = 0;
    int vertical = 0;     // 1 superscript, -1 subscript
    bool operator==(const CharState &) const = default;
};

struct ParaState
{
    Qt::Alignment alignment = Qt::AlignLeft;
    bool inTable = false;
    bool pageBreakBefore = false;
    int leftIndent = 0;
    int rightIndent = 0;
    int firstIndent = 0;
    int spaceBefore = 0;
    int spaceAfter = 0;
    int lineSpacing = 0;
    bool lineMultiple = false;
    QList<QTextOption::Tab> tabs;
    QTextOption::TabType nextTab = QTextOption::LeftTab;
    QChar tabDelimiter;
};

struct GroupState
{
    CharState chars;
    ParaState para;
    bool skip = false;
};

struct Border
{
    QTextFrameFormat::BorderStyle style = QTextFrameFormat::BorderStyle_None;
    int width = 0;      // twips
    int colour = 0;
    bool given = false;
};

enum Side { Top, Left, Bottom, Right, InnerHorizontal, InnerVertical };

struct CellDef
{
    int right = 0;
    std::array<Border, 4> sides;
    bool mergeFirst = false;
    bool mergeNext = false;
    bool verticalFirst = false;
    bool verticalNext = false;
    QTextCharFormat::VerticalAlignment vertical = QTextCharFormat::AlignTop;
    int shading = 0;
};

struct RowDef
{
    int left = 0;
    int gap = 0;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool header = false;
    std::array<Border, 6> sides;
    QList<CellDef> cells;
};

struct Run
{
    QString text;
    QTextCharFormat format;
};

struct Paragraph
{
    QTextBlockFormat block;
    QTextCharFormat mark;   // the paragraph mark's format: the height of an empty line
    QList<Run> runs;
};

struct Cell
{
    QList<Paragraph> paragraphs;
};

struct Row
{
    RowDef def;
    QList<Cell> cells;
};

class Reader
{
public:
    explicit Reader(const QByteArray &rtf) : m_tokens(tokenizeRtf(rtf)) {}
    RtfRenderer::Rendered run();

private:
    void readDocumentSettings();
    void readFontTable(int from);
    void readColourTable(int from);

    void word(const RtfToken &t);
    bool characterWord(const RtfToken &t);
    bool paragraphWord(const RtfToken &t);
    bool tableWord(const RtfToken &t);
    void text(QChar ch);

    Paragraph takeParagraph();
    void endParagraph();
    void pageBreak();
    void endCell();
    void endRow();
    void closeTable();
    void finish();

    QTextCharFormat charFormat(const CharState &c);
    QTextBlockFormat blockFormat(const ParaState &p) const;
    QColor colour(int index) const { return index > 0 && index < m_colours.size() ? m_colours.at(index) : QColor(); }

    void emitParagraph(QTextCursor &cursor, const Paragraph &p, bool reuseBlock);
    void emitTopParagraph(const Paragraph &p);
    void emitTable(const QList<Row> &rows);
    double textWidthTwips() const { return std::max(1, m_paperWidth - m_marginLeft - m_marginRight); }

    QList<RtfToken> m_tokens;
    QList<GroupState> m_stack{GroupState()};

    QHash<int, FontEntry> m_fonts;
    QList<QColor> m_colours;
    int m_defaultFont = 0;
    int m_paperWidth = DefaultPaperWidth;
    int m_paperHeight = DefaultPaperHeight;
    int m_marginLeft = DefaultMargin;
    int m_marginRight = DefaultMargin;
    int m_marginTop = DefaultMargin;
    int m_marginBottom = DefaultMargin;
    int m_defaultTab = DefaultTab;
    bool m_landscape = false;

    QList<Run> m_runs;
    bool m_pageBreak = false;          // before the next paragraph or table on the page
    bool m_sectionBreaksPage = true;

    RowDef m_rowDef;
    CellDef m_cellDef;
    Border *m_border = nullptr;        // the border the \brdr words describe
    Cell m_cell;
    QList<Cell> m_cells;
    QList<Row> m_table;

    CharState m_cachedState;
    QTextCharFormat m_cachedFormat;
    bool m_cacheValid = false;

    QTextDocument *m_doc = nullptr;
    QTextCursor m_cursor;
    bool m_fresh = true;               // the cursor's block is empty and unused
    bool m_afterTable = false;         // the cursor's block follows a table
};


void Reader::readDocumentSettings()
{
    QSet<QByteArray> seen;
    for (int i = 0; i < m_tokens.size(); ++i) {
        const RtfToken &t = m_tokens.at(i);
        if (t.kind != RtfToken::Word)
            continue;
        if (t.word == "fonttbl") {
            readFontTable(i);
            continue;
        }
        if (t.word == "colortbl") {
            readColourTable(i);
            continue;
        }
        if (t.hidden || seen.contains(t.word))
            continue;
        // the document's own values come first; later ones belong to sections
        const int n = t.param;
        bool known = true;
        if (t.word == "paperw" && n > 0)
            m_paperWidth = n;
        else if (t.word == "paperh" && n > 0)
            m_paperHeight = n;
        else if (t.word == "margl" && n >= 0)
            m_marginLeft = n;
        else if (t.word == "margr" && n >= 0)
            m_marginRight = n;
        else if (t.word == "margt" && n >= 0)
            m_marginTop = n;
        else if (t.word == "margb" && n >= 0)
            m_marginBottom = n;
        else if (t.word == "deftab" && n > 0)
            m_defaultTab = n;
        else if (t.word == "deff")
            m_defaultFont = n;
        else if (t.word == "landscape")
            m_landscape = true;
        else
            known = false;
        if (known)
            seen.insert(t.word);
    }
    // margins that leave no room are a broken document, not a wish
    if (m_marginLeft + m_marginRight >= m_paperWidth - 720)
        m_marginLeft = m_marginRight = DefaultMargin;
    if (m_marginTop + m_marginBottom >= m_paperHeight - 720)
        m_marginTop = m_marginBottom = DefaultMargin;
}

void Reader::readFontTable(int from)
{
    // from is the \fonttbl word, inside the group it opens
    QList<bool> ignored{false};
    bool groupStart = false;
    int number = -1;
    FontEntry entry;
    QString name;
    for (int i = from + 1; i < m_tokens.size(); ++i) {
        const RtfToken &t = m_tokens.at(i);
        if (t.kind == RtfToken::GroupOpen) {
            ignored.append(ignored.last());
            groupStart = true;
            continue;
        }
        const bool start = std::exchange(groupStart, false);
        if (t.kind == RtfToken::GroupClose) {
            ignored.removeLast();
            if (ignored.isEmpty())
                return;
            continue;
        }
        if (start && t.kind == RtfToken::Symbol && t.word == "*")
            ignored.last() = true;   // \panose, \falt and the like
        if (ignored.last())
            continue;
        if (t.kind == RtfToken::Word) {
            if (t.word == "f" && t.hasParam) {
                number = t.param;
                entry = FontEntry();
                name.clear();
            } else if (t.word == "froman") {
                entry.generic = QStringLiteral("serif");
                entry.hint = QFont::Serif;
            } else if (t.word == "fswiss") {
                entry.generic = QStringLiteral("sans-serif");
                entry.hint = QFont::SansSerif;
            } else if (t.word == "fmodern") {
                entry.generic = QStringLiteral("monospace");
                entry.hint = QFont::TypeWriter;
            } else if (t.word == "fscript") {
                entry.generic = QStringLiteral("cursive");
                entry.hint = QFont::Cursive;
            } else if (t.word == "fdecor") {
                entry.generic = QStringLiteral("fantasy");
                entry.hint = QFont::Decorative;
            }
        } else if (t.kind == RtfToken::Char) {
            if (t.ch == QLatin1Char(';')) {
                if (number >= 0) {
                    entry.name = name.trimmed();
                    m_fonts.insert(number, entry);
                }
                name.clear();
            } else {
                name.append(t.ch);
            }
        }
    }
}

void Reader::readColourTable(int from)
{
    int depth = 0;
    int red = 0, green = 0, blue = 0;
    bool given = false;
    for (int i = from + 1; i < m_tokens.size(); ++i) {
        const RtfToken &t = m_tokens.at(i);
        if (t.kind == RtfToken::GroupOpen) {
            ++depth;
        } else if (t.kind == RtfToken::GroupClose) {
            if (depth-- == 0)
                return;
        } else if (t.kind == RtfToken::Word) {
            if (t.word == "red")
                red = t.param;
            else if (t.word == "green")
                green = t.param;
            else if (t.word == "blue")
                blue = t.param;
            given = given || t.word == "red" || t.word == "green" || t.word == "blue";
        } else if (t.kind == RtfToken::Char && t.ch == QLatin1Char(';')) {
            // an entry with no values is the automatic colour
            m_colours.append(given ? QColor(std::clamp(red, 0, 255), std::clamp(green, 0, 255), std::clamp(blue, 0, 255))
                                   : QColor());
            red = green = blue = 0;
            given = false;
        }
    }
}

RtfRenderer::Rendered Reader::run()
{
    readDocumentSettings();

    RtfRenderer::Rendered out;
    out.document = std::make_unique<QTextDocument>();
    m_doc = out.document.get();
    m_doc->setUndoRedoEnabled(false);
    m_doc->setUseDesignMetrics(true);   // the same line breaks on screen, printer and PDF
    m_doc->setDocumentMargin(0);
    QFont base;
    const FontEntry font = m_fonts.value(m_defaultFont);
    base.setFamilies(font.name.isEmpty() ? QStringList{QStringLiteral("serif")} : QStringList{font.name, font.generic});
    base.setStyleHint(font.hint);
    base.setPointSizeF(12);
    m_doc->setDefaultFont(base);
    QTextOption option = m_doc->defaultTextOption();
    option.setTabStopDistance(fromTwips(m_defaultTab));
    m_doc->setDefaultTextOption(option);
    m_cursor = QTextCursor(m_doc);

    bool groupStart = false;
    for (const RtfToken &t : std::as_const(m_tokens)) {
        if (t.kind == RtfToken::GroupOpen) {
            m_stack.append(m_stack.last());
            groupStart = true;
            continue;
        }
        const bool start = std::exchange(groupStart, false);
        if (t.kind == RtfToken::GroupClose) {
            if (m_stack.size() > 1)
                m_stack.removeLast();
            continue;
        }
        if (t.hidden || m_stack.last().skip)
            continue;
        if (start && t.kind == RtfToken::Word && isSkippedDestination(t.word)) {
            m_stack.last().skip = true;
            continue;
        }
        if (t.kind == RtfToken::Char)
            text(t.ch);
        else if (t.kind == RtfToken::Word)
            word(t);
        // the remaining symbols (\-, \|, \:) show nothing
    }
    finish();

    const int textWidth = m_paperWidth - m_marginLeft - m_marginRight;
    const int textHeight = m_paperHeight - m_marginTop - m_marginBottom;
    m_doc->setPageSize(QSizeF(fromTwips(textWidth), fromTwips(textHeight)));

    const bool wide = m_landscape || m_paperWidth > m_paperHeight;
    const QSizeF paper(std::min(m_paperWidth, m_paperHeight) / 20.0, std::max(m_paperWidth, m_paperHeight) / 20.0);
    out.page = QPageLayout(QPageSize(paper, QPageSize::Point), wide ? QPageLayout::Landscape : QPageLayout::Portrait,
                           QMarginsF(m_marginLeft / 20.0, m_marginTop / 20.0, m_marginRight / 20.0, m_marginBottom / 20.0),
                           QPageLayout::Point);
    return out;
}

void Reader::text(QChar ch)
{
    if (ch.isNull() || (ch.unicode() < 0x20 && ch != QLatin1Char('\t')))
        return;
    const CharState &c = m_stack.last().chars;
    if (c.hidden)
        return;
    const QChar shown = c.caps ? ch.toUpper() : ch;
    const QTextCharFormat format = charFormat(c);
    if (!m_runs.isEmpty() && m_runs.last().format == format)
        m_runs.last().text.append(shown);
    else
        m_runs.append({QString(shown), format});
}

void Reader::word(const RtfToken &t)
{
    const QByteArray &w = t.word;
    if (w == "par")
        return endParagraph();
    if (w == "line")
        return text(QChar::LineSeparator);
    if (w == "tab")
        return text(QLatin1Char('\t'));
    if (w == "page")
        return pageBreak();
    if (w == "sect") {
        if (!m_runs.isEmpty())
            endParagraph();
        if (m_sectionBreaksPage && !m_stack.last().para.inTable)
            m_pageBreak = true;
        return;
    }
    if (w == "sectd" || w == "sbkpage" || w == "sbkodd" || w == "sbkeven") {
        m_sectionBreaksPage = true;
        return;
    }
    if (w == "sbknone" || w == "sbkcol") {
        m_sectionBreaksPage = false;
        return;
    }
    static const std::pair<const char *, char16_t> specials[] = {
        {"emdash", 0x2014}, {"endash", 0x2013}, {"bullet", 0x2022}, {"lquote", 0x2018}, {"rquote", 0x2019},
        {"ldblquote", 0x201C}, {"rdblquote", 0x201D}, {"emspace", 0x2003}, {"enspace", 0x2002}, {"qmspace", 0x2005}};
    for (const auto &[name, ch] : specials) {
        if (w == name)
            return text(QChar(ch));
    }
    if (characterWord(t) || paragraphWord(t))
        return;
    tableWord(t);
}

bool Reader::characterWord(const RtfToken &t)
{
    const QByteArray &w = t.word;
    const bool on = !t.hasParam || t.param != 0;
    CharState &c = m_stack.last().chars;
    if (w == "plain")
        c = CharState();
    else if (w == "b")
        c.bold = on;
    else if (w == "i")
        c.italic = on;
    else if (w == "ulnone")
        c.underline = false;
    else if (isUnderline(w))
        c.underline = on;
    else if (w == "strike" || w == "striked")
        c.strike = on;
    else if (w == "v")
        c.hidden = on;
    else if (w == "caps")
        c.caps = on;
    else if (w == "fs")
        c.halfPoints = t.param > 0 ? t.param : 24;
    else if (w == "f")
        c.font = t.param;
    else if (w == "cf")
        c.colour = t.param;
    else if (w == "super")
        c.vertical = 1;
    else if (w == "sub")
        c.vertical = -1;
    else if (w == "nosupersub")
        c.vertical = 0;
    else
        return false;
    return true;
}

bool Reader::paragraphWord(const RtfToken &t)
{
    const QByteArray &w = t.word;
    ParaState &p = m_stack.last().para;
    if (w == "pard")
        p = ParaState();
    else if (w == "ql")
        p.alignment = Qt::AlignLeft;
    else if (w == "qc")
        p.alignment = Qt::AlignHCenter;
    else if (w == "qr")
        p.alignment = Qt::AlignRight;
    else if (w == "qj" || w == "qd")
        p.alignment = Qt::AlignJustify;
    else if (w == "li")
        p.leftIndent = t.param;
    else if (w == "ri")
        p.rightIndent = t.param;
    else if (w == "fi")
        p.firstIndent = t.param;
    else if (w == "sb")
        p.spaceBefore = t.param;
    else if (w == "sa")
        p.spaceAfter = t.param;
    else if (w == "sl")
        p.lineSpacing = t.param;
    else if (w == "slmult")
        p.lineMultiple = t.param != 0;
    else if (w == "intbl")
        p.inTable = true;
    else if (w == "pagebb")
        p.pageBreakBefore = !t.hasParam || t.param != 0;
    else if (w == "tqr")
        p.nextTab = QTextOption::RightTab;
    else if (w == "tqc")
        p.nextTab = QTextOption::CenterTab;
    else if (w == "tqdec") {
        p.nextTab = QTextOption::DelimiterTab;
        p.tabDelimiter = QLatin1Char('.');
    } else if (w == "tx") {
        p.tabs.append(QTextOption::Tab(fromTwips(t.param), p.nextTab, p.tabDelimiter));
        p.nextTab = QTextOption::LeftTab;
        p.tabDelimiter = QChar();
    } else if (w == "brdrt" || w == "brdrl" || w == "brdrb" || w == "brdrr" || w == "brdrbtw" || w == "brdrbar"
               || w == "box") {
        m_border = nullptr;   // paragraph borders are not drawn; keep them off the cells
    } else {
        return false;
    }
    return true;
}

bool Reader::tableWord(const RtfToken &t)
{
    const QByteArray &w = t.word;
    const int n = t.param;
    if (w == "cell")
        endCell();
    else if (w == "nestcell" || w == "nestrow")
        endParagraph();   // nested tables are shown as paragraphs of the outer cell
    else if (w == "row")
        endRow();
    else if (w == "trowd") {
        m_rowDef = RowDef();
        m_cellDef = CellDef();
        m_border = nullptr;
    } else if (w == "trgaph")
        m_rowDef.gap = std::max(0, n);
    else if (w == "trleft")
        m_rowDef.left = n;
    else if (w == "trql")
        m_rowDef.alignment = Qt::AlignLeft;
    else if (w == "trqc")
        m_rowDef.alignment = Qt::AlignHCenter;
    else if (w == "trqr")
        m_rowDef.alignment = Qt::AlignRight;
    else if (w == "trhdr")
        m_rowDef.header = true;
    else if (w == "cellx") {
        m_cellDef.right = n;
        m_rowDef.cells.append(m_cellDef);
        m_cellDef = CellDef();
        m_border = nullptr;
    } else if (w == "clbrdrt")
        m_border = &m_cellDef.sides[Top];
    else if (w == "clbrdrl")
        m_border = &m_cellDef.sides[Left];
    else if (w == "clbrdrb")
        m_border = &m_cellDef.sides[Bottom];
    else if (w == "clbrdrr")
        m_border = &m_cellDef.sides[Right];
    else if (w == "trbrdrt")
        m_border = &m_rowDef.sides[Top];
    else if (w == "trbrdrl")
        m_border = &m_rowDef.sides[Left];
    else if (w == "trbrdrb")
        m_border = &m_rowDef.sides[Bottom];
    else if (w == "trbrdrr")
        m_border = &m_rowDef.sides[Right];
    else if (w == "trbrdrh")
        m_border = &m_rowDef.sides[InnerHorizontal];
    else if (w == "trbrdrv")
        m_border = &m_rowDef.sides[InnerVertical];
    else if (w == "clvertalt")
        m_cellDef.vertical = QTextCharFormat::AlignTop;
    else if (w == "clvertalc")
        m_cellDef.vertical = QTextCharFormat::AlignMiddle;
    else if (w == "clvertalb")
        m_cellDef.vertical = QTextCharFormat::AlignBottom;
    else if (w == "clmgf")
        m_cellDef.mergeFirst = true;
    else if (w == "clmrg")
        m_cellDef.mergeNext = true;
    else if (w == "clvmgf")
        m_cellDef.verticalFirst = true;
    else if (w == "clvmrg")
        m_cellDef.verticalNext = true;
    else if (w == "clcbpat")
        m_cellDef.shading = n;
    else if (w.startsWith("brdr")) {
        if (!m_border)
            return true;
        Border &b = *m_border;
        if (w == "brdrw") {
            b.width = std::max(0, n);
        } else if (w == "brdrcf") {
            b.colour = n;
        } else if (w == "brdrsp" || w == "brdrframe") {
            // spacing and frame hints change nothing on a page this simple
        } else {
            b.given = true;
            if (w == "brdrnone" || w == "brdrnil" || w == "brdrtbl")
                b.style = QTextFrameFormat::BorderStyle_None;
            else if (w == "brdrdb" || w == "brdrtriple")
                b.style = QTextFrameFormat::BorderStyle_Double;
            else if (w == "brdrdot")
                b.style = QTextFrameFormat::BorderStyle_Dotted;
            else if (w.startsWith("brdrdash"))
                b.style = QTextFrameFormat::BorderStyle_Dashed;
            else
                b.style = QTextFrameFormat::BorderStyle_Solid;
            if (w == "brdrth" && b.width == 0)
                b.width = 2 * DefaultBorderWidth;
        }
    } else {
        return false;
    }
    return true;
}

QTextCharFormat Reader::charFormat(const CharState &c)
{
    if (m_cacheValid && c == m_cachedState)
        return m_cachedFormat;
    FontEntry font = m_fonts.value(c.font >= 0 ? c.font : m_defaultFont);
    if (font.name.isEmpty() && c.font >= 0 && !m_fonts.contains(c.font))
        font = m_fonts.value(m_defaultFont);
    QStringList families;
    if (!font.name.isEmpty())
        families.append(font.name);
    if (!font.generic.isEmpty())
        families.append(font.generic);
    if (families.isEmpty())
        families.append(QStringLiteral("serif"));

    QTextCharFormat f;
    f.setFontFamilies(families);
    f.setFontStyleHint(font.hint == QFont::AnyStyle && font.generic.isEmpty() ? QFont::Serif : font.hint);
    f.setFontPointSize(c.halfPoints / 2.0);
    f.setFontWeight(c.bold ? QFont::Bold : QFont::Normal);
    f.setFontItalic(c.italic);
    f.setFontUnderline(c.underline);
    f.setFontStrikeOut(c.strike);
    if (const QColor colour = this->colour(c.colour); colour.isValid())
        f.setForeground(colour);
    if (c.vertical != 0)
        f.setVerticalAlignment(c.vertical > 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
    m_cachedState = c;
    m_cachedFormat = f;
    m_cacheValid = true;
    return f;
}

QTextBlockFormat Reader::blockFormat(const ParaState &p) const
{
    QTextBlockFormat b;
    b.setAlignment(p.alignment);
    b.setLeftMargin(fromTwips(std::max(0, p.leftIndent)));
    b.setRightMargin(fromTwips(std::max(0, p.rightIndent)));
    b.setTextIndent(fromTwips(p.firstIndent));
    b.setTopMargin(fromTwips(std::max(0, p.spaceBefore)));
    b.setBottomMargin(fromTwips(std::max(0, p.spaceAfter)));
    if (p.pageBreakBefore)
        b.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    if (!p.tabs.isEmpty())
        b.setTabPositions(p.tabs);
    if (p.lineSpacing > 0 && p.lineMultiple)
        b.setLineHeight(p.lineSpacing * 100.0 / 240.0, QTextBlockFormat::ProportionalHeight);
    else if (p.lineSpacing > 0)
        b.setLineHeight(fromTwips(p.lineSpacing), QTextBlockFormat::MinimumHeight);
    else if (p.lineSpacing < 0)
        b.setLineHeight(fromTwips(-p.lineSpacing), QTextBlockFormat::FixedHeight);
    return b;
}

Paragraph Reader::takeParagraph()
{
    const GroupState &g = m_stack.last();
    Paragraph p{blockFormat(g.para), charFormat(g.chars), std::move(m_runs)};
    m_runs.clear();
    return p;
}

void Reader::endParagraph()
{
    if (m_stack.last().para.inTable) {
        m_cell.paragraphs.append(takeParagraph());
        return;
    }
    const Paragraph p = takeParagraph();
    closeTable();
    emitTopParagraph(p);
}

void Reader::pageBreak()
{
    if (m_stack.last().para.inTable)
        return;
    // the break belongs in front of what follows; text before it stays on this page
    if (!m_runs.isEmpty())
        endParagraph();
    else
        closeTable();
    m_pageBreak = true;
}

void Reader::endCell()
{
    m_cell.paragraphs.append(takeParagraph());
    m_cells.append(std::move(m_cell));
    m_cell = Cell();
}

void Reader::endRow()
{
    m_runs.clear();
    m_cell = Cell();
    if (m_cells.isEmpty() && m_rowDef.cells.isEmpty())
        return;
    m_table.append(Row{m_rowDef, std::move(m_cells)});
    m_cells.clear();
}

void Reader::closeTable()
{
    if (!m_cells.isEmpty())
        endRow();   // cells the document never closed with \row
    if (!m_table.isEmpty())
        emitTable(m_table);
    m_table.clear();
    const QList<Paragraph> stray = std::exchange(m_cell.paragraphs, {});
    for (const Paragraph &p : stray)
        emitTopParagraph(p);
}

void Reader::finish()
{
    if (!m_runs.isEmpty())
        endParagraph();
    closeTable();
}

void Reader::emitParagraph(QTextCursor &cursor, const Paragraph &p, bool reuseBlock)
{
    if (reuseBlock) {
        cursor.setBlockFormat(p.block);
        cursor.setBlockCharFormat(p.mark);
    } else {
        cursor.insertBlock(p.block, p.mark);
    }
    for (const Run &run : p.runs)
        cursor.insertText(run.text, run.format);
}

void Reader::emitTopParagraph(const Paragraph &p)
{
    Paragraph paragraph = p;
    if (std::exchange(m_pageBreak, false))
        paragraph.block.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    // Qt lays out an empty block next to a table as nothing; in RTF it is a blank line.
    // A background (none) keeps it before a table, an invisible character after one.
    const bool empty = paragraph.runs.isEmpty();
    if (empty)
        paragraph.block.setBackground(QBrush());
    emitParagraph(m_cursor, paragraph, m_fresh);
    if (empty && m_afterTable)
        m_cursor.insertText(QString(QChar(0x200B)), paragraph.mark);
    m_fresh = false;
    m_afterTable = false;
}

void Reader::emitTable(const QList<Row> &source)
{
    // Every row brings its own cell edges; the table's columns are the union of them all,
    // and each cell spans the columns between its edges.
    QList<Row> rows;
    QList<QList<int>> rowEdges;
    QList<int> edges;
    for (Row row : source) {
        const int width = int(textWidthTwips());
        while (row.def.cells.size() < row.cells.size()) {
            const int last = row.def.cells.isEmpty() ? row.def.left : row.def.cells.last().right;
            CellDef extra;
            extra.right = last + std::max(360, (width - last) / int(row.cells.size() - row.def.cells.size()));
            row.def.cells.append(extra);
        }
        while (row.cells.size() < row.def.cells.size())
            row.cells.append(Cell());
        QList<int> own{row.def.left};
        for (const CellDef &cell : std::as_const(row.def.cells))
            own.append(std::max(cell.right, own.last() + 1));
        edges.append(own);
        rowEdges.append(own);
        rows.append(row);
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    const int columns = int(edges.size()) - 1;
    if (rows.isEmpty() || columns < 1)
        return;

    const double tableWidth = edges.last() - edges.first();
    QTextTableFormat format;
    format.setBorderCollapse(true);
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(0);
    format.setMargin(0);
    format.setPadding(0);
    format.setAlignment(rows.first().def.alignment);
    const double textWidth = textWidthTwips();
    const double indent = rows.first().def.alignment == Qt::AlignLeft ? std::max(0, edges.first()) : 0;
    if (indent > 0)
        format.setLeftMargin(fromTwips(indent));
    format.setWidth(QTextLength(QTextLength::PercentageLength, std::min(100.0, tableWidth * 100.0 / (textWidth - indent))));
    QList<QTextLength> widths;
    for (int c = 0; c < columns; ++c)
        widths.append(QTextLength(QTextLength::PercentageLength, (edges.at(c + 1) - edges.at(c)) * 100.0 / tableWidth));
    format.setColumnWidthConstraints(widths);
    int headers = 0;
    while (headers < rows.size() && rows.at(headers).def.header)
        ++headers;
    if (headers > 0 && headers < rows.size())
        format.setHeaderRowCount(headers);
    if (std::exchange(m_pageBreak, false))
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);

    QTextTable *table = m_cursor.insertTable(int(rows.size()), columns, format);

    struct Placed
    {
        int row;
        int column;
        int columns;
        int rows = 1;
        CellDef def;
        const Cell *content;
        bool covered = false;
    };
    QList<Placed> placed;
    QHash<int, int> openVertical;   // column -> the placed cell a vertical merge started at
    for (int r = 0; r < rows.size(); ++r) {
        const Row &row = rows.at(r);
        const QList<int> &own = rowEdges.at(r);
        int previous = -1;
        QHash<int, int> stillOpen;
        for (int c = 0; c < row.def.cells.size(); ++c) {
            const int column = int(edges.indexOf(own.at(c)));
            const int span = int(edges.indexOf(own.at(c + 1))) - column;
            const CellDef &def = row.def.cells.at(c);
            if (def.mergeNext && previous >= 0) {
                placed[previous].columns += span;
                placed[previous].def.sides[Right] = def.sides[Right];
                continue;
            }
            Placed p{r, column, span, 1, def, &row.cells.at(c)};
            if (def.verticalNext && openVertical.contains(column)) {
                Placed &origin = placed[openVertical.value(column)];
                ++origin.rows;
                origin.def.sides[Bottom] = def.sides[Bottom];
                p.covered = true;
                stillOpen.insert(column, openVertical.value(column));
            }
            placed.append(p);
            previous = int(placed.size()) - 1;
            if (def.verticalFirst)
                stillOpen.insert(column, previous);
        }
        openVertical = stillOpen;
    }

    for (const Placed &p : std::as_const(placed)) {
        if (p.covered)
            continue;
        const RowDef &def = rows.at(p.row).def;
        const bool firstColumn = p.column == 0;
        const bool lastColumn = p.column + p.columns == columns;
        // the cell's own border, else the row's for that edge
        const auto side = [&](Side s) {
            if (p.def.sides[s].given)
                return p.def.sides[s];
            switch (s) {
            case Left:
                return def.sides[firstColumn ? Left : InnerVertical];
            case Right:
                return def.sides[lastColumn ? Right : InnerVertical];
            case Top:
                return def.sides[def.sides[Top].given || p.row == 0 ? Top : InnerHorizontal];
            default:
                return def.sides[def.sides[Bottom].given || p.row + p.rows == rows.size() ? Bottom : InnerHorizontal];
            }
        };
        // The cell's format is the character format of its first block's mark as well: it
        // carries the font of that mark, and setting the mark later would wipe the cell's.
        QTextTableCellFormat cf;
        const QList<Paragraph> &paragraphs = p.content->paragraphs;
        if (!paragraphs.isEmpty())
            cf.merge(paragraphs.first().mark);
        const auto apply = [&](Side s, auto setWidth, auto setStyle, auto setBrush) {
            const Border b = side(s);
            const bool drawn = b.given && b.style != QTextFrameFormat::BorderStyle_None;
            const int twips = b.width > 0 ? b.width : DefaultBorderWidth;
            (cf.*setWidth)(drawn ? fromTwips(b.style == QTextFrameFormat::BorderStyle_Double ? 3 * twips : twips) : 0);
            (cf.*setStyle)(drawn ? b.style : QTextFrameFormat::BorderStyle_None);
            const QColor c = colour(b.colour);
            (cf.*setBrush)(QBrush(c.isValid() ? c : QColor(Qt::black)));
        };
        apply(Top, &QTextTableCellFormat::setTopBorder, &QTextTableCellFormat::setTopBorderStyle,
              &QTextTableCellFormat::setTopBorderBrush);
        apply(Left, &QTextTableCellFormat::setLeftBorder, &QTextTableCellFormat::setLeftBorderStyle,
              &QTextTableCellFormat::setLeftBorderBrush);
        apply(Bottom, &QTextTableCellFormat::setBottomBorder, &QTextTableCellFormat::setBottomBorderStyle,
              &QTextTableCellFormat::setBottomBorderBrush);
        apply(Right, &QTextTableCellFormat::setRightBorder, &QTextTableCellFormat::setRightBorderStyle,
              &QTextTableCellFormat::setRightBorderBrush);
        cf.setLeftPadding(fromTwips(def.gap));
        cf.setRightPadding(fromTwips(def.gap));
        cf.setTopPadding(0);
        cf.setBottomPadding(0);
        cf.setVerticalAlignment(p.def.vertical);
        if (const QColor shade = colour(p.def.shading); shade.isValid())
            cf.setBackground(shade);
        // format first: the spans that merging records live in the same format
        table->cellAt(p.row, p.column).setFormat(cf);
        if (p.rows > 1 || p.columns > 1)
            table->mergeCells(p.row, p.column, p.rows, p.columns);

        QTextCursor cursor = table->cellAt(p.row, p.column).firstCursorPosition();
        for (qsizetype k = 0; k < paragraphs.size(); ++k) {
            const Paragraph &paragraph = paragraphs.at(k);
            if (k == 0)
                cursor.setBlockFormat(paragraph.block);
            else
                cursor.insertBlock(paragraph.block, paragraph.mark);
            for (const Run &run : paragraph.runs)
                cursor.insertText(run.text, run.format);
        }
    }

    m_cursor.movePosition(QTextCursor::End);
    m_fresh = true;
    m_afterTable = true;
}

} // namespace

namespace RtfRenderer {

Rendered render(const QByteArray &rtf)
{
    return Reader(rtf).run();
}

int paint(QTextDocument *document, QPagedPaintDevice *device)
{
    if (!document || !device)
        return 0;
    const QSizeF page = document->pageSize();
    if (page.width() <= 0 || page.height() <= 0 || device->width() <= 0 || device->height() <= 0)
        return 0;
    QPainter painter;
    if (!painter.begin(device))
        return 0;
    // the document is laid out at layoutDpi(); scale it onto the device's printable area
    const double scale = std::min(device->width() / page.width(), device->height() / page.height());
    QAbstractTextDocumentLayout *layout = document->documentLayout();
    const int pages = document->pageCount();
    for (int p = 0; p < pages; ++p) {
        if (p > 0 && !device->newPage()) {
            painter.end();
            return p;
        }
        const QRectF area(0, p * page.height(), page.width(), page.height());
        painter.save();
        painter.scale(scale, scale);
        painter.translate(0, -area.top());
        painter.setClipRect(area);
        QAbstractTextDocumentLayout::PaintContext context;
        // a hair inside the page, or a block starting right at the edge is drawn (clipped,
        // but still in the PDF's text) on the page before it too
        context.clip = area.adjusted(0, 0.01, 0, -0.01);
        context.palette.setColor(QPalette::Text, Qt::black);
        layout->draw(&painter, context);
        painter.restore();
    }
    painter.end();
    return pages;
}

} // namespace RtfRenderer
