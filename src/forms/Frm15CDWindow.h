#pragma once
// The window shared by Forms 15C and 15D: a column of labelled fields txtfields(0..n-1)
// in the order of the statutory form, and the buttons cmdupdate and cmdshowrep.
#include "forms/Form15CDLogic.h"
#include "ui/LogicWindow.h"

class QLineEdit;
class SlotFields;

class Frm15CDWindow : public LogicWindow
{
    Q_OBJECT
public:
    QLineEdit *txtfields(int index) const;
    int fieldCount() const;
    const Form15CDLogic &logic() const { return m_logic; }

    // Object name of txtfields(index): "txtfields_<index>".
    static QString fieldName(int index);

protected:
    Frm15CDWindow(Form15CDLogic::Kind kind, const QString &formNumber, const QString &description, QWidget *parent);

private:
    void showFields() override;
    void setFieldsReadOnly(bool readOnly) override;

    Form15CDLogic m_logic;
    SlotFields *m_txtfields = nullptr;
};
