#pragma once
// Printing a Form 15G or Form 15H declaration through its rich-text template: the
// declaration's fields go into placeholders and table cells in the order of the statutory
// items, the five schedules grow their tables or print "---NIL---".
#include "shared/TemplatePrint.h"

#include <QList>
#include <QString>
#include <QStringList>

class Dialogs;
class IReportObject;

namespace DeclarationPrint {

struct Declaration
{
    bool form15H = false;
    // Slot order of the form's screen. 15G: 33 slots (0..32), 15H: 32 (0..31). Combos as
    // their text; the source flags as their five digits ("10100").
    QStringList declarant = {};
    QStringList payer = {};   // 16 slots (0..15)
    // Five lists of rows, data columns only, as stored and shown; a schedule whose source
    // flag is not ticked is not printed, whatever rows it holds.
    QList<QList<QStringList>> schedules = {};
};

// Where a value goes: tables 1-based, rows and columns 0-based, as in TemplateFill.
struct CellAt
{
    int table = 0;
    int row = 0;
    int column = 0;
};

// What one cell of Part I or Part II shows.
enum class Source {
    Slot,        // the slot's text
    Amount,      // the slot as a printed amount
    AsYear,      // the assessment year of the print
    Phone,       // STD code and number (slot, second), and the mobile (third) when given
    Flag,        // one digit of the source flags: "Yes" or "No"
};

constexpr int NoSlot = -1;

struct Item
{
    Source source = Source::Slot;
    int slot = 0;
    int second = 0;   // Phone: the number's slot; Flag: the digit
    CellAt at = {};
    int third = NoSlot;   // Phone: the mobile's slot
};

// Each item's value written into its cell, in the order of the list.
void addItems(TemplateFill &fill, const QList<Item> &items, const QStringList &values, const QString &asYear);
// "#,##0.00" in the Indian grouping; empty stays empty.
QString printedAmount(const QString &text);
QString slotText(const QStringList &values, int slot);

// The template tables of one form, the single source of the cell coordinates.
struct TemplateLayout
{
    int declarantTable = 0;
    int scheduleTable[5] = {0, 0, 0, 0, 0};   // Schedule I .. V
    int scheduleDataRow = 0;                   // the empty row after the header
    int scheduleColumns[5] = {0, 0, 0, 0, 0};
    CellAt verificationPlace = {};
    CellAt verificationDate = {};
    CellAt payerPlace = {};
    CellAt payerDate = {};
};
const TemplateLayout &layout(bool form15H);

// "/Data/Form15G.rtf" or "/Data/Form15H.rtf".
QString templatePath(bool form15H);
// "Frm15G.rtf" or "Frm15H.rtf".
QString tempName(bool form15H);
// "Form15G_<codeno>_<AsYear>" (15H: "Form15H_...").
QString documentName(bool form15H, const QString &codeNo, const QString &asYear);

// The whole fill: placeholders, Part I, the schedules, the verification's place and date,
// Part II with its own place and date.
TemplateFill fill(const Declaration &d, const QString &asYear, const QString &formPlace, const QString &formDate);

// ShowFormInfo and the rest of TemplatePrint::print, with the data object's AsYear,
// formplace, formdate and deductor code. True when the document was shown.
bool print(const QString &module, const Declaration &d, Dialogs &dialogs);

// The same fill into the report object without showing it (the command line saves or
// exports it). Throws TdsError, "Template File is missing." among them.
void render(IReportObject &report, const Declaration &d);

} // namespace DeclarationPrint
