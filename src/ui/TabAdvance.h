#pragma once
// Enter after the last field of a tab page goes on to the next page, so an operator walks a
// tabbed dialog field by field instead of landing on its buttons.
class QWidget;

namespace TabAdvance {

// When field is the last focusable field of a QTabWidget page and a next page exists: runs
// the field's leave check, switches to that page and focuses its first field. True when the
// key was taken (moved on, or kept in the refused field).
bool moveToNextPage(QWidget *field);

// The page of a QTabWidget that holds the widget, or null.
QWidget *pageOf(const QWidget *widget);

} // namespace TabAdvance
