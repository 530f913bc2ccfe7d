#include "ui/FieldBehaviour.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
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
    return qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget)
        || isMultiLine(widget);
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
    case QEvent::FocusOut:
        paint(field, normalColour());
        emit fieldLeft(field);
        break;
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && mods == Qt::NoModifier
            && !isMultiLine(field)) {
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
            QCoreApplication::sendEvent(field, &tab);
            return true;
        }
        if (key->key() == Qt::Key_Escape && mods == Qt::NoModifier) {
            // An open drop-down list takes Escape itself; otherwise the window closes.
            if (auto *combo = qobject_cast<QComboBox *>(field); combo && combo->view()
                && combo->view()->isVisible())
                break;
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
