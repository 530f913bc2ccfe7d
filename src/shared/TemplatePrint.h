#pragma once
// Printing a form through its rich-text template: what goes where is collected in a fill
// map, then applied to the report object's copy of the template, which is saved to the
// temporary folder, shown from memory by the report object and deleted again.
#include <QList>
#include <QString>
#include <QStringList>

class Dialogs;
class IReportObject;

class TemplateFill
{
public:
    // NewSetText: every occurrence of the placeholder.
    void text(const QString &placeholder, const QString &value);
    // FindTable + setTextMatrix; tables 1-based, rows and columns 0-based, as the table
    // stands when the step is applied (rows added by an earlier schedule count).
    void cell(int table, int row, int column, const QString &value);
    // A schedule table: header rows, then one empty data row at dataRow. With rows: the table
    // is grown with InsertRows to hold them and each row written cell by cell (column c of a
    // row goes to column c of the table). Without rows: deleteRow(dataRow), and
    // nilPlaceholder becomes "---NIL---" (otherwise nilPlaceholder becomes "").
    void schedule(int table, int dataRow, const QList<QStringList> &rows, const QString &nilPlaceholder);

    // The steps in the order they were added.
    void apply(IReportObject &report) const;
    qsizetype size() const { return m_steps.size(); }
    bool isEmpty() const { return m_steps.isEmpty(); }

private:
    struct Step
    {
        enum Kind { Text, Cell, Schedule };
        Kind kind = Text;
        int table = 0;
        int row = 0;
        int column = 0;
        QString placeholder;
        QString value;
        QList<QStringList> rows;
    };
    QList<Step> m_steps;
};

namespace TemplatePrint {

// What a printed form takes from the data object's selection (empty without one).
struct Selection
{
    QString asYear, place, date, code;
    Selection();
};

// render() on the template under the data home (ExePath + "/Data/Form15G.rtf"); throws
// TdsError "Template File is missing." when it is not there.
void renderTemplate(IReportObject &report, const QString &templatePath, const QString &documentName,
                    const TemplateFill &fill);

// The template opened in the report object, named documentName and filled, ready to be
// saved or exported; nothing is shown. Throws TdsError when the file cannot be opened.
void render(IReportObject &report, const QString &templateFile, const QString &documentName, const TemplateFill &fill);

// The whole print of a template form, under the error trap (module, "cmdshowrep_Click"):
// ShowFormInfo, and nothing more unless ModePrint > 1; "Template File is missing." when
// ExePath + templatePath ("/Data/Form15G.rtf") is not there; else the template filled and
// named documentName, saved as vTmpPath + tempName ("Frm15G.rtf"), shown, and that file
// deleted, also when a step failed. True when the document was shown.
bool print(const QString &module, const QString &templatePath, const QString &tempName,
           const QString &documentName, const TemplateFill &fill, Dialogs &dialogs);

} // namespace TemplatePrint
