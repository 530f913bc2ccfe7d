#include "TestDatabase.h"
#include "TestRegistry.h"

#include "host/DataObject.h"
#include "host/Database.h"
#include "host/ServiceRegistry.h"

#include <QDate>
#include <QTest>

class DataObjectDbTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<IDataObject> d;

    int count(const QString &table, const QString &where = QString())
    {
        Recordset rs;
        const QString sql = QStringLiteral("Select Count(*) From ") + table
                            + (where.isEmpty() ? QString() : QStringLiteral(" Where ") + where);
        if (!d->RecordsetQuery(rs, sql, d->cnnobj(), 3, 3, 1) || rs.isEOF())
            return -1;
        return rs.field(0).toInt();
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        d = createObjectAs<IDataObject>(QString::fromLatin1(ProgId::DataObject));
        QVERIFY(d && d->connect() && d->isConnected());
        QVERIFY(d->ConQuery(QStringLiteral(
            "Create Table Tb_Rs (FormSrNo INT, Name VARCHAR(60), Amount DECIMAL(15,2), OnDate DATE, Remark VARCHAR(40) NULL)")));
    }
    void cleanupTestCase() { TestDatabase::tearDown(); }

    void init()
    {
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Tb_Rs")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs Values(1,'ANIL',1500.50,'2024-04-01','x'),"
                                           "(5,'BINA',0,'2024-05-02',NULL),(9,'CHETAN',99.99,NULL,'z')")));
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Period_Det_Oth")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(1,'A1','2024-25')")));
        d->setCodeno(QString());
        TestDatabase::removeLog();
    }

    void recordsetFromStatement()
    {
        Recordset rs;
        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select * From tb_rs Order By FormSrNo"), d->cnnobj(), 3, 3, 1));
        QCOMPARE(rs.recordCount(), 3);
        QCOMPARE(rs.field(QStringLiteral("amount")).toDouble(), 1500.5);
        QCOMPARE(rs.field(QStringLiteral("ONDATE")).toDate(), QDate(2024, 4, 1));
        QCOMPARE(rs.field(0).typeId(), QMetaType::LongLong);
        rs.moveLast();
        QVERIFY(rs.field(QStringLiteral("OnDate")).isNull());

        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(12,'DAVID')")));
        QCOMPARE(rs.recordCount(), 3);
        QVERIFY(rs.requery());
        QCOMPARE(rs.recordCount(), 4);
        QCOMPARE(rs.absolutePosition(), 0);
        rs.moveLast();
        QCOMPARE(rs.text(1), QStringLiteral("DAVID"));

        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select * From Tb_Rs Where FormSrNo=77")));
        QVERIFY(rs.isBOF() && rs.isEOF());
        QVERIFY(TestDatabase::logText().isEmpty());   // no error, no log file
    }

    // expected: the error the caller said it handles itself (ConQueryExpecting); 0 for ConQuery.
    void failedStatementsAreLoggedNotThrown_data()
    {
        QTest::addColumn<bool>("asRecordset");
        QTest::addColumn<QString>("statement");
        QTest::addColumn<unsigned>("errorNumber");
        QTest::addColumn<unsigned>("expected");
        QTest::newRow("missing table") << false << "Insert Into No_Such_Table Values(1)" << 1146u << 0u;
        QTest::newRow("period code taken") << false << "Insert Into Period_Det_Oth Values(1,'B1','2024-25')" << 1062u << 0u;
        QTest::newRow("bad select") << true << "Select NoColumn From Tb_Rs" << 1054u << 0u;
        QTest::newRow("credentials masked") << false
            << "Insert Into ItdLoginNowhere (UserId, Password) Values('AABCD1234E','Pa55''word!')" << 1146u << 0u;
        QTest::newRow("lost race expected: not logged")
            << false << "Insert Into Period_Det_Oth Values(1,'B1','2024-25')" << 1062u << 1062u;
        QTest::newRow("other failure while a race is expected")
            << false << "Insert Into Period_Det_Oth Values(3,'B1')" << 1136u << 1062u;
        QTest::newRow("race where another error is expected")
            << false << "Insert Into Period_Det_Oth Values(2,'A1','2024-25')" << 1062u << 1146u;
    }
    void failedStatementsAreLoggedNotThrown()
    {
        QFETCH(bool, asRecordset);
        QFETCH(QString, statement);
        QFETCH(unsigned, errorNumber);
        QFETCH(unsigned, expected);
        Recordset rs;
        QVERIFY(!(asRecordset ? d->RecordsetQuery(rs, statement)
                  : expected  ? d->ConQueryExpecting(statement, expected)
                              : d->ConQuery(statement)));
        QVERIFY(!rs.isOpen());
        QCOMPARE(d->lastErrorNumber(), errorNumber);

        const QStringList lines = TestDatabase::logText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        if (expected == errorNumber) {
            QVERIFY2(lines.isEmpty(), qPrintable(lines.join(QLatin1Char('\n'))));
            QCOMPARE(count(QStringLiteral("Period_Det_Oth")), 1);
            QCOMPARE(count(QStringLiteral("Tb_Rs")), 3);   // the connection is still usable
            QCOMPARE(d->lastErrorNumber(), 0u);
            return;
        }
        QCOMPARE(lines.size(), 1);
        // date and time, number, description, source, location (two parts)
        const QStringList items = lines.first().split(QLatin1Char('\t'));
        QCOMPARE(items.size(), 6);
        QCOMPARE(items.at(1), QString::number(errorNumber));
        QVERIFY2(items.at(2).contains(statement.section(QLatin1Char('\''), 0, 0)), qPrintable(items.at(2)));
        QVERIFY(!items.at(2).contains(QLatin1String("Pa55")));
        QCOMPARE(items.at(3), QStringLiteral("ZeltBase.ClsData"));
        QCOMPARE(items.at(4) + QLatin1Char('\t') + items.at(5),
                 asRecordset ? QStringLiteral("ClsData\tRecordsetQuery") : QStringLiteral("ClsData\tConQuery"));

        QCOMPARE(count(QStringLiteral("Tb_Rs")), 3);   // the connection is still usable
        QCOMPARE(d->lastErrorNumber(), 0u);
    }

    void transactionEnds_data()
    {
        QTest::addColumn<bool>("commit");
        QTest::newRow("rolled back") << false;
        QTest::newRow("committed") << true;
    }
    void transactionEnds()
    {
        QFETCH(bool, commit);
        QVERIFY(d->BeginTrans());
        QVERIFY(!d->BeginTrans());   // no nesting
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Tb_Rs Where FormSrNo=5")));
        // Flush Tables inside the transaction must not commit it early.
        QVERIFY(d->ConQuery(QStringLiteral("Flush Tables")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(6,'NEW')")));
        QVERIFY(!d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Nme) Values(7,'BAD')")));
        QVERIFY(commit ? d->CommitTrans() : d->RollbackTrans());
        QVERIFY(!d->RollbackTrans());   // nothing open any more
        QCOMPARE(count(QStringLiteral("Tb_Rs"), QStringLiteral("FormSrNo=5")), commit ? 0 : 1);
        QCOMPARE(count(QStringLiteral("Tb_Rs"), QStringLiteral("FormSrNo=6")), commit ? 1 : 0);
    }

    void textRoundTrip_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("backslash and quote") << "C:\\TDS\\' OR '1'='1";
        QTest::newRow("unicode") << QStringLiteral("श्री गणेश ₹ ट्रेडर्स");
        QTest::newRow("trailing backslash") << "ENDS WITH \\";
    }
    void textRoundTrip()
    {
        QFETCH(QString, text);
        const QString quoted = QLatin1Char('\'') + d->TruncVarSQL(text) + QLatin1Char('\'');
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(20,") + quoted + QLatin1Char(')')));
        Recordset rs;
        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select Name From Tb_Rs Where Name=") + quoted));
        QCOMPARE(rs.recordCount(), 1);
        QCOMPARE(rs.text(0), text);
    }

    void schemaAppliesAgainKeepingTheData()
    {
        QCOMPARE(count(QStringLiteral("STATE_MASTER")), 37);
        DbConnection &db = DbConnection::instance();
        QVERIFY2(db.applyScript(DbConnection::schemaScript()), qPrintable(db.lastError() + db.lastStatement()));
        QVERIFY(db.applyScript(DbConnection::schemaScript()));
        QCOMPARE(count(QStringLiteral("state_master")), 37);
        QCOMPARE(count(QStringLiteral("period_det_oth")), 1);
        QCOMPARE(count(QStringLiteral("main_info_OTH")), 0);
    }

    void stateTable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("Delhi") << "DELHI" << "07";
        QTest::newRow("apostrophe does not break the lookup") << "O'NEIL" << "";
    }
    void stateTable()
    {
        QFETCH(QString, name);
        QTEST(d->GetStateCode(name), "code");
        QVERIFY(TestDatabase::logText().isEmpty());
    }

    void masterDataFollowsTheSelection()
    {
        auto *real = dynamic_cast<DataObject *>(d.get());
        QVERIFY(real && real->loadDemo());
        QVERIFY(real->loadDemo());   // again: nothing changes, nothing fails
        QCOMPARE(count(QStringLiteral("Main_Info"), QStringLiteral("Code_No='DEMO01'")), 1);
        QVERIFY(d->ConQuery(QStringLiteral(
            "Replace Into Main_Info (Code_No, Name, city, Resp_Name, Resp_Street, Resp_City, Resp_Mobile) "
            "Values('B02','O''BRIEN EXPORTS','PUNE','MEERA NAIR','',  'PUNE', '9000000001')")));
        QVERIFY(d->ConQuery(QStringLiteral(
            "Replace Into Main_Info_oth (code_no, status, ward, asofficer) Values('B02','X','','ACIT (TDS) PUNE')")));

        auto other = TestDatabase::dataObject();   // a second instance shares the selection
        other->setCodeno(QStringLiteral("DEMO01"));
        QCOMPARE(d->firmname(), QStringLiteral("DEMO TRADERS PRIVATE LIMITED"));

        other->setCodeno(QStringLiteral("B02"));
        QCOMPARE(d->firmname(), QStringLiteral("O'BRIEN EXPORTS"));
        QCOMPARE(d->pr_add(), QStringLiteral("PUNE"));                 // blank parts left out
        QCOMPARE(d->formplace(), QStringLiteral("PUNE"));              // no place: the city
        QCOMPARE(d->formdate(), QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
        QCOMPARE(d->circle1(), QStringLiteral("ACIT (TDS) PUNE"));     // no ward: the officer
        QCOMPARE(d->ClStatusDesc(), QStringLiteral("X"));              // unknown status: as stored

        // edited through the data object: seen at once, also when rolled back
        QVERIFY(d->BeginTrans());
        QVERIFY(d->ConQuery(QStringLiteral("Update Main_Info Set FormPlace='NASHIK' Where Code_No='B02'")));
        QCOMPARE(d->formplace(), QStringLiteral("NASHIK"));
        QVERIFY(d->RollbackTrans());
        QCOMPARE(d->formplace(), QStringLiteral("PUNE"));

        // edited by another program: seen after a refresh
        QStringList names;
        Recordset::Rows rows;
        QVERIFY(DbConnection::instance().select(
            QStringLiteral("Update Main_Info Set FormPlace='SATARA' Where Code_No='B02'"), names, rows));
        real->refreshMasterData();
        QCOMPARE(d->formplace(), QStringLiteral("SATARA"));

        d->setCodeno(QStringLiteral("NOBODY"));
        QCOMPARE(d->Tanno(), QString());
        d->setAsYear(QStringLiteral("2025-26"));
        QCOMPARE(other->AsYear(), QStringLiteral("2025-26"));
    }

    void foldersOfTheHome()
    {
        QCOMPARE(d->ExePath(), TestDatabase::homePath());
        QVERIFY(QFileInfo(d->vTmpPath()).isDir());
        QVERIFY(d->DocPath().startsWith(qEnvironmentVariable("XDG_DOCUMENTS_DIR")));
    }
};

TDS_TEST(DataObjectDbTest)
#include "DataObjectDbTest.moc"
