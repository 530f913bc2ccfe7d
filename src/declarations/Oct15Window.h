#pragma once
// The window of Forms 15G and 15H of October 2015: the declarant's items in the order of the
// form (txtfieldsM) ending in the income details grid vsM with its row buttons, Part II
// (txtfieldsP), and the record buttons. frm15gOct15 and frm15hOct15 are this window.
#include "declarations/Oct15Form.h"
#include "ui/RecordWindow.h"

class QPushButton;
class QScrollArea;
class QTabWidget;
class ScheduleGrid;
class SlotFields;

class Oct15Window : public RecordWindow
{
    Q_OBJECT
public:
    SlotFields *txtfieldsM() const { return m_declarant; }
    SlotFields *txtfieldsP() const { return m_payer; }
    ScheduleGrid *vsM() const { return m_grid; }
    Oct15Form &declaration() { return m_form; }

protected:
    Oct15Window(bool form15H, QWidget *parent);

private:
    void showFields() override;
    void setFieldsReadOnly(bool readOnly) override;
    void collectFields() override;
    QWidget *firstEditField() const override;
    QWidget *revealSlot(int slot) override;

    Oct15Form m_form;
    SlotFields *m_declarant = nullptr;
    SlotFields *m_payer = nullptr;
    ScheduleGrid *m_grid = nullptr;
    QPushButton *m_addRow = nullptr;
    QPushButton *m_deleteRow = nullptr;
    QTabWidget *m_tabs = nullptr;
    QScrollArea *m_declarantPage = nullptr;
};

class frm15gOct15 : public Oct15Window
{
    Q_OBJECT
public:
    explicit frm15gOct15(QWidget *parent = nullptr) : Oct15Window(false, parent) {}
};

class frm15hOct15 : public Oct15Window
{
    Q_OBJECT
public:
    explicit frm15hOct15(QWidget *parent = nullptr) : Oct15Window(true, parent) {}
};
