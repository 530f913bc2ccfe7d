#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

class TestFieldBehaviour : public QObject
{
    Q_OBJECT

    std::unique_ptr<FormWindow> m_window;
    ScriptedDialogs m_dialogs;

    QWidget *field(const char *name) { return m_window->findChild<QWidget *>(QLatin1String(name)); }
    QString text(const char *name)
    {
        QWidget *w = field(name);
        return w->property(w->inherits("QPlainTextEdit") ? "plainText" : "text").toString();
    }
    static void focus(QWidget *w)
    {
        w->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(w->hasFocus());
    }

private slots:
    void init()
    {
        m_dialogs = ScriptedDialogs();
        m_window = std::make_unique<FormWindow>();
        auto *layout = new QVBoxLayout(m_window.get());
        const auto add = [layout](QWidget *w, const char *name) {
            w->setObjectName(QLatin1String(name));
            layout->addWidget(w);
            return w;
        };
        add(new QLineEdit, "first");
        FieldBehaviour::markEmail(add(new QLineEdit, "email"));
        add(new QPlainTextEdit, "note");
        auto *button = new QPushButton(QStringLiteral("&Save"));
        button->setDefault(true);
        add(button, "button");
        m_window->setDialogs(&m_dialogs);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void typedLettersBecomeCapitals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
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
        QTEST(text(qPrintable(name)), "shown");
    }
};

TDS_TEST(TestFieldBehaviour)
#include "TestFieldBehaviour.moc"
