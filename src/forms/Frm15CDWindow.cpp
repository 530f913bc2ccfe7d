#include "forms/Frm15CDWindow.h"

#include "shared/modbase.h"
#include "ui/FormLayout.h"
#include "ui/SlotFields.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QLineEdit>

Frm15CDWindow::Frm15CDWindow(Form15CDLogic::Kind kind, const QString &formNumber, const QString &description,
                             QWidget *parent)
    : LogicWindow(m_logic, QString(formNumber).remove(QStringLiteral("No. ")), parent), m_logic(kind)
{
    QBoxLayout *panel = FormLayout::centredPanel(this, formNumber.toUpper(), description);
    setWindowTitle(formNumber);

    auto *form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setHorizontalSpacing(12);
    m_txtfields = new SlotFields(QStringLiteral("txtfields"), m_logic.slotTable(), panel->parentWidget());
    m_txtfields->addRows(form);
    m_txtfields->bind(this, modbase::dataObject());
    connect(m_txtfields, &SlotFields::valueChanged, this, [this](int i, const QString &text) { m_logic.setField(i, text); });
    panel->addLayout(form);
    addButtons(panel);
    formLoad();
}

QLineEdit *Frm15CDWindow::txtfields(int index) const
{
    return qobject_cast<QLineEdit *>(m_txtfields->widget(index));
}

int Frm15CDWindow::fieldCount() const
{
    return m_txtfields->count();
}

QString Frm15CDWindow::fieldName(int index)
{
    return SlotFields::controlName(QStringLiteral("txtfields"), index);
}

void Frm15CDWindow::showFields()
{
    m_txtfields->setValues(m_logic.fields());
}

void Frm15CDWindow::setFieldsReadOnly(bool readOnly)
{
    m_txtfields->setReadOnly(readOnly);
}
