#include "host/report/ReportLayout.h"

#include "host/report/RtfDocument.h"

#include <algorithm>

bool ReportBand::isCorner(int position) const
{
    return above.contains(position) || below.contains(position);
}

QString ReportBand::toText() const
{
    QString line;
    if (kind == Text) {
        line.reserve(chars.size());
        for (const StyledChar &c : chars)
            line.append(c.ch);
        for (int p : verticals) {
            if (p >= 0 && p < line.size())
                line[p] = QLatin1Char('|');
        }
    } else {
        line.fill(QLatin1Char(' '), segments.size());
        for (int p = 0; p < segments.size(); ++p) {
            if (segments.at(p))
                line[p] = isCorner(p) ? QLatin1Char('+') : QLatin1Char('-');
            else if (above.contains(p) && below.contains(p))
                line[p] = QLatin1Char('|');
        }
    }
    int end = int(line.size());
    while (end > 0 && line.at(end - 1) == QLatin1Char(' '))
        --end;
    line.truncate(end);
    return line;
}

QStringList ReportLayout::lines() const
{
    QStringList out;
    for (const LaidRow &row : rows) {
        for (const ReportBand &band : row.bands)
            out.append(band.toText());
    }
    return out;
}

QByteArray ReportLayout::rtf() const
{
    // A 78-position row fits an A4 page between half-inch margins in 9-point Courier.
    QByteArray out = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}"
                     "\\paperw11906\\paperh16838\\margl720\\margr720\\margt720\\margb720\n";
    out += width > ReportModel::NarrowWidth ? "\\f0\\fs11\n" : "\\f0\\fs18\n";
    for (const LaidRow &row : rows) {
        for (const ReportBand &band : row.bands) {
            const QString line = band.toText();
            bool bold = false;
            bool underline = false;
            QString run;
            const auto flush = [&] {
                out += rtfEscape(run);
                run.clear();
            };
            for (int p = 0; p < line.size(); ++p) {
                const StyledChar c = band.kind == ReportBand::Text && p < band.chars.size() ? band.chars.at(p) : StyledChar();
                if (c.bold != bold || c.underline != underline) {
                    flush();
                    if (c.bold != bold)
                        out += c.bold ? "\\b " : "\\b0 ";
                    if (c.underline != underline)
                        out += c.underline ? "\\ul " : "\\ulnone ";
                    bold = c.bold;
                    underline = c.underline;
                }
                run += line.at(p);
            }
            flush();
            if (bold)
                out += "\\b0 ";
            if (underline)
                out += "\\ulnone ";
            out += "\\par\n";
        }
    }
    out += "}\n";
    return out;
}

QString ReportLayout::text() const
{
    const QStringList all = lines();
    if (all.isEmpty())
        return QString();
    return all.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QList<StyledText> wrapStyledText(const StyledText &text, int firstWidth, int restWidth)
{
    QList<StyledText> out;
    const auto isBlank = [&](qsizetype i) { return text.at(i).ch == QLatin1Char(' '); };
    const qsizetype n = text.size();
    qsizetype pos = 0;
    int width = std::max(1, firstWidth);
    while (pos < n) {
        if (n - pos <= width) {
            out.append(text.mid(pos));
            break;
        }
        // the last blank that still lets the piece fit (a blank right after it counts too)
        qsizetype cut = -1;
        for (qsizetype i = pos + width; i > pos; --i) {
            if (isBlank(i)) {
                cut = i;
                break;
            }
        }
        qsizetype pieceEnd = cut;
        if (cut > pos) {
            while (pieceEnd > pos && isBlank(pieceEnd - 1))
                --pieceEnd;
        }
        qsizetype next;
        if (cut <= pos || pieceEnd == pos) {
            // one word longer than the line (or only an indent before it): cut it
            pieceEnd = pos + width;
            next = pieceEnd;
        } else {
            next = cut;
        }
        out.append(text.mid(pos, pieceEnd - pos));
        while (next < n && isBlank(next))
            ++next;
        pos = next;
        width = std::max(1, restWidth);
    }
    if (out.isEmpty())
        out.append(StyledText());
    return out;
}

namespace {

struct CellBox
{
    const ReportColumn *column = nullptr;
    int x = 0;
    int width = 0;
    int contentStart = 0;
    int contentEnd = 0;   // exclusive
};

QList<CellBox> cellBoxes(const QList<ReportColumn> &columns, int rowWidth)
{
    QList<CellBox> boxes;
    int x = 0;
    for (const ReportColumn &column : columns) {
        if (column.width <= 0)
            continue;
        if (x >= rowWidth)
            break;
        CellBox box;
        box.column = &column;
        box.x = x;
        box.width = std::min(column.width, rowWidth - x);
        boxes.append(box);
        x += column.width;
    }
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        CellBox &box = boxes[i];
        const ReportColumn &c = *box.column;
        int start = box.x + (c.left ? 2 : 0);
        int end = box.x + box.width - (c.right ? 2 : 0);
        const bool hasNext = i + 1 < boxes.size();
        if (hasNext && !c.right && !boxes.at(i + 1).column->left)
            end -= 1;
        if (end <= start) {
            // too narrow for its padding: give the text what lies inside the border lines
            start = box.x + (c.left ? 1 : 0);
            end = std::max(start, box.x + box.width - (c.right ? 1 : 0));
        }
        box.contentStart = start;
        box.contentEnd = end;
    }
    return boxes;
}

struct PlacedLine
{
    int offset = 0;   // from contentStart
    StyledText text;
};

QList<PlacedLine> layoutCell(const ReportColumn &column, int available)
{
    QList<PlacedLine> out;
    if (available <= 0)
        return out;
    const int hang = int(column.prefix.size());
    const int indent = (hang > 0 && hang < available) ? hang : 0;
    const QList<StyledText> paragraphs = parseCellText(column.text);
    for (qsizetype p = 0; p < paragraphs.size(); ++p) {
        const int first = p == 0 ? available : available - indent;
        const QList<StyledText> pieces = wrapStyledText(paragraphs.at(p), first, available - indent);
        for (const StyledText &piece : pieces) {
            PlacedLine line;
            line.offset = out.isEmpty() ? 0 : indent;
            const int room = available - line.offset;
            const int len = int(piece.size());
            switch (column.alignment) {
            case ReportAlignment::Centre:
                line.offset += std::max(0, (room - len) / 2);
                break;
            case ReportAlignment::Right:
                line.offset += std::max(0, room - len);
                break;
            case ReportAlignment::Left:
                break;
            }
            line.text = piece.mid(0, available - line.offset);
            out.append(line);
        }
    }
    return out;
}

ReportBand blankText(int width)
{
    ReportBand band;
    band.kind = ReportBand::Text;
    band.chars = StyledText(width);
    return band;
}

ReportBand blankRule(int width)
{
    ReportBand band;
    band.kind = ReportBand::Rule;
    band.segments = QList<bool>(width, false);
    return band;
}

LaidRow layoutParagraph(const QString &text, int width)
{
    LaidRow row;
    ReportColumn column;
    column.text = text;
    column.width = width;
    for (const PlacedLine &line : layoutCell(column, width)) {
        ReportBand band = blankText(width);
        for (qsizetype i = 0; i < line.text.size(); ++i)
            band.chars[line.offset + i] = line.text.at(i);
        row.bands.append(band);
    }
    return row;
}

LaidRow layoutRow(const ReportItem &item, int width)
{
    LaidRow row;
    const QList<CellBox> boxes = cellBoxes(item.columns, width);
    if (boxes.isEmpty())
        return row;

    QList<int> verticals;
    ReportBand top = blankRule(width);
    ReportBand bottom = blankRule(width);
    bool hasTop = false;
    bool hasBottom = false;
    QList<QList<PlacedLine>> cells;
    int height = 1;
    for (const CellBox &box : boxes) {
        const ReportColumn &c = *box.column;
        if (c.left)
            verticals.append(box.x);
        if (c.right)
            verticals.append(box.x + box.width - 1);
        for (int p = box.x; p < box.x + box.width; ++p) {
            if (c.top)
                top.segments[p] = true;
            if (c.bottom)
                bottom.segments[p] = true;
        }
        hasTop = hasTop || c.top;
        hasBottom = hasBottom || c.bottom;
        cells.append(layoutCell(c, box.contentEnd - box.contentStart));
        height = std::max(height, int(cells.last().size()));
    }
    std::sort(verticals.begin(), verticals.end());
    verticals.erase(std::unique(verticals.begin(), verticals.end()), verticals.end());

    if (hasTop)
        row.bands.append(top);
    for (int l = 0; l < height; ++l) {
        ReportBand band = blankText(width);
        band.verticals = verticals;
        for (qsizetype b = 0; b < boxes.size(); ++b) {
            if (l >= cells.at(b).size())
                continue;
            const PlacedLine &line = cells.at(b).at(l);
            const int start = boxes.at(b).contentStart + line.offset;
            for (qsizetype i = 0; i < line.text.size(); ++i)
                band.chars[start + i] = line.text.at(i);
        }
        row.bands.append(band);
    }
    if (hasBottom)
        row.bands.append(bottom);
    return row;
}

void mergeInto(ReportBand &target, const ReportBand &rule)
{
    for (qsizetype p = 0; p < target.segments.size() && p < rule.segments.size(); ++p)
        target.segments[p] = target.segments.at(p) || rule.segments.at(p);
}

} // namespace

ReportLayout layoutReport(const ReportModel &model)
{
    ReportLayout layout;
    layout.width = model.width();
    for (const ReportItem &item : model.items()) {
        LaidRow row;
        switch (item.kind) {
        case ReportItem::EmptyLine:
            row.bands.append(blankText(layout.width));
            break;
        case ReportItem::Paragraph:
            row = layoutParagraph(item.text, layout.width);
            break;
        case ReportItem::Row:
            row = layoutRow(item, layout.width);
            break;
        }
        if (row.bands.isEmpty())
            continue;
        // this row's top line and the bottom line above it are one line
        if (!layout.rows.isEmpty() && row.bands.first().kind == ReportBand::Rule) {
            ReportBand &previous = layout.rows.last().bands.last();
            if (previous.kind == ReportBand::Rule) {
                mergeInto(previous, row.bands.first());
                row.bands.removeFirst();
            }
        }
        layout.rows.append(row);
    }

    // where vertical borders meet each line, and the lines to repeat at a page top
    for (qsizetype r = 0; r < layout.rows.size(); ++r) {
        QList<ReportBand> &bands = layout.rows[r].bands;
        for (qsizetype b = 0; b < bands.size(); ++b) {
            if (bands.at(b).kind != ReportBand::Rule)
                continue;
            const ReportBand *up = nullptr;
            const ReportBand *down = nullptr;
            if (b > 0)
                up = &bands.at(b - 1);
            else if (r > 0)
                up = &layout.rows.at(r - 1).bands.last();
            if (b + 1 < bands.size())
                down = &bands.at(b + 1);
            else if (r + 1 < layout.rows.size())
                down = &layout.rows.at(r + 1).bands.first();
            ReportBand &rule = bands[b];
            rule.above = (up && up->kind == ReportBand::Text) ? up->verticals : QList<int>();
            rule.below = (down && down->kind == ReportBand::Text) ? down->verticals : QList<int>();
        }
    }
    for (qsizetype r = 1; r < layout.rows.size(); ++r) {
        const ReportBand &closing = layout.rows.at(r - 1).bands.last();
        LaidRow &row = layout.rows[r];
        if (closing.kind == ReportBand::Rule && row.bands.first().kind == ReportBand::Text) {
            ReportBand carried = closing;
            carried.above.clear();
            row.carried = {carried};
        }
    }
    return layout;
}
