// Every window driven from the keyboard as a new operator would: unique access keys, the
// cursor in the first field, Enter walking the deductor's tabs, Alt+S and Alt+C.
#include "TestRegistry.h"

#include "DeductorDialog.h"
#include "MainWindow.h"
#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "entry/FormRegistry.h"
#include "host/DataObject.h"
#include "host/Settings.h"
#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QScopeGuard>
#include <QSet>
#include <QSettings>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>
#include <algorithm>

namespace {

// Shown, or on a tab page the operator can switch to.
bool reachable(const QWidget *w, const QWidget *window)
{
    for (const QWidget *a = w; a && a != window; a = a->parentWidget()) {
        const bool hidden = a->testAttribute(Qt::WA_WState_Hidden) && a->testAttribute(Qt::WA_WState_ExplicitShowHide);
        if (hidden && !qobject_cast<const QStackedWidget *>(a->parentWidget()))
            return false;
    }
    return true;
}

// Access key -> the texts that claim it.
QMap<QString, QStringList> accessKeys(const QWidget *window)
{
    QMap<QString, QStringList> keys;
    auto add = [&](const QString &text) {
        if (const QString key = QKeySequence::mnemonic(text).toString(); !key.isEmpty())
            keys[key] << text;
    };
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (!reachable(w, window))
            continue;
        if (auto *label = qobject_cast<QLabel *>(w))
            add(label->text());
        else if (auto *button = qobject_cast<QAbstractButton *>(w))
            add(button->text());
        else if (auto *group = qobject_cast<QGroupBox *>(w))
            add(group->title());
        else if (auto *tabs = qobject_cast<QTabWidget *>(w))
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs->tabText(i));
    }
    return keys;
}

QString clashes(const QWidget *window)
{
    QStringList out;
    const auto keys = accessKeys(window);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        if (it.value().size() > 1)
            out << it.key() + QStringLiteral(": ") + it.value().join(QStringLiteral(", "));
    }
    return out.join(QStringLiteral("; "));
}

QString focusName()
{
    QWidget *w = QApplication::focusWidget();
    return w ? w->objectName() : QStringLiteral("<none>");
}

QString stored(const QString &sql)
{
    return TestDatabase::rows(*modbase::dataObject(), sql).value(0, QStringLiteral("<none>"));
}

void removeRemembered()
{
    auto settings = Settings::open();
    settings->remove(MainWindow::lastDeductorKey());
    settings->remove(MainWindow::lastYearKey());
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;

    std::unique_ptr<DeductorDialog> openDeductor(const QString &code)
    {
        auto dialog = std::make_unique<DeductorDialog>(modbase::dataObject(), code);
        dialog->setDialogs(&m_dialogs);
        dialog->show();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            return nullptr;
        return dialog;
    }

    static void press(int key, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), mods);
    }

    // Types the deductor's code and name into a new dialog, the way an operator starts.
    static void typeCodeAndName(const QString &code)
    {
        QTest::keyClicks(QApplication::focusWidget(), code);
        press(Qt::Key_Return);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("keyboard traders"));
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY(Forms::create());
        auto *data = dynamic_cast<DataObject *>(modbase::dataObject());
        QVERIFY(data);
        QVERIFY(data->loadDemo());
        removeRemembered();
    }

    void cleanupTestCase()
    {
        removeRemembered();
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void init()
    {
        m_dialogs = ScriptedDialogs();
        modbase::dataObject()->setCodeno(QStringLiteral("DEMO01"));
        modbase::dataObject()->setAsYear(QStringLiteral("2025-26"));
    }

    void everyWindowHasItsOwnAccessKeysAndOpensInItsFirstField_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("first");   // empty: the window's own first field
        QTest::newRow("main window") << "main" << "cboDeductor";
        QTest::newRow("new deductor") << "deductor" << "txtCode_No";
        QTest::newRow("edit deductor") << "deductor DEMO01" << "txtName";
        for (const FormDescriptor &form : FormRegistry::all()) {
            if (form.available())
                QTest::newRow(form.operation) << QString::fromLatin1(form.operation) << QString();
        }
    }
    void everyWindowHasItsOwnAccessKeysAndOpensInItsFirstField()
    {
        QFETCH(QString, window);
        QFETCH(QString, first);
        std::unique_ptr<QWidget> w;
        if (window == QLatin1String("main")) {
            w = std::make_unique<MainWindow>(modbase::dataObject(), Forms::create());
        } else if (window.startsWith(QLatin1String("deductor"))) {
            w = std::make_unique<DeductorDialog>(modbase::dataObject(), window.mid(9));
        } else {
            const FormDescriptor *form = FormRegistry::byOperation(window);
            QVERIFY(form && form->window);
            w.reset(form->window());
        }
        auto *formWindow = qobject_cast<FormWindow *>(w.get());
        if (formWindow)
            formWindow->setDialogs(&m_dialogs);
        w->show();
        QVERIFY(QTest::qWaitForWindowActive(w.get()));

        const QString clash = clashes(w.get());
        QVERIFY2(clash.isEmpty(), qPrintable(clash));

        if (first.isEmpty()) {
            QVERIFY(formWindow);
            QVERIFY(formWindow->firstField());
            first = formWindow->firstField()->objectName();
        }
        QTRY_COMPARE(focusName(), first);
    }

    void deductorAltSSavesAndAltCCancelsAfterAsking()
    {
        auto dialog = openDeductor(QString());
        QVERIFY(dialog);
        typeCodeAndName(QStringLiteral("kbd01"));

        // Alt+C asks; No keeps the dialog and types nothing into the field.
        m_dialogs.answers.enqueue(false);
        press(Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked.first().message, FormWindow::exitQuestion());
        QVERIFY(dialog->isVisible());
        QCOMPARE(FieldBehaviour::textOf(dialog->field(QStringLiteral("Name"))), QStringLiteral("KEYBOARD TRADERS"));

        press(Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(stored(QStringLiteral("Select Name From Main_Info Where Code_No='KBD01'")), QStringLiteral("KEYBOARD TRADERS"));
        QCOMPARE(stored(QStringLiteral("Select Name From Main_Info_oth Where code_no='KBD01'")), QStringLiteral("KEYBOARD TRADERS"));

        auto again = openDeductor(QStringLiteral("KBD01"));
        QVERIFY(again);
        m_dialogs.answers.enqueue(true);
        press(Qt::Key_C, Qt::AltModifier);
        QTRY_VERIFY(!again->isVisible());
        QCOMPARE(again->result(), int(QDialog::Rejected));
    }

    void enterWalksEachTabThenTheNextAndNeverSaves()
    {
        auto dialog = openDeductor(QString());
        QVERIFY(dialog);
        auto *tabs = dialog->findChild<QTabWidget *>();
        QVERIFY(tabs);
        // Enter visits every field once, page after page, starting with the code.
        QStringList visited;
        QList<int> pages;
        while (focusName().startsWith(QLatin1String("txt")) && visited.size() < 60) {
            visited << focusName();
            pages << tabs->currentIndex();
            press(Qt::Key_Return);
        }
        QCOMPARE(visited.first(), QStringLiteral("txtCode_No"));
        QCOMPARE(QSet<QString>(visited.begin(), visited.end()).size(), visited.size());
        QVERIFY(std::is_sorted(pages.begin(), pages.end()));
        QCOMPARE(pages.last(), tabs->count() - 1);
        QVERIFY(visited.contains(QStringLiteral("txtResp_Pan")) && visited.contains(QStringLiteral("txtdob")));
        // Past the last field Enter reaches the buttons, and a button not pressed saves nothing.
        QCOMPARE(focusName(), QStringLiteral("cmdupdate"));
        press(Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        QVERIFY(m_dialogs.asked.isEmpty());
    }

    void enterOnARefusedLastFieldStaysOnItsTab()
    {
        auto dialog = openDeductor(QString());
        QVERIFY(dialog);
        auto *tabs = dialog->findChild<QTabWidget *>();
        auto *date = qobject_cast<QLineEdit *>(dialog->field(QStringLiteral("FormDate")));
        tabs->setCurrentIndex(1);
        date->setFocus();
        QTRY_VERIFY(date->hasFocus());
        date->clear();
        QTest::keyClicks(date, QStringLiteral("31/02/2025"));
        press(Qt::Key_Return);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked.first().message, QStringLiteral("Type the date as dd/mm/yyyy."));
        QCOMPARE(tabs->currentIndex(), 1);
        QTRY_COMPARE(focusName(), QStringLiteral("txtFormDate"));

        date->clear();
        QTest::keyClicks(date, QStringLiteral("1/4/25"));
        press(Qt::Key_Return);
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(focusName(), QStringLiteral("txtstatus"));
        QCOMPARE(date->text(), QStringLiteral("01/04/2025"));
        QCOMPARE(m_dialogs.asked.size(), 1);
    }

    void altSChecksTheFieldItIsIn_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("refusal");   // empty: saved
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("stored");
        QTest::newRow("date packed, other tab") << "KBD12" << "dob" << "15081990" << ""
                                                << "Select dob From Main_Info_oth Where code_no='KBD12'" << "15/08/1990";
        QTest::newRow("apostrophe kept") << "KBD13" << "Resp_FName" << "d'souza" << ""
                                         << "Select Resp_FName From Main_Info Where Code_No='KBD13'" << "D'SOUZA";
        QTest::newRow("invalid PAN")
            << "KBD14" << "panno" << "abcde1234" << "Invalid PAN: five letters, four digits and a letter, such as AABCD1234E."
            << "Select Name From Main_Info Where Code_No='KBD14'" << "<none>";
    }
    void altSChecksTheFieldItIsIn()
    {
        QFETCH(QString, code);
        QFETCH(QString, column);
        QFETCH(QString, typed);
        QFETCH(QString, refusal);
        QFETCH(QString, query);
        QFETCH(QString, stored);
        auto dialog = openDeductor(QString());
        QVERIFY(dialog);
        typeCodeAndName(code);
        QWidget *field = dialog->field(column);
        QVERIFY(field);
        auto *tabs = dialog->findChild<QTabWidget *>();
        for (int t = 0; t < tabs->count(); ++t) {
            if (tabs->widget(t)->isAncestorOf(field))
                tabs->setCurrentIndex(t);
        }
        field->setFocus();
        QTRY_VERIFY(field->hasFocus());
        qobject_cast<QLineEdit *>(field)->clear();
        QTest::keyClicks(field, typed);

        press(Qt::Key_S, Qt::AltModifier);
        if (refusal.isEmpty()) {
            QTRY_VERIFY(!dialog->isVisible());
        } else {
            QTRY_COMPARE(m_dialogs.asked.size(), 1);
            QVERIFY(dialog->isVisible());
            QCOMPARE(m_dialogs.asked.first().message, refusal);
            QCOMPARE(focusName(), QStringLiteral("txt") + column);
        }
        QCOMPARE(::stored(query), stored);
    }

    void aFailedSaveKeepsTheDialogAndTheRows()
    {
        IDataObject *d = modbase::dataObject();
        QVERIFY(d->ConQuery(QStringLiteral("Rename Table Main_Info_oth To Main_Info_oth_away")));
        const auto restore = qScopeGuard(
            [d] { d->ConQuery(QStringLiteral("Rename Table Main_Info_oth_away To Main_Info_oth")); });
        auto dialog = openDeductor(QStringLiteral("DEMO01"));
        QVERIFY(dialog);
        QCOMPARE(focusName(), QStringLiteral("txtName"));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" X"));
        press(Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(m_dialogs.asked.size(), 1);
        QVERIFY(dialog->isVisible());
        QVERIFY(m_dialogs.asked.first().message.startsWith(QLatin1String("The deductor could not be saved; nothing was changed.")));
        QCOMPARE(::stored(QStringLiteral("Select Name From Main_Info Where Code_No='DEMO01'")),
                 QStringLiteral("DEMO TRADERS PRIVATE LIMITED"));
    }

    void hostRemembersTheLastDeductorAndYear()
    {
        IDataObject *d = modbase::dataObject();
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Main_Info Where Code_No='KBD99'")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Main_Info (Code_No, Name) Values ('KBD99', 'LAST USED LTD')")));
        {
            MainWindow first(d, Forms::create());
            auto *deductors = first.findChild<QComboBox *>(QStringLiteral("cboDeductor"));
            deductors->setCurrentIndex(deductors->findData(QStringLiteral("KBD99")));
            first.findChild<QLineEdit *>(QStringLiteral("txtAsYear"))->setText(QStringLiteral("2023-24"));
            QCOMPARE(first.windowTitle(), QStringLiteral("TDS Forms - KBD99 LAST USED LTD - AY 2023-24"));
        }
        MainWindow next(d, Forms::create());
        QCOMPARE(next.findChild<QComboBox *>(QStringLiteral("cboDeductor"))->currentData().toString(), QStringLiteral("KBD99"));
        QCOMPARE(next.findChild<QLineEdit *>(QStringLiteral("txtAsYear"))->text(), QStringLiteral("2023-24"));
        QCOMPARE(next.windowTitle(), QStringLiteral("TDS Forms - KBD99 LAST USED LTD - AY 2023-24"));
        removeRemembered();
    }
};

TDS_TEST(TestKeyboard)
#include "TestKeyboard.moc"
