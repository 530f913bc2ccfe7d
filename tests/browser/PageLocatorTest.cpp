#include "TestDatabase.h"
#include "TestRegistry.h"

#include "host/Settings.h"
#include "host/online/PageLocator.h"

#include <QSettings>
#include <QTest>

namespace {
// One line per parsed locator, so that a row states the whole result.
QString describe(const PageLocator &l)
{
    QStringList parts;
    if (l.hasUrl)
        parts << QStringLiteral("url[%1]").arg(l.url);
    if (l.hasElement) {
        const ElementRef &e = l.element;
        parts << (e.kind == ElementRef::Kind::Id
                      ? QStringLiteral("id[%1]").arg(e.id)
                      : QStringLiteral("form[%1#%2 %3#%4]").arg(e.form).arg(e.formIndex).arg(e.field).arg(e.fieldIndex));
    }
    if (l.hasHtml)
        parts << QStringLiteral("html[%1]").arg(l.html);
    return parts.join(QLatin1Char(' '));
}
} // namespace

class PageLocatorTest : public QObject
{
    Q_OBJECT
private slots:
    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("parsed");   // "" when refused
        const QString h = QStringLiteral("https://eportal.example");
        QTest::newRow("bar in text") << "@URL=https://www.example/iec/foportal;@HTML=Home | Income Tax Department"
                                     << "url[https://www.example/iec/foportal] html[Home | Income Tax Department]";
        QTest::newRow("trailing blank") << "@URL=" + h + "/iec/foservices/#/dashboard/e-pay-tax/tiles;@HTML=PAN: "
                                        << "url[" + h + "/iec/foservices/#/dashboard/e-pay-tax/tiles] html[PAN: ]";
        QTest::newRow("parenthesis") << "@HTML=Type of Payment (Minor Head)" << "html[Type of Payment (Minor Head)]";
        QTest::newRow("markup, no url") << "@HTML=>Session has expired!<" << "html[>Session has expired!<]";
        QTest::newRow("semicolon in text") << "@HTML=A&nbsp;B;C" << "html[A&nbsp;B;C]";
        QTest::newRow("id") << "@URL=" + h + "/iec/foservices/#/login;@ELEMENT=ID:panAdhaarUserId"
                            << "url[" + h + "/iec/foservices/#/login] id[panAdhaarUserId]";
        QTest::newRow("form field") << "@ELEMENT=FORM:selectform|R2" << "form[selectform#0 R2#0]";
        QTest::newRow("nth form") << "@ELEMENT=FORM:register,1|TAN_CAT_DDR_CD" << "form[register#1 TAN_CAT_DDR_CD#0]";
        QTest::newRow("nth field") << "@ELEMENT=FORM:TanRegistration|submit,0" << "form[TanRegistration#0 submit#0]";
        QTest::newRow("key in url") << "@URL=https://nsdl.example/etaxnew/PopServlet?rKey=;@ELEMENT=FORM:tax281|back"
                                    << "url[https://nsdl.example/etaxnew/PopServlet?rKey=] form[tax281#0 back#0]";
        QTest::newRow("any order") << "@HTML=x;@ELEMENT=ID:a;@URL=http://h/" << "url[http://h/] id[a] html[x]";

        const char *refused[] = {"", "URL=http://h/", "@URL", "@URL=", "@HTML=a;@HTML=b", "@URL=http://a/;@URL=http://b/",
                                 "@ELEMENT=ID:a;@ELEMENT=ID:b", "@TITLE=x", "@url=http://h/", "@URL=http://h/;@html=x",
                                 "@ELEMENT=XPATH://a", "@ELEMENT=ID:", "@ELEMENT=FORM:register", "@ELEMENT=FORM:|f",
                                 "@ELEMENT=FORM:f|", "@ELEMENT=FORM:f,x|g", "@ELEMENT=FORM:f,-1|g",
                                 "@ELEMENT=FORM:f|g,", "@ELEMENT=FORM:a|b|c", "@ELEMENT=id:a"};
        for (const char *text : refused)
            QTest::newRow(qPrintable(QStringLiteral("refused: ") + QLatin1String(text))) << QString::fromLatin1(text) << "";
    }
    void parse()
    {
        QFETCH(QString, text);
        QFETCH(QString, parsed);
        PageLocator locator;
        QString why;
        const bool ok = PageLocators::parse(text, locator, &why);
        QCOMPARE(ok, !parsed.isEmpty());
        if (ok)
            QCOMPARE(describe(locator), parsed);
        else
            QVERIFY2(!why.isEmpty(), "a refusal says why");
    }

    void urlMatches_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("current");
        QTest::addColumn<bool>("matches");
        QTest::newRow("same") << "https://h/iec/foservices/#/login" << "https://h/iec/foservices/#/login" << true;
        QTest::newRow("page adds slash") << "https://h/iec/foportal" << "https://h/iec/foportal/" << true;
        QTest::newRow("key value follows") << "https://h/etaxnew/PopServlet?rKey=" << "https://h/etaxnew/PopServlet?rKey=8F2A"
                                           << true;
        QTest::newRow("deeper route") << "https://h/iec/foservices/#/login" << "https://h/iec/foservices/#/login/password" << true;
        QTest::newRow("shallower route") << "https://h/iec/foservices/#/dashboard/e-pay-tax/tiles"
                                         << "https://h/iec/foservices/#/dashboard" << false;
        QTest::newRow("host in capitals") << "https://EPortal.Example/iec" << "https://eportal.example/iec/" << true;
        QTest::newRow("default port written") << "https://h:443/iec" << "https://h/iec" << true;
        QTest::newRow("bare host") << "https://h" << "https://h/" << true;
        QTest::newRow("other port") << "http://127.0.0.1:8081/a" << "http://127.0.0.1:8082/a" << false;
        QTest::newRow("other host") << "http://127.0.0.1/a" << "http://localhost/a" << false;
        QTest::newRow("other scheme") << "https://h/a" << "http://h/a" << false;
        QTest::newRow("path case") << "https://h/IEC" << "https://h/iec" << false;
    }
    void urlMatches()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, current);
        QFETCH(bool, matches);
        QCOMPARE(PageLocators::urlMatches(wanted, current), matches);
    }

    void judge_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("errorLocator");   // "" for none
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("wantedFound");       // element and text of the wanted locator
        QTest::addColumn<bool>("errorFound");
        QTest::addColumn<int>("verdict");
        const int pending = int(PageVerdict::Pending), matched = int(PageVerdict::Matched),
                  errorPage = int(PageVerdict::ErrorPage);
        const QString login = QStringLiteral("@URL=http://p/login;@ELEMENT=ID:user");
        const QString expired = QStringLiteral("@HTML=>Session has expired!<");
        QTest::newRow("matches") << login << "" << "http://p/login" << true << false << matched;
        QTest::newRow("element missing") << login << "" << "http://p/login" << false << false << pending;
        QTest::newRow("elsewhere") << login << "" << "http://p/home" << true << false << pending;
        QTest::newRow("error page wins") << login << expired << "http://p/login" << true << true << errorPage;
        QTest::newRow("error page while waiting") << login << expired << "http://p/home" << false << true << errorPage;
        QTest::newRow("no error page") << login << expired << "http://p/login" << true << false << matched;
        QTest::newRow("error page elsewhere") << login << "@URL=http://q/;@HTML=Oops" << "http://p/login" << true << true
                                              << matched;
    }
    void judge()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, errorLocator);
        QFETCH(QString, url);
        QFETCH(bool, wantedFound);
        QFETCH(bool, errorFound);
        QFETCH(int, verdict);
        PageLocator w, e;
        QVERIFY(PageLocators::parse(wanted, w));
        PageProbe probe{url, {PageCheck{wantedFound, wantedFound}}};
        if (!errorLocator.isEmpty()) {
            QVERIFY(PageLocators::parse(errorLocator, e));
            probe.checks.append(PageCheck{errorFound, errorFound});
        }
        QCOMPARE(int(PageLocators::judge(w, errorLocator.isEmpty() ? nullptr : &e, probe)), verdict);
    }

    // The settings a page wait reads; the environment decides headless mode for scripted runs.
    void waitSettings_data()
    {
        QTest::addColumn<QByteArray>("headlessEnv");
        QTest::addColumn<QVariant>("headlessFile");
        QTest::addColumn<QVariant>("pollFile");
        QTest::addColumn<bool>("headless");
        QTest::addColumn<int>("pollMs");
        QTest::newRow("defaults") << QByteArray() << QVariant() << QVariant() << false << 500;
        QTest::newRow("file") << QByteArray() << QVariant(true) << QVariant(200) << true << 200;
        QTest::newRow("env on") << QByteArray("1") << QVariant(false) << QVariant(5) << true << 50;
        QTest::newRow("env off") << QByteArray("0") << QVariant(true) << QVariant(999999) << false << 10000;
        QTest::newRow("env false") << QByteArray("false") << QVariant(true) << QVariant("x") << false << 50;
    }
    void waitSettings()
    {
        QFETCH(QByteArray, headlessEnv);
        QFETCH(QVariant, headlessFile);
        QFETCH(QVariant, pollFile);
        QFETCH(bool, headless);
        QFETCH(int, pollMs);
        QString error;
        QVERIFY2(TestDatabase::prepareHome(&error), qPrintable(error));
        const QByteArray savedEnv = qgetenv("TDSFORMS_BROWSER_HEADLESS");
        auto s = Settings::open();
        s->remove(QStringLiteral("browser"));
        if (headlessFile.isValid())
            s->setValue(QStringLiteral("browser/headless"), headlessFile);
        if (pollFile.isValid())
            s->setValue(QStringLiteral("browser/pollMilliseconds"), pollFile);
        s->sync();
        if (headlessEnv.isEmpty())
            qunsetenv("TDSFORMS_BROWSER_HEADLESS");
        else
            qputenv("TDSFORMS_BROWSER_HEADLESS", headlessEnv);
        const bool gotHeadless = Settings::headless();
        const int gotPoll = Settings::pagePollMilliseconds();
        s->remove(QStringLiteral("browser"));
        s->sync();
        if (savedEnv.isEmpty())
            qunsetenv("TDSFORMS_BROWSER_HEADLESS");
        else
            qputenv("TDSFORMS_BROWSER_HEADLESS", savedEnv);
        QCOMPARE(gotHeadless, headless);
        QCOMPARE(gotPoll, pollMs);
    }
};

TDS_TEST(PageLocatorTest)
#include "PageLocatorTest.moc"
