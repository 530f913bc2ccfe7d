// The editors a slot table builds: what each kind holds, the multi-line Enter rule, and
// values kept whatever the list offers.
#include "ScriptedDialogs.h"
#include "TestRegistry.h"
#include "host/DataObject.h"
#include "ui/FormWindow.h"
#include "ui/SlotFields.h"

#include <QApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

class TestSlotFields : public QObject
{
    Q_OBJECT

    DataObject m_data;   // its checks need no database
    ScriptedDialogs m_dialogs;
    std::unique_ptr<FormWindow> m_window;
    SlotFields *m_fields = nullptr;

private slots:
    void init()
    {
        m_dialogs = ScriptedDialogs();
        m_window = std::make_unique<FormWindow>();
        m_window->setDialogs(&m_dialogs);
        auto *form = new QFormLayout(m_window.get());
        m_fields = new SlotFields(QStringLiteral("txtfieldsM"),
                                  {{.caption = QStringLiteral("&Address"), .kind = FieldKind::MultiLine},
                                   {.caption = QStringLiteral("&Email"), .kind = FieldKind::Email},
                                   {.caption = QStringLiteral("&Status"), .kind = FieldKind::Combo,
                                    .items = {QStringLiteral("HUF"), QStringLiteral("INDIVIDUAL")}, .name = QStringLiteral("cbostatusM")},
                                   {.caption = QStringLiteral("S&ources"), .kind = FieldKind::Flags,
                                    .items = {QStringLiteral("I"), QStringLiteral("II"), QStringLiteral("III")},
                                    .name = QStringLiteral("chkincsch")},
                                   {.caption = QStringLiteral("&PIN"), .kind = FieldKind::Pin, .width = 6}},
                                  m_window.get());
        m_fields->addRows(form);
        m_fields->bind(m_window.get(), &m_data);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void valuesInSlotOrder()
    {
        QCOMPARE(m_window->firstField(), m_fields->widget(0));
        m_fields->setValues({QStringLiteral("12 MG ROAD\nPUNE"), QStringLiteral("a.b@x.in"), QStringLiteral("TRUST"),
                             QStringLiteral("101"), QStringLiteral("411001")});
        // A stored status the list does not offer is shown, never dropped.
        QCOMPARE(m_fields->values(), (QStringList{"12 MG ROAD\nPUNE", "a.b@x.in", "TRUST", "101", "411001"}));
        m_fields->setReadOnly(true);
        QVERIFY(static_cast<QPlainTextEdit *>(m_fields->widget(0))->isReadOnly());
        QVERIFY(!m_fields->widget(3)->isEnabled());
    }

    void typedByKeys()
    {
        auto *address = static_cast<QPlainTextEdit *>(m_fields->widget(0));
        address->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(address->hasFocus());
        // Empty: Enter moves on at once.
        QTest::keyClick(address, Qt::Key_Return);
        QTRY_VERIFY(m_fields->widget(1)->hasFocus());
        address->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(address->hasFocus());
        QTest::keyClicks(address, QStringLiteral("flat 4"));
        QTest::keyClick(address, Qt::Key_Return);   // breaks the line
        QVERIFY(address->hasFocus());
        QTest::keyClick(address, Qt::Key_Return);   // a second Enter moves on
        QTRY_VERIFY(m_fields->widget(1)->hasFocus());
        QCOMPARE(m_fields->value(0), QStringLiteral("FLAT 4"));   // the trailing break left with it
        QTest::keyClicks(m_fields->widget(1), QStringLiteral("Ops@Bank.in"));
        QCOMPARE(m_fields->value(1), QStringLiteral("Ops@Bank.in"));

        // A PIN of five digits is refused and keeps the cursor.
        auto *pin = static_cast<QLineEdit *>(m_fields->widget(4));
        pin->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(pin->hasFocus());
        QTest::keyClicks(pin, QStringLiteral("41100"));
        QVERIFY(!m_window->runAction([] {}));
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked[0].message, QStringLiteral("The PIN code has six digits."));
        QVERIFY(pin->hasFocus());
    }
};

TDS_TEST(TestSlotFields)
#include "TestSlotFields.moc"
