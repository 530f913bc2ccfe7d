#include "DeductorDialog.h"

#include "host/IDataObject.h"
#include "json/Dialogs.h"
#include "shared/Slot.h"
#include "shared/TransactionGuard.h"
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

namespace {

Slot makeSlot(const char *caption, FieldKind kind, int width, const char *column, const char *message = nullptr)
{
    Slot s;
    s.caption = QString::fromUtf8(caption);
    s.kind = kind;
    s.width = width;
    s.name = QStringLiteral("txt") + QString::fromLatin1(column);
    if (message)
        s.message = QString::fromUtf8(message);
    return s;
}

Slot withCheck(Slot s, QString (*check)(const QString &))
{
    s.extraCheck = check;
    return s;
}

Slot stateList(Slot s)
{
    s.stateList = true;
    return s;
}

QString checkEmail(const QString &text)
{
    return text.contains(QLatin1Char('@')) ? QString() : QStringLiteral("Invalid e-mail address.");
}

QString checkDate(const QString &text)
{
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy")).isValid() ? QString()
                                                                             : QStringLiteral("Type the date as dd/mm/yyyy.");
}

const char *const kInvalidTan = "Invalid TAN: four letters, five digits and a letter, such as MUMD12345E.";
const char *const kInvalidPan = "Invalid PAN: five letters, four digits and a letter, such as AABCD1234E.";

// One table per tab, in the order the operator fills them. Every access key of the dialog
// is its own: tabs D, R, O; buttons S, C.
SlotTable deductorTab()
{
    return {
        makeSlot("Deductor cod&e", FieldKind::Text, 20, "Code_No"),
        makeSlot("&Name of the deductor", FieldKind::Text, 150, "Name"),
        makeSlot("&TAN", FieldKind::Tan, 10, "Tanno", kInvalidTan),
        makeSlot("&PAN", FieldKind::Pan, 10, "panno", kInvalidPan),
        makeSlot("Branch / division", FieldKind::Text, 75, "Branch"),
        makeSlot("Flat / door / block", FieldKind::Text, 50, "flat"),
        makeSlot("Building / premises", FieldKind::Text, 50, "building"),
        makeSlot("Road / street", FieldKind::Text, 50, "street"),
        makeSlot("Area / locality", FieldKind::Text, 50, "area"),
        makeSlot("Town / city / district", FieldKind::Text, 50, "city"),
        stateList(makeSlot("St&ate", FieldKind::Combo, 60, "State")),
        makeSlot("PIN code", FieldKind::Pin, 6, "PIN"),
        makeSlot("Telephone", FieldKind::Text, 50, "Phone_Nos"),
        withCheck(makeSlot("E-mail", FieldKind::Email, 100, "Email"), checkEmail),
        withCheck(makeSlot("Alternate e-mail", FieldKind::Email, 100, "Email1"), checkEmail),
        makeSlot("Mobile", FieldKind::Text, 10, "Mobile"),
        makeSlot("Alternate mobile", FieldKind::Text, 10, "Mobile1"),
    };
}

SlotTable responsibleTab()
{
    return {
        makeSlot("Na&me of the responsible person", FieldKind::Text, 100, "Resp_Name"),
        makeSlot("Father's name", FieldKind::Text, 100, "Resp_FName"),
        makeSlot("Designation", FieldKind::Text, 50, "Resp_Desig"),
        makeSlot("PAN of the responsible person", FieldKind::Pan, 10, "Resp_Pan", kInvalidPan),
        makeSlot("Mobile of the responsible person", FieldKind::Text, 10, "Resp_Mobile"),
        withCheck(makeSlot("E-mail of the responsible person", FieldKind::Email, 100, "Resp_Email"), checkEmail),
        makeSlot("Flat / door / block", FieldKind::Text, 50, "Resp_Flat"),
        makeSlot("Building / premises", FieldKind::Text, 50, "Resp_Building"),
        makeSlot("Road / street", FieldKind::Text, 50, "Resp_Street"),
        makeSlot("Area / locality", FieldKind::Text, 50, "Resp_Area"),
        makeSlot("Town / city / district", FieldKind::Text, 50, "Resp_City"),
        stateList(makeSlot("State", FieldKind::Combo, 60, "Resp_State")),
        makeSlot("PIN code", FieldKind::Pin, 6, "Resp_PIN"),
        makeSlot("P&lace of signing forms", FieldKind::Text, 50, "FormPlace"),
        withCheck(makeSlot("Date of si&gning forms", FieldKind::Date, 10, "FormDate"), checkDate),
    };
}

// Main_Info_oth.
SlotTable otherTab()
{
    Slot residence = makeSlot("Residential status", FieldKind::Combo, 20, "resident_status");
    residence.items = QStringList{QStringLiteral("RESIDENT"), QStringLiteral("NON-RESIDENT")};
    return {
        makeSlot("Stat&us", FieldKind::Combo, 2, "status"),
        withCheck(makeSlot("Date of birth / incorporation", FieldKind::Date, 10, "dob"), checkDate),
        makeSlot("Ward / circle", FieldKind::Text, 100, "ward"),
        makeSlot("Assessing officer", FieldKind::Text, 100, "asofficer"),
        residence,
    };
}

// Main_Info_oth repeats the deductor's name, PAN and address.
const char *const kCopiedToOther[] = {"Name", "panno", "flat", "building", "street", "area",
                                      "city", "State", "PIN", "Phone_Nos", "Email"};

const char *const kTabs[] = {"&Deductor", "&Responsible person", "&Other particulars"};

QString columnOf(const Slot &slot)
{
    return slot.name.mid(3);
}

} // namespace

DeductorDialog::DeductorDialog(IDataObject *data, const QString &code, QWidget *parent)
    : FormWindow(parent), m_data(data), m_code(code), m_isNew(code.isEmpty())
{
    setWindowTitle(m_isNew ? QStringLiteral("New deductor") : QStringLiteral("Deductor ") + code);
    auto *layout = new QVBoxLayout(this);
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabDeductor"));
    const SlotTable tables[] = {deductorTab(), responsibleTab(), otherTab()};
    for (int t = 0; t < 3; ++t) {
        auto *page = new QWidget(m_tabs);
        auto *form = new QFormLayout(page);
        auto *fields = new SlotFields(QStringLiteral("txt"), tables[t], page);
        fields->bind(this, m_data);
        fields->addRows(form);
        m_pages << fields;
        m_tabs->addTab(page, QString::fromUtf8(kTabs[t]));
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
    for (int main = 1; main >= 0; --main) {
        const QString table = main ? QStringLiteral("Main_Info") : QStringLiteral("Main_Info_oth");
        const QString keyColumn = main ? QStringLiteral("Code_No") : QStringLiteral("code_no");
        Recordset rs;
        if (!m_data->RecordsetQuery(rs, QStringLiteral("Select * From %1 Where %2=%3").arg(table, keyColumn, m_data->quoted(m_code)),
                                    m_data->cnnobj()) || rs.isEOF())
            continue;
        const auto pages = main ? m_pages.mid(0, 2) : m_pages.mid(2);
        for (SlotFields *fields : pages) {
            for (int i = 0; i < fields->count(); ++i) {
                const QString column = columnOf(fields->slot(i));
                setValueOf(column, rs.text(column));
            }
        }
    }
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

bool DeductorDialog::check()
{
    if (valueOf(QStringLiteral("Code_No")).isEmpty())
        return refuse(QStringLiteral("Code_No"), QStringLiteral("Enter the deductor code."));
    if (valueOf(QStringLiteral("Name")).isEmpty())
        return refuse(QStringLiteral("Name"), QStringLiteral("Enter the name of the deductor."));
    // A field filled but never left is checked (and normalised) here; its refusal is shown.
    for (SlotFields *fields : std::as_const(m_pages)) {
        for (int i = 0; i < fields->count(); ++i) {
            if (!fields->leaveCheck(i))
                return refuse(columnOf(fields->slot(i)), QString());
        }
    }
    if (m_isNew) {
        Recordset rs;
        if (m_data->RecordsetQuery(rs, QStringLiteral("Select Code_No From Main_Info Where Code_No=")
                                           + m_data->quoted(valueOf(QStringLiteral("Code_No"))),
                                   m_data->cnnobj())
            && !rs.isEOF())
            return refuse(QStringLiteral("Code_No"), QStringLiteral("A deductor with this code already exists."));
    }
    return true;
}

bool DeductorDialog::save()
{
    if (!check())
        return false;
    const QString code = valueOf(QStringLiteral("Code_No"));

    // Both rows are replaced together or not at all.
    QStringList statements;
    for (const bool main : {true, false}) {
        const QString table = main ? QStringLiteral("Main_Info") : QStringLiteral("Main_Info_oth");
        const QString keyColumn = main ? QStringLiteral("Code_No") : QStringLiteral("code_no");
        QStringList columns{keyColumn};
        QStringList values{m_data->quoted(code)};
        const auto pages = main ? m_pages.mid(0, 2) : m_pages.mid(2);
        for (SlotFields *fields : pages) {
            for (int i = 0; i < fields->count(); ++i) {
                const QString column = columnOf(fields->slot(i));
                if (column == QLatin1String("Code_No"))
                    continue;
                columns << column;
                values << m_data->quoted(valueOf(column));
            }
        }
        if (!main) {
            for (const char *column : kCopiedToOther) {
                columns << QString::fromLatin1(column);
                values << m_data->quoted(valueOf(QString::fromLatin1(column)));
            }
        }
        statements << QStringLiteral("Delete From %1 Where %2=%3").arg(table, keyColumn, m_data->quoted(code))
                   << QStringLiteral("Insert Into %1 (%2) Values (%3)")
                          .arg(table, columns.join(QLatin1Char(',')), values.join(QLatin1Char(',')));
    }
    TransactionGuard guard(*m_data);
    guard.run(statements);
    if (!guard.commit()) {
        dialogs()->inform(QStringLiteral("The deductor could not be saved; nothing was changed.\n\n") + guard.error(),
                          QString(), Dialogs::Icon::Critical);
        return false;
    }
    m_code = code;
    return true;
}
