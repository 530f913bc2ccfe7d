#include "epay/PortalPages.h"

#include "host/Settings.h"

namespace PortalPages {

namespace {
QString services(const QString &path)
{
    return Settings::efilingServices() + path;
}

// A page of the services app: "@URL=" + address + ";" + check.
QString servicesPage(const char *route, const char *check)
{
    return QStringLiteral("@URL=") + services(QStringLiteral("/iec/foservices/#") + QLatin1String(route)) + QLatin1Char(';')
           + QLatin1String(check);
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

QString actSelectionLocator()
{
    return servicesPage("/dashboard/e-pay-tax/e-pay-tax-dashboard", "@HTML=Select Applicable Income Tax Act");
}

QString newPaymentLocator()
{
    return servicesPage("/dashboard/e-pay-tax/e-pay-tax-dashboard", "@HTML=New Payment for tax");
}

QString tilesPanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/tiles", "@HTML=PAN: ");
}

QString tilesTanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/tiles", "@HTML=TAN: ");
}

QString minorHeadPanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/tds-payable-by-taxpayer", "@HTML=Type of Payment (Minor Head)");
}

QString minorHeadTanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/tds-deductee-type", "@HTML=Type of Payment (Minor Head)");
}

QString minorHeadDemandLocator()
{
    return servicesPage("/dashboard/e-pay-tax/demand-tan-details", "@HTML=Type of Payment (Minor Head)");
}

QString sectionWiseLocator()
{
    return servicesPage("/dashboard/e-pay-tax/tds-section-wise-payment", "@HTML=TDS/TCS Section-Wise Payment Details");
}

QString breakupPanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/add-tax-breakup-details", "@HTML=(a) Tax");
}

QString breakupTanLocator()
{
    return servicesPage("/dashboard/e-pay-tax/new-payment-summary", "@HTML=(a) Tax");
}

QString breakupDemandLocator()
{
    return servicesPage("/dashboard/e-pay-tax/demand-tan-details", "@HTML=(a) Tax");
}

QString paymentModeLocator()
{
    return servicesPage("/dashboard/e-pay-tax/add-payment-details", "@HTML=Net Banking");
}

QString preloginUserDetailsLocator()
{
    return servicesPage("/e-pay-tax-prelogin/user-details", "@ELEMENT=ID:pantan");
}

QString preloginOtpLocator()
{
    return servicesPage("/e-pay-tax-prelogin/mob-otp", "@HTML=OTP verification");
}

QString preloginOtpAcceptedLocator()
{
    return servicesPage("/e-pay-tax-prelogin/success-prelogin", "@HTML=You have successfully verified through mobile OTP");
}

QString preloginTilesLocator()
{
    return servicesPage("/e-pay-tax-prelogin/e-pay-tax/tiles", "@HTML=TAN: ");
}

QString preloginMinorHeadLocator()
{
    return servicesPage("/e-pay-tax-prelogin/e-pay-tax/tds-payable-by-taxpayer", "@HTML=Type of Payment (Minor Head)");
}

QString preloginBreakupLocator()
{
    return servicesPage("/e-pay-tax-prelogin/e-pay-tax/add-tax-breakup-details", "@HTML=(a) Tax");
}

QString preloginPaymentModeLocator()
{
    return servicesPage("/e-pay-tax-prelogin/e-pay-tax/add-payment-details", "@HTML=Net Banking");
}

QString challanDraftAddress()
{
    return services(QStringLiteral("/iec/PaymentAPI/auth/challan/savedraft"));
}

} // namespace PortalPages
