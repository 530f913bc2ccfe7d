#pragma once
// The arguments the per-form commands share: a form key, --deductor, --year, --serial, an
// output (--text, --pdf FILE, --rtf FILE) and one file name. Each command checks which of
// them it needs.
#include <QString>
#include <QStringList>

struct FormDescriptor;

struct FormArguments
{
    QString form;
    QString deductor;
    QString year;
    QString pdf;
    QString rtf;
    QString file;          // the one other argument ("-" is standard input)
    bool text = false;
    int serial = 0;        // 0: none given
    const FormDescriptor *descriptor = nullptr;

    // False with *why (a usage error) when an option lacks its value, is unknown, or the
    // form key is not one of the registry's.
    bool parse(const QStringList &args, QString *why);
    // The deductor given and the year well-formed; false with *why.
    bool needsSelection(QString *why) const;
};
