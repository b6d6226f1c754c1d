// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/dialect.h"
#include "platform/ado/error.h"
#include "platform/ado/value.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace ado {

struct Column {
    QString name;
    QString quoted;
    ColumnType type;
};
using Columns = std::vector<Column>;

/// A statement compiled by an engine, which its session keeps for the next use of the same text.
class Compiled {
public:
    explicit Compiled(QString text) : sql(std::move(text)) {}
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;
    virtual ~Compiled() = default;

    /// Binds the values from position 1 on.
    virtual void bind(const QVariantList& values) = 0;
    /// Advances to the next row; false at the end. Records and throws a Failure.
    virtual bool step() = 0;
    /// The value of a column of the current row: qlonglong, double, QString or invalid.
    virtual QVariant column(int index) const = 0;
    /// Likewise, converted by fromStore for a column of that type.
    virtual QVariant column(int index, ColumnType type) const = 0;
    /// Appends the values of all columns, converted for their declared types.
    virtual void takeRow(std::vector<QVariant>& cells) const = 0;
    /// Whether it changes nothing in the store.
    virtual bool isReading() const = 0;
    /// Releases the rows, the locks and the bound values.
    virtual void reset() = 0;

    const QString sql;
    std::shared_ptr<const Columns> columns; ///< those of a select
    bool onLoan = false;
};

class Session;

/// A statement that writes one record.
struct RecordWrite {
    QString sql;
    QVariantList values;
    bool mustMeet = false; ///< it fails when the record is gone
};

/// What a transaction changes: the store, or only the connection's own tables, which need no lock.
enum class Writes { Store, OwnTables };

/// A compiled statement on loan from its session; returned, reset, on destruction.
class Prepared {
public:
    Prepared() = default;
    Prepared(std::shared_ptr<Session> owner, std::shared_ptr<Compiled> statement);
    Prepared(Prepared&& other) noexcept { swap(other); }
    Prepared& operator=(Prepared&& other) noexcept {
        Prepared(std::move(other)).swap(*this);
        return *this;
    }
    ~Prepared();

    Compiled* operator->() const { return compiled.get(); }
    bool step() { return compiled->step(); }
    QVariant column(int index) const { return compiled->column(index); }
    QVariant column(int index, ColumnType type) const { return compiled->column(index, type); }

private:
    void swap(Prepared& other) noexcept {
        std::swap(session, other.session);
        std::swap(compiled, other.compiled);
    }

    std::shared_ptr<Session> session; // outlives its statements
    std::shared_ptr<Compiled> compiled;
};

/// An open store of one engine, with its errors and its compiled statements; shared by a connection and its
/// recordsets. Every operation that fails records and throws a Failure.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    virtual ~Session() = default;

    virtual Target target() const = 0;
    virtual bool isOpen() const = 0;
    /// Whether a server has ended the connection while it was idle, which shows without asking it.
    virtual bool hasEnded() const { return false; }
    virtual void close() = 0;
    ErrorList& errors() { return errorList; }

    /// Compiles the one statement of the text, or reuses a kept one.
    Prepared prepare(const Statement& statement);

    virtual void begin(Writes writes) = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    virtual bool isInTransaction() const = 0;
    /// The key of the record added last, and the number of records that the last statement met.
    virtual qlonglong lastKey() const = 0;
    virtual qlonglong changedRows() const = 0;

    /// Writes a record now.
    void writeNow(const RecordWrite& record);
    /// Writes a record at the latest before another statement runs or Connection::CommitTrans: what waits
    /// goes to a server together. Of records that went together those before the first that fails are
    /// written.
    virtual void write(RecordWrite record) { writeNow(record); }
    virtual void sendWaiting() {}

    /// The column that numbers the records of a table; empty when no table has that name, though a saved
    /// query may.
    virtual QString keyOf(const QString& table) = 0;
    bool isTable(const QString& name) { return !keyOf(name).isEmpty(); }
    /// The highest key that a table whose keys are given once has given, also to a record deleted since; 0
    /// for any other table. A table is told in a transaction that it has given them.
    virtual qlonglong keysGiven(const QString& table) = 0;
    virtual void setKeysGiven(const QString& table, qlonglong highest) = 0;
    /// The columns of a table or saved query; none when there is none of that name.
    virtual Columns columnsOf(const QString& name) = 0;
    /// The names of all tables and saved queries, in small letters.
    virtual QStringList tables() = 0;
    /// The version that the scripts gave the store.
    virtual int schemaVersion() = 0;

    /// Makes a temporary, empty table of each name, with the columns and indexes of the stored one, which it
    /// hides from this session. Names that the store does not have are left out.
    virtual void makeOwnTables(const QStringList& names) = 0;

    /// Runs a script of statements in SQLite's SQL, separated by semicolons. A Failure names the line.
    virtual void runScript(const QByteArray& script) = 0;
    /// Copies the committed state of the whole store into a file, as Connection::BackupTo describes.
    virtual void backupTo(const QString& path) = 0;

    /// Throws for a closed session; nothing is recorded, since the call never reached the store.
    void requireOpen() const;
    [[noreturn]] void fail(const Error& error);
    /// Runs the function and records the Failure that it throws.
    template <class Function> auto recorded(Function function) {
        try {
            return function();
        } catch (const Failure& failure) {
            fail({failure.number(), failure.text()});
        }
    }

protected:
    virtual std::shared_ptr<Compiled> compile(const QString& sql) = 0;
    void dropCompiled() { kept.clear(); }

private:
    std::shared_ptr<Compiled> compiledOf(const QString& sql);

    ErrorList errorList;
    std::vector<std::shared_ptr<Compiled>> kept; ///< most recently used first
};

} // namespace ado
