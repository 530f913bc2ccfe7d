#include "ui/FormWindow.h"

#include "ui/FieldBehaviour.h"
#include "ui/WidgetDialogs.h"

#include <QKeyEvent>

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

void FormWindow::showEvent(QShowEvent *event)
{
    // Fields are built by the time the window first shows; later ones are caught here too.
    m_behaviour->attachAll(this);
    QDialog::showEvent(event);
}

void FormWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !(event->modifiers() & ~Qt::KeypadModifier)) {
        close();
        return;
    }
    QDialog::keyPressEvent(event);
}

void FormWindow::reject()
{
    // close() reaches here through closeEvent; a second Escape while asking is ignored.
    if (m_asking)
        return;
    m_asking = true;
    const bool leave = m_dialogs->askYesNo(exitQuestion(), QString(), Dialogs::Icon::Exclamation);
    m_asking = false;
    if (leave)
        QDialog::reject();
}
