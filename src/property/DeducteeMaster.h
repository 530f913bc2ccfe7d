#pragma once
// The deductees of one deductor for Form 26QA (frmdedmaster2), without widgets: the list in
// serial order, add / modify / save / delete, the group list, and the checks of the fields.
// DedSrNo is one counter over the whole table, so a payment's deductee number never
// belongs to two deductors.
#include "json/Dialogs.h"
#include "shared/FieldRules.h"
#include "shared/RecordForm.h"
#include "shared/Slot.h"

#include <QList>
#include <QStringList>

class IDataObject;

struct DeducteeGroup
{
    int code = 0;
    QString desc;
};

struct Deductee
{
    int serial = 0;
    QStringList values;   // txtfields 0..9; 8 is the state
    QString group;        // the group's description; "" for none
};

class DeducteeMaster
{
public:
    // Indices of the control array txtfields (8 is the state list Combo2).
    enum Field { Name, Pan, BirthDate, Flat, Building, Street, Area, City, State, Pin, FieldCount };
    // A refusal that concerns the group list rather than a field.
    static constexpr int GroupField = FieldCount;

    static QString module() { return QStringLiteral("frmdedmaster2"); }
    static QString caption() { return QStringLiteral("Deductees Master"); }
    static SlotTable fields();
    // The leave check of a field: normalised text, or the refusal with its message.
    static FieldRules::Outcome leave(int field, const QString &text, const IDataObject &data);

    void setDialogs(Dialogs *dialogs) { m_dialogs = dialogs; }

    // Groups and the deductees of the data object's deductor. False (logged, loadError()
    // says why) on failure; such a master saves and deletes nothing.
    bool load();
    bool loadFailed() const { return m_loadFailed; }
    QString loadError() const { return m_loadError; }

    const QList<Deductee> &deductees() const { return m_rows; }
    const QList<DeducteeGroup> &groups() const { return m_groups; }
    int position() const { return m_position; }    // -1 when empty or adding
    int currentSerial() const { return m_serial; }  // 0 while a new one is unsaved
    bool moveTo(int position);
    bool moveToSerial(int serial);

    // What the screen shows.
    const QStringList &values() const { return m_values; }
    void setValues(const QStringList &values);
    QString group() const { return m_group; }
    void setGroup(const QString &text) { m_group = text; }

    bool editing() const { return m_editing; }
    bool adding() const { return m_adding; }

    // The buttons. save() and deleteCurrent() tell the operator through the dialogs; false
    // when refused, answered No or failed (saveError() says why, refusedField() where).
    void add();
    bool modify();
    bool save();
    bool deleteCurrent();
    bool cancel();       // asks; true when the entry was dropped
    // Escape or closing: while editing asks to cancel the entry (the form stays); while
    // browsing asks to exit. True when the form may close.
    bool escape();

    QString saveError() const { return m_saveError; }
    int refusedField() const { return m_refusedField; }
    QString statusText() const { return m_status; }

    // cmdpanV: what this host can say about a PAN.
    QString verifyPan(const QString &pan) const;

    // From a file: the texts checked as if typed, the group added when new, stored under
    // the serial (0: the next free one; else it must be one of this deductor's). The
    // serial stored, or 0 with *why (nothing stored).
    int store(int serial, QStringList values, const QString &group, QString *why);
    // Without asking: the deductee and its payments of every period; false with *why.
    bool remove(int serial, QString *why);

    Question deleteQuestion = {QStringLiteral("Do you want to Delete Selected Item? All the Details of Selected "
                                              "Deductee will be Deleted.")};
    Question cancelQuestion = {QStringLiteral("Do you want to Cancel the Entry?")};
    Question exitQuestion = {QStringLiteral("Do you want to exit ?"), Dialogs::Icon::Exclamation, true};

private:
    void readGroups(IDataObject &data);
    void readRows(IDataObject &data);
    bool reload(int serial);
    void showCurrent();
    void setPositionStatus();
    bool ask(const Question &question);
    void tell(const QString &message, Dialogs::Icon icon);
    // Every field's rules on values (normalised in place); false with the field and message.
    static bool check(IDataObject &data, QStringList &values, bool imported, int *field, QString *message);
    // The code of a group text, added to Group_Master when it is new. 0 for none.
    int groupCode(IDataObject &data, const QString &text);
    // Stores values under serial (0: allocated); the serial stored. Throws on failure.
    int write(IDataObject &data, int serial, const QStringList &values, int group);
    QString codeText(const IDataObject &data) const;

    Dialogs *m_dialogs = nullptr;
    QString m_code;
    QList<DeducteeGroup> m_groups;
    QList<Deductee> m_rows;
    QStringList m_values;
    QString m_group;
    int m_position = -1;
    int m_serial = 0;
    bool m_editing = false;
    bool m_adding = false;
    bool m_loadFailed = false;
    QString m_loadError;
    QString m_saveError;
    int m_refusedField = -1;
    QString m_status;
};
