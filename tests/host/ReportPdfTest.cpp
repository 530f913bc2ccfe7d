// The PDF rendering and what ShowReport does without a screen.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A title and a bordered table of items, each item three lines high.
void buildReport(ReportObject &report, int items)
{
    const auto addRow = [&report](const QStringList &texts, const QString &border) {
        QVariantList values(4);
        for (int i = 0; i < texts.size(); ++i)
            values[i + 1] = texts[i];
        QList<qint16> widths = texts.size() == 3 ? QList<qint16>{0, 10, 48, 20} : QList<qint16>{0, 78, 0, 0};
        QList<qint32> alignments(4, 0);
        QStringList firstTexts(4), prefixes(4);
        QString b1 = border, b2 = border, b3 = border, b4 = border;
        bool tableRow = true;
        report.WriteToReport(values, widths, alignments, firstTexts, prefixes, b1, b2, b3, b4, tableRow);
    };
    report.NewReport();
    addRow({ReportCodes::boldOn() + "FORM NO. 15I" + ReportCodes::boldOff() + "\r\nFinancial Year 2023-24"}, "0");
    report.printtext();
    report.createtable(1, 3);
    addRow({"S. No.", "Registration", "Date"}, "111");
    for (int i = 1; i <= items; ++i)
        addRow({QStringLiteral("%1.").arg(i), QStringLiteral("ITEM%1A\r\nITEM%1B\r\nITEM%1C").arg(i), "01/04/2020"}, "111");
}

QString run(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.start(tool, arguments);
    const bool ok = process.waitForFinished(30000) && process.exitCode() == 0;
    return ok ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

} // namespace

class ReportPdfTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void init()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
            QSKIP("poppler-utils (pdfinfo, pdftotext) not installed");
    }

    void pagesBreakBetweenRows()
    {
        // the first page holds the title, a blank line, the header and 15 items: the 16th moves whole
        ReportObject report;
        buildReport(report, 16);
        const QString pdf = m_dir.filePath(QStringLiteral("rows.pdf"));
        QVERIFY(report.exportPdf(pdf));
        QVERIFY(run("pdfinfo", {pdf}).simplified().contains(QStringLiteral("Pages: 2 ")));
        const QString second = run("pdftotext", {"-f", "2", "-l", "2", pdf, "-"});
        QVERIFY2(second.contains("ITEM16A") && second.contains("ITEM16C") && !second.contains("ITEM15"), qPrintable(second));
    }

    void showReportWithoutScreen()
    {
        QTemporaryDir temp;
        ReportObject report;
        report.setTempFolder(temp.path());
        report.setWinModeReport(true);
        buildReport(report, 33);
        report.setDocumentName(QStringLiteral("Form15I_DEMO01_2023-24"));
        report.ShowReport();
        const QString pdf = temp.filePath(QStringLiteral("Form15I_DEMO01_2023-24.pdf"));
        QCOMPARE(report.lastOutput(), pdf);
        const QString info = run("pdfinfo", {pdf}).simplified();
        QVERIFY2(info.contains("Pages: 3 ") && info.contains("(A4)") && info.contains("Title: Form15I_DEMO01_2023-24 Creator"),
                 qPrintable(info));
        QVERIFY(run("pdftotext", {"-layout", pdf, "-"}).contains("Financial Year 2023-24"));
        QVERIFY(report.documentName().isEmpty());   // the name was used up
    }
};

TDS_TEST(ReportPdfTest)
#include "ReportPdfTest.moc"
