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

    void rowsBelongToTheirDeductorYear()
    {
        QVERIFY(save(QStringLiteral("15c"), {QStringLiteral("AO FOR 2024-25")}));
        data()->setAsYear(QStringLiteral("2025-26"));
        Form15CDLogic next(Form15CDLogic::Kind::C);
        next.load();
        QCOMPARE(next.fields(), QStringList(4));
    }

    // Blank lines are not stored; the rows of an earlier save are replaced.
    void form15iLines()
    {
        QVERIFY(save(QStringLiteral("15i"), {"OLD1", "", "OLD2", ""}));
        QVERIFY(save(QStringLiteral("15i"), {"  ", "", "", "02/02/2022"}));
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select SrNo, RegNo, RegDate from Form15I")), QStringList{"2||02/02/2022"});
        Form15ILogic again;
        again.load();
        QCOMPARE((QStringList{again.registration(1), again.registrationDate(2)}), (QStringList{"", "02/02/2022"}));
    }

    void failedInsertKeepsThePreviousRow()
    {
        QVERIFY(save(QStringLiteral("15c"), {"FIRST"}));
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table Form15C drop column FinYear")));   // every insert fails
        const bool saved = save(QStringLiteral("15c"), {"SECOND"});
        const QStringList after = FormsFixture::rows(QStringLiteral("Select * from Form15C"));
        QVERIFY(data()->ConQuery(QStringLiteral("Alter table Form15C add column FinYear VARCHAR(255) NULL")));
        QVERIFY2(!saved && after.size() == 1 && after[0].contains("FIRST"), qPrintable(after.join('\n')));
        QVERIFY2(TestDatabase::logText().contains("frm15c\tcmdupdate_Click"), qPrintable(TestDatabase::logText()));
    }
};

TDS_TEST(TestFormStorage)
#include "TestFormStorage.moc"
