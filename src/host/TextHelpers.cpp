#include "host/TextHelpers.h"

#include <QDate>
#include <QRegularExpression>

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

} // namespace TextHelpers
