// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/session.h"

#include "platform/ado/casefold.h"

#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr int waitForOthers = 2000; // milliseconds that a statement waits for another program's lock
constexpr std::size_t mostKept = 64;

/// A sentence for the failures that a user can meet, else SQLite's own words.
QString describe(int code, const QString& words) {
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return u"The database is in use by another program. Close that program and try again."_s;
    case SQLITE_READONLY:
        return u"The database cannot be changed: the file or its folder is read-only."_s;
    case SQLITE_NOTADB:
        return u"The file is not a database."_s;
    case SQLITE_CORRUPT:
        return u"The database is damaged."_s;
    case SQLITE_FULL:
        return u"The disk is full. Nothing of this step has been saved."_s;
    case SQLITE_IOERR:
        return u"The database cannot be read or written (disk error)."_s;
    case SQLITE_CANTOPEN:
        return u"The database file cannot be opened."_s;
    default:
        return words;
    }
}

void bindOne(sqlite3_stmt* statement, int position, const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        sqlite3_bind_null(statement, position);
        break;
    case QMetaType::Int:
    case QMetaType::LongLong:
        sqlite3_bind_int64(statement, position, value.toLongLong());
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        sqlite3_bind_double(statement, position, value.toDouble());
        break;
    default: {
        const QByteArray utf8 = value.toString().toUtf8();
        sqlite3_bind_text(statement, position, utf8.constData(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT);
    }
    }
}

} // namespace

Prepared::~Prepared() {
    if (handle)
        session->giveBack(sql, handle);
}

void Prepared::bind(const QVariantList& values) {
    for (qsizetype i = 0; i < values.size(); ++i)
        bindOne(handle, static_cast<int>(i) + 1, values[i]);
}

bool Prepared::step() {
    const int code = sqlite3_step(handle);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        session->fail(code);
    return false;
}

QVariant Prepared::column(int index) const {
    switch (sqlite3_column_type(handle, index)) {
    case SQLITE_INTEGER:
        return qlonglong{sqlite3_column_int64(handle, index)};
    case SQLITE_FLOAT:
        return sqlite3_column_double(handle, index);
    case SQLITE_NULL:
        return {};
    default:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(handle, index)),
                                 sqlite3_column_bytes(handle, index));
    }
}

void Session::open(const QString& path, Access access) {
    close();
    errorList.Clear();
    if (!QFileInfo(path).isFile())
        fail({number::dataSource, u"Could not find the database file '"_s + path + u"'."});
    const int flags = access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &database, flags, nullptr);
    if (code != SQLITE_OK) {
        const QString words = database ? QString::fromUtf8(sqlite3_errmsg(database)) : QString();
        close();
        fail({code, describe(code, words)});
    }
    sqlite3_extended_result_codes(database, 0);
    sqlite3_busy_timeout(database, waitForOthers);
    // A name in double quotes is never taken for a text, and no statement can write to the schema's own
    // pages.
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    if (const int registered = registerTextRules(database))
        fail(registered);
}

void Session::close() {
    for (const Kept& statement : kept)
        sqlite3_finalize(statement.compiled);
    kept.clear();
    tables.clear();
    // With statements still on loan the database closes when the last of them is finalized.
    sqlite3_close_v2(database);
    database = nullptr;
}

void Session::requireOpen() const {
    if (!database)
        throw Failure({number::objectClosed, u"Operation is not allowed when the object is closed."_s});
}

void Session::fail(const Error& error) {
    errorList.Clear();
    errorList.Add(error);
    throw Failure(error);
}

void Session::fail(int resultCode) {
    fail({resultCode & 0xFF, describe(resultCode, QString::fromUtf8(sqlite3_errmsg(database)))});
}

Prepared Session::prepare(const Statement& statement) {
    requireOpen();
    const QByteArray sql = statement.sql.toUtf8();
    sqlite3_stmt* compiled = nullptr;
    for (auto it = kept.begin(); it != kept.end(); ++it) {
        if (it->sql == sql) {
            compiled = it->compiled;
            kept.erase(it);
            break;
        }
    }
    if (!compiled) {
        const int code = sqlite3_prepare_v3(database, sql.constData(), static_cast<int>(sql.size()),
                                            SQLITE_PREPARE_PERSISTENT, &compiled, nullptr);
        if (code != SQLITE_OK)
            fail(code);
        if (!compiled)
            fail({number::syntax, u"The statement is empty."_s});
    }
    Prepared result(shared_from_this(), sql, compiled);
    result.bind(statement.parameters);
    return result;
}

bool Session::isTable(const QString& name) {
    if (tables.contains(name))
        return true;
    Prepared lookup =
        prepare({u"select 1 from sqlite_schema where type = 'table' and name = ? collate nocase"_s, {name}});
    if (!lookup.step())
        return false;
    tables.insert(name);
    return true;
}

void Session::giveBack(const QByteArray& sql, sqlite3_stmt* compiled) {
    sqlite3_reset(compiled);
    sqlite3_clear_bindings(compiled);
    if (!database || sqlite3_db_handle(compiled) != database) {
        sqlite3_finalize(compiled);
        return;
    }
    kept.push_front({sql, compiled});
    if (kept.size() > mostKept) {
        sqlite3_finalize(kept.back().compiled);
        kept.pop_back();
    }
}

} // namespace ado
