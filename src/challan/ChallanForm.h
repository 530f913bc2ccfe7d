#pragma once
// The challans (ITNS 281) of a deductor and year: the list of the grid, one challan on
// screen, browse and edit, update (insert or update), copy, delete, and the section-wise
// amounts of the current form. No widgets: ChallanWindow shows it, the command line and
// the tests drive it directly.
#include "challan/ChallanPrint.h"
#include "json/Dialogs.h"
#include "shared/FormLogic.h"

#include <QList>
#include <QStringList>

class TransactionGuard;

// One row of the section grid VsMySec: the section's list key and its four amounts.
struct ChallanSection
{
    QString key;        // PayNat: the key of the section list; empty while none is chosen
    QString tax;
    QString surcharge;
    QString cess;       // HEducess
    QString other;      // the fifth amount

    bool hasAmount() const;
    bool operator==(const ChallanSection &) const = default;
};

class ChallanForm : public FormLogic
{
public:
    enum class Kind { Current, Older };   // ChallanNew, Challan
    enum PayMode { NoPayMode = -1, Cash = 0, DebitToAccount = 1, Cheque = 2 };

    // Where a refused update wants the cursor.
    enum class Focus { None, Sections, NatureOfPayment, ChallanDate };

    static constexpr int kMaxSections = 20;

    explicit ChallanForm(Kind kind);

    Kind kind() const { return m_kind; }
    QString module() const override;           // "ChallanNew" / "Challan"
    QString documentBase() const override { return QStringLiteral("Challan"); }
    void setDialogs(Dialogs *dialogs) { m_dialogs = dialogs; }

    // --- the grid vsf: stored challans in srno order
    QList<int> serials() const { return m_serials; }
    int count() const { return int(m_serials.size()); }
    // A click or Enter on a row: that challan into the fields. False when it is not there
    // or while editing.
    bool select(int serial);
    int currentSerial() const { return m_serial; }    // 0 for a new challan
    // The grid's columns of a stored challan: serial, challan no., date, total.
    QStringList gridRow(int serial) const;

    // --- the challan on screen (ChallanPrint::Field order)
    QString field(int i) const { return m_fields.value(i); }
    void setField(int i, const QString &text);       // the total follows the amounts
    const QStringList &fields() const { return m_fields; }
    int payMode() const { return m_payMode; }
    void setPayMode(int mode) { m_payMode = mode; }
    QString payModeWord() const;                      // "Cash", "Debit to A/c", else "Cheque"
    static int payModeOf(const QString &word);        // NoPayMode for any other word
    bool company() const { return m_company; }
    void setCompany(bool company) { m_company = company; }
    int payType() const { return m_payType; }         // optpaytype: 0 (200), 1 (400), -1 none
    void setPayType(int index) { m_payType = index; }
    bool resident() const { return m_resident; }      // optResType index 1
    void setResident(bool resident) { m_resident = resident; }
    QString natureOfPayment() const { return m_paynat; }   // the older form's Combo1 key
    void setNatureOfPayment(const QString &key) { m_paynat = key; }
    // (1 for company deductees) + (2 for a regular-assessment payment).
    int comp() const;

    // --- the section grid of the current form
    const QList<ChallanSection> &sections() const { return m_sections; }
    // False with "Only 20 Rows can be added for section-wise payment." past the limit.
    bool addSection(const ChallanSection &row = {});
    void setSection(int row, const ChallanSection &section);
    bool deleteSection(int row);                      // "Please select a Row to delete."
    void setSections(const QList<ChallanSection> &rows);
    // The current form's Income Tax, Surcharge, Education Cess and Others are the totals of
    // its section rows (tax, surcharge, cess, other), kept in step as the rows change.
    QStringList sectionTotals() const;
    static bool amountFromSections(int field);

    // --- the buttons
    bool editing() const { return m_editing; }
    void add();
    bool modify();
    // Checks, then stores. False when refused (refusal() and refusalFocus() say why and
    // where, in the order the checks run) or failed (saveError()).
    bool update();
    QString refusal() const { return m_refusal; }
    Focus refusalFocus() const { return m_refusalFocus; }
    bool deleteChallan();      // asks "Do you want to delete this record"
    bool copyChallan();        // asks "Do you want to Copy this Challan?"
    bool cancel();             // asks "Do you really want to Cancel?"; true when cancelled
    // Escape and closing: while editing the cancel question, else "Do you want to exit".
    bool escape();

    // The assessment year's labels on screen.
    QString educationCessCaption() const;   // "Education Cess" / "Health & Education Cess"
    QString lateFeeCaption() const;         // "Late Fee u/s 234E" / "Late Fee u/s 427"

    // What the print needs.
    ChallanPrint::Challan printData() const;
    void buildReport() override {}
    void print() override;

    // An import: the challan on screen stored, checks included: serial 0 under the next free
    // serial, else replacing the stored challan of that serial (replace) or new under it.
    // The serial stored, or 0 with refusal() or saveError().
    int store(int serial, bool replace);

    QString statusText() const { return m_status; }

protected:
    void clear() override;
    void readRows(IDataObject &data) override;
    QStringList saveStatements(IDataObject &data) override;

private:
    bool ask(const QString &text, bool yesIsDefault = false);
    bool refuse(const QString &text, Focus focus);
    bool check();
    QString year() const;
    QString keyCondition(IDataObject &data, int serial, const QString &serialColumn) const;
    QString insertStatement(IDataObject &data, int serial) const;
    QString updateStatement(IDataObject &data) const;
    QStringList sectionStatements(IDataObject &data, int serial) const;
    bool write(bool asNew);
    void sumSections();
    // An empty challan on screen; the deductor's TAN and name stay.
    void blank();
    void show(int serial);
    void reload(int serial);

    Kind m_kind;
    Dialogs *m_dialogs = nullptr;
    QList<int> m_serials;
    QList<QStringList> m_rows;            // stored header rows, in m_serials order
    QStringList m_fields;
    QList<ChallanSection> m_sections;
    int m_payMode = NoPayMode;
    bool m_company = false;
    int m_payType = 0;
    bool m_resident = true;
    QString m_paynat;
    int m_serial = 0;
    bool m_editing = false;
    QString m_refusal;
    Focus m_refusalFocus = Focus::None;
    QString m_status;
    QString m_code;
};
