#pragma once
// The portal's payment modes as the e-pay form's tab strip offers them, and its banks with
// the four-letter codes the portal takes.
#include <QString>
#include <QStringList>

namespace EPayModes {

enum Tab { NetBanking = 0, DebitCard = 1, BankCounter = 2, RtgsNeft = 3, PaymentGateway = 4, TabCount = 5 };

struct Mode
{
    QString code;          // "EPY", "OTC", "NER"
    QString subMode;       // "IB", "DC", "CA", "CQ", "DD", "PG" or empty
    QString description;   // "e-Payment/Internet Banking", ...
};

// The tab's mode. counterOption: the optPBC chosen on the bank-counter tab (0 cash,
// 1 cheque, any other demand draft); ignored elsewhere.
Mode mode(int tab, int counterOption = -1);
QString tabCaption(int tab);
// The names of the tab's bank list, in list order; empty for RTGS/NEFT.
QStringList banks(int tab);
bool hasBankList(int tab);
// "State Bank Of India" -> "SBIN"; empty for a name not on the list.
QString bankCode(const QString &bankName);

// The portal's categories of deductors, as the form keeps them.
QStringList categories();

} // namespace EPayModes
