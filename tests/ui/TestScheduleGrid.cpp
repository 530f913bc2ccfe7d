// The schedule grid: rows added and deleted, the serials renumbered (its cells are walked by
// keys in the October 2015 declaration window).
#include "TestRegistry.h"

#include "host/DataObject.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"
#include "ui/ScheduleGrid.h"

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

    static ScheduleLayout sample()
    {
        using A = ScheduleColumn::Align;
        using K = ScheduleColumn::Kind;
        return ScheduleLayout{
            .columns = {
                {.heading = QStringLiteral("Name and address of the person to whom paid"), .align = A::Left, .kind = K::Text},
                {.heading = QStringLiteral("Date of payment"), .align = A::Centre, .kind = K::Date},
                {.heading = QStringLiteral("Amount paid"), .align = A::Right, .kind = K::Number, .format = QStringLiteral("###0.00")},
                {.heading = QStringLiteral("Range"), .align = A::Right, .kind = K::Number},
            },
        };
    }
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
        layout->addWidget(new QLineEdit);
        m_grid = new ScheduleGrid;
        layout->addWidget(m_grid);
        m_grid->setSchedule(sample());
        m_grid->setFieldBehaviour(m_window->fieldBehaviour());
        m_grid->setDataObject(&m_data);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void rowsAddedAndDeleted()
    {
        m_grid->setRows({{"A", "", "1.00", "1"}, {"B", "", "2.00", "2"}, {"C", "", "3.00", "3"}});
        enterGridAt(1, 2);
        m_grid->deleteRow();
        QCOMPARE(m_grid->rows(), (Rows{{"A", "", "1.00", "1"}, {"C", "", "3.00", "3"}}));
        m_grid->addRow();   // the serials renumbered after the deletion
        QCOMPARE(serials(), (QStringList{"1", "2", "3"}));
    }
};

TDS_TEST(TestScheduleGrid)
#include "TestScheduleGrid.moc"
