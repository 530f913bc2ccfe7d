#include "challan/SectionList.h"

#include "host/DataHome.h"
#include "json/JSON.h"
#include "shared/FieldRules.h"
#include "shared/modbase.h"

#include <QFile>

namespace SectionList {

namespace {

enum class Years { All, UpTo2025, From2026 };

struct BuiltInRow
{
    const char *key;
    const char *code;
    const char *text;
    Years years = Years::All;
    const char *textBefore2026 = nullptr;  // the older wording where the law changed it
};

// Display order as the challan has always shown it. Keys are stored in old challans: they
// keep their gaps and are never renumbered. 51 stands twice on purpose, in the 194 group
// and again after the 206C group.
const BuiltInRow kBuiltIn[] = {
    {"0", "92A", "192 - Payment to Govt. Employees other than Union Govt. employees"},
    {"1", "92B", "192 - Payment to Employees other than Govt. Employees"},
    {"39", "2AA", "192A - Payment of taxable accumulated balance of provident fund due to an employee"},
    {"2", "193", "193 - Interest on securities"},
    {"3", "194", "194 - Dividend"},
    {"4", "94A", "194A - Interest other than Interest on Securities"},
    {"5", "94B", "194B - Winnings from lottery or crossword puzzle, etc"},
    {"62", "9BA", "194BA - Winnings from online games"},
    {"6", "4BB", "194BB - Winning from Horse race"},
    {"7", "94C", "194C - Payment to contractors and sub-contractors"},
    {"8", "94D", "194D - Insurance commission"},
    {"37", "4DA", "194DA - Payment in respect of life insurance policy"},
    {"9", "94E", "194E - Payments to non-resident Sportsmen/Sport Associations"},
    {"10", "4EE", "194EE - Payments in respect of Deposits under National Saving Schemes"},
    {"11", "94F", "194F - Payments on account of Re-purchase of Units by Mutual Funds of UTI"},
    {"12", "94G", "194G - Commission, prize etc. on sale of Lottery tickets"},
    {"13", "94H", "194H - Commission or Brokerage"},
    {"14", "94I", "194I - Rent"},
    {"45", "9IB", "194IB - Payment of rent by certain individuals or Hindu undivided family"},
    {"46", "4IC", "194IC - Payment under specified agreement"},
    {"15", "94J", "194J - Fees for Professional or Technical Services"},
    {"16", "94K", "194K - Income payable to a Resident assessee in respect of units of a specified Mutual Fund or of the Units of the UTI"},
    {"30", "4LA", "194LA - Payment of Compensation on Acquisition of Certain Immovable property"},
    {"32", "4LB", "194LB - Income by way of interest from infrastructure debt fund payable to a non-resident"},
    {"38", "4BA", "194LBA - Certain income from units of a business trust"},
    {"40", "LBB", "194LBB - Income in respect of units of investment fund"},
    {"41", "LBC", "194LBC - Income in respect of investment in securitization trust"},
    {"33", "4LC", "194LC - Income by way of interest from specified Company payable to a non-resident"},
    {"66", "LC1", "194LC (2)(i) and (ia) - Income under clause (i) and (ia) of sub-section (2) of section 194LC"},
    {"67", "LC2", "194LC (2)(ib) - Income under clause (ib) of sub-section (2) of section 194LC"},
    {"68", "LC3", "194LC (2)(ic) - Income under clause (ic) of sub-section (2) of section 194LC"},
    {"36", "4LD", "194LD - Interest on Rupee denominated bond of Company or Government Securities"},
    {"47", "94N", "194N - Payment of certain amounts in cash other than cases covered by first proviso or third proviso"},
    {"64", "4NC", "194NC - Payment of certain amounts in cash to co-operative societies not covered by first proviso"},
    // Two blanks before "except", as the challan has always printed it.
    {"48", "4NF", "194NF - Payment of certain amounts in cash to non-filers  except in case of co-operative societies"},
    {"65", "9FT", "194N-FT - Payment of certain amount in cash to non-filers being co-operative societies"},
    {"51", "94O", "194O - TDS on E-Commerce transactions"},
    {"55", "94P", "194P - Deduction of tax in case of specified senior citizens"},
    {"56", "94Q", "194Q - Payment of certain sums for purchase of goods"},
    {"58", "94R", "194R - Benefits or perquisites of business or profession"},
    {"60", "94S", "194S - Payment of consideration for transfer of virtual digital asset by persons other than specified persons"},
    {"70", "94T", "194T - Payment of salary, remuneration, commission, bonus or interest to a partner of the firm"},
    {"17", "195", "195 - Others sums payable to a non-resident"},
    {"18", "96A", "196A - Income in respect of Units of non-residents"},
    {"19", "96B", "196B - Payments in respect of Units to an Offshore Fund"},
    {"20", "96C", "196C - Income from foreign currency Bonds or Shares of Indian Company payable to a non-resident"},
    {"21", "96D", "196D - Income of Foreign Institutional investors from securities"},
    {"54", "6DA", "196D(1A) - Income of specified fund from securities referred to in clause (a) of sub-section (1) of section 115AD"},
    {"22", "6CA", "206C - A. Alcoholic liquor for human consumption"},
    {"23", "6CB", "206C - B. Timber or any other forest produce", Years::All, "206C - B. Timber obtained under forest lease"},
    {"24", "6CC", "206C - C. Timber obtained under any mode other than forest lease", Years::All,
     "206C - C. Timber obtained other than forest lease"},
    {"25", "6CD", "206C - D. Any other forest produce not being timber or tendu leaves", Years::UpTo2025},
    {"26", "6CE", "206C - E. Scrap"},
    {"27", "6CF", "206C - F. Parking Lot"},
    {"28", "6CG", "206C - G. Toll Plaza"},
    {"29", "6CH", "206C - H. Mining and Quarrying"},
    {"31", "6CI", "206C - I. Tendu Leaves"},
    {"34", "6CJ", "206C - J. Minerals"},
    {"35", "6CK", "206C - K. Bullion and Jewellery"},
    {"42", "6CL", "206C - L. Sale of motor vehicle"},
    {"43", "6CM", "206C - M. Sale in cash of any goods (other than bullion/jewellery)"},
    {"44", "6CN", "206C - N. Providing of any services (other than Ch-XVII-B)"},
    {"49", "6CO", "206C - O. TCS on foreign remittance"},
    {"50", "6CP", "206C - P. Remittance under LRS for educational loan taken from financial institution mentioned in section 80E"},
    {"52", "6CQ", "206C - Q. Remittance under LRS for purpose other than for purchase of overseas tour package or for educational loan taken from financial institution"},
    {"53", "6CR", "206C - R. TCS on sale of Goods", Years::UpTo2025},
    {"69", "6CT", "206C - T. Remittance under LRS is for the purposes of education or medical treatment and not covered under Code P"},
    {"51", "94O", "194O - TDS on E-Commerce transactions"},
    {"71", "6CMA", "206C - MA. sale of wrist watch", Years::From2026},
    {"72", "6CMB", "206C - MB. sale of art piece such as antiques, painting, sculpture", Years::From2026},
    {"73", "6CMC", "206C - MC. sale of collectibles such as coin, stamp", Years::From2026},
    {"74", "6CMD", "206C - MD. sale of yacht, rowing boat, canoe, helicopter", Years::From2026},
    {"75", "6CME", "206C - ME. sale of pair of sunglasses", Years::From2026},
    {"76", "6CMF", "206C - MF. sale of bag such as handbag, purse", Years::From2026},
    {"77", "6CMG", "206C - MG. sale of pair of shoes", Years::From2026},
    {"78", "6CMH", "206C - MH. sale of sportswear and equipment such as golf kit, ski-wear", Years::From2026},
    {"79", "6CMI", "206C - MI. sale of home theatre system", Years::From2026},
    {"80", "6CMJ", "206C - MJ. sale of horse for horse racing in race clubs and horse for polo", Years::From2026},
};

void appendTriple(QString &list, const QString &key, const QString &code, const QString &text)
{
    list += QLatin1Char('|') + key + QLatin1Char('|') + code + QLatin1Char('|') + text;
}

// A member the file gives as a number still reads as its digits.
QString memberText(const JsonDictionary &entry, QStringView name)
{
    const JsonValue value = entry.item(name);
    return value.isNumber() ? value.toDecimal().toString() : value.toString();
}

// Position of the first triple with the key, -1 when none.
qsizetype find(const QStringList &parts, const QString &key)
{
    for (qsizetype i = 1; i + 2 < parts.size(); i += 3) {
        if (parts.at(i) == key)
            return i;
    }
    return -1;
}

} // namespace

int yearNumber(const QString &asYear)
{
    return int(FieldRules::leadingNumber(asYear.left(4)));
}

QString exePath()
{
    if (IDataObject *data = modbase::dataObject())
        return data->ExePath();
    return DataHome::path();
}

QString sectionFile(const QString &exePath)
{
    return exePath + QStringLiteral("/Data/TDS_Section_2027.json");
}

QString builtInText(int year)
{
    QString list;
    for (const BuiltInRow &row : kBuiltIn) {
        if ((row.years == Years::UpTo2025 && year > 2025) || (row.years == Years::From2026 && year < 2026))
            continue;
        const char *text = row.textBefore2026 && year < 2026 ? row.textBefore2026 : row.text;
        appendTriple(list, QLatin1String(row.key), QLatin1String(row.code), QLatin1String(text));
    }
    return list;
}

QList<FileSection> readSectionFile(const QString &fileName)
{
    QList<FileSection> sections;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return sections;
    const QString text = QString::fromUtf8(file.readAll());
    JsonParser parser;
    const JsonValue root = parser.parse(text);
    const JsonDictionary *top = root.dictionary();
    const JsonCollection *data = top ? top->item(u"data").collection() : nullptr;
    if (!data)
        return sections;
    sections.reserve(data->count());
    for (const JsonValue &item : *data) {
        const JsonDictionary *entry = item.dictionary();
        if (!entry)
            continue;
        sections.append({memberText(*entry, u"sec_cd"), memberText(*entry, u"sec_old"),
                         memberText(*entry, u"sec_desc"), memberText(*entry, u"natr_pymnt_desc")});
    }
    return sections;
}

QString fileText(const QString &fileName)
{
    QString list;
    for (const FileSection &s : readSectionFile(fileName)) {
        appendTriple(list, s.secCd, s.secOld,
                     s.secCd + QStringLiteral(" : [") + s.secOld + QStringLiteral("] - ") + s.secDesc
                         + QLatin1Char('-') + s.natrPymntDesc);
    }
    return list;
}

QString listText(const QString &asYear, const QString &exePath)
{
    const int year = yearNumber(asYear);
    if (year >= kFileListFrom)
        return fileText(sectionFile(exePath));
    return builtInText(year);
}

QString listText(const QString &asYear)
{
    return listText(asYear, exePath());
}

QList<SectionEntry> split(const QString &listText)
{
    QList<SectionEntry> result;
    const QStringList parts = listText.split(QLatin1Char('|'));
    for (qsizetype i = 1; i + 2 < parts.size(); i += 3)
        result.append({parts.at(i), parts.at(i + 1), parts.at(i + 2)});
    return result;
}

QList<SectionEntry> entries(const QString &asYear, const QString &exePath)
{
    return split(listText(asYear, exePath));
}

QList<SectionEntry> entries(const QString &asYear)
{
    return entries(asYear, exePath());
}

QString getLi(const QString &listText, const QString &key)
{
    const qsizetype at = find(listText.split(QLatin1Char('|')), key);
    return at < 0 ? QString() : QString::number((at - 1) / 3);
}

QString getCode(const QString &listText, const QString &key)
{
    const QStringList parts = listText.split(QLatin1Char('|'));
    const qsizetype at = find(parts, key);
    return at < 0 ? QString() : parts.at(at + 1);
}

QString sectionList(const QString &action, const QString &key, const QString &asYear, const QString &exePath)
{
    if (action == QLatin1String("GETLI"))
        return getLi(listText(asYear, exePath), key);
    if (action == QLatin1String("GETCODE"))
        return getCode(listText(asYear, exePath), key);
    return QString();
}

QString sectionList(const QString &action, const QString &key, const QString &asYear)
{
    return sectionList(action, key, asYear, exePath());
}

QList<QStringList> pickerRows(const QList<FileSection> &sections)
{
    QList<QStringList> rows;
    rows.reserve(sections.size());
    for (const FileSection &s : sections) {
        rows.append({QString::number(rows.size()), QStringLiteral("Future Use for Tick"), s.secCd, s.secOld,
                     s.secDesc, s.natrPymntDesc});
    }
    return rows;
}

bool allowsNonResident(int code)
{
    // The non-resident group of the section file: 1004 (accumulated provident fund balance,
    // paid to any employee), 1039-1058 (payments to non-residents), 1060 (cash withdrawals,
    // any recipient) and 1062-1092 (winnings, lottery commission, business-trust and fund
    // units, and every collection code: payable by or to any person). The rest are
    // payments to residents only.
    return code == 1004 || (code >= 1039 && code <= 1058) || code == 1060 || (code >= 1062 && code <= 1092);
}

QString residentialRefusal(const QString &key, bool nonResident)
{
    const int code = int(FieldRules::leadingNumber(key));
    if (!nonResident && code >= 1039 && code <= 1058)
        return QStringLiteral("Invalid Section Code : ") + key + QStringLiteral(". This is applicable for Non-Resident.");
    if (nonResident && !allowsNonResident(code))
        return QStringLiteral("Invalid Section Code : ") + key + QStringLiteral(". This is applicable for Resident.");
    return QString();
}

QString majorHead(bool companyDeductees)
{
    return companyDeductees ? QStringLiteral("0020") : QStringLiteral("0021");
}

QString majorHeadCaption(bool companyDeductees)
{
    return companyDeductees ? QStringLiteral("Company Deductees") : QStringLiteral("Non-Company Deductees");
}

QString minorHead(int payTypeIndex)
{
    return payTypeIndex == 1 ? QStringLiteral("400") : QStringLiteral("200");
}

QString minorHeadCaption(int payTypeIndex)
{
    return payTypeIndex == 1 ? QStringLiteral("TDS/TCS Regular Assessment (Raised by I.T. Deptt.)")
                             : QStringLiteral("TDS/TCS Payable by Tax Payer");
}

} // namespace SectionList
