#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

namespace {

// A small form: three line edits (the last an e-mail field), a combo, a spin box, a
// multi-line note and a button.
class SampleWindow : public FormWindow
{
public:
    SampleWindow()
    {
        auto *layout = new QVBoxLayout(this);
        first = add<QLineEdit>(layout, "first");
        second = add<QLineEdit>(layout, "second");
        email = add<QLineEdit>(layout, "email");
        FieldBehaviour::markEmail(email);
        combo = add<QComboBox>(layout, "combo");
        combo->setEditable(true);
        spin = add<QSpinBox>(layout, "spin");
        note = add<QPlainTextEdit>(layout, "note");
        button = add<QPushButton>(layout, "button");
        button->setText(QStringLiteral("&Save"));
        button->setAutoDefault(true);
        button->setDefault(true);
        connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
    }

    template <class W>
    W *add(QVBoxLayout *layout, const char *name)
    {
        auto *w = new W(this);
        w->setObjectName(QLatin1String(name));
        layout->addWidget(w);
        return w;
    }

    QLineEdit *first, *second, *email;
    QComboBox *combo;
    QSpinBox *spin;
    QPlainTextEdit *note;
    QPushButton *button;
    int clicks = 0;
};

QColor baseOf(QWidget *w)
{
    return w->palette().color(QPalette::Base);
}

} // namespace

class TestFieldBehaviour : public QObject
{
    Q_OBJECT

    std::unique_ptr<SampleWindow> m_window;
    ScriptedDialogs m_dialogs;

    QWidget *field(const QString &name) { return m_window->findChild<QWidget *>(name); }
    void focus(QWidget *w)
    {
        w->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(w->hasFocus());
    }

private slots:
    void init()
    {
        m_dialogs = ScriptedDialogs();
        m_window = std::make_unique<SampleWindow>();
        m_window->setDialogs(&m_dialogs);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void attachesEntryFieldsOnly()
    {
        FieldBehaviour *fb = m_window->fieldBehaviour();
        for (const char *name : {"first", "second", "email", "combo", "spin", "note"})
            QVERIFY2(fb->isAttached(field(QLatin1String(name))), name);
        QVERIFY(!fb->isAttached(m_window->button));
        // The line edit inside the combo is served through the combo itself.
        QVERIFY(!fb->isAttached(m_window->combo->lineEdit()));
    }

    void colourFollowsFocus_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("line edit") << QStringLiteral("second");
        QTest::newRow("combo") << QStringLiteral("combo");
        QTest::newRow("spin box") << QStringLiteral("spin");
        QTest::newRow("multi-line") << QStringLiteral("note");
    }
    void colourFollowsFocus()
    {
        QFETCH(QString, name);
        QWidget *w = field(name);
        focus(m_window->first);
        QCOMPARE(baseOf(w), QColor(Qt::white));
        focus(w);
        // 0xC0E0FF read as blue-green-red: light orange.
        QCOMPARE(baseOf(w), QColor(0xFF, 0xE0, 0xC0));
        QCOMPARE(baseOf(m_window->first), QColor(Qt::white));
        focus(m_window->button);
        QCOMPARE(baseOf(w), QColor(Qt::white));
    }

    void enterMovesToNextField_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier);
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
    }
    void enterMovesToNextField()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        focus(m_window->first);
        QTest::keyClicks(m_window->first, QStringLiteral("AB"));
        QTest::keyClick(m_window->first, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTRY_VERIFY(m_window->second->hasFocus());
        QCOMPARE(m_window->first->text(), QStringLiteral("AB"));
        // Swallowed: the dialog's default button did not see it.
        QCOMPARE(m_window->clicks, 0);
        QVERIFY(m_window->isVisible());
        QVERIFY(m_dialogs.asked.isEmpty());
    }

    void enterWalksTheWholeForm()
    {
        focus(m_window->first);
        QTest::keyClick(m_window->first, Qt::Key_Return);
        QTest::keyClick(m_window->second, Qt::Key_Return);
        QTest::keyClick(m_window->email, Qt::Key_Return);
        QTRY_VERIFY(m_window->combo->hasFocus());
        QTest::keyClick(m_window->combo, Qt::Key_Return);
        QTRY_VERIFY(m_window->spin->hasFocus());
    }

    void enterInMultiLineFieldStartsANewLine()
    {
        focus(m_window->note);
        QTest::keyClicks(m_window->note, QStringLiteral("ab"));
        QTest::keyClick(m_window->note, Qt::Key_Return);
        QTest::keyClicks(m_window->note, QStringLiteral("c"));
        QVERIFY(m_window->note->hasFocus());
        QCOMPARE(m_window->note->toPlainText(), QStringLiteral("AB\nC"));
    }

    void typedLettersBecomeCapitals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("letters") << QStringLiteral("first") << QStringLiteral("mumbai branch")
                                 << QStringLiteral("MUMBAI BRANCH");
        QTest::newRow("mixed") << QStringLiteral("first") << QStringLiteral("Ab-1/2c, z.")
                               << QStringLiteral("AB-1/2C, Z.");
        QTest::newRow("apostrophe") << QStringLiteral("first") << QStringLiteral("d'souza")
                                    << QStringLiteral("D'SOUZA");
        QTest::newRow("e-mail kept") << QStringLiteral("email") << QStringLiteral("Tax.Desk@example.in")
                                     << QStringLiteral("Tax.Desk@example.in");
        QTest::newRow("combo") << QStringLiteral("combo") << QStringLiteral("delhi") << QStringLiteral("DELHI");
        QTest::newRow("multi-line") << QStringLiteral("note") << QStringLiteral("near gate")
                                    << QStringLiteral("NEAR GATE");
    }
    void typedLettersBecomeCapitals()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QWidget *w = field(name);
        focus(w);
        QTest::keyClicks(w, typed);
        QString text;
        if (auto *le = qobject_cast<QLineEdit *>(w))
            text = le->text();
        else if (auto *cb = qobject_cast<QComboBox *>(w))
            text = cb->currentText();
        else if (auto *te = qobject_cast<QPlainTextEdit *>(w))
            text = te->toPlainText();
        QCOMPARE(text, shown);
    }

    void lettersBeyondZPassUnchanged()
    {
        focus(m_window->first);
        QTest::keyClicks(m_window->first, QStringLiteral("caf"));
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
        QApplication::sendEvent(m_window->first, &press);
        QCOMPARE(m_window->first->text(), QStringLiteral("CAF\u00e9"));
    }

    void controlKeysAreNotTurnedIntoLetters()
    {
        focus(m_window->first);
        QTest::keyClicks(m_window->first, QStringLiteral("abc"));
        // Ctrl+A selects all; the next letter replaces the selection.
        QTest::keyClick(m_window->first, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(m_window->first, QStringLiteral("q"));
        QCOMPARE(m_window->first->text(), QStringLiteral("Q"));
    }

    void escapeAnsweredNoKeepsTheFormAndItsEdits()
    {
        focus(m_window->second);
        QTest::keyClicks(m_window->second, QStringLiteral("unsaved"));
        m_dialogs.answers.enqueue(false);
        QTest::keyClick(m_window->second, Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked[0].kind, QStringLiteral("askYesNo"));
        QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("Do you want to exit ?"));
        QCOMPARE(int(m_dialogs.asked[0].icon), int(Dialogs::Icon::Exclamation));
        QVERIFY(m_window->isVisible());
        QCOMPARE(m_window->second->text(), QStringLiteral("UNSAVED"));
        QCOMPARE(m_window->result(), 0);
    }

    void escapeAnsweredYesCloses_data()
    {
        QTest::addColumn<QString>("from");
        QTest::newRow("in a field") << QStringLiteral("first");
        QTest::newRow("on a button") << QStringLiteral("button");
        QTest::newRow("in a multi-line field") << QStringLiteral("note");
    }
    void escapeAnsweredYesCloses()
    {
        QFETCH(QString, from);
        QWidget *w = field(from);
        focus(w);
        m_dialogs.answers.enqueue(true);
        QTest::keyClick(w, Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QVERIFY(!m_window->isVisible());
        QCOMPARE(m_window->result(), int(QDialog::Rejected));
    }

    void closingAnyOtherWayAsksToo()
    {
        m_dialogs.answers.enqueue(false);
        QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        m_dialogs.answers.enqueue(true);
        QVERIFY(m_window->close());
        QVERIFY(!m_window->isVisible());
        QCOMPARE(m_dialogs.asked.size(), 2);
    }
};

TDS_TEST(TestFieldBehaviour)
#include "TestFieldBehaviour.moc"
