// The schedule grid driven by keys only: typing, Enter walking the cells and out of the
// grid, the cell rules, and rows added and deleted.
#include "TestRegistry.h"

#include "host/DataObject.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"
#include "ui/ScheduleGrid.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

using Rows = QList<QStringList>;

class TestScheduleGrid : public QObject
{
    Q_OBJECT

    std::unique_ptr<FormWindow> m_window;
    DataObject m_data;   // only its date helper is used: no connection needed
    ScheduleGrid *m_grid = nullptr;
    QLineEdit *m_after = nullptr;

    static ScheduleSpec spec()
    {
        using A = ScheduleColumn::Align;
        using K = ScheduleColumn::Kind;
        return ScheduleSpec{
            .title = QStringLiteral("SCHEDULE I"),
            .table = QStringLiteral("Tb15gT1"),
            .columns = {
                {.heading = QStringLiteral("Name and address of the person to whom paid"), .align = A::Left, .kind = K::Text},
                {.heading = QStringLiteral("Date of payment"), .align = A::Centre, .kind = K::Date},
                {.heading = QStringLiteral("Amount paid"), .align = A::Right, .kind = K::Number, .format = QStringLiteral("###0.00")},
                {.heading = QStringLiteral("Range"), .align = A::Right, .kind = K::Number},
            },
        };
    }
    static QWidget *focused() { return QApplication::focusWidget(); }
    QLineEdit *editor() const { return qobject_cast<QLineEdit *>(focused()); }
    QStringList serials() const
    {
        QStringList out;
        for (int r = 0; r < m_grid->rowCount(); ++r)
            out << m_grid->item(r, 0)->text();
        return out;
    }
    void enterGridAt(int row, int column)
    {
        m_grid->setCurrentCell(row, column);
        m_grid->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(m_grid->hasFocus());
    }

private slots:
    void init()
    {
        m_window = std::make_unique<FormWindow>();
        auto *layout = new QVBoxLayout(m_window.get());
        auto *before = new QLineEdit;
        before->setObjectName(QStringLiteral("before"));
        layout->addWidget(before);
        m_grid = new ScheduleGrid;
        layout->addWidget(m_grid);
        m_after = new QLineEdit;
        m_after->setObjectName(QStringLiteral("after"));
        layout->addWidget(m_after);
        m_grid->setSchedule(spec());
        m_grid->setFieldBehaviour(m_window->fieldBehaviour());
        m_grid->setDataObject(&m_data);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void setUpFromTheSpec()
    {
        QCOMPARE(m_grid->columnCount(), 5);
        QCOMPARE(m_grid->horizontalHeaderItem(0)->text(), QStringLiteral("Sl. No."));
        // A long heading wraps instead of making one very wide column.
        QVERIFY(m_grid->columnWidth(1) < m_grid->fontMetrics().horizontalAdvance(spec().columns[0].heading));
        QVERIFY(m_grid->horizontalHeader()->height() >= 2 * m_grid->fontMetrics().height());
        m_grid->setRows({{"A", "", "1.00", "2"}});
        QCOMPARE(int(m_grid->item(0, 3)->textAlignment()), int(Qt::AlignRight | Qt::AlignVCenter));
        // Setting a schedule again starts afresh.
        m_grid->setSchedule(spec());
        QCOMPARE(m_grid->rowCount(), 0);
    }

    void finishedCellIsNormalised_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("date normalised") << 2 << "1-4-24" << "01/04/2024";
        QTest::newRow("amount formatted") << 3 << "1500" << "1500.00";
        QTest::newRow("empty amount is Nil") << 3 << "" << "Nil";
        QTest::newRow("zero amount is Nil") << 3 << "0.00" << "Nil";
        QTest::newRow("nil typed") << 4 << "nil" << "Nil";
    }
    void finishedCellIsNormalised()
    {
        QFETCH(int, column);
        QFETCH(QString, typed);
        m_grid->setRows({{"", "", "", ""}});
        enterGridAt(0, column);
        QTest::keyClick(m_grid, Qt::Key_F2);
        QLineEdit *edit = editor();
        QVERIFY(edit);
        QTest::keyClicks(edit, typed);
        QCOMPARE(edit->text(), typed.toUpper());
        QCOMPARE(edit->palette().color(QPalette::Base), FieldBehaviour::focusColour());
        QTest::keyClick(edit, Qt::Key_Return);
        QTEST(m_grid->item(0, column)->text(), "shown");
    }

    void enterWalksTheCellsAndLeaves_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("typing");
        QTest::newRow("Return while typing") << int(Qt::Key_Return) << int(Qt::NoModifier) << true;
        QTest::newRow("keypad Enter while typing") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << true;
        QTest::newRow("Tab over the cells") << int(Qt::Key_Tab) << int(Qt::NoModifier) << false;
    }
    void enterWalksTheCellsAndLeaves()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, typing);
        m_grid->setRows({{"", "", "", ""}, {"", "", "", ""}});
        enterGridAt(0, 1);
        const QStringList typed{"a", "1-4-24", "15", "101-200", "b", "020424", "", "7"};
        for (int i = 0; i < typed.size(); ++i) {
            const int row = i / 4;
            const int column = i % 4 + 1;
            QVERIFY2(m_grid->isAncestorOf(focused()) || m_grid->hasFocus(), qPrintable(QString::number(i)));
            QCOMPARE(m_grid->currentRow(), row);
            QCOMPARE(m_grid->currentColumn(), column);
            if (typing)
                QTest::keyClicks(focused(), typed[i]);   // the first letter opens the editor
            QTest::keyClick(focused(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        }
        QTRY_VERIFY(m_after->hasFocus());
        const Rows expected = typing ? Rows{{"A", "01/04/2024", "15.00", "101-200"}, {"B", "02/04/2024", "Nil", "7"}}
                                     : Rows{{"", "", "", ""}, {"", "", "", ""}};
        QCOMPARE(m_grid->rows(), expected);
        QVERIFY(m_window->isVisible());
    }

    void rowsAddedAndDeleted_data()
    {
        QTest::addColumn<int>("deleted");
        QTest::addColumn<Rows>("left");
        QTest::newRow("middle") << 1 << Rows{{"A", "", "1.00", "1"}, {"C", "", "3.00", "3"}};
        QTest::newRow("last") << 2 << Rows{{"A", "", "1.00", "1"}, {"B", "", "2.00", "2"}};
    }
    void rowsAddedAndDeleted()
    {
        QFETCH(int, deleted);
        QFETCH(Rows, left);
        m_grid->setRows({{"A", "", "1.00", "1"}, {"B", "", "2.00", "2"}, {"C", "", "3.00", "3"}});
        QCOMPARE(serials(), (QStringList{"1", "2", "3"}));
        enterGridAt(deleted, 2);
        m_grid->deleteRow();
        QCOMPARE(m_grid->rows(), left);
        QCOMPARE(serials(), (QStringList{"1", "2"}));

        m_grid->addRow();
        QCOMPARE(serials(), (QStringList{"1", "2", "3"}));
        QCOMPARE(m_grid->currentRow(), 2);
        QCOMPARE(m_grid->currentColumn(), 1);
        QTRY_VERIFY(m_grid->hasFocus());
        // The first letter opens the editor, which then has the focus for the rest.
        QTest::keyClick(m_grid, Qt::Key_N);
        QTest::keyClicks(focused(), QStringLiteral("ew"));
        QTest::keyClick(focused(), Qt::Key_Return);
        QCOMPARE(m_grid->rows().last(), (QStringList{"NEW", "", "", ""}));

        // The serial column cannot be typed over.
        enterGridAt(0, 0);
        QTest::keyClicks(m_grid, QStringLiteral("9"));
        QCOMPARE(serials(), (QStringList{"1", "2", "3"}));
    }
};

TDS_TEST(TestScheduleGrid)
#include "TestScheduleGrid.moc"
