// Line-table layout as the plain-text rendering shows it.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QTest>

namespace {

// One WriteToReport call; a row without widths is a printtext paragraph.
struct Row
{
    QStringList values{};
    QList<int> widths{};
    QList<int> alignments{};
    QString prefix{};
    QStringList borders{"0", "0", "0", "0"}; // left, right, top, bottom
};

void write(ReportObject &report, const Row &row)
{
    if (row.widths.isEmpty()) {
        if (row.values.isEmpty())
            report.printtext();
        else
            report.printtext(row.values.first());
        return;
    }
    // The forms size their arrays 0..3 and leave index 0 empty.
    QVariantList values(4);
    QList<qint16> widths(4, 0);
    QList<qint32> alignments(4, 0);
    QStringList firstTexts(4), prefixes(4);
    for (int i = 0; i < row.widths.size(); ++i) {
        values[i + 1] = row.values.value(i);
        widths[i + 1] = qint16(row.widths[i]);
        alignments[i + 1] = row.alignments.value(i);
    }
    prefixes[1] = row.prefix;
    QStringList b = row.borders;
    bool tableRow = true;
    report.WriteToReport(values, widths, alignments, firstTexts, prefixes, b[0], b[1], b[2], b[3], tableRow);
}

// A line built from texts at positions.
QString at(std::initializer_list<std::pair<int, QString>> parts)
{
    QString line;
    for (const auto &[position, text] : parts) {
        line = line.leftJustified(position, QLatin1Char(' '));
        line.replace(position, text.size(), text);
    }
    return line;
}

// The vehicle table of Form 15I: header rows centred and closed, item rows open at the top.
Row vehicle(const QStringList &texts, bool header)
{
    return {texts, {10, 48, 20}, QList<int>(3, header ? 1 : 0), {}, {"111", "001", header ? "111" : "0", "111"}};
}

const QString Rule = QStringLiteral("+---------+-----------------------------------------------+------------------+");

} // namespace

Q_DECLARE_METATYPE(QList<Row>)

class ReportLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void rows_data()
    {
        QTest::addColumn<QList<Row>>("input");
        QTest::addColumn<QStringList>("expected");
        const QString B = ReportCodes::boldOn(), b = ReportCodes::boldOff();
        const QString U = ReportCodes::underlineOn(), u = ReportCodes::underlineOff();

        QTest::newRow("breaks at the blank") << QList<Row>{{{"abc def"}, {6}}} << QStringList{"abc", "def"};
        QTest::newRow("paragraph indent kept") << QList<Row>{{{"   abc def"}, {7}}} << QStringList{"   abc", "def"};
        QTest::newRow("word longer than a line cut") << QList<Row>{{{"abcdefghij"}, {4}}} << QStringList{"abcd", "efgh", "ij"};
        QTest::newRow("empty cells make one blank line") << QList<Row>{{{"", ""}, {30, 48}}} << QStringList{""};

        QTest::newRow("title centred, codes dropped, CR LF breaks")
            << QList<Row>{{{B + "FORM NO. 15C" + b + "\r\n[See Rule " + U + "29B" + u + "]"}, {78}, {1}}}
            << QStringList{at({{33, "FORM NO. 15C"}}), at({{32, "[See Rule 29B]"}})};
        QTest::newRow("numbered label hangs under its text")
            << QList<Row>{{{"1. Name of the Individual (truck owners)", B + ": RAMESH KUMAR" + b}, {30, 48}, {}, "X. "}}
            << QStringList{at({{0, "1. Name of the Individual"}, {30, ": RAMESH KUMAR"}}), "   (truck owners)"};
        QTest::newRow("item prefix over the full width")
            << QList<Row>{{{"(d) that the company fulfils all the conditions laid down in rule 29B of the "
                            "Income-tax Rules, 1962."}, {78}, {}, "(d) "}}
            << QStringList{"(d) that the company fulfils all the conditions laid down in rule 29B of the",
                           "    Income-tax Rules, 1962."};
        QTest::newRow("value wraps inside its own column")
            << QList<Row>{{{"4. Address", ": 12, MG ROAD, NEAR THE OLD BUS STAND, BANGALORE 560001"}, {30, 48}, {}, "X. "}}
            << QStringList{at({{0, "4. Address"}, {30, ": 12, MG ROAD, NEAR THE OLD BUS STAND, BANGALORE"}}),
                           at({{30, "560001"}})};
        QTest::newRow("signature block, third column 0")
            << QList<Row>{{{"Place PUNE\r\nDate 01/04/2024", "...............\r\nSignature", "IGNORED"}, {50, 28, 0}, {0, 2}}}
            << QStringList{at({{0, "Place PUNE"}, {63, "..............."}}), at({{0, "Date 01/04/2024"}, {69, "Signature"}})};
        QTest::newRow("unbordered neighbours keep a blank between them")
            << QList<Row>{{{"ABCDEFGHIJ KLM", "XYZ"}, {10, 10}}} << QStringList{"ABCDEFGHI XYZ", "J KLM"};
        QTest::newRow("header then items: closed, no line above an item")
            << QList<Row>{vehicle({"S. No.", "Heavy goods carriage/truck Registration Number", "Date of Registration"}, true),
                          vehicle({"1.", "KA01AB1234", "01/04/2020"}, false), vehicle({"2."}, false)}
            << QStringList{Rule, "|  S. No. | Heavy goods carriage/truck Registration Number|     Date of      |",
                           "|         |                                               |   Registration   |", Rule,
                           "| 1.      | KA01AB1234                                    | 01/04/2020       |", Rule,
                           "| 2.      |                                               |                  |", Rule};
        QTest::newRow("border texts shorter than the columns draw nothing")
            << QList<Row>{{{"1.", "A", "B"}, {10, 48, 20}, {}, {}, {"1", "1", "1", "1"}}}
            << QStringList{at({{0, "1."}, {10, "A"}, {58, "B"}})};
        QTest::newRow("borders per column")
            << QList<Row>{{{"AB", "CD"}, {10, 10}, {}, {}, {"0", "10", "01", "0"}}}
            << QStringList{"          ----------", "AB       |CD"};
    }

    void rows()
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

    void linesStayWithinWidth()
    {
        const QString words = "Heavy goods carriage " + QString(140, QLatin1Char('W')) + " and a few more words";
        for (int width : {78, 130}) {
            ReportObject report;
            report.setSetCol130(width == 130);
            report.NewReport();
            for (const QList<int> &widths : QList<QList<int>>{{width}, {30, width - 30}, {10, 48, width - 58},
                                                             {width - 1, 1}, {1, 1, width - 2}, {width + 20}, {60, 60, 60}}) {
                for (int pattern = 0; pattern < 4; ++pattern) {
                    write(report, {{words, words, words}, widths, {pattern % 3, 1, 2}, pattern % 2 ? "(a) " : "",
                                   {pattern & 1 ? "111" : "0", pattern & 2 ? "111" : "001", "111", "111"}});
                }
            }
            report.printtext(words + words);
            int longest = 0;
            for (const QString &line : report.reportText().split(QLatin1Char('\n')))
                longest = std::max(longest, int(line.size()));
            QCOMPARE(longest, width);
        }
    }
};

TDS_TEST(ReportLayoutTest)
#include "ReportLayoutTest.moc"
