#include "shared/ColumnEncoder.h"

#include "host/IDataObject.h"
#include "shared/FieldRules.h"

#include <cmath>

namespace ColumnEncoder {

QString number(double value)
{
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString encode(const IDataObject &data, Encoding encoding, const QString &value)
{
    switch (encoding) {
    case Encoding::Amount:
        return number(FieldRules::leadingNumber(value));
    case Encoding::Integer:
        return number(std::trunc(FieldRules::leadingNumber(value)));
    case Encoding::Flags: {
        // Only the boxes' digits; nothing else can reach the statement unescaped.
        QString digits;
        for (const QChar c : value) {
            if (c.isDigit())
                digits += c;
        }
        return QLatin1Char('\'') + digits + QLatin1Char('\'');
    }
    case Encoding::Default:
    case Encoding::Text:
        break;
    }
    return data.quoted(value);
}

QString encode(const IDataObject &data, const Slot &slot, const QString &value)
{
    return encode(data, slot.columnEncoding(), value);
}

QString positionalInsert(const QString &prefix, const QStringList &keys, const IDataObject &data,
                         const SlotTable &table, const QStringList &values)
{
    QString sql = prefix + keys.join(QLatin1Char(','));
    for (int i = 0; i < table.size(); ++i)
        sql += QLatin1Char(',') + encode(data, table.at(i), values.value(i));
    return sql + QLatin1Char(')');
}

} // namespace ColumnEncoder
