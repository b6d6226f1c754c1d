// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"

#include "platform/ado/datasources.h"
#include "platform/ado/mariasession.h"
#include "platform/ado/password.h"
#include "platform/ado/sqlitesession.h"

using namespace Qt::StringLiterals;

namespace ado {
namespace {

/// The parts of a connection string by their names in capitals.
QMap<QString, QString> partsOf(const QString& connectionString) {
    QMap<QString, QString> parts;
    for (const QString& part : connectionString.split(u';', Qt::SkipEmptyParts))
        parts.insert(part.section(u'=', 0, 0).trimmed().toUpper(), part.section(u'=', 1));
    return parts;
}

} // namespace

Connection::Connection() : open(std::make_shared<SqliteSession>()) {}

Connection::~Connection() {
    Close();
}

void Connection::Open() {
    const QMap<QString, QString> parts = partsOf(ConnectionString);
    QMap<QString, QString> source = parts;
    if (const QString name = parts.value(u"DSN"_s); !name.isEmpty())
        source = dataSource(name);
    const QString password = parts.value(u"PWD"_s);
    if (source.contains(u"DBQ"_s))
        openFile(source[u"DBQ"_s], password, false);
    else if (source.contains(u"SERVER"_s) || source.contains(u"SOCKET"_s))
        openServer(source, password);
    else
        open->fail({number::dataSource, u"Data source name '"_s + parts.value(u"DSN"_s) + u"' not found."});
    open->makeOwnTables(OwnTables);
}

void Connection::openServer(const QMap<QString, QString>& source, const QString& password) {
    const auto server = std::make_shared<MariaSession>();
    open = server;
    server->open({.hosts = source.value(u"SERVER"_s).split(u',', Qt::SkipEmptyParts),
                  .socket = source.value(u"SOCKET"_s),
                  .database = source.value(u"DATABASE"_s),
                  .user = source.value(u"UID"_s),
                  .password = password});
}

void Connection::OpenReadOnly(const QString& path, const QString& password) {
    openFile(path, password, true);
    open->makeOwnTables(OwnTables);
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
    Prepared statement = open->prepare(open->recorded([&] { return translate(sql, open->target()); }));
    while (statement.step()) {
    }
}

void Connection::BeginTrans() {
    open->requireOpen();
    open->begin(Writes::Store);
}

void Connection::BeginOwnTrans() {
    open->requireOpen();
    open->begin(Writes::OwnTables);
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

bool Connection::IsFile() const {
    return open->target() != Target::MariaDb;
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
