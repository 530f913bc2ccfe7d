#pragma once
#include <QStringList>

// tdsforms-cli deductees import --deductor CODE [FILE] | export --deductor CODE |
// delete --deductor CODE --serial N. Deductees of Form 26QA as a JSON array of
// {"serial", "name", "pan", "dob", "flat", "building", "street", "area", "city", "state",
// "pin", "group"}; on import a "serial" modifies that deductee, none adds one. The serial of
// each one stored printed one a line, a refused one named on standard error; 1 when any was
// refused, 2 on a usage error.
int cmdDeductees(const QStringList &args);

// tdsforms-cli deductors import [FILE] | export: the deductor master (Main_Info and
// Main_Info_oth), one JSON object per deductor keyed by the column names; absent members
// are stored empty. The code of each one stored printed one a line.
int cmdDeductors(const QStringList &args);
