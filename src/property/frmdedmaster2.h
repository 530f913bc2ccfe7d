#pragma once
// "Deductees Master": the deductees of the current deductor in the grid vsf, the fields of
// the one chosen (txtfields, the state list Combo2, the group list Combo5, where a group
// typed that is not in the list is added on saving) and the buttons. Fields are locked
// while browsing; the grid is locked while editing.
#include "property/DeducteeMaster.h"
#include "ui/FormWindow.h"

#include <QHash>

class QComboBox;
class QPushButton;
class QTableWidget;
class SlotFields;

class frmdedmaster2 : public FormWindow
{
    Q_OBJECT
public:
    explicit frmdedmaster2(QWidget *parent = nullptr);

    DeducteeMaster &master() { return m_master; }
    SlotFields *txtfields() const { return m_fields; }
    QComboBox *Combo5() const { return m_groups; }
    QTableWidget *vsf() const { return m_grid; }
    // cmdaddded, cmdmodifyded, cmdupdateded, cmddeleteded, cmdcancelded, cmdback, cmdpanV.
    QPushButton *button(const QString &name) const { return m_buttons.value(name); }

public slots:
    void cmdadddedClicked();
    void cmdmodifydedClicked();
    void cmdupdatededClicked();
    void cmddeletededClicked();
    void cmdcanceldedClicked();
    void cmdbackClicked();
    void cmdpanVClicked();

protected:
    bool confirmClose() override;

private:
    void formLoad();
    // The logic's state on screen; the grid is filled again only when asked.
    void refresh(bool refillGrid = true);
    void fillGrid();
    void fillGroups();
    void showFields();
    void collectFields();
    void startEditing();

    DeducteeMaster m_master;
    SlotFields *m_fields = nullptr;
    QComboBox *m_groups = nullptr;
    QTableWidget *m_grid = nullptr;
    QHash<QString, QPushButton *> m_buttons;
    bool m_filling = false;
};
