// The PDF rendering and what ShowReport does without a screen.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

void addRow(ReportObject &report, const QStringList &texts, const QList<int> &widths,
            const QString &left, const QString &right, const QString &top, const QString &bottom)
{
    QVariantList values(4);
    QList<qint16> w(4, 0);
    QList<qint32> alignments(4, 0);
    QStringList firstTexts(4);
    QStringList prefixes(4);
    for (int i = 0; i < texts.size(); ++i) {
        values[i + 1] = texts.at(i);
        w[i + 1] = qint16(widths.value(i));
    }
    QString l = left, r = right, t = top, b = bottom;
    bool tableRow = true;
    report.WriteToReport(values, w, alignments, firstTexts, prefixes, l, r, t, b, tableRow);
}

// A title and a bordered table of items, each item three lines high.
void buildReport(ReportObject &report, int items)
{
    report.NewReport();
    addRow(report, {ReportCodes::boldOn() + "FORM NO. 15I" + ReportCodes::boldOff() + "\r\nFinancial Year "
                    + ReportCodes::underlineOn() + "2023-24" + ReportCodes::underlineOff()},
           {78}, "0", "0", "0", "0");
    report.printtext();
    report.createtable(1, 3);
    addRow(report, {"S. No.", "Registration", "Date"}, {10, 48, 20}, "111", "001", "111", "111");
    for (int i = 1; i <= items; ++i) {
        addRow(report, {QStringLiteral("%1.").arg(i), QStringLiteral("ITEM%1A\r\nITEM%1B\r\nITEM%1C").arg(i), "01/04/2020"},
               {10, 48, 20}, "111", "001", "0", "111");
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

int pageCount(const QString &pdf)
{
    const QRegularExpressionMatch m = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)"))
                                          .match(run(QStringLiteral("pdfinfo"), {pdf}));
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

bool havePoppler()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty()
           && !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()
           && !QStandardPaths::findExecutable(QStringLiteral("pdffonts")).isEmpty();
}

} // namespace

class ReportPdfTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void a4WithMonospacedFonts();
    void pagesFollowRows_data();
    void pagesFollowRows();
    void rowsStayWhole();
    void linesFillThePrintableWidth_data();
    void linesFillThePrintableWidth();
    void showReportWithoutScreen();
    void showReportToNamedFile();

private:
    QTemporaryDir m_dir;
};

void ReportPdfTest::init()
{
    if (!havePoppler())
        QSKIP("poppler-utils (pdfinfo, pdftotext, pdffonts) not installed");
    QVERIFY(m_dir.isValid());
}

void ReportPdfTest::a4WithMonospacedFonts()
{
    ReportObject report;
    buildReport(report, 2);
    const QString pdf = m_dir.filePath(QStringLiteral("short.pdf"));
    QVERIFY(report.exportPdf(pdf));
    const QString info = run(QStringLiteral("pdfinfo"), {pdf});
    QVERIFY2(info.contains(QStringLiteral("(A4)")), qPrintable(info));
    QCOMPARE(pageCount(pdf), 1);
    QVERIFY(info.contains(QStringLiteral("Title:           FORM NO. 15I")));
    const QString fonts = run(QStringLiteral("pdffonts"), {pdf});
    QVERIFY2(fonts.contains(QStringLiteral("DejaVuSansMono ")), qPrintable(fonts));
    QVERIFY2(fonts.contains(QStringLiteral("DejaVuSansMono-Bold")), qPrintable(fonts));
    const QString text = run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    QVERIFY(text.contains(QStringLiteral("FORM NO. 15I")));
    QVERIFY(text.contains(QStringLiteral("Financial Year 2023-24")));
    QVERIFY(text.contains(QStringLiteral("ITEM2C")));
}

void ReportPdfTest::pagesFollowRows_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("pages");
    // A page is a little over 60 lines; an item is three lines and half a line of rule.
    // The first page also holds the title, a blank line and the header (5 lines): 15
    // items; the next pages the repeated closing rule and 17 items.
    QTest::newRow("first page full") << 15 << 1;
    QTest::newRow("one item more") << 16 << 2;
    QTest::newRow("second page full") << 32 << 2;
    QTest::newRow("third page") << 33 << 3;
    QTest::newRow("many") << 100 << 6;
}

void ReportPdfTest::pagesFollowRows()
{
    QFETCH(int, items);
    QFETCH(int, pages);
    ReportObject report;
    buildReport(report, items);
    const QString pdf = m_dir.filePath(QStringLiteral("rows%1.pdf").arg(items));
    QVERIFY(report.exportPdf(pdf));
    QCOMPARE(pageCount(pdf), pages);
}

void ReportPdfTest::rowsStayWhole()
{
    ReportObject report;
    const int items = 60;
    buildReport(report, items);
    const QString pdf = m_dir.filePath(QStringLiteral("whole.pdf"));
    QVERIFY(report.exportPdf(pdf));
    const int pages = pageCount(pdf);
    QVERIFY(pages > 1);
    int seen = 0;
    for (int p = 1; p <= pages; ++p) {
        const QString text = run(QStringLiteral("pdftotext"), {QStringLiteral("-f"), QString::number(p), QStringLiteral("-l"),
                                                             QString::number(p), pdf, QStringLiteral("-")});
        for (int i = 1; i <= items; ++i) {
            const bool first = text.contains(QStringLiteral("ITEM%1A").arg(i));
            const bool last = text.contains(QStringLiteral("ITEM%1C").arg(i));
            QVERIFY2(first == last, qPrintable(QStringLiteral("item %1 split on page %2").arg(i).arg(p)));
            seen += first ? 1 : 0;
        }
    }
    QCOMPARE(seen, items);
}

void ReportPdfTest::linesFillThePrintableWidth_data()
{
    QTest::addColumn<bool>("wide");
    QTest::newRow("78") << false;
    QTest::newRow("130") << true;
}

void ReportPdfTest::linesFillThePrintableWidth()
{
    QFETCH(bool, wide);
    const int width = wide ? 130 : 78;
    ReportObject report;
    report.setSetCol130(wide);
    report.NewReport();
    report.printtext(QString(width, QLatin1Char('W')));
    report.printtext(QStringLiteral("L") + QString(width - 2, QLatin1Char(' ')) + QStringLiteral("R"));
    const QString pdf = m_dir.filePath(QStringLiteral("width%1.pdf").arg(width));
    QVERIFY(report.exportPdf(pdf));
    // word boxes in points: A4 is 595.28 wide, the margins 15 mm (42.52 pt)
    const QString boxes = run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    const QRegularExpression word(QStringLiteral("xMin=\"([\\d.]+)\" yMin=\"[\\d.]+\" xMax=\"([\\d.]+)\"[^>]*>([^<]+)<"));
    QMap<QString, QPair<double, double>> found;
    for (auto it = word.globalMatch(boxes); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        found.insert(m.captured(3), {m.captured(1).toDouble(), m.captured(2).toDouble()});
    }
    const double left = 42.52;
    const double right = 595.28 - 42.52;
    const double cell = (right - left) / width;
    const QString full(width, QLatin1Char('W'));
    QVERIFY2(found.contains(full), qPrintable(boxes));
    QVERIFY(found.value(full).first >= left - 0.5);
    QVERIFY(found.value(full).second <= right + 0.5);
    QVERIFY(found.value(full).second >= right - cell);
    // the last position sits on the right edge however the line is made up
    QVERIFY(found.contains(QStringLiteral("R")));
    QVERIFY(qAbs(found.value(QStringLiteral("R")).second - found.value(full).second) < cell / 2);
}

void ReportPdfTest::showReportWithoutScreen()
{
    qunsetenv("TDS_REPORT_OUTPUT");
    ReportObject report;
    report.setTempFolder(m_dir.path());
    report.setWinModeReport(true);
    buildReport(report, 3);
    const QString before = report.reportText();
    report.ShowReport();
    const QString pdf = m_dir.filePath(QStringLiteral("ReportPreview.pdf"));
    QCOMPARE(report.lastOutput(), pdf);
    QCOMPARE(pageCount(pdf), 1);
    // the finished report is still there for the text rendering
    QCOMPARE(report.reportText(), before);
    QVERIFY(before.contains(QStringLiteral("ITEM3C")));
    report.NewReport();
    QCOMPARE(report.reportText(), QString());
}

void ReportPdfTest::showReportToNamedFile()
{
    const QString pdf = m_dir.filePath(QStringLiteral("named/out.pdf"));
    qputenv("TDS_REPORT_OUTPUT", pdf.toLocal8Bit());
    QTemporaryDir temp;
    ReportObject report;
    report.setTempFolder(temp.path());
    report.setWinModeReport(false);
    buildReport(report, 33);
    report.ShowReport();
    qunsetenv("TDS_REPORT_OUTPUT");
    QCOMPARE(report.lastOutput(), pdf);
    QCOMPARE(pageCount(pdf), 3);
    QVERIFY(QDir(temp.path()).isEmpty());
}

TDS_TEST(ReportPdfTest)
#include "ReportPdfTest.moc"
