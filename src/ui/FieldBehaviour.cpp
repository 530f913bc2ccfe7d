#include "ui/FieldBehaviour.h"

#include "ui/TabAdvance.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <QVariant>
#include <QWidget>

namespace {
const char *const kAttached = "tdsFieldBehaviour";
const char *const kEmail = "email";
} // namespace

FieldBehaviour::FieldBehaviour(QObject *parent) : QObject(parent) {}

bool FieldBehaviour::isMultiLine(const QWidget *widget)
{
    return qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget);
}

bool FieldBehaviour::isEntryField(const QWidget *widget)
{
    if (!widget)
        return false;
    // The line edit inside a combo or spin box is driven through its owner.
    if (qobject_cast<const QLineEdit *>(widget)) {
        const QWidget *owner = widget->parentWidget();
        return !(qobject_cast<const QComboBox *>(owner) || qobject_cast<const QAbstractSpinBox *>(owner));
    }
    // A check box is walked by Enter like the fields around it.
    return qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget)
        || qobject_cast<const QCheckBox *>(widget) || isMultiLine(widget);
}

void FieldBehaviour::markEmail(QWidget *field, bool email)
{
    field->setProperty(kEmail, email);
}

bool FieldBehaviour::isEmail(const QWidget *field)
{
    return field && field->property(kEmail).toBool();
}

bool FieldBehaviour::isAttached(const QWidget *field) const
{
    return field && field->property(kAttached).value<QObject *>() == this;
}

void FieldBehaviour::attach(QWidget *field)
{
    if (!field || isAttached(field))
        return;
    field->setProperty(kAttached, QVariant::fromValue<QObject *>(this));
    field->installEventFilter(this);
    paint(field, field->hasFocus() ? focusColour() : normalColour());
}

void FieldBehaviour::attachAll(QWidget *root)
{
    if (!root)
        return;
    const auto children = root->findChildren<QWidget *>();
    for (QWidget *w : children) {
        if (isEntryField(w))
            attach(w);
    }
}

QString FieldBehaviour::textOf(const QWidget *field)
{
    if (auto *line = qobject_cast<const QLineEdit *>(field))
        return line->text();
    if (auto *plain = qobject_cast<const QPlainTextEdit *>(field))
        return plain->toPlainText();
    if (auto *rich = qobject_cast<const QTextEdit *>(field))
        return rich->toPlainText();
    if (auto *combo = qobject_cast<const QComboBox *>(field))
        return combo->currentText();
    return QString();
}

void FieldBehaviour::setLeaveCheck(QWidget *field, LeaveCheck check)
{
    if (!field)
        return;
    attach(field);
    m_checks.insert(field, std::move(check));
    connect(field, &QObject::destroyed, this, [this, field] { m_checks.remove(field); });
}

QWidget *FieldBehaviour::checkedFieldFor(QWidget *focus) const
{
    for (QWidget *w = focus; w; w = w->parentWidget()) {
        if (m_checks.contains(w))
            return w;
        if (w->isWindow())
            break;
    }
    return nullptr;
}

bool FieldBehaviour::runCheck(QWidget *field)
{
    const auto it = m_checks.constFind(field);
    if (it == m_checks.constEnd())
        return true;
    const QString text = textOf(field);
    if (m_refused == field && m_refusedText == text)
        return false;   // refused already, and nothing changed since
    const LeaveCheck check = it.value();
    if (check(field)) {
        if (m_refused == field)
            m_refused = nullptr;
        return true;
    }
    m_refused = field;
    m_refusedText = textOf(field);
    return false;
}

bool FieldBehaviour::checkFocused()
{
    QWidget *field = checkedFieldFor(QApplication::focusWidget());
    if (!field)
        return true;
    m_refused = nullptr;   // an action asks afresh, so a refusal is said again
    if (runCheck(field))
        return true;
    field->setFocus(Qt::OtherFocusReason);
    return false;
}

void FieldBehaviour::moveOn(QWidget *field)
{
    if (TabAdvance::moveToNextPage(field))
        return;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &tab);
}

void FieldBehaviour::paint(QWidget *field, const QColor &colour)
{
    QPalette pal = field->palette();
    pal.setColor(QPalette::Base, colour);
    field->setPalette(pal);
}

bool FieldBehaviour::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = qobject_cast<QWidget *>(watched);
    if (!field || !isAttached(field))
        return QObject::eventFilter(watched, event);

    switch (event->type()) {
    case QEvent::FocusIn:
        paint(field, focusColour());
        emit fieldEntered(field);
        break;
    case QEvent::FocusOut: {
        paint(field, normalColour());
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // A message box or another window taking focus is not leaving the field.
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            break;
        if (!runCheck(field)) {
            QPointer<QWidget> back(field);
            QTimer::singleShot(0, field, [back] {
                if (back)
                    back->setFocus(Qt::OtherFocusReason);
            });
            break;
        }
        emit fieldLeft(field);
        break;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && mods == Qt::NoModifier) {
            if (auto *combo = qobject_cast<QComboBox *>(field); combo && combo->view()
                && combo->view()->isVisible())
                break;   // Enter picks from an open list
            // A multi-line field breaks the line once; Enter straight after a break moves on.
            if (isMultiLine(field)) {
                const QString text = textOf(field);
                if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
                    break;
            }
            moveOn(field);
            return true;
        }
        if (key->key() == Qt::Key_Escape && mods == Qt::NoModifier) {
            // An open drop-down list takes Escape itself; otherwise the window closes.
            if (auto *combo = qobject_cast<QComboBox *>(field); combo && combo->view()
                && combo->view()->isVisible())
                break;
            if (!checkFocused())
                return true;
            field->window()->close();
            return true;
        }
        const QString text = key->text();
        if (text.size() == 1 && text.at(0) >= QLatin1Char('a') && text.at(0) <= QLatin1Char('z')
            && !(mods & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) && !isEmail(field)) {
            QKeyEvent upper(QEvent::KeyPress, key->key(), key->modifiers(), text.toUpper(),
                            key->isAutoRepeat(), key->count());
            QCoreApplication::sendEvent(field, &upper);
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
