#pragma once
// The nature-of-payment (section) list of the ITNS 281 challan, the look-ups the challan
// forms run on it, the residential check of the new-law codes and the fixed heads. No
// widgets: SectionCombo fills the combo from here.
//
// The list travels as one text of triples, "|key|code|text|key|code|text...", as the forms
// have always passed it around; entries() is the same list already split.
#include <QList>
#include <QString>
#include <QStringList>

namespace SectionList {

struct SectionEntry
{
    QString key;    // stored in the challan tables (paynat, PayNat) and the combo's item data
    QString code;   // the short section code the bank and the portal expect
    QString text;   // what the operator sees
};

// One member of "data" in the section file of the new law.
struct FileSection
{
    QString secCd;
    QString secOld;
    QString secDesc;
    QString natrPymntDesc;
};

// From this assessment year the list comes from the section file.
constexpr int kFileListFrom = 2027;

// The year number of an assessment year: its first four characters read as a number
// ("2025-26" -> 2025, "" -> 0).
int yearNumber(const QString &asYear);

// The data object's ExePath when the data object exists, else the data home (the same folder).
QString exePath();
// exePath + "/Data/TDS_Section_2027.json"
QString sectionFile(const QString &exePath);

// The built-in list of the given year number (used before 2027).
QString builtInText(int year);
// The members of the section file in array order; none when the file is missing or is not
// the expected shape.
QList<FileSection> readSectionFile(const QString &fileName);
// The section file as a list text; empty when the file is missing.
QString fileText(const QString &fileName);

// The list of an assessment year, built anew on each call.
QString listText(const QString &asYear, const QString &exePath);
QString listText(const QString &asYear);
QList<SectionEntry> entries(const QString &asYear, const QString &exePath);
QList<SectionEntry> entries(const QString &asYear);
QList<SectionEntry> split(const QString &listText);

// "GETLI": the zero-based position of the first triple whose key is exactly `key`, as text;
// empty when none.
QString getLi(const QString &listText, const QString &key);
// "GETCODE": the code of that triple; empty when none.
QString getCode(const QString &listText, const QString &key);

// SectionList(action, key) of the challan forms for the year: "GETLI" and "GETCODE".
// "FILLCBO" needs the combo (SectionCombo::sectionList) and gives empty text here, as do
// unknown actions.
QString sectionList(const QString &action, const QString &key, const QString &asYear, const QString &exePath);
QString sectionList(const QString &action, const QString &key, const QString &asYear);

// Rows of the section picker grid VsSec: position (from 0), "Future Use for Tick",
// sec_cd, sec_old, sec_desc, natr_pymnt_desc.
QList<QStringList> pickerRows(const QList<FileSection> &sections);

// The residential check of a section row (file-based keys only) before the e-pay hand-off:
// the refusal message, or empty when the key suits the chosen residential status.
QString residentialRefusal(const QString &key, bool nonResident);
// Whether a new-law payment code may be used for a non-resident deductee.
bool allowsNonResident(int code);

// The older form refuses deductee rows under 194IA.
inline constexpr char kRefusal194IA[] = "For Section 194IA -> Challan No. ITNS 281 is not Applicable !";

// Major head: "0020" for company deductees, "0021" for the others.
QString majorHead(bool companyDeductees);
QString majorHeadCaption(bool companyDeductees);
// Minor head by the type of payment (optpaytype index): 0 -> "200", 1 -> "400".
QString minorHead(int payTypeIndex);
QString minorHeadCaption(int payTypeIndex);

} // namespace SectionList
