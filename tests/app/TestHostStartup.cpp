// The window's start-up refuses options that would quietly open something else.
#include "TestRegistry.h"

#include "HostStartup.h"
#include "host/DataHome.h"

#include <QTest>

class TestHostStartup : public QObject
{
    Q_OBJECT

private slots:
    void refusedOptions_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("mention");
        QTest::newRow("blank home") << QStringList{"--home", "   "} << "--home";
        QTest::newRow("db without value") << QStringList{"--db"} << "--db";
        QTest::newRow("db url with password") << QStringList{"--db", "mysql://tds:TopSecret9@/x"} << "mysql://tds:***@/x";
    }
    void refusedOptions()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, mention);
        const QString home = DataHome::overrideDir();
        QString error;
        QVERIFY(!HostStartup::start(arguments, &error));
        QVERIFY2(error.contains(mention), qPrintable(error));
        QVERIFY2(!error.contains(QLatin1String("Secret9")), qPrintable(error));
        QCOMPARE(DataHome::overrideDir(), home);   // nothing of it took effect
    }
};

TDS_TEST(TestHostStartup)
#include "TestHostStartup.moc"
