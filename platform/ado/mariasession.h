// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/session.h"
#include "platform/ado/waitingrecords.h"

#include <QHash>

#include <mysql.h>

namespace ado {

/// Where a database server is and who asks.
struct ServerAddress {
    /// Each "name", "name:port" or "[IPv6 address]:port"; the first that serves is taken.
    QStringList hosts;
    QString authorities; ///< file of the certificates that may sign a host's; empty: the system's
    QString socket;      ///< of a server on this computer; then there are no hosts
    QString database;
    QString user;
    QString password;
};

/// A store on a MariaDB server, 10.11 or later. Its texts compare by the collation of serverscript.h, its
/// statements wait two seconds at most for another program's locks. A failure that ends the connection closes
/// the session. A node of a cluster reads what has been committed on any other.
class MariaSession final : public Session {
public:
    ~MariaSession() override { MariaSession::close(); }

    /// A host is connected to through TCP and TLS only, with its certificate and its name checked. The next
    /// one is tried when a host cannot be reached or cannot serve; a refusal of the user ends the search.
    void open(const ServerAddress& address);
    using Session::fail;
    [[noreturn]] void fail(int code, const QString& words);
    /// Fails for values of so many bytes in all when the server would end the connection because of them.
    void requireTaken(qulonglong bytes);

    Target target() const override { return Target::MariaDb; }
    bool isOpen() const override { return connection != nullptr; }
    bool hasEnded() const override;
    void close() override;
    void begin(Writes writes) override;
    void commit() override;
    void rollback() override;
    bool isInTransaction() const override { return inTransaction; }
    void write(RecordWrite record) override;
    void sendWaiting() override { waiting.send(*this); }
    qlonglong lastKey() const override;
    qlonglong changedRows() const override;
    QString keyOf(const QString& table) override;
    qlonglong keysGiven(const QString& table) override;
    void setKeysGiven(const QString& table, qlonglong highest) override;
    Columns columnsOf(const QString& name) override;
    QStringList tables() override;
    int schemaVersion() override;
    void makeOwnTables(const QStringList& names) override;
    /// Changes of tables commit on a server, so a transaction does not hold the script together.
    void runScript(const QByteArray& script) override;
    void backupTo(const QString& path) override;

private:
    std::shared_ptr<Compiled> compile(const QString& sql) override;
    /// host: empty for the socket.
    void openAt(const QString& host);
    void connectTo(const QString& host);
    void joinCluster();
    void run(const QString& sql);
    /// The rows of a statement without parameters; none for a table that does not exist.
    QList<QStringList> rowsOf(const QString& sql);

    MYSQL* connection = nullptr;
    ServerAddress server;
    QString hostName; ///< for messages
    bool isConnecting = false;
    bool isInCluster = false;
    qulonglong longest = 0; ///< message that the server takes, in bytes
    bool inTransaction = false;
    bool isCommitting = false;
    WaitingRecords waiting;
    QHash<QString, QString> keys; ///< those found by keyOf
};

} // namespace ado
