#pragma once
// Forms 15G and 15H in their first layout (frm15g, frm15h): the declarations of the Rules
// before the schedule design, kept as the schedule design keeps its own (Form15G with
// Form15G_Sch1..5, Form15H with Form15H_Table) and printed as line reports.
//
// Row of Form15G: Period_Code, FormSrNo, declarant slots 0..10, payer slots 0..7.
// Row of Form15H: Period_Code, FormSrNo, declarant slots 0..9, payer slots 0..7.
#include "declarations/DeclarationSlots.h"

namespace First15Slots {

// Declarant slots of Form 15G.
enum G {
    GName, GRelative, GStatus, GAddress, GPan, GLastAy, GWard, GCommissioner, GIncomeFrom, GEstIncome, GFlags, GCount
};
// Declarant slots of Form 15H.
enum H { HName, HRelative, HAddress, HDob, HAge, HPan, HLastAy, HWard, HCommissioner, HEstIncome, HCount };
// Payer slots, the same on both forms.
enum Payer { PayerName, PayerAddress, PayerTan, FurnishedOn, PeriodPaid, AmountPaid, PaidOn, ForwardedTo, PayerCount };

// Where each item sits in a form's declarant block; -1 where the form has no such item.
struct Declarant
{
    int name, relative, status, address, dob, age, pan, lastAy, ward, commissioner, incomeFrom, estIncome, flags;
};
Declarant declarant(bool form15H);

DeclarationSlots::Design design(bool form15H);

} // namespace First15Slots
