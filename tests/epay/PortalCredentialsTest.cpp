// Portal passwords sealed under the desk's key file (what is stored, the key file, what a desk
// without the right key gets), the e-pay form's login box filled from storage, and the
// password saved when it changed: what the database holds afterwards, and that no clear
// password is anywhere.
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

#include <sys/stat.h>

namespace {

const QString Code = QStringLiteral("D01");
const QString Tan = QStringLiteral("BLRA12345B");

// "<sealed>x": x sealed here; "<key lost>x": x sealed, then the key file lost; else as written.
QString storedForm(const QString &given)
{
    const bool lost = given.startsWith(QLatin1String("<key lost>"));
    if (!lost && !given.startsWith(QLatin1String("<sealed>")))
        return given;
    QString stored;
    PortalSecret::seal(given.mid(lost ? 10 : 8), stored);
    if (lost)
        QFile::remove(PortalSecret::keyFile());
    return stored;
}

QString opened(const QString &stored)
{
    QString password;
    return PortalSecret::open(stored, password) ? password : QStringLiteral("<cannot open>");
}

int modeOf(const QString &path)
{
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

void writeKey(const QByteArray &bytes)
{
    QFile::remove(PortalSecret::keyFile());
    QFile file(PortalSecret::keyFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QString sealed(const QString &password)
{
    QString stored;
    QString why;
    if (!PortalSecret::seal(password, stored, &why))
        qWarning("%s", qPrintable(why));
    return stored;
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
                            "('D01', 'Sri Ram Traders', 'BLRA12345B', 'R. D''Souza')"));
    }
    void cleanupTestCase()
    {
        QFile::remove(PortalSecret::keyFile());
        TestDatabase::tearDown();
    }

    void init()
    {
        exec(QStringLiteral("DELETE FROM ItdLoginTanU"));
        exec(QStringLiteral("DELETE FROM ItdLoginTanC"));
        data().setCodeno(Code);
        m_dialogs.asked.clear();
        QFile::remove(PortalSecret::keyFile());
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("password");
        QTest::newRow("quote and backslash") << "it's\\mine'";
        QTest::newRow("not Latin, long") << QString::fromUtf8("पासवर्ड-Ünï") + QString(100, QLatin1Char('x'));
    }
    void roundTrip()
    {
        QFETCH(QString, password);
        const QString first = sealed(password);
        const QString second = sealed(password);
        QVERIFY(PortalSecret::isSealed(first));
        QVERIFY(!first.contains(password));
        QVERIFY2(first != second, "every seal has its own nonce");
        QVERIFY2(first.size() <= 255, "fits LoginPwd");
        for (const QString &stored : {first, second}) {
            QString opened;
            QString why;
            QVERIFY2(PortalSecret::open(stored, opened, &why), qPrintable(why));
            QCOMPARE(opened, password);
        }
    }

    // The TAN and common markers are kept as they are, and no key file is made for them.
    void markersAsTheyAre()
    {
        for (const QString value : {"#?#TAN#?#", "#?#COMMON#?#"}) {
            QCOMPARE(sealed(value), value);
            QString opened;
            QVERIFY(PortalSecret::open(value, opened));
            QCOMPARE(opened, value);
        }
        QVERIFY(!QFile::exists(PortalSecret::keyFile()));
    }

    void keyFileMadeOnFirstUse()
    {
        sealed(QStringLiteral("Portal#Pass9"));
        QFile key(PortalSecret::keyFile());
        QVERIFY(key.open(QIODevice::ReadOnly));
        QCOMPARE(key.size(), 32);
        QCOMPARE(modeOf(key.fileName()), 0600);
        const QByteArray bytes = key.readAll();
        sealed(QStringLiteral("Other#Pass1"));
        key.seek(0);
        QCOMPARE(key.readAll(), bytes);
    }

    void unreadable_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<QString>("inMessage");
        QTest::newRow("key of another desk") << "other key" << "saved with another key";
        QTest::newRow("stored text altered") << "altered" << "saved with another key";
    }
    void unreadable()
    {
        QFETCH(QString, damage);
        QFETCH(QString, inMessage);
        QString stored = sealed(QStringLiteral("Portal#Pass9"));
        if (damage == QLatin1String("other key"))
            writeKey(QByteArray(32, '\x5a'));
        else {
            const qsizetype at = PortalSecret::mark().size() + 10;
            stored[at] = stored.at(at) == QLatin1Char('A') ? QLatin1Char('B') : QLatin1Char('A');
        }
        QString opened = QStringLiteral("left over");
        QString why;
        QVERIFY(!PortalSecret::open(stored, opened, &why));
        QCOMPARE(opened, QString());
        QVERIFY2(why.contains(PortalSecret::keyFile()), qPrintable(why));
        QVERIFY2(why.contains(inMessage), qPrintable(why));
    }

    void fill_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("common");
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("told");   // a message naming the key file
        QTest::newRow("the TAN itself") << "#?#TAN#?#" << QStringList() << Tan << false;
        QTest::newRow("common, first row") << "#?#COMMON#?#" << QStringList{"<sealed>Common#Pass2", "<sealed>Second#Row3"}
                                           << "Common#Pass2" << false;
        QTest::newRow("own password") << "<sealed>Own#Pass4" << QStringList() << "Own#Pass4" << false;
        QTest::newRow("stored in clear before") << "Legacy#Pass5" << QStringList() << "Legacy#Pass5" << false;
        QTest::newRow("key file lost") << "<key lost>Own#Pass4" << QStringList() << "" << true;
    }
    void fill()
    {
        QFETCH(QString, stored);
        QFETCH(QStringList, common);
        QFETCH(QString, password);
        QFETCH(bool, told);
        storeLogin(stored, common);
        PortalCredentials login_(data(), m_dialogs);
        login_.fill();
        QCOMPARE(login_.loginId(), Tan);
        QCOMPARE(login_.password(), password);
        QCOMPARE(login_.loadedPassword(), password);
        QCOMPARE(m_dialogs.asked.size(), told ? 1 : 0);
        if (told)
            QVERIFY2(m_dialogs.asked.first().message.contains(PortalSecret::keyFile()), qPrintable(m_dialogs.asked.first().message));
    }

    // "<same>": typed as filled / stored text untouched.
    void saveWhenChanged_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("after");
        QTest::newRow("own, unchanged") << "<sealed>Old#Pass1" << "<same>" << "<same>";
        QTest::newRow("own, changed") << "<sealed>Old#Pass1" << "New#Pass2" << "<sealed>New#Pass2";
        QTest::newRow("the TAN, changed") << "#?#TAN#?#" << "New#Pass2" << "<sealed>New#Pass2";
        QTest::newRow("common, unchanged") << "#?#COMMON#?#" << "<same>" << "<same>";
        QTest::newRow("clear, sealed on proceed") << "Legacy#Pass5" << "<same>" << "<sealed>Legacy#Pass5";
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
