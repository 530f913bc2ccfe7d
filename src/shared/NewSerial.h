#pragma once
// A new record under the next free serial, when several desks may add at the same moment:
// the serial is read as Max + 1, the record only inserted (never deleted first, which would
// remove what another desk saved under that number a moment ago), and a duplicate key is
// answered by taking the next number.
#include <QString>

#include <functional>

class IDataObject;
class TransactionGuard;

namespace NewSerial {

// Runs work(guard, serial) in one transaction and commits. maxSql reads the highest serial
// in use (no row or NULL: 0). The serial stored; throws TdsError on any other failure.
int store(IDataObject &data, const QString &maxSql, const std::function<void(TransactionGuard &, int)> &work);

} // namespace NewSerial
