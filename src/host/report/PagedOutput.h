#pragma once
// PDF files of anything that paints itself page by page (line reports, rendered documents).
#include <QPageLayout>
#include <QString>

#include <functional>

class QPagedPaintDevice;

namespace PagedOutput {

// Paints every page on the device; returns the number of pages, 0 on failure.
using PaintPages = std::function<int(QPagedPaintDevice *)>;

// Writes a PDF into an existing folder; a missing folder is a failure, never created here.
// False (with a warning) when nothing usable was written.
bool writePdf(const QString &path, const QPageLayout &page, const QString &title, const PaintPages &paint);

} // namespace PagedOutput
