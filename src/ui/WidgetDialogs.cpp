#include "ui/WidgetDialogs.h"

#include <QInputDialog>
#include <QMessageBox>

namespace {
QMessageBox::Icon boxIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

QString titleOr(const QString &title)
{
    return title.isEmpty() ? WidgetDialogs::applicationTitle() : title;
}
} // namespace

QString WidgetDialogs::applicationTitle()
{
    return QStringLiteral("TDS Forms");
}

void WidgetDialogs::inform(const QString &message, const QString &title, Icon icon)
{
    QMessageBox box(boxIcon(icon), titleOr(title), message, QMessageBox::Ok, m_parent);
    box.exec();
}

bool WidgetDialogs::askYesNo(const QString &message, const QString &title, Icon icon)
{
    QMessageBox box(boxIcon(icon), titleOr(title), message, QMessageBox::Yes | QMessageBox::No, m_parent);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

bool WidgetDialogs::ask(const QString &message, Icon icon, bool yesIsDefault, const QString &title)
{
    QMessageBox box(boxIcon(icon), titleOr(title), message, QMessageBox::Yes | QMessageBox::No, m_parent);
    box.setDefaultButton(yesIsDefault ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString WidgetDialogs::input(const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    const QString text = QInputDialog::getText(m_parent, titleOr(title), prompt, QLineEdit::Normal,
                                               defaultText, &ok);
    return ok ? text : QString();
}
