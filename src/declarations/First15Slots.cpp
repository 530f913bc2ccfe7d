#include "declarations/First15Slots.h"

namespace First15Slots {

namespace {

Slot text(const char *caption, int width = 100)
{
    return Slot{.caption = QString::fromUtf8(caption), .width = width};
}
Slot kind(const char *caption, FieldKind k, int width = 0)
{
    return Slot{.caption = QString::fromUtf8(caption), .kind = k, .width = width};
}

// The age goes into "I am of the age of ... years": a whole number of years.
QString wholeYears(const QString &text)
{
    bool ok = false;
    const int years = text.trimmed().toInt(&ok);
    return ok && years > 0 && years < 150 ? QString() : QStringLiteral("The age is a whole number of years.");
}

SlotTable declarantSlots(bool form15H)
{
    SlotTable t;
    t << text("Name", 150) << text("Son/Daughter/Wife of", 150);
    if (!form15H)
        t << Slot{.caption = QStringLiteral("Status"), .kind = FieldKind::Combo,
                  .items = {QStringLiteral("AOP/BOI"), QStringLiteral("HUF"), QStringLiteral("INDIVIDUAL"), QStringLiteral("OTHERS")},
                  .name = QStringLiteral("cbostatusM")};
    t << kind("Resident of (Address)", FieldKind::MultiLine, 255);
    if (form15H)
        t << kind("Date of Birth", FieldKind::Date, 10)
          << Slot{.caption = QStringLiteral("Age (in years)"), .width = 3, .extraCheck = wholeYears};
    t << kind("PAN", FieldKind::Pan, 10) << text("Last assessed to income-tax for the assessment year", 10)
      << text("By the Assessing Officer (Circle/Ward)")
      << text("Chief Commissioner or Commissioner of Income-tax (if not assessed to income-tax earlier)", 255);
    if (!form15H)
        // Income_From: the kind of income the declaration claims without deduction of tax.
        t << Slot{.caption = QStringLiteral("Income From"), .kind = FieldKind::Combo,
                  .items = {QStringLiteral("INTEREST ON SECURITIES"), QStringLiteral("DIVIDENDS"),
                            QStringLiteral("INTEREST OTHER THAN INTEREST ON SECURITIES"),
                            QStringLiteral("INCOME IN RESPECT OF UNITS"),
                            QStringLiteral("WITHDRAWAL FROM NATIONAL SAVINGS SCHEME")},
                  .name = QStringLiteral("cboIncomeFrom")};
    t << kind("Estimated total income of the previous year", FieldKind::Amount, 18);
    if (!form15H)
        t << Slot{.kind = FieldKind::Flags,
                  .items = {QStringLiteral("Interest on securities referred to in Schedule I"),
                            QStringLiteral("Dividends on shares referred to in Schedule II"),
                            QStringLiteral("Interest on sums referred to in Schedule III"),
                            QStringLiteral("Income in respect of units referred to in Schedule IV"),
                            QStringLiteral("Withdrawal from the National Savings Scheme referred to in Schedule V")},
                  .name = QStringLiteral("chkincsch")};
    return t;
}

SlotTable payerSlots()
{
    return {text("Name of the person responsible for paying", 150),
            kind("Address", FieldKind::MultiLine, 255),
            kind("TAN", FieldKind::Tan, 10),
            kind("Date on which the declaration was furnished", FieldKind::Date, 10),
            text("Period in respect of which the income has been paid/credited", 255),
            kind("Amount of income paid", FieldKind::Amount, 18),
            kind("Date on which the income has been paid/credited", FieldKind::Date, 10),
            text("Forwarded to the Chief Commissioner or Commissioner of Income-tax", 255)};
}

// Schedules I to V of the first Form 15G, in its own order: securities before shares.
QList<ScheduleLayout> schedules15G()
{
    QList<ScheduleLayout> out;
    const int order[] = {1, 0, 2, 3, 4};   // schedule of the current design holding the same columns
    const char *const titles[] = {"SCHEDULE I", "SCHEDULE II", "SCHEDULE III", "SCHEDULE IV", "SCHEDULE V"};
    for (int k = 0; k < 5; ++k) {
        ScheduleLayout layout = DeclarationSlots::schedule(false, order[k]);
        layout.title = QString::fromLatin1(titles[k]);
        layout.table = QStringLiteral("Form15G_Sch") + QString::number(k + 1);
        out << layout;
    }
    return out;
}

ScheduleLayout table15H()
{
    using A = ScheduleColumn::Align;
    using K = ScheduleColumn::Kind;
    return ScheduleLayout{
        .title = QStringLiteral("TABLE OF INCOME"),
        .table = QStringLiteral("Form15H_Table"),
        .columns = {{.heading = QStringLiteral("Nature of income"), .align = A::Left, .kind = K::Text},
                    {.heading = QStringLiteral("Particulars of the securities, shares, sums, units or account"),
                     .align = A::Left, .kind = K::Text},
                    {.heading = QStringLiteral("Date of investment"), .align = A::Centre, .kind = K::Date},
                    {.heading = QStringLiteral("Amount of income"), .align = A::Right, .kind = K::Number,
                     .format = QStringLiteral("###0.00")}},
        .selectSql = QStringLiteral("Select * From Form15H_Table where period_code="),
        .orderSql = QStringLiteral(" Order By SrNo"),
        .deleteSql = QStringLiteral("Delete from Form15H_Table where period_code="),
        .insertSql = QStringLiteral("Insert into Form15H_Table Values "),
    };
}

} // namespace

Declarant declarant(bool form15H)
{
    if (form15H)
        return {HName, HRelative, -1, HAddress, HDob, HAge, HPan, HLastAy, HWard, HCommissioner, -1, HEstIncome, -1};
    return {GName, GRelative, GStatus, GAddress, -1, -1, GPan, GLastAy, GWard, GCommissioner, GIncomeFrom, GEstIncome, GFlags};
}

DeclarationSlots::Design design(bool form15H)
{
    const Declarant at = declarant(form15H);
    DeclarationSlots::Design d;
    d.form15H = form15H;
    d.lineReport = true;
    d.number = form15H ? QStringLiteral("15H") : QStringLiteral("15G");
    d.module = QStringLiteral("frm") + d.number.toLower();
    d.documentBase = QStringLiteral("Form") + d.number + QStringLiteral("_First");
    d.caption = QStringLiteral("Form ") + d.number + QStringLiteral(" (first layout)");
    d.heading = form15H ? QStringLiteral("Declaration under section 197A(1C) of the Income-tax Act, 1961, to be made by an "
                                         "individual who is of the age of sixty-five years or more claiming certain "
                                         "receipts without deduction of tax")
                        : QStringLiteral("Declaration under sub-sections (1) and (1A) of section 197A of the Income-tax Act, "
                                         "1961, to be made by a person (not being a company or a firm) claiming receipt of "
                                         "interest on securities, dividends, interest other than \"interest on "
                                         "securities\", income in respect of units or the amount referred to in clause (a) "
                                         "of sub-section (2) of section 80CCA without deduction of tax");
    d.mainTable = form15H ? QStringLiteral("Form15H") : QStringLiteral("Form15G");
    d.declarant = declarantSlots(form15H);
    d.payer = payerSlots();
    d.flagsSlot = at.flags;
    d.schedules = form15H ? QList<ScheduleLayout>{table15H()} : schedules15G();
    // A declaration names its declarant and, on Form 15G, the income it claims.
    d.required = form15H ? QList<int>{at.name} : QList<int>{at.name, at.incomeFrom};
    d.prefill = {{QStringLiteral("Name"), at.name}, {QStringLiteral("panno"), at.pan}, {QStringLiteral("ward"), at.ward}};
    d.prefill << (form15H ? std::pair{QStringLiteral("dob"), at.dob} : std::pair{QStringLiteral("status"), at.status});
    d.declarantTab = QStringLiteral("D&eclarant");
    d.payerTab = QStringLiteral("&Person Responsible For Paying");
    d.tableButton = QStringLiteral("Table of &Income");
    return d;
}

} // namespace First15Slots
