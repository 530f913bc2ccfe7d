#include "TestRegistry.h"

#include "json/Decimal.h"
#include "json/JsonRuntimeError.h"

#include <QTest>

namespace {

const char *const Max = "79228162514264337593543950335";

} // namespace

class TestDecimal : public QObject
{
    Q_OBJECT

private slots:
    void fromText_data();
    void fromText();
    void arithmetic_data();
    void arithmetic();
    void compare_data();
    void compare();
    void rounding_data();
    void rounding();
};

void TestDecimal::fromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("canonical");   // empty: the status column applies
    QTest::addColumn<int>("status");

    const int ok = int(Decimal::Status::Ok);
    const int invalid = int(Decimal::Status::Invalid);
    const int overflow = int(Decimal::Status::Overflow);

    QTest::newRow("trailing zero") << "1.50" << "1.5" << ok;
    QTest::newRow("negative") << "-2" << "-2" << ok;
    QTest::newRow("exponent") << "1e3" << "1000" << ok;
    QTest::newRow("tenth stays exact") << "0.1" << "0.1" << ok;
    QTest::newRow("negative zero") << "-0" << "0" << ok;
    QTest::newRow("zero with places") << "0.000" << "0" << ok;
    QTest::newRow("plus and bare fraction") << "+.5" << "0.5" << ok;
    QTest::newRow("bare point") << "1." << "1" << ok;
    QTest::newRow("negative exponent") << "-2.5E-1" << "-0.25" << ok;
    QTest::newRow("leading zeros") << "000000000000000000000000000000000000001.5" << "1.5" << ok;
    QTest::newRow("largest") << Max << Max << ok;
    QTest::newRow("one past largest") << "79228162514264337593543950336" << "" << overflow;
    QTest::newRow("largest rounded up") << "79228162514264337593543950335.5" << "" << overflow;
    QTest::newRow("1e28") << "1e28" << "10000000000000000000000000000" << ok;
    QTest::newRow("1e29") << "1e29" << "" << overflow;
    QTest::newRow("huge exponent") << "1e999999999999" << "" << overflow;
    QTest::newRow("zero, huge exponent") << "0e999999" << "0" << ok;
    QTest::newRow("smallest") << "1e-28" << "0.0000000000000000000000000001" << ok;
    QTest::newRow("below smallest") << "1e-29" << "0" << ok;
    QTest::newRow("half below smallest, to even") << "5e-29" << "0" << ok;
    QTest::newRow("1.5 units, to even") << "1.5e-28" << "0.0000000000000000000000000002" << ok;
    QTest::newRow("2.5 units, to even") << "2.5e-28" << "0.0000000000000000000000000002" << ok;
    QTest::newRow("29 places rounded")
        << "0.12345678901234567890123456789" << "0.1234567890123456789012345679" << ok;
    QTest::newRow("28 places with integer part")
        << "7.9228162514264337593543950335" << "7.9228162514264337593543950335" << ok;
    QTest::newRow("tie decided by far digits")
        << "0.000000000000000000000000000150000000000000000000000000000000000000001"
        << "0.0000000000000000000000000002" << ok;
    QTest::newRow("empty") << "" << "" << invalid;
    QTest::newRow("sign only") << "-" << "" << invalid;
    QTest::newRow("point only") << "." << "" << invalid;
    QTest::newRow("exponent only") << "e5" << "" << invalid;
    QTest::newRow("exponent without digits") << "1e" << "" << invalid;
    QTest::newRow("exponent sign only") << "1e+" << "" << invalid;
    QTest::newRow("minus inside") << "1-2" << "" << invalid;
    QTest::newRow("two points") << "1.2.3" << "" << invalid;
    QTest::newRow("two signs") << "--1" << "" << invalid;
    QTest::newRow("blank inside") << "1 2" << "" << invalid;
}

void TestDecimal::fromText()
{
    QFETCH(QString, text);
    QFETCH(QString, canonical);
    QFETCH(int, status);

    Decimal::Status got = Decimal::Status::Ok;
    const Decimal d = Decimal::fromString(text, &got);
    QCOMPARE(int(got), status);
    if (status == int(Decimal::Status::Ok)) {
        QCOMPARE(d.toString(), canonical);
    } else {
        try {
            Decimal::parse(text);
            QFAIL("parse accepted the text");
        } catch (const JsonRuntimeError &e) {
            QCOMPARE(e.number(), status == int(Decimal::Status::Invalid) ? 13 : 6);
        }
    }
}

void TestDecimal::arithmetic_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("op");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("result");   // or "error N"

    QTest::newRow("0.1 + 0.2") << "0.1" << "+" << "0.2" << "0.3";
    QTest::newRow("cancel out") << "1.50" << "+" << "-1.5" << "0";
    QTest::newRow("subtract to negative") << "0.1" << "-" << "0.3" << "-0.2";
    QTest::newRow("negatives") << "-2" << "-" << "3" << "-5";
    QTest::newRow("largest minus itself") << Max << "-" << Max << "0";
    QTest::newRow("tiny sums") << "1e-28" << "+" << "1e-28" << "0.0000000000000000000000000002";
    QTest::newRow("add overflow") << Max << "+" << "1" << "error 6";
    QTest::newRow("add rounds away a place") << Max << "+" << "0.4" << Max;
    QTest::newRow("multiply") << "1.1" << "*" << "1.1" << "1.21";
    QTest::newRow("multiply signs") << "-1.5" << "*" << "-2" << "3";
    QTest::newRow("multiply keeps 96 bits") << Max << "*" << "0.1" << "7922816251426433759354395033.5";
    QTest::newRow("multiply below smallest") << "1e-28" << "*" << "0.1" << "0";
    QTest::newRow("multiply overflow") << "1e28" << "*" << "10" << "error 6";
    QTest::newRow("one third") << "1" << "/" << "3" << "0.3333333333333333333333333333";
    QTest::newRow("two thirds round up") << "2" << "/" << "3" << "0.6666666666666666666666666667";
    QTest::newRow("a seventh") << "1" << "/" << "7" << "0.1428571428571428571428571429";
    QTest::newRow("100/3 keeps 96 bits") << "100" << "/" << "3" << "33.333333333333333333333333333";
    QTest::newRow("exact quotient") << "10" << "/" << "4" << "2.5";
    QTest::newRow("negative quotient") << "-7" << "/" << "2" << "-3.5";
    QTest::newRow("quotient of fractions") << "0.5" << "/" << "0.25" << "2";
    QTest::newRow("largest by a tenth") << Max << "/" << "0.1" << "error 6";
    QTest::newRow("division by zero") << "1" << "/" << "0.00" << "error 11";
}

void TestDecimal::arithmetic()
{
    QFETCH(QString, a);
    QFETCH(QString, op);
    QFETCH(QString, b);
    QFETCH(QString, result);

    const Decimal x = Decimal::parse(a);
    const Decimal y = Decimal::parse(b);
    QString got;
    try {
        Decimal r;
        if (op == "+")
            r = x + y;
        else if (op == "-")
            r = x - y;
        else if (op == "*")
            r = x * y;
        else
            r = x / y;
        got = r.toString();
    } catch (const JsonRuntimeError &e) {
        got = QStringLiteral("error %1").arg(e.number());
    }
    QCOMPARE(got, result);
}

void TestDecimal::compare_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("order");

    QTest::newRow("scale does not matter") << "1.50" << "1.5" << 0;
    QTest::newRow("negative zero") << "-0" << "0.0" << 0;
    QTest::newRow("signs") << "-1" << "1" << -1;
    QTest::newRow("not as text") << "2" << "10" << -1;
    QTest::newRow("fractions") << "0.1" << "0.09" << 1;
    QTest::newRow("negative fractions") << "-0.1" << "-0.09" << -1;
    QTest::newRow("largest against tiny") << Max << "1e-28" << 1;
}

void TestDecimal::compare()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, order);

    const Decimal x = Decimal::parse(a);
    const Decimal y = Decimal::parse(b);
    QCOMPARE(x.compare(y), order);
    QCOMPARE(y.compare(x), -order);
    QCOMPARE(x == y, order == 0);
    QCOMPARE(x < y, order < 0);
}

void TestDecimal::rounding_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("places");
    QTest::addColumn<QString>("rounded");   // halves to even
    QTest::addColumn<QString>("fixed");     // halves away from zero, padded

    QTest::newRow("2.5") << "2.5" << 0 << "2" << "3";
    QTest::newRow("3.5") << "3.5" << 0 << "4" << "4";
    QTest::newRow("-2.5") << "-2.5" << 0 << "-2" << "-3";
    QTest::newRow("pad") << "1234.5" << 2 << "1234.5" << "1234.50";
    QTest::newRow("whole") << "7" << 2 << "7" << "7.00";
    QTest::newRow("cent half") << "-1.005" << 2 << "-1" << "-1.01";
    QTest::newRow("rounds to zero") << "-0.004" << 2 << "0" << "0.00";
}

void TestDecimal::rounding()
{
    QFETCH(QString, value);
    QFETCH(int, places);
    QFETCH(QString, rounded);
    QFETCH(QString, fixed);

    const Decimal d = Decimal::parse(value);
    QCOMPARE(d.round(places).toString(), rounded);
    QCOMPARE(d.toFixed(places), fixed);
}

TDS_TEST(TestDecimal)
#include "TestDecimal.moc"
