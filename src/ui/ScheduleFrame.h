#pragma once
// One schedule of a record over its form: the grid vsf with its title lblcap and the
// buttons cmdaddrow, cmddelrow and cmdbackSch. Leaving it (Back or Escape) stores the
// grid; nothing is asked.
#include "shared/ScheduleLayout.h"
#include "ui/FormWindow.h"

class ScheduleGrid;

class ScheduleFrame : public FormWindow
{
    Q_OBJECT
public:
    // store: writes the grid's rows; false (and the reason said) keeps the frame open.
    ScheduleFrame(const ScheduleLayout &schedule, const QList<QStringList> &rows,
                  std::function<bool(const QList<QStringList> &)> store, QWidget *parent);

    ScheduleGrid *grid() const { return m_grid; }

protected:
    bool confirmClose() override;

private:
    ScheduleGrid *m_grid = nullptr;
    std::function<bool(const QList<QStringList> &)> m_store;
};
