#pragma once
// Printing a stored Form 15C, 15D or 15I without a window (tdsforms-cli print): the same
// load and report builder as the windows, for the data object's current deductor and year.
#include <QString>
#include <optional>

namespace StoredFormPrint {

enum class Form { F15C, F15D, F15I };

// "15c", "15D", "15i"; nothing for any other text.
std::optional<Form> parseForm(const QString &name);

// Starts a new report on the report object and fills it with the stored form.
void build(Form form);

} // namespace StoredFormPrint
