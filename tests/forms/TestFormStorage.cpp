#include "FormsFixture.h"
#include "TestRegistry.h"

namespace {
bool save(const QString &form, const QStringList &fields)
{
    bool saved = false;
    FormsFixture::withForm(form, fields, [&](auto &f) { saved = f.save(); });
    return saved;
}
} // namespace

class TestFormStorage : public QObject
{
    Q_OBJECT

    IDataObject *data() { return modbase::dataObject(); }

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
        QTest::addColumn<QString>("form");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("15C apostrophe and backslash")
            << "15c" << QStringList{"O'BRIEN'S OFFICE", "D'SOUZA ROAD", "C:\\HEAD\\OFFICE", "'2024-25'"};
        QTest::newRow("15C kept as typed, blanks and all") << "15c" << QStringList{"  A O  ", "", "X", " "};
        QTest::newRow("15D non-ASCII") << "15d" << QStringList{"\u0906\u092f\u0915\u0930", "B", "C", "D", "E"};
    }
    void saveAndReload()
    {
        QFETCH(QString, form);
        QFETCH(QStringList, fields);
        // A second save replaces the row instead of adding one.
        QVERIFY(save(form, fields));
        QVERIFY(save(form, {}));
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select * from Form") + form.toUpper()),
                 QStringList{QString::number(modbase::GETPERIODCODEOTH()) + '|' + fields.join(QLatin1Char('|'))});
        Form15CDLogic again(form == QLatin1String("15c") ? Form15CDLogic::Kind::C : Form15CDLogic::Kind::D);
        again.load();
        QCOMPARE(again.fields(), fields);
        QCOMPARE(TestDatabase::logText(), QString());
    }

    void rowsBelongToTheirDeductorYear()
    {
        QVERIFY(save(QStringLiteral("15c"), {QStringLiteral("AO FOR 2024-25")}));
        data()->setAsYear(QStringLiteral("2025-26"));
        Form15CDLogic next(Form15CDLogic::Kind::C);
        next.load();
        QCOMPARE(next.fields(), QStringList(4));
        QVERIFY(save(QStringLiteral("15c"), {QStringLiteral("AO FOR 2025-26")}));
        data()->setAsYear(QStringLiteral("2024-25"));
        Form15CDLogic back(Form15CDLogic::Kind::C);
        back.load();
        QCOMPARE(back.field(0), QStringLiteral("AO FOR 2024-25"));
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select count(distinct period_code) from Form15C")), QStringList{"2"});
    }

    void form15iLines_data()
    {
        QTest::addColumn<QStringList>("typed");  // reg 1, date 1, reg 2, date 2
        QTest::addColumn<QStringList>("stored"); // SrNo|reg|date
        QTest::addColumn<QStringList>("reloaded");
        QTest::newRow("both lines") << QStringList{"MH12AB1234", "01/04/2019", "MH14CD5678", "15/08/2020"}
                                    << QStringList{"1|MH12AB1234|01/04/2019", "2|MH14CD5678|15/08/2020"}
                                    << QStringList{"MH12AB1234", "01/04/2019", "MH14CD5678", "15/08/2020"};
        QTest::newRow("line 2 date only") << QStringList{"", "  ", "", "02/02/2022"} << QStringList{"2||02/02/2022"}
                                          << QStringList{"", "", "", "02/02/2022"};
        QTest::newRow("both lines blank") << QStringList{"   ", "", "\t", ""} << QStringList{} << QStringList(4);
        QTest::newRow("trimmed, apostrophe kept") << QStringList{"  O'TRUCK 12 ", " 01/04/2019", "", ""}
                                                  << QStringList{"1|O'TRUCK 12|01/04/2019"}
                                                  << QStringList{"O'TRUCK 12", "01/04/2019", "", ""};
    }
    void form15iLines()
    {
        QFETCH(QStringList, typed);
        QFETCH(QStringList, stored);
        QFETCH(QStringList, reloaded);
        // Rows from an earlier save are replaced, whatever they were.
        QVERIFY(save(QStringLiteral("15i"), {"OLD1", "", "OLD2", ""}));
        QVERIFY(save(QStringLiteral("15i"), typed));
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select SrNo, RegNo, RegDate from Form15I order by SrNo")), stored);
        Form15ILogic again;
        again.load();
        QCOMPARE((QStringList{again.registration(1), again.registrationDate(1), again.registration(2),
                              again.registrationDate(2)}),
                 reloaded);
    }

    void failedInsertKeepsThePreviousRow_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("column");
        QTest::newRow("15C") << "15c" << "FinYear";
        QTest::newRow("15I") << "15i" << "RegDate";
    }
    void failedInsertKeepsThePreviousRow()
    {
        QFETCH(QString, form);
        QFETCH(QString, column);
        const QString table = QStringLiteral("Form") + form.toUpper();
        QVERIFY(save(form, {"FIRST", "", "FIRST2"}));
        const QStringList before = FormsFixture::rows(QStringLiteral("Select * from ") + table);
        // One column fewer than the form writes: every insert now fails.
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table %1 drop column %2").arg(table, column)));
        const bool saved = save(form, {"SECOND", "", "SECOND2"});
        const QStringList after = FormsFixture::rows(QStringLiteral("Select * from ") + table);
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table %1 add column %2 VARCHAR(255) NULL").arg(table, column)));

        QVERIFY(!saved);
        QCOMPARE(after.size(), before.size());
        for (int i = 0; i < after.size(); ++i)
            QVERIFY2(before[i].startsWith(after[i]) && after[i].contains("FIRST"), qPrintable(after[i]));
        QVERIFY2(TestDatabase::logText().contains("frm" + form + "\tcmdupdate_Click"), qPrintable(TestDatabase::logText()));
    }
};

TDS_TEST(TestFormStorage)
#include "TestFormStorage.moc"
