// The e-filing login, the TAN payment page by page and the challan draft in headless Chromium
// against the mock portal: the steps of the older, newer and pre-login flows in order, what
// the portal's pages were given, the login's refusals, the failures, the draft's three posts
// with the session's token, a cancelled run, and the password and token kept out of every
// message and file. The draft bodies key by key: TanDraftBodyTest.
#include "HeadlessBrowser.h"
#include "MockItdPortal.h"
#include "PauseRecordingBrowser.h"
#include "TestRegistry.h"

#include "epay/PortalPages.h"
#include "epay/PortalSession.h"
#include "epay/TanChallanDraft.h"
#include "epay/TanPaymentFlow.h"
#include "host/DataHome.h"
#include "host/online/OnlineActionWrapper.h"
#include "host/online/WebDriverSession.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

Q_DECLARE_METATYPE(TanPayment)

namespace {

const QString Tan = QStringLiteral("BLRA12345B");
const QString Password = QStringLiteral("Portal#Pass9");

const QStringList Session{"Opening Home Page ...", "Opening Login Home Page ...", "Filling Login Id ...",
                          "Filling Login Password ...", "Skip Profile Update ...", "Opening e-Pay Tax Page ..."};
const QStringList ToHeads{"Opening Select Act Page ...", "Opening Create New Payment Page ...",
                          "Opening Tax Applicable Details Page ...", "Submitting Tax Applicable Details Page ..."};
const QStringList PreLoginToHeads{"Opening Home Page ...", "Opening e-Pay Tax Page ...", "Filling TAN Details ...",
                                  "OTP Generation ...", "OTP Verification ...", "Opening Create New Payment Page ...",
                                  "Opening Tax Applicable Details Page ...", "Submitting Tax Applicable Details Page ..."};
const QString Sections = QStringLiteral("Submitting tds section wise payment Page ...");
const QStringList ToBank{"Submitting Tax break up Details Page ...", "Opening Payment Details Page ..."};

TanPayment payment(const QString &year, const QString &major, const QString &minor)
{
    TanPayment p;
    p.tan = Tan;
    p.password = Password;
    p.mobile = QStringLiteral("9876543210");
    p.assessmentYear = year;
    p.majorHead = major;
    p.minorHead = minor;
    p.tax = QStringLiteral("1500.50");
    p.surcharge = QStringLiteral("100");
    p.cess = QStringLiteral("64");
    p.interest = QStringLiteral("");
    p.penalty = QStringLiteral("0");
    p.others = QStringLiteral("250");
    p.bankCode = QStringLiteral("SBIN");
    return p;
}

TanPayment withMode(TanPayment p, int tab, const QString &subMode, const QString &bank)
{
    p.modeTab = tab;
    p.subMode = subMode;
    p.bankCode = bank;
    return p;
}

// The real wrapper with shortcuts that keep a run short and change nothing the flow sees:
// pauses recorded, not waited; a browser still open used again (its pages' memory cleared);
// a click not followed by the settling wait, since every step waits for its next page.
class QuickBrowser : public PauseRecordingBrowser
{
public:
    using PauseRecordingBrowser::PauseRecordingBrowser;
    bool InitComponent(const QString &hostText, const QString &browserKind, const QString &tempFolder, bool flag,
                       int mode) override
    {
        if (IOnlineDriver *driver = objectSWC()) {
            driver->executeScript(QStringLiteral("sessionStorage.clear();"));
            return true;
        }
        return PauseRecordingBrowser::InitComponent(hostText, browserKind, tempFolder, flag, mode);
    }
    bool ClickAndWait(const OnlineElementPtr &element) override { return element && element->Click(); }
};

TanDraftPayment draftPayment()
{
    TanDraftPayment p;
    p.tan = Tan;
    p.assessmentYear = QStringLiteral("2026");
    p.majorHead = QStringLiteral("0020");
    p.minorHead = QStringLiteral("400");
    p.basicTax = QStringLiteral("1500.50");
    p.surCharge = QStringLiteral("100");
    p.eduCess = QStringLiteral("60");
    p.interest = QStringLiteral("40");
    p.penalty = QStringLiteral("0");
    p.others = QStringLiteral("100");
    p.paymentMode = QStringLiteral("EPY");
    p.subPayMode = QStringLiteral("IB");
    p.bankCode = QStringLiteral("HDFC");
    p.paymentModeDesc = QStringLiteral("e-Payment/Internet Banking");
    return p;
}

// A key of a draft's formData as text; "<absent>" when the body lacks it.
QString valueOf(const QByteArray &body, const QString &key)
{
    const QJsonObject formData = QJsonDocument::fromJson(body).object().value(QStringLiteral("formData")).toObject();
    return formData.contains(key) ? formData.value(key).toVariant().toString() : QStringLiteral("<absent>");
}

// The typed break-up as the page keeps it.
const char *const TypedBreakup =
    R"x({"taxAmt":"1500.50","surchargeAmt":"100","cessAmt":"64","interestAmt":"0","penaltyAmt":"0","othersAmt":"250"})x";

} // namespace

class TanPaymentFlowTest : public QObject
{
    Q_OBJECT

    MockItdPortal m_portal;
    std::shared_ptr<QuickBrowser> m_browser;
    QStringList m_messages;   // messages and details of every run
    QStringList m_tokens;     // the session cookies handed out

    QString profileDir()
    {
        auto *wrapper = dynamic_cast<OnlineActionWrapper *>(&m_browser->inner());
        return wrapper && wrapper->session() ? wrapper->session()->profileDir() : QString();
    }
    // As a user would: the OTP typed into the browser, then "Verify".
    void typeOtp(const QString &otp, int afterMs)
    {
        m_browser->objectSWC()->executeScript(
            QStringLiteral("setTimeout(function () { document.querySelector('input[type=\"password\"]').value = '%1';"
                           "verifyOtp(); }, %2);")
                .arg(otp)
                .arg(afterMs));
    }

    void logIn()
    {
        PortalSession session(m_browser.get());
        PortalResult result = session.open(QStringLiteral("host"), QDir::tempPath());
        if (result.ok())
            result = session.login(Tan, Password);
        QVERIFY2(result.ok(), qPrintable(result.message));
        m_tokens << m_portal.authToken();
        m_portal.clearDrafts();
    }

private slots:
    void initTestCase()
    {
        TDS_HEADLESS_BROWSER(10);
        QVERIFY(m_portal.start(Tan, Password));
        m_browser = std::make_shared<QuickBrowser>(HeadlessBrowser::create());
    }
    void cleanupTestCase()
    {
        if (m_browser)
            m_browser->Quit();
    }
    void init()
    {
        m_portal.resetViews();
        m_portal.setLoginAnswer(MockItdPortal::LoginAnswer::Accept);
        m_browser->pauses.clear();
        HeadlessBrowser::setWaitSeconds(10);
    }

    void kindOf_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<bool>("withoutLogin");
        QTest::addColumn<int>("kind");
        QTest::newRow("2026: older") << "2026" << false << int(TanPaymentFlow::Kind::Older);
        QTest::newRow("2027: newer") << "2027" << false << int(TanPaymentFlow::Kind::Newer);
        QTest::newRow("2027-28: newer") << "2027-28" << false << int(TanPaymentFlow::Kind::Newer);
        QTest::newRow("without login, any year") << "2027" << true << int(TanPaymentFlow::Kind::PreLogin);
    }
    void kindOf()
    {
        QFETCH(QString, year);
        QFETCH(bool, withoutLogin);
        QFETCH(int, kind);
        QCOMPARE(int(TanPaymentFlow::kindOf(year, withoutLogin)), kind);
    }

    // Every flow up to the bank's choice, the browser left there for the user.
    void flows_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<TanPayment>("payment");
        QTest::addColumn<QStringList>("statuses");
        QTest::addColumn<QString>("received");  // what the pages were given (those keys only)

        const int older = int(TanPaymentFlow::Kind::Older);
        const int newer = int(TanPaymentFlow::Kind::Newer);
        const int preLogin = int(TanPaymentFlow::Kind::PreLogin);
        const QStringList logged = Session + ToHeads + ToBank + QStringList{"FillChallan_GC"};

        QTest::newRow("older, net banking") << older << payment("2025", "0020", "200") << logged
            << QStringLiteral(R"x({"act":"Income-tax Act, 1961","assessmentYear":"2025-26","tile":"payable","minorHead":"200",)x"
                              R"x("majorHead":"0020","breakup":%1,"mode":"Net Banking","otherBank":"yes","bank":"SBIN"})x")
                   .arg(QLatin1String(TypedBreakup));

        TanPayment sections = withMode(payment("2027", "0021", "200"), 1, QStringLiteral("DC"), QStringLiteral("CNRB"));
        sections.nonResident = true;
        sections.sections = {{"194C", "1000", "15", "0", "0", "5"}, {"1024", "2500.75", "", "200", "", ""}};
        QTest::newRow("newer, two sections, debit card")
            << newer << sections
            << Session + ToHeads + QStringList{Sections} + ToBank + QStringList{"FillChallan_GC"}
            << QStringLiteral(R"x({"act":"Income-tax Act, 2025","assessmentYear":"2027-28","tile":"payable","minorHead":"200",)x"
                              R"x("majorHead":"0021","deducteeType":"Non-Resident Deductee(s)","sections":[)x"
                              R"x({"section":"194C","amount":"1000","interest":"15","fee":"0","penalty":"0","others":"5"},)x"
                              R"x({"section":"1024","amount":"2500.75","interest":"0","fee":"200","penalty":"0","others":"0"}],)x"
                              R"x("mode":"Debit Card","bank":"CNRB"})x");

        TanPayment newerDemand = withMode(payment("2027", "0020", "400"), 3, QString(), QString());
        newerDemand.demandReference = QStringLiteral("2027DR000777");
        QTest::newRow("newer demand by RTGS/NEFT") << newer << newerDemand << logged
            << QStringLiteral(R"x({"act":"Income-tax Act, 2025","tile":"demand","minorHead":"400","majorHead":"0020",)x"
                              R"x("breakup":%1,"demandRefNum":"2027DR000777","mode":"RTGS/NEFT"})x")
                   .arg(QLatin1String(TypedBreakup));

        const QStringList prelogin = PreLoginToHeads + ToBank + QStringList{"FillChallan_GC_Prelogin"};
        const TanPayment gateway = withMode(payment("2025", "0020", "200"), 4, QStringLiteral("PG"), QStringLiteral("ICIC"));
        // The user is slower than one page wait: the OTP page is waited for again.
        QTest::newRow("pre-login, payment gateway") << preLogin << gateway << prelogin
            << QStringLiteral(R"x({"pantan":"BLRA12345B","confirmPanTan":"BLRA12345B","phone":"9876543210",)x"
                              R"x("assessmentYear":"2025-26","minorHead":"200","majorHead":"0020","breakup":%1,)x"
                              R"x("mode":"Payment Gateway","bank":"ICIC"})x")
                   .arg(QLatin1String(TypedBreakup));
    }
    void flows()
    {
        QFETCH(int, kind);
        QFETCH(TanPayment, payment);
        QFETCH(QString, received);

        const auto loginsBefore = m_portal.logins().size();
        QStringList shown;
        TanPaymentFlow flow(m_browser.get(), [&](const QString &text) {
            shown << text;
            const bool otpShown = text == QLatin1String("OTP Verification ...");
            HeadlessBrowser::setWaitSeconds(otpShown ? 1 : 10);
            if (otpShown)
                typeOtp(MockItdPortal::otp(), 1500);
        });
        const PortalResult result = flow.run(TanPaymentFlow::Kind(kind), payment, QStringLiteral("host"), QDir::tempPath());
        m_messages << result.message;
        QVERIFY2(result.ok(), qPrintable(result.message));
        QTEST(shown, "statuses");
        QCOMPARE(m_browser->pauses, (kind == int(TanPaymentFlow::Kind::PreLogin) ? QList<int>{2} : QList<int>{2, 7}));
        if (kind == int(TanPaymentFlow::Kind::PreLogin)) {
            QCOMPARE(m_portal.logins().size(), loginsBefore);
        } else {
            QCOMPARE(m_portal.logins().size(), loginsBefore + 1);
            QCOMPARE(m_portal.logins().last(), (QPair<QString, QString>{Tan, Password}));
        }

        // Left on the payment page with the browser open.
        QVERIFY(m_browser->objectSWC());
        QVERIFY(m_browser->objectSWC()->executeScript(QStringLiteral("return location.hash;")).toString().endsWith(
            QLatin1String("/add-payment-details")));
        const QJsonObject got = MockItdPortal::received(*m_browser);
        const QJsonObject wanted = QJsonDocument::fromJson(received.toUtf8()).object();
        QVERIFY2(!wanted.isEmpty(), qPrintable(received));
        for (auto it = wanted.begin(); it != wanted.end(); ++it)
            QVERIFY2(got.value(it.key()) == it.value(),
                     qPrintable(it.key() + QStringLiteral(": ") + QJsonDocument(got).toJson(QJsonDocument::Compact)));
        // RTGS/NEFT names no bank.
        QCOMPARE(got.contains(QStringLiteral("bank")), wanted.contains(QStringLiteral("bank")));
    }

    // The login's own outcomes; the flows above walk the accepted one.
    void login_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("expired");         // the password page says the session expired
        QTest::addColumn<QString>("cancelAfter");  // FlagCancel set once this status was shown
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("because");      // part of the wrapper's last error
        QTest::addColumn<QStringList>("statuses");
        const QStringList all = Session.mid(1, 4);
        const int accept = int(MockItdPortal::LoginAnswer::Accept);
        QTest::newRow("maximum of sessions: forced")
            << int(MockItdPortal::LoginAnswer::MaxAttempts) << Password << false << "" << "" << ""
            << all.mid(0, 3) + QStringList{"Forced Login ...", "Skip Profile Update ..."};
        QTest::newRow("wrong password") << accept << "Wrong#Pass1" << false << "" << "Failed to Verify 'Welcome' Page !"
                                        << "Timed out" << all.mid(0, 3);
        QTest::newRow("expired at the password") << accept << Password << true << "" << "Failed to Verify 'Filling Login Id' Page !"
                                                 << "Session has expired" << all.mid(0, 2);
        QTest::newRow("cancelled at the login id") << accept << Password << false << "Filling Login Id ..." << "" << ""
                                                   << all.mid(0, 2);
    }
    void login()
    {
        QFETCH(int, answer);
        QFETCH(QString, typed);
        QFETCH(bool, expired);
        QFETCH(QString, cancelAfter);
        QFETCH(QString, failure);
        QFETCH(QString, because);
        QFETCH(QStringList, statuses);
        m_portal.setLoginAnswer(MockItdPortal::LoginAnswer(answer));
        if (expired)
            m_portal.setView(QStringLiteral("/login/password"), QStringLiteral("<p>Session has expired!</p>"));
        QStringList shown;
        PortalSession session(m_browser.get(), [&](const QString &text) { shown << text; },
                              [&] { return !cancelAfter.isEmpty() && shown.contains(cancelAfter); });
        QVERIFY(session.open(QStringLiteral("host"), QDir::tempPath()).ok());
        shown.clear();
        m_browser->pauses.clear();
        // A wait for the welcome page that must fail ends sooner.
        HeadlessBrowser::setWaitSeconds(failure.contains(QLatin1String("Welcome")) || answer != int(MockItdPortal::LoginAnswer::Accept) ? 1 : 10);
        const auto loginsBefore = m_portal.logins().size();
        const PortalResult result = session.login(Tan, typed);
        m_messages << result.message;

        QCOMPARE(shown, statuses);
        QCOMPARE(result.cancelled(), !cancelAfter.isEmpty());
        QCOMPARE(result.failure, failure);
        QVERIFY2(result.message.startsWith(failure.isEmpty() ? QString() : failure + QStringLiteral("\r\n\r\n")),
                 qPrintable(result.message));
        QVERIFY2(result.message.contains(because), qPrintable(result.message));
        QVERIFY(!result.message.contains(typed));
        const bool typedIn = statuses.contains(QStringLiteral("Filling Login Password ..."));
        QCOMPARE(m_browser->pauses, typedIn ? QList<int>{7} : QList<int>());
        QCOMPARE(m_portal.logins().size(), loginsBefore + (typedIn ? 1 : 0));
        if (result.ok())   // on the dashboard, the profile prompt gone
            QCOMPARE(m_browser->objectSWC()->executeScript(QStringLiteral("return document.querySelectorAll('.secondaryButton').length;")),
                     QVariant(0));
    }

    // A step that fails: its text, CR LF CR LF, the wrapper's reason; the run ends there and
    // the browser stays for the user.
    void failures_data()
    {
        QTest::addColumn<QString>("route");   // a page of the portal changed for the row
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("bank");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("because");
        QTest::addColumn<QString>("lastStatus");
        // At once, not after the page wait.
        QTest::newRow("session expired at the break-up")
            << "/dashboard/e-pay-tax/add-tax-breakup-details" << "<p>Session has expired!</p>" << "SBIN"
            << "Failed to Verify 'Tax break up Details' Page !" << "Session has expired" << "Submitting Tax Applicable Details Page ...";
        QTest::newRow("paise dropped by the page") << MockItdPortal::amountShownView() << "whole" << "SBIN"
                                                   << "Failed to Submit 'Tax break up Details' Page !"
                                                   << "1,500 in \"paid1\" for the amount 1500.50 typed into \"taxAmt\""
                                                   << "Submitting Tax break up Details Page ...";
        QTest::newRow("bank not in the list") << "" << "" << "FDRL" << "Failed to fill data on 'Payment Details' Page !"
                                              << "FDRL" << "Opening Payment Details Page ...";
    }
    void failures()
    {
        QFETCH(QString, route);
        QFETCH(QString, html);
        QFETCH(QString, bank);
        QFETCH(QString, failure);
        QFETCH(QString, because);
        QFETCH(QString, lastStatus);
        if (!route.isEmpty())
            m_portal.setView(route, html);
        QStringList shown;
        TanPaymentFlow flow(m_browser.get(), [&](const QString &text) {
            shown << text;
            if (text == lastStatus && bank != QLatin1String("SBIN"))   // the missing bank is waited for
                HeadlessBrowser::setWaitSeconds(1);
        });
        QElapsedTimer clock;
        clock.start();
        TanPayment p = payment("2025", "0020", "200");
        p.bankCode = bank;
        const PortalResult result = flow.run(TanPaymentFlow::Kind::Older, p, QStringLiteral("host"), QDir::tempPath());
        m_messages << result.message;
        QVERIFY(result.failed());
        QCOMPARE(result.failure, failure);
        QVERIFY2(result.message.startsWith(failure + QStringLiteral("\r\n\r\n")), qPrintable(result.message));
        QVERIFY2(result.message.contains(because), qPrintable(result.message));
        QCOMPARE(shown.last(), lastStatus);
        if (bank == QLatin1String("SBIN"))
            QVERIFY2(clock.elapsed() < 8000, "a page that answers at once was waited out");
        QVERIFY(m_browser->objectSWC());
    }

    // The draft in a logged-in browser: three posts with the session's token, the portal's
    // reference carried on, and the e-pay dashboard at the end.
    void draftSavedAndContinued()
    {
        logIn();
        TanChallanDraft draft(m_browser.get());
        const PortalResult result = draft.run(draftPayment());
        m_messages << result.message << result.detail;
        QVERIFY2(result.ok(), qPrintable(result.message));
        QCOMPARE(m_browser->WaitForResponsePage(PortalPages::ePayDashboardLocator()), QStringLiteral("OK"));
        const auto posts = m_portal.draftPosts();
        QCOMPARE(posts.size(), 3);
        const QString reference = valueOf(posts.at(1).body, QStringLiteral("pymntRefNum"));
        QVERIFY(!reference.isEmpty());
        QCOMPARE(draft.paymentReference(), reference);
        const char *pages[3] = {"addTaxApplicableDetails", "addTaxBreakupDetails", "addPaymentDetails"};
        for (int i = 0; i < 3; ++i) {
            const QByteArray &body = posts.at(i).body;
            QCOMPARE(posts.at(i).cookie, ("AuthToken=" + m_portal.authToken()).toUtf8());
            QCOMPARE(posts.at(i).contentType, QByteArray("application/json"));
            QCOMPARE(valueOf(body, QStringLiteral("pageName")), QString::fromLatin1(pages[i]));
            QCOMPARE(valueOf(body, QStringLiteral("pymntRefNum")), i == 0 ? QString() : reference);
            QCOMPARE(valueOf(body, QStringLiteral("totalAmt")), i == 0 ? QString() : QStringLiteral("1800.5"));
        }
    }

    // The first request refused: the run stops there with the portal's reason.
    void draftRefused()
    {
        logIn();
        m_portal.queueDraftReply(R"({"successFlag":"false","errors":[{"code":"EF1","desc":"Invalid assessment year"}]})");
        QStringList statuses;
        TanChallanDraft draft(m_browser.get(), [&](const QString &text) { statuses << text; });
        const PortalResult result = draft.run(draftPayment());
        m_messages << result.message << result.detail;
        const QString failure = QStringLiteral("Failed to Save 'Tax Applicable Details' Page !");
        QCOMPARE(result.failure, failure);
        QVERIFY2(result.message.startsWith(failure + QStringLiteral("\r\n\r\n")), qPrintable(result.message));
        QVERIFY2(result.detail.contains(QLatin1String("EF1: Invalid assessment year")), qPrintable(result.detail));
        QCOMPARE(m_portal.draftPosts().size(), 1);
        QCOMPARE(statuses.size(), 1);
        QCOMPARE(draft.paymentReference(), QString());
    }

    // Cancelled between pages: the browser and its profile are gone.
    void cancelled()
    {
        const QString cancelAfter = QStringLiteral("Opening e-Pay Tax Page ...");
        QStringList shown;
        QString profile;
        TanPaymentFlow flow(
            m_browser.get(),
            [&](const QString &text) {
                shown << text;
                if (profile.isEmpty())
                    profile = profileDir();
            },
            [&] { return shown.contains(cancelAfter); });
        const PortalResult result = flow.run(TanPaymentFlow::Kind::Older, payment("2025", "0020", "200"),
                                             QStringLiteral("host"), QDir::tempPath());
        QVERIFY(result.cancelled());
        QCOMPARE(result.message, QString());
        QCOMPARE(shown.last(), cancelAfter);
        QVERIFY(!m_browser->objectSWC());
        QVERIFY(!profile.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!HeadlessBrowser::processRunsWith(profile), 5000);
    }

    // Nothing of a session is shown or written anywhere: not the password, nor a token.
    void secretsKeptOut()
    {
        QVERIFY(!m_messages.isEmpty() && !m_tokens.isEmpty());
        QByteArray everything = m_messages.join(QLatin1Char('\n')).toUtf8();
        QDirIterator files(DataHome::path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly))
                everything += file.readAll();
        }
        for (const QString &secret : m_tokens + QStringList{Password})
            QVERIFY2(!everything.contains(secret.toUtf8()), qPrintable(secret));
    }
};

TDS_TEST(TanPaymentFlowTest)
#include "TanPaymentFlowTest.moc"
