// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/session.h"

#include "platform/ado/casefold.h"

#include <QFileInfo>

#include <algorithm>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr int waitForOthers = 2000; // milliseconds that a statement waits for another program's lock
constexpr std::size_t mostKept = 64;

/// A sentence for each failure that a user can meet, otherwise SQLite's own message.
QString describe(int code, const QString& words) {
    if (code == SQLITE_READONLY_DBMOVED)
        return u"The database file has been moved, deleted or replaced meanwhile. Close the program and "
               u"start it again."_s;
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

QString quoted(const QString& name) {
    return u'"' + QString(name).replace(u'"', u"\"\""_s) + u'"';
}

Compiled::Compiled(QString text, sqlite3_stmt* statement) : sql(std::move(text)), handle(statement) {
    Columns found;
    for (int i = 0; i < sqlite3_column_count(handle); ++i) {
        const QString name = QString::fromUtf8(sqlite3_column_name(handle, i));
        found.push_back({name, quoted(name), columnType(sqlite3_column_decltype(handle, i))});
    }
    columns = std::make_shared<const Columns>(std::move(found));
}

Compiled::~Compiled() {
    sqlite3_finalize(handle);
}

Prepared::Prepared(std::shared_ptr<Session> owner, std::shared_ptr<Compiled> statement)
    : session(std::move(owner)), compiled(std::move(statement)) {
    compiled->onLoan = true;
}

Prepared::~Prepared() {
    if (!compiled)
        return;
    sqlite3_reset(compiled->handle);
    sqlite3_clear_bindings(compiled->handle);
    compiled->onLoan = false;
}

void Prepared::bind(const QVariantList& values) {
    for (qsizetype i = 0; i < values.size(); ++i)
        bindOne(get(), static_cast<int>(i) + 1, values[i]);
}

bool Prepared::step() {
    const int code = sqlite3_step(get());
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        session->fail(code);
    return false;
}

QVariant Prepared::column(int index) const {
    sqlite3_stmt* const handle = get();
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

QVariant Prepared::column(int index, ColumnType type) const {
    if (type != ColumnType::Date || sqlite3_column_type(get(), index) != SQLITE_TEXT)
        return fromStore(type, column(index));
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(get(), index));
    return fromIso(QLatin1StringView(text, sqlite3_column_bytes(get(), index)));
}

void Session::open(const QString& path, Access access) {
    close();
    errorList.Clear();
    if (!QFileInfo(path).isFile())
        fail({number::dataSource, u"Could not find the database file '"_s + path + u"'."});
    const int mode = access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    // The program has one thread, so the database needs no lock of its own around each call.
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &database, mode | SQLITE_OPEN_NOMUTEX, nullptr);
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
    if (access == Access::ReadWrite) // what is deleted is overwritten
        sqlite3_exec(database, "pragma secure_delete = on", nullptr, nullptr, nullptr);
}

void Session::close() {
    kept.clear();
    tables.clear();
    // With statements still on loan the database closes when the last of them is destroyed.
    sqlite3_close_v2(database);
    database = nullptr;
}

void Session::requireOpen() const {
    if (!database)
        throw Failure(number::objectClosed, u"Operation is not allowed when the object is closed."_s);
}

void Session::fail(const Error& error) {
    errorList.Clear();
    errorList.Add(error);
    throw Failure(error.Number, error.Description);
}

void Session::fail(int resultCode) {
    // The extended code is that of the last call, which failed with this one.
    const int extended = sqlite3_extended_errcode(database);
    const int exact = (extended & 0xFF) == (resultCode & 0xFF) ? extended : resultCode;
    fail({resultCode & 0xFF, describe(exact, QString::fromUtf8(sqlite3_errmsg(database)))});
}

Prepared Session::prepare(const Statement& statement) {
    requireOpen();
    Prepared result(shared_from_this(), compiledOf(statement.sql));
    result.bind(statement.parameters);
    return result;
}

/// A free kept one of that text, or a new one; moved to the front of those kept.
std::shared_ptr<Compiled> Session::compiledOf(const QString& sql) {
    const auto known =
        std::find_if(kept.begin(), kept.end(), [&](const std::shared_ptr<Compiled>& statement) {
            return !statement->onLoan && statement->sql == sql;
        });
    if (known != kept.end()) {
        std::rotate(kept.begin(), known, known + 1);
        return kept.front();
    }
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* handle = nullptr;
    const int code = sqlite3_prepare_v3(database, utf8.constData(), static_cast<int>(utf8.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    if (code != SQLITE_OK)
        fail(code);
    if (!handle)
        fail({number::syntax, u"The statement is empty."_s});
    kept.insert(kept.begin(), std::make_shared<Compiled>(sql, handle));
    if (kept.size() > mostKept)
        kept.pop_back();
    return kept.front();
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

} // namespace ado
