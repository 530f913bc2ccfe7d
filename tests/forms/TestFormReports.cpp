#include "FormsFixture.h"
#include "TestRegistry.h"
#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"
#include "forms/StoredFormPrint.h"

#include <QRegularExpression>

namespace {

QStringList printed(const std::function<void()> &build)
{
    IReportObject *r = modbase::reportObject();
    r->NewReport();
    build();
    QStringList lines = r->reportText().split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

// The running text of the page: lines trimmed and joined by single blanks.
QString flowing(const QStringList &lines)
{
    QStringList parts;
    for (const QString &l : lines) {
        const QString t = l.trimmed();
        if (!t.isEmpty())
            parts << t;
    }
    return parts.join(QLatin1Char(' '));
}

int indexOfLine(const QStringList &lines, const QString &start)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].startsWith(start))
            return i;
    }
    return -1;
}

int leadingBlanks(const QString &line)
{
    int n = 0;
    while (n < line.size() && line.at(n) == QLatin1Char(' '))
        ++n;
    return n;
}

} // namespace

class TestFormReports : public QObject
{
    Q_OBJECT

    IDataObject *data() { return modbase::dataObject(); }

    static void verifyPage(const QStringList &lines)
    {
        QVERIFY(!lines.isEmpty());
        for (const QString &l : lines) {
            QVERIFY2(l.size() <= 78, qPrintable(QStringLiteral("%1 positions: %2").arg(l.size()).arg(l)));
            QVERIFY2(!l.contains(QChar(27)), qPrintable(l));
        }
    }

    // Each text appears in the running text, in this order.
    static void verifyInOrder(const QString &text, const QStringList &parts)
    {
        qsizetype from = 0;
        for (const QString &p : parts) {
            const qsizetype at = text.indexOf(p, from);
            QVERIFY2(at >= 0, qPrintable(QStringLiteral("missing or out of order: ") + p));
            from = at + p.size();
        }
    }

    static void verifyCentredTitle(const QStringList &lines, const QString &title, const QString &rule)
    {
        QCOMPARE(lines.value(0).trimmed(), title);
        QVERIFY(qAbs(leadingBlanks(lines.value(0)) - (78 - int(title.size())) / 2) <= 1);
        QCOMPARE(lines.value(1).trimmed(), rule);
        QVERIFY(qAbs(leadingBlanks(lines.value(1)) - (78 - int(rule.size())) / 2) <= 1);
    }

    // Continuation lines of a lettered paragraph hang under its text, past the "(a) ".
    static void verifyHanging(const QStringList &lines, const QString &start)
    {
        const int at = indexOfLine(lines, start);
        QVERIFY2(at >= 0, qPrintable(start));
        QVERIFY(at + 1 < lines.size());
        QCOMPARE(leadingBlanks(lines[at + 1]), 4);
    }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        data()->setAsYear(QStringLiteral("2024-25"));
    }

    void form15c()
    {
        Form15CDLogic form(Form15CDLogic::Kind::C);
        form.load();
        const QStringList fields{"ITO (INTL TAXATION) 1(1), MUMBAI", "MUMBAI AND CHENNAI", "LONDON, UNITED KINGDOM",
                                 "2024-25"};
        for (int i = 0; i < 4; ++i)
            form.setField(i, fields[i]);
        const QStringList lines = printed([&] { form.buildReport(); });
        verifyPage(lines);
        verifyCentredTitle(lines, QStringLiteral("FORM NO. 15C"), QStringLiteral("[See Rule 29B]"));
        const QString text = flowing(lines);
        verifyInOrder(text, {
            "Application by a banking company for a certificate under section 195(3) of the Income-tax Act, 1961, "
            "for receipt of interest and other sums without deduction of tax",
            "To The Assessing Officer ITO (INTL TAXATION) 1(1), MUMBAI",
            "Sir,",
            "I, RAVI KUMAR being the principal officer of O'NEIL BANK LTD hereby declare:",
            "(a) that O'NEIL BANK LTD is a banking company which is neither an Indian company nor a company which "
            "has made the prescribed arrangements for the declaration and payment of dividends within India and "
            "which is operating in India through a branch(es) at MUMBAI AND CHENNAI",
            "(b) that the head office of the said company is situated at LONDON, UNITED KINGDOM",
            "(c) that the said company is entitled to receive interest (other than 'Interest on securities') and "
            "other sums not being dividends, chargeable underthe provisions of the Income-tax Act, 1961, during the "
            "financial year 2024-25",
            "(d) that the company fulfils all the conditions laid down in rule 29B of the Income-tax Rules, 1962.",
            "I, therefore, request that a certificate may be issued authorising the said company to receive "
            "interest other than 'Interest on securities' and other sums not being dividends, without deduction "
            "of tax under sub-section (1) of section 195 of the Income-tax Act, 1961, during the financial year "
            "2024-25",
            "I hereby declare that what is stated in this application is correct.",
            "...............",
            "Date 15/06/2024",
            "Signature",
            "12 HILL VIEW",
        });
        // Paragraphs keep their four-blank indent.
        QVERIFY(indexOfLine(lines, QStringLiteral("    I, therefore, request")) > 0);
        QVERIFY(indexOfLine(lines, QStringLiteral("    I, RAVI KUMAR being")) > 0);
        verifyHanging(lines, QStringLiteral("(a) that"));
        verifyHanging(lines, QStringLiteral("(c) that"));
        // The signature column is right-aligned to the edge of the page.
        const int sig = indexOfLine(lines, QStringLiteral("Date 15/06/2024"));
        QVERIFY(sig > 0);
        QVERIFY(lines[sig].endsWith(QStringLiteral("Signature")));
        QCOMPARE(lines[sig].size(), 78);
        QVERIFY(lines[sig - 1].endsWith(QStringLiteral("...............")));
    }

    void form15d()
    {
        Form15CDLogic form(Form15CDLogic::Kind::D);
        form.load();
        const QStringList fields{"DCIT CIRCLE 2", "ACME INDIA", "NARIMAN POINT, MUMBAI", "SINGAPORE", "2023-24"};
        for (int i = 0; i < 5; ++i)
            form.setField(i, fields[i]);
        const QStringList lines = printed([&] { form.buildReport(); });
        verifyPage(lines);
        verifyCentredTitle(lines, QStringLiteral("FORM NO. 15D"), QStringLiteral("[See Rule 29B]"));
        verifyInOrder(flowing(lines), {
            "Application by a person other than a banking company for a certificate under section 195(3) of the "
            "Income-tax Act, 1961, for receipt of sums other than interest and dividends without deduction of tax",
            "To The Assessing Officer DCIT CIRCLE 2",
            "Sir,",
            "I, RAVI KUMAR being the principal officer of O'NEIL BANK LTD / We O'NEIL BANK LTD do hereby declare:",
            "(a) that I/ O'NEIL BANK LTD am/is a non-resident assessee (not being a banking company) carrying on "
            "business/profession in India through a branch(es) by name(s) ACME INDIA having office(s) at NARIMAN "
            "POINT, MUMBAI",
            "(b) that my head office/the head office of O'NEIL BANK LTD is situated at SINGAPORE",
            "(c) that I/ O'NEIL BANK LTD am/is entitled to receive income (other than dividends and interest) "
            "chargeable under the provisions of the Income-tax Act, 1961, during the financial year 2023-24",
            "(d) that I/ O'NEIL BANK LTD fulfil(s) all the conditions laid down in rule 29B of the Income-tax Rules, "
            "1962.",
            "I, therefore, request that a certificate may be issued authorising me/ O'NEIL BANK LTD to receive "
            "income other than interest or dividends without deduction of tax under sub-section(1) of section 195 "
            "of the Income-tax Act, 1961, during the financial year 2023-24",
            "I hereby declare that what is stated in this application is correct.",
            "Date 15/06/2024",
            "Signature",
        });
        verifyHanging(lines, QStringLiteral("(a) that"));
    }

    void form15iFinancialYear_data()
    {
        QTest::addColumn<QString>("asYear");
        QTest::addColumn<QString>("financialYear");
        QTest::newRow("2024-25") << QStringLiteral("2024-25") << QStringLiteral("2023-24");
        QTest::newRow("2025-26") << QStringLiteral("2025-26") << QStringLiteral("2024-25");
        QTest::newRow("2010-11") << QStringLiteral("2010-11") << QStringLiteral("2009-10");
        QTest::newRow("2000-01") << QStringLiteral("2000-01") << QStringLiteral("1999-00");
    }
    void form15iFinancialYear()
    {
        QFETCH(QString, asYear);
        QFETCH(QString, financialYear);
        QCOMPARE(Form15ILogic::financialYear(asYear), financialYear);
        data()->setAsYear(asYear);
        Form15ILogic form;
        const QStringList lines = printed([&] { form.buildReport(); });
        QVERIFY(flowing(lines).contains(QStringLiteral("heavy goods carriages/trucks during the Financial Year ")
                                        + financialYear));
    }

    void form15i()
    {
        Form15ILogic form;
        form.load();
        form.setRegistration(1, QStringLiteral("MH12AB1234"));
        form.setRegistrationDate(1, QStringLiteral("01/04/2019"));
        // Line 2 left blank: printed all the same.
        const QStringList lines = printed([&] { form.buildReport(); });
        verifyPage(lines);
        verifyCentredTitle(lines, QStringLiteral("FORM NO. 15I"), QStringLiteral("[See sub-rule [1] of rule 29D]"));
        const QString text = flowing(lines);
        verifyInOrder(text, {
            "Declaration for non-deduction of tax at source to be furnished to contractor under the second proviso "
            "to clause [i] of sub-section (3) of section 194C by sub-contractor not owning more than two heavy "
            "goods carriages/trucks during the Financial Year 2023-24",
            "1. Name of the Individual",
            ": RAVI KUMAR",
            "2. Name of the Father",
            ": SURESH KUMAR",
            "3. Permanent Account Number",
            ": AAACO1234B",
            "4. Address",
            ": 12 HILL VIEW, MG ROAD, PUNE",
            "5. If assessed to tax,",
            ": WARD 3(2)",
            "6. Particulars of the heavy goods carriages/trucks owned during the Financial Year are as under:",
            "S. No.",
            "Registration Number",
            "1.",
            "MH12AB1234",
            "01/04/2019",
            "2.",
            "Place PUNE",
            "...............",
            "Date 15/06/2024",
            "Signature",
        });
        // The numbered label wraps inside its 30 positions, hanging under its text.
        const int label = indexOfLine(lines, QStringLiteral("1. Name of the Individual"));
        QVERIFY(label >= 0);
        QVERIFY(lines[label].indexOf(QStringLiteral(": RAVI KUMAR")) >= 30);
        QCOMPARE(leadingBlanks(lines[label + 1]), 3);

        // The vehicle table is closed: a rule above the header, and each line in borders.
        const int header = lines.indexOf(QRegularExpression(QStringLiteral(".*S\\. No\\..*")));
        QVERIFY(header > 0);
        QVERIFY(lines[header - 1].contains(QStringLiteral("----")) || lines[header - 1].contains(QStringLiteral("+")));
        const int item2 = lines.indexOf(QRegularExpression(QStringLiteral("^\\|\\s*2\\.\\s*\\|.*")));
        QVERIFY2(item2 > header, qPrintable(lines.join(QLatin1Char('\n'))));
        QVERIFY(lines[item2].trimmed().endsWith(QLatin1Char('|')));
        QVERIFY(lines.value(item2 + 1).contains(QStringLiteral("---")));
        // Three empty lines separate the table from the signature.
        const int place = indexOfLine(lines, QStringLiteral("Place PUNE"));
        QVERIFY(place > item2 + 4);
        for (int i = place - 3; i < place; ++i)
            QVERIFY(lines[i].trimmed().isEmpty());
    }

    void storedFormPrintUsesTheSavedRow()
    {
        Form15CDLogic form(Form15CDLogic::Kind::C);
        form.load();
        form.setField(0, QStringLiteral("ASSESSING OFFICER O'HARA"));
        QVERIFY(form.save());
        IReportObject *r = modbase::reportObject();
        r->NewReport();
        r->printtext(QStringLiteral("LEFT OVER FROM AN EARLIER REPORT"));
        StoredFormPrint::build(StoredFormPrint::Form::F15C);
        const QString text = r->reportText();
        QVERIFY(text.contains(QStringLiteral("ASSESSING OFFICER O'HARA")));
        QVERIFY(!text.contains(QStringLiteral("LEFT OVER")));
    }
};

TDS_TEST(TestFormReports)
#include "TestFormReports.moc"
