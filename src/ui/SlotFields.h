#pragma once
// The widgets of a slot table: one editor per slot, named "<array>_<index>" (or the
// slot's own name), with its caption as a buddy label, its kind's typing and leave rules,
// and its value read and written as text in slot order.
#include "shared/Slot.h"

#include <QHash>
#include <QList>
#include <QObject>

class FormWindow;
class IDataObject;
class QCheckBox;
class QFormLayout;
class QLabel;
class QWidget;

class SlotFields : public QObject
{
    Q_OBJECT
public:
    SlotFields(const QString &arrayName, SlotTable table, QWidget *parent);

    // Leave checks through the window's field behaviour; refusals through its dialogs.
    void bind(FormWindow *window, const IDataObject *data);

    int count() const { return int(m_slots.size()); }
    const Slot &slot(int index) const { return m_slots.at(index); }
    QWidget *widget(int index) const { return m_widgets.value(index); }
    QLabel *label(int index) const { return m_labels.value(index); }
    int indexOf(const QWidget *widget) const;
    // The boxes of a check-box group slot, wherever a window has placed them.
    QList<QCheckBox *> checkBoxes(int index) const { return m_boxes.value(index); }

    QString value(int index) const;
    void setValue(int index, const QString &text);
    QStringList values() const;
    void setValues(const QStringList &values);
    void clear();
    void setReadOnly(bool readOnly);

    // Label and editor rows for the slots from..to (inclusive; -1: the last).
    void addRows(QFormLayout *layout, int from = 0, int to = -1) const;

    // Normalises the slot's editor and says whether it may be left (the refusal shown).
    bool leaveCheck(int index);

    static QString controlName(const QString &array, int index);
    // The same leave rules for an editor a window built itself.
    static void applyRules(FormWindow *window, QWidget *editor, const Slot &slot, const IDataObject *data);
    // The slot's rules on the editor's text: normalised in place; a refusal shown.
    static bool leaveCheck(FormWindow *window, QWidget *editor, const Slot &slot, const IDataObject *data);

signals:
    void valueChanged(int index, const QString &value);

private:
    QWidget *makeEditor(int index, QWidget *parent);

    QString m_array;
    SlotTable m_slots;
    QList<QWidget *> m_widgets;
    QList<QLabel *> m_labels;
    QHash<int, QList<QCheckBox *>> m_boxes;
    FormWindow *m_window = nullptr;
    const IDataObject *m_data = nullptr;
};
