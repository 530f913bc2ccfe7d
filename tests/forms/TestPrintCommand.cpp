#include "FormsFixture.h"
#include "RecordingReportObject.h"
#include "TestRegistry.h"
#include "host/DataObject.h"

#include <QGuiApplication>

class TestPrintCommand : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_recorder;

private slots:
    void initTestCase()
    {
        FORMS_START();
        m_recorder = RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY(modbase::Main());
    }
    void cleanupTestCase()
    {
        RecordingReportObject::uninstall();
        modbase::resetForTests();
        TestDatabase::tearDown();
    }
    void init()
    {
        m_recorder->clear();
        TestDatabase::removeLog();
    }

    // 0 and 1 cancel, 2 previews, 3 prints; the hourglass comes only after the question.
    void modePrint_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("cancelled") << 1;
        QTest::newRow("preview") << 2;
        QTest::newRow("printer") << 3;
    }
    void modePrint()
    {
        QFETCH(int, mode);
        int asked = 0;
        DataObject::setFormInfoPrompt([&] { return ++asked, QGuiApplication::overrideCursor() ? -100 : mode; });
        FormsFixture::withForm(QStringLiteral("15c"), {}, [](auto &f) { f.print(); });
        DataObject::setFormInfoPrompt({});
        QCOMPARE(asked, 1);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        const QStringList &calls = m_recorder->calls();
        QVERIFY2(mode > 1 || calls.isEmpty(), qPrintable(calls.join(QLatin1Char(' '))));
        if (mode <= 1)
            return;
        QCOMPARE(calls.mid(0, 2), (QStringList{QStringLiteral("WinModeReport:") + (mode == 2 ? "true" : "false"), "NewReport"}));
        QCOMPARE(calls.last(), QStringLiteral("ShowReport"));
    }

    void aFailingRowIsLoggedAndThePrintGoesOn()
    {
        m_recorder->failRow(3);
        DataObject::setFormInfoPrompt([] { return 2; });
        FormsFixture::withForm(QStringLiteral("15c"), {}, [](auto &f) { f.print(); });
        DataObject::setFormInfoPrompt({});
        QVERIFY(m_recorder->calls().contains(QStringLiteral("WriteToReport:failed")));
        QCOMPARE(m_recorder->calls().last(), QStringLiteral("ShowReport"));
        QVERIFY(TestDatabase::logText().contains(QStringLiteral("MODBASE\tMULTISPCJS1")));
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }
};

TDS_TEST(TestPrintCommand)
#include "TestPrintCommand.moc"
