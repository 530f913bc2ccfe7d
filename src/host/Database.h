#pragma once
// The one database connection of the process, over the MySQL C API of the embedded server
// library. Embedded mode (default) runs the server in-process on <data home>/db; remote
// mode speaks to a MySQL/MariaDB server from the settings or the --db URL.
#include "host/Recordset.h"

#include <QString>
#include <QStringList>

struct st_mysql;

class DbConnection
{
public:
    static DbConnection &instance();

    // Connects when not connected yet: starts the embedded server (once per process),
    // creates the database when missing and applies the schema. False with lastError().
    bool open();
    void close();
    bool isOpen() const { return m_mysql != nullptr; }
    bool isEmbedded() const { return m_embedded; }
    QString databaseName() const { return m_database; }
    // Where we are connected, without the password.
    QString describe() const;

    // Creates the database when missing, makes it the current one and applies the schema.
    // Also used by the tests for a fresh schema on the one embedded server.
    bool useDatabase(const QString &name);
    bool dropDatabase(const QString &name);

    bool execute(const QString &sql);
    bool select(const QString &sql, QStringList &names, Recordset::Rows &rows);
    // Runs the statements in order and stops at the first failure (lastStatement()).
    bool applyScript(const QString &script);

    bool beginTransaction();
    bool commit();
    bool rollback();
    bool inTransaction() const { return m_inTransaction; }

    unsigned lastErrorNumber() const { return m_errorNumber; }
    QString lastError() const { return m_error; }
    QString lastStatement() const { return m_statement; }

    // Statements of a script: a line ending in ";" ends one; lines starting with "--" are
    // comments. (So a ";" at the end of a line inside a quoted text would split it.)
    static QStringList splitStatements(const QString &script);
    static QString schemaScript();   // data/schema.sql as built into the library
    static bool validDatabaseName(const QString &name);

    DbConnection(const DbConnection &) = delete;
    DbConnection &operator=(const DbConnection &) = delete;

private:
    DbConnection() = default;
    ~DbConnection();

    bool fail(unsigned number, const QString &message, const QString &statement = QString());
    bool failFromServer(const QString &statement);
    bool run(const QString &sql);
    bool reconnectAfterLoss();
    static bool startLibrary(bool embedded, QString &error);
    static void shutdownLibrary();

    st_mysql *m_mysql = nullptr;
    bool m_embedded = true;
    bool m_inTransaction = false;
    QString m_database;
    QString m_where;
    unsigned m_errorNumber = 0;
    QString m_error;
    QString m_statement;
};
