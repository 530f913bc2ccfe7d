// Starting and ending a browser session: a refused start, and that nothing is left running
// once the wrapper is done (a missing driver: EPayWindowTest). Also the general helper's POST
// against a local server: what the caller gets back for each kind of answer (what the server
// receives: the draft's posts in TanPaymentFlowTest).
#include "HeadlessBrowser.h"
#include "MockPortal.h"
#include "TestRegistry.h"

#include "host/IGeneralHelper.h"
#include "host/ServiceRegistry.h"
#include "host/online/OnlineActionWrapper.h"
#include "host/online/WebDriverSession.h"

#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

class BrowserLifecycleTest : public QObject
{
    Q_OBJECT

    MockPortal m_server;

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(HeadlessBrowser::configure(10, 50, &error), qPrintable(error));
        QVERIFY(m_server.start());
        MockPortal::Reply refused;
        refused.status = 401;
        refused.contentType = "application/json";
        refused.body = R"({"errors":[{"code":"EF401","desc":"Unauthorized"}]})";
        m_server.setReply(QStringLiteral("/refused"), refused);
        MockPortal::Reply empty;
        empty.status = 503;
        m_server.setReply(QStringLiteral("/down"), empty);
        m_server.setPage(QStringLiteral("/"), QStringLiteral("<p>up</p>"));
    }

    void helperAnswers_data()
    {
        QTest::addColumn<QString>("url");     // "%1": the server
        QTest::addColumn<QString>("reply");   // what the reply starts with
        QTest::newRow("refused with a reason") << "%1/refused" << R"({"errors":[{"code":"EF401")";
        QTest::newRow("error without a body") << "%1/down" << "#ERROR;";
        QTest::newRow("not an address") << "no address" << "#ERROR;Not an address";
    }
    void helperAnswers()
    {
        QFETCH(QString, url);
        QFETCH(QString, reply);
        ServiceRegistry::registerBuiltins();
        const auto helper = createObjectAs<IGeneralHelper>(QString::fromLatin1(ProgId::GeneralHelper));
        QVERIFY(helper);
        const QString got = helper->HttpPost(url.replace(QStringLiteral("%1"), m_server.baseUrl()), QStringLiteral("Bearer x"),
                                             QString(), QStringLiteral("{}"), QStringLiteral("application/json"), QString());
        QVERIFY2(got.startsWith(reply), qPrintable(got));
    }

    // Every call after a refused start fails and says so; none crashes.
    void refusedStart()
    {
        OnlineActionWrapper browser;
        QVERIFY(!browser.InitComponent(QStringLiteral("host"), QStringLiteral("IE"), QDir::tempPath(), false, 1));
        QVERIFY2(browser.LastError().contains(QLatin1String("\"IE\" is not supported")), qPrintable(browser.LastError()));
        QVERIFY(!browser.session());
        QVERIFY(!browser.OpenURL(QStringLiteral("http://127.0.0.1:9/")));
        QVERIFY(browser.LastError().contains(QLatin1String("not started")));
        QCOMPARE(browser.WaitForResponsePage(QStringLiteral("@HTML=x")), QStringLiteral("ERROR"));
        QVERIFY(!browser.objectSWC());
        QVERIFY(!browser.CreateHtmlDocument());
        QVERIFY(!browser.getElementById(QStringLiteral("x")));
        QCOMPARE(browser.getCookiesITD(), QString());
        browser.ShowBrowser();
        browser.Quit();
    }

    // The wrapper going away ends it all, even after the browser was shown (a headless
    // browser is no use to anyone afterwards). Quit: TanPaymentFlowTest's cancelled run.
    void nothingLeftRunning()
    {
        TDS_REQUIRE_BROWSER();
        QTemporaryDir temp;
        QLabel label;
        qint64 driverPid = 0;
        QString profile;
        {
            auto browser = std::make_unique<OnlineActionWrapper>();
            browser->SetLblProg(&label, 400);
            QVERIFY2(browser->InitComponent(temp.path(), QStringLiteral("Browser Selection")), qPrintable(browser->LastError()));
            QCOMPARE(label.text(), QStringLiteral("Starting Browser ..."));
            driverPid = browser->session()->driverPid();
            profile = browser->session()->profileDir();
            QVERIFY(profile.startsWith(temp.path()));
            QVERIFY(HeadlessBrowser::processRunsWith(profile));
            QVERIFY(browser->OpenURL(m_server.url(QStringLiteral("/"))));
            browser->ShowBrowser();
        }
        QVERIFY(driverPid > 0);
        QTRY_VERIFY_WITH_TIMEOUT(::kill(pid_t(driverPid), 0) != 0, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!HeadlessBrowser::processRunsWith(profile), 5000);
        QVERIFY(!QDir(profile).exists());
    }
};

TDS_TEST(BrowserLifecycleTest)
#include "BrowserLifecycleTest.moc"
