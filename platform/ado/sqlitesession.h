// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/besides.h"
#include "platform/ado/session.h"

#include <QSet>

struct sqlite3;

namespace ado {

class Connection;

/// A store in a file of SQLite.
class SqliteSession final : public Session {
public:
    ~SqliteSession() override { SqliteSession::close(); }

    enum class Access { ReadWrite, Read };

    void open(const QString& path, Access access = Access::ReadWrite);
    sqlite3* handle() const { return database; }
    using Session::fail;
    [[noreturn]] void fail(int resultCode);

    Target target() const override { return Target::Sqlite; }
    bool isOpen() const override { return database != nullptr; }
    void close() override;
    /// Takes the write lock, so that another program's lock is met before anything is changed.
    void begin(Writes writes) override {
        prepare({writes == Writes::Store ? QStringLiteral("begin immediate") : QStringLiteral("begin"), {}})
            .step();
    }
    void commit() override { prepare({QStringLiteral("commit"), {}}).step(); }
    void rollback() override { prepare({QStringLiteral("rollback"), {}}).step(); }
    bool isInTransaction() const override;
    qlonglong lastKey() const override;
    qlonglong changedRows() const override;
    QString keyOf(const QString& table) override;
    qlonglong keysGiven(const QString& table) override;
    void setKeysGiven(const QString& table, qlonglong highest) override;
    Columns columnsOf(const QString& name) override;
    QStringList tables() override;
    int schemaVersion() override;
    void makeOwnTables(const QStringList& names) override;
    void runScript(const QByteArray& script) override;
    void backupTo(const QString& path) override { backupTo(path, {}); }
    /// Likewise; false, without a copy, when the step has cancelled.
    bool backupTo(const QString& path, const Step& step);

private:
    std::shared_ptr<Compiled> compile(const QString& sql) override;

    sqlite3* database = nullptr;
    QSet<QString> known; ///< the tables met by keyOf
};

/// The database of a connection to a file; null for any other.
sqlite3* databaseOf(const Connection& connection);

/// BackupTo of a connection to a file, with a step; false when that has cancelled.
bool backUp(const Connection& file, const QString& path, const Step& step);

} // namespace ado
