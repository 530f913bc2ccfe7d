#pragma once
// The host's data object "ZeltBase.ClsData". Every instance works on one process-wide state:
// the connection, the current deductor / assessment year / quarter, the cached master data of
// that deductor, the print mode and the last error.
#include "host/IDataObject.h"

#include <functional>
#include <memory>

class DataObject : public IDataObject
{
public:
    DataObject() = default;

    bool connect() override;
    bool isConnected() const override;
    DbConnection *cnnobj() override;
    bool RecordsetQuery(Recordset &rs, const QString &sql, DbConnection *cnn = nullptr, int cursorType = 3,
                        int lockType = 3, int options = 1) override;
    bool ConQuery(const QString &sql) override;
    bool ConQueryExpecting(const QString &sql, unsigned expectedError) override;
    QString lastError() const override;
    unsigned lastErrorNumber() const override;
    bool BeginTrans() override;
    bool CommitTrans() override;
    bool RollbackTrans() override;

    QString codeno() const override;
    void setCodeno(const QString &code) override;
    QString AsYear() const override;
    void setAsYear(const QString &year) override;
    QString quarter() const override;
    void setQuarter(const QString &q) override;

    QString Name() const override;
    QString fname() const override;
    QString panno() const override;
    QString pr_add() const override;
    QString circle1() const override;
    QString firmname() const override;
    QString Tanno() const override;
    QString formplace() const override;
    QString formdate() const override;
    QString Designation() const override;
    QString stdesig() const override;
    QString Name1() const override;
    QString PAN1() const override;
    QString Mobile1() const override;
    QString GovtState() const override;
    QString ClStatus() const override;
    QString ClStatusDesc() const override;

    QString ExePath() const override;
    QString DocPath() const override;
    QString vTmpPath() const override;

    QString convertdate(const QString &text) const override;
    QString ConvertToWord(double amount) const override;
    QString ConvertToWord(const QString &amount) const;
    bool ValidPan(const QString &text) const override;
    bool ValidTan(const QString &text) const override;
    QString TruncVarSQL(const QString &text) const override;
    QString GetStateCode(const QString &stateName) override;
    void ComboFillStateList(QComboBox *combo) override;
    void WaitForSeconds(double seconds) override;

    void ShowFormInfo() override;
    int ModePrint() const override;
    void setModePrint(int mode) override;

    void Resize_For_Resolution(QWidget *form) override;
    double vScreenRatX() const override;
    double vScreenRatY() const override;
    double vScreenRatFS() const override;
    void VsTopRow(QTableWidget *grid) override;
    void ShowCalcu() override;

    // Loads the demo deductor "DEMO01" (idempotent).
    bool loadDemo();
    // Reads the current deductor's master rows again (after another program edited them;
    // edits through ConQuery are noticed by themselves).
    void refreshMasterData();

    // Answers ShowFormInfo instead of the dialog (tests, headless use); empty: the dialog.
    static void setFormInfoPrompt(std::function<int()> prompt);
    // Receives what the object would otherwise show in a message box; empty: the box.
    static void setMessageHook(std::function<void(const QString &)> hook);
    // Forgets the selection, the cached master data, the print mode and the last error.
    static void resetState();
};

std::shared_ptr<HostService> createDataObject();
