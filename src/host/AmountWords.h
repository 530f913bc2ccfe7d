#pragma once
// Amounts in words, Indian grouping: "Rupees One Lakh Twenty Thousand and Paise Fifty Only".
#include <QString>

namespace AmountWords {

// The amount rounded to paise (half away from zero). Text may carry a sign, grouping
// commas and blanks; anything else is refused (*ok false, empty result).
QString ConvertToWord(const QString &amount, bool *ok = nullptr);
// The double is read as the shortest decimal that gives it back (0.125 stays 0.125).
QString ConvertToWord(double amount);

// A whole number in words ("One Hundred Twenty Three Crore ..."), "Nil" for 0.
QString inWords(qint64 number);

// The amount in integer paise; false when it is not a number or too large.
bool toPaise(const QString &amount, qint64 &paise);

} // namespace AmountWords
