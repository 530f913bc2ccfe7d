#include "DeductorDialog.h"

#include "host/IDataObject.h"
#include "json/Dialogs.h"
#include "shared/DeductorMaster.h"
#include "shared/modbase.h"
#include "ui/SlotFields.h"

#include <QComboBox>
#include <QDate>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QVBoxLayout>
#include <optional>

DeductorDialog::DeductorDialog(IDataObject *data, const QString &code, QWidget *parent)
    : FormWindow(parent), m_data(data), m_code(code), m_isNew(code.isEmpty())
{
    setWindowTitle(m_isNew ? QStringLiteral("New deductor") : QStringLiteral("Deductor ") + code);
    auto *layout = new QVBoxLayout(this);
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabDeductor"));
    for (const DeductorMaster::Page &tab : DeductorMaster::pages()) {
        auto *page = new QWidget(m_tabs);
        auto *form = new QFormLayout(page);
        auto *fields = new SlotFields(QStringLiteral("txt"), tab.fields, page);
        fields->bind(this, m_data);
        fields->addRows(form);
        m_pages << fields;
        m_tabs->addTab(page, tab.caption);
    }
    layout->addWidget(m_tabs);
    fillStatusList();
    for (const char *digits : {"Mobile", "Mobile1", "Resp_Mobile"}) {
        auto *line = qobject_cast<QLineEdit *>(field(QString::fromLatin1(digits)));
        line->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d*")), line));
    }

    // Enter walks the fields; only Alt+S saves.
    auto *buttons = new QHBoxLayout;
    auto *saveButton = new QPushButton(QStringLiteral("&Save"), this);
    saveButton->setObjectName(QStringLiteral("cmdupdate"));
    auto *cancelButton = new QPushButton(QStringLiteral("&Cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cmdcancel"));
    for (QPushButton *b : {saveButton, cancelButton}) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }
    buttons->addStretch(1);
    buttons->addWidget(saveButton);
    buttons->addWidget(cancelButton);
    layout->addLayout(buttons);
    connect(saveButton, &QPushButton::clicked, this, &DeductorDialog::cmdupdateClicked);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);

    if (!m_isNew) {
        load();
        qobject_cast<QLineEdit *>(field(QStringLiteral("Code_No")))->setReadOnly(true);
    } else {
        setValueOf(QStringLiteral("FormDate"), QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
    }
}

void DeductorDialog::cmdupdateClicked()
{
    runAction([this] {
        if (save())
            accept();
    });
}

void DeductorDialog::fillStatusList()
{
    auto *combo = qobject_cast<QComboBox *>(field(QStringLiteral("status")));
    Recordset rs;
    if (combo && m_data->RecordsetQuery(rs, QStringLiteral("Select Status_Code, Status_Desc From Status_Master Order By Status_Desc"),
                                        m_data->cnnobj()))
        for (; !rs.isEOF(); rs.moveNext())
            combo->addItem(rs.text(1), rs.text(0));
}

DeductorDialog::Place DeductorDialog::placeOf(const QString &column) const
{
    const QString name = QStringLiteral("txt") + column;
    for (SlotFields *fields : m_pages) {
        for (int i = 0; i < fields->count(); ++i) {
            if (fields->slot(i).name.compare(name, Qt::CaseInsensitive) == 0)
                return {fields, i};
        }
    }
    return {};
}

QWidget *DeductorDialog::field(const QString &column) const
{
    const Place p = placeOf(column);
    return p.fields ? p.fields->widget(p.index) : nullptr;
}

QString DeductorDialog::valueOf(const QString &column) const
{
    const Place p = placeOf(column);
    if (!p.fields)
        return QString();
    // The status is stored as its code, shown as its description.
    if (auto *combo = qobject_cast<QComboBox *>(p.fields->widget(p.index)); combo && combo->currentData().isValid())
        return combo->currentData().toString();
    return p.fields->value(p.index).trimmed();
}

void DeductorDialog::setValueOf(const QString &column, const QString &value)
{
    const Place p = placeOf(column);
    if (!p.fields)
        return;
    if (auto *combo = qobject_cast<QComboBox *>(p.fields->widget(p.index))) {
        if (const int at = combo->findData(value); at >= 0 && !value.isEmpty()) {
            combo->setCurrentIndex(at);
            return;
        }
    }
    p.fields->setValue(p.index, value);
}

void DeductorDialog::load()
{
    DeductorMaster::Record record;
    modbase::errorTrap(QStringLiteral("DeductorDialog"), QStringLiteral("load"),
                       [&] { record = DeductorMaster::load(*m_data, m_code); });
    for (auto it = record.cbegin(); it != record.cend(); ++it)
        setValueOf(it.key(), it.value());
}

bool DeductorDialog::refuse(const QString &column, const QString &message)
{
    if (!message.isEmpty())
        dialogs()->inform(message);
    if (QWidget *w = field(column)) {
        for (QWidget *p = w->parentWidget(); p; p = p->parentWidget()) {
            if (const int tab = m_tabs->indexOf(p); tab >= 0)
                m_tabs->setCurrentIndex(tab);
        }
        w->setFocus();
        if (auto *line = qobject_cast<QLineEdit *>(w))
            line->selectAll();
    }
    return false;
}

bool DeductorDialog::check(DeductorMaster::Record &record)
{
    for (const QString &column : DeductorMaster::columns())
        record[column] = valueOf(column);
    std::optional<DeductorMaster::Refusal> refusal;
    QString why;
    if (!modbase::errorTrap(QStringLiteral("DeductorDialog"), QStringLiteral("check"),
                            [&] { refusal = DeductorMaster::check(*m_data, record, m_isNew, false); }, &why)) {
        dialogs()->inform(QStringLiteral("The deductor could not be checked.\n\n") + why, QString(), Dialogs::Icon::Critical);
        return false;
    }
    if (refusal)
        return refuse(refusal->column, refusal->message);
    // The fields show what is stored: dates normalised, blanks trimmed.
    for (auto it = record.cbegin(); it != record.cend(); ++it) {
        if (!qobject_cast<QComboBox *>(field(it.key())))
            setValueOf(it.key(), it.value());
    }
    return true;
}

bool DeductorDialog::save()
{
    DeductorMaster::Record record;
    if (!check(record))
        return false;
    QString why;
    if (!modbase::errorTrap(QStringLiteral("DeductorDialog"), QStringLiteral("cmdupdate_Click"),
                            [&] { DeductorMaster::save(*m_data, record); }, &why)) {
        dialogs()->inform(QStringLiteral("The deductor could not be saved; nothing was changed.\n\n") + why,
                          QString(), Dialogs::Icon::Critical);
        return false;
    }
    m_code = record.value(QStringLiteral("Code_No"));
    return true;
}
