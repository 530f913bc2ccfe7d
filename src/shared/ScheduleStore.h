#pragma once
// Loads and replaces the detail rows of one schedule of one form, with no widget involved.
#include "shared/ScheduleLayout.h"

#include <QList>
#include <QStringList>

class IDataObject;

namespace ScheduleStore {

// The rows in Srno order, data columns only, amounts shown "###0.00". A failed read throws
// TdsError with the server's message: it must never look like an empty schedule.
QList<QStringList> load(IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId);

// The statements store() runs: the delete, then one insert of every row, numbered from 1.
QStringList statements(const IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId,
                       const QList<QStringList> &rows);

// Replaces the rows in one transaction; on failure throws TdsError and the old rows stay.
void store(IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId,
           const QList<QStringList> &rows);

} // namespace ScheduleStore
