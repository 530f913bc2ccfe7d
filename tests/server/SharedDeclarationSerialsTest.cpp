// Two desks importing declarations into the same period at the same moment: every
// declaration stored under a serial of its own, none skipped, none lost.
#include "CliRun.h"
#include "PrivateMariaDb.h"
#include "TestRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class SharedDeclarationSerialsTest : public QObject
{
    Q_OBJECT

private slots:
    void serialsStayUniqueAcrossProcesses()
    {
        PrivateMariaDb server(1);
        TDS_START_PRIVATE_MARIADB(server);
        QTemporaryDir home;
        const QString url = server.url(QStringLiteral("tds_declarations"));
        const CliRun demo = runCli(home.path(), {"--db", url, "demo"});
        QVERIFY2(demo.exitCode == 0, qPrintable(demo.err));

        const int perDesk = 12;
        QJsonArray file;
        for (int i = 0; i < perDesk; ++i) {
            QStringList declarant(33), payer(16);
            declarant[0] = QStringLiteral("DECLARANT %1").arg(i);
            file.append(QJsonObject{{"declarant", QJsonArray::fromStringList(declarant)},
                                    {"payer", QJsonArray::fromStringList(payer)}});
        }
        const QByteArray input = QJsonDocument(file).toJson();
        const QStringList args{"--db", url, "import", "15g", "--deductor", "DEMO01", "--year", "2025-26", "-"};
        auto first = startCli(home.path(), args);
        auto second = startCli(home.path(), args);
        first->write(input);
        second->write(input);
        const CliRun a = finishCli(*first);
        const CliRun b = finishCli(*second);
        QVERIFY2(a.exitCode == 0 && b.exitCode == 0, qPrintable(a.err + b.err + server.serverLog().right(2000)));

        QList<int> serials;
        for (const QString &line : (a.out + b.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            serials << line.toInt();
        QCOMPARE(serials.size(), 2 * perDesk);
        const QSet<int> distinct(serials.begin(), serials.end());
        QCOMPARE(distinct.size(), serials.size());
        for (int serial = 1; serial <= 2 * perDesk; ++serial)
            QVERIFY(distinct.contains(serial));
        const CliRun stored = runCli(home.path(), {"--db", url, "export", "15g", "--deductor", "DEMO01", "--year", "2025-26"});
        QCOMPARE(QJsonDocument::fromJson(stored.out.toUtf8()).array().size(), 2 * perDesk);
    }
};

TDS_TEST(SharedDeclarationSerialsTest)
#include "SharedDeclarationSerialsTest.moc"
