// Forms 15G and 15H of October 2015: the checks before saving and the window by keys (the
// income details inside the row are checked through the command line).
#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "declarations/Oct15Window.h"
#include "ui/FieldBehaviour.h"
#include "ui/ScheduleGrid.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Oct15Slots;

namespace {

QString table(bool form15H)
{
    return form15H ? QStringLiteral("Tb15hNew") : QStringLiteral("Tb15gNew");
}

// A declaration every check accepts, with one income row.
QStringList valid(const Oct15Form &f)
{
    const Declarant at = f.at();
    QStringList v(f.slotTable().size());
    v[at.name] = QStringLiteral("RAVI D'SOUZA");
    v[at.pan] = QStringLiteral("AAAPR1234K");
    if (f.is15H()) {
        v[at.dob] = QStringLiteral("05/03/1950");
    } else {
        v[at.status] = QStringLiteral("INDIVIDUAL");
        v[at.residential] = QStringLiteral("RESIDENT");
    }
    v[at.previousYear] = QStringLiteral("2024-25");
    v[at.assessed] = QStringLiteral("No");
    v[at.estIncome] = QStringLiteral("180000.00");
    v[at.estTotal] = QStringLiteral("300000.00");
    v[at.formsFiled] = QStringLiteral("2");
    v[at.formsAmount] = QStringLiteral("60000.00");
    v[f.incomeSlot()] = packIncome({{QStringLiteral("FD 1"), QStringLiteral("INTEREST"), QStringLiteral("194A"),
                                     QStringLiteral("180000.00")}});
    v[f.payerSlot(PayerName)] = QStringLiteral("O'NEIL BANK LTD");
    v[f.payerSlot(SequenceNo)] = QStringLiteral("17");
    v[f.payerSlot(PayerTan)] = QStringLiteral("MUMO12345A");
    v[f.payerSlot(AmountPaid)] = QStringLiteral("45000.00");
    return v;
}

} // namespace

class TestOct15Declarations : public QObject
{
    Q_OBJECT

    static QStringList rows(const QString &sql) { return FormsFixture::rows(sql); }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        for (const char *t : {"Tb15gNew", "Tb15hNew"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete From ") + QLatin1String(t)));
    }

    void checksBeforeSaving_data()
    {
        QTest::addColumn<bool>("form15H");
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, bool h, const char *item, const char *text, const char *caption) {
            QTest::newRow(name) << h << QString::fromLatin1(item) << QString::fromLatin1(text)
                                << QStringLiteral("Please specify valid '%1'.").arg(QString::fromLatin1(caption));
        };
        row("name", false, "name", "", "1. Name of Assessee (Declarant)");
        row("total below income", false, "estTotal", "1000.00",
            "17. Estimated total income of the P.Y. in which income mentioned in column 16 to be included");
        row("no income rows", false, "income", "", "19. Details of income for which the declaration is filed");
        row("row without amount", false, "income", "FD¦INTEREST¦194A¦Nil",
            "19. Details of income for which the declaration is filed");
        row("15H date of birth", true, "dob", "31/02/1950", "3. Date of Birth");
    }
    void checksBeforeSaving()
    {
        QFETCH(bool, form15H);
        QFETCH(QString, item);
        QFETCH(QString, text);
        QFETCH(QString, message);
        Oct15Form f(form15H);
        QVERIFY(f.load());
        const Declarant at = f.at();
        const QHash<QString, int> slotOf = {
            {"name", at.name}, {"dob", at.dob}, {"estTotal", at.estTotal}, {"income", f.incomeSlot()}};
        QStringList values = valid(f);
        values[slotOf.value(item)] = text;
        QCOMPARE(f.storeRecord(0, values), 0);
        QCOMPARE(f.saveError(), message);
        QCOMPARE(f.refusedSlot(), slotOf.value(item));
        QVERIFY(rows(QStringLiteral("Select * From ") + table(form15H)).isEmpty());
    }

    // Opens in its first field, Enter walks the items in the order of the form, a refused
    // save puts the cursor on the item, the grid takes its rows by keys, Alt+V saves.
    void windowByKeys()
    {
        ScriptedDialogs dialogs;
        frm15gOct15 w;
        w.setDialogs(&dialogs);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTest::keyClick(&w, Qt::Key_W, Qt::AltModifier);
        QTRY_VERIFY(w.declaration().editing());
        SlotFields *m = w.txtfieldsM();
        const Declarant at = w.declaration().at();
        QTRY_COMPARE(QApplication::focusWidget(), m->widget(at.name));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("ravi"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), m->widget(at.pan));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("aaapr1234k"));
        for (int slot : {at.status, at.previousYear, at.residential, at.flat}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QCOMPARE(QApplication::focusWidget(), m->widget(slot));
        }
        QCOMPARE(static_cast<QLineEdit *>(m->widget(at.previousYear))->text(), QStringLiteral("2023-24"));

        QTest::keyClick(&w, Qt::Key_V, Qt::AltModifier);
        QTRY_COMPARE(dialogs.asked.size(), 1);
        QCOMPARE(dialogs.asked.last().message, QStringLiteral("Please specify valid '3. Status'."));
        QCOMPARE(QApplication::focusWidget(), m->widget(at.status));

        static_cast<QComboBox *>(m->widget(at.status))->setCurrentText(QStringLiteral("INDIVIDUAL"));
        static_cast<QComboBox *>(m->widget(at.residential))->setCurrentText(QStringLiteral("RESIDENT"));
        static_cast<QComboBox *>(m->widget(at.assessed))->setCurrentText(QStringLiteral("No"));
        static_cast<QLineEdit *>(m->widget(at.estIncome))->setText(QStringLiteral("1500"));
        static_cast<QLineEdit *>(m->widget(at.estTotal))->setText(QStringLiteral("250000"));
        // "&Add Row": Alt+A, its own key in this window.
        QTest::keyClick(&w, Qt::Key_A, Qt::AltModifier);
        ScheduleGrid *grid = w.vsM();
        QTRY_COMPARE(grid->rowCount(), 1);
        QTRY_VERIFY(grid->hasFocus());
        for (const char *cell : {"fd 9", "interest", "194a", "1500"}) {
            // The first key opens the cell's editor, which takes the rest.
            for (const char c : QByteArray(cell))
                QTest::keyClick(QApplication::focusWidget(), c);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        // The grid ends the page: Enter after its last cell goes on to Part II.
        QTRY_COMPARE(QApplication::focusWidget(), w.txtfieldsP()->widget(PayerName));
        static_cast<QLineEdit *>(w.txtfieldsP()->widget(SequenceNo))->setText(QStringLiteral("5"));
        QCOMPARE(static_cast<QLineEdit *>(w.txtfieldsP()->widget(PayerTan))->text(), QStringLiteral("MUMO12345A"));
        QTest::keyClick(&w, Qt::Key_V, Qt::AltModifier);
        QTRY_COMPARE(rows(QStringLiteral("Select FormSrNo, Name, PAN, PrevYear, EstIncome, IncomeDetails, PName, "
                                         "PSequenceNo, PTan From Tb15gNew")),
                     QStringList{"1|RAVI|AAAPR1234K|2023-24|1500|FD 9¦INTEREST¦194A¦1500.00|O'NEIL BANK LTD|5|MUMO12345A"});
        QCOMPARE(dialogs.asked.size(), 1);
        QCOMPARE(w.statusText(), QStringLiteral("Declaration 1 saved"));
        QVERIFY(grid->isReadOnly());
    }
};

TDS_TEST(TestOct15Declarations)
#include "TestOct15Declarations.moc"
