#pragma once
// Form 15I: declaration by a sub-contractor owning not more than two heavy goods
// carriages. The two lines of the vehicle table are txtfields1(1..2) (registration number)
// and txtfields2(1..2) (date of registration).
#include "forms/Form15ILogic.h"
#include "ui/LogicWindow.h"

class QLineEdit;

class frm15i : public LogicWindow
{
    Q_OBJECT
public:
    explicit frm15i(QWidget *parent = nullptr);

    QLineEdit *txtfields1(int srNo) const;
    QLineEdit *txtfields2(int srNo) const;
    const Form15ILogic &logic() const { return m_logic; }

    // Object names: "txtfields1_<srNo>", "txtfields2_<srNo>".
    static QString fieldName(int array, int srNo);

private:
    void showFields() override;
    void setFieldsReadOnly(bool readOnly) override;

    Form15ILogic m_logic;
    QLineEdit *m_txtfields1[Form15ILogic::lineCount + 1] = {};
    QLineEdit *m_txtfields2[Form15ILogic::lineCount + 1] = {};
};
