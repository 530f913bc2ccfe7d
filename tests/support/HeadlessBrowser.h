#pragma once
// Browser tests: a headless Chromium with short page waits, configured in the test's own
// settings file; skipped only when Chromium or its driver is not installed.
#include <QString>
#include <QTest>

namespace HeadlessBrowser {

// Points settings and data home at the test's temporary folder (TestDatabase::prepareHome),
// then sets the page wait and polling interval and forces headless mode.
bool configure(int waitSeconds, int pollMilliseconds, QString *error = nullptr);
void setWaitSeconds(int seconds);
// Empty when the configured browser and driver exist, else why the tests cannot run.
QString unavailableReason();
// Whether any process still runs with this text in its command line (a browser profile).
bool processRunsWith(const QString &text);

} // namespace HeadlessBrowser

#define TDS_REQUIRE_BROWSER()                                                 \
    do {                                                                      \
        const QString tdsWhyNot_ = HeadlessBrowser::unavailableReason();      \
        if (!tdsWhyNot_.isEmpty())                                            \
            QSKIP(qPrintable(tdsWhyNot_));                                    \
    } while (false)
