#pragma once
#include <QStringList>

// tdsforms-cli print 15c|15d|15i --deductor CODE --year YYYY-YY (--text | --pdf FILE)
// args: what follows "print". Prints the stored form through the forms' own report
// builders; 0 on success, errors on standard error and a non-zero result otherwise.
int cmdPrint(const QStringList &args);
