#include "host/report/ReportObject.h"

#include "host/report/ReportPainter.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QUrl>
#include <QtDebug>

namespace {

const char *const PreviewFileName = "ReportPreview.pdf";

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
    return noScreen() || !qEnvironmentVariableIsEmpty("TDS_TEST");
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
    if (m_mode == Mode::Document) {
        qWarning().noquote() << "report: a document report has no page layout to export";
        return false;
    }
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        qWarning().noquote() << "report: drawing a PDF needs a QGuiApplication";
        return false;
    }
    const ReportLayout layout = layoutReport(m_model);
    QDir().mkpath(QFileInfo(path).absolutePath());
    int pages = 0;
    {
        QPdfWriter writer(path);
        writer.setPageLayout(ReportPainter::a4Layout());
        writer.setResolution(600);
        writer.setTitle(firstLine(layout.text()));
        writer.setCreator(QCoreApplication::applicationName());
        pages = ReportPainter::paint(layout, &writer);
    }
    if (pages <= 0 || QFileInfo(path).size() == 0) {
        qWarning().noquote() << "report: cannot write" << path;
        return false;
    }
    return true;
}

void ReportObject::ShowReport()
{
    if (m_mode == Mode::Document)
        showDocument();
    else
        showLines();
}

void ReportObject::showLines()
{
    m_lastOutput.clear();
    const QString target = qEnvironmentVariable("TDS_REPORT_OUTPUT");
    if (!target.isEmpty() || noScreen()) {
        const QString path = target.isEmpty() ? QDir(tempFolder()).filePath(QLatin1String(PreviewFileName)) : target;
        if (exportPdf(path)) {
            m_lastOutput = path;
            qInfo().noquote() << "report written to" << path;
        }
        return;
    }

    const ReportLayout layout = layoutReport(m_model);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(firstLine(layout.text()));
    if (m_preview) {
        printer.setPageLayout(ReportPainter::a4Layout());
        QPrintPreviewDialog dialog(&printer, QApplication::activeWindow());
        QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                         [&layout](QPrinter *device) { ReportPainter::paint(layout, device); });
        dialog.exec();
        return;
    }
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    if (standard.isNull()) {
        printer.setPageLayout(ReportPainter::a4Layout());
        QPrintDialog dialog(&printer, QApplication::activeWindow());
        if (dialog.exec() != QDialog::Accepted)
            return;
    } else {
        printer.setPrinterName(standard.printerName());
        printer.setPageLayout(ReportPainter::a4Layout());
    }
    if (ReportPainter::paint(layout, &printer) == 0)
        complain(QStringLiteral("The report could not be sent to the printer."));
}

void ReportObject::showDocument()
{
    m_lastOutput.clear();
    if (m_document.isEmpty()) {
        complain(QStringLiteral("No document to show."));
        return;
    }
    const QString name = QFileInfo(m_documentPath).completeBaseName() + QLatin1String(".rtf");
    const QString path = QDir(tempFolder()).filePath(name);
    QString error;
    if (!m_document.save(path, &error)) {
        complain(error);
        return;
    }
    m_lastOutput = path;
    OpenFileOnly(path);
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
    if (!m_document.save(outputPath, &error)) {
        complain(error);
        return false;
    }
    return true;
}

void ReportObject::OpenFileOnly(const QString &path)
{
    if (headless()) {
        qInfo().noquote() << "report: would open" << path;
        return;
    }
    if (!QFileInfo::exists(path)) {
        complain(QStringLiteral("The file %1 does not exist.").arg(path));
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        complain(QStringLiteral("No program could open %1.").arg(path));
}

std::shared_ptr<HostService> createReportObject()
{
    return std::make_shared<ReportObject>();
}
