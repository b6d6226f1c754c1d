// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/error.h"

#include <QMap>
#include <QStringList>

#include <memory>

namespace ado {

class Session;

enum ConnectionState { StateClosed = 0, StateOpen = 1 };

/// A value of a connection string in braces, within which it may hold any character.
QString braced(const QString& value);

/// A connection to a database through its data source. Every operation that fails throws Failure.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// "DSN=name;UID=;PWD=password;", or for a server without a data source its attributes instead, as
    /// datasources.h names them: "SERVER=host;DATABASE=name;UID=user;PWD=password;". A value with a
    /// semicolon, or with a brace at its beginning, stands in braces: "PWD={a;b}}c}" is the password "a;b}c".
    QString ConnectionString;

    /// Tables whose rows are each connection's own: Open puts an empty, temporary table in the place of each,
    /// also in a store that can only be read.
    QStringList OwnTables;

    /// On a server, the table whose only record a transaction locks first, so that those that change the
    /// store follow one another as they do in a file: what one has looked up is still so when it writes.
    /// Empty: transactions run side by side.
    QString LockedFirst;

    /// Opens the file of the data source and checks the password, or connects to its server. A file that can
    /// only be read is opened for reading.
    void Open();
    /// Opens a database file by its path, for reading only, and checks the password.
    void OpenReadOnly(const QString& path, const QString& password);
    /// Closes; a transaction that is open is rolled back. Closing twice does nothing.
    void Close();
    /// A ConnectionState.
    int State() const;
    /// Whether an idle connection has been ended by its server, though its state is still open.
    bool HasEnded() const;

    ErrorList& Errors();
    const ErrorList& Errors() const;

    /// Runs one statement that returns no rows.
    void Execute(const QString& sql);

    /// Transactions do not nest. In a file a transaction takes the write lock at its start, so that another
    /// program's lock is met before anything is changed; a server locks the record of LockedFirst, and then
    /// those that are written. One that writes to own tables only takes no such lock.
    void BeginTrans();
    void BeginOwnTrans();
    void CommitTrans();
    /// Writes what recordsets with Lock::BatchOptimistic have written so far, so that its failure is met
    /// here.
    void UpdateBatch();
    /// Does nothing without an open transaction.
    void RollbackTrans();
    bool InTransaction() const;

    /// Whether the store is a file, which BackupTo copies.
    bool IsFile() const;
    /// The names of all tables and saved queries, in small letters.
    QStringList Tables();
    /// The version that the scripts gave the store.
    int SchemaVersion();

    /// Copies the committed state of the whole database into a file; an existing one is replaced only when
    /// the copy is complete and a check has found no damage in it. Only its owner can read it. Fails with
    /// number::onServer for a server.
    void BackupTo(const QString& path);

    const std::shared_ptr<Session>& session() const { return open; }

private:
    void openServer(const QMap<QString, QString>& source, const QString& password);
    void openFile(const QString& path, const QString& password, bool readOnly);

    std::shared_ptr<Session> open;
};

} // namespace ado
