// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"

#include "platform/ado/datasources.h"
#include "platform/ado/mariasession.h"
#include "platform/ado/password.h"
#include "platform/ado/sqlitesession.h"

using namespace Qt::StringLiterals;

namespace ado {
namespace {

/// The value at the beginning of the text, which is taken from it.
QString takeValue(QStringView& text) {
    QString value;
    qsizetype end = 0;
    if (text.startsWith(u'{')) {
        for (end = 1; end < text.size(); ++end) {
            if (text[end] == u'}' && (++end == text.size() || text[end] != u'}'))
                break;
            value += text[end];
        }
    }
    const qsizetype next = text.indexOf(u';', end);
    value += text.sliced(end, (next < 0 ? text.size() : next) - end);
    text = next < 0 ? QStringView() : text.sliced(next + 1);
    return value;
}

/// The parts of a connection string by their names in capitals.
QMap<QString, QString> partsOf(const QString& connectionString) {
    QMap<QString, QString> parts;
    for (QStringView rest = connectionString; !rest.isEmpty();) {
        const qsizetype sign = rest.indexOf(u'=');
        if (sign < 0)
            break;
        const QString name = rest.first(sign).toString().section(u';', -1).trimmed().toUpper();
        rest = rest.sliced(sign + 1);
        parts.insert(name, takeValue(rest));
    }
    return parts;
}

} // namespace

QString braced(const QString& value) {
    return u'{' + QString(value).replace(u'}', u"}}"_s) + u'}';
}

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
                  .authorities = source.value(u"SSLCA"_s),
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

bool Connection::HasEnded() const {
    return open->hasEnded();
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
    if (LockedFirst.isEmpty() || IsFile())
        return;
    try {
        open->prepare({u"select 1 from "_s + quoted(LockedFirst) + u" for update", {}}).step();
    } catch (const Failure&) {
        const ErrorList reason = open->errors();
        RollbackTrans();
        open->errors() = reason;
        throw;
    }
}

void Connection::BeginOwnTrans() {
    open->requireOpen();
    open->begin(Writes::OwnTables);
}

void Connection::CommitTrans() {
    UpdateBatch();
    open->commit();
}

void Connection::UpdateBatch() {
    if (!open->isOpen()) // whoever has dropped the first failure must not take the step for saved
        open->fail({number::objectClosed,
                    u"The connection to the database is closed. Nothing of this step has been saved."_s});
    open->sendWaiting();
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
