// Rich text read into a document for the report object's own viewer, printer and PDF.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"
#include "host/report/ReportPreview.h"
#include "host/report/RtfRenderer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
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
        QTest::newRow("destinations never shown")
            << QByteArray("{\\stylesheet{\\s0 Normal;}}{\\info{\\title T}}{\\*\\bkmkstart M}"
                          "{\\header head\\par}seen{\\v  unseen}\\par")
            << "seen";
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
        // bold and a half-point size kept inside the group only; an unknown font falls back to the default
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf("{\\b\\fs41 in}out \\f9 lost\\par"));
        const QTextCharFormat in = formatOf(*r.document, QStringLiteral("in"));
        QVERIFY2(in.isValid(), qPrintable(shown(*r.document)));
        QVERIFY(in.fontWeight() >= QFont::Bold);
        QCOMPARE(in.fontPointSize(), 20.5);
        const QTextCharFormat lost = formatOf(*r.document, QStringLiteral("lost"));
        QVERIFY(lost.fontWeight() < QFont::Bold);
        QCOMPARE(lost.fontFamilies().toStringList().value(0), QStringLiteral("Times New Roman"));
    }

    void tables()
    {
        const RtfRenderer::Rendered r = RtfRenderer::render(
            rtf("\\trowd\\clmgf\\cellx2000\\clmrg\\cellx4000\\clvmgf\\cellx6000\\pard\\intbl wide\\cell\\cell tall\\cell\\row"
                "\\trowd\\cellx2000\\cellx4000\\clvmrg\\cellx6000\\pard\\intbl a\\cell b\\cell\\cell\\row\\pard\\par"));
        const QList<QTextTable *> found = tablesOf(*r.document);
        QCOMPARE(found.size(), 1);
        QCOMPARE(cellsOf(found.first()), (QStringList{"wide(1x2)", "tall(2x1)", "a(1x1)", "b(1x1)"}));
        const QList<QTextLength> constraints = found.first()->format().columnWidthConstraints();
        QCOMPARE(constraints.size(), 3);
        QVERIFY(qAbs(constraints.at(0).rawValue() - 100.0 / 3) < 0.01);
        // as wide on the page as its last edge: 6000 of the 9026 twips of A4 between one-inch margins
        QVERIFY(qAbs(found.first()->format().width().rawValue() - 6000.0 * 100 / 9026) < 0.01);
    }

    void pageBreaks()
    {
        const RtfRenderer::Rendered r = RtfRenderer::render(rtf("one\\sect two\\par"));
        QVERIFY(r.document->findBlock(r.document->find(QStringLiteral("two")).position()).blockFormat().pageBreakPolicy()
                & QTextFormat::PageBreak_AlwaysBefore);
        QCOMPARE(r.document->pageCount(), 2);
    }

    void openFileOnlyKeepsNothingOfTheFile()
    {
        QTemporaryDir dir;
        const QString temp = dir.filePath(QStringLiteral("Temp"));
        QVERIFY(QDir().mkpath(temp));
        const QString shownFile = dir.filePath(QStringLiteral("Frm15G.rtf"));
        QVERIFY(QFile::copy(fixture(QStringLiteral("declaration.rtf")), shownFile));
        ReportObject report;
        report.setTempFolder(temp);
        report.setDocumentName(QStringLiteral("Form15G_DEMO01_2024-25"));
        report.OpenFileOnly(shownFile);
        QVERIFY(QFile::remove(shownFile));   // as the forms do right after
        QCOMPARE(report.lastOutput(), QDir(temp).filePath(QStringLiteral("Form15G_DEMO01_2024-25.pdf")));
        QVERIFY(report.documentName().isEmpty());
        const QString text = pdfText(report.lastOutput());
        QVERIFY2(text.contains(QLatin1String("FORM NO. 15G")), qPrintable(text));
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
