#include "FormsFixture.h"
#include "TestRegistry.h"
#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"

using Kind = Form15CDLogic::Kind;
Q_DECLARE_METATYPE(Form15CDLogic::Kind)

class TestFormStorage : public QObject
{
    Q_OBJECT

    IDataObject *data() { return modbase::dataObject(); }
    int period() { return modbase::GETPERIODCODEOTH(); }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        data()->setAsYear(QStringLiteral("2024-25"));
        for (const char *t : {"Form15C", "Form15D", "Form15I"})
            QVERIFY(data()->ConQuery(QStringLiteral("Delete from ") + QLatin1String(t)));
        TestDatabase::removeLog();
    }

    void saveAndReload_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("15C") << Kind::C
                             << QStringList{"ITO WARD 1(1), MUMBAI", "MUMBAI, CHENNAI", "LONDON", "2024-25"};
        QTest::newRow("15C apostrophe and backslash")
            << Kind::C << QStringList{"O'BRIEN'S OFFICE", "D'SOUZA ROAD", "C:\\HEAD\\OFFICE", "'2024-25'"};
        QTest::newRow("15C kept as typed, blanks and all")
            << Kind::C << QStringList{"  A O  ", "", "X", " "};
        QTest::newRow("15C empty") << Kind::C << QStringList{"", "", "", ""};
        QTest::newRow("15D") << Kind::D
                             << QStringList{"DCIT 2", "ACME INDIA BRANCH", "PUNE", "SINGAPORE", "2024-25"};
        QTest::newRow("15D apostrophe")
            << Kind::D << QStringList{"AO", "MARY'S", "KING'S ROAD", "ST. JOHN'S", "2024-25"};
        QTest::newRow("15D non-ASCII") << Kind::D << QStringList{"\u0906\u092f\u0915\u0930", "B", "C", "D", "E"};
    }
    void saveAndReload()
    {
        QFETCH(Kind, kind);
        QFETCH(QStringList, fields);
        Form15CDLogic form(kind);
        form.load();
        QVERIFY(form.periodCode() > 0);
        for (int i = 0; i < fields.size(); ++i)
            form.setField(i, fields[i]);
        QVERIFY(form.save());
        // A second save replaces the row instead of adding one.
        QVERIFY(form.save());

        const QStringList stored = FormsFixture::rows(QStringLiteral("Select * from ") + form.tableName());
        QCOMPARE(stored, QStringList{QString::number(form.periodCode()) + QLatin1Char('|') + fields.join(QLatin1Char('|'))});

        Form15CDLogic again(kind);
        again.load();
        QCOMPARE(again.fields(), fields);
        QCOMPARE(TestDatabase::logText(), QString());
    }

    void rowsBelongToTheirDeductorYear()
    {
        Form15CDLogic form(Kind::C);
        form.load();
        form.setField(0, QStringLiteral("AO FOR 2024-25"));
        QVERIFY(form.save());

        data()->setAsYear(QStringLiteral("2025-26"));
        Form15CDLogic next(Kind::C);
        next.load();
        QVERIFY(next.periodCode() != form.periodCode());
        QCOMPARE(next.fields(), QStringList(4));
        next.setField(0, QStringLiteral("AO FOR 2025-26"));
        QVERIFY(next.save());

        data()->setAsYear(QStringLiteral("2024-25"));
        Form15CDLogic back(Kind::C);
        back.load();
        QCOMPARE(back.field(0), QStringLiteral("AO FOR 2024-25"));
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select count(*) from Form15C")), QStringList{"2"});
    }

    void form15iLines_data()
    {
        QTest::addColumn<QStringList>("typed");      // reg 1, date 1, reg 2, date 2
        QTest::addColumn<QStringList>("stored");     // SrNo|reg|date
        QTest::addColumn<QStringList>("reloaded");
        QTest::newRow("both lines") << QStringList{"MH12AB1234", "01/04/2019", "MH14CD5678", "15/08/2020"}
                                    << QStringList{"1|MH12AB1234|01/04/2019", "2|MH14CD5678|15/08/2020"}
                                    << QStringList{"MH12AB1234", "01/04/2019", "MH14CD5678", "15/08/2020"};
        QTest::newRow("only line 2") << QStringList{"", "", "KA01XY0001", "02/02/2022"}
                                     << QStringList{"2|KA01XY0001|02/02/2022"}
                                     << QStringList{"", "", "KA01XY0001", "02/02/2022"};
        QTest::newRow("line 2 date only") << QStringList{"", "  ", "", "02/02/2022"}
                                          << QStringList{"2||02/02/2022"}
                                          << QStringList{"", "", "", "02/02/2022"};
        QTest::newRow("both blank") << QStringList{"", "", "", ""} << QStringList{} << QStringList{"", "", "", ""};
        QTest::newRow("blanks only") << QStringList{"   ", " ", "\t", ""} << QStringList{}
                                     << QStringList{"", "", "", ""};
        QTest::newRow("trimmed") << QStringList{"  MH12 AB 1234 ", " 01/04/2019", "", ""}
                                 << QStringList{"1|MH12 AB 1234|01/04/2019"}
                                 << QStringList{"MH12 AB 1234", "01/04/2019", "", ""};
        QTest::newRow("apostrophe") << QStringList{"O'TRUCK", "", "", ""} << QStringList{"1|O'TRUCK|"}
                                    << QStringList{"O'TRUCK", "", "", ""};
    }
    void form15iLines()
    {
        QFETCH(QStringList, typed);
        QFETCH(QStringList, stored);
        QFETCH(QStringList, reloaded);
        // Rows from an earlier save are replaced, whatever they were.
        Form15ILogic old;
        old.load();
        old.setRegistration(1, QStringLiteral("OLD1"));
        old.setRegistration(2, QStringLiteral("OLD2"));
        QVERIFY(old.save());

        Form15ILogic form;
        form.load();
        form.setRegistration(1, typed[0]);
        form.setRegistrationDate(1, typed[1]);
        form.setRegistration(2, typed[2]);
        form.setRegistrationDate(2, typed[3]);
        QVERIFY(form.save());
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select SrNo, RegNo, RegDate from Form15I where period_code=")
                                    + QString::number(period()) + QStringLiteral(" order by SrNo")),
                 stored);

        Form15ILogic again;
        again.load();
        QCOMPARE((QStringList{again.registration(1), again.registrationDate(1), again.registration(2),
                              again.registrationDate(2)}),
                 reloaded);
    }

    void failedInsertKeepsThePreviousRow_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("column");
        QTest::newRow("15C") << QStringLiteral("Form15C") << QStringLiteral("FinYear");
        QTest::newRow("15D") << QStringLiteral("Form15D") << QStringLiteral("FinYear");
        QTest::newRow("15I") << QStringLiteral("Form15I") << QStringLiteral("RegDate");
    }
    void failedInsertKeepsThePreviousRow()
    {
        QFETCH(QString, table);
        QFETCH(QString, column);
        auto save = [&](const QString &text) {
            if (table == QLatin1String("Form15I")) {
                Form15ILogic f;
                f.load();
                f.setRegistration(1, text);
                f.setRegistration(2, text + QLatin1Char('2'));
                return f.save();
            }
            Form15CDLogic f(table == QLatin1String("Form15C") ? Kind::C : Kind::D);
            f.load();
            f.setField(0, text);
            return f.save();
        };
        QVERIFY(save(QStringLiteral("FIRST")));
        const QStringList before = FormsFixture::rows(QStringLiteral("Select * from ") + table);
        QVERIFY(!before.isEmpty());

        // One column fewer than the form writes: every insert now fails.
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table %1 drop column %2").arg(table, column)));
        const bool saved = save(QStringLiteral("SECOND"));
        const QStringList after = FormsFixture::rows(QStringLiteral("Select * from ") + table);
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table %1 add column %2 VARCHAR(255) NULL").arg(table, column)));

        QVERIFY(!saved);
        QCOMPARE(after.size(), before.size());
        for (int i = 0; i < after.size(); ++i)
            QVERIFY2(before[i].startsWith(after[i]), qPrintable(after[i]));
        QVERIFY(after.join(QLatin1Char('\n')).contains(QStringLiteral("FIRST")));
        const QString log = TestDatabase::logText();
        QVERIFY2(log.contains(table.toLower().replace(QStringLiteral("form"), QStringLiteral("frm"))
                              + QStringLiteral("\tcmdupdate_Click")),
                 qPrintable(log));
    }

    void withoutADatabaseTheFormStaysEmpty()
    {
        // A failing read is logged; the form shows blank fields instead of stopping.
        QVERIFY(data()->ConQuery(QStringLiteral("Rename table Form15D to Form15D_away")));
        Form15CDLogic form(Kind::D);
        form.load();
        QVERIFY(data()->ConQuery(QStringLiteral("Rename table Form15D_away to Form15D")));
        QCOMPARE(form.fields(), QStringList(5));
        QVERIFY(TestDatabase::logText().contains(QStringLiteral("frm15d\tForm_Load")));
    }
};

TDS_TEST(TestFormStorage)
#include "TestFormStorage.moc"
