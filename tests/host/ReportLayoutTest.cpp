// Line-table layout as the plain-text rendering shows it.
#include "TestRegistry.h"

#include "host/report/ReportObject.h"

#include <QTest>

namespace {

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
        QTest::newRow("word longer than a line cut") << QList<Row>{{{"abcdefghij"}, {4}}} << QStringList{"abcd", "efgh", "ij"};
        QTest::newRow("title centred, codes dropped, CR LF breaks")
            << QList<Row>{{{B + "FORM NO. 15C" + b + "\r\n[See Rule " + U + "29B" + u + "]"}, {78}, {1}}}
            << QStringList{at({{33, "FORM NO. 15C"}}), at({{32, "[See Rule 29B]"}})};
        QTest::newRow("numbered label hangs under its text")
            << QList<Row>{{{"1. Name of the Individual (truck owners)", B + ": RAMESH KUMAR" + b}, {30, 48}, {}, "X. "}}
            << QStringList{at({{0, "1. Name of the Individual"}, {30, ": RAMESH KUMAR"}}), "   (truck owners)"};
        QTest::newRow("header then items: closed, no line above an item")
            << QList<Row>{vehicle({"S. No.", "Heavy goods carriage/truck Registration Number", "Date of Registration"}, true),
                          vehicle({"1.", "KA01AB1234", "01/04/2020"}, false)}
            << QStringList{Rule, "|  S. No. | Heavy goods carriage/truck Registration Number|     Date of      |",
                           "|         |                                               |   Registration   |", Rule,
                           "| 1.      | KA01AB1234                                    | 01/04/2020       |", Rule};
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
};

TDS_TEST(ReportLayoutTest)
#include "ReportLayoutTest.moc"
