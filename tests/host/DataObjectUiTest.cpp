#include "TestRegistry.h"

#include "host/DataObject.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

class DataObjectUiTest : public QObject
{
    Q_OBJECT

    DataObject d;

private slots:
    void init()
    {
        DataObject::setFormInfoPrompt({});
        DataObject::setMessageHook({});
        d.setModePrint(-5);
    }

    void formInfoDialog_data()
    {
        QTest::addColumn<QKeySequence>("key");
        QTest::addColumn<int>("mode");
        QTest::newRow("Enter takes the default, preview") << QKeySequence(Qt::Key_Return) << 2;
        QTest::newRow("Alt+P print") << QKeySequence(Qt::AltModifier | Qt::Key_P) << 3;
        QTest::newRow("Escape cancels") << QKeySequence(Qt::Key_Escape) << 1;
    }
    void formInfoDialog()
    {
        QFETCH(QKeySequence, key);
        bool answered = false;
        QTimer::singleShot(50, this, [&] {
            if (QWidget *box = QApplication::activeModalWidget()) {
                answered = true;
                QTest::keySequence(box, key);
            }
        });
        // Never leave a dialog open when the keys did not reach it.
        QTimer::singleShot(5000, this, [] {
            if (auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                box->reject();
        });
        d.ShowFormInfo();
        QVERIFY(answered);
        QTEST(d.ModePrint(), "mode");
        QTEST(DataObject().ModePrint(), "mode");   // the mode is process-wide
    }

    void gridCurrentRowComesToTheTop()
    {
        QTableWidget grid(200, 3);
        grid.resize(300, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        grid.setCurrentCell(120, 1);
        grid.scrollToTop();
        d.VsTopRow(&grid);
        QCOMPARE(grid.rowAt(0), 120);
    }

    void calculatorFromThePath()
    {
        QTemporaryDir bin;
        const QByteArray savedPath = qgetenv("PATH");
        const QString marker = bin.filePath(QStringLiteral("started"));
        QString told;
        DataObject::setMessageHook([&told](const QString &text) { told = text; });

        qputenv("PATH", QFile::encodeName(bin.path()));
        d.ShowCalcu();
        QVERIFY2(told.contains(QLatin1String("No calculator")), qPrintable(told));
        QFile script(bin.filePath(QStringLiteral("galculator")));
        QVERIFY(script.open(QIODevice::WriteOnly) && script.write("#!/bin/sh\necho started > '" + QFile::encodeName(marker) + "'\n") > 0);
        script.close();
        script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        d.ShowCalcu();
        qputenv("PATH", savedPath);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 5000);
    }
};

TDS_TEST(DataObjectUiTest)
#include "DataObjectUiTest.moc"

