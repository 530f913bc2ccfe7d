#pragma once
// The window shared by Forms 15C and 15D: a column of labelled fields txtfields(0..n-1)
// in the order of the statutory form, and the buttons cmdupdate and cmdshowrep.
#include "forms/Form15CDLogic.h"
#include "ui/FormWindow.h"

#include <QList>
#include <QStringList>

class QLineEdit;
class QPushButton;

class Frm15CDWindow : public FormWindow
{
    Q_OBJECT
public:
    QLineEdit *txtfields(int index) const { return m_txtfields.value(index); }
    int fieldCount() const { return int(m_txtfields.size()); }
    const Form15CDLogic &logic() const { return m_logic; }

    // Object name of txtfields(index): "txtfields_<index>".
    static QString fieldName(int index);

public slots:
    void on_cmdupdate_clicked();
    void on_cmdshowrep_clicked();

protected:
    Frm15CDWindow(Form15CDLogic::Kind kind, const QString &formNumber, const QString &description,
                  const QStringList &captions, QWidget *parent);

private:
    void formLoad();
    void showFields();

    Form15CDLogic m_logic;
    QList<QLineEdit *> m_txtfields;
    QPushButton *m_cmdupdate = nullptr;
    QPushButton *m_cmdshowrep = nullptr;
};
