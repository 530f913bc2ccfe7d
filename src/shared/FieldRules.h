#pragma once
// What happens to a slot's text when the operator leaves it: the same rules for a window,
// an import and a test, with no widget involved.
#include "shared/ScheduleLayout.h"
#include "shared/Slot.h"

class IDataObject;

namespace FieldRules {

struct Outcome
{
    bool ok = true;
    QString text;       // the text the field holds afterwards (normalised)
    QString message;    // why it was refused
};

// Trailing line break removed; empty accepted; then the kind's check or normalisation.
Outcome leave(const Slot &slot, const QString &text, const IDataObject &data);

// Typed letters as the field shows them: capitals except where the kind keeps the case.
QString typed(const Slot &slot, const QString &text);

// A text arriving from a file instead of the keyboard: capitals as typed, then the leave
// rules; a combo takes only one of its items (the state list is not checked here) and a
// group of check boxes only its digits.
Outcome imported(const Slot &slot, const QString &text, const IDataObject &data);

// A block of slots from an import file (the texts of table[firstSlot], table[firstSlot + 1],
// ...), each through imported() and normalised in place. False with the first refusal in
// *why: "<block> slot <i> ("<caption>"): <message>".
bool importBlock(const QString &block, const SlotTable &table, int firstSlot, QStringList &texts,
                 const IDataObject &data, QString *why);

// A finished schedule cell: a number column reading as 0 becomes "Nil", an amount takes
// "###0.00", a date goes through convertdate (kept as typed without a data object), text
// in capitals.
QString scheduleCell(const ScheduleColumn &column, const QString &text, const IDataObject *data);
// Every cell of imported rows, as the grid leaves it once typed.
void scheduleRows(const ScheduleLayout &layout, QList<QStringList> &rows, const IDataObject *data);

// "###0.00": 1500 -> 1500.00, "abc" -> 0.00.
QString plainAmount(const QString &text);

// The number a text starts with, as a line of a form reads it ("101-200" -> 101,
// "12.5%" -> 12.5, "" or "Nil" -> 0).
double leadingNumber(const QString &text);

} // namespace FieldRules
