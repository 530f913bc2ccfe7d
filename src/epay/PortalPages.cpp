#include "epay/PortalPages.h"

#include "host/Settings.h"

namespace PortalPages {

namespace {
QString services(const QString &path)
{
    return Settings::efilingServices() + path;
}
} // namespace

QString sessionExpiredLocator()
{
    return QStringLiteral("@HTML=>Session has expired!<");
}

QString homeAddress()
{
    return Settings::efilingHome() + QStringLiteral("/iec/foportal/");
}

QString homeLocator()
{
    return QStringLiteral("@URL=") + Settings::efilingHome() + QStringLiteral("/iec/foportal;@HTML=Home | Income Tax Department");
}

QString loginAddress()
{
    return services(QStringLiteral("/iec/foservices/#/login"));
}

QString loginLocator()
{
    return QStringLiteral("@URL=") + loginAddress() + QStringLiteral(";@ELEMENT=ID:panAdhaarUserId");
}

QString passwordLocator()
{
    return QStringLiteral("@URL=") + services(QStringLiteral("/iec/foservices/#/login/password"))
           + QStringLiteral(";@ELEMENT=ID:loginPasswordField");
}

QString dashboardLocator()
{
    return QStringLiteral("@URL=") + services(QStringLiteral("/iec/foservices/#/dashboard"))
           + QStringLiteral(";@ELEMENT=ID:profileMatCard");
}

QString ePayDashboardAddress()
{
    return services(QStringLiteral("/iec/foservices/#/dashboard/e-pay-tax/e-pay-tax-dashboard"));
}

QString ePayDashboardLocator()
{
    return QStringLiteral("@URL=") + ePayDashboardAddress() + QStringLiteral(";@HTML=e-Pay Tax");
}

QString challanDraftAddress()
{
    return services(QStringLiteral("/iec/PaymentAPI/auth/challan/savedraft"));
}

} // namespace PortalPages
