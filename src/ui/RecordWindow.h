#pragma once
// The window of a multi-record form: the record's fields (built by the form), the button
// rows of browsing and editing, the status line, and Escape asking the question of the
// state it is in. Fields are read-only while browsing.
#include "ui/FormWindow.h"

#include <QHash>

class QBoxLayout;
class QPushButton;
class RecordForm;

class RecordWindow : public FormWindow
{
    Q_OBJECT
public:
    // cmdadd, cmdmodify, cmdupdate, cmddelete, cmdcopy, cmdcancel, cmdback, cmdfirst,
    // cmdprev, cmdnext, cmdlast, cmdshowrep.
    QPushButton *button(const QString &name) const { return m_buttons.value(name); }
    RecordForm &recordForm() const { return m_logic; }

public slots:
    void cmdaddClicked();
    void cmdmodifyClicked();
    void cmdupdateClicked();
    void cmddeleteClicked();
    void cmdcopyClicked();
    void cmdcancelClicked();
    void cmdbackClicked();
    void cmdshowrepClicked();
    void navigate(int step);   // -2 first, -1 previous, 1 next, 2 last

protected:
    RecordWindow(RecordForm &logic, QString caption, QWidget *parent);

    // The two button rows under the fields; printCaption is the form's own ("&Form 15G").
    // captions: a form's own caption for any button by name, where its access keys need it.
    void addButtons(QBoxLayout *panel, const QString &printCaption, const QHash<QString, QString> &captions = {});
    void formLoad();
    // Shows the logic's current values; makes the fields editable or not.
    virtual void showFields() = 0;
    virtual void setFieldsReadOnly(bool readOnly) = 0;
    // What the fields show, into the logic, just before a save.
    virtual void collectFields() = 0;
    // Where the cursor goes when editing starts.
    virtual QWidget *firstEditField() const { return firstField(); }
    // The editor of a slot, brought into view (its tab shown), for a refused save; null: none.
    virtual QWidget *revealSlot(int slot) { Q_UNUSED(slot); return nullptr; }

    bool confirmClose() override;
    void refresh();

private:
    void failed(const QString &why);
    void runAsked(bool (RecordForm::*step)());

    RecordForm &m_logic;
    QString m_caption;
    QHash<QString, QPushButton *> m_buttons;
};
