#include "TestRegistry.h"

#include "host/DataObject.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QScreen>
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
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("mode");
        QTest::newRow("Enter takes the default, preview") << int(Qt::Key_Return) << int(Qt::NoModifier) << 2;
        QTest::newRow("Alt+P print") << int(Qt::Key_P) << int(Qt::AltModifier) << 3;
        QTest::newRow("Alt+C cancel") << int(Qt::Key_C) << int(Qt::AltModifier) << 1;
        QTest::newRow("Escape cancels") << int(Qt::Key_Escape) << int(Qt::NoModifier) << 1;
    }
    void formInfoDialog()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        bool answered = false;
        QTimer::singleShot(50, this, [&] {
            if (QWidget *box = QApplication::activeModalWidget()) {
                answered = true;
                QTest::keyClick(box, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
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

    void waitKeepsEventsRunning()
    {
        bool fired = false;
        QTimer::singleShot(20, this, [&fired] { fired = true; });
        QElapsedTimer clock;
        clock.start();
        d.WaitForSeconds(0.3);
        QVERIFY(fired);
        QVERIFY2(clock.elapsed() >= 290 && clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
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
        grid.setCurrentCell(3, 0);
        d.VsTopRow(&grid);
        QCOMPARE(grid.rowAt(0), 3);
    }

    void formFitsTheScreen()
    {
        QWidget form;
        form.resize(4000, 3000);
        d.Resize_For_Resolution(&form);
        QVERIFY(form.screen()->availableGeometry().contains(form.geometry()));

        // a small form grows with the screen once, not again on every call
        QWidget small;
        small.resize(300, 200);
        d.Resize_For_Resolution(&small);
        const QSize first = small.size();
        QCOMPARE(first, QSize(int(300 * d.vScreenRatX()), int(200 * d.vScreenRatY())));
        d.Resize_For_Resolution(&small);
        QCOMPARE(small.size(), first);
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

        told.clear();
        QFile script(bin.filePath(QStringLiteral("galculator")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho started > '" + QFile::encodeName(marker) + "'\n");
        script.close();
        script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        d.ShowCalcu();
        qputenv("PATH", savedPath);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 5000);
        QVERIFY(told.isEmpty());
    }
};

TDS_TEST(DataObjectUiTest)
#include "DataObjectUiTest.moc"

