// Two operators on one server: period codes allocated by separate processes at the same
// moment stay unique, and the same deductor-year always gets one code.
#include "PrivateMariaDb.h"
#include "TestDatabase.h"
#include "TestRegistry.h"

#include "host/DataObject.h"
#include "host/Database.h"
#include "host/Settings.h"

#include <QProcess>
#include <QSet>
#include <QTest>

class SharedPeriodCodesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QProcess> start(const QString &url, const QString &deductor, const QString &year)
    {
        auto p = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TDSFORMS_HOME"), TestDatabase::homePath());
        p->setProcessEnvironment(env);
        p->start(QStringLiteral(TDS_BIN_DIR "/tdsforms-cli"),
                 {QStringLiteral("--db"), url, QStringLiteral("period-code"), deductor, year});
        return p;
    }

    // Runs the batch at once; the codes printed, in batch order (-1 for a failed process).
    QList<int> runTogether(const QString &url, const QList<QPair<QString, QString>> &batch)
    {
        std::vector<std::unique_ptr<QProcess>> running;
        for (const auto &[deductor, year] : batch)
            running.push_back(start(url, deductor, year));
        QList<int> codes;
        for (auto &p : running) {
            if (!p->waitForFinished(60000)) {
                p->kill();
                p->waitForFinished();
            }
            bool ok = false;
            const int code = QString::fromUtf8(p->readAllStandardOutput()).trimmed().toInt(&ok);
            codes << (p->exitCode() == 0 && ok ? code : -1);
            if (!ok)
                qWarning() << p->readAllStandardError();
        }
        return codes;
    }

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(TestDatabase::prepareHome(&error), qPrintable(error));
    }

    void codesStayUniqueAcrossProcesses()
    {
        PrivateMariaDb server(1);
        TDS_START_PRIVATE_MARIADB(server);
        const QString url = server.url(QStringLiteral("tds_shared"));
        TestDatabase::removeLog();

        // Period codes are only given to deductors that exist.
        const int rounds = 6;
        {
            Settings::setDatabaseUrlOverride(url);
            DataObject d;
            QVERIFY2(d.connect(), qPrintable(d.lastError()));
            for (int round = 0; round < rounds; ++round) {
                for (const char *prefix : {"OPA", "OPB", "SAME"})
                    QVERIFY2(d.ConQuery(QStringLiteral("Insert Into Main_Info (Code_No, Name) Values('%1%2', 'OPERATOR')")
                                            .arg(QLatin1String(prefix))
                                            .arg(round)),
                             qPrintable(d.lastError()));
            }
            DbConnection::instance().close();
            Settings::setDatabaseUrlOverride(QString());
        }

        QList<int> all;
        for (int round = 0; round < rounds; ++round) {
            // Two operators open new deductor-years at the same moment, and both open the
            // same one as well.
            const QString same = QStringLiteral("SAME%1").arg(round);
            const QList<int> codes = runTogether(url, {{QStringLiteral("OPA%1").arg(round), QStringLiteral("2024-25")},
                                                      {QStringLiteral("OPB%1").arg(round), QStringLiteral("2024-25")},
                                                      {same, QStringLiteral("2025-26")},
                                                      {same, QStringLiteral("2025-26")}});
            QVERIFY2(!codes.contains(-1), qPrintable(server.serverLog().right(2000)));
            QCOMPARE(codes[2], codes[3]);
            all << codes[0] << codes[1] << codes[2];
        }
        const QSet<int> distinct(all.begin(), all.end());
        QCOMPARE(distinct.size(), all.size());
        // Nothing skipped: the codes are exactly 1..n.
        for (int code = 1; code <= all.size(); ++code)
            QVERIFY2(distinct.contains(code), qPrintable(QString::number(code)));
        // A lost race that was retried is no error: nothing of it in the log.
        const QString log = TestDatabase::logText();
        QVERIFY2(!log.contains(QLatin1String("\t1062\t")) && !log.contains(QLatin1String("Duplicate entry")),
                 qPrintable(log));
    }
};

TDS_TEST(SharedPeriodCodesTest)
#include "SharedPeriodCodesTest.moc"
