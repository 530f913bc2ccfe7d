#include "declarations/First15Print.h"

#include "declarations/First15Slots.h"
#include "forms/ReportRows.h"
#include "host/IDataObject.h"
#include "host/IReportObject.h"
#include "shared/modbase.h"

using namespace ReportText;

namespace {

const QString Blank = QStringLiteral("....................");

// A filled-in blank of the form.
QString filled(const QString &text)
{
    const QString t = text.trimmed();
    return bold(t.isEmpty() ? Blank : t);
}

QString slot(const QStringList &values, int at)
{
    return at < 0 ? QString() : values.value(at);
}

QString roman(int k)
{
    static const char *const numerals[] = {"I", "II", "III", "IV", "V"};
    return QString::fromLatin1(numerals[qBound(0, k, 4)]);
}

// Border texts of a table row of n columns: every side, or no line above the row.
QString ones(int n)
{
    return QString(n, QLatin1Char('1'));
}
QString lastOnly(int n)
{
    return QString(n - 1, QLatin1Char('0')) + QLatin1Char('1');
}

// One detail table: "Sl. No." and the data columns sharing the rest of the row, a header,
// the rows (amounts "#,##0.00"), or "---NIL---" when nothing is declared in it.
void detailTable(IReportObject &report, const ScheduleLayout &layout, const QList<QStringList> &rows)
{
    const int data = int(layout.columns.size());
    const int n = data + 1;
    ReportRows row(n);
    const int serialWidth = 6;
    const int share = (ReportRows::rowWidth - serialWidth) / data;
    const auto width = [&](int c) {   // c: data column, the last takes what is left
        return c + 1 < data ? share : ReportRows::rowWidth - serialWidth - share * (data - 1);
    };
    report.createtable(1, n);
    row.clear();
    row.setCell(1, QStringLiteral("Sl. No."), serialWidth, ReportRows::Centre);
    for (int c = 0; c < data; ++c)
        row.setCell(c + 2, layout.columns.at(c).heading, width(c), ReportRows::Centre);
    row.write(true, ones(n), lastOnly(n), ones(n), ones(n));
    if (rows.isEmpty()) {
        row.clear();
        row.setCell(1, QStringLiteral("---NIL---"), ReportRows::rowWidth, ReportRows::Centre);
        row.write(true, QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("1"));
        return;
    }
    for (int r = 0; r < rows.size(); ++r) {
        row.clear();
        row.setCell(1, QString::number(r + 1), serialWidth, ReportRows::Centre);
        for (int c = 0; c < data; ++c) {
            const ScheduleColumn &column = layout.columns.at(c);
            const QString cell = rows.at(r).value(c);
            const bool right = column.align == ScheduleColumn::Align::Right;
            row.setCell(c + 2, column.isAmount() ? DeclarationPrint::printedAmount(cell) : cell, width(c),
                        right ? ReportRows::Right : column.align == ScheduleColumn::Align::Centre ? ReportRows::Centre
                                                                                                  : ReportRows::Left);
        }
        row.write(true, ones(n), lastOnly(n), QStringLiteral("0"), ones(n));
    }
}

void numbered(ReportRows &row, int number, const QString &text)
{
    const QString prefix = QString::number(number) + QStringLiteral(". ");
    row.line(prefix + text, ReportRows::Left, prefix);
}

void signature(IReportObject &report, ReportRows &row, const QString &place, const QString &date, const QString &who)
{
    report.printtext();
    report.createtable(1, 2);
    row.pair(QStringLiteral("Place ") + place, 50, ReportRows::Left, QStringLiteral(".........................."), 28,
             ReportRows::Right, QString(), false);
    row.pair(QStringLiteral("Date ") + date, 50, ReportRows::Left, who, 28, ReportRows::Right, QString(), false);
}

} // namespace

namespace First15Print {

void build(const DeclarationSlots::Design &design, const DeclarationPrint::Declaration &d)
{
    IReportObject &report = *modbase::reportObject();
    const IDataObject &data = modbase::data();
    const bool h = design.form15H;
    const First15Slots::Declarant at = First15Slots::declarant(h);
    const QStringList &m = d.declarant;
    const QStringList &p = d.payer;
    const QString asYear = data.AsYear();
    const QString yearEnd = QStringLiteral("31/03/") + asYear.left(4);
    ReportRows row(2);

    row.line(bold(QStringLiteral("FORM NO. ") + design.number) + lineBreak
                 + (h ? QStringLiteral("[See rule 29C(1A)]") : QStringLiteral("[See rule 29C]")) + lineBreak + design.heading,
             ReportRows::Centre);
    report.printtext();
    if (h) {
        row.line(QStringLiteral("To") + lineBreak + filled(p.value(First15Slots::PayerName)) + lineBreak
                 + filled(p.value(First15Slots::PayerAddress)));
        report.printtext();
    } else {
        row.line(QStringLiteral("Status : ") + filled(slot(m, at.status)));
    }

    const QString we = h ? QStringLiteral("I") : QStringLiteral("*I/We");
    const QString my = h ? QStringLiteral("my") : QStringLiteral("*my/our");
    row.line(we + QStringLiteral(", ") + filled(slot(m, at.name)) + QStringLiteral(" *son/daughter/wife of ")
             + filled(slot(m, at.relative)) + QStringLiteral(" resident of ") + filled(slot(m, at.address))
             + QStringLiteral(" do hereby declare—"));
    report.printtext();

    QString assessed = h ? QStringLiteral("that I was last assessed") : QStringLiteral("that *I/we was/were last assessed");
    assessed += QStringLiteral(" to income-tax for the assessment year ") + filled(slot(m, at.lastAy))
                + QStringLiteral(" by the Assessing Officer ") + filled(slot(m, at.ward))
                + QStringLiteral(" Circle/Ward and the permanent account number allotted to ")
                + (h ? QStringLiteral("me") : QStringLiteral("*me/us")) + QStringLiteral(" is ") + filled(slot(m, at.pan))
                + QStringLiteral(";") + lineBreak + QStringLiteral("or") + lineBreak
                + (h ? QStringLiteral("that I have not been assessed to income-tax at any time in the past but I fall")
                     : QStringLiteral("that *I/we have not been assessed to income-tax at any time in the past but *I/we "
                                      "fall"))
                + QStringLiteral(" within the jurisdiction of the Chief Commissioner or Commissioner of Income-tax ")
                + filled(slot(m, at.commissioner)) + QStringLiteral(";");
    const QString income = filled(DeclarationPrint::printedAmount(slot(m, at.estIncome)));

    if (h) {
        numbered(row, 1, QStringLiteral("that I am resident in India within the meaning of section 6 of the Income-tax Act, "
                                        "1961;"));
        numbered(row, 2, QStringLiteral("that my date of birth is ") + filled(slot(m, at.dob))
                             + QStringLiteral(" and I am of the age of ") + filled(slot(m, at.age))
                             + QStringLiteral(" years and am entitled to a deduction from the amount of income-tax on my "
                                              "total income referred to in section 88B;"));
        numbered(row, 3, QStringLiteral("that the tax on my estimated total income of Rs. ") + income
                             + QStringLiteral(", including the income referred to in the table below, computed in "
                                              "accordance with the provisions of the Income-tax Act, 1961, for the "
                                              "previous year ending on ")
                             + filled(yearEnd) + QStringLiteral(" relevant to the assessment year ") + filled(asYear)
                             + QStringLiteral(" will be nil;"));
        numbered(row, 4, assessed);
        numbered(row, 5, QStringLiteral("that the particulars of the income for which this declaration is made are given "
                                        "in the table below."));
    } else {
        QStringList ticked;
        const QString flags = slot(m, at.flags);
        for (int k = 0; k < 5; ++k) {
            if (flags.mid(k, 1) == QLatin1String("1"))
                ticked << QStringLiteral("Schedule ") + roman(k);
        }
        numbered(row, 1, QStringLiteral("that *I am/we are resident in India within the meaning of section 6 of the "
                                        "Income-tax Act, 1961;"));
        numbered(row, 2, QStringLiteral("that the ") + filled(slot(m, at.incomeFrom).toLower())
                             + QStringLiteral(" in respect of the securities, shares, sums, units or account, particulars "
                                              "of which are given in ")
                             + filled(ticked.join(QStringLiteral(", ")))
                             + QStringLiteral(" below, which stand in *my/our name and beneficially belong to *me/us, is "
                                              "not includible in the total income of any other person under sections "
                                              "60 to 64 of the Income-tax Act, 1961;"));
        numbered(row, 3, QStringLiteral("that *my/our estimated total income of Rs. ") + income
                             + QStringLiteral(", including the income referred to in paragraph 2 above, computed in "
                                              "accordance with the provisions of the Income-tax Act, 1961, for the "
                                              "previous year ending on ")
                             + filled(yearEnd) + QStringLiteral(" relevant to the assessment year ") + filled(asYear)
                             + QStringLiteral(" will not exceed the maximum amount which is not chargeable to "
                                              "income-tax;"));
        numbered(row, 4, assessed);
    }
    report.printtext();
    row.line(QStringLiteral("Signature of the declarant"), ReportRows::Right);

    static const char *const subtitles[] = {
        "(Details of securities)", "(Details of shares which stand in the name of the declarant and beneficially owned by him)",
        "(Particulars of the sums given on interest)", "(Particulars of the units)",
        "(Particulars of the account under the National Savings Scheme)"};
    for (int k = 0; k < design.schedules.size(); ++k) {
        const ScheduleLayout &layout = design.schedules.at(k);
        report.printtext();
        row.line(bold(h ? QStringLiteral("TABLE") : layout.title) + lineBreak
                     + (h ? QStringLiteral("(Particulars of the income for which the declaration is made)")
                          : QString::fromLatin1(subtitles[qBound(0, k, 4)])),
                 ReportRows::Centre);
        detailTable(report, layout, d.schedules.value(k));
    }

    report.printtext();
    row.line(bold(QStringLiteral("Verification")), ReportRows::Centre);
    row.line(we + QStringLiteral(", ") + filled(slot(m, at.name)) + QStringLiteral(", do hereby declare that to the best of ")
             + my + QStringLiteral(" knowledge and belief what is stated above is correct, complete and is truly stated.")
             + lineBreak + QStringLiteral("Verified today, the ") + filled(data.formdate()) + QStringLiteral("."));
    signature(report, row, data.formplace(), data.formdate(), QStringLiteral("Signature of the declarant"));

    report.printtext();
    row.line(bold(QStringLiteral("PART II")) + lineBreak
                 + QStringLiteral("[For use by the person to whom the declaration is furnished]"),
             ReportRows::Centre);
    report.createtable(1, 2);
    for (int i = 0; i < design.payer.size(); ++i) {
        const Slot &s = design.payer.at(i);
        const QString prefix = QString::number(i + 1) + QStringLiteral(". ");
        const QString value = s.kind == FieldKind::Amount ? DeclarationPrint::printedAmount(p.value(i)) : p.value(i);
        row.pair(prefix + s.caption, 30, ReportRows::Left, bold(QStringLiteral(": ") + value), 48, ReportRows::Left, prefix);
    }
    signature(report, row, data.formplace(), data.formdate(), QStringLiteral("Signature of the person responsible for paying"));
}

} // namespace First15Print
