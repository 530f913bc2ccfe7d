// Template printing: the fill map as the report object receives it, the stops before any
// report call, the temporary copy removed.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "host/DataObject.h"
#include "shared/TemplatePrint.h"
#include "shared/modbase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

// The recording report object only needs the file to exist.
const char *const TemplateRtf = "{\\rtf1\\ansi Name ##NAME##\\par ##NIL##\\par Place: ##PLACE##\\par}\n";

// The schedule's cells read "R<row>C<column>".
TemplateFill fillWith(int count)
{
    QList<QStringList> rows;
    for (int r = 1; r <= count; ++r)
        rows.append({QStringLiteral("R%1C0").arg(r), QStringLiteral("R%1C1").arg(r)});
    TemplateFill fill;
    fill.text(QStringLiteral("##NAME##"), QStringLiteral("RAVI KUMAR"));
    fill.cell(1, 0, 1, QStringLiteral("ABCPK1234L"));
    fill.cell(1, 1, 1, QStringLiteral("INDIVIDUAL"));
    fill.schedule(2, 1, rows, QStringLiteral("##NIL##"));
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

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        DataObject::setFormInfoPrompt([this] { return m_mode; });
        modbase::resetForTests();
        m_report = RecordingReportObject::install();
        QVERIFY2(modbase::Main(), qPrintable(modbase::mainError()));
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
        QTest::addColumn<QStringList>("schedule");   // the calls between FindTable:2 and the NIL text
        QTest::addColumn<QString>("nil");
        QTest::newRow("nil") << 0 << QStringList{"deleteRow:1"} << "---NIL---";
        QTest::newRow("one row: the data row as it is") << 1 << QStringList{"TextMatrix:1,0=R1C0", "TextMatrix:1,1=R1C1"} << "";
        QTest::newRow("rows inserted, filled row by row") << 2 << QStringList{"InsertRows:1,1", "TextMatrix:1,0=R1C0",
                                                               "TextMatrix:1,1=R1C1", "TextMatrix:2,0=R2C0", "TextMatrix:2,1=R2C1"} << "";
    }
    void fillInOrder()
    {
        QFETCH(int, rows);
        QFETCH(QStringList, schedule);
        QFETCH(QString, nil);
        ScriptedDialogs dialogs;
        QVERIFY(print(fillWith(rows), dialogs));
        QVERIFY(dialogs.asked.isEmpty());
        QVERIFY(!QFile::exists(output()));   // the temporary copy
        const QStringList expected = QStringList{"WinModeReport:true", "OpenMasterFileOnly:" + templateFile(),
                                               "setDocumentName:Form15G_DEMO01_2024-25", "NewSetText:##NAME##=RAVI KUMAR",
                                               "FindTable:1", "TextMatrix:0,1=ABCPK1234L", "TextMatrix:1,1=INDIVIDUAL",
                                               "FindTable:2"}
                                       + schedule
                                       + QStringList{"NewSetText:##NIL##=" + nil, "NewSetText:##PLACE##=PUNE",
                                                     "SaveMasterFile:" + output(), "OpenFileOnly:" + output()};
        QCOMPARE(m_report->calls(), expected);
    }

    // Cancelled at the question or no template: no report call, nothing logged.
    void nothingPrinted_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("templatePath");
        QTest::addColumn<QString>("message");
        QTest::newRow("cancelled") << 1 << "/Data/Form15G.rtf" << QString();
        QTest::newRow("template missing") << 2 << "/Data/Form15X.rtf" << "inform:Template File is missing.";
    }
    void nothingPrinted()
    {
        QFETCH(int, mode);
        QFETCH(QString, templatePath);
        QFETCH(QString, message);
        m_mode = mode;
        ScriptedDialogs dialogs;
        QVERIFY(!print(fillWith(3), dialogs, templatePath));
        QCOMPARE(dialogs.asked.isEmpty() ? QString() : dialogs.asked[0].kind + ':' + dialogs.asked[0].message, message);
        QCOMPARE(m_report->calls(), QStringList());
        QVERIFY(TestDatabase::logText().isEmpty());
    }
};

TDS_TEST(TemplatePrintTest)
#include "TemplatePrintTest.moc"
