#include "forms/Form15ILogic.h"

#include "forms/FormSupport.h"
#include "shared/FieldRules.h"
#include "forms/ReportRows.h"
#include "shared/modbase.h"

using namespace ReportText;

QString Form15ILogic::registration(int srNo) const
{
    return validLine(srNo) ? m_registration[srNo] : QString();
}

QString Form15ILogic::registrationDate(int srNo) const
{
    return validLine(srNo) ? m_date[srNo] : QString();
}

void Form15ILogic::setRegistration(int srNo, const QString &text)
{
    if (validLine(srNo))
        m_registration[srNo] = text;
}

void Form15ILogic::setRegistrationDate(int srNo, const QString &text)
{
    if (validLine(srNo))
        m_date[srNo] = text;
}

const Slot &Form15ILogic::registrationSlot()
{
    static const Slot slot{.caption = QStringLiteral("&Registration Number"), .width = 255};
    return slot;
}

const Slot &Form15ILogic::dateSlot()
{
    static const Slot slot{.caption = QStringLiteral("&Date of Registration"), .kind = FieldKind::Date, .width = 10};
    return slot;
}

QString Form15ILogic::financialYear(const QString &asYear)
{
    return QString::number(int(FieldRules::leadingNumber(asYear.left(4))) - 1) + QLatin1Char('-') + asYear.mid(2, 2);
}

void Form15ILogic::clear()
{
    for (int i = 1; i <= lineCount; ++i) {
        m_registration[i].clear();
        m_date[i].clear();
    }
}

void Form15ILogic::readRows(IDataObject &data)
{
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Form15I where period_code=") + QString::number(m_periodCode));
    for (; !rs.isEOF(); rs.moveNext()) {
        const int srNo = rs.field(1).toInt();
        // Only lines 1 and 2 have fields on the screen.
        if (!validLine(srNo))
            continue;
        m_registration[srNo] = rs.text(2);
        m_date[srNo] = rs.text(3);
    }
    rs.close();
}

QStringList Form15ILogic::saveStatements(IDataObject &data)
{
    const QString code = QString::number(m_periodCode);
    QStringList statements{QStringLiteral("Delete from Form15I where period_code=") + code};
    for (int srNo = 1; srNo <= lineCount; ++srNo) {
        const QString reg = m_registration[srNo].trimmed();
        const QString date = m_date[srNo].trimmed();
        if (reg.isEmpty() && date.isEmpty())
            continue;
        statements << QStringLiteral("Insert into Form15I Values (") + code + QLatin1Char(',') + QString::number(srNo)
                          + QLatin1Char(',') + data.quoted(reg) + QLatin1Char(',') + data.quoted(date) + QLatin1Char(')');
    }
    return statements;
}

void Form15ILogic::buildReport()
{
    IDataObject &d = FormSupport::data();
    IReportObject &r = FormSupport::report();
    ReportRows row(3);

    row.line(bold(QStringLiteral("FORM NO. 15I")) + lineBreak + QStringLiteral("[See sub-rule [1] of rule 29D]") + lineBreak
                 + QStringLiteral("Declaration for non-deduction of tax at source to be furnished to contractor under "
                                  "the second proviso to clause [i] of sub-section (3) of section 194C by "
                                  "sub-contractor not owning more than two heavy goods carriages/trucks during the "
                                  "Financial Year ")
                 + underlined(financialYear(d.AsYear())),
             ReportRows::Centre);
    r.printtext();

    r.createtable(1, 2);
    const std::pair<QString, QString> particulars[] = {
        {QStringLiteral("1. Name of the Individual (truck owners)"), d.Name()},
        {QStringLiteral("2. Name of the Father"), d.fname()},
        {QStringLiteral("3. Permanent Account Number (PAN)"), d.panno()},
        {QStringLiteral("4. Address"), d.pr_add()},
        {QStringLiteral("5. If assessed to tax, Assessment Jurisdiction (Circle/Ward)"), d.circle1()},
    };
    for (const auto &[label, value] : particulars)
        row.pair(label, 30, ReportRows::Left, bold(QStringLiteral(": ") + value), 48, ReportRows::Left,
                 label.left(3));
    r.printtext();
    row.line(QStringLiteral("6. Particulars of the heavy goods carriages/trucks owned during the Financial Year are as "
                            "under:"),
             ReportRows::Left, QStringLiteral("6. "));
    r.printtext();

    r.createtable(1, 3);
    row.clear();
    row.setCell(1, QStringLiteral("S. No."), 10, ReportRows::Centre);
    row.setCell(2, QStringLiteral("Heavy goods carriage/truck Registration Number"), 48, ReportRows::Centre);
    row.setCell(3, QStringLiteral("Date of Registration"), 20, ReportRows::Centre);
    row.write(true, QStringLiteral("111"), QStringLiteral("001"), QStringLiteral("111"), QStringLiteral("111"));
    for (int srNo = 1; srNo <= lineCount; ++srNo) {
        row.clear();
        row.setCell(1, QString::number(srNo) + QLatin1Char('.'), 10, ReportRows::Centre);
        row.setCell(2, m_registration[srNo], 48, ReportRows::Centre);
        row.setCell(3, m_date[srNo], 20, ReportRows::Centre);
        // No line above an item row: the row before it has drawn its bottom already.
        row.write(true, QStringLiteral("111"), QStringLiteral("001"), QStringLiteral("0"), QStringLiteral("111"));
    }

    r.printtext();
    r.printtext();
    r.printtext();
    r.createtable(1, 2);
    row.pair(QStringLiteral("Place ") + d.formplace(), 50, ReportRows::Left, QStringLiteral("..............."), 28,
             ReportRows::Right);
    row.pair(QStringLiteral("Date ") + d.formdate(), 50, ReportRows::Left, QStringLiteral("Signature"), 28,
             ReportRows::Right);
}
