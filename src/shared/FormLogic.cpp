#include "shared/FormLogic.h"

#include "host/IDataObject.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

void FormLogic::query(IDataObject &data, Recordset &rs, const QString &sql)
{
    if (!data.RecordsetQuery(rs, sql, data.cnnobj(), 3, 3, 1))
        throw TdsError(long(data.lastErrorNumber() ? data.lastErrorNumber() : 5), data.lastError(),
                       QStringLiteral("ZeltBase.ClsData"));
}

bool FormLogic::load()
{
    m_loadFailed = false;
    m_loadError.clear();
    clear();
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("Form_Load"), [&] {
        IDataObject &d = modbase::data();
        m_periodCode = modbase::GETPERIODCODEOTH();
        if (m_periodCode <= 0)
            throw TdsError(5, d.lastError().isEmpty()
                                  ? QStringLiteral("The period code of the deductor and year could not be read.")
                                  : d.lastError());
        readRows(d);
    }, &why);
    if (!ok) {
        clear();
        m_loadFailed = true;
        m_loadError = why.isEmpty() ? QStringLiteral("The stored rows could not be read.") : why;
    }
    return ok;
}

bool FormLogic::refusedAfterFailedLoad()
{
    m_saveError = m_loadFailed ? QStringLiteral("This form's stored data could not be read, so nothing is saved from it. "
                                                "Close the form and open it again.")
                               : QString();
    return m_loadFailed;
}

bool FormLogic::save()
{
    if (refusedAfterFailedLoad())
        return false;
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmdupdate_Click"), [&] {
        IDataObject &d = modbase::data();
        TransactionGuard guard(d);
        guard.run(saveStatements(d));
        guard.commitOrThrow();
    }, &why);
    if (!ok)
        m_saveError = QStringLiteral("The form could not be saved; the stored rows are unchanged.\n\n")
                      + (why.isEmpty() ? QStringLiteral("See the error log.") : why);
    return ok;
}

void FormLogic::print()
{
    modbase::printCommand(module(), [this] { buildReport(); }, documentName());
}

QString FormLogic::documentName() const
{
    const IDataObject *d = modbase::dataObject();
    if (!d)
        return documentBase();
    return documentBase() + QLatin1Char('_') + d->codeno() + QLatin1Char('_') + d->AsYear();
}

QString FormLogic::loadFailureText(const QString &caption, const QString &why)
{
    return QStringLiteral("The stored data of %1 could not be read, so the form is shown read-only and "
                          "nothing will be saved from it.\n\n%2\n\nClose the form and try again; if it "
                          "happens again, check the database connection.")
        .arg(caption, why);
}
