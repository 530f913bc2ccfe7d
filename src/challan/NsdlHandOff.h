#pragma once
// The earlier challan filled on the NSDL e-tax payment pages: challan 281 chosen, its heads,
// nature of payment, TAN, year and the deductor's address typed in, and the browser left to
// the operator, who picks the bank and pays. Nothing is ever submitted for payment here.
#include "challan/ChallanPrint.h"

#include <functional>

class IOnlineAction;

namespace NsdlHandOff {

struct Challan
{
    bool company = false;            // major head 0020, else 0021
    bool regularAssessment = false;  // minor head 400, else 200
    QString sectionCode;             // "94C": the nature of payment's code (GETCODE)
    QString tan;
    QString asYear;                  // "2025-26", as the page's list shows it
    ChallanPrint::Address address;
};

using Progress = std::function<void(const QString &)>;
using Cancelled = std::function<bool()>;   // the operator stopped the run (FlagCancel)

struct Outcome
{
    // Empty when the challan is filled and the browser shown; else the step's message, two
    // line breaks and the wrapper's LastError, for a warning box.
    QString message;
    bool cancelled = false;
};

// Steps 2 to 11 with the wrapper created by name; tempFolder is the browser's working folder.
// On failure or cancel the browser is closed, on success it is shown and stays.
Outcome run(const Challan &challan, const QString &tempFolder, const Progress &progress, const Cancelled &cancelled);
// The same on a wrapper the caller made (the tests).
Outcome run(IOnlineAction &browser, const Challan &challan, const QString &tempFolder, const Progress &progress,
            const Cancelled &cancelled);

} // namespace NsdlHandOff
