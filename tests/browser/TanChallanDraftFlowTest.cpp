// The TAN challan draft in a logged-in headless Chromium against the mock portal: the three
// posts with the session's token and the portal's reference carried on, a refused reply, and
// the token and password kept out of messages and files. The bodies key by key: TanDraftBodyTest.
#include "HeadlessBrowser.h"
#include "MockItdPortal.h"
#include "PauseRecordingBrowser.h"
#include "TestRegistry.h"

#include "epay/PortalPages.h"
#include "epay/PortalSession.h"
#include "epay/TanChallanDraft.h"
#include "host/DataHome.h"
#include "json/JSON.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>

namespace {

const QString Password = QStringLiteral("Portal#Pass9");

TanDraftPayment payment()
{
    TanDraftPayment p;
    p.tan = QStringLiteral("BLRA12345B");
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

QString valueOf(const QByteArray &body, const QString &key)
{
    const JsonValue whole = ParseJson(QString::fromUtf8(body));
    const JsonValue *formData = whole.dictionary() ? whole.dictionary()->find(QStringLiteral("formData")) : nullptr;
    const JsonValue *value = formData && formData->dictionary() ? formData->dictionary()->find(key) : nullptr;
    if (!value)
        return QStringLiteral("<absent>");
    return value->isNumber() ? value->toDecimal().toString() : value->toString();
}

} // namespace

class TanChallanDraftFlowTest : public QObject
{
    Q_OBJECT

    MockItdPortal m_portal;
    std::shared_ptr<PauseRecordingBrowser> m_browser;
    QStringList m_shown;   // messages and details of every run
    QStringList m_tokens;

    void logIn()
    {
        PortalSession session(m_browser.get());
        PortalResult result = session.open(QStringLiteral("host"), QDir::tempPath());
        if (result.ok())
            result = session.login(QStringLiteral("BLRA12345B"), Password);
        QVERIFY2(result.ok(), qPrintable(result.message));
        m_tokens << m_portal.authToken();
    }

private slots:
    void initTestCase()
    {
        TDS_HEADLESS_BROWSER(10);
        QVERIFY(m_portal.start(QStringLiteral("BLRA12345B"), Password));
        m_browser = std::make_shared<PauseRecordingBrowser>(HeadlessBrowser::create());
        logIn();
    }
    void cleanupTestCase()
    {
        if (m_browser)
            m_browser->Quit();
    }
    void init() { m_portal.clearDrafts(); }

    void savedAndContinued()
    {
        TanChallanDraft draft(m_browser.get());
        const PortalResult result = draft.run(payment());
        m_shown << result.message << result.detail;
        QVERIFY2(result.ok(), qPrintable(result.message));
        QCOMPARE(m_browser->WaitForResponsePage(PortalPages::ePayDashboardLocator()), QStringLiteral("OK"));

        const auto posts = m_portal.draftPosts();
        QCOMPARE(posts.size(), 3);
        const QString reference = valueOf(m_portal.draftPosts().at(1).body, QStringLiteral("pymntRefNum"));
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
    void replyFailure()
    {
        m_portal.queueDraftReply(R"({"successFlag":"false","errors":[{"code":"EF1","desc":"Invalid assessment year"}]})");
        QStringList statuses;
        TanChallanDraft draft(m_browser.get(), [&](const QString &text) { statuses << text; });
        const PortalResult result = draft.run(payment());
        m_shown << result.message << result.detail;
        const QString failure = QStringLiteral("Failed to Save 'Tax Applicable Details' Page !");
        QCOMPARE(result.failure, failure);
        QVERIFY2(result.message.startsWith(failure + QStringLiteral("\r\n\r\n")), qPrintable(result.message));
        QVERIFY2(result.detail.contains(QLatin1String("EF1: Invalid assessment year")), qPrintable(result.detail));
        QCOMPARE(m_portal.draftPosts().size(), 1);
        QCOMPARE(statuses.size(), 1);
        QCOMPARE(draft.paymentReference(), QString());
    }

    // Nothing of the session is written anywhere, nor shown.
    void tokenAndPasswordKeptOut()
    {
        QVERIFY(!m_tokens.isEmpty());
        QByteArray everything = m_shown.join(QLatin1Char('\n')).toUtf8();
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

TDS_TEST(TanChallanDraftFlowTest)
#include "TanChallanDraftFlowTest.moc"
