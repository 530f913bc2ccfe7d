#pragma once
// Addresses and page locators of the e-filing portal. The hosts are settings (portal/
// efilingHome, portal/efilingServices); the paths and marks are the portal's own.
#include <QString>

namespace PortalPages {

// Every e-filing session fails a wait at once on this page.
QString sessionExpiredLocator();      // "@HTML=>Session has expired!<"

QString homeAddress();                // <home>/iec/foportal/
QString homeLocator();                // no trailing "/" here
QString loginAddress();               // <services>/iec/foservices/#/login
QString loginLocator();
QString passwordLocator();
// The page after the login and after the profile skip.
QString dashboardLocator();
QString ePayDashboardAddress();
QString ePayDashboardLocator();       // "... ;@HTML=e-Pay Tax"

// The new payment's pages, logged in. The e-pay dashboard's address carries three pages:
// the dashboard itself, the act selection and the new payment.
QString actSelectionLocator();        // "... ;@HTML=Select Applicable Income Tax Act"
QString newPaymentLocator();          // "... ;@HTML=New Payment for tax"
QString tilesPanLocator();            // "@HTML=PAN: ", the blank included
QString tilesTanLocator();
QString minorHeadPanLocator();        // tds-payable-by-taxpayer
QString minorHeadTanLocator();        // tds-deductee-type
QString minorHeadDemandLocator();     // demand-tan-details
QString sectionWiseLocator();         // tds-section-wise-payment
QString breakupPanLocator();          // add-tax-breakup-details
QString breakupTanLocator();          // new-payment-summary
QString breakupDemandLocator();       // demand-tan-details, the break-up shown
QString paymentModeLocator();         // add-payment-details

// The same payment without login: TAN and mobile OTP.
QString preloginUserDetailsLocator();
QString preloginOtpLocator();
QString preloginOtpAcceptedLocator();
QString preloginTilesLocator();
QString preloginMinorHeadLocator();
QString preloginBreakupLocator();
QString preloginPaymentModeLocator();

// The portal's payment API (TAN challan draft).
QString challanDraftAddress();        // <services>/iec/PaymentAPI/auth/challan/savedraft

} // namespace PortalPages
