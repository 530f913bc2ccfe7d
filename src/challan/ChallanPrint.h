#pragma once
// Printing the tax-payment challan ITNS 281 through its word-processor template
// "/Data/TDSChallan.doc": each placeholder replaced in a fixed order, then shown. No
// widgets here, so the challan windows and the command line print alike.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

class Dialogs;
class IDataObject;
class IReportObject;

namespace ChallanPrint {

// Text fields of the challan forms, in slot order.
enum Field {
    Tan = 0,
    Name,
    ChallanNo,
    ChallanDate,
    IncomeTax,
    Surcharge,
    EducationCess,
    HigherEducationCess,
    Interest,
    LateFee,
    Penalty,
    Others,
    Total,
    ChequeNo,
    ChequeDate,
    Bank,
    FieldCount
};

// The deductor's row of Main_info.
struct Address
{
    QString flat;
    QString building;
    QString street;
    QString area;
    QString city;
    QString state;
    QString pin;
    QString phoneNos;
    QString email;
    QString email1;
    QString mobile;
    QString mobile1;
};

struct Challan
{
    // FieldCount texts as on screen; the current form passes the totals of its section rows.
    QStringList fields = {};
    bool company = false;             // major head 0020, else 0021
    bool regularAssessment = false;   // minor head 400, else 200
    QString paymode = {};             // "Cash", "Debit to A/c" or "Cheque"
    Address address = {};
    // Section codes of the challan ("194C", "206C" ...); "6C..." and "206C..." are collections.
    QStringList sectionCodes = {};
};

// "/Data/TDSChallan.doc", under ExePath.
QString templatePath();
// "Challan_<codeno>_<AsYear>".
QString documentName(const QString &codeNo, const QString &asYear);

// Main_info of the deductor; empty when there is no row.
Address readAddress(IDataObject &data, const QString &codeNo);

// The total's whole rupees in words by place, crores to units: bare words ("Thirty Four",
// "Zero"). A total that is empty or no number counts as 0.
QStringList wordsByPlace(const QString &amount);

// Every placeholder of the template with its text, in the order they are replaced.
QList<QPair<QString, QString>> placeholders(const Challan &c, const QString &asYear);

// newreportnew(templateFile), then SetText for each placeholder; the document is left open
// for ShowReport, SaveMasterFile or exportPdf. False, with no call made, when the file is
// not there.
bool render(IReportObject &report, const QString &templateFile, const Challan &c, const QString &asYear);

// The print button of either challan window, under the error trap (module,
// "cmdprintwin_Click"): ShowFormInfo, nothing more unless ModePrint > 1, "Template File is
// missing." when the template is not in the data home, else rendered and shown as
// "Challan_<codeno>_<AsYear>". True when the challan was shown.
bool print(const QString &module, const Challan &c, Dialogs &dialogs);

} // namespace ChallanPrint
