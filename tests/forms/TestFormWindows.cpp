#include "FormsFixture.h"
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "forms/FormFactory.h"
#include "forms/frm15c.h"
#include "forms/frm15d.h"
#include "forms/frm15i.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <memory>

class TestFormWindows : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;

    std::unique_ptr<QDialog> open(QDialog *(*factory)())
    {
        std::unique_ptr<QDialog> w(factory());
        if (auto *fw = qobject_cast<FormWindow *>(w.get()))
            fw->setDialogs(&m_dialogs);
        w->show();
        if (!QTest::qWaitForWindowActive(w.get()))
            return nullptr;
        return w;
    }

    static QLineEdit *edit(QDialog *w, const QString &name) { return w->findChild<QLineEdit *>(name); }

    static void type(QLineEdit *field, const QString &text)
    {
        field->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(field->hasFocus());
        field->selectAll();
        QTest::keyClicks(field, text);
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
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("objectName");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("15C") << 0 << QStringLiteral("frm15c") << QStringLiteral("Form No. 15C")
                             << QStringList{"txtfields_0", "txtfields_1", "txtfields_2", "txtfields_3"};
        QTest::newRow("15D") << 1 << QStringLiteral("frm15d") << QStringLiteral("Form No. 15D")
                             << QStringList{"txtfields_0", "txtfields_1", "txtfields_2", "txtfields_3",
                                            "txtfields_4"};
        QTest::newRow("15I") << 2 << QStringLiteral("frm15i") << QStringLiteral("Form No. 15I")
                             << QStringList{"txtfields1_1", "txtfields2_1", "txtfields1_2", "txtfields2_2"};
    }
    void controls()
    {
        QFETCH(int, which);
        QFETCH(QString, objectName);
        QFETCH(QString, title);
        QFETCH(QStringList, fields);
        QDialog *(*factories[])() = {newFrm15c, newFrm15d, newFrm15i};
        auto w = open(factories[which]);
        QVERIFY(w);
        QCOMPARE(w->objectName(), objectName);
        QCOMPARE(w->windowTitle(), title);
        QVERIFY(w->findChild<QFrame *>(QStringLiteral("Frame1")));
        QCOMPARE(w->findChild<QPushButton *>(QStringLiteral("cmdupdate"))->text(), QStringLiteral("&Save"));
        QCOMPARE(w->findChild<QPushButton *>(QStringLiteral("cmdshowrep"))->text(), QStringLiteral("&Print"));

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

        // Every field is labelled.
        const auto labels = w->findChildren<QLabel *>();
        for (const QString &name : fields) {
            if (name.startsWith(QLatin1String("txtfields2_")) || name == QLatin1String("txtfields1_2"))
                continue;   // the 15I grid labels its columns once
            bool labelled = false;
            for (QLabel *l : labels)
                labelled = labelled || l->buddy() == edit(w.get(), name);
            QVERIFY2(labelled, qPrintable(name));
        }
    }

    void frameStaysCentred()
    {
        auto w = open(newFrm15c);
        QVERIFY(w);
        w->resize(1200, 760);
        QTRY_COMPARE(w->size(), QSize(1200, 760));
        auto *frame = w->findChild<QFrame *>(QStringLiteral("Frame1"));
        QTRY_VERIFY(qAbs(frame->geometry().center().x() - w->rect().center().x()) <= 2);
        QVERIFY(qAbs(frame->geometry().center().y() - w->rect().center().y()) <= 2);
    }

    void typedSavedAndReopened()
    {
        {
            auto w = open(newFrm15c);
            QVERIFY(w);
            type(edit(w.get(), QStringLiteral("txtfields_0")), QStringLiteral("ito ward 1(2)"));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("d'souza road, mumbai"));
            QCOMPARE(edit(w.get(), QStringLiteral("txtfields_1"))->text(), QStringLiteral("D'SOUZA ROAD, MUMBAI"));
            QTest::mouseClick(w->findChild<QPushButton *>(QStringLiteral("cmdupdate")), Qt::LeftButton);
            // The save is silent.
            QVERIFY(m_dialogs.asked.isEmpty());
            m_dialogs.answers.enqueue(true);
            QTest::keyClick(edit(w.get(), QStringLiteral("txtfields_1")), Qt::Key_Escape);
            QVERIFY(!w->isVisible());
        }
        auto again = open(newFrm15c);
        QVERIFY(again);
        QCOMPARE(edit(again.get(), QStringLiteral("txtfields_0"))->text(), QStringLiteral("ITO WARD 1(2)"));
        QCOMPARE(edit(again.get(), QStringLiteral("txtfields_1"))->text(), QStringLiteral("D'SOUZA ROAD, MUMBAI"));
        QCOMPARE(edit(again.get(), QStringLiteral("txtfields_2"))->text(), QString());
    }

    void saveWithItsAccessKey()
    {
        auto w = open(newFrm15d);
        QVERIFY(w);
        type(edit(w.get(), QStringLiteral("txtfields_3")), QStringLiteral("singapore"));
        // An access key clicks its button after a short animation.
        QTest::keyClick(w.get(), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(FormsFixture::rows(QStringLiteral("Select * from Form15D")).size(), 1);
        QVERIFY(FormsFixture::rows(QStringLiteral("Select * from Form15D")).first().endsWith(QStringLiteral("|SINGAPORE|")));
    }

    void escapeAnsweredNoKeepsTheEdits()
    {
        auto w = open(newFrm15d);
        QVERIFY(w);
        type(edit(w.get(), QStringLiteral("txtfields_0")), QStringLiteral("unsaved"));
        m_dialogs.answers.enqueue(false);
        QTest::keyClick(edit(w.get(), QStringLiteral("txtfields_0")), Qt::Key_Escape);
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("Do you want to exit ?"));
        QVERIFY(w->isVisible());
        QCOMPARE(edit(w.get(), QStringLiteral("txtfields_0"))->text(), QStringLiteral("UNSAVED"));
        // Nothing was saved by leaving or staying.
        QVERIFY(FormsFixture::rows(QStringLiteral("Select * from Form15D")).isEmpty());
    }

    void form15iDateIsNormalisedOnLeaving_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("short") << QStringLiteral("1-4-2019") << QStringLiteral("01/04/2019");
        QTest::newRow("packed") << QStringLiteral("15082020") << QStringLiteral("15/08/2020");
        QTest::newRow("not a date") << QStringLiteral("soon") << QStringLiteral("SOON");
    }
    void form15iDateIsNormalisedOnLeaving()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        auto w = open(newFrm15i);
        QVERIFY(w);
        QLineEdit *date = edit(w.get(), QStringLiteral("txtfields2_1"));
        type(date, typed);
        QTest::keyClick(date, Qt::Key_Return);
        QTRY_VERIFY(edit(w.get(), QStringLiteral("txtfields1_2"))->hasFocus());
        QCOMPARE(date->text(), shown);
    }

    void form15iOnlyLineTwo()
    {
        {
            auto w = open(newFrm15i);
            QVERIFY(w);
            type(edit(w.get(), QStringLiteral("txtfields1_2")), QStringLiteral("ka01xy0001"));
            QTest::keyClick(w.get(), Qt::Key_S, Qt::AltModifier);
            QTRY_COMPARE(FormsFixture::rows(QStringLiteral("Select count(*) from Form15I")), QStringList{"1"});
        }
        QCOMPARE(FormsFixture::rows(QStringLiteral("Select SrNo, RegNo from Form15I")), QStringList{"2|KA01XY0001"});
        auto w = open(newFrm15i);
        QVERIFY(w);
        QCOMPARE(edit(w.get(), QStringLiteral("txtfields1_1"))->text(), QString());
        QCOMPARE(edit(w.get(), QStringLiteral("txtfields1_2"))->text(), QStringLiteral("KA01XY0001"));
    }
};

TDS_TEST(TestFormWindows)
#include "TestFormWindows.moc"
