// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/session.h"

struct sqlite3_stmt;

namespace ado {

class SqliteSession;

/// A statement compiled by SQLite. Each step computes one row.
class SqliteStatement final : public Compiled {
public:
    /// Takes over the handle.
    SqliteStatement(SqliteSession& owner, QString text, sqlite3_stmt* statement);
    ~SqliteStatement() override;

    void bind(const QVariantList& values) override;
    bool step() override;
    QVariant column(int index) const override;
    QVariant column(int index, ColumnType type) const override;
    bool isReading() const override;
    void reset() override;

private:
    SqliteSession& session;
    sqlite3_stmt* handle;
};

} // namespace ado
