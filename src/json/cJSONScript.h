#pragma once
// Runs a dialog script written as JSON: a list of commands whose results are concatenated.
// Commands it does not know are written out as "<%NAME(args)%>" for a later stage.
#include "JsonValue.h"

#include <QHash>
#include <QString>
#include <QStringView>

class Dialogs;
class cStringBuilder;

class cJSONScript
{
public:
    static constexpr int MaxNesting = 40;
    // Total text one evaluation may produce; a script that doubles a variable in a loop
    // would otherwise exhaust memory.
    static constexpr qsizetype MaxOutput = qsizetype(1) << 25;

    // Without dialogs, "alert" shows nothing and "input" accepts its default.
    explicit cJSONScript(Dialogs *dialogs = nullptr) : m_dialogs(dialogs) {}

    void setDialogs(Dialogs *dialogs) { m_dialogs = dialogs; }

    // "Parser Error" and the parser's messages when the script does not parse.
    QString Eval(QStringView script);
    QString ExecCommand(const JsonValue &node);

    // Variables stay between calls on the same object.
    QString variable(const QString &name) const { return m_variables.value(name); }

    static QString nestingMessage();
    static QString outputLimitMessage();

private:
    struct OutputLimit {};

    QString exec(const JsonValue &node);
    QString command(const QString &name, const JsonValue &args);
    QString argument(const JsonValue &args, QStringView name);
    QString switchCommand(const JsonValue &args);
    QString ifCommand(const JsonValue &args);
    QString templateCall(const QString &name, const JsonValue &args);
    void put(cStringBuilder &out, QStringView text);

    Dialogs *m_dialogs = nullptr;
    QHash<QString, QString> m_variables;
    int m_depth = 0;
    qsizetype m_produced = 0;
};
