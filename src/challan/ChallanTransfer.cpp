#include "challan/ChallanTransfer.h"

#include "challan/SectionList.h"
#include "host/IDataObject.h"
#include "shared/FieldRules.h"
#include "shared/JsonRecord.h"
#include "shared/modbase.h"

using F = ChallanPrint::Field;

namespace {

// The typed fields of a challan: member name, field, kind.
struct Member
{
    const char *name;
    int field;
    FieldKind kind;
};
const Member kMembers[] = {
    {"challan_no", F::ChallanNo, FieldKind::Text},  {"challan_dt", F::ChallanDate, FieldKind::Date},
    {"tax", F::IncomeTax, FieldKind::Amount},       {"surcharge", F::Surcharge, FieldKind::Amount},
    {"educess", F::EducationCess, FieldKind::Amount}, {"educess1", F::HigherEducationCess, FieldKind::Amount},
    {"interest", F::Interest, FieldKind::Amount},   {"latefee234E", F::LateFee, FieldKind::Amount},
    {"penalty", F::Penalty, FieldKind::Amount},     {"others", F::Others, FieldKind::Amount},
    {"chq_no", F::ChequeNo, FieldKind::Text},       {"chq_dt", F::ChequeDate, FieldKind::Date},
    {"bank_nm", F::Bank, FieldKind::Text}};

const char *const kSectionMembers[] = {"key", "tax", "surcharge", "cess", "other"};

bool inList(const QList<SectionList::SectionEntry> &list, const QString &key)
{
    return std::any_of(list.begin(), list.end(), [&](const SectionList::SectionEntry &e) { return e.key == key; });
}

} // namespace

ChallanTransfer::ChallanTransfer() : m_current(ChallanForm::Kind::Current), m_older(ChallanForm::Kind::Older) {}

bool ChallanTransfer::open(QString *why)
{
    if (!m_current.load() || !m_older.load()) {
        *why = m_current.loadFailed() ? m_current.loadError() : m_older.loadError();
        return false;
    }
    const QList<int> serials = m_current.serials();
    m_stored = QSet<int>(serials.begin(), serials.end());
    return true;
}

QList<int> ChallanTransfer::serials() const
{
    return m_current.serials();
}

int ChallanTransfer::importRecord(const JsonValue &record, QString *why)
{
    IDataObject &data = modbase::data();
    JsonRecordReader reader(record);
    const int serial = reader.serial();
    const QString form = reader.text(QStringLiteral("form"));
    if (reader.ok() && form != QLatin1String("new") && form != QLatin1String("old"))
        reader.fail(QStringLiteral("\"form\" is \"new\" (the current challan) or \"old\" (the earlier one)"));
    ChallanForm &f = form == QLatin1String("old") ? m_older : m_current;
    f.add();

    QStringList given(F::FieldCount);
    for (const Member &m : kMembers) {
        const QString name = QString::fromLatin1(m.name);
        const FieldRules::Outcome outcome = FieldRules::imported(Slot{.kind = m.kind}, reader.text(name), data);
        if (!outcome.ok)
            reader.fail(QStringLiteral("\"%1\": %2").arg(name, outcome.message));
        given[m.field] = outcome.text;
    }
    const QString paymode = reader.text(QStringLiteral("paymode"));
    if (!paymode.isEmpty() && ChallanForm::payModeOf(paymode) == ChallanForm::NoPayMode)
        reader.fail(QStringLiteral("\"paymode\" is one of: Cash, Debit to A/c, Cheque"));
    f.setPayMode(ChallanForm::payModeOf(paymode));
    f.setCompany(reader.flag(QStringLiteral("company"), false));
    f.setPayType(reader.flag(QStringLiteral("regular_assessment"), false) ? 1 : 0);
    f.setResident(reader.flag(QStringLiteral("resident"), true));

    const QList<SectionList::SectionEntry> list = SectionList::entries(data.AsYear());
    const QString paynat = reader.text(QStringLiteral("paynat"));
    QList<ChallanSection> sections;
    for (const JsonValue &object : reader.objects(QStringLiteral("sections"))) {
        JsonRecordReader row(object);
        QStringList cells;
        for (const char *member : kSectionMembers)
            cells << row.text(QString::fromLatin1(member));
        const QString where = QStringLiteral("section row %1").arg(sections.size() + 1);
        if (!row.finish())
            reader.fail(where + QStringLiteral(": ") + row.error());
        else if (!cells[0].isEmpty() && !inList(list, cells[0]))
            reader.fail(QStringLiteral("%1: \"%2\" is no section of %3").arg(where, cells[0], data.AsYear()));
        for (int c = 1; c < cells.size(); ++c)
            cells[c] = cells[c].isEmpty() ? QString() : FieldRules::plainAmount(cells[c]);
        sections << ChallanSection{cells[0], cells[1], cells[2], cells[3], cells[4]};
    }
    if (&f == &m_older) {
        if (!sections.isEmpty())
            reader.fail(QStringLiteral("the earlier challan has no section rows; give \"paynat\""));
        if (!paynat.isEmpty() && !inList(list, paynat))
            reader.fail(QStringLiteral("\"paynat\": \"%1\" is no section of %2").arg(paynat, data.AsYear()));
        f.setNatureOfPayment(paynat);
    } else if (!paynat.isEmpty()) {
        reader.fail(QStringLiteral("\"paynat\" belongs to the earlier challan; the current one has \"sections\""));
    }
    if (!reader.finish()) {
        *why = reader.error();
        return 0;
    }
    if (sections.size() > ChallanForm::kMaxSections) {
        *why = QStringLiteral("Only 20 Rows can be added for section-wise payment.");
        return 0;
    }

    f.setSections(sections);
    for (int i = 0; i < F::FieldCount; ++i) {
        // The current form's section totals: given ones must agree with the rows.
        if (&f == &m_current && ChallanForm::amountFromSections(i)) {
            if (!given[i].isEmpty() && FieldRules::leadingNumber(given[i]) != FieldRules::leadingNumber(f.field(i))) {
                *why = QStringLiteral("%1 %2 is not the total of the section rows (%3)")
                           .arg(QString::fromLatin1(std::find_if(std::begin(kMembers), std::end(kMembers),
                                                                 [i](const Member &m) { return m.field == i; })->name),
                                given[i], f.field(i));
                return 0;
            }
            continue;
        }
        if (i != F::Tan && i != F::Name && i != F::Total)
            f.setField(i, given[i]);
    }
    const int stored = f.store(serial, m_stored.contains(serial));
    if (!stored) {
        *why = f.refusal().isEmpty() ? f.saveError() : f.refusal();
        return 0;
    }
    m_stored.insert(stored);
    return stored;
}

ChallanForm *ChallanTransfer::show(int serial, QString *why)
{
    if (!m_current.select(serial)) {
        *why = m_current.serials().contains(serial) ? m_current.statusText()
                                                      : QStringLiteral("there is no challan %1 for this deductor and year").arg(serial);
        return nullptr;
    }
    if (!m_current.sections().isEmpty())
        return &m_current;
    m_older.select(serial);
    return &m_older;
}

JsonValue ChallanTransfer::exportRecord(int serial, QString *why)
{
    ChallanForm *f = show(serial, why);
    if (!f)
        return JsonValue();
    JsonValue out = JsonValue::newDictionary();
    JsonDictionary *d = out.dictionary();
    const auto text = [d](const char *name, const QString &value) { d->add(QString::fromLatin1(name), JsonValue(value)); };
    d->add(QStringLiteral("serial"), JsonValue(Decimal(serial)));
    text("form", f == &m_current ? QStringLiteral("new") : QStringLiteral("old"));
    for (const Member &m : kMembers) {
        text(m.name, f->field(m.field));
        if (m.field == F::ChallanDate && f == &m_older)
            text("paynat", f->natureOfPayment());
    }
    text("paymode", f->payModeWord());
    d->add(QStringLiteral("company"), JsonValue(f->company()));
    d->add(QStringLiteral("regular_assessment"), JsonValue(f->payType() == 1));
    d->add(QStringLiteral("resident"), JsonValue(f->resident()));
    JsonValue sections = JsonValue::newCollection();
    for (const ChallanSection &row : f->sections()) {
        JsonValue r = JsonValue::newDictionary();
        const QString cells[] = {row.key, row.tax, row.surcharge, row.cess, row.other};
        for (int c = 0; c < 5; ++c)
            r.dictionary()->add(QString::fromLatin1(kSectionMembers[c]), JsonValue(cells[c]));
        sections.collection()->add(r);
    }
    d->add(QStringLiteral("sections"), sections);
    return out;
}

bool ChallanTransfer::render(int serial, IReportObject &report, QString *why)
{
    ChallanForm *f = show(serial, why);
    if (!f)
        return false;
    IDataObject &data = modbase::data();
    const QString templateFile = data.ExePath() + ChallanPrint::templatePath();
    if (!ChallanPrint::render(report, templateFile, f->printData(), data.AsYear())) {
        *why = QStringLiteral("Template File is missing.");
        return false;
    }
    report.setDocumentName(ChallanPrint::documentName(data.codeno(), data.AsYear()));
    return true;
}
