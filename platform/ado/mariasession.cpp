// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/mariasession.h"

#include "platform/ado/mariastatement.h"
#include "platform/ado/serverscript.h"

#include <algorithm>

#include <errmsg.h>
#include <mysqld_error.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr unsigned waitForServer = 10;   // seconds until a host that does not answer is given up
constexpr unsigned waitForReply = 60;    // seconds until a connection is taken for lost
constexpr unsigned long oldest = 101100; // 10.11, as the client library counts

bool endsConnection(int code) {
    return code == CR_SERVER_GONE_ERROR || code == CR_SERVER_LOST;
}

/// A sentence for each failure that a user can meet, otherwise the server's own message.
QString describe(int code, const QString& words, const ServerAddress& server) {
    switch (code) {
    case ER_LOCK_WAIT_TIMEOUT:
        return u"The same records are being changed by someone else. Try again in a moment."_s;
    case ER_LOCK_DEADLOCK:
        return u"The same records have been changed by someone else at the same time. Nothing of this step "
               u"has been saved. Try again."_s;
    case CR_SERVER_GONE_ERROR:
    case CR_SERVER_LOST:
        return u"The connection to the database server is lost. Try again, and look whether the last step "
               u"has been saved."_s;
    case CR_CONNECTION_ERROR:
    case CR_CONN_HOST_ERROR:
    case CR_UNKNOWN_HOST:
        return u"The database server '"_s +
               (server.socket.isEmpty() ? server.hosts.join(u", "_s) : server.socket) +
               u"' cannot be reached.";
    case CR_SSL_CONNECTION_ERROR:
        return u"There is no protected connection to the database server. "_s + words + u'.';
    case ER_ACCESS_DENIED_ERROR:
        return u"The database server does not accept the user '"_s + server.user + u"' or the password.";
    case ER_DBACCESS_DENIED_ERROR:
        return u"The user '"_s + server.user + u"' may not use the database '" + server.database + u"'.";
    case ER_BAD_DB_ERROR:
        return u"The database server has no database '"_s + server.database + u"'.";
    case ER_DISK_FULL:
    case ER_RECORD_FILE_FULL:
        return u"The disk of the database server is full. Nothing of this step has been saved."_s;
    case ER_OPTION_PREVENTS_STATEMENT:
        return u"The database cannot be changed: the server takes no changes."_s;
    default:
        return words;
    }
}

/// The type that a server's column stands for in a file.
ColumnType typeOf(const QString& serverType) {
    const QString name = serverType.section(u'(', 0, 0);
    if (name == u"tinyint")
        return ColumnType::YesNo;
    if (name == u"int" || name == u"bigint")
        return ColumnType::Integer;
    if (name == u"float")
        return ColumnType::Single;
    if (name == u"varchar" || name.endsWith(u"text"))
        return ColumnType::Text;
    return columnType(name.toUtf8().constData());
}

} // namespace

void MariaSession::open(const ServerAddress& address) {
    close();
    errors().Clear();
    server = address;
    const QStringList hosts = address.hosts.isEmpty() ? QStringList{QString()} : address.hosts;
    for (qsizetype i = 0; !connection && i < hosts.size(); ++i) {
        try {
            connectTo(hosts[i]);
        } catch (const Failure& failure) {
            const bool answered = failure.number() >= ER_ERROR_FIRST && failure.number() < CR_MIN_ERROR;
            if (answered || i + 1 == hosts.size())
                throw;
        }
    }
    try {
        if (mysql_get_server_version(connection) < oldest)
            fail({number::dataSource,
                  u"The database server is too old (%1). This program needs MariaDB 10.11 or later."_s.arg(
                      QString::fromUtf8(mysql_get_server_info(connection)))});
        run(serverSettings());
    } catch (const Failure&) {
        close();
        throw;
    }
}

void MariaSession::connectTo(const QString& host) {
    const my_bool yes = 1;
    const unsigned no = 0;
    connection = mysql_init(nullptr);
    mysql_optionsv(connection, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    mysql_optionsv(connection, MYSQL_OPT_CONNECT_TIMEOUT, &waitForServer);
    mysql_optionsv(connection, MYSQL_OPT_READ_TIMEOUT, &waitForReply);
    mysql_optionsv(connection, MYSQL_OPT_WRITE_TIMEOUT, &waitForReply);
    mysql_optionsv(connection, MYSQL_OPT_LOCAL_INFILE, &no); // the server could ask for any file
    if (!host.isEmpty()) {
        mysql_optionsv(connection, MYSQL_OPT_SSL_ENFORCE, &yes);
        mysql_optionsv(connection, MYSQL_OPT_SSL_VERIFY_SERVER_CERT, &yes);
        if (!server.authorities.isEmpty())
            mysql_optionsv(connection, MYSQL_OPT_SSL_CA, server.authorities.toLocal8Bit().constData());
    }
    // Changed rows are those that the condition met, as in a file.
    const bool connected = mysql_real_connect(
        connection, host.isEmpty() ? nullptr : host.section(u':', 0, 0).toUtf8().constData(),
        server.user.toUtf8().constData(), server.password.toUtf8().constData(),
        server.database.toUtf8().constData(), host.section(u':', 1).toUInt(),
        server.socket.isEmpty() ? nullptr : server.socket.toUtf8().constData(), CLIENT_FOUND_ROWS);
    if (connected)
        return;
    const int code = static_cast<int>(mysql_errno(connection));
    const QString words = QString::fromUtf8(mysql_error(connection));
    close();
    fail(code, words);
}

void MariaSession::close() {
    dropCompiled();
    keys.clear();
    inTransaction = false;
    mysql_close(connection); // statements still on loan are then refused by the client library
    connection = nullptr;
}

void MariaSession::fail(int code, const QString& words) {
    if (code == ER_LOCK_DEADLOCK)
        inTransaction = false; // the server has rolled it back
    if (endsConnection(code))
        close();
    fail({code, describe(code, words, server)});
}

void MariaSession::run(const QString& sql) {
    requireOpen();
    const QByteArray utf8 = sql.toUtf8();
    if (mysql_real_query(connection, utf8.constData(), static_cast<unsigned long>(utf8.size())))
        fail(static_cast<int>(mysql_errno(connection)), QString::fromUtf8(mysql_error(connection)));
}

QList<QStringList> MariaSession::rowsOf(const QString& sql) {
    try {
        run(sql);
    } catch (const Failure& failure) {
        if (failure.number() != ER_NO_SUCH_TABLE)
            throw;
        errors().Clear();
        return {};
    }
    QList<QStringList> rows;
    const std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)> result(mysql_store_result(connection),
                                                                          mysql_free_result);
    if (!result && mysql_field_count(connection) > 0)
        fail(static_cast<int>(mysql_errno(connection)), QString::fromUtf8(mysql_error(connection)));
    const unsigned count = result ? mysql_num_fields(result.get()) : 0;
    while (MYSQL_ROW row = result ? mysql_fetch_row(result.get()) : nullptr) {
        QStringList texts;
        for (unsigned i = 0; i < count; ++i)
            texts << QString::fromUtf8(row[i]);
        rows << texts;
    }
    return rows;
}

std::shared_ptr<Compiled> MariaSession::compile(const QString& sql) {
    MYSQL_STMT* handle = mysql_stmt_init(connection);
    const QByteArray utf8 = sql.toUtf8();
    if (mysql_stmt_prepare(handle, utf8.constData(), static_cast<unsigned long>(utf8.size()))) {
        const int code = static_cast<int>(mysql_stmt_errno(handle));
        const QString words = QString::fromUtf8(mysql_stmt_error(handle));
        mysql_stmt_close(handle);
        fail(code, words);
    }
    return std::make_shared<MariaStatement>(*this, sql, handle);
}

void MariaSession::begin(Writes) {
    if (inTransaction)
        fail({ER_CANT_CHANGE_TX_CHARACTERISTICS, u"A transaction is open already."_s});
    run(u"start transaction"_s);
    inTransaction = true;
}

void MariaSession::commit() {
    run(u"commit"_s);
    inTransaction = false;
}

void MariaSession::rollback() {
    inTransaction = false;
    run(u"rollback"_s);
}

qlonglong MariaSession::lastKey() const {
    return static_cast<qlonglong>(mysql_insert_id(connection));
}

qlonglong MariaSession::changedRows() const {
    return static_cast<qlonglong>(mysql_affected_rows(connection));
}

QString MariaSession::keyOf(const QString& table) {
    if (const auto known = keys.constFind(table); known != keys.constEnd())
        return *known;
    for (const QStringList& column : rowsOf(u"show columns from "_s + quoted(table))) {
        if (column.value(5).contains(u"auto_increment"))
            return *keys.insert(table, column[0]);
    }
    return {};
}

qlonglong MariaSession::keysGiven(const QString& table) {
    if (keyOf(table) == u"rowid")
        return 0;
    const QList<QStringList> next =
        rowsOf(u"select auto_increment from information_schema.tables where table_schema=database() and "
               "table_name='"_s +
               table.toLower() + u'\'');
    return next.isEmpty() ? 0 : next[0][0].toLongLong() - 1;
}

/// The engine counts on from the highest key that it has seen, so a record with that key comes and goes.
void MariaSession::setKeysGiven(const QString& table, qlonglong highest) {
    if (highest <= keysGiven(table))
        return;
    const QString key = quoted(keyOf(table));
    const QString number = QString::number(highest);
    run(u"set foreign_key_checks=0"_s);
    try {
        run(u"insert ignore into "_s + quoted(table) + u" (" + key + u") values (" + number + u')');
        run(u"delete from "_s + quoted(table) + u" where " + key + u'=' + number);
    } catch (const Failure&) {
        if (isOpen())
            run(u"set foreign_key_checks=1"_s);
        throw;
    }
    run(u"set foreign_key_checks=1"_s);
}

Columns MariaSession::columnsOf(const QString& name) {
    Columns columns;
    for (const QStringList& column : rowsOf(u"show columns from "_s + quoted(name))) {
        if (!column.value(5).contains(u"INVISIBLE"))
            columns.push_back({column[0], quoted(column[0]), typeOf(column[1])});
    }
    return columns;
}

QStringList MariaSession::tables() {
    QStringList names;
    for (const QStringList& row :
         rowsOf(u"select lower(table_name) from information_schema.tables where table_schema=database()"_s))
        names << row[0];
    return names;
}

int MariaSession::schemaVersion() {
    const QList<QStringList> version = rowsOf(u"select version from "_s + versionView);
    return version.isEmpty() ? 0 : version[0][0].toInt();
}

void MariaSession::makeOwnTables(const QStringList& names) {
    for (const QString& name : names) {
        const QList<QStringList> made = rowsOf(u"show create table "_s + quoted(name.toLower()));
        if (!made.isEmpty())
            run(u"CREATE TEMPORARY"_s + made[0][1].sliced(qsizetype(qstrlen("CREATE"))));
    }
}

void MariaSession::runScript(const QByteArray& script) {
    const auto isText = [this](const QString& table, const QString& name) {
        const Columns columns = columnsOf(table);
        return std::any_of(columns.begin(), columns.end(), [&](const Column& column) {
            return column.type == ColumnType::Text && column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    for (const ScriptStatement& statement : scriptStatements(script)) {
        const QString sql = serverStatement(statement.sql, isText);
        try {
            if (!sql.isEmpty())
                run(sql);
        } catch (const Failure& failure) {
            fail({failure.number(),
                  u"statement from line %1: %2"_s.arg(QString::number(statement.line), failure.text())});
        }
    }
}

void MariaSession::backupTo(const QString&) {
    fail({number::onServer, u"This database is on a server and is copied there, not into a file."_s});
}

} // namespace ado
