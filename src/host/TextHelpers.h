#pragma once
// Text helpers of the data object that need no database.
#include <QString>

namespace TextHelpers {

// d/m/yyyy, dd-mm-yyyy, dd.mm.yyyy, ddmmyyyy and the same with two-digit years become
// dd/mm/yyyy. Two-digit years 00-49 are 2000-2049, 50-99 are 1950-1999. Anything that is
// not a real calendar date comes back unchanged.
QString convertDate(const QString &text);

// Five letters, four digits, one letter; the fourth letter is the holder's status
// (A B C F G H J L P T). Capitals only, as the entry fields force them.
bool validPan(const QString &text);
// Four letters, five digits, one letter.
bool validTan(const QString &text);

// Ready to go between single quotes: backslash escaped, single quote doubled.
QString truncVarSql(const QString &text);

// Printed amounts, "#,##0.00" grouped the Indian way: the last three digits, then pairs
// (150000 -> "1,50,000.00"); half a paisa rounds away from zero.
QString indianAmount(double amount);
// The same for the number the text starts with (digit-group commas allowed); "" or text
// that starts with no number is 0.00.
QString indianAmount(const QString &text);

} // namespace TextHelpers
