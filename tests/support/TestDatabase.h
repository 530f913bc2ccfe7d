#pragma once
// Database fixture for test executables. Call TDS_DB_SETUP() in initTestCase():
// once per process it points the data home and the configuration at a temporary folder
// (the user's own are never touched) and starts the embedded server; every call gives the
// test class a fresh database t_<random> holding the tables, resets the data object's
// selection and registers the real data object under "ZeltBase.ClsData".
#include <QString>
#include <QStringList>
#include <QTest>
#include <memory>

class IDataObject;

namespace TestDatabase {

bool setUp(QString *error = nullptr);
// Drops the database of the last setUp() (call it from cleanupTestCase()).
void tearDown();

// Only the temporary data home and configuration folder, no server (also for remote tests).
bool prepareHome(QString *error = nullptr);
QString homePath();
QString databaseName();

std::shared_ptr<IDataObject> dataObject();

// Every row of a statement, fields joined by '|'; "<failed: ...>" when it does not run.
QStringList rows(IDataObject &d, const QString &sql);

// The error log of the data home; "" when there is none.
QString logText();
void removeLog();

} // namespace TestDatabase

#define TDS_DB_SETUP()                                  \
    do {                                                \
        QString tdsDbError_;                            \
        if (!TestDatabase::setUp(&tdsDbError_))         \
            QFAIL(qPrintable(tdsDbError_));             \
    } while (false)
