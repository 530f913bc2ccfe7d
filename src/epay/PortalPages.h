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

// The portal's payment API (TAN challan draft).
QString challanDraftAddress();        // <services>/iec/PaymentAPI/auth/challan/savedraft

} // namespace PortalPages
