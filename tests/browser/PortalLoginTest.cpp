// The e-filing session and login in headless Chromium against the mock portal: each step's
// status text, the pauses the portal needs, the failures, and the password
// kept out of every message.
#include "HeadlessBrowser.h"
#include "MockItdPortal.h"
#include "PauseRecordingBrowser.h"
#include "TestRegistry.h"

#include "epay/PortalPages.h"
#include "epay/PortalSession.h"
#include "host/ServiceRegistry.h"

#include <QDir>
#include <QTest>

namespace {
const QString UserId = QStringLiteral("BLRA12345B");
const QString Password = QStringLiteral("Portal#Pass9");
} // namespace

class PortalLoginTest : public QObject
{
    Q_OBJECT

    MockItdPortal m_portal;
    std::shared_ptr<PauseRecordingBrowser> m_browser;
    QStringList m_messages;

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(HeadlessBrowser::configure(10, 50, &error), qPrintable(error));
        TDS_REQUIRE_BROWSER();
        QVERIFY(m_portal.start());
        m_portal.setAccount(UserId, Password);
        ServiceRegistry::registerBuiltins();
        auto real = createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction));
        QVERIFY(real);
        m_browser = std::make_shared<PauseRecordingBrowser>(real);
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

    // One browser for the whole class: the later rows start again from the home page.
    void openSession()
    {
        QStringList shown;
        const PortalResult opened = PortalSession(m_browser.get(), [&](const QString &text) { shown << text; })
                                        .open(QStringLiteral("host"), QDir::tempPath());
        QVERIFY2(opened.ok(), qPrintable(opened.message));
        QCOMPARE(shown, QStringList{"Opening Home Page ..."});
        QCOMPARE(m_browser->pauses, QList<int>{2});
        QCOMPARE(m_browser->ErrorLocators(), QStringLiteral("@HTML=>Session has expired!<"));
    }

    void login_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("route");        // a page of the portal changed for the row
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("cancelAfter");  // FlagCancel set once this status was shown
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("because");      // part of the wrapper's last error
        QTest::addColumn<QStringList>("statuses");
        const QStringList all{"Opening Login Home Page ...", "Filling Login Id ...", "Filling Login Password ...",
                              "Skip Profile Update ..."};
        const int accept = int(MockItdPortal::LoginAnswer::Accept);
        QTest::newRow("logged in") << accept << Password << "" << "" << "" << "" << "" << all;
        QTest::newRow("maximum of sessions: forced")
            << int(MockItdPortal::LoginAnswer::MaxAttempts) << Password << "" << "" << "" << "" << ""
            << QStringList{all.mid(0, 3) + QStringList{"Forced Login ...", "Skip Profile Update ..."}};
        QTest::newRow("wrong password") << accept << "Wrong#Pass1" << "" << "" << "" << "Failed to Verify 'Welcome' Page !"
                                        << "Timed out" << all.mid(0, 3);
        QTest::newRow("expired at the password") << accept << Password << "/login/password" << "<p>Session has expired!</p>"
                                                 << "" << "Failed to Verify 'Filling Login Id' Page !"
                                                 << "Session has expired" << all.mid(0, 2);
        QTest::newRow("cancelled at the login id") << accept << Password << "" << "" << "Filling Login Id ..." << "" << ""
                                                   << all.mid(0, 2);
    }
    void login()
    {
        QFETCH(int, answer);
        QFETCH(QString, typed);
        QFETCH(QString, route);
        QFETCH(QString, html);
        QFETCH(QString, cancelAfter);
        QFETCH(QString, failure);
        QFETCH(QString, because);
        QFETCH(QStringList, statuses);
        m_portal.setLoginAnswer(MockItdPortal::LoginAnswer(answer));
        if (!route.isEmpty())
            m_portal.setView(route, html);
        // A wait for the welcome page that must fail ends sooner.
        const bool waitsOut = failure.contains(QLatin1String("Welcome")) || answer != int(MockItdPortal::LoginAnswer::Accept);
        HeadlessBrowser::setWaitSeconds(waitsOut ? 1 : 10);
        const int loginsBefore = int(m_portal.logins().size());

        QStringList shown;
        PortalSession session(m_browser.get(), [&](const QString &text) { shown << text; },
                              [&] { return !cancelAfter.isEmpty() && shown.contains(cancelAfter); });
        QVERIFY(m_browser->OpenURL(PortalPages::homeAddress()));
        QCOMPARE(m_browser->WaitForResponsePage(PortalPages::homeLocator()), QStringLiteral("OK"));
        const PortalResult result = session.login(UserId, typed);
        m_messages << result.message;

        QCOMPARE(shown, statuses);
        QCOMPARE(result.cancelled(), !cancelAfter.isEmpty());
        QCOMPARE(result.failure, failure);
        if (!failure.isEmpty()) {
            QVERIFY(result.failed());
            QVERIFY2(result.message.startsWith(failure + QStringLiteral("\r\n\r\n")), qPrintable(result.message));
            QVERIFY2(result.message.contains(because), qPrintable(result.message));
        } else {
            QCOMPARE(result.message, QString());
        }
        QVERIFY(!result.message.contains(typed));
        if (statuses.contains(QStringLiteral("Filling Login Password ..."))) {
            QCOMPARE(m_browser->pauses, QList<int>{7});
            QCOMPARE(m_portal.logins().size(), loginsBefore + 1);
            QCOMPARE(m_portal.logins().last(), (QPair<QString, QString>{UserId, typed}));
        } else {
            QCOMPARE(m_browser->pauses, QList<int>());
            QCOMPARE(m_portal.logins().size(), loginsBefore);
        }
        if (result.ok()) {
            // On the dashboard, the profile prompt gone.
            QCOMPARE(m_browser->WaitForResponsePage(PortalPages::dashboardLocator()), QStringLiteral("OK"));
            QCOMPARE(m_browser->objectSWC()->executeScript(QStringLiteral("return document.querySelectorAll('.secondaryButton').length;")),
                     QVariant(0));
        }
    }

    void passwordInNoMessage()
    {
        QVERIFY(!m_messages.isEmpty());
        for (const QString &message : std::as_const(m_messages))
            QVERIFY2(!message.contains(Password), qPrintable(message));
    }
};

TDS_TEST(PortalLoginTest)
#include "PortalLoginTest.moc"
