#pragma once
// The report object's own preview window: pages on screen, printing, PDF, and a copy of a
// document for the word processor. Everything it shows was read into memory before it
// opened, so the file it came from may already be gone.
#include "host/report/PagedOutput.h"

#include <QByteArray>
#include <QDialog>
#include <QPrinter>
#include <QPushButton>

class QPrintPreviewWidget;

class ReportPreview : public QDialog
{
public:
    ReportPreview(const QPageLayout &page, PagedOutput::PaintPages paint, const QString &documentName,
                  QWidget *parent = nullptr);

    // Offers "Open in word processor" for this document; suffix with its dot (".rtf").
    void setDocument(const QByteArray &content, const QString &suffix);

    // The file name offered for the PDF: the document name with ".pdf".
    QString pdfFileName() const;
    bool savePdf(const QString &path);
    // Writes the document into folder under the document's name; the copy's path, or empty.
    QString copyDocument(const QString &folder) const;

    QPrintPreviewWidget *view() const { return m_view; }
    QPushButton *wordProcessorButton() const { return m_wordProcessor; }

private:
    void print();
    void saveAsPdf();
    void openInWordProcessor();
    void warn(const QString &text);

    QPrinter m_printer;
    QPageLayout m_page;
    PagedOutput::PaintPages m_paint;
    QString m_name;
    QByteArray m_content;
    QString m_suffix;
    QPrintPreviewWidget *m_view = nullptr;
    QPushButton *m_wordProcessor = nullptr;
};
