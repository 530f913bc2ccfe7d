// The e-pay form without a portal: what InitMe keeps, the checks of the mode and the login,
// the login panel, the hand-over to the portal actions component, and a run whose driver is
// missing.
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "TestRegistry.h"

#include "epay/EPayModes.h"
#include "epay/EPayWindow.h"
#include "epay/ItdActions.h"
#include "host/IDataObject.h"
#include "host/ServiceRegistry.h"
#include "host/Settings.h"
#include "shared/modbase.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <memory>

namespace {

// Records what the form asks of the portal actions component.
class RecordingItdActions : public IItdActions
{
public:
    static inline QStringList calls;
    static inline bool loginSucceeds = true;

    void InitMe(const QString &exePath, const QString &logFile, const QString &tmpPath, double, double, double,
                Progress) override
    {
        calls << QStringLiteral("InitMe %1 %2 %3").arg(exePath.isEmpty() ? "-" : "exe", logFile, tmpPath.isEmpty() ? "-" : "tmp");
    }
    void setCancelCheck(std::function<bool()>) override {}
    bool LoginWHR_CL(const QString &loginId, const QString &password) override
    {
        calls << QStringLiteral("LoginWHR_CL %1 %2").arg(loginId, password);
        if (!loginSucceeds) {
            m_result.outcome = PortalResult::Outcome::Failed;
            m_result.message = QStringLiteral("Failed to 'Login' !\r\n\r\nno such user");
        }
        return loginSucceeds;
    }
    bool GetePayChallan_TDS(const QString &a1, const QString &a2, const QString &a3, const QString &a4,
                            const QString &a5, const QString &a6, const QString &a7, const QString &a8,
                            const QString &a9, const QString &a10, const QString &a11, const QString &a12,
                            const QString &a13, const QString &a14, int a15) override
    {
        calls << QStringLiteral("GetePayChallan_TDS ") +
                     QStringList{a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, QString::number(a15)}.join('|');
        return true;
    }
    bool GetePayChallan_TDS_OTH(const QString &a1, const QString &a2, const QString &a3, const QString &a4,
                                const QString &, const QString &, const QString &, const QString &, const QString &,
                                const QString &, const QString &a11, const QString &, const QString &,
                                const QString &, int) override
    {
        calls << QStringLiteral("GetePayChallan_TDS_OTH ") + QStringList{a1, a2, a3, a4, a11}.join('|');
        return true;
    }
    void CheckForLoginCl() override { calls << QStringLiteral("CheckForLoginCl"); }
    PortalResult lastResult() const override { return m_result; }

private:
    PortalResult m_result;
};

const QString Tan = QStringLiteral("BLRA12345B");

} // namespace

class EPayWindowTest : public QObject
{
    Q_OBJECT

    IDataObject *m_data = nullptr;
    ScriptedDialogs m_dialogs;

    void exec(const QString &sql) { QVERIFY2(m_data->ConQuery(sql), qPrintable(m_data->lastError())); }

    // A 2025 TAN payment: fee 50 and others 25, sections 1024 and 1032.
    std::unique_ptr<frmePayITD> open(const QString &year = QStringLiteral("2025"),
                                     const QString &kind = QStringLiteral("TAN"),
                                     const QString &minorHead = QStringLiteral("200"))
    {
        auto w = std::make_unique<frmePayITD>();
        w->setDialogs(&m_dialogs);
        w->InitMe(year, Tan, QStringLiteral("0021"), minorHead, QStringLiteral("1,000"), QStringLiteral("0"),
                  QStringLiteral("40"), QStringLiteral("12.50"), QStringLiteral("0"), QStringLiteral("50"),
                  QStringLiteral("25"), QStringLiteral("1024,900,12.50,50,0,25;1032,140,0,0,0,0"), 1, kind, nullptr,
                  QString());
        w->show();
        return w;
    }

    void chooseBank(frmePayITD *w, int tab, const QString &bank)
    {
        w->SSTab1()->setCurrentIndex(tab);
        if (QComboBox *list = w->bankList(tab))
            list->setCurrentIndex(list->findText(bank));
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        ServiceRegistry::registerBuiltins();
        modbase::resetForTests();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
        m_data = modbase::dataObject();
        QVERIFY(m_data->isConnected() || m_data->connect());
        exec(QStringLiteral("INSERT INTO Main_Info (Code_No, Name, Tanno) VALUES ('D01', 'Sri Ram Traders', '%1')").arg(Tan));
        m_data->setCodeno(QStringLiteral("D01"));
    }
    void cleanupTestCase()
    {
        ServiceRegistry::unregisterFactory(QString::fromLatin1(ProgId::ItdActions));
        TestDatabase::tearDown();
    }
    void init()
    {
        exec(QStringLiteral("DELETE FROM ItdLoginTanU"));
        m_dialogs.asked.clear();
        m_dialogs.answers.clear();
        RecordingItdActions::calls.clear();
        RecordingItdActions::loginSucceeds = true;
        Settings::setValue(QStringLiteral("epay/externalActions"), false);
    }

    // The clock reading as it stands, in 32 bits.
    void dateToUnixTime_data()
    {
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<qint32>("seconds");
        QTest::newRow("no zone shift") << QDateTime(QDate(2026, 11, 22), QTime(10, 30, 15), Qt::LocalTime) << 1795343415;
        QTest::newRow("last second") << QDateTime(QDate(2038, 1, 19), QTime(3, 14, 7)) << 2147483647;
        QTest::newRow("past 32 bits") << QDateTime(QDate(2038, 1, 19), QTime(3, 14, 8)) << 0;
    }
    void dateToUnixTime()
    {
        QFETCH(QDateTime, when);
        QTEST(frmePayITD::DateToUnixTime(when), "seconds");
    }

    // Up to 2026 the portal has no fee box: the fee is paid under others.
    void feeUnderOthersUpTo2026_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("fee");
        QTest::addColumn<QString>("others");
        QTest::addColumn<QString>("kept");
        QTest::newRow("2026") << "2026" << "50" << "25" << "75";
        QTest::newRow("2024, paise and commas") << "2024" << "1,200.25" << "0.50" << "1200.75";
        QTest::newRow("2027 keeps its fee box") << "2027" << "50" << "25" << "25";
    }
    void feeUnderOthersUpTo2026()
    {
        QFETCH(QString, year);
        QFETCH(QString, fee);
        QFETCH(QString, others);
        EPayPayment p;
        p.InitMe(year, Tan, "0021", "200", "1", "0", "0", "0", "0", fee, others, QString(), 0, "TAN", nullptr, QString());
        QTEST(p.text(EPayPayment::Others), "kept");
        QCOMPARE(p.text(EPayPayment::Fee), fee);
    }

    // Separators typed into a cell do not shift the others.
    void sectionsSurviveTheirSeparators()
    {
        const QList<TanSectionPayment> sent{{"194C", "1,000", "0", "5;0", "0", "1"}, {"1024", "200", "", "", "", ""}};
        const QList<TanSectionPayment> back = EPayPayment::parseSections(EPayPayment::sectionsText(sent));
        QCOMPARE(back.size(), 2);
        QCOMPARE(back[0].amount, QStringLiteral("1000"));
        QCOMPARE(back[0].fee, QStringLiteral("50"));
        QCOMPARE(back[0].others, QStringLiteral("1"));
        QCOMPARE(back[1].code, QStringLiteral("1024"));
    }

    // What the operator chose on the form reaches the flow as the portal's codes (net banking:
    // EPayWindowFlowTest).
    void modeAndBankReachTheFlow_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("option");
        QTest::addColumn<QString>("bank");
        QTest::addColumn<QString>("expected");   // mode|sub-mode|bank|description
        QTest::newRow("counter, cheque") << 2 << 1 << "Dhanlaxmi Bank Limited" << "OTC|CQ|DLXB|Pay at Bank Counter";
        QTest::newRow("RTGS/NEFT") << 3 << -1 << "" << "NER|||RTGS/NEFT";
        QTest::newRow("gateway") << 4 << -1 << "Axis Bank" << "EPY|PG|UTIB|e-Payment/Internet Banking";
    }
    void modeAndBankReachTheFlow()
    {
        QFETCH(int, tab);
        QFETCH(int, option);
        QFETCH(QString, bank);
        auto w = open();
        chooseBank(w.get(), tab, bank);
        if (!bank.isEmpty())
            QVERIFY2(w->bankList(tab)->currentIndex() >= 0, "the bank is on the tab's list");
        const TanPayment p = w->payment().tanPayment(tab, option, bank);
        QTEST(QStringList({p.modeCode, p.subMode, p.bankCode, p.modeDescription}).join('|'), "expected");
        QCOMPARE(p.others, QStringLiteral("75"));
        QVERIFY(p.nonResident);
        QCOMPARE(p.sections.size(), 2);
    }

    // Refused at the choice of mode and bank (the login not shown) or at the login; "": the
    // login shows.
    void refusals_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<bool>("bank");
        QTest::addColumn<int>("option");
        QTest::addColumn<int>("button");      // 2 check login, 1 without login
        QTest::addColumn<bool>("proceed");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("secret");  // password, or mobile without login
        QTest::addColumn<QString>("message");
        QTest::newRow("no bank") << 0 << false << -1 << 2 << false << Tan << "" << "Please select bank.";
        QTest::newRow("counter, no bank") << 2 << false << 1 << 2 << false << Tan << "" << "Please select bank.";
        QTest::newRow("counter, no mode") << 2 << true << -1 << 2 << false << Tan << "" << "Please select payment mode.";
        QTest::newRow("counter, cheque") << 2 << true << 1 << 2 << false << Tan << "" << "";
        QTest::newRow("RTGS needs no bank") << 3 << false << -1 << 2 << false << Tan << "" << "";
        QTest::newRow("no password") << 0 << true << -1 << 2 << true << Tan << "" << "Please specify Password !";
        QTest::newRow("no TAN") << 0 << true << -1 << 2 << true << "" << "x" << "Please specify TAN !";
        QTest::newRow("OTP, no mobile") << 0 << true << -1 << 1 << true << Tan << "" << "Please specify Mobile No !";
    }
    void refusals()
    {
        QFETCH(int, tab);
        QFETCH(bool, bank);
        QFETCH(int, option);
        QFETCH(int, button);
        QFETCH(bool, proceed);
        QFETCH(QString, id);
        QFETCH(QString, secret);
        QFETCH(QString, message);
        auto w = open();
        chooseBank(w.get(), tab, bank ? QStringLiteral("HDFC Bank") : QString());
        if (option >= 0)
            w->optPBC()->button(option)->setChecked(true);
        w->cmdePayITDClicked(button);
        if (proceed) {
            w->TxtTAN()->setText(id);
            (button == 1 ? w->txtMobile() : w->TxtPwd())->setText(secret);
            w->CmdProceedClicked();
        }
        QCOMPARE(m_dialogs.asked.size(), message.isEmpty() ? 0 : 1);
        QCOMPARE(m_dialogs.asked.isEmpty() ? QString() : m_dialogs.asked.first().message, message);
        QCOMPARE(w->famLogin()->isVisible(), proceed || message.isEmpty());
        if (w->famLogin()->isVisible()) {   // without login a mobile number in place of the password
            QCOMPARE(w->txtMobile()->isVisible(), button == 1);
            QCOMPARE(w->TxtPwd()->isVisible(), button != 1);
            QCOMPARE(w->findChild<QWidget *>("ChkShow")->isVisible(), button != 1);
        }
        if (!proceed)
            QCOMPARE(w->famMain()->isEnabled(), !message.isEmpty());
        QVERIFY(!w->famprog()->isVisible());
    }

    // The run ends with the step's message and the form ready again; nothing is left running.
    void missingDriverEndsTheRun()
    {
        const QString driver = Settings::driverPath();
        Settings::setValue(QStringLiteral("browser/driverPath"), QStringLiteral("/nonexistent/chromedriver"));
        ServiceRegistry::registerBuiltins();
        auto w = open();
        chooseBank(w.get(), 0, QStringLiteral("HDFC Bank"));
        w->cmdePayITDClicked(2);
        w->TxtPwd()->setText(QStringLiteral("Pa55#word"));
        w->CmdProceedClicked();
        Settings::setValue(QStringLiteral("browser/driverPath"), driver);
        QVERIFY(w->lastResult().failed());
        QCOMPARE(m_dialogs.asked.size(), 1);
        QVERIFY2(m_dialogs.asked.first().message.startsWith("Failed to Initialize Component [OOAW] !\r\n\r\nError: "),
                 qPrintable(m_dialogs.asked.first().message));
        QVERIFY(!m_dialogs.asked.first().message.contains("Pa55#word"));
        QVERIFY(!w->famprog()->isVisible() && !w->famLogin()->isVisible() && w->famMain()->isEnabled());
        QVERIFY(!w->running());
    }

    void handedToTheActionsComponent_data()
    {
        QTest::addColumn<bool>("loginSucceeds");
        QTest::addColumn<QString>("minorHead");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("TAN payment")
            << true << "200"
            << QStringList{"InitMe exe \\ZeltLogger.log tmp", "LoginWHR_CL BLRA12345B Pa55#word",
                           "GetePayChallan_TDS 2025|BLRA12345B|0021|200|1000|0|40|12.50|0|75|"
                           "1024,900,12.50,50,0,25;1032,140,0,0,0,0|EPY|IB|HDFC|1",
                           "CheckForLoginCl"};
        QTest::newRow("demand") << true << "400"
                                << QStringList{"InitMe exe \\ZeltLogger.log tmp", "LoginWHR_CL BLRA12345B Pa55#word",
                                               "GetePayChallan_TDS_OTH 2025|BLRA12345B|0021|400|DIN123",
                                               "CheckForLoginCl"};
        QTest::newRow("login refused")
            << false << "200"
            << QStringList{"InitMe exe \\ZeltLogger.log tmp", "LoginWHR_CL BLRA12345B Pa55#word", "CheckForLoginCl"};
    }
    void handedToTheActionsComponent()
    {
        QFETCH(bool, loginSucceeds);
        QFETCH(QString, minorHead);
        QFETCH(QStringList, calls);
        ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::ItdActions),
                                         [] { return std::make_shared<RecordingItdActions>(); });
        RecordingItdActions::loginSucceeds = loginSucceeds;
        Settings::setValue(QStringLiteral("epay/externalActions"), true);
        auto w = open(QStringLiteral("2025"), QStringLiteral("TAN"), minorHead);
        chooseBank(w.get(), 0, QStringLiteral("HDFC Bank"));
        if (minorHead == QLatin1String("400"))
            w->findChild<QLineEdit *>("txtDemandRef")->setText(QStringLiteral("DIN123"));
        w->cmdePayITDClicked(2);
        w->TxtPwd()->setText(QStringLiteral("Pa55#word"));
        w->CmdProceedClicked();
        QCOMPARE(RecordingItdActions::calls, calls);
        QCOMPARE(w->lastResult().failed(), !loginSucceeds);
        QCOMPARE(m_dialogs.asked.size(), loginSucceeds ? 0 : 1);
    }

    void keyboard()
    {
        auto w = open(QStringLiteral("2025"), QStringLiteral("TAN"), QStringLiteral("400"));
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
        // Alt+R picks RTGS/NEFT; Alt+E then opens the login in its password box.
        QTest::keyClick(w.get(), Qt::Key_R, Qt::AltModifier);
        QCOMPARE(w->SSTab1()->currentIndex(), int(EPayModes::RtgsNeft));
        w->findChild<QLineEdit *>("txtDemandRef")->setText(QStringLiteral("DIN1"));
        QTest::keyClick(w.get(), Qt::Key_L, Qt::AltModifier);
        QTRY_VERIFY(w->famLogin()->isVisible());
        QCOMPARE(QApplication::focusWidget(), w->TxtPwd());

        // Escape asks before the form goes.
        m_dialogs.answers.enqueue(false);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.last().message, QStringLiteral("Do you want to exit ?"));
        QVERIFY(w->isVisible());
    }
};

TDS_TEST(EPayWindowTest)
#include "EPayWindowTest.moc"
