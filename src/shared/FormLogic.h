#pragma once
// The widget-free half of a form: its rows for the current deductor and year, the save,
// the print. A failed load is remembered: such a form never saves, so blanks shown for a
// record that only failed to load cannot overwrite it.
#include <QString>
#include <QStringList>

class IDataObject;
class Recordset;

class FormLogic
{
public:
    virtual ~FormLogic() = default;

    virtual QString module() const = 0;          // error-log tag, "frm15c"
    virtual QString documentBase() const = 0;    // printed file names, "Form15C"

    // Period code, then the form's rows. False (logged, loadError() says why) on failure.
    bool load();
    bool loadFailed() const { return m_loadFailed; }
    QString loadError() const { return m_loadError; }

    // Replaces the stored rows in one transaction. False when refused or failed (the
    // previous rows stay); saveError() says why.
    bool save();
    QString saveError() const { return m_saveError; }

    // Fills the report object's current report (line-table forms).
    virtual void buildReport() = 0;
    // The print button: output asked, report built and shown.
    virtual void print();

    int periodCode() const { return m_periodCode; }
    // "Form15C_DEMO01_2024-25": what a saved copy is called.
    QString documentName() const;

    static QString loadFailureText(const QString &caption, const QString &why);

protected:
    virtual void clear() = 0;
    // Reads the rows of m_periodCode; throws TdsError on a failed statement.
    virtual void readRows(IDataObject &data) = 0;
    // The statements of a save, run in one transaction.
    virtual QStringList saveStatements(IDataObject &data) = 0;
    // Opens a recordset or throws the server's message.
    static void query(IDataObject &data, Recordset &rs, const QString &sql);
    void setSaveError(const QString &why) { m_saveError = why; }
    // Clears the last save error; true (and saveError() says why) when the load had failed.
    bool refusedAfterFailedLoad();

    int m_periodCode = 0;

private:
    bool m_loadFailed = false;
    QString m_loadError;
    QString m_saveError;
};
