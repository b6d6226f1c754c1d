// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"

#include "platform/ado/datasources.h"
#include "platform/ado/password.h"
#include "platform/ado/sqlitesession.h"

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

Connection::Connection() : open(std::make_shared<SqliteSession>()) {}

Connection::~Connection() {
    Close();
}

void Connection::Open() {
    const QString name = partOf(ConnectionString, u"DSN"_s);
    const QString path = dataSourcePath(name);
    if (path.isEmpty())
        open->fail({number::dataSource, u"Data source name '"_s + name + u"' not found."});
    openFile(path, partOf(ConnectionString, u"PWD"_s), false);
}

void Connection::OpenReadOnly(const QString& path, const QString& password) {
    openFile(path, password, true);
}

void Connection::openFile(const QString& path, const QString& password, bool readOnly) {
    const auto file = std::make_shared<SqliteSession>();
    open = file;
    file->open(path, readOnly ? SqliteSession::Access::Read : SqliteSession::Access::ReadWrite);
    try {
        requirePassword(*file, password);
    } catch (const Failure&) {
        file->close();
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
    open->begin();
}

void Connection::CommitTrans() {
    open->requireOpen();
    open->commit();
}

void Connection::RollbackTrans() {
    if (InTransaction())
        open->rollback();
}

bool Connection::InTransaction() const {
    return open->isInTransaction();
}

QStringList Connection::Tables() {
    open->requireOpen();
    return open->tables();
}

int Connection::SchemaVersion() {
    open->requireOpen();
    return open->schemaVersion();
}

void Connection::BackupTo(const QString& path) {
    open->requireOpen();
    open->backupTo(path);
}

} // namespace ado
