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
        QTest::newRow("dd-mm-yyyy") << "05-04-2024" << "05/04/2024";
        QTest::newRow("dd.mm.yyyy") << "05.04.2024" << "05/04/2024";
        QTest::newRow("ddmmyyyy") << "05042024" << "05/04/2024";
        QTest::newRow("already normal") << "31/12/2023" << "31/12/2023";
        QTest::newRow("two-digit year 24") << "5/4/24" << "05/04/2024";
        QTest::newRow("ddmmyy 99") << "050499" << "05/04/1999";
        QTest::newRow("pivot 49 is 2049") << "31-12-49" << "31/12/2049";
        QTest::newRow("pivot 50 is 1950") << "01.01.50" << "01/01/1950";
        QTest::newRow("surrounding blanks") << " 1/2/2020 " << "01/02/2020";
        QTest::newRow("leap day") << "29/02/2024" << "29/02/2024";
        QTest::newRow("no leap day") << "29/02/2023" << "29/02/2023";
        QTest::newRow("31 April") << "31-04-2024" << "31-04-2024";
        QTest::newRow("month 13") << "01131999" << "01131999";
        QTest::newRow("day zero") << "0/1/2024" << "0/1/2024";
        QTest::newRow("three-digit year") << "5/4/202" << "5/4/202";
        QTest::newRow("iso order is not ours") << "2024-04-05" << "2024-04-05";
        QTest::newRow("text") << "abc" << "abc";
        QTest::newRow("empty") << "" << "";
        QTest::newRow("blank stays blank") << "  " << "  ";
    }
    void convertDate()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(TextHelpers::convertDate(input), expected);
    }

    void validPan_data()
    {
        QTest::addColumn<QString>("pan");
        QTest::addColumn<bool>("valid");
        QTest::newRow("company") << "AABCD1234E" << true;
        QTest::newRow("individual") << "ABCPS1234K" << true;
        QTest::newRow("trust") << "AAATR9999Z" << true;
        QTest::newRow("juridical person") << "AAAJX0001A" << true;
        QTest::newRow("status letter X") << "AABXD1234E" << false;
        QTest::newRow("status letter E") << "AABED1234E" << false;
        QTest::newRow("nine characters") << "AABCD1234" << false;
        QTest::newRow("five digits") << "AABCD12345" << false;
        QTest::newRow("digit first") << "1ABCD1234E" << false;
        QTest::newRow("small letters") << "aabcd1234e" << false;
        QTest::newRow("blank inside") << "AAB D1234E" << false;
        QTest::newRow("empty") << "" << false;
    }
    void validPan()
    {
        QFETCH(QString, pan);
        QFETCH(bool, valid);
        QCOMPARE(TextHelpers::validPan(pan), valid);
    }

    void validTan_data()
    {
        QTest::addColumn<QString>("tan");
        QTest::addColumn<bool>("valid");
        QTest::newRow("well formed") << "MUMD12345E" << true;
        QTest::newRow("three letters") << "MUM12345E" << false;
        QTest::newRow("four digits") << "MUMD1234E" << false;
        QTest::newRow("last is a digit") << "MUMD123456" << false;
        QTest::newRow("small letters") << "mumd12345e" << false;
        QTest::newRow("a PAN") << "AABCD1234E" << false;
        QTest::newRow("eleven characters") << "MUMD12345EX" << false;
    }
    void validTan()
    {
        QFETCH(QString, tan);
        QFETCH(bool, valid);
        QCOMPARE(TextHelpers::validTan(tan), valid);
    }

    void truncVarSql_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << "MUMBAI" << "MUMBAI";
        QTest::newRow("apostrophe") << "D'SOUZA" << "D''SOUZA";
        QTest::newRow("backslash") << "A\\B" << "A\\\\B";
        QTest::newRow("escaped quote attempt") << "x\\' OR 1=1 --" << "x\\\\'' OR 1=1 --";
    }
    void truncVarSql()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(TextHelpers::truncVarSql(input), expected);
    }
};

TDS_TEST(TextHelpersTest)
#include "TextHelpersTest.moc"
