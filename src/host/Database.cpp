#include "host/Database.h"

#include "host/DataHome.h"
#include "host/ErrorLog.h"
#include "host/Settings.h"

#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>
#include <vector>

#include <errmsg.h>
#include <mysql.h>

namespace {

enum class Library { Down, Embedded, ClientOnly };

struct LibraryState {
    Library state = Library::Down;
    std::vector<QByteArray> args;              // the server keeps pointers into them
    std::unique_ptr<QLockFile> lock;           // one process per embedded data folder
    std::unique_ptr<QTemporaryDir> scratch;    // the unused in-process server of remote mode
    QString datadir;                           // embedded: fixed for the life of the process
    DataHome::DbState dbState = DataHome::DbState::Empty;   // as found before the server started
};

LibraryState &library()
{
    static LibraryState s;
    return s;
}

constexpr unsigned OwnError = CR_UNKNOWN_ERROR;

QMetaType columnType(const MYSQL_FIELD &f)
{
    switch (f.type) {
    case MYSQL_TYPE_TINY:
    case MYSQL_TYPE_SHORT:
    case MYSQL_TYPE_LONG:
    case MYSQL_TYPE_INT24:
    case MYSQL_TYPE_YEAR:
        return QMetaType::fromType<qlonglong>();
    case MYSQL_TYPE_LONGLONG:
        return (f.flags & UNSIGNED_FLAG) ? QMetaType::fromType<qulonglong>() : QMetaType::fromType<qlonglong>();
    case MYSQL_TYPE_BIT:
        return QMetaType::fromType<qulonglong>();
    case MYSQL_TYPE_DECIMAL:
    case MYSQL_TYPE_NEWDECIMAL:
    case MYSQL_TYPE_FLOAT:
    case MYSQL_TYPE_DOUBLE:
        return QMetaType::fromType<double>();
    case MYSQL_TYPE_DATE:
    case MYSQL_TYPE_NEWDATE:
        return QMetaType::fromType<QDate>();
    case MYSQL_TYPE_DATETIME:
    case MYSQL_TYPE_TIMESTAMP:
        return QMetaType::fromType<QDateTime>();
    case MYSQL_TYPE_TINY_BLOB:
    case MYSQL_TYPE_MEDIUM_BLOB:
    case MYSQL_TYPE_LONG_BLOB:
    case MYSQL_TYPE_BLOB:
    case MYSQL_TYPE_STRING:
    case MYSQL_TYPE_VAR_STRING:
    case MYSQL_TYPE_VARCHAR:
        return f.charsetnr == 63 ? QMetaType::fromType<QByteArray>() : QMetaType::fromType<QString>();
    default:
        return QMetaType::fromType<QString>();
    }
}

QVariant columnValue(const MYSQL_FIELD &f, const QMetaType &type, const char *data, unsigned long length)
{
    if (!data)
        return QVariant(type);
    const QByteArray raw(data, qsizetype(length));
    switch (type.id()) {
    case QMetaType::LongLong:
        return raw.toLongLong();
    case QMetaType::ULongLong:
        if (f.type == MYSQL_TYPE_BIT) {
            qulonglong bits = 0;
            for (char c : raw)
                bits = (bits << 8) | quint8(c);
            return bits;
        }
        return raw.toULongLong();
    case QMetaType::Double:
        return raw.toDouble();
    case QMetaType::QDate:
        return QDate::fromString(QString::fromLatin1(raw), Qt::ISODate);
    case QMetaType::QDateTime:
        return QDateTime::fromString(QString::fromLatin1(raw.left(19)), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QByteArray:
        return raw;
    default:
        return QString::fromUtf8(raw);
    }
}

void atProcessExit()
{
    DbConnection::instance().close();
    LibraryState &lib = library();
    if (lib.state != Library::Down)
        mysql_library_end();   // InnoDB shuts down cleanly here
    lib.state = Library::Down;
    lib.lock.reset();
    lib.scratch.reset();
    lib.datadir.clear();
    lib.dbState = DataHome::DbState::Empty;
}

} // namespace

DbConnection &DbConnection::instance()
{
    static DbConnection connection;
    return connection;
}

DbConnection::~DbConnection()
{
    close();
}

bool DbConnection::startLibrary(bool embedded, QString &error)
{
    LibraryState &lib = library();
    if (lib.state == Library::Embedded)
        return true;   // the embedded server also speaks to remote servers
    if (lib.state == Library::ClientOnly) {
        if (!embedded)
            return true;
        error = QStringLiteral("This process already works with a remote server; the embedded database "
                               "can only be used by a new process.");
        return false;
    }

    QString datadir;
    if (embedded) {
        datadir = DataHome::dbPath();
        auto lock = std::make_unique<QLockFile>(DataHome::path() + QStringLiteral("/db.lock"));
        lock->setStaleLockTime(0);
        if (!lock->tryLock(0)) {
            qint64 pid = 0;
            QString host, app;
            lock->getLockInfo(&pid, &host, &app);
            error = QStringLiteral("The database in %1 is in use by another TDS Forms process (pid %2). "
                                   "Close it first, or let both use one server (--db mysql://...).")
                        .arg(QDir::toNativeSeparators(datadir))
                        .arg(pid);
            return false;
        }
        lib.lock = std::move(lock);
        // A first start that was killed leaves files the server may not start on again;
        // such a folder holds no data, so it goes aside, not away.
        QString movedTo;
        if (!DataHome::recoverUnfinishedDb(datadir, &movedTo, &error)) {
            lib.lock.reset();
            return false;
        }
        if (!movedTo.isEmpty())
            ErrorLog::append(DataHome::path(), 0,
                             QStringLiteral("An interrupted first start had left the database unfinished; it was moved "
                                            "to %1 and a new one built. That folder holds no data and may be deleted.")
                                 .arg(QDir::toNativeSeparators(movedTo)),
                             QStringLiteral("ZeltBase.ClsData"), QStringLiteral("ClsData\tConnect"));
        lib.dbState = DataHome::inspectDb(datadir);
        if (lib.dbState == DataHome::DbState::Empty && !DataHome::markDbBuilding(datadir, &error)) {
            lib.lock.reset();
            return false;
        }
    } else {
        // The library always starts its in-process server; in remote mode it gets a
        // throw-away folder and no InnoDB, so any number of processes can run side by side.
        lib.scratch = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/tdsforms-client-XXXXXX"));
        if (!lib.scratch->isValid()) {
            error = QStringLiteral("Cannot create a temporary folder: %1").arg(lib.scratch->errorString());
            lib.scratch.reset();
            return false;
        }
        datadir = lib.scratch->path();
    }

    lib.args.clear();
    lib.args.push_back("tdsforms");
    lib.args.push_back("--no-defaults");   // never the system server's configuration
    lib.args.push_back("--datadir=" + QFile::encodeName(datadir));
    lib.args.push_back("--lc-messages-dir=/usr/share/mysql");
    lib.args.push_back("--skip-grant-tables");
    lib.args.push_back("--skip-networking");
    lib.args.push_back("--character-set-server=utf8mb4");
    lib.args.push_back("--collation-server=utf8mb4_general_ci");
    if (embedded) {
        // The forms name one table in several spellings.
        lib.args.push_back("--lower-case-table-names=1");
        lib.args.push_back("--default-storage-engine=InnoDB");
        lib.args.push_back("--innodb-buffer-pool-size=32M");
        lib.args.push_back("--innodb-log-file-size=16M");
    } else {
        lib.args.push_back("--innodb=OFF");
        lib.args.push_back("--default-storage-engine=MyISAM");
        lib.args.push_back("--default-tmp-storage-engine=MyISAM");
    }
    std::vector<char *> argv;
    for (QByteArray &a : lib.args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    static const char *groups[] = {"tdsforms_embedded", nullptr};
    if (mysql_library_init(int(argv.size() - 1), argv.data(), const_cast<char **>(groups)) != 0) {
        error = QStringLiteral("The database server could not start on %1; its own messages were written to "
                               "standard error. Check that the folder is writable and the disk has space.")
                    .arg(QDir::toNativeSeparators(datadir));
        if (embedded && lib.dbState == DataHome::DbState::HoldsData)
            error += QStringLiteral(" The folder may hold data, so it was left as it is; if it was made by a first "
                                    "start that was interrupted, move it aside yourself and start again.");
        else if (embedded && lib.dbState == DataHome::DbState::Complete)
            error += QStringLiteral(" Do not delete the folder: it holds your data.");
        lib.lock.reset();
        lib.scratch.reset();
        return false;
    }
    lib.state = embedded ? Library::Embedded : Library::ClientOnly;
    lib.datadir = embedded ? datadir : QString();
    static bool exitHook = false;
    if (!exitHook) {
        exitHook = true;
        std::atexit(atProcessExit);
    }
    return true;
}

bool DbConnection::fail(unsigned number, const QString &message, const QString &statement)
{
    m_errorNumber = number;
    m_error = message;
    m_statement = statement;
    return false;
}

bool DbConnection::failFromServer(const QString &statement)
{
    return fail(mysql_errno(m_mysql), QString::fromUtf8(mysql_error(m_mysql)), statement);
}

bool DbConnection::open()
{
    if (m_mysql)
        return true;
    QString error;
    const Settings::DatabaseConfig config = Settings::database(&error);
    if (!error.isEmpty())
        return fail(OwnError, error);
    if (!DataHome::ensure(&error))
        return fail(OwnError, error);
    if (!startLibrary(!config.remote, error))
        return fail(OwnError, error);

    MYSQL *m = mysql_init(nullptr);
    if (!m)
        return fail(CR_OUT_OF_MEMORY, QStringLiteral("Out of memory"));
    mysql_options(m, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    MYSQL *connected = nullptr;
    if (config.remote) {
        mysql_options(m, MYSQL_OPT_USE_REMOTE_CONNECTION, nullptr);
        const unsigned timeout = 10;
        mysql_options(m, MYSQL_OPT_CONNECT_TIMEOUT, &timeout);
        const QByteArray host = config.host.toUtf8();
        const QByteArray user = config.user.toUtf8();
        const QByteArray password = config.password.toUtf8();
        connected = mysql_real_connect(m, host.constData(), user.isEmpty() ? nullptr : user.constData(),
                                       password.constData(), nullptr, unsigned(config.port), nullptr, 0);
    } else {
        mysql_options(m, MYSQL_OPT_USE_EMBEDDED_CONNECTION, nullptr);
        connected = mysql_real_connect(m, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0);
    }
    if (!connected) {
        fail(mysql_errno(m), QStringLiteral("Cannot connect to %1: %2")
                                 .arg(Settings::describe(config), QString::fromUtf8(mysql_error(m))));
        mysql_close(m);
        return false;
    }
    m_mysql = m;
    m_embedded = !config.remote;
    m_inTransaction = false;
    m_where = Settings::describe(config);

    if (config.remote) {
        QStringList names;
        Recordset::Rows rows;
        if (!select(QStringLiteral("SELECT @@lower_case_table_names"), names, rows)) {
            close();
            return false;
        }
        if (!rows.isEmpty() && rows.first().value(0).toString() == QLatin1String("0")) {
            close();
            return fail(OwnError, QStringLiteral("The server's lower_case_table_names is 0; set "
                                                 "lower_case_table_names=1 in its configuration and restart it."));
        }
    }
    const QString name = m_database.isEmpty() ? config.database : m_database;
    if (!useDatabase(name)) {
        const unsigned number = m_errorNumber;
        const QString message = m_error;
        const QString statement = m_statement;
        close();
        return fail(number, message, statement);
    }
    // Only now is the folder one a later start must never rebuild; nothing can be stored in
    // it before this.
    LibraryState &lib = library();
    if (m_embedded && lib.dbState != DataHome::DbState::Complete) {
        QString error;
        if (!DataHome::markDbComplete(lib.datadir, &error)) {
            close();
            return fail(OwnError, error);
        }
        lib.dbState = DataHome::DbState::Complete;
    }
    return true;
}

void DbConnection::close()
{
    if (m_mysql)
        mysql_close(m_mysql);
    m_mysql = nullptr;
    m_inTransaction = false;
    m_database.clear();
}

QString DbConnection::describe() const
{
    return m_where;
}

bool DbConnection::validDatabaseName(const QString &name)
{
    static const QRegularExpression valid(QStringLiteral("^[A-Za-z0-9_$]{1,64}$"));
    return valid.match(name).hasMatch();
}

bool DbConnection::useDatabase(const QString &name)
{
    if (!m_mysql)
        return fail(CR_SERVER_GONE_ERROR, QStringLiteral("Not connected to the database."));
    if (!validDatabaseName(name))
        return fail(OwnError, QStringLiteral("Invalid database name: %1").arg(name));
    if (!execute(QStringLiteral("CREATE DATABASE IF NOT EXISTS `%1` CHARACTER SET utf8mb4 COLLATE utf8mb4_general_ci")
                     .arg(name)))
        return false;
    if (!execute(QStringLiteral("USE `%1`").arg(name)))
        return false;
    m_database = name;
    const QString schema = schemaScript();
    if (schema.isEmpty())
        return fail(OwnError, QStringLiteral("The table definitions are missing from the program."));
    // Several operators starting at once on one server take turns, so their INSERT IGNOREs
    // into the same master rows cannot deadlock.
    QStringList names;
    Recordset::Rows rows;
    const QString lockName = QStringLiteral("'tdsforms.schema.%1'").arg(name);
    if (!select(QStringLiteral("SELECT GET_LOCK(%1, 60)").arg(lockName), names, rows))
        return false;
    if (rows.isEmpty() || rows.first().value(0).toInt() != 1)
        return fail(OwnError, QStringLiteral("Another program kept the database busy for a minute; try again."));
    const bool applied = applyScript(schema);
    const unsigned number = m_errorNumber;
    const QString message = m_error;
    const QString statement = m_statement;
    select(QStringLiteral("SELECT RELEASE_LOCK(%1)").arg(lockName), names, rows);
    if (!applied)
        return fail(number, message, statement);
    return true;
}

bool DbConnection::dropDatabase(const QString &name)
{
    if (!validDatabaseName(name))
        return fail(OwnError, QStringLiteral("Invalid database name: %1").arg(name));
    if (!execute(QStringLiteral("DROP DATABASE IF EXISTS `%1`").arg(name)))
        return false;
    if (name.compare(m_database, Qt::CaseInsensitive) == 0)
        m_database.clear();
    return true;
}

bool DbConnection::run(const QString &sql)
{
    const QByteArray utf8 = sql.toUtf8();
    return mysql_real_query(m_mysql, utf8.constData(), (unsigned long)utf8.size()) == 0;
}

bool DbConnection::reconnectAfterLoss()
{
    // Only outside a transaction: replaying half a transaction would not be the same work.
    if (m_embedded || m_inTransaction)
        return false;
    const unsigned number = mysql_errno(m_mysql);
    if (number != CR_SERVER_GONE_ERROR && number != CR_SERVER_LOST)
        return false;
    const QString name = m_database;
    close();
    m_database = name;
    return open();
}

bool DbConnection::execute(const QString &sql)
{
    if (!m_mysql)
        return fail(CR_SERVER_GONE_ERROR, QStringLiteral("Not connected to the database."), sql);
    if (!run(sql) && !(reconnectAfterLoss() && run(sql)))
        return m_mysql ? failFromServer(sql) : false;
    // A statement that unexpectedly returns rows must still have them read.
    if (MYSQL_RES *res = mysql_store_result(m_mysql))
        mysql_free_result(res);
    else if (mysql_errno(m_mysql) != 0)
        return failFromServer(sql);
    m_errorNumber = 0;
    m_error.clear();
    return true;
}

bool DbConnection::select(const QString &sql, QStringList &names, Recordset::Rows &rows)
{
    names.clear();
    rows.clear();
    if (!m_mysql)
        return fail(CR_SERVER_GONE_ERROR, QStringLiteral("Not connected to the database."), sql);
    if (!run(sql) && !(reconnectAfterLoss() && run(sql)))
        return m_mysql ? failFromServer(sql) : false;
    MYSQL_RES *res = mysql_store_result(m_mysql);
    if (!res) {
        if (mysql_field_count(m_mysql) != 0)
            return failFromServer(sql);
        m_errorNumber = 0;
        m_error.clear();
        return true;   // a statement without rows: an empty recordset
    }
    const unsigned count = mysql_num_fields(res);
    const MYSQL_FIELD *fields = mysql_fetch_fields(res);
    std::vector<QMetaType> types;
    for (unsigned i = 0; i < count; ++i) {
        names << QString::fromUtf8(fields[i].name);
        types.push_back(columnType(fields[i]));
    }
    rows.reserve(qsizetype(mysql_num_rows(res)));
    while (MYSQL_ROW row = mysql_fetch_row(res)) {
        const unsigned long *lengths = mysql_fetch_lengths(res);
        QList<QVariant> values;
        values.reserve(count);
        for (unsigned i = 0; i < count; ++i)
            values << columnValue(fields[i], types[i], row[i], lengths[i]);
        rows << values;
    }
    mysql_free_result(res);
    m_errorNumber = 0;
    m_error.clear();
    return true;
}

QStringList DbConnection::splitStatements(const QString &script)
{
    QStringList statements;
    QString current;
    const QStringList lines = script.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1String("--")))
            continue;
        if (!current.isEmpty())
            current += QLatin1Char('\n');
        current += line;
        if (trimmed.endsWith(QLatin1Char(';'))) {
            current = current.trimmed();
            current.chop(1);
            if (!current.trimmed().isEmpty())
                statements << current.trimmed();
            current.clear();
        }
    }
    if (!current.trimmed().isEmpty())
        statements << current.trimmed();
    return statements;
}

bool DbConnection::applyScript(const QString &script)
{
    const QStringList statements = splitStatements(script);
    for (const QString &statement : statements) {
        if (!execute(statement))
            return false;
    }
    return true;
}

QString DbConnection::schemaScript()
{
    QFile file(QStringLiteral(":/data/schema.sql"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

bool DbConnection::beginTransaction()
{
    if (m_inTransaction)
        return fail(OwnError, QStringLiteral("A transaction is already open."), QStringLiteral("START TRANSACTION"));
    if (!execute(QStringLiteral("START TRANSACTION")))
        return false;
    m_inTransaction = true;
    return true;
}

bool DbConnection::commit()
{
    const bool wasOpen = m_inTransaction;
    m_inTransaction = false;
    if (!execute(QStringLiteral("COMMIT")))
        return false;
    return wasOpen || fail(OwnError, QStringLiteral("No transaction is open."), QStringLiteral("COMMIT"));
}

bool DbConnection::rollback()
{
    const bool wasOpen = m_inTransaction;
    m_inTransaction = false;
    if (!execute(QStringLiteral("ROLLBACK")))
        return false;
    return wasOpen || fail(OwnError, QStringLiteral("No transaction is open."), QStringLiteral("ROLLBACK"));
}
