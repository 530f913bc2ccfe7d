#include "shared/TransactionGuard.h"

#include "host/IDataObject.h"
#include "shared/modbase.h"

TransactionGuard::TransactionGuard(IDataObject &data) : m_data(data)
{
    m_open = m_data.BeginTrans();
    if (!m_open)
        failNow();
}

TransactionGuard::~TransactionGuard()
{
    if (m_open && !m_committed)
        m_data.RollbackTrans();
}

void TransactionGuard::failNow()
{
    if (m_failed)
        return;
    m_failed = true;
    m_errorNumber = m_data.lastErrorNumber();
    m_error = m_data.lastError();
    if (m_error.isEmpty())
        m_error = QStringLiteral("The database did not accept the change.");
    if (m_open) {
        m_data.RollbackTrans();
        m_open = false;
    }
}

bool TransactionGuard::run(const QString &sql)
{
    if (m_failed || m_committed)
        return false;
    if (!m_data.ConQuery(sql))
        failNow();
    return !m_failed;
}

bool TransactionGuard::run(const QStringList &statements)
{
    for (const QString &sql : statements) {
        if (!run(sql))
            return false;
    }
    return true;
}

bool TransactionGuard::commit()
{
    if (m_failed || m_committed)
        return m_committed;
    if (!m_data.CommitTrans()) {
        failNow();
        return false;
    }
    m_committed = true;
    m_open = false;
    m_data.ConQuery(QStringLiteral("Flush Tables"));
    return true;
}

void TransactionGuard::commitOrThrow()
{
    if (!commit())
        throw TdsError(m_errorNumber ? long(m_errorNumber) : 5, m_error, QStringLiteral("ZeltBase.ClsData"));
}

void TransactionGuard::apply(IDataObject &data, const QStringList &statements)
{
    TransactionGuard guard(data);
    guard.run(statements);
    guard.commitOrThrow();
}
