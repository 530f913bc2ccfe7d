// Template printing: the fill map as the report object receives it, the stops before any
// report call, the temporary copy removed whatever happens; printed amounts.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "host/DataObject.h"
#include "host/ServiceRegistry.h"
#include "host/TextHelpers.h"
#include "host/report/ReportObject.h"
#include "shared/TemplatePrint.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace {

const char *const TemplateRtf =
    "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}\n"
    "\\pard\\qc\\b FORM NO. 15G\\b0\\par\n"
    "\\pard Name ##NAME##\\par\n"
    "\\trowd\\cellx3000\\cellx6000\\pard\\intbl PAN\\cell\\cell\\row\n"
    "\\trowd\\cellx3000\\cellx6000\\pard\\intbl Status\\cell\\cell\\row\n"
    "\\pard\\par\n"
    "\\trowd\\cellx1000\\cellx6000\\pard\\intbl Sl.\\cell Identification\\cell\\row\n"
    "\\trowd\\cellx1000\\cellx6000\\pard\\intbl\\cell\\cell\\row\n"
    "\\pard ##NIL##\\par\n"
    "\\pard Place: ##PLACE##\\par}\n";

QList<QStringList> scheduleRows(int count)
{
    QList<QStringList> rows;
    for (int r = 1; r <= count; ++r)
        rows.append({QStringLiteral("R%1C0").arg(r), QStringLiteral("R%1C1").arg(r)});
    return rows;
}

TemplateFill fillWith(int rows)
{
    TemplateFill fill;
    fill.text(QStringLiteral("##NAME##"), QStringLiteral("RAVI KUMAR"));
    fill.cell(1, 0, 1, QStringLiteral("ABCPK1234L"));
    fill.cell(1, 1, 1, QStringLiteral("INDIVIDUAL"));
    fill.schedule(2, 1, scheduleRows(rows), QStringLiteral("##NIL##"));
    fill.text(QStringLiteral("##PLACE##"), QStringLiteral("PUNE"));
    return fill;
}

} // namespace

class TemplatePrintTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<RecordingReportObject> m_report;
    int m_mode = 2;

    IDataObject *d() const { return modbase::dataObject(); }
    QString templateFile() const { return d()->ExePath() + QStringLiteral("/Data/Form15G.rtf"); }
    QString output() const { return d()->vTmpPath() + QStringLiteral("Frm15G.rtf"); }

    bool print(const TemplateFill &fill, ScriptedDialogs &dialogs,
               const QString &templatePath = QStringLiteral("/Data/Form15G.rtf"))
    {
        return TemplatePrint::print(QStringLiteral("frm15gNew"), templatePath, QStringLiteral("Frm15G.rtf"),
                                    QStringLiteral("Form15G_DEMO01_2024-25"), fill, dialogs);
    }

    static void writeFile(const QString &path, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    void useReportObject(bool real)
    {
        modbase::resetForTests();
        if (real)
            ServiceRegistry::registerFactory(QString::fromLatin1(ProgId::ReportObject), [] { return createReportObject(); });
        else
            m_report = RecordingReportObject::install();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        DataObject::setFormInfoPrompt([this] { return m_mode; });
        useReportObject(false);
        writeFile(templateFile(), TemplateRtf);
    }

    void cleanupTestCase()
    {
        DataObject::setFormInfoPrompt({});
        modbase::resetForTests();
        RecordingReportObject::uninstall();
    }

    void init()
    {
        m_mode = 2;
        m_report->clear();
        TestDatabase::removeLog();
    }

    void fillInOrder_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<QStringList>("reshape");   // what is done to the schedule table first
        QTest::addColumn<int>("writes");
        QTest::addColumn<QString>("lastWrite");
        QTest::addColumn<QString>("nil");
        QTest::newRow("nil") << 0 << QStringList{"deleteRow:1"} << 0 << QString() << "---NIL---";
        QTest::newRow("one row: the data row as it is") << 1 << QStringList() << 2 << "TextMatrix:1,1=R1C1" << "";
        QTest::newRow("three rows") << 3 << QStringList{"InsertRows:1,2"} << 6 << "TextMatrix:3,1=R3C1" << "";
        QTest::newRow("ten rows") << 10 << QStringList{"InsertRows:1,9"} << 20 << "TextMatrix:10,1=R10C1" << "";
    }
    void fillInOrder()
    {
        QFETCH(int, rows);
        QFETCH(QStringList, reshape);
        QFETCH(int, writes);
        QFETCH(QString, lastWrite);
        QFETCH(QString, nil);
        ScriptedDialogs dialogs;
        QVERIFY(print(fillWith(rows), dialogs));
        QVERIFY(dialogs.asked.isEmpty());

        QStringList calls = m_report->calls();
        const qsizetype from = calls.indexOf(QStringLiteral("FindTable:2"));
        const qsizetype to = calls.indexOf(QStringLiteral("NewSetText:##NIL##=") + nil);
        QVERIFY2(from > 0 && to > from, qPrintable(calls.join(QLatin1Char('\n'))));
        const QStringList schedule = calls.mid(from + 1, to - from - 1);
        calls.remove(from + 1, to - from - 1);
        QCOMPARE(calls, (QStringList{
                            "WinModeReport:true", "OpenMasterFileOnly:" + templateFile(),
                            "setDocumentName:Form15G_DEMO01_2024-25",
                            "NewSetText:##NAME##=RAVI KUMAR",
                            "FindTable:1",
                            "TextMatrix:0,1=ABCPK1234L",
                            "TextMatrix:1,1=INDIVIDUAL",
                            "FindTable:2",
                            "NewSetText:##NIL##=" + nil,
                            "NewSetText:##PLACE##=PUNE",
                            "SaveMasterFile:" + output(),
                            "OpenFileOnly:" + output(),
                        }));

        QCOMPARE(schedule.mid(0, reshape.size()), reshape);
        const QStringList cells = schedule.mid(reshape.size());
        QCOMPARE(cells.size(), writes);
        if (writes > 0) {
            // row by row from the data row on, each row's cells left to right
            QCOMPARE(cells.first(), QStringLiteral("TextMatrix:1,0=R1C0"));
            QCOMPARE(cells.at(1), QStringLiteral("TextMatrix:1,1=R1C1"));
            QCOMPARE(cells.last(), lastWrite);
        }
    }

    void nothingPrinted_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("templatePath");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("cancelled") << 1 << "/Data/Form15G.rtf" << QStringList();
        QTest::newRow("template missing") << 2 << "/Data/Form15X.rtf" << QStringList{"Template File is missing."};
        QTest::newRow("template missing, printer") << 3 << "/Data/Form15X.rtf"
                                                   << QStringList{"Template File is missing."};
    }
    void nothingPrinted()
    {
        QFETCH(int, mode);
        QFETCH(QString, templatePath);
        QFETCH(QStringList, messages);
        m_mode = mode;
        ScriptedDialogs dialogs;
        QVERIFY(!print(fillWith(3), dialogs, templatePath));
        QStringList asked;
        for (const ScriptedDialogs::Asked &a : std::as_const(dialogs.asked))
            asked.append(a.kind + QLatin1Char(':') + a.message);
        QStringList expected;
        for (const QString &m : messages)
            expected.append(QStringLiteral("inform:") + m);
        QCOMPARE(asked, expected);
        QCOMPARE(m_report->calls(), QStringList());
        QVERIFY(TestDatabase::logText().isEmpty());
    }

    void temporaryCopyRemoved_data()
    {
        QTest::addColumn<bool>("real");
        QTest::addColumn<QByteArray>("templateContent");
        QTest::addColumn<bool>("shown");
        QTest::newRow("recorded") << false << QByteArray(TemplateRtf) << true;
        QTest::newRow("report object") << true << QByteArray(TemplateRtf) << true;
        QTest::newRow("report object, template unreadable") << true << QByteArray("not rich text") << false;
    }
    void temporaryCopyRemoved()
    {
        QFETCH(bool, real);
        QFETCH(QByteArray, templateContent);
        QFETCH(bool, shown);
        writeFile(templateFile(), templateContent);
        writeFile(output(), "left over from an earlier print");
        const QString pdf = d()->vTmpPath() + QStringLiteral("Form15G_DEMO01_2024-25.pdf");
        QFile::remove(pdf);
        useReportObject(real);
        ScriptedDialogs dialogs;
        if (!shown)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not a rich-text document")));
        const bool printed = print(fillWith(3), dialogs);
        writeFile(templateFile(), TemplateRtf);
        useReportObject(false);

        QCOMPARE(printed, shown);
        QVERIFY(!QFile::exists(output()));
        QVERIFY(dialogs.asked.isEmpty());
        // a failed step is logged where it happened
        const QString log = TestDatabase::logText();
        QCOMPARE(log.contains(QStringLiteral("\tfrm15gNew\tcmdshowrep_Click")), !shown);
        if (!real || !shown)
            return;
        // the report object read the copy before it went
        QVERIFY(QFile::exists(pdf));
        if (!QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QProcess p;
            p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
            QVERIFY(p.waitForFinished(30000));
            const QString text = QString::fromUtf8(p.readAllStandardOutput());
            for (const char *seen : {"Name RAVI KUMAR", "ABCPK1234L", "R3C1", "Place: PUNE"})
                QVERIFY2(text.contains(QLatin1String(seen)), qPrintable(text));
            QVERIFY(!text.contains(QLatin1String("##")));
        }
        QFile::remove(pdf);
    }

    void indianAmounts_data()
    {
        QTest::addColumn<QString>("text");   // given as text; a number unless it starts with "'"
        QTest::addColumn<QString>("printed");
        QTest::newRow("lakh") << "150000" << "1,50,000.00";
        QTest::newRow("crore with paise") << "12345678.5" << "1,23,45,678.50";
        QTest::newRow("negative thousand") << "-1234" << "-1,234.00";
        QTest::newRow("hundreds stay ungrouped") << "999" << "999.00";
        QTest::newRow("thousand") << "1000" << "1,000.00";
        QTest::newRow("ten crore") << "100000000" << "10,00,00,000.00";
        QTest::newRow("zero") << "0" << "0.00";
        QTest::newRow("half a paisa up") << "1.005" << "1.01";
        QTest::newRow("negative rounding to nothing") << "-0.004" << "0.00";
        QTest::newRow("text: empty") << "'" << "0.00";
        QTest::newRow("text: not a number") << "'ABC" << "0.00";
        QTest::newRow("text: leading number") << "'12abc" << "12.00";
        QTest::newRow("text: blanks") << "' 42.5 " << "42.50";
        QTest::newRow("text: already grouped") << "'1,50,000.00" << "1,50,000.00";
        QTest::newRow("text: fraction only") << "'.5" << "0.50";
        QTest::newRow("text: negative") << "'-1234" << "-1,234.00";
    }
    void indianAmounts()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        if (text.startsWith(QLatin1Char('\'')))
            QCOMPARE(TextHelpers::indianAmount(text.mid(1)), printed);
        else
            QCOMPARE(TextHelpers::indianAmount(text.toDouble()), printed);
    }
};

TDS_TEST(TemplatePrintTest)
#include "TemplatePrintTest.moc"
