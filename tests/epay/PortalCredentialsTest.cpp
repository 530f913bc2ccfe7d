// The e-pay form's login box filled from storage, its checks, and the password saved when
// it changed: what the database holds afterwards, and that no clear password is anywhere.
#include "ScriptedDialogs.h"
#include "TestDatabase.h"
#include "TestRegistry.h"

#include "epay/PortalCredentials.h"
#include "epay/PortalSecret.h"
#include "host/DataHome.h"
#include "host/IDataObject.h"
#include "host/Settings.h"

#include <QDirIterator>
#include <QFile>
#include <QTest>

namespace {

const QString Code = QStringLiteral("D01");
const QString Tan = QStringLiteral("BLRA12345B");

// Sealed under a key that this desk does not have.
QString sealedElsewhere(const QString &password)
{
    QFile key(PortalSecret::keyFile());
    QByteArray ours;
    if (key.open(QIODevice::ReadOnly))
        ours = key.readAll();
    key.close();
    QFile::remove(PortalSecret::keyFile());
    QString stored;
    PortalSecret::seal(password, stored);
    QFile::remove(PortalSecret::keyFile());
    if (!ours.isEmpty() && key.open(QIODevice::WriteOnly)) {
        key.write(ours);
        key.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }
    return stored;
}

// "<sealed>x": x sealed here; "<elsewhere>x": x sealed at another desk; else as written.
QString storedForm(const QString &given)
{
    if (given.startsWith(QLatin1String("<sealed>"))) {
        QString stored;
        PortalSecret::seal(given.mid(8), stored);
        return stored;
    }
    if (given.startsWith(QLatin1String("<elsewhere>")))
        return sealedElsewhere(given.mid(11));
    return given;
}

QString opened(const QString &stored)
{
    QString password;
    return PortalSecret::open(stored, password) ? password : QStringLiteral("<cannot open>");
}

} // namespace

class PortalCredentialsTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<IDataObject> m_data;
    ScriptedDialogs m_dialogs;

    IDataObject &data() { return *m_data; }
    void exec(const QString &sql) { QVERIFY2(data().ConQuery(sql), qPrintable(data().lastError())); }

    void storeLogin(const QString &loginPwd, const QStringList &common = {})
    {
        if (loginPwd != QLatin1String("<none>"))
            exec(QStringLiteral("INSERT INTO ItdLoginTanU (Code_No, LoginPwd) VALUES (%1, %2)")
                     .arg(data().quoted(Code), data().quoted(storedForm(loginPwd))));
        for (int i = 0; i < common.size(); ++i)
            exec(QStringLiteral("INSERT INTO ItdLoginTanC (SrNo, LoginPwd) VALUES (%1, %2)")
                     .arg(i + 1)
                     .arg(data().quoted(storedForm(common.at(i)))));
    }
    QString storedPassword()
    {
        const QStringList rows = TestDatabase::rows(data(), QStringLiteral("SELECT LoginPwd FROM ItdLoginTanU WHERE Code_No='D01'"));
        return rows.size() == 1 ? rows.first() : QStringLiteral("<%1 rows>").arg(rows.size());
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        m_data = TestDatabase::dataObject();
        exec(QStringLiteral("INSERT INTO Main_Info (Code_No, Name, Tanno, Resp_Name) VALUES "
                            "('D01', 'Sri Ram Traders', 'BLRA12345B', 'R. D''Souza'), ('D02', 'No TAN Yet', '', 'P. Rao')"));
        for (const QString &table : {QStringLiteral("26qb_buyerseller"), QStringLiteral("26qc_partymaster"),
                                     QStringLiteral("26QD_PartyMaster")})
            exec(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (Id INT NOT NULL PRIMARY KEY, ItdUserId VARCHAR(10) NOT NULL DEFAULT '', "
                                "ItdUserPass VARCHAR(255) NOT NULL DEFAULT '')").arg(table));
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }

    void init()
    {
        exec(QStringLiteral("DELETE FROM ItdLoginTanU"));
        exec(QStringLiteral("DELETE FROM ItdLoginTanC"));
        data().setCodeno(Code);
        m_dialogs.asked.clear();
    }

    void fill_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("common");
        QTest::addColumn<QString>("login");
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("told");   // a message naming the key file
        QTest::newRow("no row") << Code << "<none>" << QStringList() << Tan << "" << false;
        QTest::newRow("the TAN itself") << Code << "#?#TAN#?#" << QStringList() << Tan << Tan << false;
        QTest::newRow("common, first row") << Code << "#?#COMMON#?#"
                                           << QStringList{"<sealed>Common#Pass2", "<sealed>Second#Row3"} << Tan
                                           << "Common#Pass2" << false;
        QTest::newRow("common, none stored") << Code << "#?#COMMON#?#" << QStringList() << Tan << "" << false;
        QTest::newRow("own password") << Code << "<sealed>Own#Pass4" << QStringList() << Tan << "Own#Pass4" << false;
        QTest::newRow("stored in clear before") << Code << "Legacy#Pass5" << QStringList() << Tan << "Legacy#Pass5" << false;
        QTest::newRow("sealed at another desk") << Code << "<elsewhere>Own#Pass4" << QStringList() << Tan << "" << true;
        QTest::newRow("common sealed at another desk") << Code << "#?#COMMON#?#" << QStringList{"<elsewhere>Common#Pass2"}
                                                       << Tan << "" << true;
        QTest::newRow("deductor without TAN") << "D02" << "#?#TAN#?#" << QStringList() << "" << "" << false;
    }
    void fill()
    {
        QFETCH(QString, code);
        QFETCH(QString, stored);
        QFETCH(QStringList, common);
        QFETCH(QString, login);
        QFETCH(QString, password);
        QFETCH(bool, told);
        storeLogin(stored, common);
        if (code != Code)
            exec(QStringLiteral("UPDATE ItdLoginTanU SET Code_No=%1").arg(data().quoted(code)));
        data().setCodeno(code);
        PortalCredentials login_(data(), m_dialogs);
        login_.fill();
        QCOMPARE(login_.loginId(), login);
        QCOMPARE(login_.password(), password);
        QCOMPARE(login_.loadedPassword(), password);
        QCOMPARE(m_dialogs.asked.size(), told ? 1 : 0);
        if (told)
            QVERIFY2(m_dialogs.asked.first().message.contains(PortalSecret::keyFile()), qPrintable(m_dialogs.asked.first().message));
    }

    void proceedChecks_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("login");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("message");
        QTest::newRow("no TAN") << "" << "" << "x" << "Please specify TAN !";
        QTest::newRow("blank TAN before no password") << "TDS" << "  " << "" << "Please specify TAN !";
        QTest::newRow("no PAN, 26QB") << "26QB" << "" << "x" << "Please specify PAN !";
        QTest::newRow("no PAN, 26QD") << "26QD" << "" << "" << "Please specify PAN !";
        QTest::newRow("no password") << "" << Tan << "" << "Please specify Password !";
        QTest::newRow("no password, 26QC") << "26QC" << "ABCDE1234F" << "" << "Please specify Password !";
    }
    void proceedChecks()
    {
        QFETCH(QString, kind);
        QFETCH(QString, login);
        QFETCH(QString, password);
        QFETCH(QString, message);
        PortalCredentials login_(data(), m_dialogs, PortalCredentials::payerOf(kind));
        login_.fill();
        login_.setLoginId(login);
        login_.setPassword(password);
        QVERIFY(!login_.proceed());
        QCOMPARE(m_dialogs.asked.size(), 1);
        QCOMPARE(m_dialogs.asked.first().message, message);
        QCOMPARE(m_dialogs.asked.first().icon, Dialogs::Icon::Information);
        QCOMPARE(storedPassword(), QStringLiteral("<0 rows>"));
    }

    // "<same>": typed as filled / stored text untouched.
    void saveWhenChanged_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("after");
        QTest::newRow("own, unchanged") << "<sealed>Old#Pass1" << "<same>" << "<same>";
        QTest::newRow("own, changed") << "<sealed>Old#Pass1" << "New#Pass2" << "<sealed>New#Pass2";
        QTest::newRow("own, blanks kept") << "<sealed>Old#Pass1" << " New#Pass2 " << "<sealed> New#Pass2 ";
        QTest::newRow("the TAN, unchanged") << "#?#TAN#?#" << "<same>" << "<same>";
        QTest::newRow("the TAN, changed") << "#?#TAN#?#" << "New#Pass2" << "<sealed>New#Pass2";
        QTest::newRow("common, unchanged") << "#?#COMMON#?#" << "<same>" << "<same>";
        QTest::newRow("common, changed") << "#?#COMMON#?#" << "New#Pass2" << "<sealed>New#Pass2";
        QTest::newRow("clear, sealed on proceed") << "Legacy#Pass5" << "<same>" << "<sealed>Legacy#Pass5";
        QTest::newRow("other desk's, typed again") << "<elsewhere>Old#Pass1" << "Old#Pass1" << "<sealed>Old#Pass1";
    }
    void saveWhenChanged()
    {
        QFETCH(QString, stored);
        QFETCH(QString, typed);
        QFETCH(QString, after);
        storeLogin(stored, {QStringLiteral("<sealed>Common#Pass2")});
        const QString before = storedPassword();
        PortalCredentials login_(data(), m_dialogs);
        login_.fill();
        if (typed != QLatin1String("<same>"))
            login_.setPassword(typed);
        QVERIFY(login_.proceed());
        const QString now = storedPassword();
        if (after == QLatin1String("<same>")) {
            QCOMPARE(now, before);
        } else {
            QVERIFY(PortalSecret::isSealed(now));
            QCOMPARE(opened(now), after.mid(8));
        }
        // Proceeding again without a change stores nothing more.
        QVERIFY(login_.proceed());
        QCOMPARE(storedPassword(), now);
        QCOMPARE(TestDatabase::rows(data(), QStringLiteral("SELECT LoginPwd FROM ItdLoginTanC WHERE SrNo=1")).size(), 1);
    }

    void insertsThirtyValues()
    {
        PortalCredentials login_(data(), m_dialogs);
        login_.fill();
        login_.setPassword(QStringLiteral("  New#Pass3  "));
        QVERIFY(login_.proceed());
        const QStringList rows = TestDatabase::rows(data(), QStringLiteral("SELECT * FROM ItdLoginTanU"));
        QCOMPARE(rows.size(), 1);
        QStringList values = rows.first().split(QLatin1Char('|'));
        QCOMPARE(values.size(), 30);
        QCOMPARE(opened(values.at(11)), QStringLiteral("New#Pass3"));
        values[11] = QStringLiteral("<password>");
        QStringList expected{"D01", "#?#MOBNO#?#", "#?#MOBNO#?#", "#?#TELNO#?#", "#?#FAXNO#?#", "#?#EMAILID#?#",
                             "#?#EMAILID#?#", "0", "", "0", "", "<password>"};
        for (int i = 13; i <= 26; ++i)
            expected << QString();
        expected << QStringLiteral("R. D'Souza") << QString() << QString() << QString();
        QCOMPARE(values, expected);
    }

    void unknownRecordNothingStored_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("record");
        QTest::newRow("no deductor") << "" << "";
        QTest::newRow("26QB without a row") << "26QB" << "";
        QTest::newRow("26QC, id not a number") << "26QC" << "7 OR 1=1";
    }
    void unknownRecordNothingStored()
    {
        QFETCH(QString, kind);
        QFETCH(QString, record);
        data().setCodeno(QString());
        exec(QStringLiteral("INSERT INTO 26qc_partymaster (Id, ItdUserId, ItdUserPass) VALUES (7, 'ABCDE1234F', 'x') "
                            "ON DUPLICATE KEY UPDATE ItdUserPass='x'"));
        PortalCredentials login_(data(), m_dialogs, PortalCredentials::payerOf(kind));
        login_.setPartyId(record);
        login_.fill();
        QCOMPARE(login_.password(), QString());
        login_.setLoginId(QStringLiteral("ABCDE1234F"));
        login_.setPassword(QStringLiteral("Typed#Pass7"));
        QVERIFY(login_.proceed());
        QCOMPARE(TestDatabase::rows(data(), QStringLiteral("SELECT * FROM ItdLoginTanU")), QStringList());
        QCOMPARE(TestDatabase::rows(data(), QStringLiteral("SELECT ItdUserPass FROM 26qc_partymaster")), QStringList{"x"});
    }

    void partyLogin_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("table");
        QTest::newRow("26QB") << "26QB" << "26qb_buyerseller";
        QTest::newRow("26QC") << "26QC" << "26qc_partymaster";
        QTest::newRow("26QD") << "26QD" << "26QD_PartyMaster";
    }
    void partyLogin()
    {
        QFETCH(QString, kind);
        QFETCH(QString, table);
        exec(QStringLiteral("DELETE FROM %1").arg(table));
        exec(QStringLiteral("INSERT INTO %1 (Id, ItdUserId, ItdUserPass) VALUES (7, 'ABCDE1234F', %2), (8, 'PQRST6789Z', 'Other#Pass8')")
                 .arg(table, data().quoted(storedForm(QStringLiteral("<sealed>Party#Pass6")))));
        PortalCredentials login_(data(), m_dialogs, PortalCredentials::payerOf(kind));
        login_.setPartyId(QStringLiteral("7"));
        login_.fill();
        QCOMPARE(login_.loginId(), QStringLiteral("ABCDE1234F"));
        QCOMPARE(login_.password(), QStringLiteral("Party#Pass6"));
        login_.setLoginId(QStringLiteral("ABCDE1234G"));
        login_.setPassword(QStringLiteral("Party#Pass7"));
        QVERIFY(login_.proceed());
        const QStringList rows = TestDatabase::rows(data(), QStringLiteral("SELECT Id, ItdUserId, ItdUserPass FROM %1 ORDER BY Id").arg(table));
        QCOMPARE(rows.size(), 2);
        const QStringList seven = rows.first().split(QLatin1Char('|'));
        QCOMPARE(seven.mid(0, 2), (QStringList{"7", "ABCDE1234G"}));
        QCOMPARE(opened(seven.at(2)), QStringLiteral("Party#Pass7"));
        QCOMPARE(rows.at(1), QStringLiteral("8|PQRST6789Z|Other#Pass8"));
    }

    // Saves that work and saves that fail (the table gone for a moment): the clear
    // passwords are in no table, no log line and no file of the data home or configuration.
    void passwordsNeverInClear()
    {
        TestDatabase::removeLog();
        const QStringList passwords{"Clear#Pass11", "Clear#Pass12", "Clear#Pass13"};
        storeLogin(QStringLiteral("<none>"), {QStringLiteral("<sealed>Common#Pass14")});
        for (const QString &password : passwords) {
            if (password == passwords.last())
                exec(QStringLiteral("RENAME TABLE ItdLoginTanU TO ItdLoginTanU_away"));
            PortalCredentials login_(data(), m_dialogs);
            login_.fill();
            login_.setPassword(password);
            QVERIFY(login_.proceed());
        }
        exec(QStringLiteral("RENAME TABLE ItdLoginTanU_away TO ItdLoginTanU"));
        QVERIFY2(TestDatabase::logText().contains(QLatin1String("ItdLoginTanU")), "the failed save was logged");

        QByteArray everything = (TestDatabase::rows(data(), QStringLiteral("SELECT * FROM ItdLoginTanU"))
                                 + TestDatabase::rows(data(), QStringLiteral("SELECT * FROM ItdLoginTanC")))
                                    .join(QLatin1Char('\n'))
                                    .toUtf8();
        QVERIFY(everything.contains("$sbx1$"));
        // The embedded server's files as well: its log holds every statement that changed a row.
        for (const QString &folder : {DataHome::path(), Settings::configDir()}) {
            QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                QFile file(files.next());
                if (file.open(QIODevice::ReadOnly))
                    everything += file.readAll();
            }
        }
        for (const QString &password : passwords + QStringList{"Common#Pass14"})
            QVERIFY2(!everything.contains(password.toUtf8()), qPrintable(password));
        for (const auto &asked : std::as_const(m_dialogs.asked))
            for (const QString &password : passwords)
                QVERIFY(!asked.message.contains(password));
    }
};

TDS_TEST(PortalCredentialsTest)
#include "PortalCredentialsTest.moc"
