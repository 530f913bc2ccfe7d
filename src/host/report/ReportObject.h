#pragma once
// The report object "PrjOrvikReporter.ClsMain": line-table reports rendered as text, PDF,
// print preview or printer output, the rich-text template filler, and its own viewer of
// rich-text documents.
#include "host/IReportObject.h"
#include "host/report/PagedOutput.h"
#include "host/report/ReportLayout.h"
#include "host/report/ReportModel.h"
#include "host/report/RtfDocument.h"

#include <memory>

class ReportObject : public IReportObject
{
public:
    void setWinModeReport(bool preview) override { m_preview = preview; }
    bool WinModeReport() const override { return m_preview; }
    void setSetCol130(bool wide) override;
    void NewReport() override;
    void printtext() override;
    void printtext(const QString &text) override;
    void createtable(int first, int columns) override;
    void WriteToReport(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                       QStringList &firstTexts, QStringList &prefixes, QString &border1,
                       QString &border2, QString &border3, QString &border4, bool &tableRow) override;
    void ShowReport() override;
    QString reportText() const override;
    // Either kind of report: the line table, or the document as it is filled so far.
    bool exportPdf(const QString &path) override;
    bool exportDocumentPdf(const QString &path);

    void newreportnew(const QString &templatePath) override;
    void SetText(const QString &placeholder, const QString &value) override;

    bool OpenMasterFileOnly(const QString &templatePath) override;
    bool FindTable(int tableNumber) override;
    void setTextMatrix(int row, int column, const QString &value) override;
    QString TextMatrix(int row, int column) const override;
    void InsertRows(int rowPosition, int count = 1) override;
    void deleteRow(int rowPosition) override;
    void NewSetText(const QString &placeholder, const QString &value) override;
    bool SaveMasterFile(const QString &outputPath) override;
    void OpenFileOnly(const QString &path) override;

    void setDocumentName(const QString &baseName) override { m_documentName = baseName; }
    QString documentName() const { return m_documentName; }
    void setTempFolder(const QString &folder) override { m_tempFolder = folder; }
    QString tempFolder() const;

    const ReportModel &model() const { return m_model; }
    ReportLayout layout() const { return layoutReport(m_model); }
    const RtfDocument &document() const { return m_document; }
    int currentTable() const { return m_table; }
    // The PDF the last ShowReport or OpenFileOnly wrote without a screen; empty when the
    // report went to a window or a printer.
    QString lastOutput() const { return m_lastOutput; }

    // No window may open: no QApplication, or a platform without a screen.
    static bool headless();

private:
    enum class Mode { Lines, Document };
    bool openDocument(const QString &path);
    void showDocument();
    void showLines();
    // Shows rich text from memory: a PDF in the temporary folder without a screen, else the
    // preview window or the printer. name: the base name of files made from it.
    void showRtf(const QByteArray &rtf, const QString &name, const QString &suffix, bool preview);
    void show(const QPageLayout &page, const PagedOutput::PaintPages &paint, const QString &name,
              const QString &title, bool preview, const QByteArray &document = QByteArray(),
              const QString &suffix = QString());
    QString nameOr(const QString &fallback) const;

    bool m_preview = true;
    bool m_wide = false;
    Mode m_mode = Mode::Lines;
    ReportModel m_model;
    RtfDocument m_document;
    QString m_documentPath;
    int m_table = 0;
    QString m_tempFolder;
    QString m_lastOutput;
    QString m_documentName;
};

std::shared_ptr<HostService> createReportObject();
