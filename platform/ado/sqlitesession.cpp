// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/sqlitesession.h"

#include "platform/ado/casefold.h"
#include "platform/ado/connection.h"
#include "platform/ado/quickcheck.h"
#include "platform/ado/restore.h"
#include "platform/ado/sqlitestatement.h"
#include "platform/ado/store.h"

#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr int waitForOthers = 2000; // milliseconds that a statement waits for another program's lock

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

} // namespace

void SqliteSession::open(const QString& path, Access access) {
    close();
    errors().Clear();
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

void SqliteSession::close() {
    dropCompiled();
    known.clear();
    // With statements still on loan the database closes when the last of them is destroyed.
    sqlite3_close_v2(database);
    database = nullptr;
}

void SqliteSession::fail(int resultCode) {
    // The extended code is that of the last call, which failed with this one.
    const int extended = sqlite3_extended_errcode(database);
    const int exact = (extended & 0xFF) == (resultCode & 0xFF) ? extended : resultCode;
    fail({resultCode & 0xFF, describe(exact, QString::fromUtf8(sqlite3_errmsg(database)))});
}

std::shared_ptr<Compiled> SqliteSession::compile(const QString& sql) {
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* handle = nullptr;
    const int code = sqlite3_prepare_v3(database, utf8.constData(), static_cast<int>(utf8.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    if (code != SQLITE_OK)
        fail(code);
    if (!handle)
        fail({number::syntax, u"The statement is empty."_s});
    return std::make_shared<SqliteStatement>(*this, sql, handle);
}

bool SqliteSession::isInTransaction() const {
    return database && sqlite3_get_autocommit(database) == 0;
}

qlonglong SqliteSession::lastKey() const {
    return sqlite3_last_insert_rowid(database);
}

qlonglong SqliteSession::changedRows() const {
    return sqlite3_changes(database);
}

QString SqliteSession::keyOf(const QString& table) {
    if (!known.contains(table)) {
        Prepared lookup = prepare(
            {u"select 1 from sqlite_schema where type = 'table' and name = ? collate nocase"_s, {table}});
        if (!lookup.step())
            return {};
        known.insert(table);
    }
    return u"rowid"_s;
}

Columns SqliteSession::columnsOf(const QString& name) {
    Columns result;
    Prepared lookup = prepare({u"select name, type from pragma_table_info(?)"_s, {name}});
    while (lookup.step()) {
        const QString column = lookup.column(0).toString();
        result.push_back(
            {column, quoted(column), columnType(lookup.column(1).toString().toUtf8().constData())});
    }
    return result;
}

qlonglong SqliteSession::keysGiven(const QString& table) {
    Prepared given =
        prepare({u"select seq from main.sqlite_sequence where name = ? collate nocase"_s, {table}});
    return given.step() ? given.column(0).toLongLong() : 0;
}

void SqliteSession::setKeysGiven(const QString& table, qlonglong highest) {
    if (highest <= keysGiven(table))
        return;
    prepare({u"delete from main.sqlite_sequence where name = ? collate nocase"_s, {table}}).step();
    prepare({u"insert into main.sqlite_sequence (name, seq) select name, ? from main.sqlite_schema where "
             u"type = 'table' "
             "and name = ? collate nocase"_s,
             {highest, table}})
        .step();
}

QStringList SqliteSession::tables() {
    QStringList names;
    Prepared lookup = prepare({u"select lower(name) from sqlite_schema"_s, {}});
    while (lookup.step())
        names << lookup.column(0).toString();
    return names;
}

int SqliteSession::schemaVersion() {
    Prepared version = prepare({u"pragma user_version"_s, {}});
    return version.step() ? version.column(0).toInt() : 0;
}

void SqliteSession::makeOwnTables(const QStringList& names) {
    QStringList script;
    for (const QString& name : names) {
        Prepared made = prepare({u"select type, sql from sqlite_schema where tbl_name = ? collate nocase and "
                                 "sql is not null order by type = 'index'"_s,
                                 {name}});
        while (made.step()) { // the texts begin with CREATE TABLE and CREATE INDEX, whatever the script had
            const bool isIndex = made.column(0).toString() == u"index";
            const QString sql = made.column(1).toString();
            const qsizetype atName = isIndex ? sql.indexOf(u"INDEX ") + 6 : sql.indexOf(u"TABLE ") + 6;
            script << (isIndex ? sql.first(atName) + u"temp." : u"CREATE TEMP TABLE "_s) + sql.sliced(atName);
        }
    }
    const QByteArray sql = script.join(u';').toUtf8();
    if (const int code = sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr))
        fail(code);
}

void SqliteSession::runScript(const QByteArray& script) {
    const char* rest = script.constData();
    while (*rest) {
        sqlite3_stmt* statement = nullptr;
        const char* start = rest;
        int code = sqlite3_prepare_v2(database, start, -1, &statement, &rest);
        if (code == SQLITE_OK && statement) {
            code = sqlite3_step(statement);
            sqlite3_finalize(statement);
        }
        if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
            const auto line = script.first(start - script.constData()).count('\n') + 1;
            fail({code, u"statement from line %1: %2"_s.arg(QString::number(line),
                                                            QString::fromUtf8(sqlite3_errmsg(database)))});
        }
    }
}

namespace {

/// Keeps other programs from writing to a database, which would begin its copying anew.
class ReadLock {
public:
    explicit ReadLock(sqlite3* locked) : database(sqlite3_get_autocommit(locked) != 0 ? locked : nullptr) {
        if (database)
            sqlite3_exec(database, "begin; select 1 from sqlite_schema", nullptr, nullptr, nullptr);
    }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;
    ~ReadLock() {
        if (database && sqlite3_get_autocommit(database) == 0)
            sqlite3_exec(database, "commit", nullptr, nullptr, nullptr);
    }

private:
    sqlite3* database;
};

/// False when the step has cancelled. The target has the result code.
bool copyPages(sqlite3* from, sqlite3* target, const Step& step) {
    const ReadLock lock(from);
    return copyAllPages(sqlite3_backup_init(target, "main", from, "main"), step) != SQLITE_INTERRUPT;
}

} // namespace

bool SqliteSession::backupTo(const QString& path, const Step& step) {
    const QString beside = path + u".part";
    QFile::remove(beside);
    sqlite3* target = nullptr;
    int code = makeOwnersFile(beside) ? sqlite3_open(beside.toUtf8().constData(), &target) : SQLITE_CANTOPEN;
    bool isCancelled = false;
    if (code == SQLITE_OK) {
        isCancelled = !copyPages(database, target, step);
        code = sqlite3_errcode(target);
    }
    sqlite3_close(target);
    QuickCheck check(beside);
    if (!isCancelled && code == SQLITE_OK && check.findsDamage(step)) {
        QFile::remove(beside);
        fail({SQLITE_CORRUPT, u"The database is damaged, and so would be its copy '"_s + path +
                                  u"'. Nothing has been changed."});
    }
    if (isCancelled || check.isStopped()) {
        QFile::remove(beside);
        return false;
    }
    const bool copied =
        code == SQLITE_OK && (!QFile::exists(path) || QFile::remove(path)) && QFile::rename(beside, path);
    if (copied)
        return true;
    QFile::remove(beside);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED || code == SQLITE_CORRUPT)
        fail(code);
    fail({code == SQLITE_OK ? SQLITE_IOERR : code,
          u"The copy of the database '"_s + path +
              u"' cannot be written. Nothing has been changed. Is the disk full or the folder "
              u"read-only?"});
}

bool backUp(const Connection& file, const QString& path, const Step& step) {
    return std::dynamic_pointer_cast<SqliteSession>(file.session())->backupTo(path, step);
}

sqlite3* databaseOf(const Connection& connection) {
    const auto* file = dynamic_cast<const SqliteSession*>(connection.session().get());
    return file ? file->handle() : nullptr;
}

} // namespace ado
