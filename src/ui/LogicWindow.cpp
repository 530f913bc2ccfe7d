#include "ui/LogicWindow.h"

#include "ui/FormLayout.h"
#include "json/Dialogs.h"
#include "shared/FormLogic.h"
#include "shared/modbase.h"

#include <QBoxLayout>
#include <QPushButton>

LogicWindow::LogicWindow(FormLogic &logic, QString caption, QWidget *parent)
    : FormWindow(parent), m_logic(logic), m_caption(std::move(caption))
{
    // The logic may be a member of the derived window, not built yet: only its address is kept.
}

void LogicWindow::addButtons(QBoxLayout *panel)
{
    QWidget *frame = panel->parentWidget();
    m_cmdupdate = FormLayout::button(frame, "cmdupdate", QStringLiteral("&Save"));
    m_cmdshowrep = FormLayout::button(frame, "cmdshowrep", QStringLiteral("&Print"));
    setStatusLabel(FormLayout::addButtonRow(panel, {m_cmdupdate, m_cmdshowrep}));
    connect(m_cmdupdate, &QPushButton::clicked, this, &LogicWindow::cmdupdateClicked);
    connect(m_cmdshowrep, &QPushButton::clicked, this, &LogicWindow::cmdshowrepClicked);
}

void LogicWindow::formLoad()
{
    setObjectName(m_logic.module());
    modbase::errorTrap(m_logic.module(), QStringLiteral("Form_Load"), [this] {
        if (IDataObject *d = modbase::dataObject())
            d->Resize_For_Resolution(this);
    });
    const bool loaded = m_logic.load();
    showFields();
    setFieldsReadOnly(!loaded);
    m_cmdupdate->setEnabled(loaded);
    if (!loaded) {
        showStatus(QStringLiteral("Not loaded: nothing will be saved"));
        informWhenShown(FormLogic::loadFailureText(m_caption, m_logic.loadError()));
    }
}

void LogicWindow::cmdupdateClicked()
{
    runAction([this] {
        if (m_logic.save()) {
            showStatus(m_caption + QStringLiteral(" saved"));
            return;
        }
        showStatus(QStringLiteral("Not saved"));
        dialogs()->inform(m_logic.saveError(), QString(), Dialogs::Icon::Critical);
    });
}

void LogicWindow::cmdshowrepClicked()
{
    runAction([this] { m_logic.print(); });
}
