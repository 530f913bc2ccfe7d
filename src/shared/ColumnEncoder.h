#pragma once
// Slot values as they go into a positional INSERT, and the INSERT itself.
#include "shared/Slot.h"

class IDataObject;

namespace ColumnEncoder {

QString encode(const IDataObject &data, Encoding encoding, const QString &value);
QString encode(const IDataObject &data, const Slot &slot, const QString &value);

// "INSERT INTO <table> VALUES (" + keys + one encoded value per slot, in slot order + ")".
// The prefix is the statement's own text up to the first key ("Insert into Form15C Values (").
QString positionalInsert(const QString &prefix, const QStringList &keys, const IDataObject &data,
                         const SlotTable &table, const QStringList &values);

// An unquoted number with no needless zeros: 1500 -> "1500", 12.50 -> "12.5".
QString number(double value);

} // namespace ColumnEncoder
