#pragma once
// Forms 15G and 15H as amended from 1 October 2015: the declarant's items, the income
// details grid kept in the row as one text, and Part II of the person responsible for paying.
//
// Row of Tb15gNew: Period_Code, FormSrNo, declarant slots 0..21, the income details, payer
// slots 0..11. Form 15G: 2 status, 3 residential status, 9 state, 15 whether assessed, 16..19
// the two estimated incomes, the other forms' count and amount (unquoted), 20 latest
// assessment year, 21 previous year. Form 15H (Tb15hNew) has the date of birth at 2 and no
// residential status, so every slot from the flat on is one lower: state 8, whether assessed
// 14, unquoted 15..18, latest assessment year 19, previous year 20. Payer: slot 9 the amount.
#include "shared/ScheduleLayout.h"
#include "shared/Slot.h"

#include <QList>

namespace Oct15Slots {

// Declarant slot numbers of one form; -1 where the form has no such item.
struct Declarant
{
    int name = 0, pan = 1;
    int status = -1, dob = -1, residential = -1;
    int flat = 0, premises = 0, road = 0, area = 0, town = 0, state = 0, pin = 0, email = 0;
    int std = 0, tel = 0, mobile = 0;
    int assessed = 0, estIncome = 0, estTotal = 0, formsFiled = 0, formsAmount = 0;
    int latestAy = 0, previousYear = 0;
    int count = 0;   // slots of the block
};
Declarant declarant(bool form15H);

// Payer slots, the same on both forms.
enum Payer {
    PayerName, SequenceNo, PayerPan, PayerAddress, PayerTan, PayerEmail, PayerStd, PayerTel, PayerMobile,
    AmountPaid, ReceivedOn, PaidOn, PayerCount
};

SlotTable declarantSlots(bool form15H);
SlotTable payerSlots();
// The income details as one slot between the two blocks.
Slot incomeSlot(bool form15H);
// Declarant slots, the income details, payer slots: the whole row after the key.
SlotTable allSlots(bool form15H);

// The screen in the order of the statutory items: each row is one item, with one slot or
// several side by side; -1 stands for the income details grid.
struct ScreenRow
{
    QString caption = {};        // empty: the slot's own caption
    QList<int> fields = {};
    bool slotCaptions = true;    // several fields: each with its caption, or the row's says it all
};
QList<ScreenRow> screenRows(bool form15H);

// "Details of income for which the declaration is filed": Sl. No. is the grid's own.
ScheduleLayout incomeLayout(bool form15H);
constexpr int IncomeColumns = 4;
constexpr int IncomeAmountColumn = 3;

// The grid as the one text of the row: cells joined by "¦", rows by "^", each cell first
// cleared of both. No rows: the empty text.
QString packIncome(const QList<QStringList> &rows);
QList<QStringList> unpackIncome(const QString &text);

// "2024-25" -> "2025-26"; empty when the text is not a year of that shape.
QString nextYear(const QString &year);
// The previous year of an assessment year ("2025-26" -> "2024-25"); empty when not one.
QString previousYearOf(const QString &asYear);

} // namespace Oct15Slots
