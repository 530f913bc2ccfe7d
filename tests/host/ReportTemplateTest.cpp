// Rich-text templates: placeholders, table cells, rows added and removed, escaping.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QFile>
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
        if (t.kind == RtfToken::GroupOpen)
            ++depth;
        else if (t.kind == RtfToken::GroupClose && --depth < 0)
            return false;
    }
    return depth == 0;
}

RtfDocument open(const QString &name)
{
    RtfDocument doc;
    if (!doc.load(fixture(name)))
        qFatal("fixture %s missing", qPrintable(name));
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
    if (!process.waitForFinished(30000))
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput()).simplified();
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
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("shown");
        QTest::newRow("every occurrence, in a cell too") << "declaration.rtf" << "##SIGNNAME##" << "RAVI" << 2
                                                         << "Name\tRAVI\t";
        QTest::newRow("not in the document information") << "declaration.rtf" << "##ASYR##" << "2024-25" << 1
                                                         << "Assessment year 2024-25 ending";
        QTest::newRow("right after a control word") << "declaration.rtf" << "##REF##" << "abc-1" << 1 << "Refabc-1\n";
        QTest::newRow("split across runs") << "wordstyle.rtf" << "##DATE##" << "01/04/2024" << 1 << "Date 01/04/2024\n";
        QTest::newRow("after a code-page character") << "wordstyle.rtf" << "##AMT##" << "1,000.00" << 1
                                                     << QString::fromUtf8("Total \xC2\xA3 1,000.00");
        QTest::newRow("absent") << "declaration.rtf" << "##NONE##" << "X" << 0 << "Signed ##SIGNNAME##";
    }
    void placeholders()
    {
        QFETCH(QString, file);
        QFETCH(QString, placeholder);
        QFETCH(QString, value);
        QFETCH(int, count);
        QFETCH(QString, shown);
        RtfDocument doc = open(file);
        const QByteArray before = doc.content();
        QCOMPARE(doc.replaceText(placeholder, value), count);
        QVERIFY2(doc.plainText().contains(shown), qPrintable(doc.plainText()));
        if (count > 0)
            QVERIFY(!doc.plainText().contains(placeholder));
        QVERIFY(balanced(doc.content()));
        // hidden texts (document information, bookmarks) keep their copies
        for (const QString &hidden : {QStringLiteral("{\\*\\bkmkstart "), QStringLiteral("{\\title ")}) {
            const QByteArray copy = (hidden + placeholder).toLatin1();
            QCOMPARE(doc.content().count(copy), before.count(copy));
        }
    }

    void escaping_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("rtf");
        QTest::newRow("braces and backslash") << "{C:\\TDS\\par}" << QByteArray("\\{C:\\\\TDS\\\\par\\}");
        QTest::newRow("rupee sign") << QString::fromUtf8("\xE2\x82\xB9 500") << QByteArray("\\u8377? 500");
        QTest::newRow("outside 32767 signed") << QString(QChar(0xFF01)) << QByteArray("\\u-255?");
        QTest::newRow("CR LF and LF") << "A\r\nB\nC" << QByteArray("A\\line B\\line C");
        QTest::newRow("apostrophe as is") << "O'BRIEN" << QByteArray("O'BRIEN");
    }
    void escaping()
    {
        QFETCH(QString, value);
        QFETCH(QByteArray, rtf);
        QCOMPARE(rtfEscape(value), rtf);
        // and a reader gets the value back, through a placeholder and through a cell
        RtfDocument doc = open(QStringLiteral("declaration.rtf"));
        doc.replaceText(QStringLiteral("##YREND##"), value);
        QVERIFY(doc.content().contains(rtf));
        QVERIFY(balanced(doc.content()));
        QVERIFY(doc.setCellText(2, 1, 1, value));
        const QString expected = QString(value).replace(QLatin1String("\r\n"), QLatin1String("\n"));
        QCOMPARE(doc.cellText(2, 1, 1), expected);
        QVERIFY(doc.plainText().contains("ending " + expected + "\n"));
    }

    void tableEdits_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("edit"); // cell: "NEW" into (row, n); insert: n rows at row; delete: row
        QTest::addColumn<int>("table");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("n");
        QTest::addColumn<QStringList>("rows");
        const QString d = QStringLiteral("declaration.rtf"), w = QStringLiteral("wordstyle.rtf");
        const QString head = QStringLiteral("Sl.|Identification|Amount");

        QTest::newRow("empty cell filled") << d << "cell" << 1 << 1 << 1 << QStringList{"Name|##SIGNNAME##", "PAN|NEW"};
        QTest::newRow("cell text replaced") << d << "cell" << 2 << 1 << 0 << QStringList{head, "NEW||"};
        QTest::newRow("word processor cell in a group") << w << "cell" << 1 << 1 << 0 << QStringList{"Head A|Head B", "NEW|"};
        QTest::newRow("one-cell table") << w << "cell" << 2 << 0 << 0 << QStringList{"NEW"};
        QTest::newRow("rows appended after the last") << d << "insert" << 2 << 2 << 3 << QStringList{head, "1||", "||", "||", "||"};
        QTest::newRow("data row deleted") << d << "delete" << 2 << 1 << 0 << QStringList{head};
        QTest::newRow("only row deleted: the table goes") << w << "delete" << 2 << 0 << 0 << QStringList{};
    }
    void tableEdits()
    {
        QFETCH(QString, file);
        QFETCH(QString, edit);
        QFETCH(int, table);
        QFETCH(int, row);
        QFETCH(int, n);
        QFETCH(QStringList, rows);
        RtfDocument doc = open(file);
        const int other = table == 1 ? 2 : 1;
        const QStringList otherBefore = rowTexts(doc, other);
        if (edit == QLatin1String("cell")) {
            // writing twice leaves one value
            QVERIFY(doc.setCellText(table, row, n, QStringLiteral("NEW")));
            QVERIFY(doc.setCellText(table, row, n, QStringLiteral("NEW")));
        } else if (edit == QLatin1String("insert")) {
            QVERIFY(doc.insertRows(table, row, n));
        } else {
            QVERIFY(doc.deleteRow(table, row));
        }
        QCOMPARE(rowTexts(doc, table), rows);
        QCOMPARE(doc.tableCount(), rows.isEmpty() ? 1 : 2);
        QCOMPARE(rowTexts(doc, other), otherBefore);
        QVERIFY(balanced(doc.content()));
        // inserted rows can be written
        if (edit == QLatin1String("insert")) {
            QVERIFY(doc.setCellText(table, row, 0, QStringLiteral("R")));
            QCOMPARE(doc.cellText(table, row, 0), QStringLiteral("R"));
        }
    }

    void editsOutsideTheTableRefused()
    {
        RtfDocument doc = open(QStringLiteral("declaration.rtf"));
        const QByteArray before = doc.content();
        QVERIFY(!doc.setCellText(2, 1, 9, QStringLiteral("X")));
        QVERIFY(!doc.setCellText(3, 0, 0, QStringLiteral("X")));
        QVERIFY(!doc.insertRows(2, 3, 1));
        QVERIFY(!doc.deleteRow(2, 5));
        QCOMPARE(doc.content(), before);
    }

    void rowNumbersFollowEdits()
    {
        RtfDocument doc = open(QStringLiteral("wordstyle.rtf"));
        QVERIFY(doc.insertRows(1, 2, 2));
        // each row carries its definition twice, as the word processor wrote it
        QByteArray rtf = doc.content();
        QCOMPARE(rtf.count("\\irow3"), 2);
        QCOMPARE(rtf.count("\\irowband3"), 2);
        // the paragraph between the two tables
        const qsizetype between = rtf.indexOf("\\pard\\plain\\par");
        QCOMPARE(rtf.left(between).count("\\lastrow"), 2);
        QVERIFY(rtf.indexOf("\\lastrow") > rtf.indexOf("\\irow3"));

        QVERIFY(doc.deleteRow(1, 3) && doc.deleteRow(1, 1));
        rtf = doc.content();
        QCOMPARE(rtf.count("\\irow2"), 0);
        QCOMPARE(rtf.left(rtf.indexOf("\\pard\\plain\\par")).count("\\lastrow"), 2);
        QCOMPARE(rtf.count("\\lastrow"), 4);
    }

    void reportObjectFillsAndSaves()
    {
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        QVERIFY(report.OpenMasterFileOnly(fixture(QStringLiteral("declaration.rtf"))));
        report.NewSetText(QStringLiteral("##SIGNNAME##"), QStringLiteral("D'SOUZA {JR}"));
        QVERIFY(!report.FindTable(0) && !report.FindTable(3) && report.FindTable(2));
        report.InsertRows(2, 2);
        report.setTextMatrix(1, 1, QStringLiteral("SAVINGS"));
        report.setTextMatrix(3, 2, QString::fromUtf8("\xE2\x82\xB9 1,000.00"));
        QVERIFY(report.FindTable(1));
        report.deleteRow(1);
        QCOMPARE(report.TextMatrix(0, 1), QStringLiteral("D'SOUZA {JR}"));

        const QString saved = dir.filePath(QStringLiteral("out/Frm15G_135.rtf"));
        QVERIFY(report.SaveMasterFile(saved));
        report.OpenFileOnly(saved); // no screen in a test: a PDF beside it
        QCOMPARE(report.lastOutput(), dir.filePath(QStringLiteral("Frm15G_135.pdf")));
        const QString printed = pdfText(report.lastOutput());
        for (const QString &value : {QStringLiteral("Name D'SOUZA {JR}"), QStringLiteral("1 SAVINGS"),
                                     QString::fromUtf8("\xE2\x82\xB9 1,000.00")})
            QVERIFY2(printed.contains(value), qPrintable(printed));

        ReportObject reread;
        QVERIFY(reread.OpenMasterFileOnly(saved));
        QCOMPARE(rowTexts(reread.document(), 1), QStringList{"Name|D'SOUZA {JR}"});
        QCOMPARE(rowTexts(reread.document(), 2), (QStringList{"Sl.|Identification|Amount", "1|SAVINGS|", "||",
                                                              QString::fromUtf8("||\xE2\x82\xB9 1,000.00")}));
        QVERIFY(reread.reportText().contains(QStringLiteral("Signed D'SOUZA {JR}")));
        QVERIFY(balanced(reread.document().content()));
    }

    void missingTemplate()
    {
        ReportObject report;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot open .*nothing.rtf")));
        QVERIFY(!report.OpenMasterFileOnly(fixture(QStringLiteral("nothing.rtf"))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not a rich-text document")));
        QVERIFY(!report.OpenMasterFileOnly(fixture(QStringLiteral("../../ReportTemplateTest.cpp"))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("table 1 not found")));
        QVERIFY(!report.FindTable(1));
    }

    void wordProcessorTemplateShown()
    {
        QTemporaryDir dir;
        ReportObject report;
        report.setTempFolder(dir.path());
        report.newreportnew(fixture(QStringLiteral("challan.doc")));
        const QStringList values{"##Assessment Year##", "Assessmant Year", "##3##", "2024-25", "##4##", "PNEA12345B",
                                 "##5##", "ACME {INDIA}", "##234E SEC##", "234E", "##234E##", "200.00"};
        for (int i = 0; i < values.size(); i += 2)
            report.SetText(values[i], values[i + 1]);
        report.ShowReport();
        QCOMPARE(report.lastOutput(), dir.filePath(QStringLiteral("challan.pdf")));
        const QString text = report.reportText();
        QVERIFY2(text.contains(QStringLiteral("Assessmant Year 2024-25\n")), qPrintable(text));
        QVERIFY(text.contains("TAN PNEA12345B  Name ACME {INDIA}\n") && text.contains("Section 234E: 200.00\n"));
        QVERIFY(text.contains(QStringLiteral("Counterfoil TAN ##29##"))); // placeholders not set stay
        const QString printed = pdfText(report.lastOutput());
        QVERIFY2(printed.contains(QStringLiteral("TAN PNEA12345B Name ACME {INDIA}")), qPrintable(printed));
        QVERIFY(QFile::exists(fixture(QStringLiteral("challan.doc"))));
    }
};

TDS_TEST(ReportTemplateTest)
#include "ReportTemplateTest.moc"
