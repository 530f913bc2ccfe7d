#pragma once
// The host's data object ("ZeltBase.ClsData"): database access, the process-wide current
// selection (deductor, assessment year, quarter), master data, folders and helpers.
#include "host/HostService.h"
#include "host/Recordset.h"

#include <QString>
#include <functional>

class QWidget;
class QComboBox;
class QTableWidget;

// Opaque handle standing for the open connection; passed back to RecordsetQuery.
class DbConnection;

class IDataObject : public HostService
{
public:
    // --- connection and statements
    virtual bool connect() = 0;                 // connects (and creates/migrates) once per process
    virtual bool isConnected() const = 0;
    virtual DbConnection *cnnobj() = 0;
    // Opens rs on the statement. cursorType/lockType/options as the callers pass them (ADO
    // numbering); the recordset is always static and client-side. Returns false on failure,
    // logs the statement and the server's message.
    virtual bool RecordsetQuery(Recordset &rs, const QString &sql, DbConnection *cnn = nullptr,
                                int cursorType = 3, int lockType = 3, int options = 1) = 0;
    // Executes a statement returning no rows; false on failure (logged, never thrown).
    virtual bool ConQuery(const QString &sql) = 0;
    // As ConQuery, but a failure with server error expectedError (1062: an insert race the
    // caller retries) is the caller's to handle and not logged; any other failure is.
    virtual bool ConQueryExpecting(const QString &sql, unsigned expectedError) = 0;
    virtual QString lastError() const = 0;
    virtual unsigned lastErrorNumber() const = 0;      // server error number, 1062 duplicate key
    virtual bool BeginTrans() = 0;
    virtual bool CommitTrans() = 0;
    virtual bool RollbackTrans() = 0;

    // --- current selection (process-wide: every instance answers the same)
    virtual QString codeno() const = 0;
    virtual void setCodeno(const QString &code) = 0;
    virtual QString AsYear() const = 0;
    virtual void setAsYear(const QString &year) = 0;
    virtual QString quarter() const = 0;
    virtual void setQuarter(const QString &q) = 0;

    // --- master data of the current deductor (read from Main_Info / Main_Info_oth)
    virtual QString Name() const = 0;
    virtual QString fname() const = 0;
    virtual QString panno() const = 0;
    virtual QString pr_add() const = 0;
    virtual QString circle1() const = 0;
    virtual QString firmname() const = 0;
    virtual QString Tanno() const = 0;
    virtual QString formplace() const = 0;
    virtual QString formdate() const = 0;
    virtual QString Designation() const = 0;
    virtual QString stdesig() const = 0;
    virtual QString Name1() const = 0;
    virtual QString PAN1() const = 0;
    virtual QString Mobile1() const = 0;
    virtual QString GovtState() const = 0;
    virtual QString ClStatus() const = 0;
    virtual QString ClStatusDesc() const = 0;

    // --- folders
    virtual QString ExePath() const = 0;
    virtual QString DocPath() const = 0;
    virtual QString vTmpPath() const = 0;

    // --- helpers
    virtual QString convertdate(const QString &text) const = 0;
    virtual QString ConvertToWord(double amount) const = 0;
    virtual bool ValidPan(const QString &text) const = 0;
    virtual bool ValidTan(const QString &text) const = 0;
    virtual QString TruncVarSQL(const QString &text) const = 0;
    // The one way a text value goes into a statement: between single quotes, made safe.
    QString quoted(const QString &text) const { return QLatin1Char('\'') + TruncVarSQL(text) + QLatin1Char('\''); }
    virtual QString GetStateCode(const QString &stateName) = 0;
    virtual void ComboFillStateList(QComboBox *combo) = 0;
    virtual void WaitForSeconds(double seconds) = 0;

    // --- print mode: ShowFormInfo asks preview / print / cancel and sets ModePrint 2 / 3 / 1
    virtual void ShowFormInfo() = 0;
    virtual int ModePrint() const = 0;
    virtual void setModePrint(int mode) = 0;

    // --- screen
    virtual void Resize_For_Resolution(QWidget *form) = 0;
    virtual double vScreenRatX() const = 0;
    virtual double vScreenRatY() const = 0;
    virtual double vScreenRatFS() const = 0;
    virtual void VsTopRow(QTableWidget *grid) = 0;
    virtual void ShowCalcu() = 0;
};
