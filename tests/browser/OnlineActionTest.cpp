// The online-action wrapper driving headless Chromium against the mock portal; one browser
// for the whole class. The locator grammar itself: PageLocatorTest; here the waits that need
// a page.
#include "HeadlessBrowser.h"
#include "MockPortal.h"
#include "TestRegistry.h"

#include "host/IOnlineAction.h"

#include <QElapsedTimer>
#include <QTest>

namespace {

QString page(const QString &body)
{
    return QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"></head><body>%1</body></html>").arg(body);
}

const char *const ChallanForm = R"(
<form name="tax281" action="/etaxnew/submit" method="post">
  <input type="radio" name="MinorHead" value="200" checked><input type="radio" name="MinorHead" value="400">
  <select name="NaturePayment"><option value="">Select</option><option value="94C">194C - Contractors</option></select>
  <input name="Add_Line1"><input type="checkbox" id="agree" name="agree"><input type="checkbox" name="notify" checked>
  <input type="button" name="back" value="Back"><input type="button" name="submit" value="Proceed">
</form>)";

} // namespace

class OnlineActionTest : public QObject
{
    Q_OBJECT

    MockPortal m_portal;
    std::shared_ptr<IOnlineAction> m_browser;

    QString url(const QString &path) const { return m_portal.url(path); }
    bool open(const QString &path) { return m_browser->OpenURL(url(path)); }

private slots:
    void initTestCase()
    {
        TDS_HEADLESS_BROWSER(10);
        QVERIFY(m_portal.start());
        const QString registerForm = QStringLiteral("<form name=\"register\"><select name=\"TAN_CAT_DDR_CD\"></select></form>");
        m_portal.setPage(QStringLiteral("/tan/both"), page(registerForm + registerForm));
        m_portal.setPage(QStringLiteral("/etaxnew/PopServlet"), page(QString::fromLatin1(ChallanForm)));
        m_portal.setHandler(QStringLiteral("/etaxnew/submit"), [](const MockPortal::Request &) {
            MockPortal::Reply r;
            r.body = page(QStringLiteral("<p>Challan received</p>")).toUtf8();
            return r;
        });
        m_portal.setPage(QStringLiteral("/expired"),
                         page(QStringLiteral("<input id=\"panAdhaarUserId\"><span>Session has expired!</span>")));
        // A single-page application: the route and the field come a moment after the load.
        m_portal.setPage(QStringLiteral("/iec/foservices/"),
                         page(QStringLiteral("<div id=\"app\"></div><script>setTimeout(function () {"
                                             " location.hash = '#/login';"
                                             " document.getElementById('app').innerHTML = '<input id=\"panAdhaarUserId\">';"
                                             "}, 300);</script>")));
        m_portal.setPage(QStringLiteral("/login"), page(QStringLiteral(
            "<form name=\"login\" action=\"/welcome\" method=\"post\">"
            "<input id=\"panAdhaarUserId\" name=\"user\"><input id=\"loginPasswordField\" name=\"pass\" type=\"password\">"
            "<button type=\"button\" class=\"large-button-primary width\" onclick=\"location.href='/wrong'\">Back</button>"
            "<button type=\"submit\" class=\"large-button-primary  width marTop16\">Continue</button></form>")));
        m_portal.setHandler(QStringLiteral("/welcome"), [](const MockPortal::Request &request) {
            MockPortal::Reply r;
            r.body = page(QStringLiteral("<p>Welcome %1</p>").arg(request.field(QStringLiteral("user")).toHtmlEscaped()))
                         .toUtf8();
            return r;
        });

        m_browser = HeadlessBrowser::create();
        QVERIFY(m_browser);
        QVERIFY2(m_browser->InitComponent(QStringLiteral("host"), QStringLiteral("GC"), QDir::tempPath(), false, 1),
                 qPrintable(m_browser->LastError()));
        QCOMPARE(m_browser->ComponentType(), QStringLiteral("GC"));
    }

    void cleanupTestCase()
    {
        if (m_browser)
            m_browser->Quit();
        m_browser.reset();
    }

    void init()
    {
        m_browser->setErrorLocators(QString());
        HeadlessBrowser::setWaitSeconds(10);
    }

    void waitForPage_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("locator");        // "%1": the portal's address
        QTest::addColumn<QString>("errorLocator");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QStringList>("inError");    // parts of LastError
        QTest::addColumn<QString>("notInError");
        const QString expired = QStringLiteral("@HTML=>Session has expired!<");
        QTest::newRow("route and field come later") << "/iec/foservices/" << "@URL=%1/iec/foservices/#/login;@ELEMENT=ID:panAdhaarUserId"
                                                    << expired << "OK" << QStringList() << "";
        QTest::newRow("second form of two") << "/tan/both" << "@ELEMENT=FORM:register,1|TAN_CAT_DDR_CD" << "" << "OK"
                                            << QStringList() << "";
        QTest::newRow("error page first") << "/expired" << "@ELEMENT=ID:panAdhaarUserId" << expired << "ERROR"
                                          << QStringList{">Session has expired!<"} << "";
        QTest::newRow("elsewhere, key kept out") << "/etaxnew/PopServlet?rKey=K3Y9" << "@URL=%1/other;@HTML=Back" << ""
                                                 << "TIMEOUT" << QStringList{"Timed out after 1 seconds", "/etaxnew/PopServlet"} << "K3Y9";
    }
    void waitForPage()
    {
        QFETCH(QString, path);
        QFETCH(QString, locator);
        QFETCH(QString, errorLocator);
        QFETCH(QString, result);
        QFETCH(QStringList, inError);
        QFETCH(QString, notInError);
        QVERIFY2(open(path), qPrintable(m_browser->LastError()));
        m_browser->setErrorLocators(errorLocator);
        HeadlessBrowser::setWaitSeconds(result == QLatin1String("TIMEOUT") ? 1 : 10);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(m_browser->WaitForResponsePage(locator.replace(QStringLiteral("%1"), m_portal.baseUrl())), result);
        if (result == QLatin1String("ERROR"))
            QVERIFY2(clock.elapsed() < 3000, "an error page ends the wait at once");
        for (const QString &part : inError)
            QVERIFY2(m_browser->LastError().contains(part), qPrintable(m_browser->LastError()));
        if (!notInError.isEmpty())
            QVERIFY(!m_browser->LastError().contains(notInError));
        if (result == QLatin1String("OK"))
            QCOMPARE(m_browser->LastError(), QString());
    }

    void loginFillAndClick()
    {
        QVERIFY(open(QStringLiteral("/login")));
        QCOMPARE(m_browser->WaitForResponsePage(QStringLiteral("@URL=%1/login;@ELEMENT=ID:panAdhaarUserId").arg(m_portal.baseUrl())),
                 QStringLiteral("OK"));
        auto user = m_browser->getElementById(QStringLiteral("panAdhaarUserId"));
        auto pass = m_browser->getElementById(QStringLiteral("loginPasswordField"));
        QVERIFY(user && pass);
        QVERIFY(user->SendKeys(QStringLiteral("ABCDE1234F")));
        QVERIFY(pass->SendKeys(QStringLiteral("Fake#Pass 1")));
        // The first button's class is a prefix of the wanted one: the whole value must match.
        auto next = m_browser->getElementByTagOthAttrib(QStringLiteral("button"), QStringLiteral("class"),
                                                        QStringLiteral("large-button-primary width marTop16"));
        QVERIFY2(next, qPrintable(m_browser->LastError()));
        QCOMPARE(next->Text(), QStringLiteral("Continue"));
        QVERIFY2(m_browser->ClickAndWait(next), qPrintable(m_browser->LastError()));
        // Waited for: the site has the form before the next look at the page.
        const MockPortal::Request posted = m_portal.lastRequest(QStringLiteral("/welcome"));
        QCOMPARE(posted.method, QByteArray("POST"));
        QCOMPARE(posted.field(QStringLiteral("pass")), QStringLiteral("Fake#Pass 1"));
        QCOMPARE(m_browser->WaitForResponsePage(QStringLiteral("@URL=%1/welcome;@HTML=Welcome ABCDE1234F<").arg(m_portal.baseUrl())),
                 QStringLiteral("OK"));

        QVERIFY(!m_browser->getElementById(QStringLiteral("panAdhaarUserId")));
        QVERIFY(m_browser->LastError().contains(QLatin1String("panAdhaarUserId")));
        QVERIFY(!m_browser->ClickAndWait(nullptr));
    }

    // What NsdlHandOffTest does not reach: a failed choice, a click that stays on the page,
    // and a submit of a form with a field named "submit", as the site's forms have.
    void documentFillAndSubmit()
    {
        QVERIFY(open(QStringLiteral("/etaxnew/PopServlet?rKey=A1")));
        auto document = m_browser->CreateHtmlDocument();
        auto form = document ? document->Forms(QStringLiteral("tax281")) : nullptr;
        QVERIFY(form);
        auto nature = form->Item(QStringLiteral("NaturePayment"));
        QVERIFY(!nature->setTextSelected(QStringLiteral("195 - Non-residents")));
        QCOMPARE(nature->TextSelected(), QStringLiteral("Select"));
        QVERIFY(nature->setTextSelected(QStringLiteral("194C - Contractors")));
        QVERIFY(form->Item(QStringLiteral("Add_Line1"))->setValue(QStringLiteral("12, M.G. Road & Co")));
        QVERIFY(document->getElementById(QStringLiteral("agree"))->setChecked(true));
        QElapsedTimer clock;
        clock.start();
        QVERIFY(m_browser->ClickAndWait(form->Item(QStringLiteral("back"))));
        QVERIFY(clock.elapsed() < 3000);
        QVERIFY2(m_browser->SubmitAndWait(form), qPrintable(m_browser->LastError()));
        QVariant shown;
        QVERIFY(m_browser->runScriptAndWait(QStringLiteral("return document.body.innerText;"), &shown));
        QCOMPARE(shown.toString(), QStringLiteral("Challan received"));
        const MockPortal::Request posted = m_portal.lastRequest(QStringLiteral("/etaxnew/submit"));
        const QList<QPair<QString, QString>> expected{{"MinorHead", "200"}, {"NaturePayment", "94C"},
                                                      {"Add_Line1", "12, M.G. Road & Co"}, {"agree", "on"}, {"notify", "on"}};
        for (const auto &[name, value] : expected)
            QCOMPARE(posted.field(name), value);
    }
};

TDS_TEST(OnlineActionTest)
#include "OnlineActionTest.moc"
