#include "shared/TemplatePrint.h"

#include "host/IDataObject.h"
#include "host/IReportObject.h"
#include "host/ServiceRegistry.h"
#include "json/Dialogs.h"
#include "shared/modbase.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

const char *const NilText = "---NIL---";

[[noreturn]] void noObject(const char *what)
{
    throw TdsError(91, QStringLiteral("Object variable not set (%1)").arg(QLatin1String(what)));
}

} // namespace

void TemplateFill::text(const QString &placeholder, const QString &value)
{
    Step step;
    step.kind = Step::Text;
    step.placeholder = placeholder;
    step.value = value;
    m_steps.append(step);
}

void TemplateFill::cell(int table, int row, int column, const QString &value)
{
    Step step;
    step.kind = Step::Cell;
    step.table = table;
    step.row = row;
    step.column = column;
    step.value = value;
    m_steps.append(step);
}

void TemplateFill::schedule(int table, int dataRow, const QList<QStringList> &rows, const QString &nilPlaceholder)
{
    Step step;
    step.kind = Step::Schedule;
    step.table = table;
    step.row = dataRow;
    step.rows = rows;
    step.placeholder = nilPlaceholder;
    m_steps.append(step);
}

void TemplateFill::apply(IReportObject &report) const
{
    int current = 0;   // the table FindTable chose last
    const auto find = [&](int table) {
        if (table != current)
            current = report.FindTable(table) ? table : 0;
        return current == table;
    };
    for (const Step &step : m_steps) {
        switch (step.kind) {
        case Step::Text:
            report.NewSetText(step.placeholder, step.value);
            break;
        case Step::Cell:
            if (find(step.table))
                report.setTextMatrix(step.row, step.column, step.value);
            break;
        case Step::Schedule:
            // a schedule reshapes its table: look it up again whatever was chosen before
            current = report.FindTable(step.table) ? step.table : 0;
            if (current == step.table) {
                if (step.rows.isEmpty()) {
                    report.deleteRow(step.row);
                } else {
                    // the copies take the data row's layout, so they go in front of it
                    if (step.rows.size() > 1)
                        report.InsertRows(step.row, int(step.rows.size()) - 1);
                    for (qsizetype r = 0; r < step.rows.size(); ++r) {
                        const QStringList &values = step.rows.at(r);
                        for (qsizetype c = 0; c < values.size(); ++c)
                            report.setTextMatrix(step.row + int(r), int(c), values.at(c));
                    }
                }
            }
            if (!step.placeholder.isEmpty())
                report.NewSetText(step.placeholder,
                                  step.rows.isEmpty() ? QString::fromLatin1(NilText) : QString());
            break;
        }
    }
}

namespace TemplatePrint {

Selection::Selection()
{
    if (const IDataObject *data = modbase::dataObject()) {
        asYear = data->AsYear();
        place = data->formplace();
        date = data->formdate();
        code = data->codeno();
    }
}

void renderTemplate(IReportObject &report, const QString &templatePath, const QString &documentName,
                    const TemplateFill &fill)
{
    const QString templateFile = modbase::data().ExePath() + templatePath;
    if (!QFileInfo::exists(templateFile))
        throw TdsError(53, QStringLiteral("Template File is missing."));
    render(report, templateFile, documentName, fill);
}

void render(IReportObject &report, const QString &templateFile, const QString &documentName, const TemplateFill &fill)
{
    if (!report.OpenMasterFileOnly(templateFile))
        throw TdsError(75, QStringLiteral("Path/File access error (%1)").arg(templateFile));
    report.setDocumentName(documentName);
    fill.apply(report);
}

bool print(const QString &module, const QString &templatePath, const QString &tempName,
           const QString &documentName, const TemplateFill &fill, Dialogs &dialogs)
{
    bool shown = false;
    modbase::errorTrap(module, QStringLiteral("cmdshowrep_Click"), [&] {
        IDataObject *data = modbase::dataObject();
        if (!data)
            noObject(ProgId::DataObject);
        IReportObject *report = modbase::reportObject();
        if (!report)
            noObject(ProgId::ReportObject);

        data->ShowFormInfo();
        if (data->ModePrint() <= 1)
            return;
        const QString templateFile = data->ExePath() + templatePath;
        if (!QFileInfo::exists(templateFile)) {
            dialogs.inform(QStringLiteral("Template File is missing."));
            return;
        }
        // Preview or straight to the printer, as the user chose.
        report->setWinModeReport(data->ModePrint() == 2);

        // The filled copy lives only until the report object has read it.
        const QString output = data->vTmpPath() + tempName;
        struct RemoveAfter
        {
            QString path;
            ~RemoveAfter() { QFile::remove(path); }
        } removeAfter{output};

        render(*report, templateFile, documentName, fill);
        if (QFileInfo::exists(output))
            QFile::remove(output);
        if (!report->SaveMasterFile(output))
            throw TdsError(75, QStringLiteral("Path/File access error (%1)").arg(output));
        report->OpenFileOnly(output);
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
        shown = true;
    });
    return shown;
}

} // namespace TemplatePrint
