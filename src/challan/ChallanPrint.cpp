#include "challan/ChallanPrint.h"

#include "host/AmountWords.h"
#include "host/IDataObject.h"
#include "host/IReportObject.h"
#include "host/TextHelpers.h"
#include "json/Dialogs.h"
#include "shared/modbase.h"

#include <QFileInfo>

namespace ChallanPrint {

namespace {

const char *const Tick = "_/";
const char *const Blank = "    ";

// From this year on the new law's labels apply.
constexpr int TaxYearFrom = 2027;

enum class Kind { Deducted, Collected, Both };

QString field(const Challan &c, Field f)
{
    return c.fields.value(f);
}

QString tick(bool on)
{
    return QLatin1String(on ? Tick : Blank);
}

QString joined(const QStringList &parts)
{
    QStringList kept;
    for (const QString &p : parts) {
        if (!p.trimmed().isEmpty())
            kept.append(p.trimmed());
    }
    return kept.join(QStringLiteral(", "));
}

qint64 paiseOf(const QString &amount)
{
    qint64 paise = 0;
    return AmountWords::toPaise(amount, paise) ? paise : 0;
}

QString printed(const QString &amount)
{
    return amount.trimmed().isEmpty() ? QString() : TextHelpers::indianAmount(amount);
}

// Two fields printed as one line of the challan.
QString printedSum(const QString &a, const QString &b)
{
    if (a.trimmed().isEmpty() && b.trimmed().isEmpty())
        return QString();
    return TextHelpers::indianAmount(double(paiseOf(a) + paiseOf(b)) / 100.0);
}

bool isCollection(const QString &code)
{
    const QString c = code.trimmed().toUpper();
    return c.startsWith(QLatin1String("6C")) || c.startsWith(QLatin1String("206C"));
}

Kind kindOf(const QStringList &codes)
{
    bool deducted = false;
    bool collected = false;
    for (const QString &code : codes) {
        if (code.trimmed().isEmpty())
            continue;
        if (isCollection(code))
            collected = true;
        else
            deducted = true;
    }
    if (collected && deducted)
        return Kind::Both;
    return collected ? Kind::Collected : Kind::Deducted;
}

QString headLine(Kind kind)
{
    const QString what = kind == Kind::Deducted    ? QStringLiteral("DEDUCTED")
                         : kind == Kind::Collected ? QStringLiteral("COLLECTED")
                                                   : QStringLiteral("DEDUCTED / COLLECTED");
    return QStringLiteral("TAX ") + what + QStringLiteral(" AT SOURCE FROM");
}

QString shortName(Kind kind)
{
    return kind == Kind::Deducted ? QStringLiteral("TDS") : kind == Kind::Collected ? QStringLiteral("TCS") : QStringLiteral("TDS/TCS");
}

QString onAccountOf(Kind kind)
{
    const QString tds = QStringLiteral("Tax Deducted at Source (TDS)");
    const QString tcs = QStringLiteral("Tax Collected at Source (TCS)");
    const QString what = kind == Kind::Deducted ? tds : kind == Kind::Collected ? tcs : tds + QStringLiteral(" / ") + tcs;
    return QStringLiteral("on account of ") + what + QStringLiteral(" from ");
}

int yearOf(const QString &asYear)
{
    return asYear.left(4).toInt();
}

QString yearSpan(const QString &asYear)
{
    bool ok = false;
    const int start = asYear.left(4).toInt(&ok);
    if (!ok)
        return asYear;
    return QStringLiteral("%1-%2").arg(start).arg((start + 1) % 100, 2, 10, QLatin1Char('0'));
}

QString paidIn(const QString &paymode)
{
    if (paymode == QLatin1String("Cash") || paymode == QLatin1String("Debit to A/c"))
        return QStringLiteral("Paid in ") + paymode;
    return QStringLiteral("Paid in Cheque No.");
}

// What a place box holds: the converter's words without "Rupees", " Rupee" and " Only".
QString bareWords(qint64 number)
{
    QString words = AmountWords::ConvertToWord(double(number));
    words.replace(QStringLiteral("Nil"), QStringLiteral("Zero"));
    words.remove(QStringLiteral(" Only"));
    words.remove(QStringLiteral(" Rupee"));
    if (words.startsWith(QLatin1String("Rupees ")))
        words.remove(0, 7);
    return words;
}

} // namespace

QString templatePath()
{
    return QStringLiteral("/Data/TDSChallan.doc");
}

QString documentName(const QString &codeNo, const QString &asYear)
{
    return QStringLiteral("Challan_") + codeNo + QLatin1Char('_') + asYear;
}

Address readAddress(IDataObject &data, const QString &codeNo)
{
    Address a;
    Recordset rs;
    if (!data.RecordsetQuery(rs, QStringLiteral("Select * from Main_info Where Code_No=") + data.quoted(codeNo))
        || rs.isEOF())
        return a;
    const std::pair<QString *, const char *> columns[] = {
        {&a.flat, "flat"},       {&a.building, "building"}, {&a.street, "street"},     {&a.area, "area"},
        {&a.city, "city"},       {&a.state, "State"},       {&a.pin, "PIN"},           {&a.phoneNos, "Phone_Nos"},
        {&a.email, "Email"},     {&a.email1, "Email1"},     {&a.mobile, "Mobile"},     {&a.mobile1, "Mobile1"}};
    for (const auto &[target, column] : columns)
        *target = rs.text(QLatin1String(column)).trimmed();
    return a;
}

QStringList wordsByPlace(const QString &amount)
{
    qint64 rest = paiseOf(amount) / 100;
    QStringList out;
    for (const qint64 place : {10000000LL, 100000LL, 1000LL, 100LL, 10LL, 1LL}) {
        out.append(bareWords(rest / place));
        rest %= place;
    }
    return out;
}

QList<QPair<QString, QString>> placeholders(const Challan &c, const QString &asYear)
{
    const bool taxYear = yearOf(asYear) >= TaxYearFrom;
    const Kind kind = kindOf(c.sectionCodes);
    const QString span = yearSpan(asYear);
    const Address &a = c.address;
    const QString total = field(c, Total);
    const bool cash = c.paymode == QLatin1String("Cash");
    const QString chequeNo = cash ? QStringLiteral("Cash") : field(c, ChequeNo);
    const QString chequeDate = cash ? QString() : field(c, ChequeDate);
    const QString bank = cash ? QString() : field(c, Bank);
    const QString wholeWords = AmountWords::ConvertToWord(double(paiseOf(total)) / 100.0);

    const QString street = joined({a.flat, a.building});
    const QString locality = joined({a.street, a.area});
    const QString town = joined({a.city, a.state});

    QList<QPair<QString, QString>> p = {
        {QStringLiteral("##Assessment Year##"), taxYear ? QStringLiteral("Tax Year") : QStringLiteral("Assessmant Year")},
        {QStringLiteral("##HEAD1##"), headLine(kind)},
        {QStringLiteral("##1##"), tick(c.company)},
        {QStringLiteral("##2##"), tick(!c.company)},
        {QStringLiteral("##3##"), span},
        {QStringLiteral("##4##"), field(c, Tan)},
        {QStringLiteral("##5##"), field(c, Name)},
        {QStringLiteral("##6##"), street},
        {QStringLiteral("##7##"), locality},
        {QStringLiteral("##8##"), town},
        {QStringLiteral("##9##"), a.pin.trimmed()},
        {QStringLiteral("##10##"), joined({a.phoneNos, a.mobile, a.mobile1, a.email, a.email1})},
        {QStringLiteral("##11A##"), shortName(kind) + QStringLiteral(" Payable by Tax Payer")},
        {QStringLiteral("##11##"), tick(!c.regularAssessment)},
        {QStringLiteral("##12A##"), shortName(kind) + QStringLiteral(" Regular Assessment (Raised by I.T.deptt.)")},
        {QStringLiteral("##12##"), tick(c.regularAssessment)},
        {QStringLiteral("##13##"), printed(field(c, IncomeTax))},
        {QStringLiteral("##14##"), printed(field(c, Surcharge))},
        {QStringLiteral("##15##"), printedSum(field(c, EducationCess), field(c, HigherEducationCess))},
        {QStringLiteral("##16##"), printed(field(c, Interest))},
        {QStringLiteral("##234E##"), printed(field(c, LateFee))},
        {QStringLiteral("##234E SEC##"), taxYear ? QStringLiteral("427") : QStringLiteral("234E")},
        {QStringLiteral("##17##"), printedSum(field(c, Penalty), field(c, Others))},
        {QStringLiteral("##18##"), printed(total)},
    };
    const QStringList places = wordsByPlace(total);
    for (int i = 0; i < places.size(); ++i)
        p.append({QStringLiteral("##%1##").arg(19 + i), places.at(i)});
    p += QList<QPair<QString, QString>>{
        {QStringLiteral("##25A##"), paidIn(c.paymode)},
        {QStringLiteral("##25##"), chequeNo},
        {QStringLiteral("##26##"), chequeDate},
        {QStringLiteral("##27##"), bank},
        {QStringLiteral("##28##"), field(c, ChallanDate)},
        {QStringLiteral("##29##"), field(c, Tan)},
        {QStringLiteral("##30##"), field(c, Name)},
        {QStringLiteral("##31A##"), paidIn(c.paymode)},
        {QStringLiteral("##31##"), chequeNo},
        {QStringLiteral("##32##"), printed(total)},
        {QStringLiteral("##33##"), wholeWords},
        {QStringLiteral("##34##"), joined({street, locality, town, a.pin})},
        {QStringLiteral("##35A##"), c.company ? QStringLiteral("Companies") : QStringLiteral("Non-Companies")},
        {QStringLiteral("##35B##"), onAccountOf(kind)},
        {QStringLiteral("##36##"), span},
    };
    return p;
}

bool render(IReportObject &report, const QString &templateFile, const Challan &c, const QString &asYear)
{
    if (!QFileInfo::exists(templateFile))
        return false;
    report.newreportnew(templateFile);
    for (const auto &[placeholder, text] : placeholders(c, asYear))
        report.SetText(placeholder, text);
    return true;
}

bool print(const QString &module, const Challan &c, Dialogs &dialogs)
{
    bool shown = false;
    modbase::errorTrap(module, QStringLiteral("cmdprintwin_Click"), [&] {
        IDataObject &data = modbase::data();
        IReportObject &report = modbase::report();
        data.ShowFormInfo();
        if (data.ModePrint() <= 1)
            return;
        const QString templateFile = data.ExePath() + templatePath();
        if (!QFileInfo::exists(templateFile)) {
            dialogs.inform(QStringLiteral("Template File is missing."));
            return;
        }
        // Preview or straight to the printer, as the user chose.
        report.setWinModeReport(data.ModePrint() == 2);
        report.setDocumentName(documentName(data.codeno(), data.AsYear()));
        render(report, templateFile, c, data.AsYear());
        report.ShowReport();
        shown = true;
    });
    return shown;
}

} // namespace ChallanPrint
