#include "TestRegistry.h"

#include "host/online/PageLocator.h"

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
        QTest::newRow("semicolon in text") << "@HTML=A&nbsp;B;C" << "html[A&nbsp;B;C]";
        QTest::newRow("nth form") << "@ELEMENT=FORM:register,1|TAN_CAT_DDR_CD" << "form[register#1 TAN_CAT_DDR_CD#0]";
        QTest::newRow("nth field") << "@ELEMENT=FORM:TanRegistration|submit,0" << "form[TanRegistration#0 submit#0]";
        QTest::newRow("key in url") << "@URL=https://nsdl.example/etaxnew/PopServlet?rKey=;@ELEMENT=FORM:tax281|back"
                                    << "url[https://nsdl.example/etaxnew/PopServlet?rKey=] form[tax281#0 back#0]";

        const char *refused[] = {"", "@URL=", "@HTML=a;@HTML=b", "@TITLE=x", "@url=http://h/", "@ELEMENT=ID:",
                                 "@ELEMENT=FORM:register", "@ELEMENT=FORM:f,-1|g", "@ELEMENT=FORM:f|g,"};
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
        QTest::newRow("page adds slash") << "https://h/iec/foportal" << "https://h/iec/foportal/" << true;
        QTest::newRow("key value follows") << "https://h/etaxnew/PopServlet?rKey=" << "https://h/etaxnew/PopServlet?rKey=8F2A"
                                           << true;
        QTest::newRow("shallower route") << "https://h/iec/foservices/#/dashboard/e-pay-tax/tiles"
                                         << "https://h/iec/foservices/#/dashboard" << false;
        QTest::newRow("other port") << "http://127.0.0.1:8081/a" << "http://127.0.0.1:8082/a" << false;
        QTest::newRow("path case") << "https://h/IEC" << "https://h/iec" << false;
    }
    void urlMatches()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, current);
        QTEST(PageLocators::urlMatches(wanted, current), "matches");
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
        QTest::newRow("elsewhere") << login << "" << "http://p/home" << true << false << pending;
        QTest::newRow("error page wins") << login << expired << "http://p/login" << true << true << errorPage;
        QTest::newRow("error page while waiting") << login << expired << "http://p/home" << false << true << errorPage;
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
};

TDS_TEST(PageLocatorTest)
#include "PageLocatorTest.moc"
