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
#include <QRegularExpression>
#include <QScreen>
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

QString pdfText(const QString &pdf)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
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
        QTest::newRow("paragraphs, line break and tab") << QByteArray("\\pard one\\par\\pard a\\line b\\tab c\\par tail")
                                                        << QString("one\na") + QChar::LineSeparator + "b\tc\ntail";
        QTest::newRow("unicode with fallback") << QByteArray("\\uc1\\u8377?500 \\u-3?\\par")
                                               << QString::fromUtf8("\xE2\x82\xB9" "500 \xEF\xBF\xBD");
        QTest::newRow("code page and escapes") << QByteArray("\\'a3 \\'80 \\{x\\}\\\\\\par")
                                               << QString::fromUtf8("\xC2\xA3 \xE2\x82\xAC {x}\\");
        QTest::newRow("destinations never shown")
            << QByteArray("{\\stylesheet{\\s0 Normal;}}{\\info{\\title T}}{\\*\\bkmkstart M}"
                          "{\\header head\\par}seen{\\v  unseen}\\par")
            << "seen";
        QTest::newRow("quotes and dashes") << QByteArray("\\lquote a\\rquote  \\ldblquote b\\rdblquote  c\\emdash d\\par")
                                           << QString::fromUtf8("\xE2\x80\x98" "a\xE2\x80\x99 \xE2\x80\x9C" "b\xE2\x80\x9D c\xE2\x80\x94" "d");
    }
    void text()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
        QCOMPARE(r.document->toRawText().remove(QChar(0x200B)).replace(QChar::ParagraphSeparator, QLatin1Char('\n')),
                 text);
    }

    void characters()
    {
        // style: b, i, u as set; the named family first, then the kind of font for a machine that lacks it
        const auto check = [](const QByteArray &body, const QString &text, const QString &style, double points,
                              const QString &family) {
            const RtfRenderer::Rendered r = RtfRenderer::render(rtf(body));
            const QTextCharFormat f = formatOf(*r.document, text);
            QVERIFY2(f.isValid(), qPrintable(shown(*r.document)));
            QCOMPARE(f.fontWeight() >= QFont::Bold, style.contains(QLatin1Char('b')));
            QCOMPARE(f.fontItalic(), style.contains(QLatin1Char('i')));
            QCOMPARE(f.fontUnderline(), style.contains(QLatin1Char('u')));
            QCOMPARE(f.fontPointSize(), points);
            QCOMPARE(f.fontFamilies().toStringList(), (QStringList{family, f.fontFamilies().toStringList().value(1)}));
        };
        const QByteArray mixed = "\\b bold\\b0  \\i italic\\i0  \\uldb double\\ulnone  plain\\par";
        const QString times = QStringLiteral("Times New Roman");
        check(mixed, "bold", "b", 12, times);
        check(mixed, "italic", "i", 12, times);
        check(mixed, "double", "u", 12, times);
        check(mixed, "plain", "", 12, times);
        check("{\\b\\i\\fs41 in}out\\par", "in", "bi", 20.5, times);
        check("{\\b\\i\\fs41 in}out\\par", "out", "", 12, times);
        check("\\b\\ul\\fs36\\f1 x\\plain reset\\par", "reset", "", 12, times);
        check("\\f1 mono\\par", "mono", "", 12, "Courier New");
        check("\\f9 lost\\par", "lost", "", 12, times);
    }

    void alignment()
    {
        const RtfRenderer::Rendered r = RtfRenderer::render(
            rtf("\\qc centred\\par\\qr right\\par\\qj justified\\par\\qc a{\\qr b}\\par\\pard after pard\\par"));
        const auto alignmentOf = [&r](const char *text) {
            return int(blockOf(*r.document, QLatin1String(text)).blockFormat().alignment() & Qt::AlignHorizontal_Mask);
        };
        QCOMPARE(alignmentOf("centred"), int(Qt::AlignHCenter));
        QCOMPARE(alignmentOf("right"), int(Qt::AlignRight));
        QCOMPARE(alignmentOf("justified"), int(Qt::AlignJustify));
        QCOMPARE(alignmentOf("ab"), int(Qt::AlignHCenter));   // as at the paragraph mark
        QCOMPARE(alignmentOf("after pard"), int(Qt::AlignLeft));
    }

    void tables_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QList<double>>("widths");   // per cent of the table, per column
        QTest::addColumn<QStringList>("cells");
        QTest::newRow("rows with different layouts, definition kept")
            << QByteArray("\\trowd\\trgaph108\\cellx3000\\cellx6000\\pard\\intbl A\\cell B\\cell\\row"
                          "\\pard\\intbl A2\\cell B2\\cell\\row"
                          "\\trowd\\cellx2000\\cellx6000\\pard\\intbl C\\cell D\\cell\\row"
                          "\\trowd\\cellx6000\\pard\\intbl E\\cell\\row\\pard\\par")
            << QList<double>{100.0 / 3, 100.0 / 6, 50}
            << QStringList{"A(1x2)", "B(1x1)", "A2(1x2)", "B2(1x1)", "C(1x1)", "D(1x2)", "E(1x3)"};
        QTest::newRow("definition repeated before the row ends")
            << QByteArray("\\trowd\\cellx2000\\cellx5000\\pard\\intbl {H1}{\\cell }{H2}{\\cell }"
                          "{\\trowd\\cellx2000\\cellx5000\\row }\\pard\\par")
            << QList<double>{40, 60} << QStringList{"H1(1x1)", "H2(1x1)"};
        QTest::newRow("merged across and down")
            << QByteArray("\\trowd\\clmgf\\cellx2000\\clmrg\\cellx4000\\clvmgf\\cellx6000\\pard\\intbl wide\\cell\\cell tall\\cell\\row"
                          "\\trowd\\cellx2000\\cellx4000\\clvmrg\\cellx6000\\pard\\intbl a\\cell b\\cell\\cell\\row\\pard\\par")
            << QList<double>{100.0 / 3, 100.0 / 3, 100.0 / 3}
            << QStringList{"wide(1x2)", "tall(2x1)", "a(1x1)", "b(1x1)"};
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
        const int solid = QTextFrameFormat::BorderStyle_Solid;
        QTest::newRow("double and dashed") << QByteArray("\\clbrdrt\\brdrdb\\brdrw10\\clbrdrl\\brdrdash\\brdrw10")
                                           << 30.0 << int(QTextFrameFormat::BorderStyle_Double) << 10.0
                                           << int(QTextFrameFormat::BorderStyle_Dashed);
        QTest::newRow("the row's outer border") << QByteArray("\\trbrdrl\\brdrs\\brdrw20\\trbrdrt\\brdrs\\brdrw10")
                                                << 10.0 << solid << 20.0 << solid;
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
    }

    void pageBreaks_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("breaksBefore");   // the first text of each page after the first
        QTest::newRow("page then an empty paragraph") << QByteArray("one\\par\\page\\par two\\par") << "(empty)";
        QTest::newRow("section") << QByteArray("one\\sect two\\par") << "two";
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

    void pages()
    {
        const RtfRenderer::Rendered a4 = RtfRenderer::render(
            rtf("\\paperw11906\\paperh16838\\margl1134\\margr567\\margt850\\margb850 x\\par"));
        QCOMPARE(a4.page.pageSize().name(), QStringLiteral("A4"));
        QCOMPARE(a4.page.margins(QPageLayout::Point).left(), 56.7);
        QCOMPARE(a4.page.margins(QPageLayout::Point).top(), 42.5);
        // the document's page is the area between the margins (paper sizes come in whole points)
        const QRectF paint = a4.page.paintRect(QPageLayout::Point);
        QVERIFY(qAbs(a4.document->pageSize().width() - RtfRenderer::fromTwips(paint.width() * 20)) < RtfRenderer::fromTwips(20));
        const RtfRenderer::Rendered legal = RtfRenderer::render(rtf("\\paperw20160\\paperh12240\\landscape x\\par"));
        QCOMPARE(legal.page.pageSize().name(), QStringLiteral("Legal"));
        QCOMPARE(legal.page.orientation(), QPageLayout::Landscape);
        QCOMPARE(legal.page.margins(QPageLayout::Point).left(), 72.0);   // one inch by default
    }

    void openFileOnlyKeepsNothingOfTheFile_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("pdf");
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

        QCOMPARE(window.copyDocument(dir.path()), dir.filePath(QStringLiteral("Form15C_DEMO01_2024-25.doc")));
    }
};

TDS_TEST(RtfRenderTest)
#include "RtfRenderTest.moc"
