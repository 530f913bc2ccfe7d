#include "forms/frm15i.h"

#include "ui/FormLayout.h"
#include "shared/modbase.h"
#include "ui/SlotFields.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frm15i::frm15i(QWidget *parent) : LogicWindow(m_logic, QStringLiteral("Form 15I"), parent)
{
    setWindowTitle(QStringLiteral("Form No. 15I"));
    QBoxLayout *panel = FormLayout::centredPanel(
        this, QStringLiteral("FORM NO. 15I"),
        QStringLiteral("[See sub-rule [1] of rule 29D]\nDeclaration for non-deduction of tax at source to be "
                       "furnished to contractor under the second proviso to clause [i] of sub-section (3) of "
                       "section 194C by sub-contractor not owning more than two heavy goods carriages/trucks"));
    QWidget *frame = panel->parentWidget();

    auto *intro = new QLabel(QStringLiteral("Particulars of the heavy goods carriages/trucks owned during the "
                                            "Financial Year:"),
                             frame);
    intro->setWordWrap(true);
    panel->addWidget(intro);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    auto header = [frame](const QString &text) {
        auto *l = new QLabel(text, frame);
        QFont f = l->font();
        f.setBold(true);
        l->setFont(f);
        return l;
    };
    QLabel *regHeader = header(QStringLiteral("&Registration Number"));
    QLabel *dateHeader = header(QStringLiteral("&Date of Registration"));
    grid->addWidget(header(QStringLiteral("S. No.")), 0, 0, Qt::AlignCenter);
    grid->addWidget(regHeader, 0, 1);
    grid->addWidget(dateHeader, 0, 2);
    for (int srNo = 1; srNo <= Form15ILogic::lineCount; ++srNo) {
        auto *number = new QLabel(QString::number(srNo) + QLatin1Char('.'), frame);
        auto *reg = new QLineEdit(frame);
        reg->setObjectName(fieldName(1, srNo));
        reg->setMaxLength(255);
        reg->setMinimumWidth(300);
        auto *date = new QLineEdit(frame);
        date->setObjectName(fieldName(2, srNo));
        date->setMaxLength(10);
        date->setPlaceholderText(QStringLiteral("dd/mm/yyyy"));
        date->setMinimumWidth(110);
        grid->addWidget(number, srNo, 0, Qt::AlignCenter);
        grid->addWidget(reg, srNo, 1);
        grid->addWidget(date, srNo, 2);
        SlotFields::applyRules(this, reg, Form15ILogic::registrationSlot(), modbase::dataObject());
        SlotFields::applyRules(this, date, Form15ILogic::dateSlot(), modbase::dataObject());
        connect(reg, &QLineEdit::textChanged, this, [this, srNo](const QString &t) { m_logic.setRegistration(srNo, t); });
        connect(date, &QLineEdit::textChanged, this,
                [this, srNo](const QString &t) { m_logic.setRegistrationDate(srNo, t); });
        m_txtfields1[srNo] = reg;
        m_txtfields2[srNo] = date;
    }
    regHeader->setBuddy(m_txtfields1[1]);
    dateHeader->setBuddy(m_txtfields2[1]);
    grid->setColumnStretch(1, 1);
    panel->addLayout(grid);

    addButtons(panel);

    // Row by row: number, then date, then the next line.
    setTabOrder(m_txtfields1[1], m_txtfields2[1]);
    setTabOrder(m_txtfields2[1], m_txtfields1[2]);
    setTabOrder(m_txtfields1[2], m_txtfields2[2]);
    setTabOrder(m_txtfields2[2], cmdupdate());
    setTabOrder(cmdupdate(), cmdshowrep());
    formLoad();
}

QString frm15i::fieldName(int array, int srNo)
{
    return QStringLiteral("txtfields") + QString::number(array) + QLatin1Char('_') + QString::number(srNo);
}

QLineEdit *frm15i::txtfields1(int srNo) const
{
    return srNo >= 1 && srNo <= Form15ILogic::lineCount ? m_txtfields1[srNo] : nullptr;
}

QLineEdit *frm15i::txtfields2(int srNo) const
{
    return srNo >= 1 && srNo <= Form15ILogic::lineCount ? m_txtfields2[srNo] : nullptr;
}

void frm15i::showFields()
{
    for (int srNo = 1; srNo <= Form15ILogic::lineCount; ++srNo) {
        m_txtfields1[srNo]->setText(m_logic.registration(srNo));
        m_txtfields2[srNo]->setText(m_logic.registrationDate(srNo));
    }
}

void frm15i::setFieldsReadOnly(bool readOnly)
{
    for (int srNo = 1; srNo <= Form15ILogic::lineCount; ++srNo) {
        m_txtfields1[srNo]->setReadOnly(readOnly);
        m_txtfields2[srNo]->setReadOnly(readOnly);
    }
}
