// The host window: deductor and year chosen, forms opened or refused with a plain message.
#include "TestRegistry.h"

#include "DeductorDialog.h"
#include "MainWindow.h"
#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "host/DataObject.h"
#include "shared/modbase.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

class TestMainWindow : public QObject
{
    Q_OBJECT

    ScriptedDialogs m_dialogs;
    std::unique_ptr<MainWindow> m_window;

    QLineEdit *year() const { return m_window->findChild<QLineEdit *>(QStringLiteral("txtAsYear")); }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        auto forms = Forms::create();
        auto *data = dynamic_cast<DataObject *>(modbase::dataObject());
        QVERIFY(forms && data && data->loadDemo());
        m_window = std::make_unique<MainWindow>(modbase::dataObject(), std::move(forms));
        m_window->setDialogs(&m_dialogs);
    }

    void cleanupTestCase()
    {
        m_window.reset();
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void init() { m_dialogs.asked.clear(); }

    void refusesAMalformedYear()
    {
        year()->setText(QStringLiteral("2025-27"));
        QVERIFY(!m_window->openForm(QStringLiteral("Form15C")));
        QVERIFY(m_dialogs.asked.value(0).message.contains(QLatin1String("2025-26")));
    }

    void saysPlainlyWhenAFormIsNotAvailable()
    {
        year()->setText(QStringLiteral("2025-26"));
        QVERIFY(!m_window->openForm(QStringLiteral("Form15J")));
        QCOMPARE(m_dialogs.asked.value(0).message, QStringLiteral("Form 15J is not available in this version of TDS Forms."));
    }

    void opensAFormModallyWithTheSelection()
    {
        year()->setText(QStringLiteral("2024-25"));
        QString title;
        QTimer::singleShot(0, this, [&] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                title = dialog->windowTitle();
                dialog->done(QDialog::Rejected);
            }
        });
        QVERIFY(m_window->openForm(QStringLiteral("Form15I")));
        // The operator sees which form, whose, and which year it is.
        QCOMPARE(title, QStringLiteral("Form No. 15I - DEMO01 DEMO TRADERS PRIVATE LIMITED - AY 2024-25"));
    }

    // A deductor needs a name and a code of its own; the host list selects the new one.
    void deductorDialogAddsAndRefuses()
    {
        auto set = [](DeductorDialog &d, const char *c, const QString &v) { d.field(QLatin1String(c))->setProperty("text", v); };
        DeductorDialog dialog(modbase::dataObject(), QString()), again(modbase::dataObject(), QString());
        for (DeductorDialog *d : {&dialog, &again})
            d->setDialogs(&m_dialogs);
        set(dialog, "Code_No", QStringLiteral("D'SOUZA"));
        QVERIFY(!dialog.save());
        set(dialog, "Name", QStringLiteral("D'SOUZA & SONS"));
        QVERIFY(dialog.save());
        set(again, "Code_No", QStringLiteral("D'SOUZA"));
        set(again, "Name", QStringLiteral("ANOTHER"));
        QVERIFY(!again.save());
        m_window->reloadDeductors(QStringLiteral("D'SOUZA"));
        QCOMPARE(m_window->findChild<QComboBox *>(QStringLiteral("cboDeductor"))->currentData(), QStringLiteral("D'SOUZA"));
    }
};

TDS_TEST(TestMainWindow)
#include "TestMainWindow.moc"
