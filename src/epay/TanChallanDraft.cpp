#include "epay/TanChallanDraft.h"

#include "epay/PortalPages.h"
#include "epay/PortalSession.h"
#include "host/IGeneralHelper.h"
#include "host/ServiceRegistry.h"
#include "json/Decimal.h"
#include "json/JSON.h"
#include "json/JsonWriter.h"

#include <array>

namespace {

struct PageStep {
    TanChallanDraft::Page page;
    const char *name;        // in the failure texts
    const char *status;
};

const std::array<PageStep, 3> Steps{{
    {TanChallanDraft::Page::TaxApplicableDetails, "Tax Applicable Details", "Opening Tax Applicable Details Page ..."},
    {TanChallanDraft::Page::TaxBreakupDetails, "Tax Break up Details", "Opening Tax Break up Details Page ..."},
    {TanChallanDraft::Page::PaymentDetails, "Payment Details", "Opening Payment Details Page ..."},
}};

Decimal amount(const QString &text)
{
    Decimal::Status status = Decimal::Status::Ok;
    const Decimal value = Decimal::fromString(text.trimmed(), &status);
    return status == Decimal::Status::Ok ? value : Decimal();
}

JsonValue text(const QString &value)
{
    return JsonValue(value);
}

JsonValue number(const Decimal &value)
{
    return JsonValue(value);
}

// "2025" or "2025-26": the year as a number.
Decimal yearNumber(const QString &year)
{
    qsizetype digits = 0;
    while (digits < year.size() && year.at(digits).isDigit())
        ++digits;
    return amount(year.left(digits));
}

// A flag or a reference may come as text, number or boolean.
QString scalar(const JsonValue &value)
{
    switch (value.type()) {
    case JsonValue::Type::Bool: return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case JsonValue::Type::Number: return value.toDecimal().toString();
    case JsonValue::Type::String: return value.toString();
    default: return QString();
    }
}

QString errorTexts(const JsonValue &reply)
{
    const JsonDictionary *answer = reply.dictionary();
    const JsonValue *errors = answer ? answer->find(QStringLiteral("errors")) : nullptr;
    if (!errors || !errors->isCollection())
        return QString();
    QStringList texts;
    for (const JsonValue &error : *errors->collection()) {
        if (const JsonDictionary *entry = error.dictionary()) {
            QStringList parts;
            for (const auto &[key, value] : *entry)
                if (!scalar(value).isEmpty())
                    parts << scalar(value);
            texts << parts.join(QStringLiteral(": "));
        } else {
            texts << scalar(error);
        }
    }
    return texts.join(QStringLiteral("\r\n"));
}

} // namespace

TanChallanDraft::TanChallanDraft(IOnlineAction *browser, Progress progress, CancelCheck cancelled)
    : PortalSteps(browser, std::move(progress), std::move(cancelled))
{
}

QString TanChallanDraft::total(const TanDraftPayment &p)
{
    Decimal sum;
    for (const QString *a : {&p.basicTax, &p.surCharge, &p.eduCess, &p.interest, &p.penalty, &p.others})
        sum += amount(*a);
    return sum.toFixed(2);
}

int TanChallanDraft::majorSerial(const QString &majorHead)
{
    return majorHead == QLatin1String("0020") ? 1 : 2;
}

int TanChallanDraft::minorSerial(const QString &majorHead, const QString &minorHead)
{
    const int base = majorHead == QLatin1String("0020") ? 0 : 2;
    if (minorHead == QLatin1String("200"))
        return base + 1;
    if (minorHead == QLatin1String("400"))
        return base + 2;
    return 0;
}

QByteArray TanChallanDraft::body(Page page, const TanDraftPayment &p, const QString &reference, const QString &totalWords)
{
    const JsonValue formData = JsonValue::newDictionary();
    JsonDictionary &d = *formData.dictionary();
    const bool first = page == Page::TaxApplicableDetails;
    const QString pageName = page == Page::TaxApplicableDetails ? QStringLiteral("addTaxApplicableDetails")
                             : page == Page::TaxBreakupDetails  ? QStringLiteral("addTaxBreakupDetails")
                                                                : QStringLiteral("addPaymentDetails");
    const JsonValue majorSl = number(Decimal(majorSerial(p.majorHead)));
    const JsonValue minorSl = number(Decimal(minorSerial(p.majorHead, p.minorHead)));
    const auto amounts = [&] {
        // The first page has none yet.
        const QString sum = total(p);
        for (const auto &[key, value] : {std::pair{"basicTax", &p.basicTax}, {"surCharge", &p.surCharge},
                                         {"eduCess", &p.eduCess}, {"interest", &p.interest},
                                         {"penalty", &p.penalty}, {"others", &p.others}, {"totalAmt", &sum}})
            d.add(QString::fromLatin1(key), first ? text(QString()) : number(amount(*value)));
    };
    const auto paymentCodes = [&](bool withCodes) {
        d.add(QStringLiteral("paymentMode"), text(withCodes ? p.paymentMode : QString()));
        d.add(QStringLiteral("subPayMode"), text(withCodes ? p.subPayMode : QString()));
        d.add(QStringLiteral("bankCd"), text(withCodes ? p.bankCode : QString()));
    };

    d.add(QStringLiteral("pan"), text(p.tan));
    switch (page) {
    case Page::TaxApplicableDetails:
        d.add(QStringLiteral("tileId"), text(QStringLiteral("2")));
        d.add(QStringLiteral("majorHead"), text(p.majorHead));
        d.add(QStringLiteral("minorHead"), text(p.minorHead));
        d.add(QStringLiteral("assmentYear"), text(p.assessmentYear));
        amounts();
        d.add(QStringLiteral("totalAmtWord"), text(QString()));
        paymentCodes(false);
        d.add(QStringLiteral("pymntRefNum"), text(QString()));
        d.add(QStringLiteral("majorSlNum"), majorSl);
        d.add(QStringLiteral("minorSlNum"), minorSl);
        d.add(QStringLiteral("taxPayerName"), text(QString()));
        break;
    case Page::TaxBreakupDetails:
        d.add(QStringLiteral("tileId"), text(QStringLiteral("2")));
        d.add(QStringLiteral("majorHead"), text(p.majorHead));
        d.add(QStringLiteral("minorHead"), text(p.minorHead));
        d.add(QStringLiteral("majorSlNum"), majorSl);
        d.add(QStringLiteral("minorSlNum"), minorSl);
        amounts();
        d.add(QStringLiteral("assmentYear"), number(yearNumber(p.assessmentYear)));
        d.add(QStringLiteral("totalAmtWord"), text(totalWords));
        paymentCodes(false);
        d.add(QStringLiteral("pymntRefNum"), text(reference));
        break;
    case Page::PaymentDetails:
        d.add(QStringLiteral("assmentYear"), text(p.assessmentYear));
        d.add(QStringLiteral("majorHead"), text(p.majorHead));
        d.add(QStringLiteral("majorSlNum"), majorSl);
        d.add(QStringLiteral("minorHead"), text(p.minorHead));
        d.add(QStringLiteral("minorSlNum"), minorSl);
        d.add(QStringLiteral("tileId"), text(QStringLiteral("2")));
        amounts();
        d.add(QStringLiteral("totalAmtWord"), text(totalWords));
        paymentCodes(true);
        d.add(QStringLiteral("pymntRefNum"), text(reference));
        d.add(QStringLiteral("paymentModeDesc"), text(p.paymentModeDesc));
        break;
    }
    d.add(QStringLiteral("category"), text(QString()));
    d.add(QStringLiteral("natrOfPymnt"), text(QString()));
    if (page == Page::PaymentDetails)
        d.add(QStringLiteral("effBankDetails"), text(QString()));
    d.add(QStringLiteral("pageName"), text(pageName));
    d.add(QStringLiteral("createdByUser"), text(p.tan));

    const JsonValue header = JsonValue::newDictionary();
    header.dictionary()->add(QStringLiteral("formName"), text(QStringLiteral("PO-03-PYMNT")));
    const JsonValue whole = JsonValue::newDictionary();
    whole.dictionary()->add(QStringLiteral("header"), header);
    whole.dictionary()->add(QStringLiteral("formData"), formData);
    return toCompactJson(whole);
}

QString TanChallanDraft::replyFailure(const QString &reply, const QString &pageName, QString *reference, QString *detail)
{
    if (reference)
        reference->clear();
    JsonParser parser;
    const JsonValue answer = reply.startsWith(QLatin1String("#ERROR;")) ? JsonValue() : parser.parse(reply);
    const JsonDictionary *fields = answer.dictionary();
    const auto field = [&](const char *name) {
        const JsonValue *value = fields ? fields->find(QString::fromLatin1(name)) : nullptr;
        return value ? scalar(*value) : QString();
    };
    if (detail) {
        *detail = reply.startsWith(QLatin1String("#ERROR;")) ? reply.mid(7) : errorTexts(answer);
        if (detail->isEmpty() && !fields)
            *detail = QStringLiteral("The reply is not JSON: ") + reply.left(200);
    }
    if (field("successFlag").toUpper() != QLatin1String("TRUE"))
        return QStringLiteral("Failed to Save '%1' Page !").arg(pageName);
    const QString ref = field("pymntRefNum");
    if (ref.isEmpty())
        return QStringLiteral("Failed to verify '%1' Page !").arg(pageName);
    if (reference)
        *reference = ref;
    return QString();
}

PortalResult TanChallanDraft::save(const TanDraftPayment &payment)
{
    m_reference.clear();
    PortalResult missing;
    if (noBrowser(missing))
        return missing;
    if (cancelled())
        return cancel();
    const auto helper = createObjectAs<IGeneralHelper>(QString::fromLatin1(ProgId::GeneralHelper));
    if (!helper) {
        const QString text = QStringLiteral("Failed to Create COM Component Object.");
        return failWith(text, text);
    }
    IOnlineDriver *driver = m_browser->objectSWC();
    const QString token = driver ? driver->getCookieByName(QStringLiteral("AuthToken")) : QString();
    keepOut(token);
    const QString cookie = QStringLiteral("AuthToken=") + token;
    const QString words = QStringLiteral("Rupees ") + helper->ConvertToWord(total(payment));

    QString reference;
    for (const PageStep &step : Steps) {
        if (cancelled())
            return cancel();
        progress(QString::fromLatin1(step.status));
        const QString reply = helper->HttpPost(PortalPages::challanDraftAddress(), QString(), cookie,
                                               QString::fromUtf8(body(step.page, payment, reference, words)),
                                               QStringLiteral("application/json"), QString());
        QString given;
        QString detail;
        const QString failure = replyFailure(reply, QString::fromLatin1(step.name), &given, &detail);
        if (!failure.isEmpty()) {
            PortalResult result = fail(failure);
            result.detail = scrubbed(detail);
            return result;
        }
        // The later pages carry the reference of the first.
        if (reference.isEmpty())
            reference = given;
    }
    m_reference = reference;
    return {};
}

PortalResult TanChallanDraft::run(const TanDraftPayment &payment)
{
    const PortalResult saved = save(payment);
    if (!saved.ok())
        return saved;
    PortalSession session(m_browser, [this](const QString &text) { progress(text); }, [this] { return cancelled(); });
    return session.openEPayTax(PortalPages::ePayDashboardLocator());
}
