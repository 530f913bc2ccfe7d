#include "TestRegistry.h"

#include "json/Decimal.h"
#include "json/JsonRuntimeError.h"

#include <QTest>

namespace {
const char *const Max = "79228162514264337593543950335";
}

class TestDecimal : public QObject
{
    Q_OBJECT

private slots:
    void fromText_data();
    void fromText();
    void operations_data();
    void operations();
};

void TestDecimal::fromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("canonical");   // or "error N", as parse raises it

    QTest::newRow("trailing zero") << "1.50" << "1.5";
    QTest::newRow("plus and bare fraction") << "+.5" << "0.5";
    QTest::newRow("negative exponent") << "-2.5E-1" << "-0.25";
    QTest::newRow("largest") << Max << Max;
    QTest::newRow("one past largest") << "79228162514264337593543950336" << "error 6";
    QTest::newRow("huge exponent") << "1e999999999999" << "error 6";
    QTest::newRow("zero, huge exponent") << "0e999999" << "0";
    QTest::newRow("smallest") << "1e-28" << "0.0000000000000000000000000001";
    QTest::newRow("half unit to even") << "2.5e-28" << "0.0000000000000000000000000002";
    QTest::newRow("29 places rounded")
        << "0.12345678901234567890123456789" << "0.1234567890123456789012345679";
    QTest::newRow("tie decided by far digits")
        << "0.000000000000000000000000000150000000000000000000000000000000000000001"
        << "0.0000000000000000000000000002";
    QTest::newRow("empty") << "" << "error 13";
    QTest::newRow("exponent without digits") << "1e" << "error 13";
}

void TestDecimal::fromText()
{
    QFETCH(QString, text);
    QFETCH(QString, canonical);

    Decimal::Status status = Decimal::Status::Ok;
    const Decimal d = Decimal::fromString(text, &status);
    QString got = d.toString();
    Decimal::Status expected = Decimal::Status::Ok;
    try {
        QCOMPARE(Decimal::parse(text).toString(), got);
    } catch (const JsonRuntimeError &e) {
        got = QStringLiteral("error %1").arg(e.number());
        expected = e.number() == 6 ? Decimal::Status::Overflow : Decimal::Status::Invalid;
    }
    QCOMPARE(status, expected);
    QCOMPARE(got, canonical);
}

// "<=>" gives the order, "round" rounds halves to even, "fixed" formats with halves away
// from zero; the last two take the number of places as b.
void TestDecimal::operations_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("op");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("result");   // or "error N"

    QTest::newRow("0.1 + 0.2") << "0.1" << "+" << "0.2" << "0.3";
    QTest::newRow("cancel out") << "1.50" << "+" << "-1.5" << "0";
    QTest::newRow("add overflow") << Max << "+" << "1" << "error 6";
    QTest::newRow("add rounds away a place") << Max << "+" << "0.4" << Max;
    QTest::newRow("multiply keeps 96 bits") << Max << "*" << "0.1" << "7922816251426433759354395033.5";
    QTest::newRow("multiply below smallest") << "1e-28" << "*" << "0.1" << "0";
    QTest::newRow("multiply overflow") << "1e28" << "*" << "10" << "error 6";
    QTest::newRow("one third") << "1" << "/" << "3" << "0.3333333333333333333333333333";
    QTest::newRow("100/3 keeps 96 bits") << "100" << "/" << "3" << "33.333333333333333333333333333";
    QTest::newRow("largest by a tenth") << Max << "/" << "0.1" << "error 6";
    QTest::newRow("division by zero") << "1" << "/" << "0.00" << "error 11";
    QTest::newRow("scale does not order") << "1.50" << "<=>" << "1.5" << "0";
    QTest::newRow("negative zero equals zero") << "-0" << "<=>" << "0.0" << "0";
    QTest::newRow("ordered as numbers") << "2" << "<=>" << "10" << "-1";
    QTest::newRow("2.5 to even") << "2.5" << "round" << "0" << "2";
    QTest::newRow("2.5 away from zero") << "2.5" << "fixed" << "0" << "3";
    QTest::newRow("fixed pads") << "1234.5" << "fixed" << "2" << "1234.50";
    QTest::newRow("cent half to even") << "-1.005" << "round" << "2" << "-1";
    QTest::newRow("cent half away") << "-1.005" << "fixed" << "2" << "-1.01";
    QTest::newRow("fixed to zero drops the sign") << "-0.004" << "fixed" << "2" << "0.00";
}

void TestDecimal::operations()
{
    QFETCH(QString, a);
    QFETCH(QString, op);
    QFETCH(QString, b);
    QFETCH(QString, result);

    const Decimal x = Decimal::parse(a);
    QString got;
    try {
        if (op == "round")
            got = x.round(b.toInt()).toString();
        else if (op == "fixed")
            got = x.toFixed(b.toInt());
        else if (const Decimal y = Decimal::parse(b); op == "<=>") {
            got = QString::number(x.compare(y));
            QCOMPARE(y.compare(x), -x.compare(y));
            QCOMPARE(x == y, result == "0");
            QCOMPARE(x < y, result == "-1");
        } else {
            got = (op == "+" ? x + y : op == "-" ? x - y : op == "*" ? x * y : x / y).toString();
        }
    } catch (const JsonRuntimeError &e) {
        got = QStringLiteral("error %1").arg(e.number());
    }
    QCOMPARE(got, result);
}

TDS_TEST(TestDecimal)
#include "TestDecimal.moc"
