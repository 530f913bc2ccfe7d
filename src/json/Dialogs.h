#pragma once
// The only way logic code talks to the user: message box, yes/no question, input box.
// Windows pass a widget-backed implementation; tests and the CLI pass scripted ones.
#include <QString>

class Dialogs
{
public:
    enum class Icon { Information, Exclamation, Critical, Question };

    virtual ~Dialogs() = default;
    virtual void inform(const QString &message, const QString &title = QString(),
                        Icon icon = Icon::Information) = 0;
    virtual bool askYesNo(const QString &message, const QString &title = QString(),
                          Icon icon = Icon::Question) = 0;
    // The same question with the button that Enter presses given: destructive actions
    // default to No.
    virtual bool ask(const QString &message, Icon icon, bool yesIsDefault, const QString &title = QString())
    {
        Q_UNUSED(yesIsDefault);
        return askYesNo(message, title, icon);
    }
    // Returns the text entered; the default when the user accepts it unchanged,
    // the empty text when the user cancels.
    virtual QString input(const QString &prompt, const QString &title,
                          const QString &defaultText) = 0;
};
