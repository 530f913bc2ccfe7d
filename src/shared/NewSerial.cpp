#include "shared/NewSerial.h"

#include "host/IDataObject.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

namespace NewSerial {

namespace {
const unsigned DuplicateKey = 1062;
const int Attempts = 20;
} // namespace

int store(IDataObject &data, const QString &maxSql, const std::function<void(TransactionGuard &, int)> &work)
{
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        Recordset rs;
        if (!data.RecordsetQuery(rs, maxSql, data.cnnobj(), 3, 3, 1))
            throw TdsError(long(data.lastErrorNumber() ? data.lastErrorNumber() : 5), data.lastError(),
                           QStringLiteral("ZeltBase.ClsData"));
        const int serial = ((!rs.isBOF() && !rs.isEOF() && !rs.field(0).isNull()) ? rs.field(0).toInt() : 0) + 1;
        rs.close();
        TransactionGuard guard(data);
        work(guard, serial);
        if (guard.commit())
            return serial;
        // Another desk saved the same serial first: take the next one.
        if (guard.errorNumber() != DuplicateKey)
            guard.commitOrThrow();
    }
    throw TdsError(5, QStringLiteral("No free serial number could be found; try again."));
}

} // namespace NewSerial
