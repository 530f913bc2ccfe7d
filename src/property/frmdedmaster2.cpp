#include "property/frmdedmaster2.h"

#include "shared/modbase.h"
#include "ui/FormLayout.h"
#include "ui/SlotFields.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

frmdedmaster2::frmdedmaster2(QWidget *parent) : FormWindow(parent)
{
    setWindowTitle(DeducteeMaster::caption());
    auto *layout = new QVBoxLayout(this);

    // Built in the order Enter walks them: the fields, the group, the buttons, the grid last.
    m_fields = new SlotFields(QStringLiteral("txtfields"), DeducteeMaster::fields(), this);
    auto *verify = FormLayout::button(this, "cmdpanV", QStringLiteral("&Verify"));
    verify->setMinimumWidth(0);
    // Reached by Alt+V; Enter walking the fields does not stop on it.
    verify->setFocusPolicy(Qt::ClickFocus);
    m_groups = new QComboBox(this);
    m_groups->setObjectName(QStringLiteral("Combo5"));
    m_groups->setEditable(true);
    m_groups->setInsertPolicy(QComboBox::NoInsert);
    // A completion would silently turn a new group typed into an existing one.
    m_groups->setCompleter(nullptr);
    auto *groupLabel = new QLabel(QStringLiteral("&Group"), this);
    groupLabel->setObjectName(QStringLiteral("lblCombo5"));
    groupLabel->setBuddy(m_groups);

    auto *buttons = new QHBoxLayout;
    auto *status = new QLabel(this);
    status->setObjectName(QStringLiteral("lblStatus"));
    buttons->addWidget(status, 1);
    const std::pair<const char *, const char *> captions[] = {
        {"cmdaddded", "&Add"},        {"cmdmodifyded", "&Modify"}, {"cmdupdateded", "&Save"},
        {"cmddeleteded", "&Delete"}, {"cmdcancelded", "&Cancel"}, {"cmdback", "&Back"}};
    for (const auto &[name, caption] : captions) {
        QPushButton *b = FormLayout::button(this, name, QString::fromLatin1(caption));
        m_buttons.insert(QLatin1String(name), b);
        buttons->addWidget(b);
    }
    m_buttons.insert(QStringLiteral("cmdpanV"), verify);
    setStatusLabel(status);

    m_grid = new QTableWidget(this);
    m_grid->setObjectName(QStringLiteral("vsf"));
    m_grid->setColumnCount(8);
    m_grid->setHorizontalHeaderLabels({QStringLiteral("Sr. No."), QStringLiteral("Name of Deductee"), QStringLiteral("PAN"),
                                       QStringLiteral("Date of Birth"), QStringLiteral("Town/City/District"),
                                       QStringLiteral("State"), QStringLiteral("Pin Code"), QStringLiteral("Group")});
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    auto *gridLabel = new QLabel(QStringLiteral("D&eductees"), this);
    gridLabel->setBuddy(m_grid);

    layout->addWidget(gridLabel);
    layout->addWidget(m_grid, 1);
    // Two columns of labelled fields: the name and PAN side first, the address beside it.
    auto *grid = new QGridLayout;
    const int left[] = {DeducteeMaster::Name, DeducteeMaster::Pan, DeducteeMaster::BirthDate, DeducteeMaster::Flat,
                        DeducteeMaster::Building};
    const int right[] = {DeducteeMaster::Street, DeducteeMaster::Area, DeducteeMaster::City, DeducteeMaster::State,
                         DeducteeMaster::Pin};
    for (int row = 0; row < 5; ++row) {
        grid->addWidget(m_fields->label(left[row]), row, 0);
        if (left[row] == DeducteeMaster::Pan) {
            auto *pan = new QHBoxLayout;
            pan->addWidget(m_fields->widget(DeducteeMaster::Pan), 1);
            pan->addWidget(verify);
            grid->addLayout(pan, row, 1);
        } else {
            grid->addWidget(m_fields->widget(left[row]), row, 1);
        }
        grid->addWidget(m_fields->label(right[row]), row, 2);
        grid->addWidget(m_fields->widget(right[row]), row, 3);
    }
    grid->addWidget(groupLabel, 5, 0);
    grid->addWidget(m_groups, 5, 1);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    connect(m_buttons.value(QStringLiteral("cmdaddded")), &QPushButton::clicked, this, &frmdedmaster2::cmdadddedClicked);
    connect(m_buttons.value(QStringLiteral("cmdmodifyded")), &QPushButton::clicked, this, &frmdedmaster2::cmdmodifydedClicked);
    connect(m_buttons.value(QStringLiteral("cmdupdateded")), &QPushButton::clicked, this, &frmdedmaster2::cmdupdatededClicked);
    connect(m_buttons.value(QStringLiteral("cmddeleteded")), &QPushButton::clicked, this, &frmdedmaster2::cmddeletededClicked);
    connect(m_buttons.value(QStringLiteral("cmdcancelded")), &QPushButton::clicked, this, &frmdedmaster2::cmdcanceldedClicked);
    connect(m_buttons.value(QStringLiteral("cmdback")), &QPushButton::clicked, this, &frmdedmaster2::cmdbackClicked);
    connect(verify, &QPushButton::clicked, this, &frmdedmaster2::cmdpanVClicked);
    connect(m_grid, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (m_filling || m_master.editing() || row < 0)
            return;
        if (m_master.moveTo(row))
            refresh(false);
    });

    resize(1000, 680);
    formLoad();
}

void frmdedmaster2::formLoad()
{
    setObjectName(DeducteeMaster::module());
    m_master.setDialogs(dialogs());
    IDataObject *data = modbase::dataObject();
    modbase::errorTrap(DeducteeMaster::module(), QStringLiteral("Form_Load"), [this, data] {
        if (data)
            data->Resize_For_Resolution(this);
    });
    // The state list is filled here, from the shared one.
    m_fields->bind(this, data);
    const bool loaded = m_master.load();
    refresh();
    if (!loaded) {
        for (QPushButton *b : std::as_const(m_buttons))
            b->setEnabled(b->objectName() == QLatin1String("cmdback"));
        showStatus(QStringLiteral("Not loaded: nothing will be saved"));
        informWhenShown(QStringLiteral("The deductees could not be read, so nothing will be saved from this "
                                       "window.\n\n%1\n\nClose it and try again; if it happens again, check the "
                                       "database connection.")
                            .arg(m_master.loadError()));
    }
}

void frmdedmaster2::fillGroups()
{
    const QString typed = m_groups->currentText();
    m_groups->clear();
    m_groups->addItem(QString(), 0);
    for (const DeducteeGroup &g : m_master.groups())
        m_groups->addItem(g.desc, g.code);
    m_groups->setEditText(typed);
}

void frmdedmaster2::fillGrid()
{
    const QList<Deductee> &rows = m_master.deductees();
    m_grid->clearContents();
    m_grid->setRowCount(int(rows.size()));
    const int shown[] = {DeducteeMaster::Name, DeducteeMaster::Pan, DeducteeMaster::BirthDate, DeducteeMaster::City,
                         DeducteeMaster::State, DeducteeMaster::Pin};
    for (int r = 0; r < rows.size(); ++r) {
        const Deductee &d = rows.at(r);
        auto *serial = new QTableWidgetItem(QString::number(d.serial));
        serial->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_grid->setItem(r, 0, serial);
        for (int c = 0; c < 6; ++c)
            m_grid->setItem(r, c + 1, new QTableWidgetItem(d.values.value(shown[c])));
        m_grid->setItem(r, 7, new QTableWidgetItem(d.group));
    }
}

void frmdedmaster2::showFields()
{
    m_fields->setValues(m_master.values());
    const int at = m_groups->findText(m_master.group(), Qt::MatchFixedString);
    if (at >= 0)
        m_groups->setCurrentIndex(at);
    m_groups->setEditText(m_master.group());
}

void frmdedmaster2::collectFields()
{
    m_master.setValues(m_fields->values());
    m_master.setGroup(m_groups->currentText());
}

void frmdedmaster2::refresh(bool refillGrid)
{
    m_filling = true;
    m_master.setDialogs(dialogs());
    if (refillGrid) {
        fillGroups();
        fillGrid();
    }
    showFields();
    const bool editing = m_master.editing();
    const bool ready = !m_master.loadFailed();
    const bool chosen = m_master.position() >= 0;
    m_fields->setReadOnly(!editing);
    m_groups->setEnabled(editing);
    m_grid->setEnabled(!editing);
    if (!editing && chosen)
        m_grid->setCurrentCell(m_master.position(), 0);
    auto enable = [this](const char *name, bool on) { m_buttons.value(QLatin1String(name))->setEnabled(on); };
    enable("cmdaddded", ready && !editing);
    enable("cmdmodifyded", ready && !editing && chosen);
    enable("cmdupdateded", ready && editing);
    enable("cmddeleteded", ready && !editing && chosen);
    enable("cmdcancelded", ready && editing);
    enable("cmdback", true);
    enable("cmdpanV", ready);
    showStatus(m_master.statusText());
    m_filling = false;
}

void frmdedmaster2::startEditing()
{
    refresh(false);
    m_fields->widget(DeducteeMaster::Name)->setFocus(Qt::OtherFocusReason);
}

void frmdedmaster2::cmdadddedClicked()
{
    runAction([this] {
        m_master.add();
        startEditing();
    });
}

void frmdedmaster2::cmdmodifydedClicked()
{
    runAction([this] {
        if (m_master.modify())
            startEditing();
    });
}

void frmdedmaster2::cmdupdatededClicked()
{
    runAction([this] {
        collectFields();
        if (m_master.save()) {
            refresh();
            return;
        }
        // The message has been shown; the cursor goes where the fault is.
        const int field = m_master.refusedField();
        if (field == DeducteeMaster::GroupField)
            m_groups->setFocus(Qt::OtherFocusReason);
        else if (QWidget *w = m_fields->widget(field))
            w->setFocus(Qt::OtherFocusReason);
    });
}

void frmdedmaster2::cmddeletededClicked()
{
    runAction([this] {
        if (m_master.deleteCurrent() || !m_master.saveError().isEmpty())
            refresh();
    });
}

void frmdedmaster2::cmdcanceldedClicked()
{
    collectFields();
    if (m_master.cancel())
        refresh(false);
}

void frmdedmaster2::cmdbackClicked()
{
    close();
}

void frmdedmaster2::cmdpanVClicked()
{
    runAction([this] { dialogs()->inform(m_master.verifyPan(m_fields->value(DeducteeMaster::Pan))); });
}

bool frmdedmaster2::confirmClose()
{
    m_master.setDialogs(dialogs());
    const bool wasEditing = m_master.editing();
    if (wasEditing)
        collectFields();
    const bool leave = m_master.escape();
    // Only a cancelled entry changes what the fields show.
    if (wasEditing && !m_master.editing())
        refresh(false);
    return leave;
}
