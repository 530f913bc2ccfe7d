#pragma once
// A slot of a form: one entry of its control array and one column of its positional row.
// A form is mostly a table of these; the widgets, the leave checks, the INSERT and the
// template fill are all driven from it.
#include <QList>
#include <QString>
#include <QStringList>

enum class FieldKind {
    Text,       // capitals, single line
    Email,      // kept as typed
    MultiLine,  // Enter breaks the line once, a second Enter moves on
    Date,       // convertdate on leave
    Amount,     // "###0.00" on leave
    Pan,        // "Invalid PAN."
    Tan,        // "Invalid TAN."
    Pin,        // six digits
    Combo,      // a fixed list (or the state list)
    Flags,      // a group of check boxes stored as "0"/"1" digits
};

// How a slot's value is written into a positional INSERT.
enum class Encoding {
    Default,    // from the kind: Amount -> Amount, Flags -> Flags, anything else -> Text
    Text,       // quoted, made safe
    Amount,     // unquoted leading number, empty -> 0
    Integer,    // unquoted leading whole number, empty -> 0
    Flags,      // quoted digits as they are
};

struct Slot
{
    QString caption = {};            // screen caption, "&" marks the access key
    FieldKind kind = FieldKind::Text;
    Encoding encoding = Encoding::Default;
    int width = 0;                   // most characters accepted; 0: no limit
    QStringList items = {};          // combo items, or the captions of the flag boxes
    bool stateList = false;          // combo filled from the shared state list
    QString name = {};               // control name when it is not "<array>_<index>"
    QString message = {};            // refusal text instead of the kind's own
    // A form's own check beyond the kind: the refusal message, or empty when the text is fine.
    QString (*extraCheck)(const QString &text) = nullptr;

    Encoding columnEncoding() const
    {
        if (encoding != Encoding::Default)
            return encoding;
        if (kind == FieldKind::Amount)
            return Encoding::Amount;
        if (kind == FieldKind::Flags)
            return Encoding::Flags;
        return Encoding::Text;
    }
    bool keepsCase() const { return kind == FieldKind::Email; }
};

using SlotTable = QList<Slot>;
