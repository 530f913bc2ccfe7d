#pragma once
// The deductor master (Main_Info and Main_Info_oth) without widgets: its fields page by page,
// the checks of a deductor before it is stored, and the store itself. The host's deductor
// dialog and the command line's import share them.
#include "shared/Slot.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <optional>

class IDataObject;

namespace DeductorMaster {

struct Page
{
    QString caption;
    SlotTable fields;   // each named "txt" + its column
};

// In the order the operator fills them; the last holds Main_Info_oth's own columns.
QList<Page> pages();
QString columnOf(const Slot &slot);
// Every column, Main_Info's (Code_No first) then Main_Info_oth's own.
QStringList columns();
// Main_Info_oth repeats these columns of Main_Info.
QStringList copiedToOther();

using Record = QHash<QString, QString>;   // column -> value

struct Refusal
{
    QString column;
    QString message;
};

// The code and name given, every field by its rules (values normalised in place), and a new
// deductor's code not taken. imported: texts from a file, in capitals, the lists' values
// checked (the status by its code, the states by the state list).
std::optional<Refusal> check(IDataObject &data, Record &record, bool isNew, bool imported);

// Whether a deductor of this code is stored; throws TdsError when that cannot be read.
bool exists(IDataObject &data, const QString &code);
// The codes stored, in order; throws TdsError on failure.
QStringList codes(IDataObject &data);
// The stored deductor, every column (empty where there is no row); throws TdsError.
Record load(IDataObject &data, const QString &code);
// Both rows replaced in one transaction; throws TdsError (nothing changed) on failure.
void save(IDataObject &data, const Record &record);

} // namespace DeductorMaster
