#include "host/report/ReportPreview.h"

#include "host/DataHome.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>
#include <QtDebug>

ReportPreview::ReportPreview(const QPageLayout &page, PagedOutput::PaintPages paint, const QString &documentName,
                             QWidget *parent)
    : QDialog(parent), m_printer(QPrinter::HighResolution), m_page(page), m_paint(std::move(paint)),
      m_name(documentName.isEmpty() ? QStringLiteral("Report") : documentName)
{
    setObjectName(QStringLiteral("ReportPreview"));
    setWindowTitle(m_name);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_printer.setPageLayout(m_page);
    m_printer.setDocName(m_name);

    m_view = new QPrintPreviewWidget(&m_printer, this);
    m_view->setObjectName(QStringLiteral("preview"));
    m_view->setZoomMode(QPrintPreviewWidget::FitToWidth);
    connect(m_view, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter *printer) { m_paint(printer); });

    const auto button = [this](const QString &text, const QString &name) {
        auto *b = new QPushButton(text, this);
        b->setObjectName(name);
        b->setAutoDefault(false);
        return b;
    };
    QPushButton *printButton = button(QStringLiteral("&Print"), QStringLiteral("cmdPrint"));
    // "P" belongs to Print, so the PDF button takes "D"
    QPushButton *pdfButton = button(QStringLiteral("Save as P&DF"), QStringLiteral("cmdPdf"));
    m_wordProcessor = button(QStringLiteral("Open in &word processor"), QStringLiteral("cmdWordProcessor"));
    m_wordProcessor->hide();
    QPushButton *zoomIn = button(QStringLiteral("Zoom &in"), QStringLiteral("cmdZoomIn"));
    QPushButton *zoomOut = button(QStringLiteral("Zoom &out"), QStringLiteral("cmdZoomOut"));
    QPushButton *fitWidth = button(QStringLiteral("&Fit width"), QStringLiteral("cmdFitWidth"));
    QPushButton *closeButton = button(QStringLiteral("&Close"), QStringLiteral("cmdClose"));

    connect(printButton, &QPushButton::clicked, this, &ReportPreview::print);
    connect(pdfButton, &QPushButton::clicked, this, &ReportPreview::saveAsPdf);
    connect(m_wordProcessor, &QPushButton::clicked, this, &ReportPreview::openInWordProcessor);
    connect(zoomIn, &QPushButton::clicked, m_view, [this] { m_view->zoomIn(); });
    connect(zoomOut, &QPushButton::clicked, m_view, [this] { m_view->zoomOut(); });
    connect(fitWidth, &QPushButton::clicked, m_view, &QPrintPreviewWidget::fitToWidth);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {printButton, pdfButton, m_wordProcessor})
        buttons->addWidget(b);
    buttons->addStretch();
    for (QPushButton *b : {zoomIn, zoomOut, fitWidth, closeButton})
        buttons->addWidget(b);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 1);
    layout->addLayout(buttons);

    // Most of the screen, so a page is readable at once; the zoom follows the width.
    if (const QScreen *screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        const QSize size(area.width() * 9 / 10, area.height() * 9 / 10);
        resize(size);
        move(area.center() - QPoint(size.width() / 2, size.height() / 2));
    }
    m_view->setFocus();
}

void ReportPreview::setDocument(const QByteArray &content, const QString &suffix)
{
    m_content = content;
    m_suffix = suffix.startsWith(QLatin1Char('.')) ? suffix : QLatin1Char('.') + suffix;
    m_wordProcessor->setVisible(!m_content.isEmpty());
}

QString ReportPreview::pdfFileName() const
{
    return m_name + QStringLiteral(".pdf");
}

bool ReportPreview::savePdf(const QString &path)
{
    return PagedOutput::writePdf(path, m_page, m_name, m_paint);
}

QString ReportPreview::copyDocument(const QString &folder) const
{
    if (m_content.isEmpty())
        return QString();
    const QString path = QDir(folder).filePath(m_name + m_suffix);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_content) != m_content.size() || !file.commit())
        return QString();
    return path;
}

void ReportPreview::print()
{
    QPrintDialog dialog(&m_printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (m_paint(&m_printer) == 0)
        warn(QStringLiteral("The report could not be sent to the printer."));
}

void ReportPreview::saveAsPdf()
{
    const QString offered = QDir(DataHome::docPath()).filePath(pdfFileName());
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save as PDF"), offered,
                                                QStringLiteral("PDF files (*.pdf)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        path += QStringLiteral(".pdf");
    if (!savePdf(path))
        warn(QStringLiteral("The PDF could not be written to %1.").arg(path));
}

void ReportPreview::openInWordProcessor()
{
    // a copy of its own in the documents folder: the temporary file is gone by now
    const QString copy = copyDocument(DataHome::docPath());
    if (copy.isEmpty()) {
        warn(QStringLiteral("The document could not be copied to %1.").arg(DataHome::docPath()));
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(copy)))
        warn(QStringLiteral("No program could open %1.").arg(copy));
}

void ReportPreview::warn(const QString &text)
{
    qWarning().noquote() << "report:" << text;
    QMessageBox::warning(this, windowTitle(), text);
}
