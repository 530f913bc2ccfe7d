#pragma once
// Dialogs shown as real message boxes and input boxes, titled with the application's name.
#include "json/Dialogs.h"

class QWidget;

class WidgetDialogs : public Dialogs
{
public:
    static QString applicationTitle();   // "TDS Forms"

    explicit WidgetDialogs(QWidget *parent = nullptr) : m_parent(parent) {}

    void inform(const QString &message, const QString &title = QString(),
                Icon icon = Icon::Information) override;
    bool askYesNo(const QString &message, const QString &title = QString(),
                  Icon icon = Icon::Question) override;
    bool ask(const QString &message, Icon icon, bool yesIsDefault, const QString &title = QString()) override;
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override;

private:
    QWidget *m_parent;
};
