#include "ui/RecordWindow.h"

#include "json/Dialogs.h"
#include "shared/RecordForm.h"
#include "shared/modbase.h"
#include "ui/FormLayout.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

RecordWindow::RecordWindow(RecordForm &logic, QString caption, QWidget *parent)
    : FormWindow(parent), m_logic(logic), m_caption(std::move(caption))
{
    // The logic may be a member of the derived window, not built yet: only its address is kept.
}

void RecordWindow::addButtons(QBoxLayout *panel, const QString &printCaption, const QHash<QString, QString> &captions)
{
    QWidget *frame = panel->parentWidget();
    struct Button {
        const char *name;
        QString caption;
        void (RecordWindow::*slot)();
    };
    const Button editing[] = {
        {"cmdadd", QStringLiteral("&Add"), &RecordWindow::cmdaddClicked},
        {"cmdmodify", QStringLiteral("&Modify"), &RecordWindow::cmdmodifyClicked},
        {"cmdupdate", QStringLiteral("&Save"), &RecordWindow::cmdupdateClicked},
        {"cmddelete", QStringLiteral("&Delete"), &RecordWindow::cmddeleteClicked},
        {"cmdcopy", QStringLiteral("Make a &Copy"), &RecordWindow::cmdcopyClicked},
        {"cmdcancel", QStringLiteral("Ca&ncel"), &RecordWindow::cmdcancelClicked},
        {"cmdshowrep", printCaption, &RecordWindow::cmdshowrepClicked},
        {"cmdback", QStringLiteral("&Back"), &RecordWindow::cmdbackClicked},
    };
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    for (const Button &s : editing) {
        QPushButton *b = FormLayout::button(frame, s.name, captions.value(QLatin1String(s.name), s.caption));
        connect(b, &QPushButton::clicked, this, s.slot);
        m_buttons.insert(QLatin1String(s.name), b);
        row->addWidget(b);
    }

    const std::pair<const char *, QString> moves[] = {
        {"cmdfirst", QStringLiteral("Firs&t")}, {"cmdprev", QStringLiteral("Pre&vious")},
        {"cmdnext", QStringLiteral("Ne&xt")}, {"cmdlast", QStringLiteral("&Last")}};
    const int steps[] = {-2, -1, 1, 2};
    auto *navigation = new QHBoxLayout;
    auto *status = new QLabel(frame);
    status->setObjectName(QStringLiteral("lblStatus"));
    navigation->addWidget(status, 1);
    for (int i = 0; i < 4; ++i) {
        QPushButton *b = FormLayout::button(frame, moves[i].first, captions.value(QLatin1String(moves[i].first), moves[i].second));
        const int step = steps[i];
        connect(b, &QPushButton::clicked, this, [this, step] { navigate(step); });
        m_buttons.insert(QLatin1String(moves[i].first), b);
        navigation->addWidget(b);
    }
    auto *rule = new QFrame(frame);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    panel->addWidget(rule);
    panel->addLayout(navigation);
    panel->addLayout(row);
    setStatusLabel(status);
}

void RecordWindow::formLoad()
{
    setObjectName(m_logic.module());
    m_logic.setDialogs(dialogs());
    modbase::errorTrap(m_logic.module(), QStringLiteral("Form_Load"), [this] {
        if (IDataObject *d = modbase::dataObject())
            d->Resize_For_Resolution(this);
    });
    const bool loaded = m_logic.load();
    refresh();
    if (!loaded) {
        for (QPushButton *b : std::as_const(m_buttons))
            b->setEnabled(b->objectName() == QLatin1String("cmdback"));
        showStatus(QStringLiteral("Not loaded: nothing will be saved"));
        informWhenShown(FormLogic::loadFailureText(m_caption, m_logic.loadError()));
    }
}

void RecordWindow::refresh()
{
    m_logic.setDialogs(dialogs());
    showFields();
    const bool editing = m_logic.editing();
    const bool any = !m_logic.isEmpty();
    setFieldsReadOnly(!editing);
    const bool ready = !m_logic.loadFailed();
    auto enable = [this](const char *name, bool on) {
        if (QPushButton *b = m_buttons.value(QLatin1String(name)))
            b->setEnabled(on);
    };
    enable("cmdadd", ready && !editing);
    enable("cmdmodify", ready && !editing && any);
    enable("cmdupdate", ready && editing);
    enable("cmddelete", ready && !editing && any);
    enable("cmdcopy", ready && !editing && any);
    enable("cmdcancel", ready && editing);
    enable("cmdshowrep", ready && !editing && any);
    enable("cmdback", true);
    const int at = m_logic.position();
    enable("cmdfirst", !editing && at > 0);
    enable("cmdprev", !editing && at > 0);
    enable("cmdnext", !editing && any && at < m_logic.count() - 1);
    enable("cmdlast", !editing && any && at < m_logic.count() - 1);
    showStatus(m_logic.statusText());
}

void RecordWindow::failed(const QString &why)
{
    refresh();
    if (!why.isEmpty())
        dialogs()->inform(why, QString(), Dialogs::Icon::Critical);
}

void RecordWindow::cmdaddClicked()
{
    runAction([this] {
        m_logic.add();
        refresh();
        if (QWidget *first = firstEditField())
            first->setFocus(Qt::OtherFocusReason);
    });
}

void RecordWindow::cmdmodifyClicked()
{
    runAction([this] {
        if (!m_logic.modify())
            return;
        refresh();
        if (QWidget *first = firstEditField())
            first->setFocus(Qt::OtherFocusReason);
    });
}

void RecordWindow::cmdupdateClicked()
{
    runAction([this] {
        collectFields();
        if (m_logic.saveRecord()) {
            refresh();
        } else if (m_logic.refusedSlot() >= 0) {
            // A check of the form, not a failure: the operator stays on the record to correct it.
            dialogs()->inform(m_logic.saveError(), QString(), Dialogs::Icon::Information);
            if (QWidget *field = revealSlot(m_logic.refusedSlot()))
                field->setFocus(Qt::OtherFocusReason);
        } else {
            failed(m_logic.saveError());
        }
    });
}

void RecordWindow::runAsked(bool (RecordForm::*step)())
{
    runAction([this, step] {
        m_logic.setDialogs(dialogs());
        // A No answer is not a failure: only a refusal with a reason is shown.
        if ((m_logic.*step)() || m_logic.saveError().isEmpty())
            refresh();
        else
            failed(m_logic.saveError());
    });
}

void RecordWindow::cmddeleteClicked()
{
    runAsked(&RecordForm::deleteRecord);
}

void RecordWindow::cmdcopyClicked()
{
    runAsked(&RecordForm::copyRecord);
}

void RecordWindow::cmdcancelClicked()
{
    m_logic.cancel();
    refresh();
}

void RecordWindow::cmdbackClicked()
{
    close();
}

void RecordWindow::cmdshowrepClicked()
{
    runAction([this] { m_logic.print(); });
}

void RecordWindow::navigate(int step)
{
    if (m_logic.editing())
        return;
    if (step == -2)
        m_logic.first();
    else if (step == -1)
        m_logic.previous();
    else if (step == 1)
        m_logic.next();
    else
        m_logic.last();
    refresh();
}

bool RecordWindow::confirmClose()
{
    m_logic.setDialogs(dialogs());
    const bool leave = m_logic.escape();
    refresh();
    return leave;
}
