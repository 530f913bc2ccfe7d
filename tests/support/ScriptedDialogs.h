#pragma once
// Dialogs answered by the test: queued yes/no answers and input texts, every question
// recorded.
#include "json/Dialogs.h"

#include <QList>
#include <QQueue>
#include <QStringList>

class ScriptedDialogs : public Dialogs
{
public:
    struct Asked {
        QString kind;      // "inform", "askYesNo", "input"
        QString message;
        QString title;
        Icon icon = Icon::Information;
        bool yesIsDefault = true;
    };

    QQueue<bool> answers;        // askYesNo; No when empty
    QQueue<QString> inputs;      // input; the default when empty
    QList<Asked> asked;

    void inform(const QString &message, const QString &title, Icon icon) override
    {
        asked << Asked{QStringLiteral("inform"), message, title, icon};
    }
    bool askYesNo(const QString &message, const QString &title, Icon icon) override
    {
        asked << Asked{QStringLiteral("askYesNo"), message, title, icon};
        return answers.isEmpty() ? false : answers.dequeue();
    }
    bool ask(const QString &message, Icon icon, bool yesIsDefault, const QString &title = QString()) override
    {
        asked << Asked{QStringLiteral("askYesNo"), message, title, icon, yesIsDefault};
        return answers.isEmpty() ? false : answers.dequeue();
    }
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        asked << Asked{QStringLiteral("input"), prompt, title, Icon::Question};
        return inputs.isEmpty() ? defaultText : inputs.dequeue();
    }
};
