#pragma once
#include <QStringList>

// tdsforms-cli sections --year YYYY-YY [--get-li KEY | --get-code KEY]
// args: what follows "sections". Lists the challan's nature-of-payment list of the year,
// one "key|code|text" a line in display order, or prints one look-up (an empty line when
// the key is not in the list). 0 on success, 2 on a usage error, 1 otherwise.
int cmdSections(const QStringList &args);
