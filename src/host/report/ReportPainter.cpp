#include "host/report/ReportPainter.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPen>

#include <cmath>

namespace {

const char *const ReportFontFamily = "DejaVu Sans Mono";

struct Metrics
{
    double cellWidth = 0;
    double lineHeight = 0;
    double ruleHeight = 0;
    double ascent = 0;
    double underlinePos = 0;
    QFont fonts[2];      // regular, bold
    double stretch[2] = {1.0, 1.0};
};

// The largest size whose characters fit one grid cell, and the horizontal stretch that
// makes them exactly one cell wide (glyph advances come in whole-pixel sizes only).
QFont fittedFont(QFont font, double cellWidth, QPaintDevice *device, double *stretch)
{
    const auto advanceAt = [&](int pixels) {
        font.setPixelSize(pixels);
        return QFontMetricsF(font, device).horizontalAdvance(QLatin1Char('M'));
    };
    int pixels = std::max(1, int(cellWidth / 0.6));
    while (pixels > 1 && advanceAt(pixels) > cellWidth)
        --pixels;
    while (advanceAt(pixels + 1) <= cellWidth)
        ++pixels;
    const double advance = advanceAt(pixels);
    *stretch = advance > 0 ? cellWidth / advance : 1.0;
    return font;
}

Metrics metricsFor(QPaintDevice *device, int columns)
{
    Metrics m;
    m.cellWidth = double(device->width()) / std::max(1, columns);
    QFont base{QString::fromLatin1(ReportFontFamily)};
    base.setStyleHint(QFont::TypeWriter);
    base.setFixedPitch(true);
    base.setKerning(false);
    if (!QFontInfo(base).fixedPitch())
        base = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    base.setHintingPreference(QFont::PreferNoHinting);
    for (int bold = 0; bold < 2; ++bold) {
        QFont f = base;
        f.setBold(bold != 0);
        m.fonts[bold] = fittedFont(f, m.cellWidth, device, &m.stretch[bold]);
    }
    const QFontMetricsF fm(m.fonts[0], device);
    m.underlinePos = fm.underlinePos();
    m.lineHeight = fm.height();
    m.ascent = fm.ascent();
    m.ruleHeight = m.lineHeight / 2;
    return m;
}

class PageWriter
{
public:
    PageWriter(QPainter &painter, QPagedPaintDevice *device, const Metrics &m)
        : m_painter(painter), m_device(device), m_m(m), m_pageHeight(device->height())
    {
    }

    int pages() const { return m_pages; }
    double height(const ReportBand &band) const
    {
        return band.kind == ReportBand::Text ? m_m.lineHeight : m_m.ruleHeight;
    }
    double height(const QList<ReportBand> &bands) const
    {
        double h = 0;
        for (const ReportBand &b : bands)
            h += height(b);
        return h;
    }
    bool atPageTop() const { return m_y <= 0; }
    bool fits(double h) const { return m_y + h <= m_pageHeight + 0.5; }

    void newPage()
    {
        m_device->newPage();
        ++m_pages;
        m_y = 0;
        m_previous = nullptr;
    }

    void draw(const ReportBand &band)
    {
        if (!atPageTop() && !fits(height(band)))
            newPage();
        if (band.kind == ReportBand::Text)
            drawText(band);
        else
            drawRule(band);
        m_previous = &band;
        m_previousTop = m_y;
        m_y += height(band);
    }

private:
    double centre(int position) const { return (position + 0.5) * m_m.cellWidth; }

    void drawText(const ReportBand &band)
    {
        const int n = int(band.chars.size());
        const auto shown = [&](int i) {
            return band.verticals.contains(i) ? QLatin1Char(' ') : band.chars.at(i).ch;
        };
        // Each word is placed on its own grid position: glyph advances differ slightly
        // between measuring and the PDF, and over a whole line that adds up to a column.
        int i = 0;
        while (i < n) {
            if (shown(i) == QLatin1Char(' ')) {
                ++i;
                continue;
            }
            const StyledChar &first = band.chars.at(i);
            int end = i + 1;
            while (end < n && shown(end) != QLatin1Char(' ') && band.chars.at(end).bold == first.bold)
                ++end;
            QString word;
            for (int k = i; k < end; ++k)
                word.append(shown(k));
            const int weight = first.bold ? 1 : 0;
            m_painter.save();
            m_painter.translate(i * m_m.cellWidth, m_y + m_m.ascent);
            m_painter.scale(m_m.stretch[weight], 1.0);
            m_painter.setFont(m_m.fonts[weight]);
            m_painter.drawText(QPointF(0, 0), word);
            m_painter.restore();
            i = end;
        }
        // underlines as lines, so they run on under the blanks between words
        i = 0;
        while (i < n) {
            if (!band.chars.at(i).underline) {
                ++i;
                continue;
            }
            int end = i + 1;
            while (end < n && band.chars.at(end).underline)
                ++end;
            const double y = m_y + m_m.ascent + m_m.underlinePos;
            m_painter.drawLine(QPointF(i * m_m.cellWidth, y), QPointF(end * m_m.cellWidth, y));
            i = end;
        }
        const bool ruleAbove = m_previous && m_previous->kind == ReportBand::Rule;
        for (int v : band.verticals) {
            double top = m_y;
            if (ruleAbove && m_previous->below.contains(v))
                top = m_previousTop + m_m.ruleHeight / 2;
            m_painter.drawLine(QPointF(centre(v), top), QPointF(centre(v), m_y + m_m.lineHeight));
        }
    }

    void drawRule(const ReportBand &band)
    {
        const double middle = m_y + m_m.ruleHeight / 2;
        if (m_previous && m_previous->kind == ReportBand::Text) {
            for (int v : band.above)
                m_painter.drawLine(QPointF(centre(v), m_y), QPointF(centre(v), middle));
        }
        const int n = int(band.segments.size());
        int p = 0;
        while (p < n) {
            if (!band.segments.at(p)) {
                ++p;
                continue;
            }
            int last = p;
            while (last + 1 < n && band.segments.at(last + 1))
                ++last;
            // a line ends on the border it meets, not half a cell past it
            const double x1 = band.isCorner(p) ? centre(p) : p * m_m.cellWidth;
            const double x2 = band.isCorner(last) ? centre(last) : (last + 1) * m_m.cellWidth;
            m_painter.drawLine(QPointF(x1, middle), QPointF(x2, middle));
            p = last + 1;
        }
    }

    QPainter &m_painter;
    QPagedPaintDevice *m_device;
    const Metrics &m_m;
    double m_pageHeight;
    double m_y = 0;
    int m_pages = 1;
    const ReportBand *m_previous = nullptr;
    double m_previousTop = 0;
};

} // namespace

namespace ReportPainter {

QPageLayout a4Layout()
{
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                       QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
}

int paint(const ReportLayout &layout, QPagedPaintDevice *device)
{
    QPainter painter;
    if (!device || !painter.begin(device))
        return 0;
    const Metrics m = metricsFor(device, layout.width);
    QPen pen(Qt::black);
    pen.setWidthF(device->logicalDpiY() / 72.0 * 0.6);
    pen.setCapStyle(Qt::SquareCap);
    painter.setPen(pen);
    painter.setRenderHint(QPainter::Antialiasing);

    PageWriter writer(painter, device, m);
    for (qsizetype r = 0; r < layout.rows.size(); ++r) {
        const LaidRow &row = layout.rows.at(r);
        const double h = writer.height(row.bands);
        // rows stay whole; only a row taller than a page is split between its lines
        if (!writer.atPageTop() && !writer.fits(h))
            writer.newPage();
        if (writer.atPageTop() && r > 0) {
            for (const ReportBand &band : row.carried)
                writer.draw(band);
        }
        for (const ReportBand &band : row.bands)
            writer.draw(band);
    }
    const int pages = writer.pages();
    painter.end();
    return pages;
}

} // namespace ReportPainter
