#include "shared/FieldRules.h"

#include "host/IDataObject.h"

namespace FieldRules {

double leadingNumber(const QString &text)
{
    const QString t = text.trimmed();
    int i = 0;
    if (i < t.size() && (t.at(i) == QLatin1Char('-') || t.at(i) == QLatin1Char('+')))
        ++i;
    const int digitsFrom = i;
    bool dot = false;
    for (; i < t.size(); ++i) {
        const QChar c = t.at(i);
        if (c == QLatin1Char('.') && !dot) {
            dot = true;
            continue;
        }
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            break;
    }
    if (i == digitsFrom)
        return 0.0;
    bool ok = false;
    const double value = t.left(i).toDouble(&ok);
    return ok ? value : 0.0;
}

QString plainAmount(const QString &text)
{
    return QString::number(leadingNumber(text), 'f', 2);
}

QString typed(const Slot &slot, const QString &text)
{
    return slot.keepsCase() ? text : text.toUpper();
}

Outcome leave(const Slot &slot, const QString &input, const IDataObject &data)
{
    Outcome out;
    out.text = input;
    while (out.text.endsWith(QLatin1Char('\n')) || out.text.endsWith(QLatin1Char('\r')))
        out.text.chop(1);
    if (slot.kind == FieldKind::Combo || slot.kind == FieldKind::Flags || out.text.isEmpty())
        return out;
    auto refuse = [&](const QString &ownMessage) {
        out.ok = false;
        out.message = slot.message.isEmpty() ? ownMessage : slot.message;
        return out;
    };
    switch (slot.kind) {
    case FieldKind::Pan:
        if (!data.ValidPan(out.text))
            return refuse(QStringLiteral("Invalid PAN."));
        break;
    case FieldKind::Tan:
        if (!data.ValidTan(out.text))
            return refuse(QStringLiteral("Invalid TAN."));
        break;
    case FieldKind::Pin: {
        bool digits = out.text.size() == 6;
        for (const QChar c : out.text)
            digits = digits && c >= QLatin1Char('0') && c <= QLatin1Char('9');
        if (!digits)
            return refuse(QStringLiteral("The PIN code has six digits."));
        break;
    }
    case FieldKind::Date:
        out.text = data.convertdate(out.text);
        break;
    case FieldKind::Amount:
        out.text = plainAmount(out.text);
        break;
    default:
        break;
    }
    if (slot.extraCheck) {
        const QString why = slot.extraCheck(out.text);
        if (!why.isEmpty()) {
            out.ok = false;
            out.message = why;
        }
    }
    return out;
}

Outcome imported(const Slot &slot, const QString &text, const IDataObject &data)
{
    Outcome out = leave(slot, typed(slot, text), data);
    if (!out.ok || out.text.isEmpty())
        return out;
    if (slot.kind == FieldKind::Combo && !slot.stateList) {
        // An item as the list spells it, whatever the case it came in ("Yes" typed as "YES").
        for (const QString &item : slot.items) {
            if (item.compare(out.text, Qt::CaseInsensitive) == 0) {
                out.text = item;
                return out;
            }
        }
        out.ok = false;
        out.message = QStringLiteral("\"%1\" is not one of: %2.").arg(out.text, slot.items.join(QStringLiteral(", ")));
    } else if (slot.kind == FieldKind::Flags) {
        bool digits = out.text.size() == slot.items.size();
        for (const QChar c : out.text)
            digits = digits && (c == QLatin1Char('0') || c == QLatin1Char('1'));
        if (!digits) {
            out.ok = false;
            out.message = QStringLiteral("\"%1\" is not %2 digits 0 or 1, one for each of: %3.")
                              .arg(out.text)
                              .arg(slot.items.size())
                              .arg(slot.items.join(QStringLiteral(", ")));
        }
    }
    return out;
}

bool importBlock(const QString &block, const SlotTable &table, int firstSlot, QStringList &texts,
                 const IDataObject &data, QString *why)
{
    for (int i = 0; i < texts.size(); ++i) {
        const Slot &slot = table.at(firstSlot + i);
        const Outcome outcome = imported(slot, texts[i], data);
        if (!outcome.ok) {
            const QString caption = QString(slot.caption).remove(QLatin1Char('&')).trimmed();
            *why = QStringLiteral("%1 slot %2 (\"%3\"): %4").arg(block).arg(i).arg(caption, outcome.message);
            return false;
        }
        texts[i] = outcome.text;
    }
    return true;
}

QString scheduleCell(const ScheduleColumn &column, const QString &text, const IDataObject *data)
{
    switch (column.kind) {
    case ScheduleColumn::Kind::Number:
        if (leadingNumber(text) == 0)
            return QStringLiteral("Nil");
        // A range such as "101-200" is kept as typed; only amounts take the money format.
        return column.isAmount() ? plainAmount(text) : text;
    case ScheduleColumn::Kind::Date:
        return data ? data->convertdate(text) : text;
    case ScheduleColumn::Kind::Text:
        break;
    }
    // Letters come out in capitals, as the grid types them.
    return text.toUpper();
}

void scheduleRows(const ScheduleLayout &layout, QList<QStringList> &rows, const IDataObject *data)
{
    for (QStringList &row : rows) {
        for (int c = 0; c < row.size() && c < layout.columns.size(); ++c)
            row[c] = scheduleCell(layout.columns[c], row[c], data);
    }
}

} // namespace FieldRules
