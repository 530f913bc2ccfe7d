// The earlier challan filled on mock NSDL pages in headless Chromium: what the page holds at
// the end, and each failure's message at its step.
#include "HeadlessBrowser.h"
#include "MockPortal.h"
#include "TestRegistry.h"

#include "challan/NsdlHandOff.h"
#include "host/IOnlineAction.h"
#include "host/Settings.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray page(const QString &body)
{
    return QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>e-Tax</title></head><body>%1</body></html>")
        .arg(body)
        .toUtf8();
}

const char *const kSelect = R"(<form name="selectform" action="/etaxnew/PopServlet?rKey=81" method="post">
  <input type="radio" name="R2" value="280"><input type="radio" name="R2" value="281"> <input type="submit" value="Go"></form>)";

const char *const kChallan = R"(<form name="tax281" action="/etaxnew/pay" method="post">
  <input type="radio" name="MajorHead" value="0020"><input type="radio" name="MajorHead" value="0021">
  <input type="radio" name="MinorHead" value="200"><input type="radio" name="MinorHead" value="400">
  <select name="NaturePayment"><option value="">Select</option><option>192 - Salary</option><option>94C - Payment to contractors</option></select>
  <input name="TAN"><select name="AssessYear"><option>2024-25</option><option>2025-26</option></select>
  <input name="Add_Line1"><input name="Add_Line2"><input name="Add_Line3"><input name="Add_Line4"><input name="Add_Line5">
  <select name="Add_State"><option>KARNATAKA</option><option>MAHARASHTRA</option></select>
  <input name="Add_PIN"><input name="Add_EMAIL"><input name="Add_MOBILE"><input type="button" name="back" value="Back"></form>)";

NsdlHandOff::Challan demoChallan(const QString &code)
{
    NsdlHandOff::Challan c;
    c.company = true;
    c.regularAssessment = true;
    c.sectionCode = code;
    c.tan = QStringLiteral("MUMD12345E");
    c.asYear = QStringLiteral("2025-26");
    c.address = {QStringLiteral("401"), QStringLiteral("SUNRISE"), QStringLiteral("NARIMAN ROAD"), QStringLiteral("FORT"),
                 QStringLiteral("MUMBAI"), QStringLiteral("MAHARASHTRA"), QStringLiteral("400021"), {},
                 QStringLiteral("a@b.example"), {}, QStringLiteral("9820012345"), {}};
    return c;
}

} // namespace

class NsdlHandOffTest : public QObject
{
    Q_OBJECT

    MockPortal m_portal;
    QTemporaryDir m_temp;

    QString value(IOnlineAction &browser, const QString &script)
    {
        QVariant result;
        browser.runScriptAndWait(QStringLiteral("return ") + script + QLatin1Char(';'), &result);
        return result.toString();
    }

private slots:
    void initTestCase()
    {
        TDS_HEADLESS_BROWSER(15);
        QVERIFY(m_portal.start());
        Settings::setValue(QStringLiteral("portal/nsdl"), m_portal.baseUrl());
        m_portal.setPage(QStringLiteral("/etaxnew/tdsnontds.jsp"), QString::fromUtf8(page(QString::fromLatin1(kSelect))));
        m_portal.setHandler(QStringLiteral("/etaxnew/PopServlet"), [](const MockPortal::Request &) {
            MockPortal::Reply r;
            r.body = page(QString::fromLatin1(kChallan));
            return r;
        });
    }

    // The challan is filled and the browser left with it; nothing is submitted for payment.
    void fillsTheChallan_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("nature");
        QTest::newRow("listed section") << "94C" << "94C - Payment to contractors";
        QTest::newRow("section not on the page") << "4LB" << "Select";
    }
    void fillsTheChallan()
    {
        QFETCH(QString, code);
        std::shared_ptr<IOnlineAction> browser = HeadlessBrowser::create();
        QVERIFY(browser);
        QStringList progress;
        const NsdlHandOff::Outcome out = NsdlHandOff::run(*browser, demoChallan(code), m_temp.path(),
                                                          [&](const QString &t) { progress << t; }, [] { return false; });
        QVERIFY2(out.message.isEmpty(), qPrintable(out.message));
        QVERIFY(progress.contains(QStringLiteral("Filling Challan ...")));
        QCOMPARE(m_portal.lastRequest(QStringLiteral("/etaxnew/PopServlet")).field(QStringLiteral("R2")), QStringLiteral("281"));
        const QString form = QStringLiteral("document.forms.tax281.");
        QCOMPARE(value(*browser, QStringLiteral("document.querySelector('input[name=MajorHead]:checked').value")), QStringLiteral("0020"));
        QCOMPARE(value(*browser, QStringLiteral("document.querySelector('input[name=MinorHead]:checked').value")), QStringLiteral("400"));
        QTEST(value(*browser, form + QStringLiteral("NaturePayment.selectedOptions[0].text")), "nature");
        QCOMPARE(value(*browser, form + QStringLiteral("TAN.value")), QStringLiteral("MUMD12345E"));
        QCOMPARE(value(*browser, form + QStringLiteral("AssessYear.value")), QStringLiteral("2025-26"));
        QCOMPARE(value(*browser, form + QStringLiteral("Add_Line5.value")), QStringLiteral("MUMBAI"));
        QCOMPARE(value(*browser, form + QStringLiteral("Add_State.value")), QStringLiteral("MAHARASHTRA"));
        QCOMPARE(value(*browser, form + QStringLiteral("Add_MOBILE.value")), QStringLiteral("9820012345"));
        QVERIFY(m_portal.lastRequest(QStringLiteral("/etaxnew/pay")).path.isEmpty());
        browser->Quit();
    }

    // A page that is not the expected one ends the run with the step's message; a stop
    // between pages ends it quietly. The browser is closed either way.
    void failsAtItsStep_data()
    {
        QTest::addColumn<QString>("selectPath");
        QTest::addColumn<bool>("stop");
        QTest::addColumn<QString>("message");
        QTest::newRow("selection page missing") << "/etaxnew/other.jsp" << false << "Failed to Verify 'e-Tax Payment System' Page !";
        QTest::newRow("stopped") << "/etaxnew/tdsnontds.jsp" << true << "";
    }
    void failsAtItsStep()
    {
        QFETCH(QString, selectPath);
        QFETCH(bool, stop);
        QFETCH(QString, message);
        HeadlessBrowser::setWaitSeconds(2);
        if (selectPath != QLatin1String("/etaxnew/tdsnontds.jsp"))
            Settings::setValue(QStringLiteral("portal/nsdl"), m_portal.baseUrl() + QStringLiteral("/elsewhere"));
        const NsdlHandOff::Outcome out = NsdlHandOff::run(demoChallan(QStringLiteral("94C")), m_temp.path(), {},
                                                          [stop] { return stop; });
        Settings::setValue(QStringLiteral("portal/nsdl"), m_portal.baseUrl());
        HeadlessBrowser::setWaitSeconds(15);
        QCOMPARE(out.cancelled, stop);
        QCOMPARE(out.message.section(QLatin1Char('\n'), 0, 0), message);
        QCOMPARE(out.message.contains(QLatin1String("\n\n")), !message.isEmpty());
    }
};

TDS_TEST(NsdlHandOffTest)
#include "NsdlHandOffTest.moc"
