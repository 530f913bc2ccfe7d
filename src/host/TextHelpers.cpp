#include "host/TextHelpers.h"

#include <QDate>
#include <QRegularExpression>

#include <cmath>

namespace TextHelpers {

QString convertDate(const QString &text)
{
    static const QRegularExpression separated(
        QStringLiteral("^([0-9]{1,2})[/.-]([0-9]{1,2})[/.-]([0-9]{4}|[0-9]{2})$"));
    static const QRegularExpression packed(QStringLiteral("^([0-9]{2})([0-9]{2})([0-9]{4}|[0-9]{2})$"));

    const QString t = text.trimmed();
    QRegularExpressionMatch m = separated.match(t);
    if (!m.hasMatch())
        m = packed.match(t);
    if (!m.hasMatch())
        return text;

    const int day = m.captured(1).toInt();
    const int month = m.captured(2).toInt();
    const QString yearText = m.captured(3);
    int year = yearText.toInt();
    if (yearText.size() == 2)
        year += year < 50 ? 2000 : 1900;
    const QDate date(year, month, day);
    if (!date.isValid())
        return text;
    return date.toString(QStringLiteral("dd/MM/yyyy"));
}

bool validPan(const QString &text)
{
    static const QRegularExpression pan(QStringLiteral("^[A-Z]{3}[ABCFGHJLPT][A-Z][0-9]{4}[A-Z]$"));
    return pan.match(text).hasMatch();
}

bool validTan(const QString &text)
{
    static const QRegularExpression tan(QStringLiteral("^[A-Z]{4}[0-9]{5}[A-Z]$"));
    return tan.match(text).hasMatch();
}

QString truncVarSql(const QString &text)
{
    QString out = text;
    out.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    out.replace(QLatin1Char('\''), QLatin1String("''"));
    return out;
}

QString indianAmount(double amount)
{
    const double size = std::isfinite(amount) ? std::abs(amount) : 0.0;
    // whole paise first, nudged so that 1.005 (stored as 1.00499...) rounds up as written
    const QString fixed = size < 1e15 ? QString::number(double(std::llround(size * 100.0 + 1e-6)) / 100.0, 'f', 2)
                                      : QString::number(size, 'f', 2);
    const QString whole = fixed.left(fixed.size() - 3);
    QString grouped = whole.right(3);
    for (qsizetype end = whole.size() - 3; end > 0; end -= 2)
        grouped.prepend(whole.mid(std::max<qsizetype>(0, end - 2), std::min<qsizetype>(2, end)) + QLatin1Char(','));
    const bool negative = amount < 0 && fixed != QLatin1String("0.00");
    return (negative ? QStringLiteral("-") : QString()) + grouped + fixed.right(3);
}

QString indianAmount(const QString &text)
{
    static const QRegularExpression leading(QStringLiteral("^[+-]?(?:[0-9][0-9,]*(?:\\.[0-9]*)?|\\.[0-9]+)"));
    const QRegularExpressionMatch m = leading.match(text.trimmed());
    if (!m.hasMatch())
        return indianAmount(0.0);
    return indianAmount(m.captured(0).remove(QLatin1Char(',')).toDouble());
}

} // namespace TextHelpers
