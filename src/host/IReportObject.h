#pragma once
// The host's report object ("PrjOrvikReporter.ClsMain"): line-table reports (text, PDF,
// preview, printer) and filling of rich-text / word-processor templates.
#include "host/HostService.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class IReportObject : public HostService
{
public:
    // --- line-table reports
    virtual void setWinModeReport(bool preview) = 0;    // true: preview window; false: printer
    virtual bool WinModeReport() const = 0;
    virtual void setSetCol130(bool wide) = 0;            // 130 positions a row instead of 78
    virtual void NewReport() = 0;
    virtual void printtext() = 0;                        // an empty line
    virtual void printtext(const QString &text) = 0;     // a free paragraph
    virtual void createtable(int first, int columns) = 0;
    // Arrays are indexed from 1 (index 0 unused). Border texts: left, right, top, bottom;
    // one character per column, '1' draws that side.
    virtual void WriteToReport(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                               QStringList &firstTexts, QStringList &prefixes,
                               QString &border1, QString &border2, QString &border3,
                               QString &border4, bool &tableRow) = 0;
    // Finishes the report and shows it (preview) or prints it; without a screen it becomes a
    // PDF in the temporary folder.
    virtual void ShowReport() = 0;

    // The finished (or current) report rendered without a screen: the CLI and tests.
    virtual QString reportText() const = 0;
    virtual bool exportPdf(const QString &path) = 0;

    // --- word-processor report of the challan
    virtual void newreportnew(const QString &templatePath) = 0;
    virtual void SetText(const QString &placeholder, const QString &value) = 0;

    // --- rich-text templates
    virtual bool OpenMasterFileOnly(const QString &templatePath) = 0;
    virtual bool FindTable(int tableNumber) = 0;           // 1-based
    virtual void setTextMatrix(int row, int column, const QString &value) = 0;   // 0-based
    virtual QString TextMatrix(int row, int column) const = 0;
    virtual void InsertRows(int rowPosition, int count = 1) = 0;
    virtual void deleteRow(int rowPosition) = 0;
    virtual void NewSetText(const QString &placeholder, const QString &value) = 0;
    virtual bool SaveMasterFile(const QString &outputPath) = 0;
    // Reads the whole file at once and shows it in the report object's own preview, so the
    // caller may delete the file as soon as this returns.
    virtual void OpenFileOnly(const QString &path) = 0;

    // The base name of the next report shown ("Form15C_DEMO01_2024-25"): the PDF file name
    // offered for it and the name of its copies. Showing the report uses it up.
    virtual void setDocumentName(const QString &baseName) = 0;

    // Where ShowReport puts the files it writes (the data object's vTmpPath); without it
    // the system's temporary folder.
    virtual void setTempFolder(const QString &folder) { Q_UNUSED(folder); }
};
