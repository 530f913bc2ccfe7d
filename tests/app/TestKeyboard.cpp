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

// The access keys that more than one reachable text claims, with those texts.
QString clashes(const QWidget *window)
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
    QStringList out;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        if (it.value().size() > 1)
            out << it.key() + QStringLiteral(": ") + it.value().join(QStringLiteral(", "));
    }
    return out.join(QStringLiteral("; "));
}

QString focusName()
{
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QStringLiteral("<none>");
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

    static void press(int key, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), mods);
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY(Forms::create());
        auto *data = dynamic_cast<DataObject *>(modbase::dataObject());
        QVERIFY(data && data->loadDemo());
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

        QVERIFY2(clashes(w.get()).isEmpty(), qPrintable(clashes(w.get())));

        if (first.isEmpty()) {
            QVERIFY(formWindow && formWindow->firstField());
            first = formWindow->firstField()->objectName();
        }
        QTRY_COMPARE(focusName(), first);
    }

    // Enter visits every field once, page after page, and never presses a button; Alt+C asks
    // (No keeps what was typed), Alt+S saves and closes.
    void deductorByKeys()
    {
        auto dialog = std::make_unique<DeductorDialog>(modbase::dataObject(), QString());
        dialog->setDialogs(&m_dialogs);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        auto *tabs = dialog->findChild<QTabWidget *>();
        QStringList visited;
        QList<int> pages;
        while (focusName().startsWith(QLatin1String("txt")) && visited.size() < 60) {
            visited << focusName();
            pages << tabs->currentIndex();
            if (visited.size() <= 2)
                QTest::keyClicks(QApplication::focusWidget(), visited.size() == 1 ? "kbd01" : "keyboard traders");
            press(Qt::Key_Return);
        }
        QCOMPARE(visited.mid(0, 2), (QStringList{"txtCode_No", "txtName"}));
        QCOMPARE(QSet<QString>(visited.begin(), visited.end()).size(), visited.size());
        QVERIFY(std::is_sorted(pages.begin(), pages.end()));
        QCOMPARE(pages.last(), tabs->count() - 1);
        QCOMPARE(focusName(), QStringLiteral("cmdupdate"));
        press(Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        QVERIFY(m_dialogs.asked.isEmpty());

        m_dialogs.answers.enqueue(false);
        press(Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked.first().message, FormWindow::exitQuestion());
        QVERIFY(dialog->isVisible());
        QCOMPARE(FieldBehaviour::textOf(dialog->field(QStringLiteral("Name"))), QStringLiteral("KEYBOARD TRADERS"));
        press(Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(TestDatabase::rows(*modbase::dataObject(), QStringLiteral("Select Name From Main_Info Where Code_No='KBD01'")),
                 QStringList{"KEYBOARD TRADERS"});
    }

    void hostRemembersTheLastDeductorAndYear()
    {
        IDataObject *d = modbase::dataObject();
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Main_Info (Code_No, Name) Values ('KBD99', 'LAST USED LTD')")));
        {
            MainWindow first(d, Forms::create());
            auto *deductors = first.findChild<QComboBox *>(QStringLiteral("cboDeductor"));
            deductors->setCurrentIndex(deductors->findData(QStringLiteral("KBD99")));
            first.findChild<QLineEdit *>(QStringLiteral("txtAsYear"))->setText(QStringLiteral("2023-24"));
        }
        MainWindow next(d, Forms::create());
        QCOMPARE(next.findChild<QComboBox *>(QStringLiteral("cboDeductor"))->currentData().toString(), QStringLiteral("KBD99"));
        QCOMPARE(next.findChild<QLineEdit *>(QStringLiteral("txtAsYear"))->text(), QStringLiteral("2023-24"));
        QCOMPARE(next.windowTitle(), QStringLiteral("TDS Forms - KBD99 LAST USED LTD - AY 2023-24"));
    }
};

TDS_TEST(TestKeyboard)
#include "TestKeyboard.moc"
