// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"

#include "platform/ado/datasources.h"
#include "platform/ado/password.h"
#include "platform/ado/quickcheck.h"
#include "platform/ado/session.h"
#include "platform/ado/store.h"

#include <QFile>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

QString partOf(const QString& connectionString, const QString& key) {
    for (const QString& part : connectionString.split(u';')) {
        if (part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0)
            return part.section(u'=', 1);
    }
    return {};
}

} // namespace

Connection::Connection() : open(std::make_shared<Session>()) {}

Connection::~Connection() {
    Close();
}

void Connection::Open() {
    const QString name = partOf(ConnectionString, u"DSN"_s);
    const QString path = dataSourcePath(name);
    if (path.isEmpty())
        open->fail({number::dataSource, u"Data source name '"_s + name + u"' not found."});
    open->open(path);
    admit(partOf(ConnectionString, u"PWD"_s));
}

void Connection::OpenReadOnly(const QString& path, const QString& password) {
    open->open(path, Session::Access::Read);
    admit(password);
}

void Connection::admit(const QString& password) {
    try {
        requirePassword(*open, password);
    } catch (const Failure&) {
        open->close();
        throw;
    }
}

void Connection::Close() {
    if (open->isOpen())
        RollbackTrans();
    open->close();
}

int Connection::State() const {
    return open->isOpen() ? 1 : 0;
}

ErrorList& Connection::Errors() {
    return open->errors();
}

const ErrorList& Connection::Errors() const {
    return open->errors();
}

void Connection::Execute(const QString& sql) {
    open->requireOpen();
    Prepared statement = open->prepare(open->recorded([&] { return translate(sql); }));
    while (statement.step()) {
    }
}

void Connection::BeginTrans() {
    open->requireOpen();
    open->prepare({u"begin immediate"_s, {}}).step();
}

void Connection::CommitTrans() {
    open->requireOpen();
    open->prepare({u"commit"_s, {}}).step();
}

void Connection::RollbackTrans() {
    if (InTransaction())
        open->prepare({u"rollback"_s, {}}).step();
}

bool Connection::InTransaction() const {
    return open->isOpen() && sqlite3_get_autocommit(open->handle()) == 0;
}

void Connection::BackupTo(const QString& path) {
    open->requireOpen();
    const QString beside = path + u".part";
    QFile::remove(beside);
    sqlite3* target = nullptr;
    int code = makeOwnersFile(beside) ? sqlite3_open(beside.toUtf8().constData(), &target) : SQLITE_CANTOPEN;
    if (code == SQLITE_OK) {
        sqlite3_backup* copy = sqlite3_backup_init(target, "main", open->handle(), "main");
        if (copy) {
            sqlite3_backup_step(copy, -1);
            sqlite3_backup_finish(copy);
        }
        code = sqlite3_errcode(target);
    }
    sqlite3_close(target);
    if (code == SQLITE_OK && QuickCheck(beside).findsDamage()) {
        QFile::remove(beside);
        open->fail({SQLITE_CORRUPT, u"The database is damaged, and so would be its copy '"_s + path +
                                        u"'. Nothing has been changed."});
    }
    const bool copied =
        code == SQLITE_OK && (!QFile::exists(path) || QFile::remove(path)) && QFile::rename(beside, path);
    if (copied)
        return;
    QFile::remove(beside);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED || code == SQLITE_CORRUPT)
        open->fail(code);
    open->fail({code == SQLITE_OK ? SQLITE_IOERR : code,
                u"The copy of the database '"_s + path +
                    u"' cannot be written. Nothing has been changed. Is the disk full or the folder "
                    u"read-only?"});
}

} // namespace ado
