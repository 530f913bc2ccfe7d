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

    void operations_data()
    {
        QTest::addColumn<QString>("name");
        // A host calls the operations by number: the interface order must not move.
        const auto &all = FormRegistry::all();
        QCOMPARE(int(all.size()), 21);
        QCOMPARE(QString::fromLatin1(all.front().operation), QStringLiteral("Form15H"));
        QCOMPARE(QString::fromLatin1(all[7].operation), QStringLiteral("Form15C"));
        QCOMPARE(QString::fromLatin1(all.back().operation), QStringLiteral("FormEPayITD"));
        for (size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(all[i].number, int(i) + 1);
            QTest::newRow(all[i].operation) << QString::fromLatin1(all[i].operation);
        }
    }

    void operations()
    {
        QFETCH(QString, name);
        auto forms = Forms::create();
        QVERIFY(forms);
        const FormDescriptor *op = FormRegistry::byOperation(name);
        QVERIFY(op);
        const QString tag = QString::fromLatin1(op->tag);
        const int before = int(logLines().size());
        std::unique_ptr<QDialog> first(forms->open(name));
        // A form without its window fails and logs its tag.
        if (!op->available()) {
            QVERIFY(!first);
            const QStringList lines = logLines();
            QCOMPARE(int(lines.size()), before + 1);
            QVERIFY2(lines.last().endsWith(QStringLiteral("\tForms\t") + tag), qPrintable(lines.last()));
            return;
        }
        QVERIFY(first);
        QVERIFY(!first->isVisible());   // the host shows it
        std::unique_ptr<QDialog> second(forms->open(name));
        QVERIFY(second);
        QVERIFY(second.get() != first.get());
    }
};

TDS_TEST(TestForms)
#include "TestForms.moc"
