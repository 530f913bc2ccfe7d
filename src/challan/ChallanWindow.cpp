#include "challan/ChallanWindow.h"

#include "challan/NsdlHandOff.h"
#include "epay/EPayWindow.h"

#include "challan/SectionCombo.h"
#include "challan/SectionList.h"
#include "host/IDataObject.h"
#include "json/Dialogs.h"
#include "shared/FieldRules.h"
#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormLayout.h"
#include "ui/ScheduleGrid.h"
#include "ui/SlotFields.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTableWidget>
#include <utility>

using F = ChallanPrint::Field;

namespace {

// VsMySec: the grid's own Sl. No., then the section and its four amounts.
constexpr int kSectionColumn = 1;
constexpr int kKeyRole = Qt::UserRole;
constexpr auto kSectionEditTriggers =
    QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed;

// A label shows a lone "&" as an access key; the captions mean the character.
QString literal(QString caption)
{
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

SlotTable challanSlots(const ChallanForm &form)
{
    const auto text = [](const QString &caption, int width = 0) {
        return Slot{caption, FieldKind::Text, Encoding::Default, width};
    };
    const auto amount = [](const QString &caption) { return Slot{caption, FieldKind::Amount}; };
    const auto date = [](const QString &caption) { return Slot{caption, FieldKind::Date}; };
    return {text(QStringLiteral("TAN")),
            text(QStringLiteral("Name")),
            text(QStringLiteral("Challan No."), 50),
            date(QStringLiteral("Challan Date")),
            amount(QStringLiteral("Income Tax")),
            amount(QStringLiteral("Surcharge")),
            amount(literal(form.educationCessCaption())),
            amount(literal(QStringLiteral("Higher & Sec. E.C."))),
            amount(QStringLiteral("Interest")),
            amount(literal(form.lateFeeCaption())),
            amount(QStringLiteral("Penalty")),
            amount(QStringLiteral("Others")),
            amount(QStringLiteral("Total")),
            text(QStringLiteral("Cheque No."), 50),
            date(QStringLiteral("Dated")),
            text(QStringLiteral("Drawn on"), 150)};
}

// Fields no one types in: the deductor's, the total, and on the current form the amounts
// its section rows add up to.
bool alwaysLocked(ChallanForm::Kind kind, int field)
{
    return field == F::Tan || field == F::Name || field == F::Total
        || (kind == ChallanForm::Kind::Current && ChallanForm::amountFromSections(field));
}

void check(QButtonGroup *group, int id)
{
    if (QAbstractButton *b = group->button(id)) {
        b->setChecked(true);
        return;
    }
    // An exclusive group never lets go of its last checked button.
    group->setExclusive(false);
    for (QAbstractButton *b : group->buttons())
        b->setChecked(false);
    group->setExclusive(true);
}

void setCell(QTableWidget *table, int row, int column, const QString &text, Qt::Alignment align)
{
    QTableWidgetItem *cell = table->item(row, column);
    if (!cell) {
        cell = new QTableWidgetItem;
        cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        cell->setTextAlignment(align | Qt::AlignVCenter);
        table->setItem(row, column, cell);
    }
    cell->setText(text);
}

QTableWidget *listGrid(QWidget *parent, const char *name, const QStringList &headings)
{
    auto *grid = new QTableWidget(0, int(headings.size()), parent);
    grid->setObjectName(QLatin1String(name));
    grid->setHorizontalHeaderLabels(headings);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    // Tab leaves a list; the arrow keys walk it.
    grid->setTabKeyNavigation(false);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->setHighlightSections(false);
    grid->horizontalHeader()->setStretchLastSection(true);
    return grid;
}

bool isEnter(const QKeyEvent *key)
{
    return (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
        && !(key->modifiers() & ~Qt::KeypadModifier);
}

} // namespace

ChallanWindow::ChallanWindow(ChallanForm::Kind kind, QWidget *parent)
    : FormWindow(parent), m_form(kind),
      m_caption(kind == ChallanForm::Kind::Current ? QStringLiteral("Challan ITNS 281")
                                                   : QStringLiteral("Challan ITNS 281 (earlier)"))
{
    setWindowTitle(m_caption);
    QBoxLayout *panel = FormLayout::centredPanel(this, QStringLiteral("ITNS 281"),
                                                 QStringLiteral("Tax Deducted / Collected at Source (TDS/TCS) from "
                                                                "Company / Non-Company Deductees"),
                                                 &m_frame1);
    // A list window uses the whole height.
    if (auto *outer = qobject_cast<QGridLayout *>(layout())) {
        outer->setRowStretch(0, 0);
        outer->setRowStretch(1, 1);
        outer->setRowStretch(2, 0);
    }
    buildFields(m_frame1);

    auto *deductor = new QHBoxLayout;
    deductor->addWidget(m_fields->label(F::Tan));
    deductor->addWidget(m_fields->widget(F::Tan));
    m_fields->widget(F::Tan)->setMinimumWidth(120);
    m_fields->widget(F::Tan)->setMaximumWidth(180);
    deductor->addSpacing(16);
    deductor->addWidget(m_fields->label(F::Name));
    deductor->addWidget(m_fields->widget(F::Name), 1);
    panel->addLayout(deductor);

    // The challans of the year on the left; the challan on screen and its amounts on the right.
    QWidget *list = buildList(m_frame1);
    auto *body = new QGridLayout;
    body->addWidget(buildOptions(m_frame1), 0, 1);
    body->addWidget(buildAmounts(m_frame1), 1, 1);
    if (kind == ChallanForm::Kind::Current) {
        // The section rows under the list, beside the amounts they add up to.
        body->addWidget(list, 0, 0);
        body->addWidget(buildSections(m_frame1), 1, 0);
        body->setColumnStretch(0, 1);
        body->setColumnStretch(1, 1);
        body->setRowStretch(1, 1);
    } else {
        body->addWidget(list, 0, 0, 3, 1);
        body->setColumnStretch(0, 2);
        body->setColumnStretch(1, 3);
        body->setRowStretch(2, 1);
    }
    panel->addLayout(body, 1);

    auto *rule = new QFrame(m_frame1);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    panel->addWidget(rule);
    panel->addWidget(buildButtons(m_frame1));

    if (kind == ChallanForm::Kind::Current)
        buildPicker();
    else
        buildProgress();
    chainFocus();

    connect(m_vsf, &QTableWidget::cellClicked, this, [this](int row, int) { vsfClicked(row); });
    connect(m_vsf, &QTableWidget::activated, this, [this](const QModelIndex &at) { vsfClicked(at.row()); });
    // Alt+S saves in every form of the product; here it is Update.
    m_save = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_S), this);
    connect(m_save, &QShortcut::activated, this, &ChallanWindow::cmdupdateClicked);

    resize(1180, 720);
    formLoad();
}

void ChallanWindow::buildFields(QWidget *frame)
{
    m_fields = new SlotFields(QStringLiteral("txtfields"), challanSlots(m_form), frame);
    m_fields->bind(this, modbase::dataObject());
    for (int i = 0; i < m_fields->count(); ++i) {
        // Enter and Tab pass over what cannot be typed in.
        if (alwaysLocked(m_form.kind(), i))
            m_fields->widget(i)->setFocusPolicy(Qt::ClickFocus);
        // Narrower than the usual minimum: the lists beside them need the width.
        if (i >= F::ChallanNo)
            m_fields->widget(i)->setMinimumWidth(i == F::Bank ? 160 : 100);
    }
    connect(m_fields, &SlotFields::valueChanged, this, [this](int i, const QString &text) {
        if (m_showing || alwaysLocked(m_form.kind(), i))
            return;
        m_form.setField(i, text);
        if (i >= F::IncomeTax && i < F::Total)
            showComputed();
    });
}

QWidget *ChallanWindow::buildList(QWidget *frame)
{
    auto *list = new QGroupBox(QStringLiteral("Challans"), frame);
    auto *layout = new QVBoxLayout(list);
    m_vsf = listGrid(list, "vsf", {QStringLiteral("Sr. No."), QStringLiteral("Challan No."),
                                   QStringLiteral("Challan Date"), QStringLiteral("Total")});
    m_vsf->setColumnWidth(0, 60);
    m_vsf->setColumnWidth(1, 110);
    m_vsf->setColumnWidth(2, 100);
    m_vsf->setMinimumWidth(360);
    layout->addWidget(m_vsf);
    return list;
}

QWidget *ChallanWindow::buildAmounts(QWidget *frame)
{
    auto *amounts = new QGroupBox(QStringLiteral("Details of Payment"), frame);
    auto *grid = new QGridLayout(amounts);
    const int left[] = {F::IncomeTax, F::Surcharge, F::EducationCess, F::HigherEducationCess};
    const int right[] = {F::Interest, F::LateFee, F::Penalty, F::Others, F::Total};
    for (int r = 0; r < 5; ++r) {
        if (r < 4) {
            grid->addWidget(m_fields->label(left[r]), r, 0);
            grid->addWidget(m_fields->widget(left[r]), r, 1);
        }
        grid->addWidget(m_fields->label(right[r]), r, 3);
        grid->addWidget(m_fields->widget(right[r]), r, 4);
    }
    grid->setColumnMinimumWidth(2, 12);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
    grid->setRowStretch(5, 1);
    QFont bold = m_fields->widget(F::Total)->font();
    bold.setBold(true);
    m_fields->widget(F::Total)->setFont(bold);
    m_fields->label(F::Total)->setFont(bold);
    return amounts;
}

QWidget *ChallanWindow::buildOptions(QWidget *frame)
{
    auto *box = new QWidget(frame);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);

    auto *numbers = new QGridLayout;
    numbers->addWidget(m_fields->label(F::ChallanNo), 0, 0);
    numbers->addWidget(m_fields->widget(F::ChallanNo), 0, 1);
    numbers->addWidget(m_fields->label(F::ChallanDate), 0, 2);
    numbers->addWidget(m_fields->widget(F::ChallanDate), 0, 3);
    numbers->setColumnStretch(1, 1);
    numbers->setColumnStretch(3, 1);
    if (m_form.kind() == ChallanForm::Kind::Older) {
        m_combo = new QComboBox(box);
        m_combo->setObjectName(QStringLiteral("Combo1"));
        m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        m_combo->setMinimumContentsLength(40);
        auto *label = new QLabel(QStringLiteral("&Nature of Payment"), box);
        label->setBuddy(m_combo);
        numbers->addWidget(label, 1, 0);
        numbers->addWidget(m_combo, 1, 1, 1, 3);
        connect(m_combo, &QComboBox::currentIndexChanged, this, [this](int at) {
            if (!m_showing)
                m_form.setNatureOfPayment(at < 0 ? QString() : QString::number(m_combo->itemData(at).toInt()));
        });
    }
    grid->addLayout(numbers, 0, 0, 1, 2);

    struct Choice {
        const char *name;
        QString caption;
        int id;
    };
    auto group = [&](const QString &title, QButtonGroup *&buttons, std::initializer_list<Choice> choices,
                     bool across) {
        auto *g = new QGroupBox(title, box);
        QBoxLayout *layout = across ? static_cast<QBoxLayout *>(new QHBoxLayout(g)) : new QVBoxLayout(g);
        buttons = new QButtonGroup(g);
        for (const Choice &c : choices) {
            auto *radio = new QRadioButton(c.caption, g);
            radio->setObjectName(QLatin1String(c.name));
            radio->installEventFilter(this);
            buttons->addButton(radio, c.id);
            layout->addWidget(radio);
        }
        if (across)
            layout->addStretch(1);
        connect(buttons, &QButtonGroup::idToggled, this, [this](int, bool on) {
            if (on && !m_showing)
                collect();
        });
        return g;
    };
    grid->addWidget(group(QStringLiteral("Deductees"), m_deductees,
                          {{"optcomp", QStringLiteral("Company Deductees"), 1},
                           {"optnoncomp", QStringLiteral("Non-Company Deductees"), 0}},
                          false),
                    1, 0);
    grid->addWidget(group(QStringLiteral("Type of Payment"), m_payTypes,
                          {{"optpaytype_0", QStringLiteral("TDS/TCS Payable by Tax Payer"), 0},
                           {"optpaytype_1", QStringLiteral("TDS/TCS Regular Assessment (Raised by I.T. Deptt.)"), 1}},
                          false),
                    1, 1);
    grid->addWidget(group(QStringLiteral("Residential Status of Deductees"), m_residence,
                          {{"optResType_0", QStringLiteral("Non-Resident"), 0}, {"optResType_1", QStringLiteral("Resident"), 1}},
                          true),
                    2, 0);
    QGroupBox *mode = group(QStringLiteral("Mode of Payment"), m_payModes,
                            {{"Option1", QStringLiteral("Cash"), ChallanForm::Cash},
                             {"Option2", QStringLiteral("Debit to A/c"), ChallanForm::DebitToAccount},
                             {"Option3", QStringLiteral("Cheque"), ChallanForm::Cheque}},
                            true);
    grid->addWidget(mode, 2, 1);

    auto *cheque = new QHBoxLayout;
    for (int i : {F::ChequeNo, F::ChequeDate, F::Bank}) {
        cheque->addWidget(m_fields->label(i));
        cheque->addWidget(m_fields->widget(i), i == F::Bank ? 2 : 1);
    }
    grid->addLayout(cheque, 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget *ChallanWindow::buildSections(QWidget *frame)
{
    auto *box = new QGroupBox(QStringLiteral("Section-wise Payment Details"), frame);
    auto *layout = new QVBoxLayout(box);
    m_sections = new ScheduleGrid(box);
    m_sections->setObjectName(QStringLiteral("VsMySec"));
    m_sections->setFieldBehaviour(fieldBehaviour());
    m_sections->setDataObject(modbase::dataObject());
    const auto amount = [](const QString &heading) {
        return ScheduleColumn{heading, ScheduleColumn::Align::Right, ScheduleColumn::Kind::Text, QStringLiteral("###0.00")};
    };
    m_sections->setSchedule({QStringLiteral("Section-wise Payment Details"), QStringLiteral("Challan_TDSSec"),
                             {ScheduleColumn{QStringLiteral("Section")}, amount(QStringLiteral("Tax")),
                              amount(QStringLiteral("Surcharge")), amount(QStringLiteral("Cess")),
                              amount(QStringLiteral("Others"))}});
    m_sections->horizontalHeader()->setStretchLastSection(false);
    m_sections->horizontalHeader()->setSectionResizeMode(kSectionColumn, QHeaderView::Stretch);
    m_sections->setMinimumSize(480, 130);
    m_sections->setWordWrap(false);
    m_sections->installEventFilter(this);
    connect(m_sections, &QTableWidget::cellChanged, this, &ChallanWindow::sectionCellChanged);
    layout->addWidget(m_sections, 1);

    auto *row = new QHBoxLayout;
    // Alt+S saves, so these take other letters.
    const struct {
        const char *name;
        QString caption;
        void (ChallanWindow::*slot)();
    } buttons[] = {{"CmdAddSec", QStringLiteral("Add Sect&ion"), &ChallanWindow::CmdAddSecClicked},
                   {"CmdDelSec", QStringLiteral("Dele&te Section"), &ChallanWindow::CmdDelSecClicked},
                   {"CmdSearch", QStringLiteral("Sea&rch"), &ChallanWindow::CmdSearchClicked}};
    for (const auto &s : buttons) {
        QPushButton *b = FormLayout::button(box, s.name, s.caption);
        connect(b, &QPushButton::clicked, this, s.slot);
        m_buttons.insert(QLatin1String(s.name), b);
        row->addWidget(b);
    }
    row->addStretch(1);
    layout->addLayout(row);
    return box;
}

QWidget *ChallanWindow::buildButtons(QWidget *frame)
{
    auto *bar = new QWidget(frame);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    auto *status = new QLabel(bar);
    status->setObjectName(QStringLiteral("lblStatus"));
    row->addWidget(status, 1);
    setStatusLabel(status);

    struct Button {
        const char *name;
        QString caption;
        void (ChallanWindow::*slot)();
    };
    auto family = [&](const char *name, std::initializer_list<Button> buttons) {
        auto *box = new QWidget(bar);
        box->setObjectName(QLatin1String(name));
        auto *layout = new QHBoxLayout(box);
        layout->setContentsMargins(0, 0, 0, 0);
        for (const Button &s : buttons) {
            QPushButton *b = FormLayout::button(box, s.name, s.caption);
            connect(b, &QPushButton::clicked, this, s.slot);
            m_buttons.insert(QLatin1String(s.name), b);
            layout->addWidget(b);
        }
        row->addWidget(box);
        return box;
    };
    m_famact1 = family("famact1", {{"cmdadd", QStringLiteral("&Add"), &ChallanWindow::cmdaddClicked},
                                   {"cmdmodify", QStringLiteral("&Modify"), &ChallanWindow::cmdmodifyClicked},
                                   {"cmddelete", QStringLiteral("&Delete"), &ChallanWindow::cmddeleteClicked},
                                   {"CmdCopyCh", QStringLiteral("Copy Challan"), &ChallanWindow::CmdCopyChClicked},
                                   {"cmdprintwin", QStringLiteral("&Print Preview"), &ChallanWindow::cmdprintwinClicked}});
    m_famact2 = family("famact2", {{"cmdupdate", QStringLiteral("&Update"), &ChallanWindow::cmdupdateClicked},
                                   {"cmdcancel", QStringLiteral("&Cancel"), &ChallanWindow::cmdcancelClicked}});
    QPushButton *itd = FormLayout::button(m_famact1, "cmdePayITD", QStringLiteral("&e-Pay Tax @ ITD"));
    connect(itd, &QPushButton::clicked, this, &ChallanWindow::cmdePayITDClicked);
    m_buttons.insert(QStringLiteral("cmdePayITD"), itd);
    m_famact1->layout()->addWidget(itd);
    if (m_form.kind() == ChallanForm::Kind::Older) {
        // Alt+E belongs to the portal's e-pay, which both forms have.
        QPushButton *nsdl = FormLayout::button(m_famact1, "cmdePay", QStringLiteral("e-Payment @ NSD&L"));
        connect(nsdl, &QPushButton::clicked, this, &ChallanWindow::cmdePayClicked);
        m_buttons.insert(QStringLiteral("cmdePay"), nsdl);
        m_famact1->layout()->addWidget(nsdl);
    }
    QPushButton *back = FormLayout::button(bar, "cmdback", QStringLiteral("&Back"));
    connect(back, &QPushButton::clicked, this, &ChallanWindow::cmdbackClicked);
    m_buttons.insert(QStringLiteral("cmdback"), back);
    row->addWidget(back);
    return bar;
}

void ChallanWindow::buildPicker()
{
    m_frameSec = new QFrame(this);
    m_frameSec->setObjectName(QStringLiteral("FrameSec"));
    m_frameSec->setFrameShape(QFrame::StyledPanel);
    m_frameSec->setFrameShadow(QFrame::Raised);
    auto *layout = new QVBoxLayout(m_frameSec);
    layout->setContentsMargins(18, 14, 18, 14);
    auto *title = new QLabel(QStringLiteral("Nature of Payment"), m_frameSec);
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.25);
    title->setFont(bold);
    title->setAlignment(Qt::AlignHCenter);
    layout->addWidget(title);

    const IDataObject *data = modbase::dataObject();
    const QString asYear = data ? data->AsYear() : QString();
    const QList<SectionList::SectionEntry> entries = SectionList::entries(asYear);
    for (const SectionList::SectionEntry &e : entries) {
        if (!m_sectionTexts.contains(e.key))
            m_sectionTexts.insert(e.key, e.text);
    }
    QList<QStringList> rows;
    QStringList keys;
    QStringList headings;
    if (SectionList::yearNumber(asYear) >= SectionList::kFileListFrom) {
        rows = SectionList::pickerRows(SectionList::readSectionFile(SectionList::sectionFile(SectionList::exePath())));
        for (const QStringList &row : std::as_const(rows))
            keys << row.value(2);
        headings = QStringList{QStringLiteral("No."), QStringLiteral("Future Use for Tick"), QStringLiteral("Section Code"),
                               QStringLiteral("Old Section"), QStringLiteral("Description"), QStringLiteral("Nature of Payment")};
    } else {
        for (int i = 0; i < entries.size(); ++i) {
            rows << QStringList{QString::number(i), entries[i].code, entries[i].text};
            keys << entries[i].key;
        }
        headings = QStringList{QStringLiteral("No."), QStringLiteral("Code"), QStringLiteral("Section")};
    }
    m_picker = listGrid(m_frameSec, "VsSec", headings);
    m_picker->setRowCount(int(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < headings.size(); ++c)
            setCell(m_picker, r, c, rows[r].value(c), c == 0 ? Qt::AlignHCenter : Qt::AlignLeft);
        m_picker->item(r, 0)->setData(kKeyRole, keys.value(r));
    }
    m_pickerColumn = 2;   // the code of the new law, or the section's text: what an operator types
    m_picker->setColumnWidth(0, 48);
    if (headings.size() > 3) {
        m_picker->setColumnHidden(1, true);
        m_picker->setColumnWidth(2, 110);
        m_picker->setColumnWidth(3, 110);
        m_picker->setColumnWidth(4, 420);
    } else {
        m_picker->setColumnWidth(1, 70);
    }
    layout->addWidget(m_picker, 1);
    connect(m_picker, &QTableWidget::activated, this, [this](const QModelIndex &at) { choose(at.row()); });

    auto *row = new QHBoxLayout;
    auto *hint = new QLabel(QStringLiteral("Type a section to find it; Enter or a double click chooses it."), m_frameSec);
    row->addWidget(hint, 1);
    QPushButton *back = FormLayout::button(m_frameSec, "CmdBackSec", QStringLiteral("&Back"));
    connect(back, &QPushButton::clicked, this, &ChallanWindow::CmdBackSecClicked);
    m_buttons.insert(QStringLiteral("CmdBackSec"), back);
    row->addWidget(back);
    layout->addLayout(row);

    if (auto *outer = qobject_cast<QGridLayout *>(this->layout()))
        outer->addWidget(m_frameSec, 1, 1);
    m_frameSec->hide();
}

void ChallanWindow::buildProgress()
{
    m_famprog = new QFrame(this);
    m_famprog->setObjectName(QStringLiteral("famprog"));
    m_famprog->setFrameShape(QFrame::StyledPanel);
    auto *layout = new QVBoxLayout(m_famprog);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->addStretch(1);
    m_lblprog = new QLabel(QStringLiteral("Please Wait ..."), m_famprog);
    m_lblprog->setObjectName(QStringLiteral("lblprog"));
    m_lblprog->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_lblprog);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    // Both stop the run between two pages; the browser is closed.
    const std::pair<const char *, QString> buttons[] = {{"cmdprogC", QStringLiteral("&Cancel")},
                                                        {"cmdprogS", QStringLiteral("&Stop")}};
    for (const auto &[name, caption] : buttons) {
        QPushButton *b = FormLayout::button(m_famprog, name, caption);
        const QString question = qstrcmp(name, "cmdprogC") == 0 ? QStringLiteral("Do you really want to Cancel?")
                                                                : QStringLiteral("Do you really want to Stop?");
        connect(b, &QPushButton::clicked, this, [this, question] {
            if (dialogs() && dialogs()->ask(question, Dialogs::Icon::Question, false, QStringLiteral("Confirmation")))
                m_stopRun = true;
        });
        m_buttons.insert(QLatin1String(name), b);
        row->addWidget(b);
    }
    row->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(1);
    if (auto *outer = qobject_cast<QGridLayout *>(this->layout()))
        outer->addWidget(m_famprog, 1, 1);
    m_famprog->hide();
}

void ChallanWindow::cmdePayClicked()
{
    if (m_form.editing() || m_form.currentSerial() == 0)
        return;
    IDataObject *data = modbase::dataObject();
    if (!data)
        return;
    NsdlHandOff::Challan c;
    c.company = m_form.company();
    c.regularAssessment = m_form.payType() == 1;
    c.sectionCode = SectionList::sectionList(QStringLiteral("GETCODE"), m_form.natureOfPayment(), data->AsYear());
    c.tan = m_form.field(F::Tan);
    c.asYear = data->AsYear();
    c.address = ChallanPrint::readAddress(*data, data->codeno());

    m_stopRun = false;
    m_buttons.value(QStringLiteral("cmdePay"))->setEnabled(false);
    m_frame1->hide();
    m_lblprog->setText(QStringLiteral("Please Wait ..."));
    m_famprog->show();
    m_buttons.value(QStringLiteral("cmdprogC"))->setFocus(Qt::OtherFocusReason);
    const NsdlHandOff::Outcome out = NsdlHandOff::run(
        c, data->vTmpPath(), [this](const QString &text) { m_lblprog->setText(text); }, [this] { return m_stopRun; });
    m_famprog->hide();
    m_frame1->show();
    m_buttons.value(QStringLiteral("cmdePay"))->setEnabled(true);
    m_vsf->setFocus(Qt::OtherFocusReason);
    if (!out.message.isEmpty() && dialogs())
        dialogs()->inform(out.message, QString(), Dialogs::Icon::Exclamation);
    showStatus(out.cancelled ? QStringLiteral("e-Payment @ NSDL stopped")
              : out.message.isEmpty() ? QStringLiteral("Challan %1 filled at NSDL: choose the bank and pay in the browser")
                                            .arg(m_form.currentSerial())
                                      : QStringLiteral("e-Payment @ NSDL failed"));
}

void ChallanWindow::cmdePayITDClicked()
{
    if (m_form.editing() || m_form.currentSerial() == 0) {
        if (dialogs())
            dialogs()->inform(QStringLiteral("Please select a saved challan to pay."), QString(),
                              Dialogs::Icon::Information);
        return;
    }
    IDataObject *data = modbase::dataObject();
    if (!data)
        return;
    const QString asYear = data->AsYear();
    const auto amount = [this](int field) { return EPayPayment::amountOf(m_form.field(field)); };
    const auto text = &EPayPayment::amountText;

    // The newer portal takes the tax section by section; interest, fee and penalty are the
    // challan's and go with the first section.
    QList<TanSectionPayment> sections;
    if (m_form.kind() == ChallanForm::Kind::Current) {
        for (const ChallanSection &s : m_form.sections()) {
            if (s.key.isEmpty())
                continue;
            sections << TanSectionPayment{SectionList::sectionList(QStringLiteral("GETCODE"), s.key, asYear),
                                          text(EPayPayment::amountOf(s.tax) + EPayPayment::amountOf(s.surcharge) + EPayPayment::amountOf(s.cess)),
                                          QString(), QString(), QString(), text(EPayPayment::amountOf(s.other))};
        }
    } else if (!m_form.natureOfPayment().isEmpty()) {
        sections << TanSectionPayment{
            SectionList::sectionList(QStringLiteral("GETCODE"), m_form.natureOfPayment(), asYear),
            text(amount(F::IncomeTax) + amount(F::Surcharge) + amount(F::EducationCess) + amount(F::HigherEducationCess)),
            QString(), QString(), QString(), text(amount(F::Others))};
    }
    if (!sections.isEmpty()) {
        sections.first().interest = text(amount(F::Interest));
        sections.first().fee = text(amount(F::LateFee));
        sections.first().penalty = text(amount(F::Penalty));
    }

    auto *ePay = new frmePayITD(this);
    ePay->setAttribute(Qt::WA_DeleteOnClose);
    ePay->setDialogs(dialogs());
    ePay->InitMe(asYear.left(4), m_form.field(F::Tan), m_form.company() ? QStringLiteral("0020") : QStringLiteral("0021"),
                 m_form.payType() == 1 ? QStringLiteral("400") : QStringLiteral("200"), text(amount(F::IncomeTax)),
                 text(amount(F::Surcharge)), text(amount(F::EducationCess) + amount(F::HigherEducationCess)),
                 text(amount(F::Interest)), text(amount(F::Penalty)), text(amount(F::LateFee)),
                 text(amount(F::Others)), EPayPayment::sectionsText(sections), m_form.resident() ? 0 : 1,
                 QStringLiteral("TAN"), this, QString());
    m_ePay = ePay;
    ePay->setModal(true);
    ePay->show();
}

void ChallanWindow::chainFocus()
{
    QList<QWidget *> order{m_vsf, m_fields->widget(F::ChallanNo), m_fields->widget(F::ChallanDate)};
    if (m_combo)
        order << m_combo;
    for (QButtonGroup *group : {m_deductees, m_payTypes, m_residence, m_payModes}) {
        for (QAbstractButton *b : group->buttons())
            order << b;
    }
    order << m_fields->widget(F::ChequeNo) << m_fields->widget(F::ChequeDate) << m_fields->widget(F::Bank);
    if (m_sections)
        order << m_sections;
    for (int i = F::IncomeTax; i <= F::Total; ++i)
        order << m_fields->widget(i);
    for (const char *name : {"cmdupdate", "cmdcancel", "cmdadd", "cmdmodify", "cmddelete", "CmdCopyCh", "cmdprintwin",
                             "cmdePayITD", "cmdePay", "cmdback", "CmdAddSec", "CmdDelSec", "CmdSearch"}) {
        if (QPushButton *b = m_buttons.value(QLatin1String(name)))
            order << b;
    }
    order << m_fields->widget(F::Tan) << m_fields->widget(F::Name);
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

QWidget *ChallanWindow::firstField() const
{
    if (m_form.editing())
        return m_fields->widget(F::ChallanNo);
    if (m_vsf && m_vsf->isEnabled())
        return m_vsf;
    return FormWindow::firstField();
}

void ChallanWindow::formLoad()
{
    setObjectName(m_form.module());
    m_form.setDialogs(dialogs());
    modbase::errorTrap(m_form.module(), QStringLiteral("Form_Load"), [this] {
        if (IDataObject *d = modbase::dataObject())
            d->Resize_For_Resolution(this);
    });
    if (m_combo) {
        const IDataObject *d = modbase::dataObject();
        SectionCombo::fillCombo(m_combo, d ? d->AsYear() : QString());
    }
    const bool loaded = m_form.load();
    // The load shows the first challan without its section rows: choosing it reads them.
    if (loaded && m_form.count() > 0)
        m_form.select(m_form.serials().first());
    refresh();
    if (!loaded) {
        showStatus(QStringLiteral("Not loaded: nothing will be saved"));
        informWhenShown(FormLogic::loadFailureText(m_caption, m_form.loadError()));
    }
}

void ChallanWindow::refresh()
{
    m_form.setDialogs(dialogs());
    showGrid();
    showFields();
    setMode();
    showStatus(m_form.statusText());
}

void ChallanWindow::showGrid()
{
    m_showing = true;
    const QList<int> serials = m_form.serials();
    m_vsf->setRowCount(int(serials.size()));
    for (int r = 0; r < serials.size(); ++r) {
        const QStringList row = m_form.gridRow(serials[r]);
        const Qt::Alignment align[] = {Qt::AlignHCenter, Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
        for (int c = 0; c < 4; ++c)
            setCell(m_vsf, r, c, row.value(c), align[c]);
    }
    const int at = int(serials.indexOf(m_form.currentSerial()));
    if (at >= 0)
        m_vsf->setCurrentCell(at, 0);
    else
        m_vsf->clearSelection();
    m_showing = false;
}

void ChallanWindow::showFields()
{
    m_showing = true;
    m_fields->setValues(m_form.fields());
    check(m_payModes, m_form.payMode());
    check(m_deductees, m_form.company() ? 1 : 0);
    check(m_payTypes, m_form.payType());
    check(m_residence, m_form.resident() ? 1 : 0);
    if (m_combo) {
        const QString key = m_form.natureOfPayment();
        m_combo->setCurrentIndex(key.isEmpty() ? -1 : m_combo->findData(int(FieldRules::leadingNumber(key))));
    }
    if (m_sections) {
        const QList<ChallanSection> &sections = m_form.sections();
        m_sections->setRows(QList<QStringList>(sections.size(), QStringList(5)));
        for (int r = 0; r < sections.size(); ++r)
            setSectionRow(r, sections[r]);
    }
    m_showing = false;
}

void ChallanWindow::showComputed()
{
    m_showing = true;
    for (int i = F::IncomeTax; i <= F::Total; ++i) {
        if (alwaysLocked(m_form.kind(), i))
            m_fields->setValue(i, m_form.field(i));
    }
    m_showing = false;
}

void ChallanWindow::setMode()
{
    const bool ready = !m_form.loadFailed();
    const bool editing = ready && m_form.editing();
    const bool stored = ready && !editing && m_form.currentSerial() > 0;
    m_vsf->setEnabled(ready && !editing);
    m_famact1->setVisible(!editing);
    m_famact2->setVisible(editing);
    const std::pair<const char *, bool> enabled[] = {
        {"cmdadd", ready && !editing}, {"cmdmodify", stored},   {"cmddelete", stored},   {"CmdCopyCh", stored},
        {"cmdprintwin", stored},       {"cmdupdate", editing},  {"cmdcancel", editing},  {"CmdAddSec", editing},
        {"CmdDelSec", editing},        {"CmdSearch", editing},  {"cmdePayITD", stored},  {"cmdePay", stored}};
    for (const auto &[name, on] : enabled) {
        if (QPushButton *b = m_buttons.value(QLatin1String(name)))
            b->setEnabled(on);
    }
    m_fields->setReadOnly(!editing);
    for (int i = 0; i < m_fields->count(); ++i) {
        if (alwaysLocked(m_form.kind(), i))
            static_cast<QLineEdit *>(m_fields->widget(i))->setReadOnly(true);
    }
    for (QButtonGroup *group : {m_deductees, m_payTypes, m_residence, m_payModes}) {
        for (QAbstractButton *b : group->buttons())
            b->setEnabled(editing);
    }
    if (m_combo)
        m_combo->setEnabled(editing);
    if (m_sections)
        m_sections->setEditTriggers(editing ? QAbstractItemView::EditTriggers(kSectionEditTriggers)
                                            : QAbstractItemView::NoEditTriggers);
    m_save->setEnabled(editing);
}

void ChallanWindow::collect()
{
    for (int i = F::ChallanNo; i < F::FieldCount; ++i) {
        if (!alwaysLocked(m_form.kind(), i))
            m_form.setField(i, m_fields->value(i));
    }
    m_form.setPayMode(m_payModes->checkedId());
    m_form.setCompany(m_deductees->checkedId() == 1);
    m_form.setPayType(m_payTypes->checkedId());
    m_form.setResident(m_residence->checkedId() == 1);
    if (m_combo) {
        const int at = m_combo->currentIndex();
        m_form.setNatureOfPayment(at < 0 ? QString() : QString::number(m_combo->itemData(at).toInt()));
    }
    if (m_sections) {
        QList<ChallanSection> rows;
        for (int r = 0; r < m_sections->rowCount(); ++r)
            rows << sectionRow(r);
        m_form.setSections(rows);
    }
}

// A cell still being typed in counts: Alt+S does not take the focus from it.
void ChallanWindow::commitSectionEdit()
{
    if (!m_sections)
        return;
    if (QWidget *editor = m_sections->indexWidget(m_sections->currentIndex())) {
        emit m_sections->itemDelegate()->commitData(editor);
        emit m_sections->itemDelegate()->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

QString ChallanWindow::sectionText(const QString &key) const
{
    return m_sectionTexts.value(key, key);
}

void ChallanWindow::setSectionRow(int row, const ChallanSection &section)
{
    const bool was = std::exchange(m_showing, true);
    const QString amounts[] = {section.tax, section.surcharge, section.cess, section.other};
    for (int c = 0; c < 4; ++c) {
        if (QTableWidgetItem *cell = m_sections->item(row, kSectionColumn + 1 + c))
            cell->setText(amounts[c]);
    }
    if (QTableWidgetItem *cell = m_sections->item(row, kSectionColumn)) {
        // The picker chooses the section; the cell shows its text and keeps its key.
        cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        cell->setText(sectionText(section.key));
        cell->setToolTip(cell->text());
        cell->setData(kKeyRole, section.key);
    }
    m_showing = was;
}

ChallanSection ChallanWindow::sectionRow(int row) const
{
    const auto text = [this, row](int c) {
        const QTableWidgetItem *cell = m_sections->item(row, c);
        return cell ? cell->text() : QString();
    };
    const QTableWidgetItem *section = m_sections->item(row, kSectionColumn);
    return {section ? section->data(kKeyRole).toString() : QString(), text(kSectionColumn + 1), text(kSectionColumn + 2),
            text(kSectionColumn + 3), text(kSectionColumn + 4)};
}

void ChallanWindow::sectionCellChanged(int row, int column)
{
    if (m_showing || column <= kSectionColumn)
        return;
    QTableWidgetItem *cell = m_sections->item(row, column);
    const QString typed = cell->text().trimmed();
    const QString shown = typed.isEmpty() ? QString() : FieldRules::plainAmount(typed);
    if (shown != cell->text()) {
        cell->setText(shown);   // comes back here with the amount as shown
        return;
    }
    m_form.setSection(row, sectionRow(row));
    showComputed();
}

void ChallanWindow::cmdaddClicked()
{
    runAction([this] {
        m_form.setDialogs(dialogs());
        m_form.add();
        refresh();
        if (m_form.editing())
            m_fields->widget(F::ChallanNo)->setFocus(Qt::TabFocusReason);
    });
}

void ChallanWindow::cmdmodifyClicked()
{
    runAction([this] {
        if (!m_form.modify())
            return;
        refresh();
        m_fields->widget(F::ChallanNo)->setFocus(Qt::TabFocusReason);
    });
}

void ChallanWindow::cmdupdateClicked()
{
    if (!m_form.editing() || m_form.loadFailed())
        return;
    if (m_frameSec && m_frameSec->isVisible())
        CmdBackSecClicked();
    commitSectionEdit();
    runAction([this] {
        m_form.setDialogs(dialogs());
        collect();
        if (m_form.update()) {
            refresh();
            m_vsf->setFocus(Qt::OtherFocusReason);
            return;
        }
        if (!m_form.saveError().isEmpty())
            showStatus(QStringLiteral("Not saved"));   // the form has said why
        else
            refused();
    });
}

void ChallanWindow::refused()
{
    showStatus(QStringLiteral("Not saved: ") + m_form.refusal());
    switch (m_form.refusalFocus()) {
    case ChallanForm::Focus::Sections: {
        if (!m_sections)
            break;
        if (m_sections->rowCount() == 0) {
            CmdAddSecClicked();
            break;
        }
        // The row the check stopped at, on the cell it wants.
        for (int r = 0; r < m_sections->rowCount(); ++r) {
            const ChallanSection row = sectionRow(r);
            if (row.key.trimmed().isEmpty() || !row.hasAmount()) {
                m_sections->setCurrentCell(r, row.key.trimmed().isEmpty() ? kSectionColumn : kSectionColumn + 1);
                break;
            }
        }
        m_sections->setFocus(Qt::OtherFocusReason);
        break;
    }
    case ChallanForm::Focus::NatureOfPayment:
        if (m_combo)
            m_combo->setFocus(Qt::OtherFocusReason);
        break;
    case ChallanForm::Focus::ChallanDate:
        m_fields->widget(F::ChallanDate)->setFocus(Qt::OtherFocusReason);
        break;
    case ChallanForm::Focus::None:
        break;
    }
}

void ChallanWindow::cmddeleteClicked()
{
    runAction([this] {
        m_form.setDialogs(dialogs());
        const bool gone = m_form.deleteChallan();
        refresh();
        if (!gone && !m_form.saveError().isEmpty())
            showStatus(QStringLiteral("Not deleted"));
        m_vsf->setFocus(Qt::OtherFocusReason);
    });
}

void ChallanWindow::CmdCopyChClicked()
{
    runAction([this] {
        m_form.setDialogs(dialogs());
        const bool copied = m_form.copyChallan();
        refresh();
        if (!copied && !m_form.saveError().isEmpty())
            showStatus(QStringLiteral("Not copied"));
        m_vsf->setFocus(Qt::OtherFocusReason);
    });
}

void ChallanWindow::cmdcancelClicked()
{
    m_form.setDialogs(dialogs());
    if (!m_form.cancel())
        return;
    refresh();
    m_vsf->setFocus(Qt::OtherFocusReason);
}

void ChallanWindow::cmdprintwinClicked()
{
    runAction([this] {
        m_form.setDialogs(dialogs());
        m_form.print();
    });
}

void ChallanWindow::cmdbackClicked()
{
    close();
}

void ChallanWindow::vsfClicked(int row)
{
    if (m_form.editing() || row < 0 || row >= m_vsf->rowCount())
        return;
    m_form.setDialogs(dialogs());
    if (m_form.select(m_vsf->item(row, 0)->text().toInt())) {
        refresh();
        return;
    }
    // The challan shown before stays, and the grid says which it is.
    showGrid();
    showStatus(m_form.statusText());
    dialogs()->inform(m_form.statusText(), QString(), Dialogs::Icon::Critical);
}

void ChallanWindow::CmdAddSecClicked()
{
    if (!m_sections || !m_form.editing())
        return;
    runAction([this] {
        m_form.setDialogs(dialogs());
        commitSectionEdit();
        if (!m_form.addSection()) {
            m_sections->setFocus(Qt::OtherFocusReason);
            return;
        }
        m_showing = true;
        m_sections->addRow();
        m_showing = false;
        setSectionRow(m_sections->rowCount() - 1, {});
        showComputed();
    });
}

void ChallanWindow::CmdDelSecClicked()
{
    if (!m_sections || !m_form.editing())
        return;
    runAction([this] {
        m_form.setDialogs(dialogs());
        commitSectionEdit();
        if (m_form.deleteSection(m_sections->currentRow())) {
            m_showing = true;
            m_sections->deleteRow();
            m_showing = false;
            showComputed();
        }
        m_sections->setFocus(Qt::OtherFocusReason);
    });
}

void ChallanWindow::CmdSearchClicked()
{
    if (!m_sections || !m_form.editing())
        return;
    runAction([this] {
        commitSectionEdit();
        if (m_sections->rowCount() == 0)
            CmdAddSecClicked();
        if (m_sections->rowCount() == 0)
            return;
        const int current = m_sections->currentRow();
        m_pickRow = current >= 0 ? current : m_sections->rowCount() - 1;
        const QString key = sectionRow(m_pickRow).key;
        int at = 0;
        for (int r = 0; r < m_picker->rowCount(); ++r) {
            if (m_picker->item(r, 0)->data(kKeyRole).toString() == key) {
                at = r;
                break;
            }
        }
        m_frame1->hide();
        m_frameSec->show();
        if (m_picker->rowCount() > 0) {
            m_picker->setCurrentCell(at, m_pickerColumn);
            m_picker->scrollToItem(m_picker->item(at, m_pickerColumn), QAbstractItemView::PositionAtCenter);
        }
        m_picker->setFocus(Qt::OtherFocusReason);
    });
}

void ChallanWindow::CmdBackSecClicked()
{
    closePicker(kSectionColumn);
}

void ChallanWindow::choose(int pickerRow)
{
    if (pickerRow < 0 || m_pickRow < 0 || m_pickRow >= m_sections->rowCount()) {
        closePicker(kSectionColumn);
        return;
    }
    ChallanSection section = sectionRow(m_pickRow);
    section.key = m_picker->item(pickerRow, 0)->data(kKeyRole).toString();
    setSectionRow(m_pickRow, section);
    m_form.setSection(m_pickRow, section);
    showComputed();
    // On to the row's first amount.
    closePicker(kSectionColumn + 1);
}

void ChallanWindow::closePicker(int column)
{
    if (!m_frameSec)
        return;
    m_frameSec->hide();
    m_frame1->show();
    if (m_pickRow >= 0 && m_pickRow < m_sections->rowCount())
        m_sections->setCurrentCell(m_pickRow, column);
    m_pickRow = -1;
    m_sections->setFocus(Qt::OtherFocusReason);
}

bool ChallanWindow::confirmClose()
{
    // Escape in the picker goes back to the challan.
    if (m_frameSec && m_frameSec->isVisible()) {
        CmdBackSecClicked();
        return false;
    }
    m_form.setDialogs(dialogs());
    const bool wasEditing = m_form.editing();
    const bool leave = m_form.escape();
    if (wasEditing && !m_form.editing()) {
        refresh();
        m_vsf->setFocus(Qt::OtherFocusReason);
    }
    return leave;
}

bool ChallanWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *radio = qobject_cast<QRadioButton *>(watched);
    if (radio && radio->group()) {
        if (event->type() == QEvent::FocusIn) {
            // Coming into a group by Tab or Enter: the cursor goes to the option chosen.
            const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
            QAbstractButton *chosen = radio->group()->checkedButton();
            if ((reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) && chosen && chosen != radio
                && chosen->isEnabled())
                chosen->setFocus(reason);
        } else if (event->type() == QEvent::KeyPress) {
            // Enter and Tab leave the whole group; its options are chosen with the arrow keys.
            auto *key = static_cast<QKeyEvent *>(event);
            const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
            const bool back = key->key() == Qt::Key_Backtab || (key->key() == Qt::Key_Tab && mods == Qt::ShiftModifier);
            if (isEnter(key) || back || (key->key() == Qt::Key_Tab && mods == Qt::NoModifier)) {
                leaveGroup(radio, !back);
                return true;
            }
        }
        return FormWindow::eventFilter(watched, event);
    }
    // Enter on a row still without its section opens the picker.
    if (watched == m_sections && event->type() == QEvent::KeyPress && isEnter(static_cast<QKeyEvent *>(event))
        && m_form.editing() && !m_sections->indexWidget(m_sections->currentIndex())
        && m_sections->currentColumn() == kSectionColumn && sectionRow(m_sections->currentRow()).key.isEmpty()) {
        CmdSearchClicked();
        return true;
    }
    return FormWindow::eventFilter(watched, event);
}

void ChallanWindow::leaveGroup(QAbstractButton *option, bool forward)
{
    const QList<QAbstractButton *> mates = option->group()->buttons();
    const auto step = [forward](QWidget *w) { return forward ? w->nextInFocusChain() : w->previousInFocusChain(); };
    QWidget *next = step(option);
    while (next && next != option
           && (mates.contains(qobject_cast<QAbstractButton *>(next)) || !(next->focusPolicy() & Qt::TabFocus)
               || !next->isEnabled() || !next->isVisibleTo(this)))
        next = step(next);
    if (next && next != option)
        next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}
