#pragma once
// Form 15I: declaration by a sub-contractor owning not more than two heavy goods
// carriages. The two lines of the vehicle table are txtfields1(1..2) (registration number)
// and txtfields2(1..2) (date of registration).
#include "forms/Form15ILogic.h"
#include "ui/FormWindow.h"

class QLineEdit;
class QPushButton;

class frm15i : public FormWindow
{
    Q_OBJECT
public:
    explicit frm15i(QWidget *parent = nullptr);

    QLineEdit *txtfields1(int srNo) const;
    QLineEdit *txtfields2(int srNo) const;
    const Form15ILogic &logic() const { return m_logic; }

    // Object names: "txtfields1_<srNo>", "txtfields2_<srNo>".
    static QString fieldName(int array, int srNo);

public slots:
    void on_cmdupdate_clicked();
    void on_cmdshowrep_clicked();

private:
    void formLoad();
    void showFields();
    void fieldLeft(QWidget *field);

    Form15ILogic m_logic;
    QLineEdit *m_txtfields1[Form15ILogic::lineCount + 1] = {};
    QLineEdit *m_txtfields2[Form15ILogic::lineCount + 1] = {};
    QPushButton *m_cmdupdate = nullptr;
    QPushButton *m_cmdshowrep = nullptr;
};
