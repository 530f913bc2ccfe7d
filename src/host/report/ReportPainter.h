#pragma once
// Draws a laid-out report on paged devices (PDF writer, printer, print preview): a
// monospaced font sized so the row width fills the printable width, borders as lines, and
// page breaks between rows.
#include "host/report/ReportLayout.h"

#include <QPageLayout>

class QPagedPaintDevice;

namespace ReportPainter {
QPageLayout a4Layout();
// Paints every page; returns the number of pages, or 0 when the device cannot be painted.
int paint(const ReportLayout &layout, QPagedPaintDevice *device);
} // namespace ReportPainter
