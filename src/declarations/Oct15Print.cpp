#include "declarations/Oct15Print.h"

#include "declarations/DeclarationPrint.h"
#include "declarations/Oct15Slots.h"
#include "host/IDataObject.h"
#include "shared/modbase.h"


namespace Oct15Print {

namespace {

using DeclarationPrint::CellAt;
using DeclarationPrint::Item;
using DeclarationPrint::Source;

// Value cells two to a row (label, value, label, value), in the order of the items.
QList<Item> pairs(int table, const QList<Item> &items)
{
    QList<Item> out;
    for (int k = 0; k < items.size(); ++k) {
        Item item = items.at(k);
        item.at = CellAt{table, k / 2, (k % 2) * 2 + 1};
        out << item;
    }
    return out;
}

QList<Item> partOne(bool form15H)
{
    const Oct15Slots::Declarant at = Oct15Slots::declarant(form15H);
    QList<Item> items = {{Source::Slot, at.name}, {Source::Slot, at.pan},
                         {Source::Slot, form15H ? at.dob : at.status}, {Source::Slot, at.previousYear}};
    if (!form15H)
        items << Item{Source::Slot, at.residential};
    for (int slot : {at.flat, at.premises, at.road, at.area, at.town, at.state, at.pin, at.email})
        items << Item{Source::Slot, slot};
    items << Item{.source = Source::Phone, .slot = at.std, .second = at.tel, .third = at.mobile}
          << Item{Source::Slot, at.assessed} << Item{Source::Slot, at.latestAy} << Item{Source::Amount, at.estIncome}
          << Item{Source::Amount, at.estTotal};
    return pairs(PartOneTable, items);
}

QList<Item> partTwo()
{
    using namespace Oct15Slots;
    return pairs(PartTwoTable, {{Source::Slot, PayerName},
                                {Source::Slot, SequenceNo},
                                {Source::Slot, PayerPan},
                                {Source::Slot, PayerAddress},
                                {Source::Slot, PayerTan},
                                {Source::Slot, PayerEmail},
                                {.source = Source::Phone, .slot = PayerStd, .second = PayerTel, .third = PayerMobile},
                                {Source::Amount, AmountPaid},
                                {Source::Slot, ReceivedOn},
                                {Source::Slot, PaidOn}});
}

QString previousYear(const Declaration &d)
{
    return DeclarationPrint::slotText(d.declarant, Oct15Slots::declarant(d.form15H).previousYear);
}

} // namespace

QString templatePath(bool form15H)
{
    return form15H ? QStringLiteral("/Data/Form15H_Oct15.rtf") : QStringLiteral("/Data/Form15G_Oct15.rtf");
}

QString tempName(bool form15H)
{
    return form15H ? QStringLiteral("Frm15HOct15.rtf") : QStringLiteral("Frm15GOct15.rtf");
}

QString assessmentYear(const Declaration &d, const QString &asYear)
{
    const QString next = Oct15Slots::nextYear(previousYear(d));
    return next.isEmpty() ? asYear : next;
}

QString yearEnd(const Declaration &d, const QString &asYear)
{
    return QStringLiteral("31/03/") + assessmentYear(d, asYear).left(4);
}

TemplateFill fill(const Declaration &d, const QString &asYear, const QString &formPlace, const QString &formDate)
{
    const Oct15Slots::Declarant at = Oct15Slots::declarant(d.form15H);
    TemplateFill fill;
    fill.text(QStringLiteral("##SIGNNAME##"), DeclarationPrint::slotText(d.declarant, at.name));
    fill.text(QStringLiteral("##YREND##"), yearEnd(d, asYear));
    fill.text(QStringLiteral("##ASYR##"), assessmentYear(d, asYear));

    DeclarationPrint::addItems(fill, partOne(d.form15H), d.declarant, asYear);
    fill.cell(OtherFormsTable, 1, 0, DeclarationPrint::slotText(d.declarant, at.formsFiled));
    fill.cell(OtherFormsTable, 1, 1, DeclarationPrint::printedAmount(DeclarationPrint::slotText(d.declarant, at.formsAmount)));

    QList<QStringList> rows;
    for (const QStringList &row : d.income) {
        QStringList cells{QString::number(rows.size() + 1)};
        cells << row.mid(0, Oct15Slots::IncomeColumns);
        cells.resize(1 + Oct15Slots::IncomeColumns);
        cells[1 + Oct15Slots::IncomeAmountColumn] = DeclarationPrint::printedAmount(cells.at(1 + Oct15Slots::IncomeAmountColumn));
        rows << cells;
    }
    fill.schedule(IncomeTable, 1, rows, QStringLiteral("##NIL1##"));

    fill.cell(VerificationTable, 0, 1, formPlace);
    fill.cell(VerificationTable, 1, 1, formDate);
    DeclarationPrint::addItems(fill, partTwo(), d.payer, asYear);
    fill.cell(PayerPlaceTable, 0, 1, formPlace);
    fill.cell(PayerPlaceTable, 1, 1, formDate);
    return fill;
}

namespace {
QString documentName(bool form15H, const TemplatePrint::Selection &s)
{
    return (form15H ? QStringLiteral("Form15H_Oct15_") : QStringLiteral("Form15G_Oct15_")) + s.code + QLatin1Char('_')
        + s.asYear;
}
} // namespace

bool print(const QString &module, const Declaration &d, Dialogs &dialogs)
{
    const TemplatePrint::Selection s;
    return TemplatePrint::print(module, templatePath(d.form15H), tempName(d.form15H), documentName(d.form15H, s),
                                fill(d, s.asYear, s.place, s.date), dialogs);
}

void render(IReportObject &report, const Declaration &d)
{
    const TemplatePrint::Selection s;
    TemplatePrint::renderTemplate(report, templatePath(d.form15H), documentName(d.form15H, s),
                                  fill(d, s.asYear, s.place, s.date));
}

} // namespace Oct15Print
