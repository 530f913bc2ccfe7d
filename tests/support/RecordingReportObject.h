#pragma once
// A report object that records every call made to it, for tests that check what a form
// sends to the report object. Register it under "PrjOrvikReporter.ClsMain" (install()) and
// every modbase::Main() after that gets the same recorder.
#include "host/IReportObject.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

class RecordingReportObject : public IReportObject
{
public:
    struct Row {
        QVariantList values;
        QList<qint16> widths;
        QList<qint32> alignments;
        QStringList firstTexts;
        QStringList prefixes;
        QString border1, border2, border3, border4;
        bool tableRow = false;
    };

    // Registers one shared recorder under the report object's name; returns it.
    static std::shared_ptr<RecordingReportObject> install();
    static void uninstall();

    // Every call in order: "NewReport", "printtext", "printtext:<text>", "createtable:1,2",
    // "WriteToReport", "ShowReport", "WinModeReport:true", "setDocumentName:<name>", ...
    const QStringList &calls() const { return m_calls; }
    int count(const QString &call) const { return int(m_calls.count(call)); }
    const QList<Row> &rows() const { return m_rows; }
    void clear();
    // A WriteToReport that throws, to test that one bad row does not stop a print.
    void failRow(int rowIndex) { m_failRow = rowIndex; }

    void setWinModeReport(bool preview) override;
    bool WinModeReport() const override { return m_winMode; }
    void setSetCol130(bool wide) override;
    void NewReport() override;
    void printtext() override;
    void printtext(const QString &text) override;
    void createtable(int first, int columns) override;
    void WriteToReport(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                       QStringList &firstTexts, QStringList &prefixes, QString &border1, QString &border2,
                       QString &border3, QString &border4, bool &tableRow) override;
    void ShowReport() override;
    // The recorded calls, one a line.
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
    void setDocumentName(const QString &baseName) override;

private:
    QStringList m_calls;
    QList<Row> m_rows;
    bool m_winMode = true;
    int m_failRow = -1;
    QString m_lastCell;
};
