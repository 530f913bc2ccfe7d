// Forms: every operation in interface order, and what a creation failure leaves behind.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "TestDatabase.h"
#include "entry/FormRegistry.h"
#include "entry/Forms.h"
#include "host/ErrorLog.h"
#include "host/ServiceRegistry.h"
#include "shared/modbase.h"

#include <QDialog>
#include <QFile>
#include <QTest>

class TestForms : public QObject
{
    Q_OBJECT


    QStringList logLines() const
    {
        QFile f(modbase::dataObject()->ExePath() + QLatin1Char('/') + ErrorLog::fileName());
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
            return {};
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        RecordingReportObject::install();
        modbase::resetForTests();
        QVERIFY(modbase::Main());
        modbase::dataObject()->setCodeno(QStringLiteral("DEMO01"));
        modbase::dataObject()->setAsYear(QStringLiteral("2025-26"));
    }

    void cleanupTestCase()
    {
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void startFailsWithoutTheReportObject()
    {
        modbase::resetForTests();
        RecordingReportObject::uninstall();
        ServiceRegistry::unregisterFactory(QString::fromLatin1(ProgId::ReportObject));
        QString error;
        QVERIFY(!Forms::create(&error));
        QVERIFY2(error.contains(QLatin1String("PrjOrvikReporter.ClsMain")), qPrintable(error));
        RecordingReportObject::install();
        QVERIFY(Forms::create(&error));
    }

    void versionIsTheLiteral()
    {
        auto forms = Forms::create();
        QVERIFY(forms);
        QCOMPARE(forms->MyDllVersion(), QStringLiteral("2.26.5.2"));
        QVERIFY(Forms::fileVersion() != forms->MyDllVersion());
        QCOMPARE(Forms::fileVersion(), QStringLiteral("2.23.0.4"));
    }

    void operations_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("windowClass");   // empty: not built, must fail and log
        const QStringList names{"Form15H", "Form15HNew", "Form15HNew1", "Form15I", "Form15J", "Challan",
                                "ChallanNew", "Form15C", "Form15D", "Form15G", "Form15GNew", "Form15GNew1",
                                "Form13New", "Form13Old", "Form26QA", "Form26QAA", "Form27C", "Form27CNew",
                                "Form49B", "Form49BCH", "FormEPayITD"};
        const QStringList tags{"FORM15H", "FORM15HNew", "Form15HNew1", "FORM15I", "FORM15J", "CHALLAN",
                               "ChallanNew", "Form15C", "Form15D", "Form15G", "Form15GNew", "Form15GNew1",
                               "Form13New", "Form13OLD", "FORM26QA", "FORM26QAA", "Form27C", "Form27CNew",
                               "Form49B", "Form49BCH", "FormEPayITD"};
        QCOMPARE(int(FormRegistry::all().size()), 21);
        for (int i = 0; i < names.size(); ++i) {
            // Interface order is part of the contract.
            QCOMPARE(QString::fromLatin1(FormRegistry::all()[size_t(i)].operation), names[i]);
            QCOMPARE(FormRegistry::all()[size_t(i)].number, i + 1);
            QString cls;
            if (names[i] == QLatin1String("Form15C"))
                cls = QStringLiteral("frm15c");
            else if (names[i] == QLatin1String("Form15D"))
                cls = QStringLiteral("frm15d");
            else if (names[i] == QLatin1String("Form15I"))
                cls = QStringLiteral("frm15i");
            QTest::newRow(qPrintable(names[i])) << names[i] << tags[i] << cls;
        }
    }

    void operations()
    {
        QFETCH(QString, name);
        QFETCH(QString, tag);
        QFETCH(QString, windowClass);
        auto forms = Forms::create();
        QVERIFY(forms);
        const FormDescriptor *op = FormRegistry::byOperation(name);
        QVERIFY(op);
        QCOMPARE(QString::fromLatin1(op->tag), tag);

        const int before = int(logLines().size());
        std::unique_ptr<QDialog> first(forms->open(name));
        if (windowClass.isEmpty()) {
            QVERIFY(!first);
            const QStringList lines = logLines();
            QCOMPARE(int(lines.size()), before + 1);
            QVERIFY2(lines.last().endsWith(QStringLiteral("\tForms\t") + tag), qPrintable(lines.last()));
            return;
        }
        QVERIFY(first);
        QCOMPARE(QString::fromLatin1(first->metaObject()->className()), windowClass);
        QVERIFY(!first->isVisible());   // the host shows it
        std::unique_ptr<QDialog> second(forms->open(name));
        QVERIFY(second);
        QVERIFY(second.get() != first.get());
    }
};

TDS_TEST(TestForms)
#include "TestForms.moc"
