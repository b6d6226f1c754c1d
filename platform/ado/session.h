// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/dialect.h"
#include "platform/ado/error.h"

#include <QSet>

#include <list>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace ado {

class Session;

/// A compiled statement on loan from its session; goes back there, reset, when it is destroyed.
class Prepared {
public:
    Prepared() = default;
    Prepared(std::shared_ptr<Session> owner, QByteArray text, sqlite3_stmt* compiled)
        : session(std::move(owner)), sql(std::move(text)), handle(compiled) {}
    Prepared(Prepared&& other) noexcept { swap(other); }
    Prepared& operator=(Prepared&& other) noexcept {
        Prepared(std::move(other)).swap(*this);
        return *this;
    }
    ~Prepared();

    sqlite3_stmt* get() const { return handle; }
    /// Binds the values from position 1 on.
    void bind(const QVariantList& values);
    /// True while there is a row. Records and throws a Failure.
    bool step();
    /// The value of a column of the row in hand: qlonglong, double, QString or invalid.
    QVariant column(int index) const;

private:
    void swap(Prepared& other) noexcept {
        std::swap(session, other.session);
        std::swap(sql, other.sql);
        std::swap(handle, other.handle);
    }

    std::shared_ptr<Session> session;
    QByteArray sql;
    sqlite3_stmt* handle = nullptr;
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

    /// Compiles the one statement of the text, or takes it from those kept. Records and throws a Failure.
    Prepared prepare(const Statement& statement);
    void giveBack(const QByteArray& sql, sqlite3_stmt* compiled);
    /// Whether a table, and not a saved query, has that name.
    bool isTable(const QString& name);

    /// Throws for a closed session; the store never saw the call, so nothing is recorded.
    void requireOpen() const;
    [[noreturn]] void fail(const Error& error);
    [[noreturn]] void fail(int resultCode);
    /// Runs the function and records the Failure that it throws.
    template <class Function> auto recorded(Function function) {
        try {
            return function();
        } catch (const Failure& failure) {
            fail(failure.cause());
        }
    }

private:
    struct Kept {
        QByteArray sql;
        sqlite3_stmt* compiled;
    };

    sqlite3* database = nullptr;
    ErrorList errorList;
    std::list<Kept> kept; // most recently used first
    QSet<QString> tables; // those known by isTable
};

} // namespace ado
