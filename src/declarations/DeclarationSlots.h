#pragma once
// The slots of Forms 15G and 15H: the declarant block, the payer block, the five schedules.
#include "shared/ScheduleLayout.h"
#include "shared/Slot.h"

namespace DeclarationSlots {

SlotTable declarant(bool form15H);     // 15G: slots 0..32, 15H: 0..31
SlotTable payer();                     // slots 0..15
// Slot of the five source flags and of the two amounts in the declarant block.
int flagsSlot(bool form15H);
// Schedule k (0..4) of Form 15G or 15H: title, table, columns.
ScheduleLayout schedule(bool form15H, int k);

} // namespace DeclarationSlots
