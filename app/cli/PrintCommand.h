#pragma once
#include <QStringList>

// tdsforms-cli print FORM --deductor CODE --year YYYY-YY (--text | --pdf FILE), and for forms
// that keep several records --serial N (--rtf FILE | --pdf FILE). args: what follows "print".
// 0 on success, errors on standard error and a non-zero result otherwise.
int cmdPrint(const QStringList &args);
