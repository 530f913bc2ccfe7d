#pragma once
// The challan windows (ITNS 281) over ChallanForm: the grid vsf of the year's challans, the
// fields of one challan, famact1 (Add, Modify, Delete, ...) while browsing and famact2
// (Update, Cancel) while editing. ChallanNew takes its amounts section by section in
// VsMySec, choosing each section in the picker FrameSec; Challan, the older form, takes one
// nature of payment in Combo1.
#include "challan/ChallanForm.h"
#include "epay/EPayWindow.h"
#include "ui/FormWindow.h"

#include <QHash>
#include <QPointer>

class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QFrame;
class QLabel;
class QPushButton;
class QShortcut;
class QTableWidget;
class QWidget;
class ScheduleGrid;
class SlotFields;

class ChallanWindow : public FormWindow
{
    Q_OBJECT
public:
    ChallanForm &challan() { return m_form; }
    SlotFields *txtfields() const { return m_fields; }
    QPushButton *button(const QString &name) const { return m_buttons.value(name); }
    // The e-pay window opened by cmdePayITD, while it is open.
    frmePayITD *ePayWindow() const { return m_ePay; }

    // Browsing opens on the list of challans.
    QWidget *firstField() const override;

public slots:
    void cmdaddClicked();
    void cmdmodifyClicked();
    void cmddeleteClicked();
    void cmdupdateClicked();
    void cmdcancelClicked();
    void CmdCopyChClicked();
    void cmdprintwinClicked();
    void cmdbackClicked();
    void CmdAddSecClicked();
    void CmdDelSecClicked();
    void CmdSearchClicked();
    void CmdBackSecClicked();
    void cmdePayClicked();
    void cmdePayITDClicked();
    void vsfClicked(int row);

protected:
    ChallanWindow(ChallanForm::Kind kind, QWidget *parent);

    bool confirmClose() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildFields(QWidget *frame);
    QWidget *buildList(QWidget *frame);
    QWidget *buildAmounts(QWidget *frame);
    QWidget *buildOptions(QWidget *frame);
    QWidget *buildSections(QWidget *frame);
    QWidget *buildButtons(QWidget *frame);
    void buildPicker();
    void buildProgress();
    void chainFocus();

    void formLoad();
    void refresh();
    void showGrid();
    void showFields();
    void showComputed();
    void setMode();
    void collect();
    void refused();
    void commitSectionEdit();

    QString sectionText(const QString &key) const;
    void setSectionRow(int row, const ChallanSection &section);
    ChallanSection sectionRow(int row) const;
    void sectionCellChanged(int row, int column);
    void choose(int pickerRow);
    void closePicker(int column);
    void leaveGroup(QAbstractButton *option, bool forward);

    ChallanForm m_form;
    QString m_caption;
    bool m_showing = false;

    QFrame *m_frame1 = nullptr;
    QTableWidget *m_vsf = nullptr;
    SlotFields *m_fields = nullptr;
    QComboBox *m_combo = nullptr;          // Combo1, the older form
    QButtonGroup *m_payModes = nullptr;    // Option1..3
    QButtonGroup *m_deductees = nullptr;   // optcomp (1), optnoncomp (0)
    QButtonGroup *m_payTypes = nullptr;    // optpaytype_0, _1
    QButtonGroup *m_residence = nullptr;   // optResType_0, _1
    ScheduleGrid *m_sections = nullptr;    // VsMySec, the current form
    QWidget *m_famact1 = nullptr;
    QWidget *m_famact2 = nullptr;
    QHash<QString, QPushButton *> m_buttons;
    QShortcut *m_save = nullptr;

    QFrame *m_famprog = nullptr;           // the NSDL run's progress, in place of Frame1
    QLabel *m_lblprog = nullptr;
    bool m_stopRun = false;                // FlagCancel of the running hand-off
    QPointer<frmePayITD> m_ePay;

    QFrame *m_frameSec = nullptr;
    QTableWidget *m_picker = nullptr;      // VsSec
    int m_pickerColumn = 0;                // the column typing searches
    int m_pickRow = -1;                    // the VsMySec row being given its section
    QHash<QString, QString> m_sectionTexts;
};

class ChallanNew : public ChallanWindow
{
    Q_OBJECT
public:
    explicit ChallanNew(QWidget *parent = nullptr) : ChallanWindow(ChallanForm::Kind::Current, parent) {}
};

class Challan : public ChallanWindow
{
    Q_OBJECT
public:
    explicit Challan(QWidget *parent = nullptr) : ChallanWindow(ChallanForm::Kind::Older, parent) {}
};
