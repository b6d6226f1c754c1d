// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/dialect.h"
#include "platform/ado/error.h"
#include "platform/ado/value.h"

#include <QSet>

#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ado {

class Session;

/// A name quoted for use in a statement, whatever characters it contains.
QString quoted(const QString& name);

struct Column {
    QString name;
    QString quoted;
    ColumnType type;
};
using Columns = std::vector<Column>;

/// A compiled statement that its session keeps for the next use of the same text.
struct Compiled {
    Compiled(QString text, sqlite3_stmt* statement);
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;
    ~Compiled();

    QString sql;
    sqlite3_stmt* handle;
    std::shared_ptr<const Columns> columns; ///< those of a select
    bool onLoan = false;
};

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

    sqlite3_stmt* get() const { return compiled->handle; }
    const std::shared_ptr<const Columns>& columns() const { return compiled->columns; }
    /// Binds the values from position 1 on.
    void bind(const QVariantList& values);
    /// Advances to the next row; false at the end. Records and throws a Failure.
    bool step();
    /// The value of a column of the current row: qlonglong, double, QString or invalid.
    QVariant column(int index) const;
    /// Likewise, converted by fromStore for a column of that type.
    QVariant column(int index, ColumnType type) const;

private:
    void swap(Prepared& other) noexcept {
        std::swap(session, other.session);
        std::swap(compiled, other.compiled);
    }

    std::shared_ptr<Session> session;
    std::shared_ptr<Compiled> compiled;
};

/// An open database with its errors and its compiled statements; shared by a connection and its recordsets.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { close(); }

    enum class Access { ReadWrite, Read };

    void open(const QString& path, Access access = Access::ReadWrite);
    void close();
    bool isOpen() const { return database != nullptr; }
    sqlite3* handle() const { return database; }
    ErrorList& errors() { return errorList; }

    /// Compiles the one statement of the text, or reuses a kept one. Records and throws a Failure.
    Prepared prepare(const Statement& statement);
    /// Whether that name is a table, not a saved query.
    bool isTable(const QString& name);

    /// Throws for a closed session; nothing is recorded, since the call never reached the store.
    void requireOpen() const;
    [[noreturn]] void fail(const Error& error);
    [[noreturn]] void fail(int resultCode);
    /// Runs the function and records the Failure that it throws.
    template <class Function> auto recorded(Function function) {
        try {
            return function();
        } catch (const Failure& failure) {
            fail({failure.number(), failure.text()});
        }
    }

private:
    std::shared_ptr<Compiled> compiledOf(const QString& sql);

    sqlite3* database = nullptr;
    ErrorList errorList;
    std::vector<std::shared_ptr<Compiled>> kept; ///< most recently used first
    QSet<QString> tables;                        ///< those known by isTable
};

} // namespace ado
