// The PDF rendering and what ShowReport does without a screen.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

void addRow(ReportObject &report, const QStringList &texts, const QList<int> &widths, QStringList borders)
{
    QVariantList values(4);
    QList<qint16> w(4, 0);
    QList<qint32> alignments(4, 0);
    QStringList firstTexts(4), prefixes(4);
    for (int i = 0; i < texts.size(); ++i) {
        values[i + 1] = texts[i];
        w[i + 1] = qint16(widths.value(i));
    }
    bool tableRow = true;
    report.WriteToReport(values, w, alignments, firstTexts, prefixes, borders[0], borders[1], borders[2], borders[3],
                         tableRow);
}

// A title and a bordered table of items, each item three lines high.
void buildReport(ReportObject &report, int items)
{
    report.NewReport();
    addRow(report, {ReportCodes::boldOn() + "FORM NO. 15I" + ReportCodes::boldOff() + "\r\nFinancial Year "
                    + ReportCodes::underlineOn() + "2023-24" + ReportCodes::underlineOff()},
           {78}, {"0", "0", "0", "0"});
    report.printtext();
    report.createtable(1, 3);
    addRow(report, {"S. No.", "Registration", "Date"}, {10, 48, 20}, {"111", "001", "111", "111"});
    for (int i = 1; i <= items; ++i) {
        addRow(report, {QStringLiteral("%1.").arg(i), QStringLiteral("ITEM%1A\r\nITEM%1B\r\nITEM%1C").arg(i), "01/04/2020"},
               {10, 48, 20}, {"111", "001", "0", "111"});
    }
}

QString run(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.start(tool, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class ReportPdfTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void init()
    {
        for (const char *tool : {"pdfinfo", "pdftotext", "pdffonts"}) {
            if (QStandardPaths::findExecutable(QLatin1String(tool)).isEmpty())
                QSKIP("poppler-utils (pdfinfo, pdftotext, pdffonts) not installed");
        }
        QVERIFY(m_dir.isValid());
    }

    void pagesBreakBetweenRows_data()
    {
        QTest::addColumn<int>("items");
        QTest::addColumn<int>("pages");
        // The first page holds the title, a blank line, the header and 15 items; the next 17 items each.
        QTest::newRow("first page full") << 15 << 1;
        QTest::newRow("one item more") << 16 << 2;
        QTest::newRow("third page") << 33 << 3;
    }
    void pagesBreakBetweenRows()
    {
        QFETCH(int, items);
        QFETCH(int, pages);
        ReportObject report;
        buildReport(report, items);
        const QString pdf = m_dir.filePath(QStringLiteral("rows%1.pdf").arg(items));
        QVERIFY(report.exportPdf(pdf));
        QVERIFY(run("pdfinfo", {pdf}).simplified().contains(QStringLiteral("Pages: %1 ").arg(pages)));
        int seen = 0;
        for (int p = 1; p <= pages; ++p) {
            const QString page = QString::number(p);
            const QString text = run("pdftotext", {"-f", page, "-l", page, pdf, "-"});
            for (int i = 1; i <= items; ++i) {
                const bool first = text.contains(QStringLiteral("ITEM%1A").arg(i));
                QVERIFY2(first == text.contains(QStringLiteral("ITEM%1C").arg(i)),
                         qPrintable(QStringLiteral("item %1 split on page %2").arg(i).arg(p)));
                seen += first ? 1 : 0;
            }
        }
        QCOMPARE(seen, items);
    }

    void linesFillThePrintableWidth()
    {
        for (int width : {78, 130}) {
            ReportObject report;
            report.setSetCol130(width == 130);
            report.NewReport();
            const QString full(width, QLatin1Char('W'));
            report.printtext(full);
            report.printtext("L" + QString(width - 2, QLatin1Char(' ')) + "R");
            const QString pdf = m_dir.filePath(QStringLiteral("width%1.pdf").arg(width));
            QVERIFY(report.exportPdf(pdf));
            // word boxes in points: A4 is 595.28 wide, the margins 15 mm (42.52 pt)
            const QString boxes = run("pdftotext", {"-bbox", pdf, "-"});
            const auto box = [&](const QString &word) {
                const QRegularExpressionMatch m
                    = QRegularExpression("xMin=\"([\\d.]+)\"[^>]*xMax=\"([\\d.]+)\"[^>]*>" + word + "<").match(boxes);
                return std::pair{m.hasMatch() ? m.captured(1).toDouble() : -1.0, m.captured(2).toDouble()};
            };
            const double left = 42.52, right = 595.28 - 42.52, cell = (right - left) / width;
            const auto [fullLeft, fullRight] = box(full);
            QVERIFY2(fullLeft >= left - 0.5 && fullRight <= right + 0.5 && fullRight >= right - cell, qPrintable(boxes));
            // the last position sits on the right edge however the line is made up
            QVERIFY(qAbs(box("R").second - fullRight) < cell / 2);
        }
    }

    void showReportWithoutScreen_data()
    {
        QTest::addColumn<bool>("preview");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::newRow("preview") << true << QString() << "ReportPreview.pdf";
        QTest::newRow("named") << true << "Form15I_DEMO01_2023-24" << "Form15I_DEMO01_2023-24.pdf";
    }
    void showReportWithoutScreen()
    {
        QFETCH(bool, preview);
        QFETCH(QString, name);
        QFETCH(QString, file);
        QTemporaryDir temp;
        ReportObject report;
        report.setTempFolder(temp.path());
        report.setWinModeReport(preview);
        buildReport(report, 33);
        if (!name.isEmpty())
            report.setDocumentName(name);
        const QString before = report.reportText();
        report.ShowReport();
        const QString pdf = temp.filePath(file);
        QCOMPARE(report.lastOutput(), pdf);
        QCOMPARE(QDir(temp.path()).entryList(QDir::Files), QStringList{file});
        const QString info = run("pdfinfo", {pdf}).simplified();
        const QString title = name.isEmpty() ? QStringLiteral("FORM NO. 15I") : name;
        QVERIFY2(info.contains("Pages: 3 ") && info.contains("(A4)") && info.contains("Title: " + title + " Creator"),
                 qPrintable(info));
        const QString fonts = run("pdffonts", {pdf});
        QVERIFY2(fonts.contains("DejaVuSansMono ") && fonts.contains("DejaVuSansMono-Bold"), qPrintable(fonts));
        QVERIFY(run("pdftotext", {"-layout", pdf, "-"}).contains("Financial Year 2023-24"));
        // the finished report is still there for the text rendering; the name was used up
        QCOMPARE(report.reportText(), before);
        QVERIFY(report.documentName().isEmpty());
    }

    void exportNeedsAnExistingFolder()
    {
        ReportObject report;
        buildReport(report, 1);
        const QString missing = m_dir.filePath(QStringLiteral("no/such/folder"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("folder does not exist")));
        QVERIFY(!report.exportPdf(missing + QStringLiteral("/out.pdf")));
        QVERIFY(!QFileInfo::exists(m_dir.filePath(QStringLiteral("no"))));
    }
};

TDS_TEST(ReportPdfTest)
#include "ReportPdfTest.moc"
