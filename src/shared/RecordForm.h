#pragma once
// A form that keeps any number of records under one Period_Code, numbered by a serial:
// the browse set in serial order, add / modify / save / delete / copy / cancel, first to
// last, browsing versus editing, and the questions that guard each destructive step.
#include "json/Dialogs.h"
#include "shared/FormLogic.h"
#include "shared/Slot.h"

#include <QList>

class TransactionGuard;

// The statement texts of a record table, as each form has always written them.
struct RecordStatements
{
    QString browse;       // + P + order: "Select * From Tb15gM Where Period_Code="
    QString order;        // " Order by FormSrNo"
    QString maxSerial;    // + P: "Select Max(FormSrNo) From Tb15gM Where Period_Code="
    QString deleteRow;    // + P + deleteSerial + S: "DELETE FROM Tb15gM WHERE Period_Code="
    QString deleteSerial; // " AND FormSrNo="
    QString insertRow;    // + P + "," + S + values + ")": "INSERT INTO Tb15gM VALUES ("

    static RecordStatements forTable(const QString &table, const QString &serialColumn = QStringLiteral("FormSrNo"));
};

// A save refused by the form's own checks: the slot to correct and what to tell the operator.
struct Refusal
{
    int slot = -1;   // -1: nothing refused
    QString message;
};

struct Question
{
    QString text;
    Dialogs::Icon icon = Dialogs::Icon::Question;
    bool yesIsDefault = false;
};

class RecordForm : public FormLogic
{
public:
    RecordForm(RecordStatements statements, SlotTable slotTable, QString recordName);

    const SlotTable &slotTable() const { return m_slots; }
    const QString &recordName() const { return m_recordName; }   // "Declaration"
    void setDialogs(Dialogs *dialogs) { m_dialogs = dialogs; }

    // --- the browse set
    int count() const { return int(m_serials.size()); }
    bool isEmpty() const { return m_serials.isEmpty(); }
    int position() const { return m_position; }          // 0-based; -1 when empty
    int currentSerial() const { return m_serial; }        // 0 while a new record is unsaved
    QList<int> serials() const { return m_serials; }

    // --- what the screen shows, slot order
    QString value(int slot) const { return m_values.value(slot); }
    void setValue(int slot, const QString &text);
    const QStringList &values() const { return m_values; }
    void setValues(const QStringList &values)
    {
        m_values = values;
        m_values.resize(m_slots.size());
    }

    bool editing() const { return m_editing; }
    bool adding() const { return m_adding; }

    // --- the buttons
    void first();
    void previous();
    void next();
    void last();
    bool moveTo(int position);
    void add();
    bool modify();                 // false when there is nothing to modify
    bool saveRecord();             // false: refused or failed, saveError() says why
    // The slot the last save or store was refused for by checkBeforeSave(), or -1.
    int refusedSlot() const { return m_refusedSlot; }
    bool deleteRecord();           // asks; false on No or failure
    bool copyRecord();             // asks; the copy becomes current and is edited
    void cancel();                 // the current record shown again, browsing
    // Escape (and closing): while editing asks to cancel the changes (Yes cancels, the form
    // stays); while browsing asks to exit. True when the form may close.
    bool escape();

    // "3 of 5", "No declarations", "Declaration 3 saved".
    QString statusText() const { return m_status; }

    // Questions, each with its own text, icon and default button.
    Question deleteQuestion = {QStringLiteral("Do you really want to Delete the Selected Item ?")};
    Question copyQuestion = {QStringLiteral("Do you really want to Make a Copy of the Selected Item ?")};
    Question cancelQuestion = {QStringLiteral("You are currently editing a record. Do you really want to cancel changes ?")};
    Question exitQuestion = {QStringLiteral("Do you really want to exit ?")};
    // The key of the window's Add button, for the status line of an empty period.
    QString addKeyHint = QStringLiteral("Alt+A");

    // The browse set again, positioned on the serial (or the nearest before it).
    bool requery(int serial);

    // An import: the values stored under the serial (0: the next free one) in one
    // transaction, as Save would store them, without re-reading the browse set. The serial
    // stored, or 0 with saveError() saying why.
    int storeRecord(int serial, const QStringList &values);

protected:
    void clear() override;
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;

    // The form's checks of the values about to be saved (a window's Save and an import
    // alike); the default refuses nothing.
    virtual Refusal checkBeforeSave() const { return {}; }
    // "Please specify valid '<caption>'." for the slot, its access-key mark left out.
    Refusal specifyValid(int slot) const;
    // A new record's values; the default is all empty.
    virtual QStringList newRecordValues() const { return QStringList(); }
    // Detail rows of a record, removed with it (e.g. its schedules), inside the transaction.
    virtual QStringList deleteDetailStatements(int serial) const;
    // Detail rows copied from one record to its copy, inside the same transaction.
    virtual void copyDetails(IDataObject &data, TransactionGuard &guard, int fromSerial, int toSerial);

    const RecordStatements &statements() const { return m_statements; }
    Dialogs *dialogs() const { return m_dialogs; }
    QString periodText() const { return QString::number(m_periodCode); }

private:
    bool ask(const Question &question);
    void showCurrent();
    void setPositionStatus();
    // Writes the screen's values under the serial (allocated when 0), with the extra
    // work in the same transaction; retried with a new serial when another desk took it.
    bool writeRecord(int sourceSerialForDetails);
    bool refusedByChecks();

    RecordStatements m_statements;
    SlotTable m_slots;
    QString m_recordName;
    Dialogs *m_dialogs = nullptr;
    QList<int> m_serials;
    QList<QStringList> m_rows;
    QStringList m_values;
    int m_position = -1;
    int m_serial = 0;
    int m_refusedSlot = -1;
    bool m_editing = false;
    bool m_adding = false;
    QString m_status;
    QString m_lastError;
};
