#include "ui/TabAdvance.h"

#include "ui/FieldBehaviour.h"
#include "ui/FormWindow.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTabWidget>

namespace {

QTabWidget *tabsOf(const QWidget *page)
{
    auto *stack = page ? qobject_cast<QStackedWidget *>(page->parentWidget()) : nullptr;
    return stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
}

bool takesInput(QWidget *w, const QWidget *page)
{
    if (!w || w->focusProxy() || !(w->focusPolicy() & Qt::TabFocus) || !w->isEnabled() || !w->isVisibleTo(page))
        return false;
    if (auto *line = qobject_cast<QLineEdit *>(w); line && line->isReadOnly())
        return false;
    if (auto *plain = qobject_cast<QPlainTextEdit *>(w); plain && plain->isReadOnly())
        return false;
    return true;
}

// The page's fields in tab order.
QList<QWidget *> fieldsOf(QWidget *page)
{
    QList<QWidget *> out;
    QWidget *window = page->window();
    for (QWidget *w = window->nextInFocusChain(); w && w != window; w = w->nextInFocusChain()) {
        // isAncestorOf() counts the page itself, which may take focus (a scroll area).
        if (w != page && page->isAncestorOf(w) && takesInput(w, page))
            out << w;
    }
    return out;
}

} // namespace

namespace TabAdvance {

QWidget *pageOf(const QWidget *widget)
{
    for (QWidget *w = widget ? widget->parentWidget() : nullptr; w && !w->isWindow(); w = w->parentWidget()) {
        if (tabsOf(w))
            return w;
    }
    return nullptr;
}

bool moveToNextPage(QWidget *field)
{
    QWidget *page = pageOf(field);
    QTabWidget *tabs = tabsOf(page);
    if (!tabs)
        return false;
    const QList<QWidget *> fields = fieldsOf(page);
    if (fields.isEmpty() || fields.last() != field)
        return false;
    for (int next = tabs->indexOf(page) + 1; next < tabs->count(); ++next) {
        if (!tabs->isTabEnabled(next))
            continue;
        QWidget *nextPage = tabs->widget(next);
        const QList<QWidget *> nextFields = fieldsOf(nextPage);
        if (nextFields.isEmpty())
            continue;
        // The check runs while its page still shows: a refusal keeps the operator there.
        if (auto *window = qobject_cast<FormWindow *>(field->window());
            window && !window->fieldBehaviour()->checkFocused())
            return true;
        tabs->setCurrentIndex(next);
        nextFields.first()->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

} // namespace TabAdvance
