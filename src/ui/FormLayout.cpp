#include "ui/FormLayout.h"

#include <QFont>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace FormLayout {

QBoxLayout *centredPanel(QWidget *window, const QString &formNumber, const QString &description, QFrame **frame)
{
    auto *outer = new QGridLayout(window);
    auto *panel = new QFrame(window);
    panel->setObjectName(QStringLiteral("Frame1"));
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setFrameShadow(QFrame::Raised);
    // The panel stays in the middle and takes most of the width, so fields widen with the window.
    outer->addWidget(panel, 1, 1);
    outer->setRowStretch(0, 1);
    outer->setRowStretch(2, 1);
    outer->setColumnStretch(0, 1);
    outer->setColumnStretch(1, 12);
    outer->setColumnStretch(2, 1);

    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(10);

    auto *number = new QLabel(formNumber, panel);
    number->setObjectName(QStringLiteral("lblFormNo"));
    QFont big = number->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.25);
    number->setFont(big);
    number->setAlignment(Qt::AlignHCenter);
    layout->addWidget(number);

    auto *heading = new QLabel(description, panel);
    heading->setObjectName(QStringLiteral("lblHeading"));
    heading->setWordWrap(true);
    heading->setAlignment(Qt::AlignHCenter);
    layout->addWidget(heading);

    auto *rule = new QFrame(panel);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    layout->addWidget(rule);

    if (frame)
        *frame = panel;
    return layout;
}

QPushButton *button(QWidget *parent, const char *objectName, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(objectName));
    b->setAutoDefault(false);
    b->setMinimumWidth(96);
    return b;
}

QLabel *addButtonRow(QBoxLayout *panel, std::initializer_list<QPushButton *> buttons)
{
    auto *rule = new QFrame(panel->parentWidget());
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    panel->addWidget(rule);
    auto *row = new QHBoxLayout;
    auto *status = new QLabel(panel->parentWidget());
    status->setObjectName(QStringLiteral("lblStatus"));
    row->addWidget(status, 1);
    for (QPushButton *b : buttons)
        row->addWidget(b);
    panel->addLayout(row);
    return status;
}

} // namespace FormLayout
