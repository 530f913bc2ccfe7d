#pragma once
// Printing a Form 15G or 15H of October 2015 through its rich-text template
// (Data/Form15G_Oct15.rtf, Data/Form15H_Oct15.rtf): Part I two items to a row, the other
// forms filed, the income details grown to their rows, the declaration with the years of
// the declaration's previous year, Part II.
#include "shared/TemplatePrint.h"

#include <QList>
#include <QStringList>

class Dialogs;
class IReportObject;

namespace Oct15Print {

struct Declaration
{
    bool form15H = false;
    QStringList declarant = {};          // slot order (Oct15Slots)
    QList<QStringList> income = {};      // rows of the four data cells
    QStringList payer = {};
};

// Template tables, 1-based, the same in both templates.
enum Table { PartOneTable = 1, OtherFormsTable, IncomeTable, VerificationTable, PartTwoTable, PayerPlaceTable };

QString templatePath(bool form15H);   // "/Data/Form15G_Oct15.rtf"
QString tempName(bool form15H);       // "Frm15GOct15.rtf"

// The previous year's last day and the assessment year the declaration speaks of: from its
// previous year, else from the year chosen ("2024-25" -> "31/03/2025", "2025-26").
QString yearEnd(const Declaration &d, const QString &asYear);
QString assessmentYear(const Declaration &d, const QString &asYear);

TemplateFill fill(const Declaration &d, const QString &asYear, const QString &formPlace, const QString &formDate);

// ShowFormInfo and the rest of TemplatePrint::print; true when the document was shown.
bool print(const QString &module, const Declaration &d, Dialogs &dialogs);
// The fill into the report object, not shown. Throws TdsError ("Template File is missing.").
void render(IReportObject &report, const Declaration &d);

} // namespace Oct15Print
