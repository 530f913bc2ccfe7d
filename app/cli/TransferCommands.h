#pragma once
#include <QStringList>

// tdsforms-cli import FORM --deductor CODE --year YYYY-YY FILE ("-": standard input): a JSON
// array of records; the serial of each one stored printed one a line, each refused record
// named on standard error with its reason; 1 when any was refused.
int cmdImport(const QStringList &args);

// tdsforms-cli export FORM --deductor CODE --year YYYY-YY [--serial N]: the stored records
// as a JSON array in the import's shape, one record a line.
int cmdExport(const QStringList &args);
