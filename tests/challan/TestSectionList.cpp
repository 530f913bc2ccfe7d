#include "TestRegistry.h"

#include "challan/SectionList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace SectionList;

class TestSectionList : public QObject
{
    Q_OBJECT

    QTemporaryDir m_withFile;    // ExePath whose Data/ holds a small section file
    QTemporaryDir m_withoutFile; // ExePath without one

    static QStringList keys(const QList<SectionEntry> &list)
    {
        QStringList k;
        for (const SectionEntry &e : list)
            k << e.key;
        return k;
    }

    bool writeSectionFile(const QString &exePath, const QByteArray &content)
    {
        QDir().mkpath(exePath + QStringLiteral("/Data"));
        QFile f(sectionFile(exePath));
        return f.open(QIODevice::WriteOnly) && f.write(content) == content.size();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_withFile.isValid() && m_withoutFile.isValid());
        // Lenient JSON on purpose: the parser takes comments and a trailing comma.
        QVERIFY(writeSectionFile(m_withFile.path(), R"({"data": [
            {"sec_cd": "1001", "sec_old": "192", "sec_desc": "Salary", "natr_pymnt_desc": "Paid to staff"},
            // a number where a text is expected still reads as its digits
            {"sec_cd": 1039, "sec_old": "194E", "sec_desc": "Sportsmen", "natr_pymnt_desc": "Non-resident"},
        ]})"));
    }

    void builtInListFollowsTheYear_data()
    {
        QTest::addColumn<QString>("asYear");
        QTest::addColumn<int>("count");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("absent");
        QTest::addColumn<QString>("lastKey");
        const QStringList luxury{"71", "72", "73", "74", "75", "76", "77", "78", "79", "80"};
        const QStringList dropped{"25", "53"};
        QTest::newRow("2025") << "2025-26" << 68 << dropped << luxury << "51";
        QTest::newRow("2026") << "2026-27" << 76 << luxury << dropped << "80";
    }

    void builtInListFollowsTheYear()
    {
        QFETCH(QString, asYear);
        QFETCH(int, count);
        QFETCH(QStringList, present);
        QFETCH(QStringList, absent);
        const QStringList k = keys(entries(asYear, m_withoutFile.path()));
        QCOMPARE(k.size(), count);
        QCOMPARE(k.mid(0, 4), (QStringList{"0", "1", "39", "2"}));
        QTEST(k.last(), "lastKey");
        for (const QString &key : present)
            QVERIFY2(k.contains(key), qPrintable(key));
        for (const QString &key : absent)
            QVERIFY2(!k.contains(key), qPrintable(key));
    }

    void lookups_data()
    {
        QTest::addColumn<QString>("asYear");
        QTest::addColumn<bool>("withFile");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("result");
        QTest::newRow("51 at its first place") << "2025-26" << false << "GETLI" << "51" << "36";
        QTest::newRow("code of 51") << "2025-26" << false << "GETCODE" << "51" << "94O";
        QTest::newRow("gap key, position") << "2025-26" << false << "GETLI" << "57" << "";
        QTest::newRow("text compare, no leading zero") << "2025-26" << false << "GETLI" << "05" << "";
        QTest::newRow("later row, 2025") << "2025-26" << false << "GETLI" << "80" << "";
        QTest::newRow("later row, 2026") << "2026-27" << false << "GETLI" << "80" << "75";
        QTest::newRow("file, code") << "2028-29" << true << "GETCODE" << "1039" << "194E";
        QTest::newRow("file, built-in key") << "2027-28" << true << "GETCODE" << "7" << "";
        QTest::newRow("action in small letters") << "2025-26" << false << "getli" << "0" << "";
    }

    void lookups()
    {
        QFETCH(QString, asYear);
        QFETCH(bool, withFile);
        QFETCH(QString, action);
        QFETCH(QString, key);
        const QString home = withFile ? m_withFile.path() : m_withoutFile.path();
        QTEST(sectionList(action, key, asYear, home), "result");
    }

    void sectionFileShapes_data()
    {
        QTest::addColumn<QByteArray>("content");   // null: no file
        QTest::addColumn<int>("count");
        QTest::newRow("missing") << QByteArray() << 0;
        QTest::newRow("not JSON") << QByteArray("sec_cd=1001") << 0;
        QTest::newRow("no data member") << QByteArray(R"({"rows": [{"sec_cd": "1001"}]})") << 0;
        QTest::newRow("non-object members skipped")
            << QByteArray(R"({"data": ["x", {"sec_cd": "1002", "sec_old": "192"}]})") << 1;
    }

    void sectionFileShapes()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, count);
        QTemporaryDir home;
        if (!content.isNull())
            QVERIFY(writeSectionFile(home.path(), content));
        QCOMPARE(entries(QStringLiteral("2027-28"), home.path()).size(), count);
    }

    void pickerRowsCarryTheFileMembers()
    {
        const QList<QStringList> rows = pickerRows(readSectionFile(sectionFile(m_withFile.path())));
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(1), (QStringList{"1", "Future Use for Tick", "1039", "194E", "Sportsmen", "Non-resident"}));
    }

    void shippedFileHasEveryPaymentCode()
    {
        const QList<FileSection> shipped = readSectionFile(QStringLiteral(":/data/seed/TDS_Section_2027.json"));
        QCOMPARE(shipped.size(), 92);
        for (int i = 0; i < shipped.size(); ++i) {
            const FileSection &s = shipped.at(i);
            QCOMPARE(s.secCd, QString::number(1001 + i));
            QVERIFY2(!s.secOld.isEmpty() && !s.secDesc.isEmpty() && !s.natrPymntDesc.isEmpty(), qPrintable(s.secCd));
            // The non-resident codes are the ones the file files under payments to non-residents.
            const bool toNonResident = s.secDesc.contains(QLatin1String("non-resident"));
            QCOMPARE(toNonResident, s.secCd.toInt() >= 1039 && s.secCd.toInt() <= 1058);
        }
    }

    // Each key at a bound of the filter, with whether a resident and a non-resident may take it.
    void residentialStatus_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("resident");
        QTest::addColumn<bool>("nonResident");
        const QList<std::tuple<const char *, bool, bool>> bounds{
            {"1003", true, false}, {"1004", true, true},  {"1005", true, false}, {"1038", true, false},
            {"1039", false, true}, {"1058", false, true}, {"1059", true, false}, {"1060", true, true},
            {"1061", true, false}, {"1092", true, true},  {"1093", true, false}};
        for (const auto &[key, resident, nonResident] : bounds)
            QTest::newRow(key) << QString::fromLatin1(key) << resident << nonResident;
    }
    void residentialStatus()
    {
        QFETCH(QString, key);
        QFETCH(bool, resident);
        QFETCH(bool, nonResident);
        QCOMPARE(residentialRefusal(key, false),
                 resident ? QString() : "Invalid Section Code : " + key + ". This is applicable for Non-Resident.");
        QCOMPARE(residentialRefusal(key, true),
                 nonResident ? QString() : "Invalid Section Code : " + key + ". This is applicable for Resident.");
    }
};

TDS_TEST(TestSectionList)
#include "TestSectionList.moc"
