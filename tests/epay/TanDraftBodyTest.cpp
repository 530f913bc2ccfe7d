// The TAN challan draft without a portal: each of the three requests key by key in order,
// what they say, and how a reply is judged.
#include "TestRegistry.h"

#include "epay/TanChallanDraft.h"
#include "json/JSON.h"
#include "json/JsonWriter.h"

#include <QTest>

namespace {

TanDraftPayment payment()
{
    TanDraftPayment p;
    p.tan = QStringLiteral("BLRA12345B");
    p.assessmentYear = QStringLiteral("2025");
    p.majorHead = QStringLiteral("0021");
    p.minorHead = QStringLiteral("200");
    p.basicTax = QStringLiteral("1500.50");
    p.surCharge = QStringLiteral("0");
    p.eduCess = QStringLiteral("60");
    p.interest = QString();
    p.penalty = QStringLiteral("0.00");
    p.others = QStringLiteral("240");
    p.paymentMode = QStringLiteral("OTC");
    p.subPayMode = QStringLiteral("CQ");
    p.bankCode = QStringLiteral("SBIN");
    p.paymentModeDesc = QStringLiteral("Pay at Bank Counter");
    return p;
}

const QString Words = QStringLiteral("Rupees One Thousand Eight Hundred and Paise Fifty Only");

// The value of a key of formData as JSON text; "<absent>" when the body lacks it.
QString valueOf(const QByteArray &body, const QString &key)
{
    const JsonValue whole = ParseJson(QString::fromUtf8(body));
    const JsonDictionary *top = whole.dictionary();
    const JsonValue *formData = top ? top->find(QStringLiteral("formData")) : nullptr;
    const JsonValue *value = formData && formData->dictionary() ? formData->dictionary()->find(key) : nullptr;
    return value ? QString::fromUtf8(toCompactJson(*value)) : QStringLiteral("<absent>");
}

const QStringList Amounts{"basicTax", "surCharge", "eduCess", "interest", "penalty", "others", "totalAmt"};

} // namespace

class TanDraftBodyTest : public QObject
{
    Q_OBJECT

private slots:
    // The portal reads the three bodies by position: every key, in this order.
    void keys_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("1 tax applicable details")
            << 1 << QStringList{"pan", "tileId", "majorHead", "minorHead", "assmentYear"} + Amounts
                        + QStringList{"totalAmtWord", "paymentMode", "subPayMode", "bankCd", "pymntRefNum", "majorSlNum",
                                      "minorSlNum", "taxPayerName", "category", "natrOfPymnt", "pageName", "createdByUser"};
        QTest::newRow("2 break-up")
            << 2 << QStringList{"pan", "tileId", "majorHead", "minorHead", "majorSlNum", "minorSlNum"} + Amounts
                        + QStringList{"assmentYear", "totalAmtWord", "paymentMode", "subPayMode", "bankCd", "pymntRefNum",
                                      "category", "natrOfPymnt", "pageName", "createdByUser"};
        QTest::newRow("3 payment details")
            << 3 << QStringList{"pan", "assmentYear", "majorHead", "majorSlNum", "minorHead", "minorSlNum", "tileId"} + Amounts
                        + QStringList{"totalAmtWord", "paymentMode", "subPayMode", "bankCd", "pymntRefNum", "paymentModeDesc",
                                      "category", "natrOfPymnt", "effBankDetails", "pageName", "createdByUser"};
    }
    void keys()
    {
        QFETCH(int, page);
        QFETCH(QStringList, keys);
        const QByteArray body = TanChallanDraft::body(TanChallanDraft::Page(page), payment(), QStringLiteral("R1"), Words);
        QVERIFY2(body.startsWith("{\"header\":{\"formName\":\"PO-03-PYMNT\"},\"formData\":{"), body.constData());
        const JsonValue whole = ParseJson(QString::fromUtf8(body));
        const JsonValue *formData = whole.dictionary() ? whole.dictionary()->find(QStringLiteral("formData")) : nullptr;
        QVERIFY(formData && formData->dictionary());
        QCOMPARE(formData->dictionary()->keys(), keys);
    }

    // page; key; the value as JSON text (texts quoted, amounts bare)
    void values_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("2 year as a number") << 2 << "assmentYear" << "2025";
        QTest::newRow("2 amount") << 2 << "basicTax" << "1500.5";
        QTest::newRow("2 empty amount is 0") << 2 << "interest" << "0";
        QTest::newRow("2 words") << 2 << "totalAmtWord" << "\"" + Words + "\"";
        QTest::newRow("2 reference of the first reply") << 2 << "pymntRefNum" << "\"R1\"";
        QTest::newRow("3 mode description") << 3 << "paymentModeDesc" << "\"Pay at Bank Counter\"";
        QTest::newRow("2 no mode description") << 2 << "paymentModeDesc" << "<absent>";
        QTest::newRow("1 no bank details") << 1 << "effBankDetails" << "<absent>";
    }
    void values()
    {
        QFETCH(int, page);
        QFETCH(QString, key);
        QTEST(valueOf(TanChallanDraft::body(TanChallanDraft::Page(page), payment(), QStringLiteral("R1"), Words), key), "value");
    }

    void replyCheck_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("reference");
        QTest::addColumn<QString>("detail");
        QTest::newRow("saved") << R"({"successFlag":"true","pymntRefNum":"261100000001","errors":[]})" << ""
                               << "261100000001" << "";
        QTest::newRow("flag and number unquoted") << R"({"successFlag":true,"pymntRefNum":2611})" << "" << "2611" << "";
        QTest::newRow("refused, with the portal's reason")
            << R"({"successFlag":"false","pymntRefNum":"X1","errors":[{"code":"EF40012","desc":"Invalid TAN"}]})"
            << "Failed to Save 'Payment Details' Page !" << "" << "EF40012: Invalid TAN";
        QTest::newRow("empty reference") << R"({"successFlag":"true","pymntRefNum":""})"
                                         << "Failed to verify 'Payment Details' Page !" << "" << "";
        QTest::newRow("not JSON") << "<html>502 Bad Gateway</html>" << "Failed to Save 'Payment Details' Page !" << ""
                                  << "The reply is not JSON: <html>502 Bad Gateway</html>";
    }
    void replyCheck()
    {
        QFETCH(QString, reply);
        QString given = QStringLiteral("stale");
        QString why;
        QTEST(TanChallanDraft::replyFailure(reply, QStringLiteral("Payment Details"), &given, &why), "failure");
        QTEST(given, "reference");
        QTEST(why, "detail");
    }
};

TDS_TEST(TanDraftBodyTest)
#include "TanDraftBodyTest.moc"
