#pragma once
// One transaction over any list of statements. Statements run in order until the first
// failure; commit() is checked; an uncommitted guard rolls back when it dies. After a
// successful commit exactly one "Flush Tables" runs (inside the transaction it would
// commit early). The server's message is read before the rollback replaces it.
#include <QString>
#include <QStringList>

class IDataObject;

class TransactionGuard
{
public:
    explicit TransactionGuard(IDataObject &data);
    ~TransactionGuard();
    TransactionGuard(const TransactionGuard &) = delete;
    TransactionGuard &operator=(const TransactionGuard &) = delete;

    // False once anything has failed; later statements are not sent.
    bool run(const QString &sql);
    bool run(const QStringList &statements);
    // Commits, then flushes. False when a statement or the commit failed (rolled back).
    bool commit();
    // commit(), or a TdsError with the server's message for the caller's error trap.
    void commitOrThrow();

    bool failed() const { return m_failed; }
    QString error() const { return m_error; }
    unsigned errorNumber() const { return m_errorNumber; }

    // The common save: all statements in one transaction, or a TdsError.
    static void apply(IDataObject &data, const QStringList &statements);

private:
    void failNow();

    IDataObject &m_data;
    bool m_open = false;
    bool m_failed = false;
    bool m_committed = false;
    QString m_error;
    unsigned m_errorNumber = 0;
};
