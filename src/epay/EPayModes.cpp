#include "epay/EPayModes.h"

#include <QPair>

namespace EPayModes {

namespace {

const QList<QPair<QString, QString>> &allBanks()
{
    static const QList<QPair<QString, QString>> banks = {
        {QStringLiteral("Bank Of Baroda"), QStringLiteral("BARB")},
        {QStringLiteral("HDFC Bank"), QStringLiteral("HDFC")},
        {QStringLiteral("IDBI Bank"), QStringLiteral("IBKL")},
        {QStringLiteral("ICICI Bank"), QStringLiteral("ICIC")},
        {QStringLiteral("Kotak Mahindra Bank"), QStringLiteral("KKBK")},
        {QStringLiteral("Punjab National Bank"), QStringLiteral("PUNB")},
        {QStringLiteral("State Bank Of India"), QStringLiteral("SBIN")},
        {QStringLiteral("Axis Bank"), QStringLiteral("UTIB")},
        {QStringLiteral("Bandhan Bank"), QStringLiteral("BDBL")},
        {QStringLiteral("Bank Of India"), QStringLiteral("BKID")},
        {QStringLiteral("Central Bank Of India"), QStringLiteral("CBIN")},
        {QStringLiteral("City Union Bank Limited"), QStringLiteral("CIUB")},
        {QStringLiteral("Canara Bank"), QStringLiteral("CNRB")},
        {QStringLiteral("DCB Bank"), QStringLiteral("DCBL")},
        {QStringLiteral("Federal Bank"), QStringLiteral("FDRL")},
        {QStringLiteral("Indian Bank"), QStringLiteral("IDIB")},
        {QStringLiteral("IndusInd Bank"), QStringLiteral("INDB")},
        {QStringLiteral("Indian Overseas Bank"), QStringLiteral("IOBA")},
        {QStringLiteral("Jammu And Kashmir Bank Limited"), QStringLiteral("JAKA")},
        {QStringLiteral("Karnataka Bank Limited"), QStringLiteral("KARB")},
        {QStringLiteral("Karur Vysya Bank"), QStringLiteral("KVBL")},
        {QStringLiteral("Bank Of Maharashtra"), QStringLiteral("MAHB")},
        {QStringLiteral("Punjab And Sind Bank"), QStringLiteral("PSIB")},
        {QStringLiteral("RBL Bank Limited"), QStringLiteral("RATN")},
        {QStringLiteral("Reserve Bank of India"), QStringLiteral("RBIS")},
        {QStringLiteral("South Indian Bank"), QStringLiteral("SIBL")},
        {QStringLiteral("Union Bank Of India"), QStringLiteral("UBIN")},
        {QStringLiteral("UCO Bank"), QStringLiteral("UCBA")},
        {QStringLiteral("Dhanlaxmi Bank Limited"), QStringLiteral("DLXB")},
        {QStringLiteral("IDFC FIRST Bank"), QStringLiteral("IDFB")},
    };
    return banks;
}

} // namespace

Mode mode(int tab, int counterOption)
{
    const QString ePayment = QStringLiteral("e-Payment/Internet Banking");
    switch (tab) {
    case NetBanking: return {QStringLiteral("EPY"), QStringLiteral("IB"), ePayment};
    case DebitCard: return {QStringLiteral("EPY"), QStringLiteral("DC"), ePayment};
    case BankCounter:
        return {QStringLiteral("OTC"),
                counterOption == 0   ? QStringLiteral("CA")
                : counterOption == 1 ? QStringLiteral("CQ")
                                     : QStringLiteral("DD"),
                QStringLiteral("Pay at Bank Counter")};
    case RtgsNeft: return {QStringLiteral("NER"), QString(), QStringLiteral("RTGS/NEFT")};
    case PaymentGateway: return {QStringLiteral("EPY"), QStringLiteral("PG"), ePayment};
    default: return {};
    }
}

QString tabCaption(int tab)
{
    switch (tab) {
    case NetBanking: return QStringLiteral("&Net Banking");
    case DebitCard: return QStringLiteral("&Debit Card");
    case BankCounter: return QStringLiteral("Pay at Bank Coun&ter");
    case RtgsNeft: return QStringLiteral("&RTGS/NEFT");
    case PaymentGateway: return QStringLiteral("Payment &Gateway");
    default: return QString();
    }
}

bool hasBankList(int tab)
{
    return tab >= NetBanking && tab < TabCount && tab != RtgsNeft;
}

QStringList banks(int tab)
{
    QStringList names;
    if (tab == DebitCard)
        return {QStringLiteral("Canara Bank"), QStringLiteral("ICICI Bank"), QStringLiteral("Indian Bank"),
                QStringLiteral("Punjab National Bank"), QStringLiteral("State Bank Of India")};
    if (hasBankList(tab))
        for (const auto &[name, code] : allBanks())
            names << name;
    return names;
}

QString bankCode(const QString &bankName)
{
    for (const auto &[name, code] : allBanks())
        if (name == bankName)
            return code;
    return QString();
}

QStringList categories()
{
    // "Indiviual" is the portal's own spelling.
    return {QStringLiteral("Indiviual"), QStringLiteral("Firm"), QStringLiteral("Body of individuals"),
            QStringLiteral("Hindu Undivided Family"), QStringLiteral("Association of Persons"),
            QStringLiteral("Local Authority"), QStringLiteral("Company"),
            QStringLiteral("Association of Persons (Trusts)"), QStringLiteral("Artificial Juridical Person"),
            QStringLiteral("Government Agency"), QStringLiteral("Limited Liability Partnership")};
}

} // namespace EPayModes
