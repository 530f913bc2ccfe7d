#include "declarations/Oct15Window.h"

#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormLayout.h"
#include "ui/ScheduleGrid.h"
#include "ui/SlotFields.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>

using namespace Oct15Slots;

namespace {
// A tab page of captions and fields; long captions wrap beside their fields.
struct Page
{
    QScrollArea *scroll = nullptr;
    QWidget *inner = nullptr;
    QGridLayout *grid = nullptr;
    int rows = 0;

    explicit Page(QTabWidget *tabs)
    {
        scroll = new QScrollArea(tabs);
        // The page scrolls to the focused field; taking focus itself would end the page's walk.
        scroll->setFocusPolicy(Qt::NoFocus);
        scroll->setWidgetResizable(true);
        inner = new QWidget(scroll);
        grid = new QGridLayout(inner);
        grid->setColumnMinimumWidth(0, 320);
        grid->setColumnStretch(1, 1);
        scroll->setWidget(inner);
    }
    void add(QLabel *caption, QWidget *field)
    {
        caption->setParent(inner);
        caption->setWordWrap(true);
        field->setParent(inner);
        grid->addWidget(caption, rows, 0);
        grid->addWidget(field, rows++, 1);
    }
    void addWide(QWidget *widget) { grid->addWidget(widget, rows++, 0, 1, 2); }
    void addWide(QLayout *layout) { grid->addLayout(layout, rows++, 0, 1, 2); }
    void finish() { grid->setRowStretch(rows, 1); }
};

QLabel *caption(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}
} // namespace

Oct15Window::Oct15Window(bool form15H, QWidget *parent)
    : RecordWindow(m_form, form15H ? QStringLiteral("Form 15H") : QStringLiteral("Form 15G"), parent), m_form(form15H)
{
    const QString number = form15H ? QStringLiteral("15H") : QStringLiteral("15G");
    setWindowTitle(QStringLiteral("Form No. ") + number);
    QBoxLayout *panel = FormLayout::centredPanel(
        this, QStringLiteral("FORM NO. ") + number,
        form15H ? QStringLiteral("Declaration under section 197A(1C) to be made by an individual who is of the age of "
                                 "sixty years or more claiming certain incomes without deduction of tax")
                : QStringLiteral("Declaration under section 197A(1) and section 197A(1A) to be made by an individual or "
                                 "a person (not being a company or firm) claiming certain incomes without deduction of tax"));
    QWidget *frame = panel->parentWidget();
    m_tabs = new QTabWidget(frame);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    m_declarant = new SlotFields(QStringLiteral("txtfieldsM"), declarantSlots(form15H), frame);
    m_payer = new SlotFields(QStringLiteral("txtfieldsP"), payerSlots(), frame);

    // Part I in the order of the form; the tab chain follows it.
    Page declarantPage(m_tabs);
    QWidget *inner = declarantPage.inner;
    QList<QWidget *> chain;
    for (const ScreenRow &row : screenRows(form15H)) {
        if (row.fields == QList<int>{-1}) {
            m_grid = new ScheduleGrid(inner);
            m_grid->setObjectName(QStringLiteral("vsM"));
            m_grid->setFieldBehaviour(fieldBehaviour());
            m_grid->setDataObject(modbase::dataObject());
            m_grid->setSchedule(incomeLayout(form15H));
            // The identification number takes the room; the amount keeps its width.
            m_grid->horizontalHeader()->setStretchLastSection(false);
            m_grid->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
            m_grid->setMinimumHeight(200);
            m_addRow = FormLayout::button(inner, "cmdaddrow", QStringLiteral("&Add Row"));
            m_deleteRow = FormLayout::button(inner, "cmddelrow", QStringLiteral("&Delete Row"));
            connect(m_addRow, &QPushButton::clicked, m_grid, &ScheduleGrid::addRow);
            connect(m_deleteRow, &QPushButton::clicked, m_grid, &ScheduleGrid::deleteRow);
            auto *buttons = new QHBoxLayout;
            buttons->addWidget(caption(row.caption, inner), 1);
            buttons->addWidget(m_addRow);
            buttons->addWidget(m_deleteRow);
            declarantPage.addWide(buttons);
            declarantPage.addWide(m_grid);
            chain << m_addRow << m_deleteRow << m_grid;
            continue;
        }
        if (row.fields.size() == 1) {
            const int slot = row.fields.first();
            declarantPage.add(m_declarant->label(slot), m_declarant->widget(slot));
            chain << m_declarant->widget(slot);
            continue;
        }
        // Several fields of one item side by side, each under its own caption.
        auto *box = new QWidget(inner);
        auto *grid = new QGridLayout(box);
        grid->setContentsMargins(0, 0, 0, 0);
        for (int i = 0; i < row.fields.size(); ++i) {
            const int slot = row.fields.at(i);
            QLabel *own = m_declarant->label(slot);
            own->setParent(box);
            own->setWordWrap(true);
            if (row.slotCaptions)
                grid->addWidget(own, 0, i);
            else
                own->hide();
            m_declarant->widget(slot)->setParent(box);
            m_declarant->widget(slot)->setMinimumWidth(120);
            grid->addWidget(m_declarant->widget(slot), 1, i);
            grid->setColumnStretch(i, 1);
            chain << m_declarant->widget(slot);
        }
        declarantPage.add(caption(row.caption, inner), box);
    }
    declarantPage.finish();
    m_declarantPage = declarantPage.scroll;
    m_tabs->addTab(m_declarantPage, QStringLiteral("Asses&See (Declarant)"));

    Page payerPage(m_tabs);
    for (int i = 0; i < m_payer->count(); ++i) {
        payerPage.add(m_payer->label(i), m_payer->widget(i));
        chain << m_payer->widget(i);
    }
    payerPage.finish();
    m_tabs->addTab(payerPage.scroll, QStringLiteral("&Person Responsible For Paying"));
    panel->addWidget(m_tabs, 1);
    for (int i = 1; i < chain.size(); ++i)
        setTabOrder(chain.at(i - 1), chain.at(i));

    m_declarant->bind(this, modbase::dataObject());
    m_payer->bind(this, modbase::dataObject());
    // "Asses&See" holds Alt+S, "&Person" Alt+P, "&Add Row" Alt+A and "&Delete Row" Alt+D, so
    // the record buttons take other keys.
    addButtons(panel, QStringLiteral("&Form ") + number,
               {{QStringLiteral("cmdupdate"), QStringLiteral("Sa&ve")},
                {QStringLiteral("cmdprev"), QStringLiteral("P&revious")},
                {QStringLiteral("cmdadd"), QStringLiteral("Add Ne&w")},
                {QStringLiteral("cmddelete"), QStringLiteral("D&elete")}});
    m_form.addKeyHint = QStringLiteral("Alt+W");
    resize(1100, 720);
    formLoad();
}

void Oct15Window::showFields()
{
    const QStringList values = m_form.values();
    m_declarant->setValues(values.mid(0, m_form.declarantCount()));
    m_grid->setRows(m_form.income());
    m_payer->setValues(values.mid(m_form.payerSlot(0)));
}

void Oct15Window::collectFields()
{
    m_grid->finishEditing();
    m_form.setValues(m_declarant->values() + QStringList{packIncome(m_grid->rows())} + m_payer->values());
}

void Oct15Window::setFieldsReadOnly(bool readOnly)
{
    m_declarant->setReadOnly(readOnly);
    m_payer->setReadOnly(readOnly);
    m_grid->setReadOnly(readOnly);
    // Rows are added and deleted while the declaration is edited.
    m_addRow->setEnabled(!readOnly);
    m_deleteRow->setEnabled(!readOnly);
}

QWidget *Oct15Window::firstEditField() const
{
    m_tabs->setCurrentIndex(0);
    return m_declarant->widget(0);
}

QWidget *Oct15Window::revealSlot(int slot)
{
    QWidget *field = nullptr;
    if (slot < m_form.declarantCount())
        field = m_declarant->widget(slot);
    else if (slot == m_form.incomeSlot())
        field = m_grid;
    else
        field = m_payer->widget(slot - m_form.payerSlot(0));
    if (!field)
        return nullptr;
    m_tabs->setCurrentIndex(slot < m_form.payerSlot(0) ? 0 : 1);
    if (slot < m_form.payerSlot(0))
        m_declarantPage->ensureWidgetVisible(field);
    return field;
}
