#include "TestRegistry.h"

#include "host/AmountWords.h"

#include <QTest>

class AmountWordsTest : public QObject
{
    Q_OBJECT
private slots:
    // Empty words: not an amount, refused.
    void fromText_data()
    {
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("words");
        QTest::newRow("zero") << "0" << "Rupees Nil Only";
        QTest::newRow("half rupee") << "0.5" << "Rupees Nil and Paise Fifty Only";
        QTest::newRow("no and inside rupees") << "101" << "Rupees One Hundred One Only";
        QTest::newRow("crore repeats its scale")
            << "1234567890"
            << "Rupees One Hundred Twenty Three Crore Forty Five Lakh Sixty Seven Thousand Eight Hundred Ninety Only";
        QTest::newRow("crore crore") << "100000000000000" << "Rupees One Crore Crore Only";
        QTest::newRow("one decimal is tens of paise") << "7.1" << "Rupees Seven and Paise Ten Only";
        QTest::newRow("grouping commas") << "1,50,000.10" << "Rupees One Lakh Fifty Thousand and Paise Ten Only";
        QTest::newRow("negative") << "-250.75" << "Rupees Minus Two Hundred Fifty and Paise Seventy Five Only";
        QTest::newRow("half paisa rounds up") << "0.005" << "Rupees Nil and Paise One Only";
        QTest::newRow("negative rounding to zero has no sign") << "-0.004" << "Rupees Nil Only";
        QTest::newRow("rounding carries into rupees") << "99.995" << "Rupees One Hundred Only";
        QTest::newRow("negative half away from zero") << "-1.125" << "Rupees Minus One and Paise Thirteen Only";
        for (const char *bad : {"", "12a", "1.2.3", "99999999999999999999"})
            QTest::addRow("refused '%s'", bad) << bad << "";
    }
    void fromText()
    {
        QFETCH(QString, amount);
        QFETCH(QString, words);
        bool ok = words.isEmpty();
        QCOMPARE(AmountWords::ConvertToWord(amount, &ok), words);
        QCOMPARE(ok, !words.isEmpty());
    }

    void fromDouble_data()
    {
        QTest::addColumn<double>("amount");
        QTest::addColumn<QString>("words");
        // Binary doubles just below the half paisa are read as the decimal the user typed.
        QTest::newRow("1.005") << 1.005 << "Rupees One and Paise One Only";
        QTest::newRow("2.675") << 2.675 << "Rupees Two and Paise Sixty Eight Only";
        QTest::newRow("negative") << -1500.5 << "Rupees Minus One Thousand Five Hundred and Paise Fifty Only";
    }
    void fromDouble()
    {
        QFETCH(double, amount);
        QTEST(AmountWords::ConvertToWord(amount), "words");
    }
};

TDS_TEST(AmountWordsTest)
#include "AmountWordsTest.moc"
