#pragma once
// A form window over a widget-free FormLogic: loads on opening, refuses to save what failed
// to load (and says so), saves and prints through the logic, and reports every save.
#include "ui/FormWindow.h"

class FormLogic;
class QBoxLayout;
class QPushButton;

class LogicWindow : public FormWindow
{
    Q_OBJECT
public:
    QPushButton *cmdupdate() const { return m_cmdupdate; }
    QPushButton *cmdshowrep() const { return m_cmdshowrep; }
    // The statutory name, "Form 15C".
    QString caption() const { return m_caption; }

public slots:
    void cmdupdateClicked();
    void cmdshowrepClicked();

protected:
    LogicWindow(FormLogic &logic, QString caption, QWidget *parent);

    // "&Save" and "&Print" at the bottom of the panel, with the status line beside them.
    void addButtons(QBoxLayout *panel);
    // Reads the stored rows and shows them; a failure is said and leaves the form read-only.
    void formLoad();
    virtual void showFields() = 0;
    virtual void setFieldsReadOnly(bool readOnly) = 0;

private:
    FormLogic &m_logic;
    QString m_caption;
    QPushButton *m_cmdupdate = nullptr;
    QPushButton *m_cmdshowrep = nullptr;
};
