#include "challan/ChallanForm.h"

#include "challan/SectionList.h"
#include "host/IDataObject.h"
#include "shared/ColumnEncoder.h"
#include "shared/FieldRules.h"
#include "shared/NewSerial.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

using F = ChallanPrint::Field;

namespace {

// Columns of Challan_ZeltOth in its positional order.
enum Column {
    ColChallanNo = 3, ColDate, ColResident, ColType, ColPaynat, ColTax, ColSurcharge, ColInterest, ColPenalty,
    ColOthers, ColChqNo, ColChqDate, ColBank, ColEducess, ColPaymode, ColComp, ColEducess1, ColLateFee
};

// Where each text field of the challan is stored.
const std::pair<int, int> kStoredFields[] = {
    {F::ChallanNo, ColChallanNo}, {F::ChallanDate, ColDate}, {F::IncomeTax, ColTax}, {F::Surcharge, ColSurcharge},
    {F::EducationCess, ColEducess}, {F::HigherEducationCess, ColEducess1}, {F::Interest, ColInterest},
    {F::LateFee, ColLateFee}, {F::Penalty, ColPenalty}, {F::Others, ColOthers}, {F::ChequeNo, ColChqNo},
    {F::ChequeDate, ColChqDate}, {F::Bank, ColBank}};

bool isAmountField(int i)
{
    return i >= F::IncomeTax && i <= F::Total;
}

QString amount(const QString &text)
{
    return ColumnEncoder::number(FieldRules::leadingNumber(text));
}

const QString kConfirmation = QStringLiteral("Confirmation");

} // namespace

bool ChallanSection::hasAmount() const
{
    for (const QString *a : {&tax, &surcharge, &cess, &other}) {
        if (!a->trimmed().isEmpty())
            return true;
    }
    return false;
}

ChallanForm::ChallanForm(Kind kind) : m_kind(kind)
{
    clear();
}

QString ChallanForm::module() const
{
    return m_kind == Kind::Current ? QStringLiteral("ChallanNew") : QStringLiteral("Challan");
}

QString ChallanForm::year() const
{
    return QString::number(SectionList::yearNumber(modbase::data().AsYear()));
}

void ChallanForm::clear()
{
    m_serials.clear();
    m_rows.clear();
    m_fields = QStringList(F::FieldCount);   // the deductor is read again as well
    blank();
    m_editing = false;
}

void ChallanForm::blank()
{
    const QString tan = m_fields.value(F::Tan), name = m_fields.value(F::Name);
    m_fields = QStringList(F::FieldCount);
    m_fields[F::Tan] = tan;
    m_fields[F::Name] = name;
    m_sections.clear();
    m_payMode = NoPayMode;
    m_company = false;
    m_payType = 0;
    m_resident = true;
    m_paynat.clear();
    m_serial = 0;
}

void ChallanForm::readRows(IDataObject &data)
{
    m_code = data.codeno();
    Recordset deductor;
    query(data, deductor, QStringLiteral("Select Tanno, Name from Main_Info where Code_No=") + data.quoted(m_code));
    const bool found = !deductor.isBOF() && !deductor.isEOF();
    const QString tan = found ? deductor.text(0) : QString();
    const QString name = found ? deductor.text(1) : QString();
    deductor.close();

    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Challan_ZeltOth where code_no=") + data.quoted(m_code)
                        + QStringLiteral(" and t_year=") + year());
    QList<std::pair<int, QStringList>> rows;
    for (rs.moveFirst(); !rs.isEOF(); rs.moveNext()) {
        QStringList row;
        for (int c = 0; c <= ColLateFee; ++c)
            row << rs.text(c);
        rows.append({row.at(2).toInt(), row});
    }
    std::sort(rows.begin(), rows.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &[serial, row] : rows) {
        m_serials << serial;
        m_rows << row;
    }
    m_fields[F::Tan] = tan;
    m_fields[F::Name] = name;
    if (!m_serials.isEmpty())
        show(m_serials.first());
    m_status = m_serials.isEmpty() ? QStringLiteral("No challans") : QStringLiteral("%1 challans").arg(m_serials.size());
}

QStringList ChallanForm::gridRow(int serial) const
{
    const int at = int(m_serials.indexOf(serial));
    if (at < 0)
        return {};
    const QStringList &row = m_rows.at(at);
    double total = 0;
    for (int c : {ColTax, ColSurcharge, ColEducess, ColEducess1, ColInterest, ColLateFee, ColPenalty, ColOthers})
        total += FieldRules::leadingNumber(row.at(c));
    return {QString::number(serial), row.at(ColChallanNo), row.at(ColDate), QString::number(total, 'f', 2)};
}

void ChallanForm::show(int serial)
{
    const int at = int(m_serials.indexOf(serial));
    if (at < 0)
        return;
    const QStringList &row = m_rows.at(at);
    for (const auto &[field, column] : kStoredFields)
        m_fields[field] = isAmountField(field) ? FieldRules::plainAmount(row.at(column)) : row.at(column);
    setField(F::IncomeTax, m_fields.at(F::IncomeTax));   // the total
    m_payMode = payModeOf(row.at(ColPaymode));
    const int comp = row.at(ColComp).toInt();
    m_company = comp & 1;
    m_payType = (comp & 2) ? 1 : 0;
    m_resident = row.at(ColResident).toInt() == 1;
    m_paynat = m_kind == Kind::Older ? row.at(ColPaynat) : QString();
    m_serial = serial;
}

bool ChallanForm::select(int serial)
{
    if (m_editing || loadFailed() || !m_serials.contains(serial))
        return false;
    QList<ChallanSection> rows;
    if (m_kind == Kind::Current) {
        QString why;
        const bool read = modbase::errorTrap(module(), QStringLiteral("vsf_Click"), [&] {
            IDataObject &data = modbase::data();
            Recordset rs;
            query(data, rs, QStringLiteral("Select * from Challan_TDSSec Where code_no=") + data.quoted(m_code)
                                + QStringLiteral(" and t_year=") + year() + QStringLiteral(" and ChSrNo=")
                                + QString::number(serial) + QStringLiteral(" Order By PayNat"));
            for (rs.moveFirst(); !rs.isEOF(); rs.moveNext())
                rows << ChallanSection{rs.text(3), FieldRules::plainAmount(rs.text(4)), FieldRules::plainAmount(rs.text(5)),
                                       FieldRules::plainAmount(rs.text(6)), FieldRules::plainAmount(rs.text(7))};
        }, &why);
        // The challan shown before stays: a half-read one must not be saved over the stored.
        if (!read) {
            m_status = QStringLiteral("The sections of challan %1 could not be read: %2").arg(serial).arg(why);
            return false;
        }
    }
    show(serial);
    setSections(rows);
    m_status = QStringLiteral("Challan %1 of %2").arg(m_serials.indexOf(serial) + 1).arg(m_serials.size());
    return true;
}

void ChallanForm::setField(int i, const QString &text)
{
    if (i < 0 || i >= F::FieldCount || i == F::Total)
        return;
    m_fields[i] = text;
    if (!isAmountField(i))
        return;
    double total = 0;
    for (int a = F::IncomeTax; a < F::Total; ++a)
        total += FieldRules::leadingNumber(m_fields.at(a));
    m_fields[F::Total] = QString::number(total, 'f', 2);
}

QString ChallanForm::payModeWord() const
{
    if (m_payMode == Cash)
        return QStringLiteral("Cash");
    if (m_payMode == DebitToAccount)
        return QStringLiteral("Debit to A/c");
    return QStringLiteral("Cheque");
}

int ChallanForm::payModeOf(const QString &word)
{
    if (word == QLatin1String("Cash"))
        return Cash;
    if (word == QLatin1String("Debit to A/c"))
        return DebitToAccount;
    if (word == QLatin1String("Cheque"))
        return Cheque;
    return NoPayMode;
}

int ChallanForm::comp() const
{
    return (m_company ? 1 : 0) + (m_payType == 1 ? 2 : 0);
}

bool ChallanForm::amountFromSections(int field)
{
    return field == F::IncomeTax || field == F::Surcharge || field == F::EducationCess
        || field == F::HigherEducationCess || field == F::Others;
}

bool ChallanForm::addSection(const ChallanSection &row)
{
    if (m_sections.size() >= kMaxSections)
        return refuse(QStringLiteral("Only 20 Rows can be added for section-wise payment."), Focus::Sections);
    m_sections << row;
    sumSections();
    return true;
}

void ChallanForm::setSection(int row, const ChallanSection &section)
{
    if (row >= 0 && row < m_sections.size())
        m_sections[row] = section;
    sumSections();
}

void ChallanForm::setSections(const QList<ChallanSection> &rows)
{
    m_sections = rows;
    sumSections();
}

bool ChallanForm::deleteSection(int row)
{
    if (row < 0 || row >= m_sections.size())
        return refuse(QStringLiteral("Please select a Row to delete."), Focus::Sections);
    m_sections.removeAt(row);
    sumSections();
    return true;
}

QStringList ChallanForm::sectionTotals() const
{
    double tax = 0, surcharge = 0, cess = 0, other = 0;
    for (const ChallanSection &row : m_sections) {
        tax += FieldRules::leadingNumber(row.tax);
        surcharge += FieldRules::leadingNumber(row.surcharge);
        cess += FieldRules::leadingNumber(row.cess);
        other += FieldRules::leadingNumber(row.other);
    }
    const auto text = [](double v) { return QString::number(v, 'f', 2); };
    return {text(tax), text(surcharge), text(cess), text(other)};
}

void ChallanForm::sumSections()
{
    if (m_kind != Kind::Current)
        return;
    const QStringList totals = sectionTotals();
    m_fields[F::EducationCess] = totals[2];
    m_fields[F::HigherEducationCess] = QStringLiteral("0.00");
    m_fields[F::Others] = totals[3];
    m_fields[F::Surcharge] = totals[1];
    setField(F::IncomeTax, totals[0]);   // and the total
}

bool ChallanForm::ask(const QString &text, bool yesIsDefault)
{
    return m_dialogs && m_dialogs->ask(text, Dialogs::Icon::Question, yesIsDefault, kConfirmation);
}

bool ChallanForm::refuse(const QString &text, Focus focus)
{
    m_refusal = text;
    m_refusalFocus = focus;
    if (m_dialogs)
        m_dialogs->inform(text, QString(), Dialogs::Icon::Information);
    return false;
}

void ChallanForm::add()
{
    if (loadFailed() || m_editing)
        return;
    blank();
    m_fields[F::Total] = QStringLiteral("0.00");
    m_editing = true;
    m_status = QStringLiteral("New challan");
}

bool ChallanForm::modify()
{
    if (loadFailed() || m_editing || m_serial == 0)
        return false;
    m_editing = true;
    m_status = QStringLiteral("Modifying challan %1").arg(m_serial);
    return true;
}

bool ChallanForm::check()
{
    m_refusal.clear();
    m_refusalFocus = Focus::None;
    if (m_kind == Kind::Current) {
        if (m_sections.isEmpty())
            return refuse(QStringLiteral("Please add Section-wise Payment details."), Focus::Sections);
        if (m_sections.size() > kMaxSections)
            return refuse(QStringLiteral("Only 20 Rows can be added for section-wise payment."), Focus::Sections);
        for (const ChallanSection &row : std::as_const(m_sections)) {
            if (row.key.trimmed().isEmpty())
                return refuse(QStringLiteral("Please Select Section."), Focus::Sections);
            if (!row.hasAmount())
                return refuse(QStringLiteral("Please Enter Amount details."), Focus::Sections);
        }
    } else if (m_paynat.trimmed().isEmpty()) {
        return refuse(QStringLiteral("Please Select Type of Payment."), Focus::NatureOfPayment);
    }
    if (m_fields.value(F::ChallanDate).trimmed().isEmpty())
        return refuse(QStringLiteral("Please Specity Date of Challan."), Focus::ChallanDate);
    return true;
}

QString ChallanForm::keyCondition(IDataObject &data, int serial, const QString &serialColumn) const
{
    return QStringLiteral(" where code_no=") + data.quoted(m_code) + QStringLiteral(" and t_year=") + year()
        + QStringLiteral(" and ") + serialColumn + QLatin1Char('=') + QString::number(serial);
}

QString ChallanForm::insertStatement(IDataObject &data, int serial) const
{
    const QStringList &f = m_fields;
    QString sql = QStringLiteral("Insert into Challan_ZeltOth Values (") + data.quoted(m_code) + QLatin1Char(',') + year()
        + QLatin1Char(',') + QString::number(serial) + QLatin1Char(',') + data.quoted(f[F::ChallanNo]) + QLatin1Char(',')
        + data.quoted(f[F::ChallanDate]) + QLatin1Char(',') + QString::number(m_resident ? 1 : 0)
        + (m_kind == Kind::Current ? QStringLiteral(",1,0") : QStringLiteral(",1,") + amount(m_paynat));
    for (int i : {F::IncomeTax, F::Surcharge, F::Interest, F::Penalty, F::Others})
        sql += QLatin1Char(',') + amount(f[i]);
    for (int i : {F::ChequeNo, F::ChequeDate, F::Bank})
        sql += QLatin1Char(',') + data.quoted(f[i]);
    sql += QLatin1Char(',') + amount(f[F::EducationCess]) + QLatin1Char(',') + data.quoted(payModeWord()) + QLatin1Char(',')
        + data.quoted(QString::number(comp())) + QLatin1Char(',') + amount(f[F::HigherEducationCess]) + QLatin1Char(',')
        + amount(f[F::LateFee]) + QLatin1Char(')');
    return sql;
}

QString ChallanForm::updateStatement(IDataObject &data) const
{
    const QStringList &f = m_fields;
    // The challan number and the residential status are kept as well: a changed number
    // must not be dropped without a word.
    return QStringLiteral("Update Challan_ZeltOth set challan_dt=") + data.quoted(f[F::ChallanDate])
        + QStringLiteral(", challan_type=1, paynat=") + (m_kind == Kind::Current ? QStringLiteral("0") : amount(m_paynat))
        + QStringLiteral(", tax=") + amount(f[F::IncomeTax]) + QStringLiteral(", surcharge=") + amount(f[F::Surcharge])
        + QStringLiteral(", educess=") + amount(f[F::EducationCess]) + QStringLiteral(", educess1=")
        + amount(f[F::HigherEducationCess]) + QStringLiteral(", interest=") + amount(f[F::Interest])
        + QStringLiteral(", latefee234E=") + amount(f[F::LateFee]) + QStringLiteral(", penalty=") + amount(f[F::Penalty])
        + QStringLiteral(", others=") + amount(f[F::Others]) + QStringLiteral(", paymode=") + data.quoted(payModeWord())
        + QStringLiteral(", chq_no=") + data.quoted(f[F::ChequeNo]) + QStringLiteral(", chq_dt=") + data.quoted(f[F::ChequeDate])
        + QStringLiteral(", bank_nm=") + data.quoted(f[F::Bank]) + QStringLiteral(", comp=")
        + data.quoted(QString::number(comp())) + QStringLiteral(", challan_no=") + data.quoted(f[F::ChallanNo])
        + QStringLiteral(", res_status=") + QString::number(m_resident ? 1 : 0) + keyCondition(data, m_serial, QStringLiteral("srno"));
}

QStringList ChallanForm::sectionStatements(IDataObject &data, int serial) const
{
    if (m_kind != Kind::Current)
        return {};
    QStringList out{QStringLiteral("Delete From Challan_TDSSec") + keyCondition(data, serial, QStringLiteral("Chsrno"))};
    for (const ChallanSection &row : m_sections)
        out << QStringLiteral("Insert into Challan_TDSSec Values (") + data.quoted(m_code) + QLatin1Char(',') + year()
                   + QLatin1Char(',') + QString::number(serial) + QLatin1Char(',') + amount(row.key) + QLatin1Char(',')
                   + amount(row.tax) + QLatin1Char(',') + amount(row.surcharge) + QLatin1Char(',') + amount(row.cess)
                   + QLatin1Char(',') + amount(row.other) + QLatin1Char(')');
    return out;
}

QStringList ChallanForm::saveStatements(IDataObject &data)
{
    return QStringList{updateStatement(data)} + sectionStatements(data, m_serial);
}

// The header and its sections in one transaction; a new challan under the next free serial.
bool ChallanForm::write(bool asNew)
{
    QString why;
    int stored = m_serial;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmdupdate_Click"), [&] {
        IDataObject &data = modbase::data();
        if (asNew) {
            stored = NewSerial::store(data, QStringLiteral("Select max(srno) as maxsr from Challan_ZeltOth where code_no=")
                                                + data.quoted(m_code) + QStringLiteral(" and t_year=") + year(),
                                      [&](TransactionGuard &guard, int serial) {
                                          guard.run(insertStatement(data, serial));
                                          guard.run(sectionStatements(data, serial));
                                      });
        } else {
            TransactionGuard guard(data);
            guard.run(saveStatements(data));
            guard.commitOrThrow();
        }
    }, &why);
    if (!ok) {
        setSaveError(QStringLiteral("The challan could not be saved; nothing was changed.\n\n")
                     + (why.isEmpty() ? QStringLiteral("See the error log.") : why));
        if (m_dialogs)
            m_dialogs->inform(saveError(), QString(), Dialogs::Icon::Critical);
        return false;
    }
    m_serial = stored;
    return true;
}

void ChallanForm::reload(int serial)
{
    const QStringList fields = m_fields;
    const QList<ChallanSection> sections = m_sections;
    if (!load())
        return;
    if (!select(serial)) {
        // The grid could not be read back: what was saved stays on screen.
        m_fields = fields;
        m_sections = sections;
    }
}

bool ChallanForm::update()
{
    if (refusedAfterFailedLoad() || !m_editing || !check())
        return false;
    const bool asNew = m_serial == 0;
    if (!write(asNew))
        return false;
    m_editing = false;
    const int saved = m_serial;
    reload(saved);
    m_status = QStringLiteral("Challan %1 saved").arg(saved);
    return true;
}

int ChallanForm::store(int serial, bool replace)
{
    setSaveError(QString());
    if (refusedAfterFailedLoad() || !check())
        return 0;
    m_serial = serial;
    if (serial == 0 || replace)
        return write(serial == 0) ? m_serial : 0;
    QString why;
    const bool ok = modbase::errorTrap(module(), QStringLiteral("import"), [&] {
        IDataObject &data = modbase::data();
        TransactionGuard guard(data);
        guard.run(insertStatement(data, serial));
        guard.run(sectionStatements(data, serial));
        guard.commitOrThrow();
    }, &why);
    if (!ok)
        setSaveError(QStringLiteral("The challan could not be saved; nothing was changed.\n\n") + why);
    return ok ? serial : 0;
}

bool ChallanForm::deleteChallan()
{
    setSaveError(QString());
    if (loadFailed() || m_editing || m_serial == 0)
        return false;
    if (!ask(QStringLiteral("Do you want to delete this record")))
        return false;
    const int gone = m_serial;
    QString why;
    // Only the header goes: the section rows stay until a challan is saved under this serial.
    const bool ok = modbase::errorTrap(module(), QStringLiteral("cmddelete_Click"), [&] {
        IDataObject &data = modbase::data();
        TransactionGuard::apply(data, {QStringLiteral("Delete from Challan_ZeltOth") + keyCondition(data, gone, QStringLiteral("srno"))});
    }, &why);
    if (!ok) {
        setSaveError(QStringLiteral("The challan could not be deleted.\n\n") + why);
        if (m_dialogs)
            m_dialogs->inform(saveError(), QString(), Dialogs::Icon::Critical);
        return false;
    }
    const int at = int(m_serials.indexOf(gone));
    if (load()) {
        if (!m_serials.isEmpty())
            select(m_serials.at(qMin(at, int(m_serials.size()) - 1)));
        else
            add(), m_editing = false;
    }
    m_status = QStringLiteral("Challan %1 deleted").arg(gone);
    return true;
}

bool ChallanForm::copyChallan()
{
    setSaveError(QString());
    if (loadFailed() || m_editing || m_serial == 0)
        return false;
    if (!ask(QStringLiteral("Do you want to Copy this Challan?")))
        return false;
    const int from = m_serial;
    if (!write(true))
        return false;
    const int copy = m_serial;
    reload(copy);
    m_status = QStringLiteral("Challan %1 copied as %2").arg(from).arg(copy);
    return true;
}

bool ChallanForm::cancel()
{
    if (!m_editing)
        return false;
    if (!ask(QStringLiteral("Do you really want to Cancel?")))
        return false;
    m_editing = false;
    if (m_serials.isEmpty()) {
        add();
        m_editing = false;
    } else {
        select(m_serial && m_serials.contains(m_serial) ? m_serial : m_serials.first());
    }
    m_status = QStringLiteral("Changes cancelled");
    return true;
}

bool ChallanForm::escape()
{
    if (m_editing) {
        cancel();
        return false;
    }
    return ask(QStringLiteral("Do you want to exit"));
}

QString ChallanForm::educationCessCaption() const
{
    // The cess became "Health and Education Cess" with the assessment year 2019-20.
    return SectionList::yearNumber(modbase::data().AsYear()) >= 2019 ? QStringLiteral("Health & Education Cess")
                                                                     : QStringLiteral("Education Cess");
}

QString ChallanForm::lateFeeCaption() const
{
    return SectionList::yearNumber(modbase::data().AsYear()) >= SectionList::kFileListFrom
        ? QStringLiteral("Late Fee u/s 427")
        : QStringLiteral("Late Fee u/s 234E");
}

ChallanPrint::Challan ChallanForm::printData() const
{
    ChallanPrint::Challan c;
    c.fields = m_fields;
    c.company = m_company;
    c.regularAssessment = m_payType == 1;
    c.paymode = payModeWord();
    IDataObject &data = modbase::data();
    c.address = ChallanPrint::readAddress(data, m_code);
    const QString list = SectionList::listText(data.AsYear());
    if (m_kind == Kind::Current) {
        for (const ChallanSection &row : m_sections)
            c.sectionCodes << SectionList::getCode(list, row.key);
    } else {
        c.sectionCodes << SectionList::getCode(list, m_paynat);
    }
    return c;
}

void ChallanForm::print()
{
    if (m_editing || m_serial == 0 || !m_dialogs)
        return;
    ChallanPrint::print(module(), printData(), *m_dialogs);
}
