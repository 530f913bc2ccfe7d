#pragma once
// The slots of Forms 15G and 15H: the declarant block, the payer block, the five schedules.
#include "shared/ScheduleLayout.h"
#include "shared/Slot.h"

#include <QHash>
#include <QList>

namespace DeclarationSlots {

SlotTable declarant(bool form15H);     // 15G: slots 0..32, 15H: 0..31
SlotTable payer();                     // slots 0..15
// Slot of the five source flags and of the two amounts in the declarant block.
int flagsSlot(bool form15H);
// Schedule k (0..4) of Form 15G or 15H: title, table, columns.
ScheduleLayout schedule(bool form15H, int k);

// One design of a declaration kept with detail tables: the same record, window and
// transfer serve the schedule design and the first layout, each from its own description.
struct Design
{
    bool form15H = false;
    bool lineReport = false;           // printed as a line report, not through a template
    QString module = {};               // "frm15gNew"
    QString documentBase = {};         // "Form15G"
    QString caption = {};              // "Form 15G"
    QString number = {};               // "15G": "Form No. 15G", "&Form 15G"
    QString heading = {};              // the statutory description under the form number
    QString mainTable = {};            // "Tb15gM"
    SlotTable declarant = {};
    SlotTable payer = {};
    int flagsSlot = -1;                // -1: every detail table belongs to every declaration
    QList<ScheduleLayout> schedules = {};
    // Slots a save refuses while empty, in screen order: "Please specify valid '<caption>'.".
    QList<int> required = {};
    // Main_Info_oth column -> declarant slot of a new declaration.
    QList<std::pair<QString, int>> prefill = {};
    QString declarantTab = {};
    QString payerTab = {};
    QString tableButton = {};          // opens the detail table of a design without flags
    // Button captions of the window where its access keys need them.
    QHash<QString, QString> buttonCaptions = {};
};
// frm15gNew / frm15hNew.
Design current(bool form15H);

} // namespace DeclarationSlots
