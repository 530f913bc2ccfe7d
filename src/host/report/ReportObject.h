#pragma once
// The report object "PrjOrvikReporter.ClsMain": line-table reports rendered as text, PDF,
// print preview or printer output, and the rich-text template filler.
#include "host/IReportObject.h"
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
    bool exportPdf(const QString &path) override;

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

    void setTempFolder(const QString &folder) override { m_tempFolder = folder; }
    QString tempFolder() const;

    const ReportModel &model() const { return m_model; }
    ReportLayout layout() const { return layoutReport(m_model); }
    const RtfDocument &document() const { return m_document; }
    int currentTable() const { return m_table; }
    // The file the last ShowReport wrote (PDF when there is no screen, or the filled
    // document), empty when it went to a window or a printer.
    QString lastOutput() const { return m_lastOutput; }

    // No window may open: no screen, or a test run.
    static bool headless();

private:
    enum class Mode { Lines, Document };
    bool openDocument(const QString &path);
    void showDocument();
    void showLines();

    bool m_preview = true;
    bool m_wide = false;
    Mode m_mode = Mode::Lines;
    ReportModel m_model;
    RtfDocument m_document;
    QString m_documentPath;
    int m_table = 0;
    QString m_tempFolder;
    QString m_lastOutput;
};

std::shared_ptr<HostService> createReportObject();
