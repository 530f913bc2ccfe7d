// Rich-text templates: placeholders, table cells, rows added and removed, escaping.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString fixture(const QString &name)
{
    return QStringLiteral(TDS_TEST_DATA_DIR "/report/") + name;
}

// Every group closed, none closed twice: a word processor refuses anything else.
bool balanced(const QByteArray &rtf)
{
    int depth = 0;
    for (const RtfToken &t : tokenizeRtf(rtf)) {
        depth += t.kind == RtfToken::GroupOpen ? 1 : t.kind == RtfToken::GroupClose ? -1 : 0;
        if (depth < 0)
            return false;
    }
    return depth == 0;
}

RtfDocument open(const QString &name)
{
    RtfDocument doc;
    doc.load(fixture(name));
    return doc;
}

QStringList rowTexts(const RtfDocument &doc, int table)
{
    QStringList rows;
    for (int r = 0; r < doc.rowCount(table); ++r) {
        QStringList cells;
        for (int c = 0; c < doc.columnCount(table, r); ++c)
            cells.append(doc.cellText(table, r, c));
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows;
}

// The words of a PDF, blanks collapsed; empty without pdftotext.
QString pdfText(const QString &pdf)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    return process.waitForFinished(30000) ? QString::fromUtf8(process.readAllStandardOutput()).simplified() : QString();
}

} // namespace

class ReportTemplateTest : public QObject
{
    Q_OBJECT

private slots:
    void placeholders_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("shown");
        QTest::newRow("every occurrence, in a cell too") << "declaration.rtf" << "##SIGNNAME##" << 2 << "Name\tV\t";
        QTest::newRow("not in the document information") << "declaration.rtf" << "##ASYR##" << 1 << "year V ending";
        QTest::newRow("split across runs") << "wordstyle.rtf" << "##DATE##" << 1 << "Date V\n";
        QTest::newRow("absent") << "declaration.rtf" << "##NONE##" << 0 << "Signed ##SIGNNAME##";
    }
    void placeholders()
    {
        QFETCH(QString, file);
        QFETCH(QString, placeholder);
        QFETCH(int, count);
        QFETCH(QString, shown);
        RtfDocument doc = open(file);
        const QByteArray title = "{\\title " + placeholder.toLatin1();
        const qsizetype titles = doc.content().count(title);
        QCOMPARE(doc.replaceText(placeholder, QStringLiteral("V")), count);
        QVERIFY2(doc.plainText().contains(shown), qPrintable(doc.plainText()));
        QVERIFY(balanced(doc.content()));
        QCOMPARE(doc.content().count(title), titles);   // the document information keeps its copy
    }

    void escaping()
    {
        // braces and backslashes escaped, the rupee sign as a unicode character, line ends as line breaks
        const QString value = QString::fromUtf8("{C:\\TDS} \xE2\x82\xB9\r\nB\nC");
        RtfDocument doc = open(QStringLiteral("declaration.rtf"));
        doc.replaceText(QStringLiteral("##YREND##"), value);
        QVERIFY2(doc.content().contains("\\{C:\\\\TDS\\} \\u8377?\\line B\\line C"), doc.content().constData());
        QVERIFY(balanced(doc.content()));
        QVERIFY(doc.setCellText(2, 1, 1, value));
        QCOMPARE(doc.cellText(2, 1, 1), QString(value).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    }

    void tableEdits()
    {
        RtfDocument doc = open(QStringLiteral("declaration.rtf"));
        const QByteArray before = doc.content();   // edits outside a table refused, nothing changed
        QVERIFY(!doc.setCellText(3, 0, 0, QStringLiteral("X")) && !doc.setCellText(2, 1, 9, QStringLiteral("X")));
        QVERIFY(!doc.insertRows(2, 3, 1) && !doc.deleteRow(2, 5));
        QCOMPARE(doc.content(), before);
        QVERIFY(doc.setCellText(2, 1, 0, QStringLiteral("NEW")));
        QVERIFY(doc.setCellText(2, 1, 0, QStringLiteral("NEW")));   // writing twice leaves one value
        QVERIFY(doc.insertRows(2, 2, 2));
        QCOMPARE(rowTexts(doc, 2), (QStringList{"Sl.|Identification|Amount", "NEW||", "||", "||"}));
        QVERIFY(balanced(doc.content()));

        RtfDocument single = open(QStringLiteral("wordstyle.rtf"));
        QVERIFY(single.deleteRow(2, 0));   // the only row: the table goes
        QCOMPARE(single.tableCount(), 1);
    }

    void reportObjectFillsAndSaves()
    {
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        QVERIFY(report.OpenMasterFileOnly(fixture(QStringLiteral("declaration.rtf"))));
        report.NewSetText(QStringLiteral("##SIGNNAME##"), QStringLiteral("D'SOUZA {JR}"));
        QVERIFY(report.FindTable(2));
        report.InsertRows(2, 2);
        report.setTextMatrix(1, 1, QStringLiteral("SAVINGS"));
        report.setTextMatrix(3, 2, QString::fromUtf8("\xE2\x82\xB9 1,000.00"));
        QVERIFY(report.FindTable(1));
        report.deleteRow(1);

        const QString saved = dir.filePath(QStringLiteral("out/Frm15G_135.rtf"));
        QVERIFY(report.SaveMasterFile(saved));
        report.OpenFileOnly(saved); // no screen in a test: a PDF beside it
        QCOMPARE(report.lastOutput(), dir.filePath(QStringLiteral("Frm15G_135.pdf")));
        const QString printed = pdfText(report.lastOutput());
        for (const QString &value : {QStringLiteral("Name D'SOUZA {JR}"), QStringLiteral("1 SAVINGS"),
                                     QString::fromUtf8("\xE2\x82\xB9 1,000.00")})
            QVERIFY2(printed.contains(value), qPrintable(printed));
    }

    void missingTemplate()
    {
        ReportObject report;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot open .*nothing.rtf")));
        QVERIFY(!report.OpenMasterFileOnly(fixture(QStringLiteral("nothing.rtf"))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("table 1 not found")));
        QVERIFY(!report.FindTable(1));
    }

    void wordProcessorTemplateShown()
    {
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        report.newreportnew(fixture(QStringLiteral("challan.doc")));
        report.SetText(QStringLiteral("##4##"), QStringLiteral("PNEA12345B"));
        report.SetText(QStringLiteral("##5##"), QStringLiteral("ACME {INDIA}"));
        report.ShowReport();
        QCOMPARE(report.lastOutput(), dir.filePath(QStringLiteral("challan.pdf")));
        QVERIFY(report.reportText().contains(QStringLiteral("Counterfoil TAN ##29##"))); // placeholders not set stay
        const QString printed = pdfText(report.lastOutput());
        QVERIFY2(printed.contains(QStringLiteral("TAN PNEA12345B Name ACME {INDIA}")), qPrintable(printed));
    }
};

TDS_TEST(ReportTemplateTest)
#include "ReportTemplateTest.moc"
