// Rich-text templates: placeholders, table cells, rows added and removed, escaping.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QFile>
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

} // namespace

class ReportTemplateTest : public QObject
{
    Q_OBJECT

private slots:
    void structure_data();
    void structure();
    void placeholders_data();
    void placeholders();
    void escaping_data();
    void escaping();
    void cells_data();
    void cells();
    void insertRows_data();
    void insertRows();
    void deleteRow_data();
    void deleteRow();
    void rowNumbersFollowEdits();
    void reportObjectFillsAndSaves();
    void missingTemplate();
    void wordProcessorTemplateShown();
};

void ReportTemplateTest::structure_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QList<int>>("columns");
    QTest::newRow("plain") << "declaration.rtf" << QList<int>{2, 2} << QList<int>{2, 3};
    QTest::newRow("word processor") << "wordstyle.rtf" << QList<int>{2, 1} << QList<int>{2, 1};
}

void ReportTemplateTest::structure()
{
    QFETCH(QString, file);
    QFETCH(QList<int>, rows);
    QFETCH(QList<int>, columns);
    const RtfDocument doc = open(file);
    QCOMPARE(doc.tableCount(), int(rows.size()));
    for (int t = 0; t < rows.size(); ++t) {
        QCOMPARE(doc.rowCount(t + 1), rows.at(t));
        QCOMPARE(doc.columnCount(t + 1, 0), columns.at(t));
    }
}

void ReportTemplateTest::placeholders_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("shown");

    QTest::newRow("every occurrence") << "declaration.rtf" << "##SIGNNAME##" << "RAVI" << 2 << "Signed RAVI";
    QTest::newRow("inside a table cell") << "declaration.rtf" << "##SIGNNAME##" << "RAVI" << 2 << "Name\tRAVI\t";
    QTest::newRow("not in the document information") << "declaration.rtf" << "##ASYR##" << "2024-25" << 1
                                                     << "Assessment year 2024-25 ending";
    QTest::newRow("split by a formatting group") << "declaration.rtf" << "##PLACE##" << "PUNE" << 1 << "Place: PUNE\n";
    QTest::newRow("right after a control word") << "declaration.rtf" << "##REF##" << "abc-1" << 1 << "Refabc-1\n";
    QTest::newRow("split across runs") << "wordstyle.rtf" << "##DATE##" << "01/04/2024" << 1 << "Date 01/04/2024\n";
    QTest::newRow("after a code-page character") << "wordstyle.rtf" << "##AMT##" << "1,000.00" << 1
                                                 << QString::fromUtf8("Total \xC2\xA3 1,000.00");
    QTest::newRow("absent") << "declaration.rtf" << "##NONE##" << "X" << 0 << "Signed ##SIGNNAME##";
    QTest::newRow("emptied") << "declaration.rtf" << "##YREND##" << "" << 1 << "ending \n";
}

void ReportTemplateTest::placeholders()
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
    QCOMPARE(doc.content().count(("{\\*\\bkmkstart " + placeholder).toLatin1()),
             before.count(("{\\*\\bkmkstart " + placeholder).toLatin1()));
    QCOMPARE(doc.content().count(("{\\title " + placeholder).toLatin1()),
             before.count(("{\\title " + placeholder).toLatin1()));
}

void ReportTemplateTest::escaping_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("rtf");
    QTest::newRow("braces") << "A{B}C" << QByteArray("A\\{B\\}C");
    QTest::newRow("backslash") << "C:\\TDS\\par" << QByteArray("C:\\\\TDS\\\\par");
    QTest::newRow("rupee sign") << QString::fromUtf8("\xE2\x82\xB9 500") << QByteArray("\\u8377? 500");
    QTest::newRow("accented") << QString::fromUtf8("Jos\xC3\xA9") << QByteArray("Jos\\u233?");
    QTest::newRow("outside 32767 signed") << QString(QChar(0xFF01)) << QByteArray("\\u-255?");
    QTest::newRow("CR LF and LF") << "A\r\nB\nC" << QByteArray("A\\line B\\line C");
    QTest::newRow("apostrophe as is") << "O'BRIEN" << QByteArray("O'BRIEN");
}

void ReportTemplateTest::escaping()
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
    QString expected = value;
    expected.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QCOMPARE(doc.cellText(2, 1, 1), expected);
    QVERIFY(doc.plainText().contains(QLatin1String("ending ") + expected + QLatin1Char('\n')));
}

void ReportTemplateTest::cells_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("empty cell filled") << "declaration.rtf" << 1 << 1 << 1
                                       << QStringList{"Name|##SIGNNAME##", "PAN|NEW"};
    QTest::newRow("text replaced") << "declaration.rtf" << 2 << 1 << 0
                                   << QStringList{"Sl.|Identification|Amount", "NEW||"};
    QTest::newRow("formatted header cell") << "declaration.rtf" << 2 << 0 << 2
                                           << QStringList{"Sl.|Identification|NEW", "1||"};
    QTest::newRow("word processor cell in a group") << "wordstyle.rtf" << 1 << 1 << 0
                                                    << QStringList{"Head A|Head B", "NEW|"};
    QTest::newRow("word processor empty cell") << "wordstyle.rtf" << 1 << 1 << 1
                                               << QStringList{"Head A|Head B", "Old A|NEW"};
    QTest::newRow("second table") << "wordstyle.rtf" << 2 << 0 << 0 << QStringList{"NEW"};
}

void ReportTemplateTest::cells()
{
    QFETCH(QString, file);
    QFETCH(int, table);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QStringList, rows);
    RtfDocument doc = open(file);
    const int tables = doc.tableCount();
    QVERIFY(doc.setCellText(table, row, column, QStringLiteral("NEW")));
    QCOMPARE(rowTexts(doc, table), rows);
    QCOMPARE(doc.tableCount(), tables);
    QVERIFY(balanced(doc.content()));
    // writing twice leaves one value
    QVERIFY(doc.setCellText(table, row, column, QStringLiteral("NEW")));
    QCOMPARE(rowTexts(doc, table), rows);
    QVERIFY(!doc.setCellText(table, row, 9, QStringLiteral("X")));
    QVERIFY(!doc.setCellText(table, 9, column, QStringLiteral("X")));
    QVERIFY(!doc.setCellText(tables + 1, row, column, QStringLiteral("X")));
}

void ReportTemplateTest::insertRows_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("appended after the last row") << "declaration.rtf" << 2 << 2 << 3
                                                 << QStringList{"Sl.|Identification|Amount", "1||", "||", "||", "||"};
    QTest::newRow("before the data row") << "declaration.rtf" << 2 << 1 << 1
                                         << QStringList{"Sl.|Identification|Amount", "||", "1||"};
    QTest::newRow("word processor rows") << "wordstyle.rtf" << 1 << 2 << 2
                                         << QStringList{"Head A|Head B", "Old A|", "|", "|"};
    QTest::newRow("one-cell table") << "wordstyle.rtf" << 2 << 0 << 1 << QStringList{"", "Only cell"};
}

void ReportTemplateTest::insertRows()
{
    QFETCH(QString, file);
    QFETCH(int, table);
    QFETCH(int, position);
    QFETCH(int, count);
    QFETCH(QStringList, rows);
    RtfDocument doc = open(file);
    const int tables = doc.tableCount();
    const QStringList otherBefore = rowTexts(doc, table == 1 ? 2 : 1);
    QVERIFY(doc.insertRows(table, position, count));
    QCOMPARE(rowTexts(doc, table), rows);
    QCOMPARE(doc.tableCount(), tables);
    QCOMPARE(rowTexts(doc, table == 1 ? 2 : 1), otherBefore);
    QVERIFY(balanced(doc.content()));
    // the new rows take the columns of the row they copy and can be written
    for (int r = position; r < position + count; ++r) {
        QCOMPARE(doc.columnCount(table, r), doc.columnCount(table, rows.size() - 1));
        QVERIFY(doc.setCellText(table, r, 0, QStringLiteral("R%1").arg(r)));
        QCOMPARE(doc.cellText(table, r, 0), QStringLiteral("R%1").arg(r));
    }
    QVERIFY(!doc.insertRows(table, rows.size() + 1, 1));
    QVERIFY(!doc.insertRows(table, 0, 0));
}

void ReportTemplateTest::deleteRow_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("position");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<int>("tables");

    QTest::newRow("data row") << "declaration.rtf" << 2 << 1 << QStringList{"Sl.|Identification|Amount"} << 2;
    QTest::newRow("first row") << "declaration.rtf" << 1 << 0 << QStringList{"PAN|"} << 2;
    QTest::newRow("word processor last row") << "wordstyle.rtf" << 1 << 1 << QStringList{"Head A|Head B"} << 2;
    QTest::newRow("only row: the table goes") << "wordstyle.rtf" << 2 << 0 << QStringList{} << 1;
}

void ReportTemplateTest::deleteRow()
{
    QFETCH(QString, file);
    QFETCH(int, table);
    QFETCH(int, position);
    QFETCH(QStringList, rows);
    QFETCH(int, tables);
    RtfDocument doc = open(file);
    QVERIFY(doc.deleteRow(table, position));
    QCOMPARE(rowTexts(doc, table), rows);
    QCOMPARE(doc.tableCount(), tables);
    QVERIFY(balanced(doc.content()));
    QVERIFY(!doc.deleteRow(table, 5));
}

void ReportTemplateTest::rowNumbersFollowEdits()
{
    RtfDocument doc = open(QStringLiteral("wordstyle.rtf"));
    QVERIFY(doc.insertRows(1, 2, 2));
    // each row carries its definition twice, as the word processor wrote it
    QByteArray rtf = doc.content();
    QCOMPARE(rtf.count("\\irow2"), 2);
    QCOMPARE(rtf.count("\\irow3"), 2);
    QCOMPARE(rtf.count("\\irowband3"), 2);
    const qsizetype lastRow = rtf.indexOf("\\irow3");
    // the paragraph between the two tables
    const qsizetype between = rtf.indexOf("\\pard\\plain\\par");
    QCOMPARE(rtf.left(between).count("\\lastrow"), 2);
    QVERIFY(rtf.indexOf("\\lastrow", 0) > lastRow);

    QVERIFY(doc.deleteRow(1, 3));
    QVERIFY(doc.deleteRow(1, 1));
    rtf = doc.content();
    QCOMPARE(rtf.count("\\irow2"), 0);
    QCOMPARE(rtf.left(rtf.indexOf("\\pard\\plain\\par")).count("\\lastrow"), 2);
    QCOMPARE(rtf.mid(rtf.indexOf("\\pard\\plain\\par")).count("\\lastrow"), 2);
    QVERIFY(balanced(rtf));
}

void ReportTemplateTest::reportObjectFillsAndSaves()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    ReportObject report;
    QVERIFY(report.OpenMasterFileOnly(fixture(QStringLiteral("declaration.rtf"))));
    report.NewSetText(QStringLiteral("##SIGNNAME##"), QStringLiteral("D'SOUZA {JR}"));
    QVERIFY(!report.FindTable(0));
    QVERIFY(!report.FindTable(3));
    QVERIFY(report.FindTable(2));
    report.InsertRows(2, 2);
    report.setTextMatrix(1, 1, QStringLiteral("SAVINGS"));
    report.setTextMatrix(3, 2, QString::fromUtf8("\xE2\x82\xB9 1,000.00"));
    QCOMPARE(report.TextMatrix(3, 2), QString::fromUtf8("\xE2\x82\xB9 1,000.00"));
    QVERIFY(report.FindTable(1));
    report.deleteRow(1);
    QCOMPARE(report.TextMatrix(0, 1), QStringLiteral("D'SOUZA {JR}"));

    const QString saved = dir.filePath(QStringLiteral("out/Frm15G_135.rtf"));
    QVERIFY(report.SaveMasterFile(saved));
    report.OpenFileOnly(saved);   // no screen in a test: only logged

    ReportObject reread;
    QVERIFY(reread.OpenMasterFileOnly(saved));
    QVERIFY(reread.FindTable(2));
    QCOMPARE(reread.document().rowCount(2), 4);
    QCOMPARE(reread.TextMatrix(1, 1), QStringLiteral("SAVINGS"));
    QCOMPARE(reread.TextMatrix(3, 2), QString::fromUtf8("\xE2\x82\xB9 1,000.00"));
    QVERIFY(reread.FindTable(1));
    QCOMPARE(reread.document().rowCount(1), 1);
    QVERIFY(reread.reportText().contains(QStringLiteral("Signed D'SOUZA {JR}")));
    QVERIFY(balanced(reread.document().content()));
}

void ReportTemplateTest::missingTemplate()
{
    ReportObject report;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot open .*nothing.rtf")));
    QVERIFY(!report.OpenMasterFileOnly(fixture(QStringLiteral("nothing.rtf"))));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not a rich-text document")));
    QVERIFY(!report.OpenMasterFileOnly(fixture(QStringLiteral("../../ReportTemplateTest.cpp"))));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("table 1 not found")));
    QVERIFY(!report.FindTable(1));
}

void ReportTemplateTest::wordProcessorTemplateShown()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    ReportObject report;
    report.setTempFolder(dir.path());
    report.newreportnew(fixture(QStringLiteral("challan.doc")));
    report.SetText(QStringLiteral("##Assessment Year##"), QStringLiteral("Assessmant Year"));
    report.SetText(QStringLiteral("##3##"), QStringLiteral("2024-25"));
    report.SetText(QStringLiteral("##4##"), QStringLiteral("PNEA12345B"));
    report.SetText(QStringLiteral("##5##"), QStringLiteral("ACME {INDIA}"));
    report.SetText(QStringLiteral("##234E SEC##"), QStringLiteral("234E"));
    report.SetText(QStringLiteral("##234E##"), QStringLiteral("200.00"));
    report.ShowReport();
    const QString shown = dir.filePath(QStringLiteral("challan.rtf"));
    QCOMPARE(report.lastOutput(), shown);
    RtfDocument saved;
    QVERIFY(saved.load(shown));
    const QString text = saved.plainText();
    QVERIFY2(text.contains(QStringLiteral("Assessmant Year 2024-25\n")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("TAN PNEA12345B  Name ACME {INDIA}\n")));
    QVERIFY(text.contains(QStringLiteral("Section 234E: 200.00\n")));
    QVERIFY(text.contains(QStringLiteral("Counterfoil TAN ##29##")));
    QCOMPARE(report.reportText(), text);
    QVERIFY(QFile::exists(fixture(QStringLiteral("challan.doc"))));
}

TDS_TEST(ReportTemplateTest)
#include "ReportTemplateTest.moc"
