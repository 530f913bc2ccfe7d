#pragma once
// Saving by replacement: delete the key's rows and insert them again, all or nothing.
#include <QString>
#include <QStringList>

class IDataObject;

namespace FormStore {

// Runs the delete and the inserts in one transaction, then one "Flush Tables" after the
// commit (inside the transaction it would commit early). On a failed statement the
// transaction is rolled back, so the previous rows stay, and a TdsError carrying the
// server's message is thrown for the caller's error trap.
void replaceRows(IDataObject &data, const QString &deleteStatement, const QStringList &inserts);

// "'" + text + "'" with the text made safe for the statement.
QString quoted(IDataObject &data, const QString &text);

} // namespace FormStore
