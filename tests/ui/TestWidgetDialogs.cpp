#include "TestRegistry.h"
#include "ui/FormWindow.h"
#include "ui/WidgetDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

namespace {
// Hands the modal box to answer once it is up.
void whenModalAppears(const std::function<void(QWidget *)> &answer)
{
    auto *timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            answer(modal);
        }
    });
    timer->start();
}
} // namespace

class TestWidgetDialogs : public QObject
{
    Q_OBJECT
private slots:
    // Yes closes the window; No is covered through the scripted dialogs.
    void exitQuestion()
    {
        FormWindow window;
        auto *edit = new QLineEdit(&window);
        (new QVBoxLayout(&window))->addWidget(edit);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        edit->setFocus();

        QString text;
        whenModalAppears([&](QWidget *modal) {
            if (auto *box = qobject_cast<QMessageBox *>(modal)) {
                text = box->text();
                box->button(QMessageBox::Yes)->click();
            }
        });
        QTest::keyClick(edit, Qt::Key_Escape);
        QCOMPARE(text, QStringLiteral("Do you want to exit ?"));
        QVERIFY(!window.isVisible());
    }

    void inputReturnsTheTextOrNothingOnCancel_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::addColumn<QString>("expected");
        QTest::newRow("accepted") << true << QStringLiteral("2024-25");
        QTest::newRow("cancelled") << false << QString();
    }
    void inputReturnsTheTextOrNothingOnCancel()
    {
        QFETCH(bool, accept);
        WidgetDialogs dialogs;
        QString title;
        whenModalAppears([&](QWidget *modal) {
            auto *box = qobject_cast<QInputDialog *>(modal);
            if (!box)
                return;
            title = box->windowTitle();
            box->setTextValue(QStringLiteral("2024-25"));
            accept ? box->accept() : box->reject();
        });
        QTEST(dialogs.input(QStringLiteral("Year"), QString(), QStringLiteral("2023-24")), "expected");
        QCOMPARE(title, QStringLiteral("TDS Forms"));
    }
};

TDS_TEST(TestWidgetDialogs)
#include "TestWidgetDialogs.moc"
