// Line-table layout as the plain-text rendering shows it.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QTest>

namespace {

struct Row
{
    QStringList values;
    QList<int> widths;
    QList<int> alignments;
    QString prefix;
    QString left = QStringLiteral("0");
    QString right = QStringLiteral("0");
    QString top = QStringLiteral("0");
    QString bottom = QStringLiteral("0");
};

// The forms size their arrays once, 0..3, and leave index 0 empty.
void write(ReportObject &report, const Row &row)
{
    QVariantList values(4);
    QList<qint16> widths(4, 0);
    QList<qint32> alignments(4, 0);
    QStringList firstTexts(4);
    QStringList prefixes(4);
    for (int i = 0; i < 3; ++i) {
        values[i + 1] = row.values.value(i);
        widths[i + 1] = qint16(row.widths.value(i));
        alignments[i + 1] = row.alignments.value(i);
    }
    prefixes[1] = row.prefix;
    QString l = row.left, r = row.right, t = row.top, b = row.bottom;
    bool tableRow = true;
    report.WriteToReport(values, widths, alignments, firstTexts, prefixes, l, r, t, b, tableRow);
}

// A line built from texts at positions.
QString at(std::initializer_list<std::pair<int, QString>> parts)
{
    QString line;
    for (const auto &[position, text] : parts) {
        if (line.size() < position)
            line += QString(position - line.size(), QLatin1Char(' '));
        line.replace(position, text.size(), text);
    }
    return line;
}

const QString B = ReportCodes::boldOn();
const QString b = ReportCodes::boldOff();
const QString U = ReportCodes::underlineOn();
const QString u = ReportCodes::underlineOff();

Row header()
{
    Row r{{QStringLiteral("S. No."), QStringLiteral("Heavy goods carriage/truck Registration Number"),
           QStringLiteral("Date of Registration")},
          {10, 48, 20}, {1, 1, 1}, {}};
    r.left = QStringLiteral("111");
    r.right = QStringLiteral("001");
    r.top = QStringLiteral("111");
    r.bottom = QStringLiteral("111");
    return r;
}

Row item(const QString &number, const QString &registration, const QString &date)
{
    Row r{{number, registration, date}, {10, 48, 20}, {0, 0, 0}, {}};
    r.left = QStringLiteral("111");
    r.right = QStringLiteral("001");
    r.top = QStringLiteral("0");
    r.bottom = QStringLiteral("111");
    return r;
}

const QString TableRule = QStringLiteral("+---------+-----------------------------------------------+------------------+");

} // namespace

Q_DECLARE_METATYPE(QList<Row>)

class ReportLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void wrap_data();
    void wrap();
    void rows_data();
    void rows();
    void paragraphs();
    void linesStayWithinWidth_data();
    void linesStayWithinWidth();
};

void ReportLayoutTest::wrap_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("rest");
    QTest::addColumn<QStringList>("pieces");

    QTest::newRow("fits exactly") << "abc def" << 7 << 7 << QStringList{"abc def"};
    QTest::newRow("breaks at the blank") << "abc def" << 6 << 6 << QStringList{"abc", "def"};
    QTest::newRow("blank just after a full piece") << "abcdef ghi" << 6 << 6 << QStringList{"abcdef", "ghi"};
    QTest::newRow("blanks at a break dropped") << "abc   def" << 4 << 4 << QStringList{"abc", "def"};
    QTest::newRow("paragraph indent kept") << "   abc def" << 7 << 7 << QStringList{"   abc", "def"};
    QTest::newRow("word longer than a line cut") << "abcdefghij" << 4 << 4 << QStringList{"abcd", "efgh", "ij"};
    QTest::newRow("narrower continuation") << "aa bb cc dd" << 5 << 2 << QStringList{"aa bb", "cc", "dd"};
    QTest::newRow("empty") << "" << 5 << 5 << QStringList{""};
}

void ReportLayoutTest::wrap()
{
    QFETCH(QString, text);
    QFETCH(int, first);
    QFETCH(int, rest);
    QFETCH(QStringList, pieces);
    QStringList got;
    for (const StyledText &piece : wrapStyledText(parseCellText(text).first(), first, rest)) {
        QString s;
        for (const StyledChar &c : piece)
            s.append(c.ch);
        got.append(s);
    }
    QCOMPARE(got, pieces);
}

void ReportLayoutTest::rows_data()
{
    QTest::addColumn<QList<Row>>("input");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("title centred, codes dropped, CR LF breaks")
        << QList<Row>{{{B + "FORM NO. 15C" + b + "\r\n[See Rule 29B]"}, {78}, {1}, {}}}
        << QStringList{at({{33, "FORM NO. 15C"}}), at({{32, "[See Rule 29B]"}})};

    QTest::newRow("numbered label hangs under its text")
        << QList<Row>{{{"1. Name of the Individual (truck owners)", B + ": RAMESH KUMAR" + b}, {30, 48}, {0, 0}, "X. "}}
        << QStringList{at({{0, "1. Name of the Individual"}, {30, ": RAMESH KUMAR"}}), "   (truck owners)"};

    QTest::newRow("without prefix continuation is flush")
        << QList<Row>{{{"1. Name of the Individual (truck owners)", ": X"}, {30, 48}, {0, 0}, ""}}
        << QStringList{at({{0, "1. Name of the Individual"}, {30, ": X"}}), "(truck owners)"};

    QTest::newRow("item prefix over the full width")
        << QList<Row>{{{"(d) that the company fulfils all the conditions laid down in rule 29B of the "
                        "Income-tax Rules, 1962."},
                       {78}, {0}, "(d) "}}
        << QStringList{"(d) that the company fulfils all the conditions laid down in rule 29B of the",
                       "    Income-tax Rules, 1962."};

    QTest::newRow("value wraps inside its own column")
        << QList<Row>{{{"4. Address", ": 12, MG ROAD, NEAR THE OLD BUS STAND, BANGALORE 560001"}, {30, 48}, {0, 0}, "X. "}}
        << QStringList{at({{0, "4. Address"}, {30, ": 12, MG ROAD, NEAR THE OLD BUS STAND, BANGALORE"}}),
                       at({{30, "560001"}})};

    QTest::newRow("zero-width first column takes no space")
        << QList<Row>{{{"HIDDEN", "MIDDLE", "RIGHT"}, {0, 40, 38}, {0, 0, 2}, ""}}
        << QStringList{at({{0, "MIDDLE"}, {73, "RIGHT"}})};

    QTest::newRow("signature block, third column 0")
        << QList<Row>{{{"Place PUNE\r\nDate 01/04/2024", "...............\r\nSignature", "IGNORED"}, {50, 28, 0}, {0, 2, 0}, ""}}
        << QStringList{at({{0, "Place PUNE"}, {63, "..............."}}), at({{0, "Date 01/04/2024"}, {69, "Signature"}})};

    QTest::newRow("left, centre and right")
        << QList<Row>{{{"L", "C", "R"}, {26, 26, 26}, {0, 1, 2}, ""}}
        << QStringList{at({{0, "L"}, {38, "C"}, {77, "R"}})};

    QTest::newRow("unbordered neighbours keep a blank between them")
        << QList<Row>{{{"ABCDEFGHIJ KLM", "XYZ"}, {10, 10}, {0, 0}, ""}}
        << QStringList{"ABCDEFGHI XYZ", "J KLM"};

    QTest::newRow("underline codes dropped")
        << QList<Row>{{{"Financial Year " + U + "2023-24" + u}, {78}, {0}, ""}}
        << QStringList{"Financial Year 2023-24"};

    QTest::newRow("header then items: closed, no line above an item")
        << QList<Row>{header(), item("1.", "KA01AB1234", "01/04/2020"), item("2.", "", "")}
        << QStringList{TableRule,
                       "|  S. No. | Heavy goods carriage/truck Registration Number|     Date of      |",
                       "|         |                                               |   Registration   |",
                       TableRule,
                       "| 1.      | KA01AB1234                                    | 01/04/2020       |",
                       TableRule,
                       "| 2.      |                                               |                  |",
                       TableRule};

    QTest::newRow("item rows alone are open at the top")
        << QList<Row>{item("1.", "A", "B")}
        << QStringList{"| 1.      | A                                             | B                |", TableRule};

    QTest::newRow("two headers share the line between them")
        << QList<Row>{header(), header()}
        << QStringList{TableRule,
                       "|  S. No. | Heavy goods carriage/truck Registration Number|     Date of      |",
                       "|         |                                               |   Registration   |",
                       TableRule,
                       "|  S. No. | Heavy goods carriage/truck Registration Number|     Date of      |",
                       "|         |                                               |   Registration   |",
                       TableRule};

    Row shortBorders = item("1.", "A", "B");
    shortBorders.left = shortBorders.right = shortBorders.top = shortBorders.bottom = QStringLiteral("1");
    QTest::newRow("border texts shorter than the columns draw nothing")
        << QList<Row>{shortBorders}
        << QStringList{at({{0, "1."}, {10, "A"}, {58, "B"}})};

    Row partial{{"AB", "CD"}, {10, 10}, {0, 0}, ""};
    partial.top = QStringLiteral("01");
    partial.right = QStringLiteral("10");
    QTest::newRow("borders per column")
        << QList<Row>{partial}
        << QStringList{"          ----------", "AB       |CD"};

    Row narrow{{"ABCDEFGHIJKLMNOPQRSTUVWXYZ"}, {10}, {0}, ""};
    QTest::newRow("word cut at the column width")
        << QList<Row>{narrow} << QStringList{"ABCDEFGHIJ", "KLMNOPQRST", "UVWXYZ"};

    QTest::newRow("row of empty cells is one blank line")
        << QList<Row>{{{"", ""}, {30, 48}, {0, 0}, ""}} << QStringList{""};
}

void ReportLayoutTest::rows()
{
    QFETCH(QList<Row>, input);
    QFETCH(QStringList, expected);
    ReportObject report;
    report.NewReport();
    report.createtable(1, 3);
    for (const Row &row : input)
        write(report, row);
    QCOMPARE(report.reportText(), expected.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void ReportLayoutTest::paragraphs()
{
    ReportObject report;
    report.NewReport();
    report.printtext(QStringLiteral("Sir,"));
    report.printtext();
    report.printtext(QStringLiteral("    I hereby declare that what is stated in this application is correct and "
                                    "complete in every respect."));
    QCOMPARE(report.reportText(),
             QStringLiteral("Sir,\n"
                            "\n"
                            "    I hereby declare that what is stated in this application is correct and\n"
                            "complete in every respect.\n"));

    // the same paragraph on a 130-position report stays on one line
    report.setSetCol130(true);
    report.NewReport();
    report.printtext(QStringLiteral("    I hereby declare that what is stated in this application is correct and "
                                    "complete in every respect."));
    QCOMPARE(report.reportText().count(QLatin1Char('\n')), 1);
    report.setSetCol130(false);
    report.NewReport();
    QCOMPARE(report.reportText(), QString());
}

void ReportLayoutTest::linesStayWithinWidth_data()
{
    QTest::addColumn<bool>("wide");
    QTest::newRow("78") << false;
    QTest::newRow("130") << true;
}

void ReportLayoutTest::linesStayWithinWidth()
{
    QFETCH(bool, wide);
    const int width = wide ? 130 : 78;
    ReportObject report;
    report.setSetCol130(wide);
    report.NewReport();
    const QString words = QStringLiteral("Heavy goods carriage ") + QString(140, QLatin1Char('W'))
                          + QStringLiteral(" and a few more words to wrap around");
    const QList<QList<int>> widthSets{{width}, {30, width - 30}, {10, 48, width - 58}, {width - 1, 1},
                                      {1, 1, width - 2}, {width + 20}, {60, 60, 60}};
    for (const QList<int> &widths : widthSets) {
        for (int pattern = 0; pattern < 4; ++pattern) {
            Row row{{words, words, words}, widths, {pattern % 3, 1, 2}, pattern % 2 ? "(a) " : ""};
            const QString all(3, QLatin1Char('1'));
            row.left = pattern & 1 ? all : QStringLiteral("0");
            row.right = pattern & 2 ? all : QStringLiteral("001");
            row.top = row.bottom = all;
            write(report, row);
        }
    }
    report.printtext(words + words);
    const QStringList lines = report.reportText().split(QLatin1Char('\n'));
    int longest = 0;
    for (const QString &line : lines)
        longest = std::max(longest, int(line.size()));
    QCOMPARE(longest, width);
}

TDS_TEST(ReportLayoutTest)
#include "ReportLayoutTest.moc"
