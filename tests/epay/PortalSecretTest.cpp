// Portal passwords sealed under the desk's key file: what is stored, the key file itself,
// and what a desk without the right key gets.
#include "TestDatabase.h"
#include "TestRegistry.h"

#include "epay/PortalSecret.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>

namespace {

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

class PortalSecretTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(TestDatabase::prepareHome(&error), qPrintable(error));
    }
    void init() { QFile::remove(PortalSecret::keyFile()); }
    void cleanupTestCase() { QFile::remove(PortalSecret::keyFile()); }

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
        QTest::newRow("key file missing") << "no key" << "is missing";
        QTest::newRow("stored text altered") << "altered" << "saved with another key";
    }
    void unreadable()
    {
        QFETCH(QString, damage);
        QFETCH(QString, inMessage);
        QString stored = sealed(QStringLiteral("Portal#Pass9"));
        if (damage == QLatin1String("other key"))
            writeKey(QByteArray(32, '\x5a'));
        else if (damage == QLatin1String("no key"))
            QFile::remove(PortalSecret::keyFile());
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
};

TDS_TEST(PortalSecretTest)
#include "PortalSecretTest.moc"
