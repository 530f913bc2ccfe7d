#include "declarations/DeclarationWindow.h"

#include "declarations/DeclarationSlots.h"
#include "json/Dialogs.h"
#include "shared/ScheduleStore.h"
#include "shared/modbase.h"
#include "ui/FormLayout.h"
#include "ui/ScheduleFrame.h"
#include "ui/SlotFields.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>

DeclarationWindow::DeclarationWindow(bool form15H, QWidget *parent)
    : RecordWindow(m_form, form15H ? QStringLiteral("Form 15H") : QStringLiteral("Form 15G"), parent), m_form(form15H)
{
    const QString number = form15H ? QStringLiteral("15H") : QStringLiteral("15G");
    setWindowTitle(QStringLiteral("Form No. ") + number);
    QBoxLayout *panel = FormLayout::centredPanel(this, QStringLiteral("FORM NO. ") + number,
                                                 form15H ? QStringLiteral("Declaration under section 197A(1C) to be made by "
                                                                          "an individual who is of the age of sixty years or more")
                                                         : QStringLiteral("Declaration under section 197A(1) and 197A(1A) to "
                                                                          "be made by a person (not being a company or a firm)"));
    QWidget *frame = panel->parentWidget();
    m_tabs = new QTabWidget(frame);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));

    const SlotTable declarant = DeclarationSlots::declarant(form15H);
    m_declarant = new SlotFields(QStringLiteral("txtfieldsM"), declarant, frame);
    m_payer = new SlotFields(QStringLiteral("txtfieldsP"), DeclarationSlots::payer(), frame);
    const int flags = DeclarationSlots::flagsSlot(form15H);

    auto page = [this](SlotFields *fields, const QString &caption, int flagsAt) {
        auto *scroll = new QScrollArea(m_tabs);
        scroll->setWidgetResizable(true);
        auto *inner = new QWidget(scroll);
        auto *form = new QFormLayout(inner);
        form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
        for (int i = 0; i < fields->count(); ++i) {
            fields->label(i)->setParent(inner);
            fields->widget(i)->setParent(inner);
            if (i != flagsAt) {
                form->addRow(fields->label(i), fields->widget(i));
                continue;
            }
            // Each source flag has its schedule button beside it.
            auto *box = new QWidget(inner);
            auto *grid = new QGridLayout(box);
            grid->setContentsMargins(0, 0, 0, 0);
            const QList<QCheckBox *> checks = fields->checkBoxes(i);
            fields->widget(i)->hide();
            for (int k = 0; k < checks.size(); ++k) {
                checks.at(k)->setParent(box);
                grid->addWidget(checks.at(k), k, 0);
                auto *more = new QPushButton(QStringLiteral("..."), box);
                more->setObjectName(QStringLiteral("cmdincsch_") + QString::number(k));
                more->setAutoDefault(false);
                more->setMaximumWidth(40);
                grid->addWidget(more, k, 1);
                connect(more, &QPushButton::clicked, this, [this, k] { cmdincschClicked(k); });
                m_scheduleButtons << more;
            }
            grid->setColumnStretch(0, 1);
            form->addRow(box);
        }
        scroll->setWidget(inner);
        m_tabs->addTab(scroll, caption);
    };
    page(m_declarant, QStringLiteral("Asses&See (Declarant)"), flags);
    page(m_payer, QStringLiteral("&Person Responsible For Paying"), -1);
    panel->addWidget(m_tabs, 1);

    m_declarant->bind(this, modbase::dataObject());
    m_payer->bind(this, modbase::dataObject());
    connect(m_declarant, &SlotFields::valueChanged, this, [this](int i, const QString &t) { m_form.setValue(i, t); });
    connect(m_payer, &SlotFields::valueChanged, this,
            [this](int i, const QString &t) { m_form.setValue(m_form.declarantCount() + i, t); });

    // "Asses&See" holds Alt+S and "&Person" Alt+P, so Save and Previous take other keys.
    addButtons(panel, QStringLiteral("&Form ") + number,
               {{QStringLiteral("cmdupdate"), QStringLiteral("Sa&ve")}, {QStringLiteral("cmdprev"), QStringLiteral("P&revious")}});
    resize(1100, 720);
    formLoad();
}

void DeclarationWindow::showFields()
{
    const QStringList values = m_form.values();
    m_declarant->setValues(values.mid(0, m_form.declarantCount()));
    m_payer->setValues(values.mid(m_form.declarantCount()));
}

void DeclarationWindow::collectFields()
{
    m_form.setValues(m_declarant->values() + m_payer->values());
}

void DeclarationWindow::setFieldsReadOnly(bool readOnly)
{
    m_declarant->setReadOnly(readOnly);
    m_payer->setReadOnly(readOnly);
    // Schedules belong to a saved declaration and are looked at while browsing too.
    for (QWidget *b : std::as_const(m_scheduleButtons))
        b->setEnabled(!m_form.isEmpty() && m_form.currentSerial() > 0);
}

QWidget *DeclarationWindow::firstEditField() const
{
    m_tabs->setCurrentIndex(0);
    return m_declarant->widget(0);
}

void DeclarationWindow::cmdincschClicked(int k)
{
    runAction([this, k] {
        const int serial = m_form.currentSerial();
        if (serial <= 0) {
            dialogs()->inform(QStringLiteral("Save the declaration first, then fill in its schedules."));
            return;
        }
        const ScheduleLayout layout = DeclarationSlots::schedule(m_form.is15H(), k);
        QList<QStringList> rows;
        QString why;
        const bool loaded = modbase::errorTrap(m_form.module(), QStringLiteral("cmdincsch_Click"), [&] {
            rows = ScheduleStore::load(modbase::data(), layout, m_form.periodCode(), serial);
        }, &why);
        if (!loaded) {
            dialogs()->inform(QStringLiteral("The rows of %1 could not be read; nothing is shown so that nothing is "
                                             "saved over them.\n\n%2")
                                  .arg(layout.title, why),
                              QString(), Dialogs::Icon::Critical);
            return;
        }
        const int period = m_form.periodCode();
        const QString module = m_form.module();
        ScheduleFrame frame(layout, rows, [this, layout, period, serial, module](const QList<QStringList> &grid) {
            QString error;
            const bool stored = modbase::errorTrap(module, QStringLiteral("cmdbackSch_Click"), [&] {
                ScheduleStore::store(modbase::data(), layout, period, serial, grid);
            }, &error);
            if (!stored)
                dialogs()->inform(QStringLiteral("%1 could not be saved; its rows stay on screen.\n\n%2").arg(layout.title, error),
                                  QString(), Dialogs::Icon::Critical);
            else
                showStatus(QStringLiteral("%1 saved").arg(layout.title));
            return stored;
        }, this);
        frame.setDialogs(dialogs());
        frame.exec();
    });
}
