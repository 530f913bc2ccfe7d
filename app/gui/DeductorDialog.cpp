#include "DeductorDialog.h"

#include "host/IDataObject.h"
#include "json/Dialogs.h"
#include "ui/FieldBehaviour.h"

#include <QComboBox>
#include <QDate>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

enum class Kind { Text, Email, Date, State, Digits, Status, Residence };

struct FieldSpec {
    const char *table;
    const char *column;
    const char *caption;
    Kind kind;
    int maxLength;
    int tab;   // 0 deductor, 1 responsible person, 2 other particulars
};

// One row per editor, in the order the operator fills them.
const FieldSpec kFields[] = {
    {"Main_Info", "Code_No", "Deductor &code", Kind::Text, 20, 0},
    {"Main_Info", "Name", "&Name of the deductor", Kind::Text, 150, 0},
    {"Main_Info", "Tanno", "&TAN", Kind::Text, 10, 0},
    {"Main_Info", "panno", "&PAN", Kind::Text, 10, 0},
    {"Main_Info", "Branch", "Branch / division", Kind::Text, 75, 0},
    {"Main_Info", "flat", "Flat / door / block", Kind::Text, 50, 0},
    {"Main_Info", "building", "Building / premises", Kind::Text, 50, 0},
    {"Main_Info", "street", "Road / street", Kind::Text, 50, 0},
    {"Main_Info", "area", "Area / locality", Kind::Text, 50, 0},
    {"Main_Info", "city", "Town / city / district", Kind::Text, 50, 0},
    {"Main_Info", "State", "&State", Kind::State, 60, 0},
    {"Main_Info", "PIN", "PIN code", Kind::Digits, 6, 0},
    {"Main_Info", "Phone_Nos", "Telephone", Kind::Text, 50, 0},
    {"Main_Info", "Email", "E-mail", Kind::Email, 100, 0},
    {"Main_Info", "Email1", "Alternate e-mail", Kind::Email, 100, 0},
    {"Main_Info", "Mobile", "Mobile", Kind::Digits, 10, 0},
    {"Main_Info", "Mobile1", "Alternate mobile", Kind::Digits, 10, 0},
    {"Main_Info", "Resp_Name", "Name of the responsible &person", Kind::Text, 100, 1},
    {"Main_Info", "Resp_FName", "Father's name", Kind::Text, 100, 1},
    {"Main_Info", "Resp_Desig", "Designation", Kind::Text, 50, 1},
    {"Main_Info", "Resp_Pan", "PAN of the responsible person", Kind::Text, 10, 1},
    {"Main_Info", "Resp_Mobile", "Mobile of the responsible person", Kind::Digits, 10, 1},
    {"Main_Info", "Resp_Email", "E-mail of the responsible person", Kind::Email, 100, 1},
    {"Main_Info", "Resp_Flat", "Flat / door / block", Kind::Text, 50, 1},
    {"Main_Info", "Resp_Building", "Building / premises", Kind::Text, 50, 1},
    {"Main_Info", "Resp_Street", "Road / street", Kind::Text, 50, 1},
    {"Main_Info", "Resp_Area", "Area / locality", Kind::Text, 50, 1},
    {"Main_Info", "Resp_City", "Town / city / district", Kind::Text, 50, 1},
    {"Main_Info", "Resp_State", "State", Kind::State, 60, 1},
    {"Main_Info", "Resp_PIN", "PIN code", Kind::Digits, 6, 1},
    {"Main_Info", "FormPlace", "P&lace of signing forms", Kind::Text, 50, 1},
    {"Main_Info", "FormDate", "Date of si&gning forms", Kind::Date, 10, 1},
    {"Main_Info_oth", "status", "Status", Kind::Status, 2, 2},
    {"Main_Info_oth", "dob", "Date of birth / incorporation", Kind::Date, 10, 2},
    {"Main_Info_oth", "ward", "Ward / circle", Kind::Text, 100, 2},
    {"Main_Info_oth", "asofficer", "Assessing officer", Kind::Text, 100, 2},
    {"Main_Info_oth", "resident_status", "Residential status", Kind::Residence, 20, 2},
};

// Main_Info_oth repeats the deductor's name, PAN and address.
const char *const kCopiedToOther[] = {"Name", "panno", "flat", "building", "street", "area",
                                      "city", "State", "PIN", "Phone_Nos", "Email"};

const char *const kTabs[] = {"&Deductor", "&Responsible person", "&Other particulars"};

bool isMainTable(const FieldSpec &f)
{
    return qstrcmp(f.table, "Main_Info") == 0;
}

} // namespace

DeductorDialog::DeductorDialog(IDataObject *data, const QString &code, QWidget *parent)
    : FormWindow(parent), m_data(data), m_code(code), m_isNew(code.isEmpty())
{
    setWindowTitle(m_isNew ? QStringLiteral("New deductor") : QStringLiteral("Deductor ") + code);
    auto *layout = new QVBoxLayout(this);
    auto *tabs = new QTabWidget(this);
    QFormLayout *forms[3];
    for (int t = 0; t < 3; ++t) {
        auto *page = new QWidget(tabs);
        forms[t] = new QFormLayout(page);
        tabs->addTab(page, QString::fromUtf8(kTabs[t]));
    }
    for (const FieldSpec &f : kFields) {
        QWidget *editor = nullptr;
        if (f.kind == Kind::State || f.kind == Kind::Status || f.kind == Kind::Residence) {
            auto *combo = new QComboBox(this);
            combo->setEditable(false);
            if (f.kind == Kind::State) {
                m_data->ComboFillStateList(combo);
                combo->insertItem(0, QString());
            } else if (f.kind == Kind::Residence) {
                combo->addItems({QString(), QStringLiteral("RESIDENT"), QStringLiteral("NON-RESIDENT")});
            } else {
                combo->addItem(QString(), QString());
                Recordset rs;
                if (m_data->RecordsetQuery(rs, QStringLiteral("Select Status_Code, Status_Desc From Status_Master Order By Status_Desc"),
                                           m_data->cnnobj()))
                    for (; !rs.isEOF(); rs.moveNext())
                        combo->addItem(rs.text(1), rs.text(0));
            }
            combo->setCurrentIndex(0);
            editor = combo;
        } else {
            auto *line = new QLineEdit(this);
            line->setMaxLength(f.maxLength);
            if (f.kind == Kind::Email)
                FieldBehaviour::markEmail(line);
            if (f.kind == Kind::Digits)
                line->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d*")), line));
            if (f.kind == Kind::Date) {
                line->setPlaceholderText(QStringLiteral("dd/mm/yyyy"));
                connect(line, &QLineEdit::editingFinished, this, [this, line] {
                    line->setText(m_data->convertdate(line->text()));
                });
            }
            editor = line;
        }
        editor->setObjectName(QStringLiteral("txt") + QString::fromLatin1(f.column));
        forms[f.tab]->addRow(QString::fromUtf8(f.caption), editor);
        m_fields.insert(QString::fromLatin1(f.column).toLower(), editor);
    }
    layout->addWidget(tabs);

    auto *buttons = new QDialogButtonBox(this);
    auto *saveButton = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    saveButton->setObjectName(QStringLiteral("cmdupdate"));
    auto *cancelButton = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    cancelButton->setObjectName(QStringLiteral("cmdcancel"));
    layout->addWidget(buttons);
    connect(saveButton, &QPushButton::clicked, this, [this] {
        if (save())
            accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);

    if (!m_isNew) {
        load();
        static_cast<QLineEdit *>(field(QStringLiteral("Code_No")))->setReadOnly(true);
    } else {
        static_cast<QLineEdit *>(field(QStringLiteral("FormDate")))->setText(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
    }
}

QString DeductorDialog::valueOf(const QString &column) const
{
    QWidget *w = field(column);
    if (auto *combo = qobject_cast<QComboBox *>(w))
        return combo->currentData().isValid() ? combo->currentData().toString() : combo->currentText();
    if (auto *line = qobject_cast<QLineEdit *>(w))
        return line->text().trimmed();
    return QString();
}

void DeductorDialog::load()
{
    const QString key = m_data->TruncVarSQL(m_code);
    for (const char *table : {"Main_Info", "Main_Info_oth"}) {
        Recordset rs;
        const QString keyColumn = qstrcmp(table, "Main_Info") == 0 ? QStringLiteral("Code_No") : QStringLiteral("code_no");
        if (!m_data->RecordsetQuery(rs, QStringLiteral("Select * From %1 Where %2='%3'").arg(QLatin1String(table), keyColumn, key),
                                    m_data->cnnobj()) || rs.isEOF())
            continue;
        for (const FieldSpec &f : kFields) {
            if (qstrcmp(f.table, table) != 0)
                continue;
            const QString value = rs.text(QString::fromLatin1(f.column));
            QWidget *w = field(QString::fromLatin1(f.column));
            if (auto *combo = qobject_cast<QComboBox *>(w)) {
                int index = combo->findData(value);
                if (index < 0)
                    index = combo->findText(value, Qt::MatchFixedString);
                if (index < 0 && !value.isEmpty()) {
                    combo->addItem(value);
                    index = combo->count() - 1;
                }
                combo->setCurrentIndex(qMax(0, index));
            } else if (auto *line = qobject_cast<QLineEdit *>(w)) {
                line->setText(value);
            }
        }
    }
}

bool DeductorDialog::check()
{
    auto refuse = [this](const char *column, const QString &message) {
        dialogs()->inform(message);
        if (QWidget *w = field(QString::fromLatin1(column))) {
            w->setFocus();
            if (auto *line = qobject_cast<QLineEdit *>(w))
                line->selectAll();
        }
        return false;
    };
    if (valueOf(QStringLiteral("Code_No")).isEmpty())
        return refuse("Code_No", QStringLiteral("Enter the deductor code."));
    if (valueOf(QStringLiteral("Name")).isEmpty())
        return refuse("Name", QStringLiteral("Enter the name of the deductor."));
    const QString tan = valueOf(QStringLiteral("Tanno"));
    if (!tan.isEmpty() && !m_data->ValidTan(tan))
        return refuse("Tanno", QStringLiteral("Invalid TAN: four letters, five digits and a letter, such as MUMD12345E."));
    for (const char *pan : {"panno", "Resp_Pan"}) {
        const QString value = valueOf(QString::fromLatin1(pan));
        if (!value.isEmpty() && !m_data->ValidPan(value))
            return refuse(pan, QStringLiteral("Invalid PAN: five letters, four digits and a letter, such as AABCD1234E."));
    }
    for (const char *pinColumn : {"PIN", "Resp_PIN"}) {
        const QString pin = valueOf(QString::fromLatin1(pinColumn));
        if (!pin.isEmpty() && pin.size() != 6)
            return refuse(pinColumn, QStringLiteral("The PIN code has six digits."));
    }
    for (const char *mail : {"Email", "Email1", "Resp_Email"}) {
        const QString value = valueOf(QString::fromLatin1(mail));
        if (!value.isEmpty() && !value.contains(QLatin1Char('@')))
            return refuse(mail, QStringLiteral("Invalid e-mail address."));
    }
    for (const char *date : {"FormDate", "dob"}) {
        const QString value = valueOf(QString::fromLatin1(date));
        if (!value.isEmpty() && !QDate::fromString(value, QStringLiteral("dd/MM/yyyy")).isValid())
            return refuse(date, QStringLiteral("Type the date as dd/mm/yyyy."));
    }
    if (m_isNew) {
        Recordset rs;
        if (m_data->RecordsetQuery(rs, QStringLiteral("Select Code_No From Main_Info Where Code_No='")
                                           + m_data->TruncVarSQL(valueOf(QStringLiteral("Code_No"))) + QStringLiteral("'"),
                                   m_data->cnnobj())
            && !rs.isEOF())
            return refuse("Code_No", QStringLiteral("A deductor with this code already exists."));
    }
    return true;
}

bool DeductorDialog::save()
{
    if (!check())
        return false;
    const QString code = valueOf(QStringLiteral("Code_No"));
    const QString key = m_data->TruncVarSQL(code);

    // Both rows are replaced together or not at all.
    bool ok = m_data->BeginTrans();
    for (const bool main : {true, false}) {
        if (!ok)
            break;
        const QString table = main ? QStringLiteral("Main_Info") : QStringLiteral("Main_Info_oth");
        const QString keyColumn = main ? QStringLiteral("Code_No") : QStringLiteral("code_no");
        QStringList columns{keyColumn};
        QStringList values{QLatin1Char('\'') + key + QLatin1Char('\'')};
        for (const FieldSpec &f : kFields) {
            if (isMainTable(f) != main || qstrcmp(f.column, "Code_No") == 0)
                continue;
            columns << QString::fromLatin1(f.column);
            values << QLatin1Char('\'') + m_data->TruncVarSQL(valueOf(QString::fromLatin1(f.column))) + QLatin1Char('\'');
        }
        if (!main) {
            for (const char *column : kCopiedToOther) {
                columns << QString::fromLatin1(column);
                values << QLatin1Char('\'') + m_data->TruncVarSQL(valueOf(QString::fromLatin1(column))) + QLatin1Char('\'');
            }
        }
        ok = m_data->ConQuery(QStringLiteral("Delete From %1 Where %2='%3'").arg(table, keyColumn, key))
             && m_data->ConQuery(QStringLiteral("Insert Into %1 (%2) Values (%3)")
                                     .arg(table, columns.join(QLatin1Char(',')), values.join(QLatin1Char(','))));
    }
    if (!ok) {
        const QString why = m_data->lastError();
        m_data->RollbackTrans();
        dialogs()->inform(QStringLiteral("The deductor could not be saved; nothing was changed.\n\n") + why,
                          QString(), Dialogs::Icon::Critical);
        return false;
    }
    m_data->CommitTrans();
    m_data->ConQuery(QStringLiteral("Flush Tables"));
    m_code = code;
    return true;
}
