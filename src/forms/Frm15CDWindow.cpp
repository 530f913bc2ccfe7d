#include "forms/Frm15CDWindow.h"

#include "forms/FormLayout.h"
#include "shared/modbase.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

Frm15CDWindow::Frm15CDWindow(Form15CDLogic::Kind kind, const QString &formNumber, const QString &description,
                             const QStringList &captions, QWidget *parent)
    : FormWindow(parent), m_logic(kind)
{
    setObjectName(m_logic.module());
    QBoxLayout *panel = FormLayout::centredPanel(this, formNumber.toUpper(), description);
    setWindowTitle(formNumber);

    auto *form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setHorizontalSpacing(12);
    QWidget *frame = panel->parentWidget();
    for (int i = 0; i < m_logic.fieldCount(); ++i) {
        auto *edit = new QLineEdit(frame);
        edit->setObjectName(fieldName(i));
        edit->setMaxLength(255);
        edit->setMinimumWidth(380);
        auto *label = new QLabel(captions.value(i), frame);
        label->setBuddy(edit);
        form->addRow(label, edit);
        connect(edit, &QLineEdit::textChanged, this, [this, i](const QString &text) { m_logic.setField(i, text); });
        m_txtfields << edit;
    }
    panel->addLayout(form);

    m_cmdupdate = FormLayout::button(frame, "cmdupdate", QStringLiteral("&Save"));
    m_cmdshowrep = FormLayout::button(frame, "cmdshowrep", QStringLiteral("&Print"));
    FormLayout::addButtonRow(panel, {m_cmdupdate, m_cmdshowrep});
    connect(m_cmdupdate, &QPushButton::clicked, this, &Frm15CDWindow::on_cmdupdate_clicked);
    connect(m_cmdshowrep, &QPushButton::clicked, this, &Frm15CDWindow::on_cmdshowrep_clicked);

    formLoad();
}

QString Frm15CDWindow::fieldName(int index)
{
    return QStringLiteral("txtfields_") + QString::number(index);
}

void Frm15CDWindow::formLoad()
{
    modbase::errorTrap(m_logic.module(), QStringLiteral("Form_Load"), [this] {
        if (IDataObject *d = modbase::dataObject())
            d->Resize_For_Resolution(this);
    });
    m_logic.load();
    showFields();
}

void Frm15CDWindow::showFields()
{
    for (int i = 0; i < m_txtfields.size(); ++i)
        m_txtfields[i]->setText(m_logic.field(i));
}

void Frm15CDWindow::on_cmdupdate_clicked()
{
    m_logic.save();
}

void Frm15CDWindow::on_cmdshowrep_clicked()
{
    m_logic.print();
}
