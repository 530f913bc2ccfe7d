#include "TestRegistry.h"

#include "host/TextHelpers.h"

#include <QTest>

class TextHelpersTest : public QObject
{
    Q_OBJECT
private slots:
    void convertDate_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("d/m/yyyy") << "5/4/2024" << "05/04/2024";
        QTest::newRow("ddmmyyyy") << "05042024" << "05/04/2024";
        QTest::newRow("ddmmyy 99") << "050499" << "05/04/1999";
        QTest::newRow("pivot 49 is 2049") << "31-12-49" << "31/12/2049";
        QTest::newRow("pivot 50 is 1950") << "01.01.50" << "01/01/1950";
        QTest::newRow("leap day") << "29/02/2024" << "29/02/2024";
        // not real dates come back unchanged
        for (const char *bad : {"29/02/2023", "01131999", "5/4/202", "2024-04-05", ""})
            QTest::addRow("unchanged '%s'", bad) << bad << bad;
    }
    void convertDate()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(TextHelpers::convertDate(input), expected);
    }

    void panAndTan_data()
    {
        QTest::addColumn<bool>("isPan");
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("valid");
        for (const char *pan : {"AABCD1234E", "ABCPS1234K"})
            QTest::addRow("PAN %s", pan) << true << pan << true;
        for (const char *pan : {"AABXD1234E", "AABCD1234", "1ABCD1234E", "aabcd1234e", ""})
            QTest::addRow("not a PAN '%s'", pan) << true << pan << false;
        QTest::newRow("TAN") << false << "MUMD12345E" << true;
        for (const char *tan : {"MUMD1234E", "MUMD123456", "mumd12345e", "MUMD12345EX"})
            QTest::addRow("not a TAN '%s'", tan) << false << tan << false;
    }
    void panAndTan()
    {
        QFETCH(bool, isPan);
        QFETCH(QString, code);
        QTEST(isPan ? TextHelpers::validPan(code) : TextHelpers::validTan(code), "valid");
    }
};

TDS_TEST(TextHelpersTest)
#include "TextHelpersTest.moc"
