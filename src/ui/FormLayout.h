#pragma once
// Building blocks of the small statutory form windows: the centred panel Frame1 with the
// form's heading, and the bottom row of buttons.
#include <QString>

class QBoxLayout;
class QFrame;
class QLabel;
class QPushButton;
class QWidget;

namespace FormLayout {

// Frame1, centred in the window whatever its size; returns the panel's own layout, which
// already holds the heading (form number in bold, then the statutory description).
QBoxLayout *centredPanel(QWidget *window, const QString &formNumber, const QString &description,
                         QFrame **frame = nullptr);

// A push button with its object name and captioned with an access key ("&Save").
QPushButton *button(QWidget *parent, const char *objectName, const QString &caption);

// The buttons right-aligned at the bottom of the panel; returns the status line on their left.
QLabel *addButtonRow(QBoxLayout *panel, std::initializer_list<QPushButton *> buttons);

} // namespace FormLayout
