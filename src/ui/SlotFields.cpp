#include "ui/SlotFields.h"

#include "host/IDataObject.h"
#include "json/Dialogs.h"
#include "shared/FieldRules.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {
int minimumWidthOf(FieldKind kind)
{
    switch (kind) {
    case FieldKind::Date:
    case FieldKind::Amount:
    case FieldKind::Pan:
    case FieldKind::Tan:
        return 130;
    case FieldKind::Pin:
        return 90;
    default:
        return 240;
    }
}
} // namespace

SlotFields::SlotFields(const QString &arrayName, SlotTable table, QWidget *parent)
    : QObject(parent), m_array(arrayName), m_slots(std::move(table))
{
    for (int i = 0; i < m_slots.size(); ++i) {
        QWidget *editor = makeEditor(i, parent);
        auto *label = new QLabel(m_slots.at(i).caption, parent);
        label->setObjectName(QStringLiteral("lbl") + editor->objectName());
        label->setWordWrap(m_slots.at(i).caption.size() > 60);
        label->setBuddy(editor);
        m_widgets << editor;
        m_labels << label;
    }
}

QString SlotFields::controlName(const QString &array, int index)
{
    return array + QLatin1Char('_') + QString::number(index);
}

QWidget *SlotFields::makeEditor(int index, QWidget *parent)
{
    const Slot &s = m_slots.at(index);
    const QString name = s.name.isEmpty() ? controlName(m_array, index) : s.name;
    QWidget *editor = nullptr;
    switch (s.kind) {
    case FieldKind::Combo: {
        auto *combo = new QComboBox(parent);
        combo->addItem(QString());
        combo->addItems(s.items);
        connect(combo, &QComboBox::currentTextChanged, this, [this, index](const QString &t) { emit valueChanged(index, t); });
        editor = combo;
        break;
    }
    case FieldKind::Flags: {
        auto *group = new QWidget(parent);
        auto *column = new QVBoxLayout(group);
        column->setContentsMargins(0, 0, 0, 0);
        for (int b = 0; b < s.items.size(); ++b) {
            auto *box = new QCheckBox(s.items.at(b), group);
            box->setObjectName(name + QLatin1Char('_') + QString::number(b));
            column->addWidget(box);
            m_boxes[index] << box;
            connect(box, &QCheckBox::toggled, this, [this, index] { emit valueChanged(index, value(index)); });
        }
        editor = group;
        break;
    }
    case FieldKind::MultiLine: {
        auto *plain = new QPlainTextEdit(parent);
        plain->setTabChangesFocus(true);
        plain->setMaximumHeight(72);
        connect(plain, &QPlainTextEdit::textChanged, this,
                [this, index, plain] { emit valueChanged(index, plain->toPlainText()); });
        editor = plain;
        break;
    }
    default: {
        auto *line = new QLineEdit(parent);
        if (s.width > 0)
            line->setMaxLength(s.width);
        if (s.kind == FieldKind::Date)
            line->setPlaceholderText(QStringLiteral("dd/mm/yyyy"));
        if (s.kind == FieldKind::Amount)
            line->setAlignment(Qt::AlignRight);
        connect(line, &QLineEdit::textChanged, this, [this, index](const QString &t) { emit valueChanged(index, t); });
        editor = line;
        break;
    }
    }
    editor->setObjectName(name);
    editor->setMinimumWidth(minimumWidthOf(s.kind));
    if (s.kind == FieldKind::Email)
        FieldBehaviour::markEmail(editor);
    return editor;
}

void SlotFields::bind(FormWindow *window, const IDataObject *data)
{
    m_window = window;
    m_data = data;
    for (int i = 0; i < m_widgets.size(); ++i) {
        const FieldKind kind = m_slots.at(i).kind;
        if (kind == FieldKind::Combo && m_slots.at(i).stateList && data) {
            auto *combo = static_cast<QComboBox *>(m_widgets.at(i));
            const QString current = combo->currentText();
            combo->clear();
            combo->addItem(QString());
            // The state list is filled by the data object; ComboFillStateList may clear it.
            QComboBox states;
            const_cast<IDataObject *>(data)->ComboFillStateList(&states);
            for (int s = 0; s < states.count(); ++s)
                combo->addItem(states.itemText(s));
            setValue(i, current);
        }
        if (kind == FieldKind::Combo || kind == FieldKind::Flags)
            continue;
        window->fieldBehaviour()->setLeaveCheck(m_widgets.at(i), [this, i](QWidget *) { return leaveCheck(i); });
    }
}

int SlotFields::indexOf(const QWidget *widget) const
{
    for (int i = 0; i < m_widgets.size(); ++i) {
        if (m_widgets.at(i) == widget)
            return i;
    }
    return -1;
}

QString SlotFields::value(int index) const
{
    QWidget *w = m_widgets.value(index);
    if (!w)
        return QString();
    if (m_slots.at(index).kind == FieldKind::Flags) {
        QString digits;
        for (QCheckBox *box : m_boxes.value(index))
            digits += box->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        return digits;
    }
    return FieldBehaviour::textOf(w);
}

void SlotFields::setValue(int index, const QString &text)
{
    QWidget *w = m_widgets.value(index);
    if (!w)
        return;
    if (auto *line = qobject_cast<QLineEdit *>(w)) {
        line->setText(text);
        line->setCursorPosition(0);
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(w)) {
        plain->setPlainText(text);
    } else if (auto *combo = qobject_cast<QComboBox *>(w)) {
        int at = combo->findText(text, Qt::MatchFixedString);
        // A stored value the list does not hold is shown, never dropped.
        if (at < 0 && !text.isEmpty()) {
            combo->addItem(text);
            at = combo->count() - 1;
        }
        combo->setCurrentIndex(qMax(0, at));
    } else if (m_slots.at(index).kind == FieldKind::Flags) {
        const QList<QCheckBox *> boxes = m_boxes.value(index);
        for (int b = 0; b < boxes.size(); ++b)
            boxes.at(b)->setChecked(b < text.size() && text.at(b) == QLatin1Char('1'));
    }
}

QStringList SlotFields::values() const
{
    QStringList out;
    for (int i = 0; i < m_widgets.size(); ++i)
        out << value(i);
    return out;
}

void SlotFields::setValues(const QStringList &values)
{
    for (int i = 0; i < m_widgets.size(); ++i)
        setValue(i, values.value(i));
}

void SlotFields::clear()
{
    setValues(QStringList());
}

void SlotFields::setReadOnly(bool readOnly)
{
    for (QWidget *w : std::as_const(m_widgets)) {
        if (auto *line = qobject_cast<QLineEdit *>(w))
            line->setReadOnly(readOnly);
        else if (auto *plain = qobject_cast<QPlainTextEdit *>(w))
            plain->setReadOnly(readOnly);
        else
            w->setEnabled(!readOnly);
    }
    for (const QList<QCheckBox *> &boxes : std::as_const(m_boxes)) {
        for (QCheckBox *box : boxes)
            box->setEnabled(!readOnly);
    }
}

void SlotFields::addRows(QFormLayout *layout, int from, int to) const
{
    if (to < 0 || to >= m_widgets.size())
        to = int(m_widgets.size()) - 1;
    for (int i = from; i <= to; ++i)
        layout->addRow(m_labels.at(i), m_widgets.at(i));
}

bool SlotFields::leaveCheck(int index)
{
    return leaveCheck(m_window, m_widgets.value(index), m_slots.at(index), m_data);
}

bool SlotFields::leaveCheck(FormWindow *window, QWidget *editor, const Slot &slot, const IDataObject *data)
{
    if (!editor || !data)
        return true;
    auto *line = qobject_cast<QLineEdit *>(editor);
    auto *plain = qobject_cast<QPlainTextEdit *>(editor);
    if ((line && line->isReadOnly()) || (plain && plain->isReadOnly()))
        return true;
    const QString before = FieldBehaviour::textOf(editor);
    const FieldRules::Outcome outcome = FieldRules::leave(slot, before, *data);
    if (outcome.text != before) {
        if (line)
            line->setText(outcome.text);
        else if (plain)
            plain->setPlainText(outcome.text);
    }
    if (outcome.ok)
        return true;
    if (window)
        window->dialogs()->inform(outcome.message, QString(), Dialogs::Icon::Information);
    return false;
}

void SlotFields::applyRules(FormWindow *window, QWidget *editor, const Slot &slot, const IDataObject *data)
{
    if (slot.kind == FieldKind::Email)
        FieldBehaviour::markEmail(editor);
    window->fieldBehaviour()->setLeaveCheck(editor, [window, slot, data](QWidget *field) {
        return leaveCheck(window, field, slot, data);
    });
}
