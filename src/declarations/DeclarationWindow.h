#pragma once
// The window of Forms 15G and 15H: the declarant's tab (txtfieldsM) and the payer's tab
// (txtfieldsP), the five source flags with their schedule buttons cmdincsch, and the
// record buttons. frm15gNew and frm15hNew are this window for their form.
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

    // The schedule frame of source k (0..4) over the current declaration.
    void cmdincschClicked(int k);

protected:
    DeclarationWindow(bool form15H, QWidget *parent);

private:
    void showFields() override;
    void setFieldsReadOnly(bool readOnly) override;
    void collectFields() override;
    QWidget *firstEditField() const override;

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
    explicit frm15gNew(QWidget *parent = nullptr) : DeclarationWindow(false, parent) {}
};

class frm15hNew : public DeclarationWindow
{
    Q_OBJECT
public:
    explicit frm15hNew(QWidget *parent = nullptr) : DeclarationWindow(true, parent) {}
};
