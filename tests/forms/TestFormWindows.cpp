#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "entry/FormRegistry.h"
#include "ui/FormWindow.h"
#include "forms/frm15c.h"
#include "forms/frm15d.h"
#include "forms/frm15i.h"

#include <QLineEdit>
#include <memory>

class TestFormWindows : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;

    // The window of "15C", "15D" or "15I", shown and active.
    std::unique_ptr<QDialog> open(const QString &form)
    {
        std::unique_ptr<QDialog> w(FormRegistry::byCliKey(form)->window());
        if (auto *fw = qobject_cast<FormWindow *>(w.get()))
            fw->setDialogs(&m_dialogs);
        w->show();
        return QTest::qWaitForWindowActive(w.get()) ? std::move(w) : nullptr;
    }

    static QLineEdit *edit(QDialog *w, const QString &name) { return w->findChild<QLineEdit *>(name); }

    static void type(QLineEdit *field, const QString &text)
    {
        field->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(field->hasFocus());
        field->selectAll();
        // Test keys are ASCII only: other letters come as an input method gives them.
        if (QString::fromLatin1(text.toLatin1()) == text)
            QTest::keyClicks(field, text);
        else
            field->insert(text);
    }

private slots:
    void initTestCase() { FORMS_START(); }
    void cleanupTestCase() { TestDatabase::tearDown(); }
    void init()
    {
        m_dialogs = ScriptedDialogs();
        for (const char *t : {"Form15C", "Form15D", "Form15I"})
            QVERIFY(modbase::dataObject()->ConQuery(QStringLiteral("Delete from ") + QLatin1String(t)));
    }

    void controls_data()
    {
        QTest::addColumn<QStringList>("fields");
        const QStringList cd{"txtfields_0", "txtfields_1", "txtfields_2", "txtfields_3"};
        QTest::newRow("15C") << cd;
        QTest::newRow("15D") << (cd + QStringList{"txtfields_4"});
        QTest::newRow("15I") << QStringList{"txtfields1_1", "txtfields2_1", "txtfields1_2", "txtfields2_2"};
    }
    void controls()
    {
        QFETCH(QStringList, fields);
        const QString form = QString::fromLatin1(QTest::currentDataTag());
        auto w = open(form);
        QVERIFY(w);

        // Enter walks the fields in the order of the statutory form, then reaches Save.
        QLineEdit *first = edit(w.get(), fields.first());
        QVERIFY(first);
        first->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(first->hasFocus());
        for (const QString &name : fields) {
            QWidget *focused = QApplication::focusWidget();
            QCOMPARE(focused ? focused->objectName() : QString(), name);
            QTest::keyClick(focused, Qt::Key_Return);
        }
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("cmdupdate"));
    }

    void typedSavedAndReopened()
    {
        const QString form = QStringLiteral("15C"), query = QStringLiteral("Select * from Form15C");
        const QStringList fields{"txtfields_0", "txtfields_1", "txtfields_2"};
        // Quotes, backslashes and letters beyond ASCII reach the row and come back.
        const QStringList typed{"ito ward 1(2)", "d'souza road, c:\\mumbai", "\u0906\u092f\u0915\u0930"};
        {
            auto w = open(form);
            QVERIFY(w);
            for (int i = 0; i < fields.size(); ++i)
                type(edit(w.get(), fields[i]), typed[i]);
            // Escape asks; No keeps the form open with its edits and saves nothing.
            QTest::keyClick(edit(w.get(), fields.last()), Qt::Key_Escape);
            QCOMPARE(m_dialogs.asked.size(), 1);
            QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("Do you want to exit ?"));
            QVERIFY(w->isVisible());
            QVERIFY(FormsFixture::rows(query).isEmpty());
            // An access key clicks its button after a short animation; the save is reported.
            QTest::keyClick(w.get(), Qt::Key_S, Qt::AltModifier);
            QTRY_COMPARE(FormsFixture::rows(query).size(), 1);
            QCOMPARE(static_cast<FormWindow *>(w.get())->statusText(), QStringLiteral("Form ") + form + QStringLiteral(" saved"));
            QVERIFY2(FormsFixture::rows(query).first().endsWith("|ITO WARD 1(2)|D'SOUZA ROAD, C:\\MUMBAI|\u0906\u092f\u0915\u0930|"), qPrintable(FormsFixture::rows(query).first()));
            QCOMPARE(m_dialogs.asked.size(), 1);
            m_dialogs.answers.enqueue(true);
            QVERIFY(w->close());   // closing any other way asks too
            QCOMPARE(m_dialogs.asked.size(), 2);
        }
        auto again = open(form);
        QVERIFY(again);
        for (int i = 0; i < fields.size(); ++i)
            QCOMPARE(edit(again.get(), fields[i])->text(), typed[i].toUpper());
    }


    // Alt+S runs the rules of the field the cursor is still in: the date is stored normalised.
    void accessKeySavesTheNormalisedDate()
    {
        auto w = open(QStringLiteral("15I"));
        QVERIFY(w);
        type(edit(w.get(), QStringLiteral("txtfields1_1")), QStringLiteral("x1"));
        QLineEdit *date = edit(w.get(), QStringLiteral("txtfields2_1"));
        type(date, QStringLiteral("1-6-20"));
        QTest::keyClick(w.get(), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(FormsFixture::rows(QStringLiteral("Select SrNo, RegNo, RegDate from Form15I")),
                     QStringList{"1|X1|01/06/2020"});
        QVERIFY(date->hasFocus());
    }
};

TDS_TEST(TestFormWindows)
#include "TestFormWindows.moc"
