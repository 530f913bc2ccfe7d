#include "host/AmountWords.h"

#include <QLocale>
#include <QStringList>
#include <cmath>
#include <limits>

namespace AmountWords {

namespace {
const char *const ones[] = {"",        "One",     "Two",       "Three",    "Four",
                            "Five",    "Six",     "Seven",     "Eight",    "Nine",
                            "Ten",     "Eleven",  "Twelve",    "Thirteen", "Fourteen",
                            "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen"};
const char *const tens[] = {"", "", "Twenty", "Thirty", "Forty", "Fifty", "Sixty", "Seventy", "Eighty", "Ninety"};

// 1..99
void belowHundred(quint64 n, QStringList &out)
{
    if (n < 20) {
        out << QLatin1String(ones[n]);
        return;
    }
    out << QLatin1String(tens[n / 10]);
    if (n % 10)
        out << QLatin1String(ones[n % 10]);
}

// Crore repeats: whatever stands above a crore is itself read in lakh and crore.
void words(quint64 n, QStringList &out)
{
    if (n >= 10000000) {
        words(n / 10000000, out);
        out << QStringLiteral("Crore");
        n %= 10000000;
    }
    if (n >= 100000) {
        belowHundred(n / 100000, out);
        out << QStringLiteral("Lakh");
        n %= 100000;
    }
    if (n >= 1000) {
        belowHundred(n / 1000, out);
        out << QStringLiteral("Thousand");
        n %= 1000;
    }
    if (n >= 100) {
        belowHundred(n / 100, out);
        out << QStringLiteral("Hundred");
        n %= 100;
    }
    if (n > 0)
        belowHundred(n, out);
}
} // namespace

QString inWords(qint64 number)
{
    if (number == 0)
        return QStringLiteral("Nil");
    QStringList out;
    quint64 magnitude = quint64(number);
    if (number < 0) {
        out << QStringLiteral("Minus");
        magnitude = 0 - magnitude;
    }
    words(magnitude, out);
    return out.join(QLatin1Char(' '));
}

bool toPaise(const QString &amount, qint64 &paise)
{
    QString t = amount.trimmed();
    t.remove(QLatin1Char(','));
    t.remove(QLatin1Char(' '));
    bool negative = false;
    if (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+'))) {
        negative = t.startsWith(QLatin1Char('-'));
        t.remove(0, 1);
    }
    const qsizetype dot = t.indexOf(QLatin1Char('.'));
    const QString whole = dot < 0 ? t : t.left(dot);
    const QString fraction = dot < 0 ? QString() : t.mid(dot + 1);
    if (whole.isEmpty() && fraction.isEmpty())
        return false;
    auto allDigits = [](const QString &s) {
        for (QChar c : s) {
            if (c < QLatin1Char('0') || c > QLatin1Char('9'))
                return false;
        }
        return true;
    };
    if (!allDigits(whole) || !allDigits(fraction))
        return false;

    const qint64 limit = std::numeric_limits<qint64>::max() / 100 - 1;
    qint64 rupees = 0;
    for (QChar c : whole) {
        rupees = rupees * 10 + (c.unicode() - '0');
        if (rupees > limit)
            return false;
    }
    const QString f = (fraction + QStringLiteral("000")).left(3);
    qint64 p = rupees * 100 + f.left(2).toLongLong();
    if (f.at(2) >= QLatin1Char('5'))   // half away from zero: decided on the magnitude
        ++p;
    paise = negative ? -p : p;
    return true;
}

QString ConvertToWord(const QString &amount, bool *ok)
{
    qint64 paise = 0;
    const bool parsed = toPaise(amount, paise);
    if (ok)
        *ok = parsed;
    if (!parsed)
        return QString();
    const bool negative = paise < 0;
    const qint64 magnitude = negative ? -paise : paise;
    const qint64 rupees = magnitude / 100;
    const qint64 rest = magnitude % 100;

    QString text = QStringLiteral("Rupees ");
    if (negative)
        text += QStringLiteral("Minus ");
    text += inWords(rupees);
    if (rest)
        text += QStringLiteral(" and Paise ") + inWords(rest);
    return text + QStringLiteral(" Only");
}

QString ConvertToWord(double amount)
{
    if (!std::isfinite(amount))
        return QString();
    return ConvertToWord(QLocale::c().toString(amount, 'f', QLocale::FloatingPointShortest));
}

} // namespace AmountWords
