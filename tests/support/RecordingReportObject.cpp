#include "RecordingReportObject.h"

#include "host/ServiceRegistry.h"

#include <stdexcept>

namespace {
std::shared_ptr<RecordingReportObject> &instance()
{
    static std::shared_ptr<RecordingReportObject> r;
    return r;
}
QString flag(bool b)
{
    return b ? QStringLiteral("true") : QStringLiteral("false");
}
} // namespace

std::shared_ptr<RecordingReportObject> RecordingReportObject::install()
{
    instance() = std::make_shared<RecordingReportObject>();
    std::shared_ptr<RecordingReportObject> r = instance();
    ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::ReportObject), [r] { return r; });
    return r;
}

void RecordingReportObject::uninstall()
{
    ServiceRegistry::unregisterFactory(QString::fromLatin1(ProgId::ReportObject));
    instance().reset();
}

void RecordingReportObject::clear()
{
    m_calls.clear();
    m_rows.clear();
    m_failRow = -1;
}

void RecordingReportObject::setWinModeReport(bool preview)
{
    m_winMode = preview;
    m_calls << QStringLiteral("WinModeReport:") + flag(preview);
}

void RecordingReportObject::setSetCol130(bool wide)
{
    m_calls << QStringLiteral("SetCol130:") + flag(wide);
}

void RecordingReportObject::NewReport()
{
    m_calls << QStringLiteral("NewReport");
}

void RecordingReportObject::printtext()
{
    m_calls << QStringLiteral("printtext");
}

void RecordingReportObject::printtext(const QString &text)
{
    m_calls << QStringLiteral("printtext:") + text;
}

void RecordingReportObject::createtable(int first, int columns)
{
    m_calls << QStringLiteral("createtable:%1,%2").arg(first).arg(columns);
}

void RecordingReportObject::WriteToReport(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                                          QStringList &firstTexts, QStringList &prefixes, QString &border1,
                                          QString &border2, QString &border3, QString &border4, bool &tableRow)
{
    if (m_rows.size() == m_failRow) {
        m_failRow = -1;
        m_calls << QStringLiteral("WriteToReport:failed");
        throw std::runtime_error("recorded failure");
    }
    m_calls << QStringLiteral("WriteToReport");
    m_rows << Row{values, widths, alignments, firstTexts, prefixes, border1, border2, border3, border4, tableRow};
}

void RecordingReportObject::ShowReport()
{
    m_calls << QStringLiteral("ShowReport");
}

QString RecordingReportObject::reportText() const
{
    return m_calls.join(QLatin1Char('\n'));
}

bool RecordingReportObject::exportPdf(const QString &path)
{
    m_calls << QStringLiteral("exportPdf:") + path;
    return false;
}

void RecordingReportObject::newreportnew(const QString &templatePath)
{
    m_calls << QStringLiteral("newreportnew:") + templatePath;
}

void RecordingReportObject::SetText(const QString &placeholder, const QString &value)
{
    m_calls << QStringLiteral("SetText:%1=%2").arg(placeholder, value);
}

bool RecordingReportObject::OpenMasterFileOnly(const QString &templatePath)
{
    m_calls << QStringLiteral("OpenMasterFileOnly:") + templatePath;
    return true;
}

bool RecordingReportObject::FindTable(int tableNumber)
{
    m_calls << QStringLiteral("FindTable:%1").arg(tableNumber);
    return true;
}

void RecordingReportObject::setTextMatrix(int row, int column, const QString &value)
{
    m_lastCell = value;
    m_calls << QStringLiteral("TextMatrix:%1,%2=%3").arg(row).arg(column).arg(value);
}

QString RecordingReportObject::TextMatrix(int, int) const
{
    return m_lastCell;
}

void RecordingReportObject::InsertRows(int rowPosition, int count)
{
    m_calls << QStringLiteral("InsertRows:%1,%2").arg(rowPosition).arg(count);
}

void RecordingReportObject::deleteRow(int rowPosition)
{
    m_calls << QStringLiteral("deleteRow:%1").arg(rowPosition);
}

void RecordingReportObject::NewSetText(const QString &placeholder, const QString &value)
{
    m_calls << QStringLiteral("NewSetText:%1=%2").arg(placeholder, value);
}

bool RecordingReportObject::SaveMasterFile(const QString &outputPath)
{
    m_calls << QStringLiteral("SaveMasterFile:") + outputPath;
    return true;
}

void RecordingReportObject::OpenFileOnly(const QString &path)
{
    m_calls << QStringLiteral("OpenFileOnly:") + path;
}

void RecordingReportObject::setDocumentName(const QString &baseName)
{
    m_calls << QStringLiteral("setDocumentName:") + baseName;
}
