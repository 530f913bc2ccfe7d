#include "FormsFixture.h"
#include "TestRegistry.h"
#include "ScriptedDialogs.h"
#include "entry/FormRegistry.h"
#include "shared/FormLogic.h"
#include "ui/FormWindow.h"

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

        QTest::newRow("15c") << "15c" << QStringList{"ITO 1(1), MUMBAI", "MUMBAI AND CHENNAI", "LONDON", "2024-25"}
            << "[See Rule 29B]" << QStringList{
            "I, RAVI KUMAR being the principal officer of O'NEIL BANK LTD hereby declare:",
            "(b) that the head office of the said company is situated at LONDON", "Date 15/06/2024", "Signature"};
        QTest::newRow("15d") << "15d" << QStringList{"DCIT CIRCLE 2", "ACME INDIA", "NARIMAN POINT", "SINGAPORE", "2023-24"}
            << "[See Rule 29B]" << QStringList{
            "(b) that my head office/the head office of O'NEIL BANK LTD is situated at SINGAPORE", "Signature"};
        // Line 2 left blank: printed all the same.
        QTest::newRow("15i") << "15i" << QStringList{"MH12AB1234", "01/04/2019"} << "[See sub-rule [1] of rule 29D]"
            << QStringList{"during the Financial Year 2023-24", "3. Permanent Account Number", ": AAACO1234B", "1.",
                           "MH12AB1234", "01/04/2019", "2.", "Place PUNE"};
    }
    void page()
    {
        QFETCH(QString, form);
        QFETCH(QStringList, fields);
        QFETCH(QString, rule);
        QFETCH(QStringList, inOrder);
        const QStringList lines = printed(form, fields);
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

        // The signature column is right-aligned to the edge of the page.
        const int sig = lineStarting(lines, QStringLiteral("Date 15/06/2024"));
        QVERIFY(sig > 0 && lines[sig].endsWith(QStringLiteral("Signature")) && lines[sig].size() == 78);
        QVERIFY(lines[sig - 1].endsWith(QStringLiteral("...............")));
    }

    // A table that cannot be read: the form says so, shows nothing it could save over the
    // record, and refuses to save.
    void failedLoadNeverSaves()
    {
        const QString key = QStringLiteral("15c"), table = QStringLiteral("Form15C");
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
        QVERIFY(!loaded && logic->loadFailed());
        QVERIFY2(logic->loadError().contains(table, Qt::CaseInsensitive), qPrintable(logic->loadError()));
        QVERIFY(!saved && logic->saveError().contains(QStringLiteral("nothing is saved")));
        QVERIFY(FormsFixture::rows(QStringLiteral("Select * from ") + table).first().contains(QStringLiteral("KEPT")));
        QVERIFY(dialogs.asked[0].message.contains(QStringLiteral("could not be read")));
        QVERIFY(!saveOffered);
    }
};

TDS_TEST(TestFormReports)
#include "TestFormReports.moc"
