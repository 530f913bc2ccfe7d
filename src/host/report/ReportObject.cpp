#include "host/report/ReportObject.h"

#include "host/DataHome.h"
#include "host/report/ReportPainter.h"
#include "host/report/ReportPreview.h"
#include "host/report/RtfRenderer.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <QtDebug>

namespace {

const char *const PreviewName = "ReportPreview";

bool noScreen()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return true;
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

QString firstLine(const QString &text)
{
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        const QString t = line.trimmed();
        if (!t.isEmpty() && t.count(QLatin1Char('-')) + t.count(QLatin1Char('+')) < t.size())
            return t;
    }
    return QStringLiteral("Report");
}

void complain(const QString &text)
{
    qWarning().noquote() << "report:" << text;
    if (!ReportObject::headless())
        QMessageBox::warning(QApplication::activeWindow(), QCoreApplication::applicationName(), text);
}

} // namespace

bool ReportObject::headless()
{
    return noScreen();
}

QString ReportObject::tempFolder() const
{
    if (!m_tempFolder.isEmpty())
        return m_tempFolder;
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation);
}

void ReportObject::setSetCol130(bool wide)
{
    m_wide = wide;
    m_model.setWidth(wide ? ReportModel::WideWidth : ReportModel::NarrowWidth);
}

void ReportObject::NewReport()
{
    m_mode = Mode::Lines;
    m_model.clear();
    m_model.setWidth(m_wide ? ReportModel::WideWidth : ReportModel::NarrowWidth);
    m_lastOutput.clear();
}

void ReportObject::printtext()
{
    m_model.addEmptyLine();
}

void ReportObject::printtext(const QString &text)
{
    m_model.addParagraph(text);
}

void ReportObject::createtable(int first, int columns)
{
    Q_UNUSED(first);
    m_model.beginTable(columns);
}

void ReportObject::WriteToReport(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                                 QStringList &firstTexts, QStringList &prefixes, QString &border1,
                                 QString &border2, QString &border3, QString &border4, bool &tableRow)
{
    Q_UNUSED(firstTexts);
    // The arrays are sized once per form and reused, so trailing columns of width 0 are
    // not part of the row; border texts count against the columns that are.
    int columns = 0;
    for (int i = 1; i < widths.size(); ++i) {
        if (widths.at(i) > 0)
            columns = i;
    }
    const auto side = [columns](const QString &border, int column) {
        return border.size() >= columns && border.at(column - 1) == QLatin1Char('1');
    };
    QList<ReportColumn> row;
    for (int i = 1; i <= columns; ++i) {
        ReportColumn c;
        c.text = values.value(i).toString();
        c.width = widths.at(i);
        const qint32 align = alignments.value(i);
        c.alignment = (align == 1) ? ReportAlignment::Centre
                      : (align == 2) ? ReportAlignment::Right
                                     : ReportAlignment::Left;
        c.prefix = prefixes.value(i);
        c.left = side(border1, i);
        c.right = side(border2, i);
        c.top = side(border3, i);
        c.bottom = side(border4, i);
        row.append(c);
    }
    m_model.addRow(row, tableRow);
}

QString ReportObject::reportText() const
{
    if (m_mode == Mode::Document)
        return m_document.plainText();
    return layoutReport(m_model).text();
}

bool ReportObject::exportPdf(const QString &path)
{
    if (m_mode == Mode::Document)
        return exportDocumentPdf(path);
    const ReportLayout layout = layoutReport(m_model);
    const QString title = m_documentName.isEmpty() ? firstLine(layout.text()) : m_documentName;
    return PagedOutput::writePdf(path, ReportPainter::a4Layout(), title,
                                 [&layout](QPagedPaintDevice *device) { return ReportPainter::paint(layout, device); });
}

bool ReportObject::exportDocumentPdf(const QString &path)
{
    if (m_document.isEmpty()) {
        qWarning().noquote() << "report: no document to export";
        return false;
    }
    const RtfRenderer::Rendered rendered = RtfRenderer::render(m_document.content());
    const QString title = nameOr(QFileInfo(m_documentPath).completeBaseName());
    return PagedOutput::writePdf(path, rendered.page, title, [&rendered](QPagedPaintDevice *device) {
        return RtfRenderer::paint(rendered.document.get(), device);
    });
}

QString ReportObject::nameOr(const QString &fallback) const
{
    return m_documentName.isEmpty() ? fallback : m_documentName;
}

void ReportObject::ShowReport()
{
    if (m_mode == Mode::Document)
        showDocument();
    else
        showLines();
    m_documentName.clear();
}

void ReportObject::show(const QPageLayout &page, const PagedOutput::PaintPages &paint, const QString &name,
                        const QString &title, bool preview, const QByteArray &document, const QString &suffix)
{
    m_lastOutput.clear();
    if (noScreen()) {
        // Tests and the command line: the pages go to a file instead of a window.
        const QString folder = tempFolder();
        QDir().mkpath(folder);
        const QString path = QDir(folder).filePath(name + QLatin1String(".pdf"));
        if (PagedOutput::writePdf(path, page, title, paint)) {
            m_lastOutput = path;
            qInfo().noquote() << "report written to" << path;
        }
        return;
    }

    if (preview) {
        ReportPreview window(page, paint, name, QApplication::activeWindow());
        window.setWindowTitle(title);
        if (!document.isEmpty())
            window.setDocument(document, suffix);
        window.exec();
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(name);
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    if (standard.isNull()) {
        printer.setPageLayout(page);
        QPrintDialog dialog(&printer, QApplication::activeWindow());
        if (dialog.exec() != QDialog::Accepted)
            return;
    } else {
        printer.setPrinterName(standard.printerName());
        printer.setPageLayout(page);
    }
    if (paint(&printer) == 0)
        complain(QStringLiteral("The report could not be sent to the printer."));
}

void ReportObject::showLines()
{
    const ReportLayout layout = layoutReport(m_model);
    const bool named = !m_documentName.isEmpty();
    show(ReportPainter::a4Layout(), [&layout](QPagedPaintDevice *device) { return ReportPainter::paint(layout, device); },
         named ? m_documentName : QString::fromLatin1(PreviewName), named ? m_documentName : firstLine(layout.text()),
         m_preview);
}

void ReportObject::showDocument()
{
    m_lastOutput.clear();
    if (m_document.isEmpty()) {
        complain(QStringLiteral("No document to show."));
        return;
    }
    const QFileInfo source(m_documentPath);
    showRtf(m_document.content(), nameOr(source.completeBaseName()), source.suffix(), m_preview);
}

void ReportObject::showRtf(const QByteArray &rtf, const QString &name, const QString &suffix, bool preview)
{
    const RtfRenderer::Rendered rendered = RtfRenderer::render(rtf);
    show(rendered.page, [&rendered](QPagedPaintDevice *device) { return RtfRenderer::paint(rendered.document.get(), device); },
         name, name, preview, rtf, suffix.isEmpty() ? QStringLiteral("rtf") : suffix);
}

bool ReportObject::openDocument(const QString &path)
{
    m_mode = Mode::Document;
    m_table = 0;
    m_documentPath = path;
    QString error;
    if (!m_document.load(path, &error)) {
        m_document = RtfDocument();
        complain(error);
        return false;
    }
    return true;
}

void ReportObject::newreportnew(const QString &templatePath)
{
    openDocument(templatePath);
}

void ReportObject::SetText(const QString &placeholder, const QString &value)
{
    m_document.replaceText(placeholder, value);
}

bool ReportObject::OpenMasterFileOnly(const QString &templatePath)
{
    return openDocument(templatePath);
}

bool ReportObject::FindTable(int tableNumber)
{
    const int tables = m_document.tableCount();
    if (tableNumber < 1 || tableNumber > tables) {
        qWarning().noquote() << "report: table" << tableNumber << "not found; the document has" << tables;
        m_table = 0;
        return false;
    }
    m_table = tableNumber;
    return true;
}

void ReportObject::setTextMatrix(int row, int column, const QString &value)
{
    if (!m_document.setCellText(m_table, row, column, value))
        qWarning().noquote() << "report: no cell" << row << column << "in table" << m_table;
}

QString ReportObject::TextMatrix(int row, int column) const
{
    return m_document.cellText(m_table, row, column);
}

void ReportObject::InsertRows(int rowPosition, int count)
{
    if (!m_document.insertRows(m_table, rowPosition, count))
        qWarning().noquote() << "report: cannot insert" << count << "rows at" << rowPosition << "in table" << m_table;
}

void ReportObject::deleteRow(int rowPosition)
{
    if (!m_document.deleteRow(m_table, rowPosition))
        qWarning().noquote() << "report: no row" << rowPosition << "in table" << m_table;
}

void ReportObject::NewSetText(const QString &placeholder, const QString &value)
{
    m_document.replaceText(placeholder, value);
}

bool ReportObject::SaveMasterFile(const QString &outputPath)
{
    QString error;
    // A line report has no template: it is saved as rich text of its own lines.
    RtfDocument lines;
    if (m_mode == Mode::Lines)
        lines.setContent(layoutReport(m_model).rtf());
    if (!(m_mode == Mode::Lines ? lines : m_document).save(outputPath, &error)) {
        complain(error);
        return false;
    }
    return true;
}

void ReportObject::OpenFileOnly(const QString &path)
{
    // All of it now: the caller deletes the file as soon as this returns.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("The file %1 does not exist.").arg(path));
        m_documentName.clear();
        return;
    }
    QByteArray content = file.readAll();
    file.close();
    const QFileInfo info(path);
    const QString name = nameOr(info.completeBaseName());
    m_documentName.clear();
    if (content.startsWith("\xEF\xBB\xBF"))
        content.remove(0, 3);
    if (content.startsWith("{\\rtf")) {
        showRtf(content, name, info.suffix(), m_preview);
        return;
    }

    // Anything else goes to the desktop's program, from a copy of our own.
    m_lastOutput.clear();
    if (noScreen()) {
        qInfo().noquote() << "report: no screen to open" << path;
        return;
    }
    const QString copy = QDir(DataHome::docPath()).filePath(name + QLatin1Char('.') + info.suffix());
    QSaveFile out(copy);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size() || !out.commit()) {
        complain(QStringLiteral("The document could not be copied to %1.").arg(copy));
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(copy)))
        complain(QStringLiteral("No program could open %1.").arg(copy));
}

std::shared_ptr<HostService> createReportObject()
{
    return std::make_shared<ReportObject>();
}
