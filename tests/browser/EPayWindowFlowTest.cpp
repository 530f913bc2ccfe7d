// The e-pay window driving headless Chromium on the mock portal, as an operator would use
// it: mode, bank, login, proceed; the typed password stored sealed. The hand-over to the
// portal actions component: EPayWindowTest.
#include "HeadlessBrowser.h"
#include "MockItdPortal.h"
#include "PauseRecordingBrowser.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "TestRegistry.h"

#include "epay/EPayWindow.h"
#include "host/IDataObject.h"
#include "host/ServiceRegistry.h"
#include "host/online/OnlineActionWrapper.h"
#include "shared/modbase.h"

#include <QComboBox>
#include <QFrame>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace {

const QString Tan = QStringLiteral("BLRA12345B");
const QString Password = QStringLiteral("Portal#Pass9");

// The wrapper of the window's last run; its pauses are recorded, not waited.
std::weak_ptr<PauseRecordingBrowser> lastBrowser;

} // namespace

class EPayWindowFlowTest : public QObject
{
    Q_OBJECT

    MockItdPortal m_portal;
    ScriptedDialogs m_dialogs;
    IDataObject *m_data = nullptr;

private slots:
    void initTestCase()
    {
        TDS_HEADLESS_BROWSER(10);
        TDS_DB_SETUP();
        ServiceRegistry::registerBuiltins();
        ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::OnlineAction), [] {
            auto browser = std::make_shared<PauseRecordingBrowser>(
                std::dynamic_pointer_cast<IOnlineAction>(createOnlineAction()));
            lastBrowser = browser;
            return browser;
        });
        modbase::resetForTests();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
        m_data = modbase::dataObject();
        QVERIFY(m_data->isConnected() || m_data->connect());
        QVERIFY(m_data->ConQuery(
            QStringLiteral("INSERT INTO Main_Info (Code_No, Name, Tanno) VALUES ('D01', 'Sri Ram Traders', '%1')").arg(Tan)));
        m_data->setCodeno(QStringLiteral("D01"));
        QVERIFY(m_portal.start(Tan, Password));
    }
    void cleanupTestCase()
    {
        ServiceRegistry::unregisterFactory(QString::fromLatin1(ProgId::OnlineAction));
        TestDatabase::tearDown();
    }

    void paidToTheBanksPage()
    {
        auto w = std::make_unique<frmePayITD>();
        w->setDialogs(&m_dialogs);
        w->InitMe(QStringLiteral("2025"), Tan, QStringLiteral("0020"), QStringLiteral("200"), QStringLiteral("1500.50"),
                  QStringLiteral("100"), QStringLiteral("64"), QStringLiteral("0"), QStringLiteral("0"),
                  QStringLiteral("200"), QStringLiteral("50"), QString(), 0, QStringLiteral("TAN"), nullptr, QString());
        w->show();
        QComboBox *banks = w->bankList(0);
        banks->setCurrentIndex(banks->findText(QStringLiteral("State Bank Of India")));
        w->cmdePayITDClicked(2);
        w->TxtPwd()->setText(Password);
        w->CmdProceedClicked();
        QVERIFY2(w->lastResult().ok(), qPrintable(w->lastResult().message));
        QVERIFY(m_dialogs.asked.isEmpty());
        QCOMPARE(w->lblprog()->text(), QStringLiteral("FillChallan_GC"));
        QVERIFY(w->famMain()->isEnabled() && !w->famprog()->isVisible());
        QCOMPARE(m_portal.logins().last(), (QPair<QString, QString>{Tan, Password}));

        const auto browser = lastBrowser.lock();
        QVERIFY(browser);
        QCOMPARE(browser->pauses, (QList<int>{2, 7}));
        const QJsonObject got = MockItdPortal::received(*browser);
        QCOMPARE(got.value("assessmentYear").toString(), QStringLiteral("2025-26"));
        QCOMPARE(got.value("majorHead").toString(), QStringLiteral("0020"));
        QCOMPARE(got.value("bank").toString(), QStringLiteral("SBIN"));
        // Up to 2026 the fee goes under others.
        QCOMPARE(got.value("breakup").toObject().value("othersAmt").toString(), QStringLiteral("250"));

        // The typed password is kept, sealed.
        const QStringList stored = TestDatabase::rows(*m_data, QStringLiteral("SELECT LoginPwd FROM ItdLoginTanU"));
        QCOMPARE(stored.size(), 1);
        QVERIFY(stored.first().startsWith(QLatin1String("$sbx1$")));
        QVERIFY(!stored.first().contains(Password));
    }
};

TDS_TEST(EPayWindowFlowTest)
#include "EPayWindowFlowTest.moc"
