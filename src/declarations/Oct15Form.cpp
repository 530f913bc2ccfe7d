#include "declarations/Oct15Form.h"

#include "host/IDataObject.h"
#include "shared/FieldRules.h"
#include "shared/modbase.h"

#include <QDate>

using namespace Oct15Slots;

Oct15Form::Oct15Form(bool form15H)
    : RecordForm(RecordStatements::forTable(form15H ? QStringLiteral("Tb15hNew") : QStringLiteral("Tb15gNew")),
                 allSlots(form15H), QStringLiteral("Declaration")),
      m_15h(form15H), m_at(declarant(form15H))
{
}

QString Oct15Form::module() const
{
    return m_15h ? QStringLiteral("frm15hOct15") : QStringLiteral("frm15gOct15");
}

QString Oct15Form::documentBase() const
{
    return m_15h ? QStringLiteral("Form15H_Oct15") : QStringLiteral("Form15G_Oct15");
}

void Oct15Form::readRows(IDataObject &data)
{
    // A new declaration is for the previous year of the year chosen, paid by the deductor.
    m_prefill = QStringList();
    m_prefill.resize(slotTable().size());
    m_prefill[m_at.previousYear] = previousYearOf(data.AsYear());
    Recordset rs;
    query(data, rs, QStringLiteral("Select * from Main_Info where Code_No=") + data.quoted(data.codeno()));
    if (!rs.isBOF() && !rs.isEOF()) {
        const std::pair<const char *, int> copied[] = {{"Name", PayerName}, {"panno", PayerPan}, {"Tanno", PayerTan},
                                                       {"Email", PayerEmail}, {"Phone_Nos", PayerTel},
                                                       {"Mobile", PayerMobile}};
        for (const auto &[column, slot] : copied)
            m_prefill[payerSlot(slot)] = rs.text(QLatin1String(column)).trimmed();
        QStringList address;
        for (const char *column : {"flat", "building", "street", "area", "city", "State"}) {
            if (const QString part = rs.text(QLatin1String(column)).trimmed(); !part.isEmpty())
                address << part;
        }
        QString joined = address.join(QStringLiteral(", "));
        if (const QString pin = rs.text(QStringLiteral("PIN")).trimmed(); !pin.isEmpty())
            joined += QStringLiteral(" - ") + pin;
        m_prefill[payerSlot(PayerAddress)] = joined;
    }
    rs.close();
    RecordForm::readRows(data);
}

namespace {
bool isDate(const QString &text)
{
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy")).isValid();
}
bool isWholeNumber(const QString &text)
{
    for (const QChar c : text) {
        if (!c.isDigit())
            return false;
    }
    return true;
}
} // namespace

Refusal Oct15Form::checkBeforeSave() const
{
    const IDataObject &data = modbase::data();
    const auto has = [this](int slot) { return !value(slot).trimmed().isEmpty(); };
    const auto amount = [this](int slot) { return FieldRules::leadingNumber(value(slot)); };
    const QString latestAy = value(m_at.latestAy).trimmed();
    const QString filed = value(m_at.formsFiled).trimmed();
    const QList<QStringList> rows = income();
    bool incomeOk = !rows.isEmpty();
    for (const QStringList &row : rows)
        incomeOk = incomeOk && FieldRules::leadingNumber(row.value(IncomeAmountColumn)) > 0;
    const QString sequence = value(payerSlot(SequenceNo)).trimmed();
    const QString payerPan = value(payerSlot(PayerPan)).trimmed();

    // In the order of the screen, so the first refusal is the first item to correct.
    const std::pair<int, bool> checks[] = {
        {m_at.name, has(m_at.name)},
        {m_at.pan, data.ValidPan(value(m_at.pan))},
        {m_15h ? m_at.dob : m_at.status, m_15h ? isDate(value(m_at.dob)) : has(m_at.status)},
        {m_at.previousYear, !nextYear(value(m_at.previousYear)).isEmpty()},
        {m_at.residential, m_15h || has(m_at.residential)},
        {m_at.assessed, has(m_at.assessed)},
        {m_at.latestAy, latestAy.isEmpty() ? value(m_at.assessed) != QLatin1String("Yes") : !nextYear(latestAy).isEmpty()},
        {m_at.estIncome, amount(m_at.estIncome) > 0},
        {m_at.estTotal, amount(m_at.estTotal) >= amount(m_at.estIncome) && amount(m_at.estTotal) > 0},
        {m_at.formsFiled, isWholeNumber(filed) && (amount(m_at.formsAmount) <= 0 || filed.toInt() > 0)},
        {incomeSlot(), incomeOk},
        {payerSlot(PayerName), has(payerSlot(PayerName))},
        {payerSlot(SequenceNo), isWholeNumber(sequence)},
        {payerSlot(PayerPan), payerPan.isEmpty() || data.ValidPan(payerPan)},
        {payerSlot(PayerTan), data.ValidTan(value(payerSlot(PayerTan)))},
        {payerSlot(ReceivedOn), !has(payerSlot(ReceivedOn)) || isDate(value(payerSlot(ReceivedOn)))},
        {payerSlot(PaidOn), !has(payerSlot(PaidOn)) || isDate(value(payerSlot(PaidOn)))},
    };
    for (const auto &[slot, ok] : checks) {
        if (ok)
            continue;
        // The payer's TAN is captioned "TAN": "Please specify valid 'TAN'."
        return specifyValid(slot);
    }
    return {};
}

Oct15Print::Declaration Oct15Form::printData() const
{
    Oct15Print::Declaration d;
    d.form15H = m_15h;
    d.declarant = values().mid(0, m_at.count);
    d.income = income();
    d.payer = values().mid(payerSlot(0));
    return d;
}

void Oct15Form::print()
{
    if (isEmpty() || editing())
        return;
    modbase::errorTrap(module(), QStringLiteral("cmdshowrep_Click"), [this] {
        if (dialogs())
            Oct15Print::print(module(), printData(), *dialogs());
    });
}
