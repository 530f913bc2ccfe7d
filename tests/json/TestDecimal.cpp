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
    QTest::newRow("negative exponent") << "-2.5E-1" << "-0.25";
    QTest::newRow("largest") << Max << Max;
    QTest::newRow("one past largest") << "79228162514264337593543950336" << "error 6";
    QTest::newRow("29 places rounded")
        << "0.12345678901234567890123456789" << "0.1234567890123456789012345679";
    QTest::newRow("empty") << "" << "error 13";
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
    QTest::newRow("add overflow") << Max << "+" << "1" << "error 6";
    QTest::newRow("add rounds away a place") << Max << "+" << "0.4" << Max;
    QTest::newRow("multiply keeps 96 bits") << Max << "*" << "0.1" << "7922816251426433759354395033.5";
    QTest::newRow("division by zero") << "1" << "/" << "0.00" << "error 11";
    QTest::newRow("scale does not order") << "1.50" << "<=>" << "1.5" << "0";
    QTest::newRow("ordered as numbers") << "2" << "<=>" << "10" << "-1";
    QTest::newRow("2.5 to even") << "2.5" << "round" << "0" << "2";
    QTest::newRow("2.5 away from zero") << "2.5" << "fixed" << "0" << "3";
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
