#include "declarations/DeclarationSlots.h"

namespace DeclarationSlots {

namespace {
Slot text(const char *caption, int width = 100)
{
    return Slot{.caption = QString::fromUtf8(caption), .width = width};
}
Slot kind(const char *caption, FieldKind k, int width = 0)
{
    return Slot{.caption = QString::fromUtf8(caption), .kind = k, .width = width};
}
Slot combo(const char *caption, const char *name, QStringList items, bool states = false)
{
    return Slot{.caption = QString::fromUtf8(caption), .kind = FieldKind::Combo, .items = std::move(items),
                .stateList = states, .name = QString::fromLatin1(name)};
}
} // namespace

SlotTable declarant(bool form15H)
{
    SlotTable t;
    t << text("Name", 150) << kind("PAN", FieldKind::Pan, 10);
    if (form15H)
        t << kind("Date of Birth", FieldKind::Date, 10);
    else
        t << combo("Status", "cbostatusM", {QStringLiteral("AOP/BOI"), QStringLiteral("HUF"), QStringLiteral("INDIVIDUAL"),
                                            QStringLiteral("OTHERS")});
    t << text("Flat/Door/Block No.") << text("Name of Premises") << text("Road/Street/Lane") << text("Area/Locality")
      << text("Town/City/District") << combo("State", "cbostateM", {}, true) << text("PIN", 6)
      << kind("Email", FieldKind::Email, 100) << text("STD Code", 10) << text("Tel. No.", 20) << text("Mobile", 15)
      << text("Assessed in which Ward/Circle") << text("AO Code (under whom assessed last time)") << text("Area Code", 10)
      << text("AO Type", 10) << text("Range Code", 10) << text("AO No.", 10)
      << text("Last Assessment Year in which assessed", 10)
      << text("Jurisdictional Chief Commissioner of Income-tax or Commissioner of Income-tax (if not assessed to "
              "Income-tax earlier)",
              255)
      << text("Present Ward/Circle") << text("Present AO Code (if not same as above)") << text("Area Code", 10)
      << text("AO Type", 10) << text("Range Code", 10) << text("AO No.", 10);
    if (!form15H)
        t << combo("Residential Status ", "cboresstatusM",
                   {QStringLiteral("RESIDENT"), QStringLiteral("RESIDENT BUT NOT ORDINARILY RESIDENT"),
                    QStringLiteral("NON-RESIDENT")});
    t << text("Name of Business/Occupation", 255)
      << kind("Estimated total income from the sources mentioned below:", FieldKind::Amount, 18);
    t << Slot{.kind = FieldKind::Flags,
              .items = {QStringLiteral("Dividend from shares referred to in Schedule I"),
                        QStringLiteral("Interest on securities referred to in Schedule II"),
                        QStringLiteral("Interest on sums referred to in Schedule III"),
                        QStringLiteral("Income form units referred to in Schedule IV"),
                        QStringLiteral("The amount of withdrawal referred to in section 80CCA(2)(a) from National "
                                       "Savings Scheme referred to in ScheduleV")},
              .name = QStringLiteral("chkincsch")};
    t << kind("Estimated total income of the previous year in which income mentioned in Column 22 is to be included",
              FieldKind::Amount, 18);
    return t;
}

SlotTable payer()
{
    return {text("Name", 150),
            kind("Address", FieldKind::MultiLine, 255),
            kind("PAN", FieldKind::Pan, 10),
            kind("TAN", FieldKind::Tan, 10),
            combo("Status", "cbostatusP", {QStringLiteral("COMPANY"), QStringLiteral("FIRM"), QStringLiteral("AOP/BOI"),
                                           QStringLiteral("HUF"), QStringLiteral("INDIVIDUAL"), QStringLiteral("OTHERS")}),
            kind("Email", FieldKind::Email, 100),
            text("STD Code", 10),
            text("Tel. No.", 20),
            text("Mobile", 15),
            kind("Date on which Declaration is Furnished ....................", FieldKind::Date, 10),
            text("Period in respect of which the dividend has been declared or the income has been paid/credited "
                 "....................",
                 255),
            kind("Amount of income paid ....................", FieldKind::Amount, 18),
            kind("Date on which the income has been paid/credited ....................", FieldKind::Date, 10),
            kind("Date of declaration, distribution or payment of dividend/withdrawal under the National Savings "
                 "Scheme ....................",
                 FieldKind::Date, 10),
            text("Account Number of National Saving Scheme from which withdrawal has been made ....................", 50),
            text("Forwarded to the Chief Commissioner or Commissioner of Income-tax", 255)};
}

int flagsSlot(bool form15H)
{
    return form15H ? 30 : 31;
}

ScheduleLayout schedule(bool form15H, int k)
{
    using A = ScheduleColumn::Align;
    using K = ScheduleColumn::Kind;
    const QString amount = QStringLiteral("###0.00");
    auto num = [](const char *h, const QString &format = QString()) {
        return ScheduleColumn{.heading = QString::fromUtf8(h), .align = A::Right, .kind = K::Number, .format = format};
    };
    auto txt = [](const char *h) { return ScheduleColumn{.heading = QString::fromUtf8(h), .align = A::Left, .kind = K::Text}; };
    auto date = [](const char *h) { return ScheduleColumn{.heading = QString::fromUtf8(h), .align = A::Centre, .kind = K::Date}; };
    auto centred = [](const char *h) { return ScheduleColumn{.heading = QString::fromUtf8(h), .align = A::Centre, .kind = K::Text}; };
    static const char *const titles[] = {"SCHEDULE I", "SCHEDULE II", "SCHEDULE III", "SCHEDULE IV", "SCHEDULE V"};
    QList<ScheduleColumn> columns;
    switch (k) {
    case 0:
        columns = {num("No. of shares"), txt("Class of shares and face value of each share"),
                   num("Total face value of shares", amount), num("Distinctive Nos. of shares"),
                   date("Date(s) on which the shares were acquired by the declarant")};
        break;
    case 1:
        columns = {txt("Description of securities"), num("Number of securities"), num("Amount of securities", amount),
                   date("Date(s) of securities"), date("Date(s) on which the securities were acquired by the declarant")};
        break;
    case 2:
        columns = {txt("Name and address of the person to whom the sums are given on interest"),
                   num("Amount of such sums", amount), date("Date on which such sums were given on interest"),
                   centred("Period for which such sums were given on interest"), num("Rate of interest", amount)};
        break;
    case 3:
        columns = {txt("Name and address of the mutual fund"), num("Number of units"),
                   txt("Class of units and face value of each unit"), num("Distinctive Nos. of units"),
                   num("Income in respect of units", amount)};
        break;
    default:
        columns = {txt("Particulars of the Post Office where the account under the National Savings Scheme is "
                       "maintained and the account number"),
                   date("Date on which the account was opened"),
                   num("The amount of withdrawal from the account", amount)};
        break;
    }
    const QString table = (form15H ? QStringLiteral("Tb15hT") : QStringLiteral("Tb15gT")) + QString::number(qBound(0, k, 4) + 1);
    return ScheduleLayout{.title = QString::fromLatin1(titles[qBound(0, k, 4)]), .table = table, .columns = columns};
}

} // namespace DeclarationSlots

namespace DeclarationSlots {

Design current(bool form15H)
{
    Design d;
    d.form15H = form15H;
    d.number = form15H ? QStringLiteral("15H") : QStringLiteral("15G");
    d.module = QStringLiteral("frm") + d.number.toLower() + QStringLiteral("New");
    d.documentBase = QStringLiteral("Form") + d.number;
    d.caption = QStringLiteral("Form ") + d.number;
    d.heading = form15H ? QStringLiteral("Declaration under section 197A(1C) to be made by an individual who is of the "
                                         "age of sixty years or more")
                        : QStringLiteral("Declaration under section 197A(1) and 197A(1A) to be made by a person (not being "
                                         "a company or a firm)");
    d.mainTable = form15H ? QStringLiteral("Tb15hM") : QStringLiteral("Tb15gM");
    d.declarant = declarant(form15H);
    d.payer = payer();
    d.flagsSlot = flagsSlot(form15H);
    for (int k = 0; k < 5; ++k)
        d.schedules << schedule(form15H, k);
    d.prefill = {{QStringLiteral("Name"), 0}, {QStringLiteral("panno"), 1},
                 {form15H ? QStringLiteral("dob") : QStringLiteral("status"), 2}, {QStringLiteral("flat"), 3},
                 {QStringLiteral("building"), 4}, {QStringLiteral("street"), 5}, {QStringLiteral("area"), 6},
                 {QStringLiteral("city"), 7}, {QStringLiteral("State"), 8}, {QStringLiteral("PIN"), 9},
                 {QStringLiteral("ward"), 22}, {QStringLiteral("asofficer"), 23}};
    if (!form15H)
        d.prefill << std::pair{QStringLiteral("resident_status"), 28};
    d.declarantTab = QStringLiteral("Asses&See (Declarant)");
    d.payerTab = QStringLiteral("&Person Responsible For Paying");
    // "Asses&See" holds Alt+S and "&Person" Alt+P, so Save and Previous take other keys.
    d.buttonCaptions = {{QStringLiteral("cmdupdate"), QStringLiteral("Sa&ve")}, {QStringLiteral("cmdprev"), QStringLiteral("P&revious")}};
    return d;
}

} // namespace DeclarationSlots
