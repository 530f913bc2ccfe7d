#pragma once
// The first Forms 15G and 15H printed as line reports: the statutory text of the form with
// every slot written in its place (a blank slot as a row of dots to fill in by hand), the
// schedules or the table of income, the verification and Part II.
#include "declarations/DeclarationPrint.h"
#include "declarations/DeclarationSlots.h"

namespace First15Print {

// Into the report object's current report, which the caller has started.
void build(const DeclarationSlots::Design &design, const DeclarationPrint::Declaration &d);

} // namespace First15Print
