#include "forms/StoredFormPrint.h"

#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"
#include "forms/FormSupport.h"

namespace StoredFormPrint {

std::optional<Form> parseForm(const QString &name)
{
    const QString n = name.trimmed().toLower();
    if (n == QLatin1String("15c"))
        return Form::F15C;
    if (n == QLatin1String("15d"))
        return Form::F15D;
    if (n == QLatin1String("15i"))
        return Form::F15I;
    return std::nullopt;
}

void build(Form form)
{
    IReportObject &report = FormSupport::report();
    report.NewReport();
    if (form == Form::F15I) {
        Form15ILogic logic;
        logic.load();
        logic.buildReport();
        return;
    }
    Form15CDLogic logic(form == Form::F15C ? Form15CDLogic::Kind::C : Form15CDLogic::Kind::D);
    logic.load();
    logic.buildReport();
}

} // namespace StoredFormPrint
