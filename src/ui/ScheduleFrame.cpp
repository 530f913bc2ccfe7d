#include "ui/ScheduleFrame.h"

#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormLayout.h"
#include "ui/ScheduleGrid.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

ScheduleFrame::ScheduleFrame(const ScheduleLayout &schedule, const QList<QStringList> &rows,
                             std::function<bool(const QList<QStringList> &)> store, QWidget *parent)
    : FormWindow(parent), m_store(std::move(store))
{
    setObjectName(QStringLiteral("famsch"));
    setWindowTitle(schedule.title);
    auto *layout = new QVBoxLayout(this);
    auto *caption = new QLabel(schedule.title, this);
    caption->setObjectName(QStringLiteral("lblcap"));
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    layout->addWidget(caption);
    m_grid = new ScheduleGrid(this);
    m_grid->setFieldBehaviour(fieldBehaviour());
    m_grid->setDataObject(modbase::dataObject());
    m_grid->setSchedule(schedule);
    m_grid->setRows(rows);
    layout->addWidget(m_grid, 1);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    QPushButton *add = FormLayout::button(this, "cmdaddrow", QStringLiteral("&Add Row"));
    QPushButton *remove = FormLayout::button(this, "cmddelrow", QStringLiteral("&Delete Row"));
    QPushButton *back = FormLayout::button(this, "cmdbackSch", QStringLiteral("&Back"));
    row->addWidget(add);
    row->addWidget(remove);
    row->addWidget(back);
    layout->addLayout(row);
    connect(add, &QPushButton::clicked, m_grid, &ScheduleGrid::addRow);
    connect(remove, &QPushButton::clicked, m_grid, &ScheduleGrid::deleteRow);
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    resize(960, 420);
}

bool ScheduleFrame::confirmClose()
{
    // Back and Escape store the schedule; a failed store keeps the rows on screen.
    return m_store(m_grid->rows());
}
