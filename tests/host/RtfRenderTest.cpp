// Rich text read into a document for the report object's own viewer, printer and PDF.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"
#include "host/report/ReportPreview.h"
#include "host/report/RtfRenderer.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextTable>

namespace {

QByteArray rtf(const QByteArray &body)
{
    return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}{\\f1\\fmodern Courier New;}}"
           "{\\colortbl;\\red0\\green0\\blue0;\\red255\\green0\\blue0;}\n"
           + body + "}";
}

// What a reader sees; the invisible character that holds a blank line after a table aside.
QString shown(const QTextDocument &doc)
{
    return doc.toPlainText().remove(QChar(0x200B));
}

QTextCharFormat formatOf(const QTextDocument &doc, const QString &text)
{
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            if (it.fragment().text().contains(text))
                return it.fragment().charFormat();
        }
    }
    return QTextCharFormat();
}

QTextBlock blockOf(const QTextDocument &doc, const QString &text)
{
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        if (b.text().contains(text))
            return b;
    }
    return QTextBlock();
}

QList<QTextTable *> tablesOf(const QTextDocument &doc)
{
    QList<QTextTable *> out;
    for (QTextFrame *frame : doc.rootFrame()->childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(frame))
            out.append(table);
    }
    return out;
}

// "text(row span x column span)" for every cell that starts at its grid position
QStringList cellsOf(QTextTable *table)
{
    QStringList out;
    for (int r = 0; r < table->rows(); ++r) {
        for (int c = 0; c < table->columns(); ++c) {
            const QTextTableCell cell = table->cellAt(r, c);
            if (cell.row() != r || cell.column() != c)
                continue;
            QTextCursor cursor = cell.firstCursorPosition();
            cursor.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
            out.append(QStringLiteral("%1(%2x%3)").arg(cursor.selectedText()).arg(cell.rowSpan()).arg(cell.columnSpan()));
        }
    }
    return out;
}

QString pdfText(const QString &pdf, bool layout = false)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), layout ? QStringList{"-layout", pdf, "-"} : QStringList{pdf, "-"});
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString fixture(const QString &name)
{
    return QStringLiteral(TDS_TEST_DATA_DIR "/report/") + name;
}

} // namespace

class RtfRenderTest : public QObject
{
    Q_OBJECT

private slots:
    void text_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::newRow("paragraphs") << QByteArray("\\pard one\\par\\pard two\\par") << "one\ntwo";
        QTest::newRow("line break and tab") << QByteArray("a\\line b\\tab c\\par")
                                            << QString("a") + QChar::LineSeparator + "b\tc";
        QTest::newRow("unicode with fallback") << QByteArray("\\uc1\\u8377?500 \\u-3?\\par")
                                               << QString::fromUtf8("\xE2\x82\xB9" "500 \xEF\xBF\xBD");
        QTest::newRow("code page") << QByteArray("\\'a3 \\'80\\par") << QString::fromUtf8("\xC2\xA3 \xE2\x82\xAC");
        QTest::newRow("escaped braces") << QByteArray("\\{x\\}\\\\\\par") << "{x}\\";
        QTest::newRow("tables of the document never shown")
            << QByteArray("{\\stylesheet{\\s0 Normal;}}{\\info{\\title T}{\\author A}}{\\*\\generator G;}"
                          "{\\*\\bkmkstart M}body\\par")
            << "body";
        QTest::newRow("headers, footers and hidden text skipped")
            << QByteArray("{\\header head\\par}{\\footer foot\\par}seen{\\v  unseen}\\par") << "seen";
        QTest::newRow("quotes and dashes") << QByteArray("\\lquote a\\rquote  \\ldblquote b\\rdblquote  c\\emdash d\\par")
                                           << QString::fromUtf8("\xE2\x80\x98" "a\xE2\x80\x99 \xE2\x80\x9C" "b\xE2\x80\x9D c\xE2\x80\x94" "d");
        QTest::newRow("text without a last paragraph mark") << QByteArray("one\\par tail") << "one\ntail";
    }
    void text()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        QCOMPARE(r.document->toRawText().remove(QChar(0x200B)).replace(QChar::ParagraphSeparator, QLatin1Char('\n')),
                 text);
    }

    void characters_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<bool>("italic");
        QTest::addColumn<bool>("underline");
        QTest::addColumn<double>("points");
        QTest::addColumn<QString>("family");
        const QByteArray mixed = "\\b bold\\b0  \\i italic\\i0  \\ul under\\ulnone  {\\ul0 off} \\uldb double\\ul0  plain\\par";
        QTest::newRow("bold") << mixed << "bold" << true << false << false << 12.0 << "Times New Roman";
        QTest::newRow("bold off") << mixed << "italic" << false << true << false << 12.0 << "Times New Roman";
        QTest::newRow("underline") << mixed << "under" << false << false << true << 12.0 << "Times New Roman";
        QTest::newRow("any underline kind") << mixed << "double" << false << false << true << 12.0 << "Times New Roman";
        QTest::newRow("all off") << mixed << "plain" << false << false << false << 12.0 << "Times New Roman";
        QTest::newRow("ends with its group") << QByteArray("{\\b\\i\\fs40 in}out\\par") << "out" << false << false
                                             << false << 12.0 << "Times New Roman";
        QTest::newRow("in its group") << QByteArray("{\\b\\i\\fs40 in}out\\par") << "in" << true << true << false
                                      << 20.0 << "Times New Roman";
        QTest::newRow("half points") << QByteArray("\\fs17 small\\par") << "small" << false << false << false << 8.5
                                     << "Times New Roman";
        QTest::newRow("plain resets") << QByteArray("\\b\\ul\\fs36\\f1 x\\plain reset\\par") << "reset" << false << false
                                      << false << 12.0 << "Times New Roman";
        QTest::newRow("font table") << QByteArray("\\f1 mono\\par") << "mono" << false << false << false << 12.0
                                    << "Courier New";
        QTest::newRow("unknown font: the default") << QByteArray("\\f9 lost\\par") << "lost" << false << false << false
                                                   << 12.0 << "Times New Roman";
    }
    void characters()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        QFETCH(bool, bold);
        QFETCH(bool, italic);
        QFETCH(bool, underline);
        QFETCH(double, points);
        QFETCH(QString, family);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        const QTextCharFormat f = formatOf(*r.document, text);
        QVERIFY2(f.isValid(), qPrintable(shown(*r.document)));
        QCOMPARE(f.fontWeight() >= QFont::Bold, bold);
        QCOMPARE(f.fontItalic(), italic);
        QCOMPARE(f.fontUnderline(), underline);
        QCOMPARE(f.fontPointSize(), points);
        // the named family first, then the kind of font for a machine that lacks it
        const QStringList families = f.fontFamilies().toStringList();
        QCOMPARE(families.value(0), family);
        QCOMPARE(families.size(), 2);
    }

    void alignment_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("alignment");
        const QByteArray body = "\\qc centred\\par\\qr right\\par\\qj justified\\par\\ql left\\par\\qc a{\\qr b}\\par"
                                "\\qc x\\par\\pard after pard\\par";
        QTest::newRow("centre") << body << "centred" << int(Qt::AlignHCenter);
        QTest::newRow("right") << body << "right" << int(Qt::AlignRight);
        QTest::newRow("justify") << body << "justified" << int(Qt::AlignJustify);
        QTest::newRow("left") << body << "left" << int(Qt::AlignLeft);
        QTest::newRow("as at the paragraph mark") << body << "ab" << int(Qt::AlignHCenter);
        QTest::newRow("pard resets") << body << "after pard" << int(Qt::AlignLeft);
    }
    void alignment()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        QFETCH(int, alignment);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        const QTextBlock block = blockOf(*r.document, text);
        QVERIFY(block.isValid());
        QCOMPARE(int(block.blockFormat().alignment() & Qt::AlignHorizontal_Mask), alignment);
    }

    void tables_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QList<double>>("widths");   // per cent of the table, per column
        QTest::addColumn<QStringList>("cells");
        const QByteArray row2 = "\\trowd\\cellx3000\\cellx6000\\pard\\intbl A\\cell B\\cell\\row";
        QTest::newRow("two equal cells") << row2 + "\\pard\\par" << QList<double>{50, 50}
                                         << QStringList{"A(1x1)", "B(1x1)"};
        QTest::newRow("widths from cellx")
            << QByteArray("\\trowd\\trgaph108\\cellx1000\\cellx4000\\cellx6000\\pard\\intbl 1\\cell 2\\cell 3\\cell\\row\\pard\\par")
            << QList<double>{100.0 / 6, 50, 100.0 / 3} << QStringList{"1(1x1)", "2(1x1)", "3(1x1)"};
        QTest::newRow("rows with different layouts")
            << QByteArray("\\trowd\\cellx3000\\cellx6000\\pard\\intbl A\\cell B\\cell\\row"
                          "\\trowd\\cellx2000\\cellx6000\\pard\\intbl C\\cell D\\cell\\row"
                          "\\trowd\\cellx6000\\pard\\intbl E\\cell\\row\\pard\\par")
            << QList<double>{100.0 / 3, 100.0 / 6, 50}
            << QStringList{"A(1x2)", "B(1x1)", "C(1x1)", "D(1x2)", "E(1x3)"};
        QTest::newRow("definition repeated before the row ends")
            << QByteArray("\\trowd\\cellx2000\\cellx5000\\pard\\intbl {H1}{\\cell }{H2}{\\cell }"
                          "{\\trowd\\cellx2000\\cellx5000\\row }\\pard\\par")
            << QList<double>{40, 60} << QStringList{"H1(1x1)", "H2(1x1)"};
        QTest::newRow("definition kept for the next row")
            << row2 + "\\pard\\intbl C\\cell D\\cell\\row\\pard\\par" << QList<double>{50, 50}
            << QStringList{"A(1x1)", "B(1x1)", "C(1x1)", "D(1x1)"};
        QTest::newRow("merged across")
            << QByteArray("\\trowd\\clmgf\\cellx2000\\clmrg\\cellx4000\\cellx6000\\pard\\intbl wide\\cell\\cell x\\cell\\row"
                          "\\trowd\\cellx2000\\cellx4000\\cellx6000\\pard\\intbl a\\cell b\\cell c\\cell\\row\\pard\\par")
            << QList<double>{100.0 / 3, 100.0 / 3, 100.0 / 3}
            << QStringList{"wide(1x2)", "x(1x1)", "a(1x1)", "b(1x1)", "c(1x1)"};
        QTest::newRow("merged down")
            << QByteArray("\\trowd\\clvmgf\\cellx3000\\cellx6000\\pard\\intbl tall\\cell r1\\cell\\row"
                          "\\trowd\\clvmrg\\cellx3000\\cellx6000\\pard\\intbl\\cell r2\\cell\\row\\pard\\par")
            << QList<double>{50, 50} << QStringList{"tall(2x1)", "r1(1x1)", "r2(1x1)"};
        QTest::newRow("more cells than definitions")
            << QByteArray("\\trowd\\cellx3000\\pard\\intbl a\\cell b\\cell\\row\\pard\\par") << QList<double>()
            << QStringList{"a(1x1)", "b(1x1)"};
    }
    void tables()
    {
        QFETCH(QByteArray, body);
        QFETCH(QList<double>, widths);
        QFETCH(QStringList, cells);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        const QList<QTextTable *> found = tablesOf(*r.document);
        QCOMPARE(found.size(), 1);
        QTextTable *table = found.first();
        QCOMPARE(cellsOf(table), cells);
        if (widths.isEmpty())
            return;
        const QList<QTextLength> constraints = table->format().columnWidthConstraints();
        QCOMPARE(table->columns(), int(widths.size()));
        QCOMPARE(constraints.size(), widths.size());
        for (int c = 0; c < widths.size(); ++c) {
            QCOMPARE(constraints.at(c).type(), QTextLength::PercentageLength);
            QVERIFY2(qAbs(constraints.at(c).rawValue() - widths.at(c)) < 0.01,
                     qPrintable(QStringLiteral("column %1: %2").arg(c).arg(constraints.at(c).rawValue())));
        }
        // the table is as wide on the page as its last edge: 6000 of the 9026 twips of A4
        // between one-inch margins (5000 in the repeated-definition row)
        const double right = cells.first() == QLatin1String("H1(1x1)") ? 5000 : 6000;
        QVERIFY(qAbs(table->format().width().rawValue() - right * 100 / 9026) < 0.01);
    }

    void borders_data()
    {
        QTest::addColumn<QByteArray>("definition");   // of the one cell, before \cellx
        QTest::addColumn<double>("top");               // twips
        QTest::addColumn<int>("topStyle");
        QTest::addColumn<double>("left");
        QTest::addColumn<int>("leftStyle");
        const int none = QTextFrameFormat::BorderStyle_None, solid = QTextFrameFormat::BorderStyle_Solid;
        QTest::newRow("none") << QByteArray() << 0.0 << none << 0.0 << none;
        QTest::newRow("single, widths given") << QByteArray("\\clbrdrt\\brdrs\\brdrw30\\clbrdrl\\brdrs\\brdrw10")
                                              << 30.0 << solid << 10.0 << solid;
        QTest::newRow("width by default") << QByteArray("\\clbrdrt\\brdrs") << 10.0 << solid << 0.0 << none;
        QTest::newRow("double") << QByteArray("\\clbrdrt\\brdrdb\\brdrw10") << 30.0
                                << int(QTextFrameFormat::BorderStyle_Double) << 0.0 << none;
        QTest::newRow("dotted and dashed") << QByteArray("\\clbrdrt\\brdrdot\\brdrw10\\clbrdrl\\brdrdash\\brdrw10")
                                           << 10.0 << int(QTextFrameFormat::BorderStyle_Dotted) << 10.0
                                           << int(QTextFrameFormat::BorderStyle_Dashed);
        QTest::newRow("explicitly none") << QByteArray("\\clbrdrt\\brdrnone") << 0.0 << none << 0.0 << none;
        QTest::newRow("the row's outer border") << QByteArray("\\trbrdrl\\brdrs\\brdrw20\\trbrdrt\\brdrs\\brdrw10")
                                                << 10.0 << solid << 20.0 << solid;
        QTest::newRow("paragraph borders stay off the cell") << QByteArray("\\brdrt\\brdrs\\brdrw40") << 0.0 << none
                                                             << 0.0 << none;
    }
    void borders()
    {
        QFETCH(QByteArray, definition);
        QFETCH(double, top);
        QFETCH(int, topStyle);
        QFETCH(double, left);
        QFETCH(int, leftStyle);
        const RtfRenderer::Rendered r = RtfRenderer::render(
            rtf("\\trowd\\trgaph108" + definition + "\\cellx4000\\pard\\intbl x\\cell\\row\\pard\\par"));
        const QList<QTextTable *> found = tablesOf(*r.document);
        QCOMPARE(found.size(), 1);
        QVERIFY(found.first()->format().borderCollapse());
        const QTextTableCellFormat f = found.first()->cellAt(0, 0).format().toTableCellFormat();
        QCOMPARE(f.topBorder(), RtfRenderer::fromTwips(top));
        QCOMPARE(int(f.topBorderStyle()), topStyle);
        QCOMPARE(f.leftBorder(), RtfRenderer::fromTwips(left));
        QCOMPARE(int(f.leftBorderStyle()), leftStyle);
        // the gap between cells is the text's distance from the cell edge
        QCOMPARE(f.leftPadding(), RtfRenderer::fromTwips(108));
        QCOMPARE(shown(*r.document).trimmed(), QStringLiteral("x"));
    }

    void pageBreaks_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("breaksBefore");   // the first text of each page after the first
        QTest::newRow("page") << QByteArray("one\\par\\page two\\par") << "two";
        QTest::newRow("page inside a paragraph") << QByteArray("one\\page two\\par three\\par") << "two";
        QTest::newRow("page then an empty paragraph") << QByteArray("one\\par\\page\\par two\\par") << "(empty)";
        QTest::newRow("paragraph property") << QByteArray("one\\par\\pard\\pagebb two\\par") << "two";
        QTest::newRow("section") << QByteArray("one\\sect two\\par") << "two";
        QTest::newRow("continuous section") << QByteArray("\\sbknone one\\sect two\\par") << "";
        QTest::newRow("none") << QByteArray("one\\par two\\par") << "";
    }
    void pageBreaks()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, breaksBefore);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        QStringList breaking;
        for (QTextBlock b = r.document->begin(); b.isValid(); b = b.next()) {
            if (b.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
                breaking.append(b.text().isEmpty() ? QStringLiteral("(empty)") : b.text());
        }
        QCOMPARE(breaking.join(QLatin1Char('|')), breaksBefore);
        QCOMPARE(r.document->pageCount(), breaking.isEmpty() ? 1 : 2);
    }

    void pages_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("size");
        QTest::addColumn<int>("orientation");
        QTest::addColumn<double>("left");   // margins in points
        QTest::addColumn<double>("top");
        QTest::newRow("A4 between one-inch margins by default") << QByteArray("x\\par") << "A4"
                                                                << int(QPageLayout::Portrait) << 72.0 << 72.0;
        QTest::newRow("as the document says")
            << QByteArray("\\paperw11906\\paperh16838\\margl1134\\margr567\\margt850\\margb850 x\\par") << "A4"
            << int(QPageLayout::Portrait) << 56.7 << 42.5;
        QTest::newRow("legal landscape") << QByteArray("\\paperw20160\\paperh12240\\landscape x\\par") << "Legal"
                                         << int(QPageLayout::Landscape) << 72.0 << 72.0;
    }
    void pages()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, size);
        QFETCH(int, orientation);
        QFETCH(double, left);
        QFETCH(double, top);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        QCOMPARE(r.page.pageSize().name(), size);
        QCOMPARE(int(r.page.orientation()), orientation);
        QCOMPARE(r.page.margins(QPageLayout::Point).left(), left);
        QCOMPARE(r.page.margins(QPageLayout::Point).top(), top);
        // the document's page is the area between the margins (paper sizes come in whole points)
        const QRectF paint = r.page.paintRect(QPageLayout::Point);
        QVERIFY(qAbs(r.document->pageSize().width() - RtfRenderer::fromTwips(paint.width() * 20)) < RtfRenderer::fromTwips(20));
        QVERIFY(qAbs(r.document->pageSize().height() - RtfRenderer::fromTwips(paint.height() * 20)) < RtfRenderer::fromTwips(20));
    }

    void filledTemplatePrints_data()
    {
        QTest::addColumn<bool>("throughShow");
        QTest::newRow("exportPdf") << false;
        QTest::newRow("ShowReport without a screen") << true;
    }
    void filledTemplatePrints()
    {
        QFETCH(bool, throughShow);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) not installed");
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        QVERIFY(report.OpenMasterFileOnly(fixture(QStringLiteral("declaration.rtf"))));
        report.NewSetText(QStringLiteral("##SIGNNAME##"), QStringLiteral("RAVI KUMAR"));
        report.NewSetText(QStringLiteral("##ASYR##"), QStringLiteral("2024-25"));
        QVERIFY(report.FindTable(2));
        report.InsertRows(2, 2);
        for (int row = 1; row <= 3; ++row) {
            report.setTextMatrix(row, 0, QString::number(row));
            report.setTextMatrix(row, 1, QStringLiteral("FD-%1").arg(row));
            report.setTextMatrix(row, 2, QStringLiteral("1,50,00%1.00").arg(row));
        }
        QString pdf = dir.filePath(QStringLiteral("declaration.pdf"));
        if (throughShow) {
            report.setDocumentName(QStringLiteral("Form15G_DEMO01_2024-25"));
            report.ShowReport();
            pdf = dir.filePath(QStringLiteral("Form15G_DEMO01_2024-25.pdf"));
            QCOMPARE(report.lastOutput(), pdf);
        } else {
            QVERIFY(report.exportPdf(pdf));
        }
        const QString text = pdfText(pdf, true);
        QVERIFY2(QRegularExpression(QStringLiteral("Name +RAVI KUMAR")).match(text).hasMatch(), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("Assessment year 2024-25 ending")));
        for (int row = 1; row <= 3; ++row) {
            // each schedule row on one line, its cells in order
            const QRegularExpression line(QStringLiteral("%1 +FD-%1 +1,50,00%1\\.00").arg(row));
            QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
        }
        QVERIFY(text.contains(QStringLiteral("Signed RAVI KUMAR")));
    }

    void openFileOnlyKeepsNothingOfTheFile_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("pdf");
        QTest::newRow("rich text") << "declaration.rtf" << "" << "Frm15G.pdf";
        QTest::newRow("word-processor template") << "challan.doc" << "" << "Frm15G.pdf";
        QTest::newRow("named") << "declaration.rtf" << "Form15G_DEMO01_2024-25" << "Form15G_DEMO01_2024-25.pdf";
    }
    void openFileOnlyKeepsNothingOfTheFile()
    {
        QFETCH(QString, source);
        QFETCH(QString, name);
        QFETCH(QString, pdf);
        QTemporaryDir dir;
        const QString temp = dir.filePath(QStringLiteral("Temp"));
        QVERIFY(QDir().mkpath(temp));
        const QString shownFile = dir.filePath(QStringLiteral("Frm15G.") + QFileInfo(source).suffix());
        QVERIFY(QFile::copy(fixture(source), shownFile));
        ReportObject report;
        report.setTempFolder(temp);
        if (!name.isEmpty())
            report.setDocumentName(name);
        report.OpenFileOnly(shownFile);
        QVERIFY(QFile::remove(shownFile));   // as the forms do right after
        QCOMPARE(report.lastOutput(), QDir(temp).filePath(pdf));
        QVERIFY(QFileInfo(report.lastOutput()).size() > 0);
        QVERIFY(report.documentName().isEmpty());
        const QString text = pdfText(report.lastOutput());
        QVERIFY2(text.contains(source.endsWith(QLatin1String(".doc")) ? "CHALLAN NO./ ITNS 281" : "FORM NO. 15G"),
                 qPrintable(text));
    }

    void openFileOnlyOfAMissingFile()
    {
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("does not exist")));
        report.OpenFileOnly(dir.filePath(QStringLiteral("gone.rtf")));
        QVERIFY(report.lastOutput().isEmpty());
        QVERIFY(QDir(dir.path()).isEmpty());
    }

    void previewWindow()
    {
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf("x\\par"));
        QTemporaryDir dir;
        ReportPreview window(r.page, [&r](QPagedPaintDevice *d) { return RtfRenderer::paint(r.document.get(), d); },
                             QStringLiteral("Form15C_DEMO01_2024-25"));
        QVERIFY(window.wordProcessorButton()->isHidden());
        window.setDocument(rtf("x\\par"), QStringLiteral("doc"));
        QVERIFY(!window.wordProcessorButton()->isHidden());

        // every access key once
        QStringList keys;
        for (const QAbstractButton *b : window.findChildren<QAbstractButton *>()) {
            const qsizetype amp = b->text().indexOf(QLatin1Char('&'));
            QVERIFY2(amp >= 0, qPrintable(b->text()));
            keys.append(b->text().at(amp + 1).toLower());
        }
        QVERIFY(keys.size() >= 5);
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());

        // readable at once: most of the screen, pages fitted to the width
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(window.width() >= screen.width() * 8 / 10 && window.height() >= screen.height() * 8 / 10);
        QCOMPARE(window.view()->zoomMode(), QPrintPreviewWidget::FitToWidth);

        QCOMPARE(window.pdfFileName(), QStringLiteral("Form15C_DEMO01_2024-25.pdf"));
        QVERIFY(window.savePdf(dir.filePath(window.pdfFileName())));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("folder does not exist")));
        QVERIFY(!window.savePdf(dir.filePath(QStringLiteral("missing/x.pdf"))));
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("missing"))));

        const QString copy = window.copyDocument(dir.path());
        QCOMPARE(copy, dir.filePath(QStringLiteral("Form15C_DEMO01_2024-25.doc")));
        QFile file(copy);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), rtf("x\\par"));
    }
};

TDS_TEST(RtfRenderTest)
#include "RtfRenderTest.moc"
