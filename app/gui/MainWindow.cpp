#include "MainWindow.h"

#include "DeductorDialog.h"

#include "entry/FormRegistry.h"
#include "host/DataHome.h"
#include "host/IDataObject.h"
#include "host/Settings.h"
#include "json/Dialogs.h"
#include "property/frmdedmaster2.h"
#include "ui/WidgetDialogs.h"

#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QStatusBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const int kOperationRole = Qt::UserRole + 1;
const int kNameRole = Qt::UserRole + 2;

const QRegularExpression &yearPattern()
{
    static const QRegularExpression year(QStringLiteral("^(\\d{4})-(\\d{2})$"));
    return year;
}

bool isAssessmentYear(const QString &text)
{
    const auto m = yearPattern().match(text);
    return m.hasMatch() && (m.captured(1).toInt() + 1) % 100 == m.captured(2).toInt();
}

// The assessment year that begins in the calendar year after the current financial year.
QString defaultAssessmentYear()
{
    const QDate today = QDate::currentDate();
    const int fyStart = today.month() >= 4 ? today.year() : today.year() - 1;
    return QStringLiteral("%1-%2").arg(fyStart + 1).arg((fyStart + 2) % 100, 2, 10, QLatin1Char('0'));
}
} // namespace

MainWindow::MainWindow(IDataObject *data, std::unique_ptr<Forms> component, QWidget *parent)
    : QMainWindow(parent), m_data(data), m_component(std::move(component))
{
    setWindowTitle(QStringLiteral("TDS Forms"));
    setDialogs(nullptr);
    buildUi();
    fillFormList();
    // The operator carries on with the deductor and year of the last session.
    const QString lastYear = Settings::value(lastYearKey()).toString();
    if (isAssessmentYear(lastYear))
        m_year->setText(lastYear);
    const QString lastDeductor = Settings::value(lastDeductorKey()).toString();
    reloadDeductors(lastDeductor.isEmpty() ? m_data->codeno() : lastDeductor);
    connect(m_deductor, &QComboBox::currentIndexChanged, this, &MainWindow::selectionChanged);
    connect(m_year, &QLineEdit::textChanged, this, &MainWindow::selectionChanged);
    selectionChanged();
    updateStatus();
    m_deductor->setFocus(Qt::OtherFocusReason);
}

QString MainWindow::lastDeductorKey()
{
    return QStringLiteral("host/lastDeductor");
}

QString MainWindow::lastYearKey()
{
    return QStringLiteral("host/lastYear");
}

QString MainWindow::selectionTitle() const
{
    QStringList parts;
    const QString code = m_deductor->currentData().toString();
    if (!code.isEmpty())
        parts << code + QLatin1Char(' ') + m_deductor->currentData(kNameRole).toString();
    if (isAssessmentYear(m_year->text()))
        parts << QStringLiteral("AY ") + m_year->text();
    return parts.join(QStringLiteral(" - "));
}

void MainWindow::selectionChanged()
{
    const QString selection = selectionTitle();
    setWindowTitle(selection.isEmpty() ? QStringLiteral("TDS Forms") : QStringLiteral("TDS Forms - ") + selection);
    const QString code = m_deductor->currentData().toString();
    if (!code.isEmpty())
        Settings::setValue(lastDeductorKey(), code);
    if (isAssessmentYear(m_year->text()))
        Settings::setValue(lastYearKey(), m_year->text());
}

void MainWindow::setDialogs(Dialogs *dialogs)
{
    if (!m_ownDialogs)
        m_ownDialogs = std::make_unique<WidgetDialogs>(this);
    m_dialogs = dialogs ? dialogs : m_ownDialogs.get();
}

void MainWindow::buildUi()
{
    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);

    auto *top = new QHBoxLayout;
    auto *deductorLabel = new QLabel(QStringLiteral("&Deductor"), central);
    m_deductor = new QComboBox(central);
    m_deductor->setObjectName(QStringLiteral("cboDeductor"));
    m_deductor->setMinimumWidth(360);
    deductorLabel->setBuddy(m_deductor);
    auto *yearLabel = new QLabel(QStringLiteral("Assessment &year"), central);
    m_year = new QLineEdit(defaultAssessmentYear(), central);
    m_year->setObjectName(QStringLiteral("txtAsYear"));
    m_year->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,4}(-\\d{0,2})?")), m_year));
    m_year->setMaximumWidth(90);
    yearLabel->setBuddy(m_year);
    auto *newButton = new QPushButton(QStringLiteral("&New deductor"), central);
    newButton->setObjectName(QStringLiteral("cmdNewDeductor"));
    auto *editButton = new QPushButton(QStringLiteral("&Edit deductor"), central);
    editButton->setObjectName(QStringLiteral("cmdEditDeductor"));
    top->addWidget(deductorLabel);
    top->addWidget(m_deductor, 1);
    top->addSpacing(12);
    top->addWidget(yearLabel);
    top->addWidget(m_year);
    top->addSpacing(12);
    top->addWidget(newButton);
    top->addWidget(editButton);
    // The deductees are the deductor's, whatever the year.
    auto *deducteesButton = new QPushButton(QStringLiteral("Deduc&tees Master"), central);
    deducteesButton->setObjectName(QStringLiteral("cmdDedMaster"));
    top->addWidget(deducteesButton);
    layout->addLayout(top);

    auto *formsLabel = new QLabel(QStringLiteral("&Forms"), central);
    m_forms = new QTreeWidget(central);
    m_forms->setObjectName(QStringLiteral("lstForms"));
    m_forms->setHeaderLabels({QStringLiteral("Form"), QStringLiteral("Available")});
    m_forms->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_forms->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_forms->setRootIsDecorated(true);
    formsLabel->setBuddy(m_forms);
    layout->addWidget(formsLabel);
    layout->addWidget(m_forms, 1);

    auto *bottom = new QHBoxLayout;
    auto *openButton = new QPushButton(QStringLiteral("&Open form"), central);
    openButton->setObjectName(QStringLiteral("cmdOpen"));
    openButton->setDefault(true);
    auto *quitButton = new QPushButton(QStringLiteral("E&xit"), central);
    quitButton->setObjectName(QStringLiteral("cmdExit"));
    bottom->addStretch(1);
    bottom->addWidget(openButton);
    bottom->addWidget(quitButton);
    layout->addLayout(bottom);

    setCentralWidget(central);
    m_status = new QLabel(this);
    statusBar()->addWidget(m_status, 1);
    resize(860, 600);

    connect(m_forms, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) { onFormActivated(item); });
    connect(openButton, &QPushButton::clicked, this, [this] { onFormActivated(m_forms->currentItem()); });
    connect(quitButton, &QPushButton::clicked, this, &QWidget::close);
    connect(newButton, &QPushButton::clicked, this, &MainWindow::onNewDeductor);
    connect(editButton, &QPushButton::clicked, this, &MainWindow::onEditDeductor);
    connect(deducteesButton, &QPushButton::clicked, this, &MainWindow::openDeducteeMaster);
    connect(m_deductor, &QComboBox::currentIndexChanged, this, [this] { updateStatus(); });
}

void MainWindow::fillFormList()
{
    m_forms->clear();
    QHash<QString, QTreeWidgetItem *> families;
    QTreeWidgetItem *firstAvailable = nullptr;
    for (const FormDescriptor &op : FormRegistry::all()) {
        const QString family = QString::fromUtf8(op.family);
        QTreeWidgetItem *&group = families[family];
        if (!group) {
            group = new QTreeWidgetItem(m_forms, {family});
            group->setFlags(Qt::ItemIsEnabled);
            group->setExpanded(true);
            QFont bold = group->font(0);
            bold.setBold(true);
            group->setFont(0, bold);
        }
        const bool available = op.available();
        auto *item = new QTreeWidgetItem(group, {QString::fromUtf8(op.caption),
                                                 available ? QStringLiteral("yes") : QStringLiteral("not in this version")});
        item->setData(0, kOperationRole, QString::fromLatin1(op.operation));
        if (!available)
            item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
        if (available && !firstAvailable)
            firstAvailable = item;
    }
    if (firstAvailable)
        m_forms->setCurrentItem(firstAvailable);
}

void MainWindow::reloadDeductors(const QString &select)
{
    m_deductor->clear();
    Recordset rs;
    if (m_data->RecordsetQuery(rs, QStringLiteral("Select Code_No, Name From Main_Info Order By Code_No"), m_data->cnnobj())) {
        for (; !rs.isEOF(); rs.moveNext()) {
            m_deductor->addItem(rs.text(0) + QStringLiteral("  -  ") + rs.text(1), rs.text(0));
            m_deductor->setItemData(m_deductor->count() - 1, rs.text(1), kNameRole);
        }
    }
    const int index = m_deductor->findData(select);
    m_deductor->setCurrentIndex(index >= 0 ? index : 0);
}

bool MainWindow::applySelection()
{
    const QString code = m_deductor->currentData().toString();
    if (code.isEmpty()) {
        m_dialogs->inform(QStringLiteral("Choose a deductor first (Alt+N adds one)."));
        m_deductor->setFocus();
        return false;
    }
    if (!isAssessmentYear(m_year->text())) {
        m_dialogs->inform(QStringLiteral("Type the assessment year as four digits, a hyphen and two digits, for example 2025-26."));
        m_year->setFocus();
        m_year->selectAll();
        return false;
    }
    m_data->setCodeno(code);
    m_data->setAsYear(m_year->text());
    return true;
}

bool MainWindow::openForm(const QString &operationName)
{
    if (const FormDescriptor *op = FormRegistry::byOperation(operationName)) {
        if (!applySelection())
            return false;
        std::unique_ptr<QDialog> form(m_component->open(operationName));
        if (!form) {
            m_dialogs->inform(    QStringLiteral("%1 is not available in this version of TDS Forms.")
                                         .arg(QString::fromUtf8(op->caption)));
            return false;
        }
        form->setParent(this, form->windowFlags() | Qt::Dialog);
        form->setWindowTitle(form->windowTitle() + QStringLiteral(" - ") + selectionTitle());
        form->setWindowModality(Qt::ApplicationModal);
        form->exec();
        return true;
    }
    return false;
}

bool MainWindow::openDeducteeMaster()
{
    const QString code = m_deductor->currentData().toString();
    if (code.isEmpty()) {
        m_dialogs->inform(QStringLiteral("Choose a deductor first (Alt+N adds one)."));
        m_deductor->setFocus();
        return false;
    }
    m_data->setCodeno(code);
    frmdedmaster2 master(this);
    if (m_dialogs != m_ownDialogs.get())
        master.setDialogs(m_dialogs);
    master.setWindowTitle(master.windowTitle() + QStringLiteral(" - ") + code + QLatin1Char(' ')
                          + m_deductor->currentData(kNameRole).toString());
    master.exec();
    return true;
}

void MainWindow::onFormActivated(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const QString name = item->data(0, kOperationRole).toString();
    if (!name.isEmpty())
        openForm(name);
}

void MainWindow::onNewDeductor()
{
    DeductorDialog dialog(m_data, QString(), this);
    if (m_dialogs != m_ownDialogs.get())
        dialog.setDialogs(m_dialogs);
    if (dialog.exec() == QDialog::Accepted)
        reloadDeductors(dialog.code());
}

void MainWindow::onEditDeductor()
{
    const QString code = m_deductor->currentData().toString();
    if (code.isEmpty()) {
        onNewDeductor();
        return;
    }
    DeductorDialog dialog(m_data, code, this);
    if (m_dialogs != m_ownDialogs.get())
        dialog.setDialogs(m_dialogs);
    if (dialog.exec() == QDialog::Accepted)
        reloadDeductors(dialog.code());
}

void MainWindow::updateStatus()
{
    m_status->setText(QStringLiteral("Data home: %1").arg(DataHome::path()));
}
