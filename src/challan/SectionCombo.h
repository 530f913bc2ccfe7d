#pragma once
// The nature-of-payment combo (Combo1) of the challan forms, filled from SectionList.
#include <QString>

class QComboBox;

namespace SectionCombo {

// "FILLCBO": clears the combo and adds each entry's text with the key's numeric value as
// its item data.
void fillCombo(QComboBox *combo, const QString &asYear, const QString &exePath);
void fillCombo(QComboBox *combo, const QString &asYear);

// SectionList(action, key) as the forms call it: "FILLCBO" fills the combo (empty result),
// "GETLI" and "GETCODE" look the key up.
QString sectionList(QComboBox *combo, const QString &action, const QString &key, const QString &asYear);

} // namespace SectionCombo
