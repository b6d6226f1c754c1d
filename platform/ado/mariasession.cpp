// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/mariasession.h"

#include "platform/ado/mariastatement.h"
#include "platform/ado/serverfault.h"
#include "platform/ado/serverscript.h"

#include <algorithm>

#include <mysqld_error.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

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

void MariaSession::close() {
    dropCompiled();
    waiting.drop();
    keys.clear();
    isConnecting = inTransaction = isCommitting = false;
    mysql_close(connection); // statements still on loan are then refused by the client library
    connection = nullptr;
}

void MariaSession::fail(int given, const QString& words) {
    const int code = numberOf(given, words);
    const QString sentence = sentenceOf({.code = code,
                                         .words = words,
                                         .host = hostName,
                                         .user = server.user,
                                         .database = server.database,
                                         .isConnecting = isConnecting,
                                         .isInCluster = isInCluster,
                                         .isUndone = inTransaction && !isCommitting});
    if (code == ER_LOCK_DEADLOCK || code == ER_CHECKREAD) { // the server has rolled it back
        inTransaction = false;
        waiting.drop();
    }
    if (endsConnection(code))
        close();
    fail({code, sentence});
}

void MariaSession::requireTaken(qulonglong bytes) {
    constexpr qulonglong besides = 1024; // bytes for numbers, types and lengths
    if (bytes + besides > longest)
        fail(ER_NET_PACKET_TOO_LARGE, {});
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
    if (!inTransaction) // the server would commit nothing and say so of a transaction that it has rolled back
        fail({ER_CANT_CHANGE_TX_CHARACTERISTICS,
              u"The transaction has ended before. Nothing of this step has been saved."_s});
    isCommitting = true;
    try {
        run(u"commit"_s);
        inTransaction = isCommitting = false;
    } catch (const Failure&) {
        isCommitting = false;
        throw;
    }
}

void MariaSession::rollback() {
    inTransaction = false;
    waiting.drop();
    run(u"rollback"_s);
}

void MariaSession::write(RecordWrite record) {
    if (!inTransaction)
        writeNow(record);
    else if (waiting.add(std::move(record)))
        sendWaiting();
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
