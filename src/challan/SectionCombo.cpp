#include "challan/SectionCombo.h"

#include "challan/SectionList.h"
#include "shared/FieldRules.h"

#include <QComboBox>

namespace SectionCombo {

void fillCombo(QComboBox *combo, const QString &asYear, const QString &exePath)
{
    if (!combo)
        return;
    combo->clear();
    for (const SectionList::SectionEntry &e : SectionList::entries(asYear, exePath))
        combo->addItem(e.text, int(FieldRules::leadingNumber(e.key)));
}

void fillCombo(QComboBox *combo, const QString &asYear)
{
    fillCombo(combo, asYear, SectionList::exePath());
}

QString sectionList(QComboBox *combo, const QString &action, const QString &key, const QString &asYear)
{
    if (action == QLatin1String("FILLCBO")) {
        fillCombo(combo, asYear);
        return QString();
    }
    return SectionList::sectionList(action, key, asYear);
}

} // namespace SectionCombo
