#include "ui/FormWindow.h"

#include "ui/FieldBehaviour.h"
#include "json/Dialogs.h"
#include "ui/WidgetDialogs.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <utility>

FormWindow::FormWindow(QWidget *parent)
    : QDialog(parent), m_ownDialogs(std::make_unique<WidgetDialogs>(this)),
      m_behaviour(new FieldBehaviour(this))
{
    m_dialogs = m_ownDialogs.get();
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMinMaxButtonsHint, true);
}

FormWindow::~FormWindow() = default;

void FormWindow::setDialogs(Dialogs *dialogs)
{
    m_dialogs = dialogs ? dialogs : m_ownDialogs.get();
}

QString FormWindow::exitQuestion()
{
    return QStringLiteral("Do you want to exit ?");
}

bool FormWindow::runAction(const std::function<void()> &action)
{
    if (!m_behaviour->checkFocused())
        return false;
    action();
    return true;
}

void FormWindow::setStatusLabel(QLabel *label)
{
    m_status = label;
}

void FormWindow::showStatus(const QString &text)
{
    if (m_status)
        m_status->setText(text);
}

QString FormWindow::statusText() const
{
    return m_status ? m_status->text() : QString();
}

QWidget *FormWindow::firstField() const
{
    QWidget *w = const_cast<FormWindow *>(this);
    QWidget *firstLocked = nullptr;
    for (QWidget *next = w->nextInFocusChain(); next && next != this; next = next->nextInFocusChain()) {
        if (!FieldBehaviour::isEntryField(next) || !next->isEnabled() || !(next->focusPolicy() & Qt::TabFocus))
            continue;
        if (!next->isVisibleTo(w))
            continue;
        auto *line = qobject_cast<QLineEdit *>(next);
        auto *plain = qobject_cast<QPlainTextEdit *>(next);
        if ((line && line->isReadOnly()) || (plain && plain->isReadOnly())) {
            if (!firstLocked)
                firstLocked = next;
            continue;
        }
        return next;
    }
    // A record form opens browsing, its fields locked: the cursor still starts in the first.
    return firstLocked;
}

void FormWindow::informWhenShown(const QString &message)
{
    if (isVisible()) {
        m_dialogs->inform(message, QString(), Dialogs::Icon::Critical);
        return;
    }
    m_pending << message;
}

void FormWindow::showEvent(QShowEvent *event)
{
    // Fields are built by the time the window first shows; later ones are caught here too.
    m_behaviour->attachAll(this);
    QDialog::showEvent(event);
    if (!m_shownOnce) {
        m_shownOnce = true;
        if (QWidget *first = firstField())
            first->setFocus(Qt::TabFocusReason);
    }
    if (!m_pending.isEmpty()) {
        QTimer::singleShot(0, this, [this] {
            const QStringList pending = std::exchange(m_pending, {});
            for (const QString &message : pending)
                m_dialogs->inform(message, QString(), Dialogs::Icon::Critical);
        });
    }
}

void FormWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !(event->modifiers() & ~Qt::KeypadModifier)) {
        if (m_behaviour->checkFocused())
            close();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool FormWindow::confirmClose()
{
    return m_dialogs->askYesNo(exitQuestion(), QString(), Dialogs::Icon::Exclamation);
}

void FormWindow::reject()
{
    // close() reaches here through closeEvent; a second Escape while asking is ignored.
    if (m_asking)
        return;
    m_asking = true;
    const bool leave = confirmClose();
    m_asking = false;
    if (leave)
        QDialog::reject();
}
