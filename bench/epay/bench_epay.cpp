// The whole older TAN payment, from the browser's start to the bank's choice, on the mock
// portal in headless Chromium. The portal makes the flow pause (two seconds after the home
// page, seven before the login); everything else is the flow's own overhead. The last line
// is ratio=mandated/total.
#include "HeadlessBrowser.h"
#include "MockItdPortal.h"
#include "PauseRecordingBrowser.h"

#include "epay/TanPaymentFlow.h"
#include "host/ServiceRegistry.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>

#include <cstdio>

namespace {

// Waits the pauses as asked, and counts them.
class CountingBrowser : public PauseRecordingBrowser
{
public:
    using PauseRecordingBrowser::PauseRecordingBrowser;
    void WaitForSeconds(int seconds) override
    {
        pauses << seconds;
        inner().WaitForSeconds(seconds);
    }
};

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QString error;
    if (!HeadlessBrowser::configure(10, 50, &error)) {
        std::fprintf(stderr, "bench_epay: %s\n", qPrintable(error));
        return 1;
    }
    const QString missing = HeadlessBrowser::unavailableReason();
    if (!missing.isEmpty()) {
        std::printf("bench_epay: skipped, %s\n", qPrintable(missing));
        return 0;
    }
    MockItdPortal portal;
    if (!portal.start()) {
        std::fprintf(stderr, "bench_epay: the mock portal did not start\n");
        return 1;
    }
    const QString tan = QStringLiteral("BLRA12345B");
    const QString password = QStringLiteral("Bench#Pass1");
    portal.setAccount(tan, password);
    ServiceRegistry::registerBuiltins();
    CountingBrowser browser(createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction)));

    TanPayment payment;
    payment.tan = tan;
    payment.password = password;
    payment.assessmentYear = QStringLiteral("2025");
    payment.majorHead = QStringLiteral("0020");
    payment.minorHead = QStringLiteral("200");
    payment.tax = QStringLiteral("12500.50");
    payment.surcharge = QStringLiteral("1250");
    payment.cess = QStringLiteral("550");
    payment.interest = QStringLiteral("75");
    payment.penalty = QStringLiteral("0");
    payment.others = QStringLiteral("200");
    payment.bankCode = QStringLiteral("SBIN");

    QElapsedTimer clock;
    qint64 last = 0;
    qint64 started = -1;   // the browser is up: the first status
    qint64 loggedIn = -1;  // the e-pay pages begin
    const auto step = [&](const QString &text) {
        const qint64 now = clock.elapsed();
        std::printf("  %6lld ms  +%5lld  %s\n", now, now - last, qPrintable(text));
        last = now;
        if (started < 0)
            started = now;
        if (text == QLatin1String("Opening Select Act Page ..."))
            loggedIn = now;
    };
    clock.start();
    const PortalResult result = TanPaymentFlow(&browser, step).run(TanPaymentFlow::Kind::Older, payment,
                                                                    QStringLiteral("bench"), QDir::tempPath());
    const double total = double(clock.elapsed()) / 1000.0;
    browser.Quit();
    if (!result.ok()) {
        std::fprintf(stderr, "bench_epay: %s\n", qPrintable(result.message));
        return 1;
    }
    int mandated = 0;
    for (int seconds : std::as_const(browser.pauses))
        mandated += seconds;
    std::printf("browser start: %.2f s, session and login beyond the waits: %.2f s, payment pages: %.2f s\n",
                double(started) / 1000.0, double(loggedIn - started) / 1000.0 - mandated,
                total - double(loggedIn) / 1000.0);
    std::printf("mandated waits: %d s\n", mandated);
    std::printf("total: %.2f s\n", total);
    std::printf("ratio=%.2f\n", total > 0 ? mandated / total : 0.0);
    return 0;
}
