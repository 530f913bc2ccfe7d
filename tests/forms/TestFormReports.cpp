#include "FormsFixture.h"
#include "TestRegistry.h"
#include "ScriptedDialogs.h"
#include "entry/FormRegistry.h"
#include "shared/FormLogic.h"
#include "ui/FormWindow.h"

#include <QLineEdit>
#include <QPushButton>

#include <QRegularExpression>

namespace {

// The text page a form prints with these fields typed, trailing blank lines dropped.
QStringList printed(const QString &form, const QStringList &fields)
{
    modbase::reportObject()->NewReport();
    FormsFixture::withForm(form, fields, [](auto &f) { f.buildReport(); });
    QStringList lines = modbase::reportObject()->reportText().split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

int leadingBlanks(const QString &line)
{
    return int(line.indexOf(QRegularExpression(QStringLiteral("\\S"))));
}

int lineStarting(const QStringList &lines, const QString &start)
{
    return int(lines.indexOf(QRegularExpression(QRegularExpression::escape(start) + QStringLiteral(".*"))));
}

} // namespace

class TestFormReports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init() { modbase::dataObject()->setAsYear(QStringLiteral("2024-25")); }

    void page_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("rule");          // the line under the centred title
        QTest::addColumn<QStringList>("inOrder");   // the running text, lines joined by single blanks

        QTest::newRow("15c") << "15c"
            << QStringList{"ITO (INTL TAXATION) 1(1), MUMBAI", "MUMBAI AND CHENNAI", "LONDON, UNITED KINGDOM", "2024-25"}
            << "[See Rule 29B]" << QStringList{
            "Application by a banking company for a certificate under section 195(3) of the Income-tax Act, 1961, "
            "for receipt of interest and other sums without deduction of tax",
            "To The Assessing Officer ITO (INTL TAXATION) 1(1), MUMBAI", "Sir,",
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
            "I hereby declare that what is stated in this application is correct.", "...............",
            "Date 15/06/2024", "Signature", "12 HILL VIEW"};

        QTest::newRow("15d") << "15d" << QStringList{"DCIT CIRCLE 2", "ACME INDIA", "NARIMAN POINT, MUMBAI", "SINGAPORE", "2023-24"}
            << "[See Rule 29B]" << QStringList{
            "Application by a person other than a banking company for a certificate under section 195(3) of the "
            "Income-tax Act, 1961, for receipt of sums other than interest and dividends without deduction of tax",
            "To The Assessing Officer DCIT CIRCLE 2", "Sir,",
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
            "I hereby declare that what is stated in this application is correct.", "Date 15/06/2024", "Signature"};

        // Line 2 left blank: printed all the same.
        QTest::newRow("15i") << "15i" << QStringList{"MH12AB1234", "01/04/2019"} << "[See sub-rule [1] of rule 29D]"
            << QStringList{
            "Declaration for non-deduction of tax at source to be furnished to contractor under the second proviso "
            "to clause [i] of sub-section (3) of section 194C by sub-contractor not owning more than two heavy "
            "goods carriages/trucks during the Financial Year 2023-24",
            "1. Name of the Individual", ": RAVI KUMAR", "2. Name of the Father", ": SURESH KUMAR",
            "3. Permanent Account Number", ": AAACO1234B", "4. Address", ": 12 HILL VIEW, MG ROAD, PUNE",
            "5. If assessed to tax,", ": WARD 3(2)",
            "6. Particulars of the heavy goods carriages/trucks owned during the Financial Year are as under:",
            "S. No.", "Registration Number", "1.", "MH12AB1234", "01/04/2019", "2.", "Place PUNE", "...............",
            "Date 15/06/2024", "Signature"};
    }
    void page()
    {
        QFETCH(QString, form);
        QFETCH(QStringList, fields);
        QFETCH(QString, rule);
        QFETCH(QStringList, inOrder);
        const QStringList lines = printed(form, fields);
        QVERIFY(!lines.isEmpty());
        for (const QString &l : lines)
            QVERIFY2(l.size() <= 78 && !l.contains(QChar(27)), qPrintable(l));
        const QString title = QStringLiteral("FORM NO. ") + form.toUpper();
        for (const QString &centred : {title, rule}) {
            const QString line = lines.value(centred == title ? 0 : 1);
            QCOMPARE(line.trimmed(), centred);
            QVERIFY(qAbs(leadingBlanks(line) - (78 - int(centred.size())) / 2) <= 1);
        }

        QStringList parts;
        for (const QString &l : lines) {
            if (!l.trimmed().isEmpty())
                parts << l.trimmed();
        }
        const QString text = parts.join(QLatin1Char(' '));
        qsizetype from = 0;
        for (const QString &p : inOrder) {
            const qsizetype at = text.indexOf(p, from);
            QVERIFY2(at >= 0, qPrintable(QStringLiteral("missing or out of order: ") + p));
            from = at + p.size();
        }

        // Paragraphs keep their indent; "(a) " and "1. " make the next line hang under the text.
        if (form == QLatin1String("15c"))
            QVERIFY(lineStarting(lines, QStringLiteral("    I, RAVI KUMAR being")) > 0);
        if (form != QLatin1String("15i")) {
            QCOMPARE(leadingBlanks(lines.value(lineStarting(lines, QStringLiteral("(a) that")) + 1)), 4);
        } else {
            QCOMPARE(leadingBlanks(lines.value(lineStarting(lines, QStringLiteral("1. Name of the Individual")) + 1)), 3);
            // Three empty lines separate the vehicle table from the signature.
            const int place = lineStarting(lines, QStringLiteral("Place PUNE"));
            QVERIFY(place > 3 && lines[place - 4].startsWith(QLatin1Char('+')));
            for (int i = place - 3; i < place; ++i)
                QVERIFY(lines[i].trimmed().isEmpty());
        }
        // The signature column is right-aligned to the edge of the page.
        const int sig = lineStarting(lines, QStringLiteral("Date 15/06/2024"));
        QVERIFY(sig > 0 && lines[sig].endsWith(QStringLiteral("Signature")) && lines[sig].size() == 78);
        QVERIFY(lines[sig - 1].endsWith(QStringLiteral("...............")));
    }

    // The year before 2000-01 ends in "00", not "-1".
    void form15iFinancialYearAcrossTheCentury()
    {
        modbase::dataObject()->setAsYear(QStringLiteral("2000-01"));
        QVERIFY(printed(QStringLiteral("15i"), {}).join(QLatin1Char(' ')).simplified().contains(
            QStringLiteral("heavy goods carriages/trucks during the Financial Year 1999-00")));
    }

    void storedFormPrintUsesTheSavedRow()
    {
        bool saved = false;
        FormsFixture::withForm(QStringLiteral("15c"), {QStringLiteral("ASSESSING OFFICER O'HARA")},
                               [&](auto &f) { saved = f.save(); });
        QVERIFY(saved);
        IReportObject *r = modbase::reportObject();
        r->NewReport();
        r->printtext(QStringLiteral("LEFT OVER FROM AN EARLIER REPORT"));
        std::unique_ptr<FormLogic> logic = FormRegistry::byCliKey(QStringLiteral("15C"))->logic();
        QVERIFY(logic->load());
        r->NewReport();
        logic->buildReport();
        QVERIFY(r->reportText().contains(QStringLiteral("ASSESSING OFFICER O'HARA")));
        QVERIFY(!r->reportText().contains(QStringLiteral("LEFT OVER")));
        QCOMPARE(logic->documentName(), QStringLiteral("Form15C_D15_2024-25"));
    }

    // A table that cannot be read: the form says so, shows nothing it could save over the
    // record, and refuses to save.
    void failedLoadNeverSaves_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("table");
        QTest::newRow("15C") << "15c" << "Form15C";
        QTest::newRow("15I") << "15i" << "Form15I";
    }
    void failedLoadNeverSaves()
    {
        QFETCH(QString, key);
        QFETCH(QString, table);
        IDataObject *d = modbase::dataObject();
        FormsFixture::withForm(key, {QStringLiteral("KEPT")}, [](auto &f) { QVERIFY(f.save()); });
        QVERIFY(d->ConQuery(QStringLiteral("Rename Table %1 To %1_away").arg(table)));
        const FormDescriptor *form = FormRegistry::byCliKey(key);
        std::unique_ptr<FormLogic> logic = form->logic();
        const bool loaded = logic->load();
        const bool saved = logic->save();
        ScriptedDialogs dialogs;
        std::unique_ptr<QDialog> w(form->window());
        static_cast<FormWindow *>(w.get())->setDialogs(&dialogs);
        w->show();
        QTRY_COMPARE(dialogs.asked.size(), 1);
        const bool saveOffered = w->findChild<QPushButton *>(QStringLiteral("cmdupdate"))->isEnabled();
        w.reset();
        QVERIFY(d->ConQuery(QStringLiteral("Rename Table %1_away To %1").arg(table)));
        QVERIFY(!loaded);
        QVERIFY(logic->loadFailed());
        QVERIFY2(logic->loadError().contains(table, Qt::CaseInsensitive), qPrintable(logic->loadError()));
        QVERIFY(!saved);
        QVERIFY(logic->saveError().contains(QStringLiteral("nothing is saved")));
        QVERIFY(FormsFixture::rows(QStringLiteral("Select * from ") + table).first().contains(QStringLiteral("KEPT")));
        QVERIFY(dialogs.asked[0].message.contains(QStringLiteral("could not be read")));
        QVERIFY(!saveOffered);
    }
};

TDS_TEST(TestFormReports)
#include "TestFormReports.moc"
