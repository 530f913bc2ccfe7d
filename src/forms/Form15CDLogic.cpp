#include "forms/Form15CDLogic.h"

#include "forms/FormSupport.h"
#include "forms/ReportRows.h"
#include "shared/modbase.h"

using namespace ReportText;

Form15CDLogic::Form15CDLogic(Kind kind)
    : PeriodRowForm(kind == Kind::C ? QStringLiteral("Form15C") : QStringLiteral("Form15D"), slotsOf(kind)),
      m_kind(kind)
{
}

SlotTable Form15CDLogic::slotsOf(Kind kind)
{
    if (kind == Kind::C)
        return {{.caption = QStringLiteral("Assessing &Officer"), .width = 255},
                {.caption = QStringLiteral("&Branch(es) in India at"), .width = 255},
                {.caption = QStringLiteral("&Head office situated at"), .width = 255},
                {.caption = QStringLiteral("&Financial year"), .width = 255}};
    return {{.caption = QStringLiteral("Assessing &Officer"), .width = 255},
            {.caption = QStringLiteral("&Name(s) of the branch(es)"), .width = 255},
            {.caption = QStringLiteral("Office(s) of the branch(es) &at"), .width = 255},
            {.caption = QStringLiteral("&Head office situated at"), .width = 255},
            {.caption = QStringLiteral("&Financial year"), .width = 255}};
}

QString Form15CDLogic::module() const
{
    return m_kind == Kind::C ? QStringLiteral("frm15c") : QStringLiteral("frm15d");
}

QString Form15CDLogic::documentBase() const
{
    return tableName();
}

void Form15CDLogic::buildReport()
{
    if (m_kind == Kind::C)
        buildReport15C();
    else
        buildReport15D();
}

// The address to the Assessing Officer both applications open with, after their title.
void Form15CDLogic::salutation(ReportRows &row)
{
    IReportObject &r = FormSupport::report();
    r.printtext();
    row.line(QStringLiteral("To"));
    row.line(QStringLiteral("The Assessing Officer"));
    row.line(field(0));
    r.printtext();
    row.line(QStringLiteral("Sir,"));
    r.printtext();
}

// The declaration and the signature block both applications end with.
void Form15CDLogic::closing(ReportRows &row)
{
    IDataObject &d = FormSupport::data();
    IReportObject &r = FormSupport::report();
    r.printtext();
    row.line(QStringLiteral("    I hereby declare that what is stated in this application is correct."));
    r.printtext();
    r.printtext();

    r.createtable(1, 2);
    row.pair(QString(), 50, ReportRows::Left, QStringLiteral("..............."), 28, ReportRows::Right);
    row.pair(QStringLiteral("Date ") + d.formdate(), 50, ReportRows::Left, QStringLiteral("Signature"), 28, ReportRows::Right);
    row.pair(QString(), 50, ReportRows::Left, d.pr_add(), 28, ReportRows::Right);
}

void Form15CDLogic::buildReport15C()
{
    IDataObject &d = FormSupport::data();
    IReportObject &r = FormSupport::report();
    ReportRows row(2);
    const QString firm = d.firmname();

    row.line(bold(QStringLiteral("FORM NO. 15C")) + lineBreak + QStringLiteral("[See Rule 29B]") + lineBreak
                 + QStringLiteral("Application by a banking company for a certificate under section 195(3) of the "
                                  "Income-tax Act, 1961, for receipt of interest and other sums without deduction of tax"),
             ReportRows::Centre);
    salutation(row);
    row.line(QStringLiteral("    I, ") + d.Name() + QStringLiteral(" being the principal officer of ") + firm
             + QStringLiteral(" hereby declare:"));
    r.printtext();
    row.line(QStringLiteral("(a) that ") + firm
                 + QStringLiteral(" is a banking company which is neither an Indian company nor a company which has "
                                  "made the prescribed arrangements for the declaration and payment of dividends "
                                  "within India and which is operating in India through a branch(es) at ")
                 + field(1),
             ReportRows::Left, QStringLiteral("(a) "));
    r.printtext();
    row.line(QStringLiteral("(b) that the head office of the said company is situated at ") + field(2), ReportRows::Left,
             QStringLiteral("(b) "));
    r.printtext();
    row.line(QStringLiteral("(c) that the said company is entitled to receive interest (other than 'Interest on "
                            "securities') and other sums not being dividends, chargeable underthe provisions of the "
                            "Income-tax Act, 1961, during the financial year ")
                 + field(3),
             ReportRows::Left, QStringLiteral("(c) "));
    r.printtext();
    row.line(QStringLiteral("(d) that the company fulfils all the conditions laid down in rule 29B of the Income-tax "
                            "Rules, 1962."),
             ReportRows::Left, QStringLiteral("(d) "));
    r.printtext();
    row.line(QStringLiteral("    I, therefore, request that a certificate may be issued authorising the said company to "
                            "receive interest other than 'Interest on securities' and other sums not being dividends, "
                            "without deduction of tax under sub-section (1) of section 195 of the Income-tax Act, 1961, "
                            "during the financial year ")
             + field(3));
    closing(row);
}

void Form15CDLogic::buildReport15D()
{
    IDataObject &d = FormSupport::data();
    IReportObject &r = FormSupport::report();
    ReportRows row(2);
    const QString firm = d.firmname();

    row.line(bold(QStringLiteral("FORM NO. 15D")) + lineBreak + QStringLiteral("[See Rule 29B]") + lineBreak
                 + QStringLiteral("Application by a person other than a banking company for a certificate under "
                                  "section 195(3) of the Income-tax Act, 1961, for receipt of sums other than interest "
                                  "and dividends without deduction of tax"),
             ReportRows::Centre);
    salutation(row);
    row.line(QStringLiteral("    I, ") + bold(d.Name()) + QStringLiteral(" being the principal officer of ") + bold(firm)
             + QStringLiteral(" / We ") + bold(firm) + QStringLiteral(" do hereby declare:"));
    r.printtext();
    row.line(QStringLiteral("(a) that I/ ") + firm
                 + QStringLiteral(" am/is a non-resident assessee (not being a banking company) carrying on "
                                  "business/profession in India through a branch(es) by name(s) ")
                 + field(1) + QStringLiteral(" having office(s) at ") + field(2),
             ReportRows::Left, QStringLiteral("(a) "));
    r.printtext();
    row.line(QStringLiteral("(b) that my head office/the head office of ") + firm + QStringLiteral(" is situated at ")
                 + field(3),
             ReportRows::Left, QStringLiteral("(b) "));
    r.printtext();
    row.line(QStringLiteral("(c) that I/ ") + firm
                 + QStringLiteral(" am/is entitled to receive income (other than dividends and interest) chargeable "
                                  "under the provisions of the Income-tax Act, 1961, during the financial year ")
                 + field(4),
             ReportRows::Left, QStringLiteral("(c) "));
    r.printtext();
    row.line(QStringLiteral("(d) that I/ ") + firm
                 + QStringLiteral(" fulfil(s) all the conditions laid down in rule 29B of the Income-tax Rules, 1962."),
             ReportRows::Left, QStringLiteral("(d) "));
    r.printtext();
    row.line(QStringLiteral("    I, therefore, request that a certificate may be issued authorising me/ ") + firm
             + QStringLiteral(" to receive income other than interest or dividends without deduction of tax under "
                              "sub-section(1) of section 195 of the Income-tax Act, 1961, during the financial year ")
             + field(4));
    closing(row);
}
