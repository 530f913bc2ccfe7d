#pragma once
// The detail rows of one schedule of a form: a fixed "Sl. No." column, then the data
// columns of the schedule. Enter moves on like Tab and leaves the grid after the last cell;
// a finished cell is normalised ("Nil", "###0.00", dates) the way the form stores it.
#include "shared/ScheduleLayout.h"

#include <QPointer>
#include <QTableWidget>

class FieldBehaviour;
class IDataObject;

class ScheduleGrid : public QTableWidget
{
    Q_OBJECT
public:
    explicit ScheduleGrid(QWidget *parent = nullptr);

    static QString serialHeading();   // "Sl. No."

    // Sets the grid up afresh for the schedule, with no rows.
    void setSchedule(const ScheduleLayout &layout);
    const ScheduleLayout &scheduleLayout() const { return m_layout; }

    // Rows hold the data columns only; the serial column is the grid's own.
    void setRows(const QList<QStringList> &rows);
    QList<QStringList> rows() const;

    // Appends a row and puts the cursor in its first data cell.
    void addRow();
    // Removes the current row; the rest are numbered again.
    void deleteRow();

    // The cell being typed in, if any, taken into the grid (a shortcut saves without leaving it).
    void finishEditing();

    // Rows shown but not edited (a record being browsed).
    void setReadOnly(bool readOnly);
    bool isReadOnly() const { return editTriggers() == QAbstractItemView::NoEditTriggers; }

    // Cell editors share the window's entry behaviour (focus colour, capitals).
    void setFieldBehaviour(FieldBehaviour *behaviour);
    FieldBehaviour *fieldBehaviour() const { return m_behaviour; }

    // Dates are normalised by the data object's convertdate; without one they stay as typed.
    void setDataObject(const IDataObject *data) { m_data = data; }
    const IDataObject *dataObject() const { return m_data; }

    // What a finished edit of grid column `column` leaves in the cell.
    QString normalised(int column, const QString &text) const;

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    // The data cell after (before) index, or an invalid index past the last (first) one.
    QModelIndex neighbour(const QModelIndex &index, bool next) const;
    bool leaveGrid(bool next);
    QTableWidgetItem *makeItem(int column, const QString &text) const;
    void renumber();
    void fitColumns();

    ScheduleLayout m_layout;
    QPointer<FieldBehaviour> m_behaviour;
    const IDataObject *m_data = nullptr;
};
