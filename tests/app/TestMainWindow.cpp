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

    QComboBox *deductors() const { return m_window->findChild<QComboBox *>(QStringLiteral("cboDeductor")); }
    QLineEdit *year() const { return m_window->findChild<QLineEdit *>(QStringLiteral("txtAsYear")); }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        auto forms = Forms::create();
        QVERIFY(forms);
        auto *data = dynamic_cast<DataObject *>(modbase::dataObject());
        QVERIFY(data);
        QVERIFY(data->loadDemo());
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

    void refusesAMalformedYear_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("not consecutive") << "2025-27";
        QTest::newRow("empty") << "";
    }

    void refusesAMalformedYear()
    {
        QFETCH(QString, text);
        year()->setText(text);
        QVERIFY(!m_window->openForm(QStringLiteral("Form15C")));
        QCOMPARE(m_dialogs.asked.size(), 1);
        QVERIFY(m_dialogs.asked.first().message.contains(QLatin1String("2025-26")));
        year()->setText(QStringLiteral("2025-26"));
    }

    void saysPlainlyWhenAFormIsNotAvailable()
    {
        year()->setText(QStringLiteral("2025-26"));
        QVERIFY(!m_window->openForm(QStringLiteral("Form15GNew")));
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked.first().message, QStringLiteral("Form 15G is not available in this version of TDS Forms."));
    }

    void opensAFormModallyWithTheSelection()
    {
        year()->setText(QStringLiteral("2024-25"));
        QString shown;
        QString title;
        QTimer::singleShot(0, this, [&] {
            QWidget *modal = QApplication::activeModalWidget();
            if (auto *dialog = qobject_cast<QDialog *>(modal)) {
                shown = QString::fromLatin1(dialog->metaObject()->className());
                title = dialog->windowTitle();
                dialog->done(QDialog::Rejected);
            }
        });
        QVERIFY(m_window->openForm(QStringLiteral("Form15I")));
        QCOMPARE(shown, QStringLiteral("frm15i"));
        // The operator sees whose form and which year it is.
        QVERIFY2(title.endsWith(QLatin1String(" - DEMO01 DEMO TRADERS PRIVATE LIMITED - AY 2024-25")), qPrintable(title));
        QVERIFY(m_window->windowTitle().endsWith(QLatin1String("DEMO01 DEMO TRADERS PRIVATE LIMITED - AY 2024-25")));
        QCOMPARE(deductors()->currentData().toString(), QStringLiteral("DEMO01"));
        QCOMPARE(modbase::dataObject()->codeno(), QStringLiteral("DEMO01"));
        QCOMPARE(modbase::dataObject()->AsYear(), QStringLiteral("2024-25"));
    }

    void deductorDialogAddsAndRefuses()
    {
        DeductorDialog dialog(modbase::dataObject(), QString());
        dialog.setDialogs(&m_dialogs);
        auto set = [&](const char *column, const QString &value) {
            auto *line = qobject_cast<QLineEdit *>(dialog.field(QString::fromLatin1(column)));
            QVERIFY(line);
            line->setText(value);
        };
        set("Code_No", QStringLiteral("D'SOUZA"));
        QVERIFY(!dialog.save());   // no name yet
        set("Name", QStringLiteral("D'SOUZA & SONS"));
        set("Tanno", QStringLiteral("MUMD1234E"));
        QVERIFY(!dialog.save());   // TAN one digit short
        QVERIFY(m_dialogs.asked.last().message.startsWith(QLatin1String("Invalid TAN")));
        set("Tanno", QStringLiteral("MUMD12346F"));
        QVERIFY(dialog.save());

        DeductorDialog again(modbase::dataObject(), QString());
        again.setDialogs(&m_dialogs);
        qobject_cast<QLineEdit *>(again.field(QStringLiteral("Code_No")))->setText(QStringLiteral("D'SOUZA"));
        qobject_cast<QLineEdit *>(again.field(QStringLiteral("Name")))->setText(QStringLiteral("ANOTHER"));
        QVERIFY(!again.save());   // the code is taken

        DeductorDialog edit(modbase::dataObject(), QStringLiteral("D'SOUZA"));
        QCOMPARE(qobject_cast<QLineEdit *>(edit.field(QStringLiteral("Name")))->text(), QStringLiteral("D'SOUZA & SONS"));
        QCOMPARE(qobject_cast<QLineEdit *>(edit.field(QStringLiteral("Tanno")))->text(), QStringLiteral("MUMD12346F"));

        m_window->reloadDeductors(QStringLiteral("D'SOUZA"));
        QCOMPARE(deductors()->currentData().toString(), QStringLiteral("D'SOUZA"));
    }
};

TDS_TEST(TestMainWindow)
#include "TestMainWindow.moc"
