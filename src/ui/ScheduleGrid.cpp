#include "ui/ScheduleGrid.h"

#include "host/IDataObject.h"
#include "shared/FieldRules.h"
#include "ui/FieldBehaviour.h"
#include "ui/TabAdvance.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

namespace {

constexpr int kSerialColumn = 0;
constexpr int kPadding = 16;

Qt::Alignment alignmentOf(ScheduleColumn::Align align)
{
    switch (align) {
    case ScheduleColumn::Align::Centre:
        return Qt::AlignCenter;
    case ScheduleColumn::Align::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case ScheduleColumn::Align::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

bool isEnter(const QKeyEvent *key)
{
    const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
    return (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && mods == Qt::NoModifier;
}

// A plain lower-case letter, to be shown as a capital.
bool isSmallLetter(const QKeyEvent *key)
{
    const QString text = key->text();
    return text.size() == 1 && text.at(0) >= QLatin1Char('a') && text.at(0) <= QLatin1Char('z')
        && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

// Editors with the window's behaviour; Enter finishes the cell and moves on as Tab does.
class ScheduleDelegate : public QStyledItemDelegate
{
public:
    explicit ScheduleDelegate(ScheduleGrid *grid) : QStyledItemDelegate(grid), m_grid(grid) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override
    {
        QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto *line = qobject_cast<QLineEdit *>(editor))
            line->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()) & Qt::AlignHorizontal_Mask);
        if (editor && m_grid->fieldBehaviour())
            m_grid->fieldBehaviour()->attach(editor);
        return editor;
    }

    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        if (auto *line = qobject_cast<QLineEdit *>(editor)) {
            model->setData(index, m_grid->normalised(index.column(), line->text()), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *editor = qobject_cast<QWidget *>(object);
        if (editor && event->type() == QEvent::KeyPress) {
            auto *key = static_cast<QKeyEvent *>(event);
            if (isEnter(key)) {
                emit commitData(editor);
                emit closeEditor(editor, QAbstractItemDelegate::EditNextItem);
                return true;
            }
            if (isSmallLetter(key)) {
                QKeyEvent upper(QEvent::KeyPress, key->key(), key->modifiers(), key->text().toUpper(),
                                key->isAutoRepeat(), key->count());
                QCoreApplication::sendEvent(editor, &upper);
                return true;
            }
        }
        return QStyledItemDelegate::eventFilter(object, event);
    }

private:
    ScheduleGrid *m_grid;
};

} // namespace

ScheduleGrid::ScheduleGrid(QWidget *parent) : QTableWidget(parent)
{
    setObjectName(QStringLiteral("vsf"));
    setItemDelegate(new ScheduleDelegate(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setReadOnly(false);
    setTabKeyNavigation(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    verticalHeader()->hide();   // the serial column numbers the rows
    // The style draws the header text with these flags, so long headings wrap.
    horizontalHeader()->setDefaultAlignment(Qt::Alignment::fromInt(Qt::AlignCenter | Qt::TextWordWrap));
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
}

QString ScheduleGrid::serialHeading()
{
    return QStringLiteral("Sl. No.");
}

void ScheduleGrid::setSchedule(const ScheduleLayout &layout)
{
    m_layout = layout;
    clear();
    setRowCount(0);
    setColumnCount(1 + int(layout.columns.size()));
    QStringList headings{serialHeading()};
    for (const ScheduleColumn &column : layout.columns)
        headings << column.heading;
    setHorizontalHeaderLabels(headings);
    fitColumns();
}

void ScheduleGrid::fitColumns()
{
    QHeaderView *header = horizontalHeader();
    const QFontMetrics fm(header->font());
    const auto wordWidth = [&fm](const QString &text) {
        int widest = 0;
        for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            widest = qMax(widest, fm.horizontalAdvance(word));
        return widest;
    };
    int height = fm.height() + kPadding / 2;
    for (int c = 0; c < columnCount(); ++c) {
        const QString heading = c == kSerialColumn ? serialHeading() : m_layout.columns[c - 1].heading;
        // Short headings on one line; long ones wrap at a width a value still fits in.
        const int whole = fm.horizontalAdvance(heading) + kPadding;
        const int wrapped = qMax(wordWidth(heading) + kPadding, fm.horizontalAdvance(QLatin1Char('0')) * 14);
        const int width = c == kSerialColumn ? whole : qMax(qMin(whole, wrapped), fm.horizontalAdvance(QLatin1Char('0')) * 8);
        header->setSectionResizeMode(c, c == kSerialColumn ? QHeaderView::Fixed : QHeaderView::Interactive);
        setColumnWidth(c, width);
        const QRect box = fm.boundingRect(QRect(0, 0, width - kPadding, 10000), Qt::AlignCenter | Qt::TextWordWrap,
                                          heading);
        height = qMax(height, box.height() + kPadding / 2);
    }
    header->setMinimumHeight(height);
}

QTableWidgetItem *ScheduleGrid::makeItem(int column, const QString &text) const
{
    auto *item = new QTableWidgetItem(text);
    if (column == kSerialColumn) {
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setTextAlignment(Qt::AlignCenter);
    } else {
        item->setTextAlignment(alignmentOf(m_layout.columns[column - 1].align));
    }
    return item;
}

void ScheduleGrid::renumber()
{
    for (int r = 0; r < rowCount(); ++r) {
        QTableWidgetItem *serial = item(r, kSerialColumn);
        if (!serial)
            setItem(r, kSerialColumn, makeItem(kSerialColumn, QString::number(r + 1)));
        else
            serial->setText(QString::number(r + 1));
    }
}

void ScheduleGrid::setRows(const QList<QStringList> &rows)
{
    setRowCount(0);
    setRowCount(int(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 1; c < columnCount(); ++c)
            setItem(r, c, makeItem(c, c - 1 < rows[r].size() ? rows[r][c - 1] : QString()));
    }
    renumber();
}

QList<QStringList> ScheduleGrid::rows() const
{
    QList<QStringList> out;
    for (int r = 0; r < rowCount(); ++r) {
        QStringList row;
        for (int c = 1; c < columnCount(); ++c) {
            const QTableWidgetItem *cell = item(r, c);
            row << (cell ? cell->text() : QString());
        }
        out << row;
    }
    return out;
}

void ScheduleGrid::addRow()
{
    const int r = rowCount();
    insertRow(r);
    for (int c = 1; c < columnCount(); ++c)
        setItem(r, c, makeItem(c, QString()));
    renumber();
    if (columnCount() > 1)
        setCurrentCell(r, 1);
    setFocus(Qt::OtherFocusReason);
}

void ScheduleGrid::deleteRow()
{
    const int r = currentRow();
    if (r < 0 || r >= rowCount())
        return;
    const int column = qMax(currentColumn(), 1);
    removeRow(r);
    renumber();
    if (rowCount() > 0 && columnCount() > 1)
        setCurrentCell(qMin(r, rowCount() - 1), qMin(column, columnCount() - 1));
}

void ScheduleGrid::finishEditing()
{
    QWidget *editor = QApplication::focusWidget();
    if (state() != EditingState || !editor || !isAncestorOf(editor))
        return;
    commitData(editor);
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void ScheduleGrid::setReadOnly(bool readOnly)
{
    setEditTriggers(readOnly ? QAbstractItemView::NoEditTriggers
                             : QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                                   | QAbstractItemView::AnyKeyPressed);
}

void ScheduleGrid::setFieldBehaviour(FieldBehaviour *behaviour)
{
    m_behaviour = behaviour;
}

QString ScheduleGrid::normalised(int column, const QString &text) const
{
    if (column < 1 || column > m_layout.columns.size())
        return text;
    return FieldRules::scheduleCell(m_layout.columns[column - 1], text, m_data);
}

QModelIndex ScheduleGrid::neighbour(const QModelIndex &index, bool next) const
{
    const int last = columnCount() - 1;
    if (last < 1 || rowCount() == 0)
        return {};
    if (!index.isValid())
        return next ? model()->index(0, 1) : QModelIndex();
    const int r = index.row();
    const int c = index.column();
    if (next) {
        if (c < last)
            return model()->index(r, qMax(c + 1, 1));
        return r + 1 < rowCount() ? model()->index(r + 1, 1) : QModelIndex();
    }
    if (c > 1)
        return model()->index(r, c - 1);
    return r > 0 ? model()->index(r - 1, last) : QModelIndex();
}

bool ScheduleGrid::leaveGrid(bool next)
{
    // A grid that ends a tab page walks on to the next page, as the page's last field does.
    if (next && TabAdvance::moveToNextPage(this))
        return true;
    // Straight to the window's tab chain, past the item view's own cell walking.
    return QWidget::focusNextPrevChild(next);
}

bool ScheduleGrid::focusNextPrevChild(bool next)
{
    if (state() != EditingState) {
        const QModelIndex target = neighbour(currentIndex(), next);
        if (target.isValid()) {
            setCurrentIndex(target);
            return true;
        }
    }
    return leaveGrid(next);
}

void ScheduleGrid::keyPressEvent(QKeyEvent *event)
{
    if (isEnter(event) && state() != EditingState) {
        focusNextPrevChild(true);
        event->accept();
        return;
    }
    if (isSmallLetter(event)) {
        QKeyEvent upper(QEvent::KeyPress, event->key(), event->modifiers(), event->text().toUpper(),
                        event->isAutoRepeat(), event->count());
        QTableWidget::keyPressEvent(&upper);
        event->setAccepted(upper.isAccepted());
        return;
    }
    QTableWidget::keyPressEvent(event);
}

QModelIndex ScheduleGrid::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers)
{
    if (cursorAction == MoveNext || cursorAction == MovePrevious)
        return neighbour(currentIndex(), cursorAction == MoveNext);
    return QTableWidget::moveCursor(cursorAction, modifiers);
}

void ScheduleGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool walking = hint == QAbstractItemDelegate::EditNextItem || hint == QAbstractItemDelegate::EditPreviousItem;
    const bool next = hint == QAbstractItemDelegate::EditNextItem;
    if (walking && !neighbour(currentIndex(), next).isValid()) {
        QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
        leaveGrid(next);
        return;
    }
    QTableWidget::closeEditor(editor, hint);
}
