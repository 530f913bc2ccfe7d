#pragma once
// The window of Forms 15G and 15H: the declarant's tab (txtfieldsM) and the payer's tab
// (txtfieldsP), the source flags with their schedule buttons cmdincsch (or one button for
// the detail table of a design without flags), and the record buttons. frm15gNew and
// frm15hNew are this window for their form, frm15g and frm15h for the first layout.
#include "declarations/DeclarationForm.h"
#include "ui/RecordWindow.h"

class SlotFields;
class QTabWidget;

class DeclarationWindow : public RecordWindow
{
    Q_OBJECT
public:
    SlotFields *txtfieldsM() const { return m_declarant; }
    SlotFields *txtfieldsP() const { return m_payer; }
    DeclarationForm &declaration() { return m_form; }

    // The schedule frame of detail table k over the current declaration.
    void cmdincschClicked(int k);

protected:
    DeclarationWindow(DeclarationSlots::Design design, QWidget *parent);

private:
    void showFields() override;
    void setFieldsReadOnly(bool readOnly) override;
    void collectFields() override;
    QWidget *firstEditField() const override;
    QWidget *revealSlot(int slot) override;

    DeclarationForm m_form;
    SlotFields *m_declarant = nullptr;
    SlotFields *m_payer = nullptr;
    QTabWidget *m_tabs = nullptr;
    QList<QWidget *> m_scheduleButtons;
};

class frm15gNew : public DeclarationWindow
{
    Q_OBJECT
public:
    explicit frm15gNew(QWidget *parent = nullptr) : DeclarationWindow(DeclarationSlots::current(false), parent) {}
};

class frm15hNew : public DeclarationWindow
{
    Q_OBJECT
public:
    explicit frm15hNew(QWidget *parent = nullptr) : DeclarationWindow(DeclarationSlots::current(true), parent) {}
};
