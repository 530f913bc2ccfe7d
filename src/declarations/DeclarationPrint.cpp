#include "declarations/DeclarationPrint.h"

#include "host/IDataObject.h"
#include "host/TextHelpers.h"
#include "shared/modbase.h"


#include <array>

namespace DeclarationPrint {

namespace {

// Template tables shared by both forms.
constexpr int DeclarantTable = 1;   // items in pairs: label, value, label, value
constexpr int AoCodeTable = 2;      // code; the four parts' headings; the four parts
constexpr int PresentAoTable = 3;
constexpr int IncomeTable = 4;      // estimated income; five sources; total income
constexpr int FirstScheduleTable = 5;
constexpr int VerificationTable = 10;
constexpr int PayerTable = 11;
constexpr int PayerPlaceTable = 12;

// Part I of Form 15G in the order of the statutory items.
const QList<Item> &declarant15G()
{
    static const QList<Item> items = {
        {Source::Slot, 1, 0, {DeclarantTable, 0, 3}},      // PAN
        {Source::Slot, 0, 0, {DeclarantTable, 0, 1}},      // name
        {Source::AsYear, NoSlot, 0, {DeclarantTable, 1, 3}},
        {Source::Slot, 2, 0, {DeclarantTable, 1, 1}},      // status
        {Source::Slot, 3, 0, {DeclarantTable, 2, 3}},      // flat
        {Source::Slot, 4, 0, {DeclarantTable, 3, 1}},      // premises
        {Source::Slot, 14, 0, {DeclarantTable, 3, 3}},     // assessed in ward/circle
        {Source::Slot, 15, 0, {AoCodeTable, 0, 1}},        // AO code
        {Source::Slot, 5, 0, {DeclarantTable, 4, 1}},      // road
        {Source::Slot, 6, 0, {DeclarantTable, 4, 3}},      // area
        {Source::Slot, 8, 0, {DeclarantTable, 5, 3}},      // state
        {Source::Slot, 16, 0, {AoCodeTable, 2, 0}},
        {Source::Slot, 17, 0, {AoCodeTable, 2, 1}},
        {Source::Slot, 18, 0, {AoCodeTable, 2, 2}},
        {Source::Slot, 19, 0, {AoCodeTable, 2, 3}},
        {Source::Slot, 7, 0, {DeclarantTable, 5, 1}},      // town
        {Source::Slot, 9, 0, {DeclarantTable, 6, 3}},      // PIN
        {Source::Slot, 20, 0, {DeclarantTable, 6, 1}},     // last assessment year
        {Source::Slot, 22, 0, {DeclarantTable, 8, 3}},     // present ward
        {Source::Slot, 10, 0, {DeclarantTable, 7, 1}},     // e-mail
        {Source::Phone, 11, 13, {DeclarantTable, 7, 3}},
        {Source::Slot, 28, 0, {DeclarantTable, 2, 1}},     // residential status
        {Source::Slot, 29, 0, {DeclarantTable, 8, 1}},     // business
        {Source::Slot, 23, 0, {PresentAoTable, 0, 1}},     // present AO code
        {Source::Slot, 24, 0, {PresentAoTable, 2, 0}},
        {Source::Slot, 25, 0, {PresentAoTable, 2, 1}},
        {Source::Slot, 26, 0, {PresentAoTable, 2, 2}},
        {Source::Slot, 27, 0, {PresentAoTable, 2, 3}},
        {Source::Amount, 30, 0, {IncomeTable, 0, 1}},      // estimated income
        {Source::Flag, 31, 0, {IncomeTable, 1, 1}},
        {Source::Flag, 31, 1, {IncomeTable, 2, 1}},
        {Source::Flag, 31, 2, {IncomeTable, 3, 1}},
        {Source::Flag, 31, 3, {IncomeTable, 4, 1}},
        {Source::Flag, 31, 4, {IncomeTable, 5, 1}},
        {Source::Amount, 32, 0, {IncomeTable, 6, 1}},      // estimated total income
    };
    return items;
}

// Form 15H: the date of birth in place of the status, no residential status, and the last
// four slots one lower.
const QList<Item> &declarant15H()
{
    static const QList<Item> items = {
        {Source::Slot, 1, 0, {DeclarantTable, 0, 3}},      // PAN
        {Source::Slot, 0, 0, {DeclarantTable, 0, 1}},      // name
        {Source::AsYear, NoSlot, 0, {DeclarantTable, 1, 3}},
        {Source::Slot, 2, 0, {DeclarantTable, 1, 1}},      // date of birth
        {Source::Slot, 3, 0, {DeclarantTable, 2, 1}},      // flat
        {Source::Slot, 4, 0, {DeclarantTable, 2, 3}},      // premises
        {Source::Slot, 14, 0, {DeclarantTable, 3, 1}},     // assessed in ward/circle
        {Source::Slot, 15, 0, {AoCodeTable, 0, 1}},
        {Source::Slot, 5, 0, {DeclarantTable, 3, 3}},      // road
        {Source::Slot, 6, 0, {DeclarantTable, 4, 1}},      // area
        {Source::Slot, 8, 0, {DeclarantTable, 5, 1}},      // state
        {Source::Slot, 16, 0, {AoCodeTable, 2, 0}},
        {Source::Slot, 17, 0, {AoCodeTable, 2, 1}},
        {Source::Slot, 18, 0, {AoCodeTable, 2, 2}},
        {Source::Slot, 19, 0, {AoCodeTable, 2, 3}},
        {Source::Slot, 7, 0, {DeclarantTable, 4, 3}},      // town
        {Source::Slot, 9, 0, {DeclarantTable, 6, 1}},      // PIN
        {Source::Slot, 20, 0, {DeclarantTable, 5, 3}},     // last assessment year
        {Source::Slot, 22, 0, {DeclarantTable, 8, 1}},     // present ward
        {Source::Slot, 10, 0, {DeclarantTable, 6, 3}},     // e-mail
        {Source::Phone, 11, 13, {DeclarantTable, 7, 1}},
        {Source::Slot, 28, 0, {DeclarantTable, 7, 3}},     // business
        {Source::Slot, 23, 0, {PresentAoTable, 0, 1}},
        {Source::Slot, 24, 0, {PresentAoTable, 2, 0}},
        {Source::Slot, 25, 0, {PresentAoTable, 2, 1}},
        {Source::Slot, 26, 0, {PresentAoTable, 2, 2}},
        {Source::Slot, 27, 0, {PresentAoTable, 2, 3}},
        {Source::Amount, 29, 0, {IncomeTable, 0, 1}},
        {Source::Flag, 30, 0, {IncomeTable, 1, 1}},
        {Source::Flag, 30, 1, {IncomeTable, 2, 1}},
        {Source::Flag, 30, 2, {IncomeTable, 3, 1}},
        {Source::Flag, 30, 3, {IncomeTable, 4, 1}},
        {Source::Flag, 30, 4, {IncomeTable, 5, 1}},
        {Source::Amount, 31, 0, {IncomeTable, 6, 1}},
    };
    return items;
}

// Part II, the same on both forms.
const QList<Item> &payerItems()
{
    static const QList<Item> items = {
        {Source::Slot, 0, 0, {PayerTable, 0, 1}},      // name
        {Source::Slot, 1, 0, {PayerTable, 1, 1}},      // address
        {Source::Slot, 2, 0, {PayerTable, 0, 3}},      // PAN
        {Source::Slot, 3, 0, {PayerTable, 1, 3}},      // TAN
        {Source::Slot, 4, 0, {PayerTable, 3, 1}},      // status
        {Source::Slot, 5, 0, {PayerTable, 2, 1}},      // e-mail
        {Source::Phone, 6, 7, {PayerTable, 2, 3}},
        {Source::Slot, 9, 0, {PayerTable, 3, 3}},      // date furnished
        {Source::Slot, 12, 0, {PayerTable, 5, 1}},     // date paid/credited
        {Source::Slot, 13, 0, {PayerTable, 5, 3}},     // date of declaration/withdrawal
        {Source::Slot, 10, 0, {PayerTable, 4, 1}},     // period
        {Source::Amount, 11, 0, {PayerTable, 4, 3}},
        {Source::Slot, 14, 0, {PayerTable, 6, 1}},     // National Savings Scheme account
    };
    return items;
}

// The amount columns of Schedules I to V (0-based data columns).
const std::array<QList<int>, 5> &amountColumns()
{
    static const std::array<QList<int>, 5> columns = {
        QList<int>{2}, QList<int>{2}, QList<int>{1, 4}, QList<int>{4}, QList<int>{2}};
    return columns;
}

const TemplateLayout LayoutBoth = {
    DeclarantTable,
    {FirstScheduleTable, FirstScheduleTable + 1, FirstScheduleTable + 2, FirstScheduleTable + 3, FirstScheduleTable + 4},
    1,
    {5, 5, 5, 5, 3},
    {VerificationTable, 0, 1},
    {VerificationTable, 1, 1},
    {PayerPlaceTable, 0, 1},
    {PayerPlaceTable, 1, 1},
};

} // namespace

QString slotText(const QStringList &values, int slot)
{
    return slot >= 0 && slot < values.size() ? values.at(slot) : QString();
}

QString printedAmount(const QString &text)
{
    return text.trimmed().isEmpty() ? QString() : TextHelpers::indianAmount(text);
}

namespace {
QString phone(const QString &std, const QString &number)
{
    if (std.trimmed().isEmpty())
        return number;
    if (number.trimmed().isEmpty())
        return std;
    return std + QLatin1Char('-') + number;
}

bool ticked(const QString &flags, int digit)
{
    return digit < flags.size() && flags.at(digit) == QLatin1Char('1');
}
} // namespace

void addItems(TemplateFill &fill, const QList<Item> &items, const QStringList &values, const QString &asYear)
{
    for (const Item &item : items) {
        QString value;
        switch (item.source) {
        case Source::Slot:
            value = slotText(values, item.slot);
            break;
        case Source::Amount:
            value = printedAmount(slotText(values, item.slot));
            break;
        case Source::AsYear:
            value = asYear;
            break;
        case Source::Phone:
            value = phone(slotText(values, item.slot), slotText(values, item.second));
            if (const QString mobile = slotText(values, item.third); !mobile.trimmed().isEmpty())
                value = value.trimmed().isEmpty() ? mobile : value + QStringLiteral(" / ") + mobile;
            break;
        case Source::Flag:
            value = ticked(slotText(values, item.slot), item.second) ? QStringLiteral("Yes") : QStringLiteral("No");
            break;
        }
        fill.cell(item.at.table, item.at.row, item.at.column, value);
    }
}

const TemplateLayout &layout(bool form15H)
{
    Q_UNUSED(form15H)   // both templates number their tables alike
    return LayoutBoth;
}

QString templatePath(bool form15H)
{
    return form15H ? QStringLiteral("/Data/Form15H.rtf") : QStringLiteral("/Data/Form15G.rtf");
}

QString tempName(bool form15H)
{
    return form15H ? QStringLiteral("Frm15H.rtf") : QStringLiteral("Frm15G.rtf");
}

QString documentName(bool form15H, const QString &codeNo, const QString &asYear)
{
    return (form15H ? QStringLiteral("Form15H_") : QStringLiteral("Form15G_")) + codeNo + QLatin1Char('_') + asYear;
}

TemplateFill fill(const Declaration &d, const QString &asYear, const QString &formPlace, const QString &formDate)
{
    const TemplateLayout &at = layout(d.form15H);
    const int flagSlot = d.form15H ? 30 : 31;
    TemplateFill fill;

    fill.text(QStringLiteral("##SIGNNAME##"), slotText(d.declarant, 0));
    fill.text(QStringLiteral("##YREND##"), QStringLiteral("31/03/") + asYear.left(4));
    fill.text(QStringLiteral("##ASYR##"), asYear);
    fill.text(QStringLiteral("##CHIEFCOMM##"), slotText(d.declarant, 21));
    fill.text(QStringLiteral("##FORWARDTO##"), slotText(d.payer, 15));

    addItems(fill, d.form15H ? declarant15H() : declarant15G(), d.declarant, asYear);

    const QString flags = slotText(d.declarant, flagSlot);
    for (int k = 0; k < 5; ++k) {
        QList<QStringList> rows;
        if (ticked(flags, k) && k < d.schedules.size()) {
            for (QStringList row : d.schedules.at(k)) {
                row = row.mid(0, at.scheduleColumns[k]);
                for (int c : amountColumns()[size_t(k)]) {
                    if (c < row.size())
                        row[c] = printedAmount(row.at(c));
                }
                rows.append(row);
            }
        }
        fill.schedule(at.scheduleTable[k], at.scheduleDataRow, rows, QStringLiteral("##NIL%1##").arg(k + 1));
    }

    fill.cell(at.verificationPlace.table, at.verificationPlace.row, at.verificationPlace.column, formPlace);
    fill.cell(at.verificationDate.table, at.verificationDate.row, at.verificationDate.column, formDate);

    addItems(fill, payerItems(), d.payer, asYear);
    fill.cell(at.payerPlace.table, at.payerPlace.row, at.payerPlace.column, formPlace);
    fill.cell(at.payerDate.table, at.payerDate.row, at.payerDate.column, formDate);
    return fill;
}

bool print(const QString &module, const Declaration &d, Dialogs &dialogs)
{
    const TemplatePrint::Selection s;
    // Without a data object TemplatePrint reports the missing object under the error trap.
    return TemplatePrint::print(module, templatePath(d.form15H), tempName(d.form15H),
                                documentName(d.form15H, s.code, s.asYear), fill(d, s.asYear, s.place, s.date), dialogs);
}

void render(IReportObject &report, const Declaration &d)
{
    const TemplatePrint::Selection s;
    TemplatePrint::renderTemplate(report, templatePath(d.form15H), documentName(d.form15H, s.code, s.asYear),
                                  fill(d, s.asYear, s.place, s.date));
}

} // namespace DeclarationPrint
