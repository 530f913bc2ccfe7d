// The general helper's POST against a local server: what the caller gets back for each kind
// of answer. What the server receives: the draft's posts in TanChallanDraftFlowTest.
#include "HeadlessBrowser.h"
#include "MockPortal.h"
#include "TestRegistry.h"

#include "host/IGeneralHelper.h"
#include "host/ServiceRegistry.h"

#include <QTest>

class GeneralHelperTest : public QObject
{
    Q_OBJECT

    MockPortal m_server;
    std::shared_ptr<IGeneralHelper> m_helper;

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(HeadlessBrowser::configure(3, 50, &error), qPrintable(error));
        QVERIFY(m_server.start());
        MockPortal::Reply refused;
        refused.status = 401;
        refused.contentType = "application/json";
        refused.body = R"({"errors":[{"code":"EF401","desc":"Unauthorized"}]})";
        m_server.setReply(QStringLiteral("/refused"), refused);
        MockPortal::Reply empty;
        empty.status = 503;
        m_server.setReply(QStringLiteral("/down"), empty);
        ServiceRegistry::registerBuiltins();
        m_helper = createObjectAs<IGeneralHelper>(QString::fromLatin1(ProgId::GeneralHelper));
        QVERIFY(m_helper);
    }

    void answers_data()
    {
        QTest::addColumn<QString>("url");     // "%1": the server
        QTest::addColumn<QString>("reply");   // what the reply starts with
        QTest::newRow("refused with a reason") << "%1/refused" << R"({"errors":[{"code":"EF401")";
        QTest::newRow("error without a body") << "%1/down" << "#ERROR;";
        QTest::newRow("not an address") << "no address" << "#ERROR;Not an address";
    }
    void answers()
    {
        QFETCH(QString, url);
        QFETCH(QString, reply);
        url.replace(QStringLiteral("%1"), m_server.baseUrl());
        const QString got = m_helper->HttpPost(url, QStringLiteral("Bearer x"), QString(), QStringLiteral("{}"),
                                               QStringLiteral("application/json"), QString());
        QVERIFY2(got.startsWith(reply), qPrintable(got));
    }
};

TDS_TEST(GeneralHelperTest)
#include "GeneralHelperTest.moc"
