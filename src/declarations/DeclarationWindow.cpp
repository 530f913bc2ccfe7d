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

DeclarationWindow::DeclarationWindow(DeclarationSlots::Design design, QWidget *parent)
    : RecordWindow(m_form, design.caption, parent), m_form(std::move(design))
{
    const DeclarationSlots::Design &d = m_form.design();
    setWindowTitle(QStringLiteral("Form No. ") + d.number);
    QBoxLayout *panel = FormLayout::centredPanel(this, QStringLiteral("FORM NO. ") + d.number, d.heading);
    QWidget *frame = panel->parentWidget();
    m_tabs = new QTabWidget(frame);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));

    m_declarant = new SlotFields(QStringLiteral("txtfieldsM"), d.declarant, frame);
    m_payer = new SlotFields(QStringLiteral("txtfieldsP"), d.payer, frame);
    const int flags = d.flagsSlot;

    auto scheduleButton = [this](QWidget *parent, int k, const QString &caption) {
        auto *more = new QPushButton(caption, parent);
        more->setObjectName(QStringLiteral("cmdincsch_") + QString::number(k));
        more->setAutoDefault(false);
        connect(more, &QPushButton::clicked, this, [this, k] { cmdincschClicked(k); });
        m_scheduleButtons << more;
        return more;
    };
    auto page = [&](SlotFields *fields, const QString &caption, int flagsAt, bool tableButton) {
        auto *scroll = new QScrollArea(m_tabs);
        scroll->setWidgetResizable(true);
        // Enter and Tab go from field to field; the page itself is no stop.
        scroll->setFocusPolicy(Qt::NoFocus);
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
                QPushButton *more = scheduleButton(box, k, QStringLiteral("..."));
                more->setMaximumWidth(40);
                grid->addWidget(more, k, 1);
            }
            grid->setColumnStretch(0, 1);
            form->addRow(box);
        }
        // Without flags the detail table follows the last field of the block.
        if (tableButton)
            form->addRow(scheduleButton(inner, 0, m_form.design().tableButton));
        scroll->setWidget(inner);
        m_tabs->addTab(scroll, caption);
    };
    page(m_declarant, d.declarantTab, flags, flags < 0 && m_form.scheduleCount() > 0);
    page(m_payer, d.payerTab, -1, false);
    panel->addWidget(m_tabs, 1);

    m_declarant->bind(this, modbase::dataObject());
    m_payer->bind(this, modbase::dataObject());
    connect(m_declarant, &SlotFields::valueChanged, this, [this](int i, const QString &t) { m_form.setValue(i, t); });
    connect(m_payer, &SlotFields::valueChanged, this,
            [this](int i, const QString &t) { m_form.setValue(m_form.declarantCount() + i, t); });

    addButtons(panel, QStringLiteral("&Form ") + d.number, d.buttonCaptions);
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

QWidget *DeclarationWindow::revealSlot(int slot)
{
    const bool payer = slot >= m_form.declarantCount();
    SlotFields *fields = payer ? m_payer : m_declarant;
    const int at = payer ? slot - m_form.declarantCount() : slot;
    if (at < 0 || at >= fields->count())
        return nullptr;
    m_tabs->setCurrentIndex(payer ? 1 : 0);
    const QList<QCheckBox *> boxes = fields->checkBoxes(at);
    return boxes.isEmpty() ? fields->widget(at) : boxes.first();
}

void DeclarationWindow::cmdincschClicked(int k)
{
    runAction([this, k] {
        const int serial = m_form.currentSerial();
        if (serial <= 0) {
            dialogs()->inform(QStringLiteral("Save the declaration first, then fill in its schedules."));
            return;
        }
        const ScheduleLayout layout = m_form.design().schedules.value(k);
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
