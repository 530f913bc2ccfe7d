#pragma once
// Rich text read into a QTextDocument, so that the report object shows, prints and writes
// PDF of a filled template itself instead of handing a file to another program.
#include <QByteArray>
#include <QPageLayout>
#include <QString>
#include <QTextDocument>

#include <memory>

class QPagedPaintDevice;

namespace RtfRenderer {

// Lengths in the documents built here (page, margins, indents, padding, borders) are in
// the pixels QTextDocument lays out in when it has no device of its own: the screen's
// logical resolution. Painting scales them to the device.
double layoutDpi();
double fromTwips(double twips);

struct Rendered
{
    std::unique_ptr<QTextDocument> document;   // paginated: its page size is the text area
    QPageLayout page;                          // paper and margins the document asks for
};

Rendered render(const QByteArray &rtf);

// Paints every page on a device whose page layout is already set (normally to
// Rendered::page); returns the number of pages, 0 when the device cannot be painted.
int paint(QTextDocument *document, QPagedPaintDevice *device);

} // namespace RtfRenderer
