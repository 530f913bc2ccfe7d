#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

class TestFieldBehaviour : public QObject
{
    Q_OBJECT

    std::unique_ptr<FormWindow> m_window;
    ScriptedDialogs m_dialogs;
    int m_clicks = 0;

    QWidget *field(const char *name) { return m_window->findChild<QWidget *>(QLatin1String(name)); }
    QString text(const char *name)
    {
        QWidget *w = field(name);
        return w->property(w->inherits("QComboBox") ? "currentText" : w->inherits("QPlainTextEdit") ? "plainText" : "text")
            .toString();
    }
    static QColor baseOf(QWidget *w) { return w->palette().color(QPalette::Base); }
    static void focus(QWidget *w)
    {
        w->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(w->hasFocus());
    }

private slots:
    // Three line edits (the last for e-mail), a combo, a spin box, a multi-line note, a button.
    void init()
    {
        m_dialogs = ScriptedDialogs();
        m_clicks = 0;
        m_window = std::make_unique<FormWindow>();
        auto *layout = new QVBoxLayout(m_window.get());
        const auto add = [layout](QWidget *w, const char *name) {
            w->setObjectName(QLatin1String(name));
            layout->addWidget(w);
            return w;
        };
        add(new QLineEdit, "first");
        add(new QLineEdit, "second");
        FieldBehaviour::markEmail(add(new QLineEdit, "email"));
        auto *combo = new QComboBox;
        combo->setEditable(true);
        add(combo, "combo");
        add(new QSpinBox, "spin");
        add(new QPlainTextEdit, "note");
        auto *button = new QPushButton(QStringLiteral("&Save"));
        button->setDefault(true);
        connect(button, &QPushButton::clicked, this, [this] { ++m_clicks; });
        add(button, "button");
        m_window->setDialogs(&m_dialogs);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void colourFollowsFocus_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"combo", "note"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void colourFollowsFocus()
    {
        QFETCH(QString, name);
        QWidget *w = field(qPrintable(name));
        focus(field("first"));
        QCOMPARE(baseOf(w), QColor(Qt::white));
        focus(w);
        QCOMPARE(baseOf(w), QColor(0xFF, 0xE0, 0xC0));   // 0xC0E0FF read as blue-green-red
        QCOMPARE(baseOf(field("first")), QColor(Qt::white));
        focus(field("button"));
        QCOMPARE(baseOf(w), QColor(Qt::white));
    }

    void enterWalksTheForm_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier);
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
    }
    void enterWalksTheForm()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        focus(field("first"));
        QTest::keyClicks(field("first"), QStringLiteral("AB"));
        // each press moves exactly one field on: first, second, email, combo, spin
        for (int i = 0; i < 4; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTRY_VERIFY(field("spin")->hasFocus());
        QCOMPARE(text("first"), QStringLiteral("AB"));
        // Swallowed: the default button never saw it.
        QCOMPARE(m_clicks, 0);
        QVERIFY(m_window->isVisible());
        QVERIFY(m_dialogs.asked.isEmpty());
    }

    void typedLettersBecomeCapitals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("mixed") << "first" << "Ab-1/2c, z.d'souza" << "AB-1/2C, Z.D'SOUZA";
        QTest::newRow("e-mail kept") << "email" << "Tax.Desk@example.in" << "Tax.Desk@example.in";
        QTest::newRow("Enter in multi-line starts a line") << "note" << "near\rgate" << "NEAR\nGATE";
    }
    void typedLettersBecomeCapitals()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QWidget *w = field(qPrintable(name));
        focus(w);
        QTest::keyClicks(w, typed);
        QVERIFY(w->hasFocus());
        QTEST(text(qPrintable(name)), "shown");
    }

    void controlKeysStayShortcuts()
    {
        QWidget *w = field("first");
        focus(w);
        QTest::keyClicks(w, QStringLiteral("caf"));
        // Ctrl+A still selects all; the next letter replaces the selection.
        QTest::keyClick(w, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(w, QStringLiteral("q"));
        QCOMPARE(text("first"), QStringLiteral("Q"));
    }

    void escapeAsksToExit_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<bool>("yes");
        QTest::newRow("No keeps the form and its edits") << "second" << false;
        QTest::newRow("Yes in a multi-line field") << "note" << true;
    }
    void escapeAsksToExit()
    {
        QFETCH(QString, from);
        QFETCH(bool, yes);
        focus(field("second"));
        QTest::keyClicks(field("second"), QStringLiteral("unsaved"));
        focus(field(qPrintable(from)));
        m_dialogs.answers.enqueue(yes);
        QTest::keyClick(field(qPrintable(from)), Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked[0].kind, QStringLiteral("askYesNo"));
        QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("Do you want to exit ?"));
        QCOMPARE(int(m_dialogs.asked[0].icon), int(Dialogs::Icon::Exclamation));
        QCOMPARE(m_window->isVisible(), !yes);
        QCOMPARE(text("second"), QStringLiteral("UNSAVED"));
    }

    void closingAnyOtherWayAsksToo()
    {
        m_dialogs.answers << false << true;
        QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        QVERIFY(m_window->close());
        QCOMPARE(m_dialogs.asked.size(), 2);
    }
};

TDS_TEST(TestFieldBehaviour)
#include "TestFieldBehaviour.moc"
