#include "forms/FormStore.h"

#include "shared/modbase.h"

namespace FormStore {

namespace {
[[noreturn]] void fail(IDataObject &data, bool rollback)
{
    // Read the server's message before the rollback replaces it.
    const long number = long(data.lastErrorNumber());
    const QString message = data.lastError();
    if (rollback)
        data.RollbackTrans();
    throw TdsError(number ? number : 5, message, QStringLiteral("ZeltBase.ClsData"));
}
} // namespace

void replaceRows(IDataObject &data, const QString &deleteStatement, const QStringList &inserts)
{
    if (!data.BeginTrans())
        fail(data, false);
    if (!data.ConQuery(deleteStatement))
        fail(data, true);
    for (const QString &insert : inserts) {
        if (!data.ConQuery(insert))
            fail(data, true);
    }
    if (!data.CommitTrans())
        fail(data, true);
    data.ConQuery(QStringLiteral("Flush Tables"));
}

QString quoted(IDataObject &data, const QString &text)
{
    return QLatin1Char('\'') + data.TruncVarSQL(text) + QLatin1Char('\'');
}

} // namespace FormStore
