#pragma once
// Browser tests: a headless Chromium with short page waits, configured in the test's own
// settings file; skipped only when Chromium or its driver is not installed.
#include "host/IOnlineAction.h"

#include <QString>
#include <QTest>
#include <memory>

namespace HeadlessBrowser {

// Points settings and data home at the test's temporary folder (TestDatabase::prepareHome),
// then sets the page wait and polling interval and forces headless mode.
bool configure(int waitSeconds, int pollMilliseconds, QString *error = nullptr);
void setWaitSeconds(int seconds);
// Empty when the configured browser and driver exist, else why the tests cannot run.
QString unavailableReason();
// The real online-action wrapper, the built-in services registered.
std::shared_ptr<IOnlineAction> create();
// Whether any process still runs with this text in its command line (a browser profile).
bool processRunsWith(const QString &text);

} // namespace HeadlessBrowser

#define TDS_REQUIRE_BROWSER()                                                 \
    do {                                                                      \
        const QString tdsWhyNot_ = HeadlessBrowser::unavailableReason();      \
        if (!tdsWhyNot_.isEmpty())                                            \
            QSKIP(qPrintable(tdsWhyNot_));                                    \
    } while (false)

// A browser test's start: headless settings with this page wait; skipped without a browser.
#define TDS_HEADLESS_BROWSER(waitSeconds)                                                   \
    do {                                                                                    \
        QString tdsError_;                                                                  \
        QVERIFY2(HeadlessBrowser::configure(waitSeconds, 50, &tdsError_), qPrintable(tdsError_)); \
        TDS_REQUIRE_BROWSER();                                                              \
    } while (false)
