#include "TestDatabase.h"
#include "TestRegistry.h"

#include "host/DataObject.h"
#include "host/Database.h"
#include "host/ServiceRegistry.h"

#include <QComboBox>
#include <QDate>
#include <QTest>

class DataObjectDbTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<IDataObject> d;

    int count(const QString &sql)
    {
        Recordset rs;
        if (!d->RecordsetQuery(rs, sql, d->cnnobj(), 3, 3, 1) || rs.isEOF())
            return -1;
        return rs.field(0).toInt();
    }

private slots:
    void initTestCase()
    {
        TDS_DB_SETUP();
        d = createObjectAs<IDataObject>(QString::fromLatin1(ProgId::DataObject));
        QVERIFY(d);
        QVERIFY(d->connect());
        QVERIFY(d->isConnected());
        QVERIFY(d->ConQuery(QStringLiteral(
            "Create Table Tb_Rs (FormSrNo INT, Name VARCHAR(60), Amount DECIMAL(15,2), OnDate DATE, Remark VARCHAR(40) NULL)")));
    }

    void cleanupTestCase()
    {
        TestDatabase::tearDown();
    }

    void init()
    {
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Tb_Rs")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs Values(1,'ANIL',1500.50,'2024-04-01','x'),"
                                           "(5,'BINA',0,'2024-05-02',NULL),(9,'CHETAN',99.99,NULL,'z')")));
        d->setCodeno(QString());
        TestDatabase::removeLog();
    }

    void recordsetFromStatement()
    {
        Recordset rs;
        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select * From tb_rs Order By FormSrNo"), d->cnnobj(), 3, 3, 1));
        QCOMPARE(rs.recordCount(), 3);
        QCOMPARE(rs.fieldCount(), 5);
        QCOMPARE(rs.fieldName(1), QStringLiteral("Name"));
        QCOMPARE(rs.field(QStringLiteral("amount")).toDouble(), 1500.5);
        QCOMPARE(rs.field(QStringLiteral("ONDATE")).toDate(), QDate(2024, 4, 1));
        QCOMPARE(rs.field(0).typeId(), QMetaType::LongLong);

        QVERIFY(rs.find(QStringLiteral("FormSrNo=5")));
        QCOMPARE(rs.text(QStringLiteral("Name")), QStringLiteral("BINA"));
        QVERIFY(rs.field(QStringLiteral("Remark")).isNull());
        QCOMPARE(rs.field(QStringLiteral("Amount")).toDouble(), 0.0);
        rs.moveNext();
        QVERIFY(rs.field(QStringLiteral("OnDate")).isNull());
        rs.moveNext();
        QVERIFY(rs.isEOF());
        rs.moveLast();
        QCOMPARE(rs.text(QStringLiteral("name")), QStringLiteral("CHETAN"));

        // requery sees what changed since the recordset was opened
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(12,'DAVID')")));
        QCOMPARE(rs.recordCount(), 3);
        QVERIFY(rs.requery());
        QCOMPARE(rs.recordCount(), 4);
        rs.moveLast();
        QCOMPARE(rs.text(1), QStringLiteral("DAVID"));
        rs.close();
        QVERIFY(!rs.isOpen());

        Recordset none;
        QVERIFY(d->RecordsetQuery(none, QStringLiteral("Select * From Tb_Rs Where FormSrNo=77")));
        QVERIFY(none.isBOF() && none.isEOF());
        QVERIFY(TestDatabase::logText().isEmpty());   // no error, no log file
    }

    void failedStatementsAreLoggedNotThrown_data()
    {
        QTest::addColumn<bool>("asRecordset");
        QTest::addColumn<QString>("statement");
        QTest::addColumn<unsigned>("errorNumber");
        QTest::addColumn<QString>("location");
        QTest::newRow("missing table") << false << "Insert Into No_Such_Table Values(1)" << 1146u << "ClsData\tConQuery";
        QTest::newRow("syntax") << false << "Updat Tb_Rs Set Name='X'" << 1064u << "ClsData\tConQuery";
        QTest::newRow("duplicate key") << false << "Insert Into State_Master Values('07','DELHI')" << 1062u
                                       << "ClsData\tConQuery";
        QTest::newRow("bad select") << true << "Select NoColumn From Tb_Rs" << 1054u << "ClsData\tRecordsetQuery";
    }
    void failedStatementsAreLoggedNotThrown()
    {
        QFETCH(bool, asRecordset);
        QFETCH(QString, statement);
        QFETCH(unsigned, errorNumber);
        QFETCH(QString, location);
        Recordset rs;
        const bool ok = asRecordset ? d->RecordsetQuery(rs, statement) : d->ConQuery(statement);
        QVERIFY(!ok);
        QVERIFY(!rs.isOpen());
        QCOMPARE(d->lastErrorNumber(), errorNumber);
        QVERIFY(!d->lastError().isEmpty());

        const QString log = TestDatabase::logText();
        const QStringList lines = log.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1);
        const QStringList items = lines.first().split(QLatin1Char('\t'));
        QCOMPARE(items.size(), 6);   // date and time, number, description, source, location (two parts)
        QCOMPARE(items.at(1), QString::number(errorNumber));
        QVERIFY2(items.at(2).contains(statement), qPrintable(items.at(2)));
        QCOMPARE(items.at(3), QStringLiteral("ZeltBase.ClsData"));
        QCOMPARE(items.at(4) + QLatin1Char('\t') + items.at(5), location);

        // the connection is still usable afterwards
        QCOMPARE(count(QStringLiteral("Select Count(*) From Tb_Rs")), 3);
        QCOMPARE(d->lastErrorNumber(), 0u);
    }

    void credentialsStayOutOfTheLog()
    {
        QVERIFY(!d->ConQuery(QStringLiteral("Insert Into ItdLoginNowhere (UserId, Password) Values('AABCD1234E','Pa55''word!')")));
        const QString log = TestDatabase::logText();
        QVERIFY(log.contains(QLatin1String("ItdLoginNowhere")));
        QVERIFY2(!log.contains(QLatin1String("Pa55")), qPrintable(log));
    }

    void rollbackRestoresTheRows()
    {
        QVERIFY(d->BeginTrans());
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Tb_Rs Where FormSrNo=5")));
        // Flush Tables inside the transaction must not commit it early.
        QVERIFY(d->ConQuery(QStringLiteral("Flush Tables")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(6,'NEW')")));
        QVERIFY(!d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Nme) Values(7,'BAD')")));
        QVERIFY(d->RollbackTrans());
        QCOMPARE(count(QStringLiteral("Select Count(*) From Tb_Rs Where FormSrNo=5")), 1);
        QCOMPARE(count(QStringLiteral("Select Count(*) From Tb_Rs Where FormSrNo=6")), 0);
    }

    void commitKeepsTheRows()
    {
        QVERIFY(d->BeginTrans());
        QVERIFY(!d->BeginTrans());   // no nesting: the open transaction is left alone
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Tb_Rs")));
        QVERIFY(d->ConQuery(QStringLiteral("Flush Tables")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(2,'ONLY')")));
        QVERIFY(d->CommitTrans());
        QVERIFY(!d->RollbackTrans());   // nothing open any more
        QCOMPARE(count(QStringLiteral("Select Count(*) From Tb_Rs")), 1);
    }

    void textRoundTrip_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("apostrophe") << "D'SOUZA & SONS";
        QTest::newRow("backslash and quote") << "C:\\TDS\\' OR '1'='1";
        QTest::newRow("unicode") << QStringLiteral("श्री गणेश ₹ ट्रेडर्स");
        QTest::newRow("trailing backslash") << "ENDS WITH \\";
    }
    void textRoundTrip()
    {
        QFETCH(QString, text);
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Tb_Rs (FormSrNo, Name) Values(20,'") + d->TruncVarSQL(text)
                            + QStringLiteral("')")));
        Recordset rs;
        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select Name From Tb_Rs Where Name='") + d->TruncVarSQL(text)
                                          + QStringLiteral("'")));
        QCOMPARE(rs.recordCount(), 1);
        QCOMPARE(rs.text(0), text);
    }

    void schemaAppliesAgain()
    {
        const int states = count(QStringLiteral("Select Count(*) From State_Master"));
        QCOMPARE(states, 37);
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(1,'X1','2024-25')")));
        DbConnection &db = DbConnection::instance();
        QVERIFY2(db.applyScript(DbConnection::schemaScript()), qPrintable(db.lastError() + db.lastStatement()));
        QVERIFY(db.applyScript(DbConnection::schemaScript()));
        QCOMPARE(count(QStringLiteral("Select Count(*) From State_Master")), states);
        QCOMPARE(count(QStringLiteral("Select Count(*) From Period_Det_Oth")), 1);   // data kept
    }

    void tableNamesInAnyCase()
    {
        QCOMPARE(count(QStringLiteral("Select Count(*) From MAIN_INFO")), 0);
        QCOMPARE(count(QStringLiteral("Select Count(*) From main_info_OTH")), 0);
        QCOMPARE(count(QStringLiteral("Select Count(*) From period_det_oth")), count(QStringLiteral("Select Count(*) From Period_Det_Oth")));
    }

    void periodCodesAreUnique()
    {
        QVERIFY(d->ConQuery(QStringLiteral("Delete From Period_Det_Oth")));
        QVERIFY(d->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(1,'A1','2024-25')")));
        QVERIFY(!d->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(1,'B1','2024-25')")));
        QCOMPARE(d->lastErrorNumber(), 1062u);
        QVERIFY(!d->ConQuery(QStringLiteral("Insert Into Period_Det_Oth Values(2,'A1','2024-25')")));
        QCOMPARE(d->lastErrorNumber(), 1062u);
        Recordset rs;
        QVERIFY(d->RecordsetQuery(rs, QStringLiteral("Select * From Period_Det_Oth")));
        QCOMPARE(rs.fieldName(0), QStringLiteral("Period_Code"));
        QCOMPARE(rs.fieldName(1), QStringLiteral("Code_No"));
        QCOMPARE(rs.fieldName(2), QStringLiteral("AsYear"));
    }

    void stateTable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("Delhi") << "DELHI" << "07";
        QTest::newRow("any case, blanks") << " maharashtra " << "27";
        QTest::newRow("ampersand") << "JAMMU & KASHMIR" << "01";
        QTest::newRow("apostrophe does not break the lookup") << "O'NEIL" << "";
        QTest::newRow("unknown") << "ATLANTIS" << "";
    }
    void stateTable()
    {
        QFETCH(QString, name);
        QTEST(d->GetStateCode(name), "code");
        QVERIFY(TestDatabase::logText().isEmpty());
    }

    void stateList()
    {
        QComboBox combo;
        combo.addItem(QStringLiteral("stale"));
        d->ComboFillStateList(&combo);
        QCOMPARE(combo.count(), 37);
        QCOMPARE(combo.itemText(0), QStringLiteral("ANDAMAN AND NICOBAR ISLANDS"));
        QVERIFY(combo.findText(QStringLiteral("MAHARASHTRA")) >= 0);
        QCOMPARE(combo.findText(QStringLiteral("stale")), -1);
        for (int i = 1; i < combo.count(); ++i)
            QVERIFY(combo.itemText(i - 1).compare(combo.itemText(i), Qt::CaseInsensitive) < 0);
    }

    void demoMasterData()
    {
        auto *real = dynamic_cast<DataObject *>(d.get());
        QVERIFY(real);
        QVERIFY(real->loadDemo());
        QVERIFY(real->loadDemo());   // again: nothing changes, nothing fails
        QCOMPARE(count(QStringLiteral("Select Count(*) From Main_Info Where Code_No='DEMO01'")), 1);

        d->setCodeno(QStringLiteral("DEMO01"));
        QCOMPARE(d->firmname(), QStringLiteral("DEMO TRADERS PRIVATE LIMITED"));
        QCOMPARE(d->Tanno(), QStringLiteral("MUMD12345E"));
        QCOMPARE(d->panno(), QStringLiteral("AABCD1234E"));
        QVERIFY(d->ValidTan(d->Tanno()));
        QVERIFY(d->ValidPan(d->panno()));
        QVERIFY(d->ValidPan(d->PAN1()));
        QCOMPARE(d->Name(), QStringLiteral("RAJESH KUMAR SHARMA"));
        QCOMPARE(d->Name1(), d->Name());
        QCOMPARE(d->fname(), QStringLiteral("MOHAN LAL SHARMA"));
        QCOMPARE(d->Designation(), QStringLiteral("DIRECTOR"));
        QCOMPARE(d->stdesig(), QStringLiteral("DIRECTOR"));
        QCOMPARE(d->pr_add(), QStringLiteral("FLAT 12, B WING, SEA VIEW APARTMENTS, MARINE DRIVE, CHURCHGATE, MUMBAI, "
                                             "MAHARASHTRA, 400020"));
        QCOMPARE(d->circle1(), QStringLiteral("WARD 2(3)(1), MUMBAI"));
        QCOMPARE(d->formplace(), QStringLiteral("MUMBAI"));
        QCOMPARE(d->formdate(), QStringLiteral("01/04/2025"));
        QCOMPARE(d->GovtState(), QStringLiteral("MAHARASHTRA"));
        QCOMPARE(d->Mobile1(), QStringLiteral("9820054321"));
        QCOMPARE(d->ClStatus(), QStringLiteral("C"));
        QCOMPARE(d->ClStatusDesc(), QStringLiteral("Company"));
    }

    void masterDataFollowsTheSelection()
    {
        auto *real = dynamic_cast<DataObject *>(d.get());
        QVERIFY(real->loadDemo());
        QVERIFY(d->ConQuery(QStringLiteral(
            "Replace Into Main_Info (Code_No, Name, city, Resp_Name, Resp_Street, Resp_City, Resp_Mobile) "
            "Values('B02','O''BRIEN EXPORTS','PUNE','MEERA NAIR','',  'PUNE', '9000000001')")));
        QVERIFY(d->ConQuery(QStringLiteral(
            "Replace Into Main_Info_oth (code_no, status, ward, asofficer) Values('B02','X','','ACIT (TDS) PUNE')")));

        auto other = TestDatabase::dataObject();   // a second instance sees the same selection
        d->setCodeno(QStringLiteral("DEMO01"));
        QCOMPARE(other->firmname(), QStringLiteral("DEMO TRADERS PRIVATE LIMITED"));

        other->setCodeno(QStringLiteral("B02"));
        QCOMPARE(d->codeno(), QStringLiteral("B02"));
        QCOMPARE(d->firmname(), QStringLiteral("O'BRIEN EXPORTS"));
        QCOMPARE(d->pr_add(), QStringLiteral("PUNE"));                 // blank parts left out
        QCOMPARE(d->formplace(), QStringLiteral("PUNE"));              // no place: the city
        QCOMPARE(d->formdate(), QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
        QCOMPARE(d->circle1(), QStringLiteral("ACIT (TDS) PUNE"));     // no ward: the officer
        QCOMPARE(d->Mobile1(), QStringLiteral("9000000001"));
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
        QCOMPARE(d->formplace(), QStringLiteral("PUNE"));
        real->refreshMasterData();
        QCOMPARE(d->formplace(), QStringLiteral("SATARA"));

        d->setCodeno(QStringLiteral("NOBODY"));
        QCOMPARE(d->firmname(), QString());
        QCOMPARE(d->Tanno(), QString());
        d->setAsYear(QStringLiteral("2025-26"));
        d->setQuarter(QStringLiteral("Q2"));
        QCOMPARE(other->AsYear(), QStringLiteral("2025-26"));
        QCOMPARE(other->quarter(), QStringLiteral("Q2"));
    }

    void foldersOfTheHome()
    {
        QCOMPARE(d->ExePath(), TestDatabase::homePath());
        QCOMPARE(d->vTmpPath(), TestDatabase::homePath() + QStringLiteral("/Temp/"));
        QVERIFY(QFileInfo(d->vTmpPath()).isDir());
        QVERIFY(QFileInfo(d->DocPath()).isDir());
        QVERIFY(d->DocPath().startsWith(qEnvironmentVariable("XDG_DOCUMENTS_DIR")));
    }
};

TDS_TEST(DataObjectDbTest)
#include "DataObjectDbTest.moc"
