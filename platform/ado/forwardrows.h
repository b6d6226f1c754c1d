// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/session.h"

#include <QDate>

namespace ado {

/// The rows of one select, each of which is gone when the next is asked for: memory does not grow with their
/// number. A server hands over many in pieces, between which other statements can run, and a few at once,
/// which saves waiting for it; from a file they are read as they are asked for, and no other program can
/// save meanwhile. Every operation that fails records and throws a Failure.
class ForwardRows {
public:
    enum class Expected { Many, Few };
    ForwardRows(const QString& sql, Connection& connection, Expected expected = Expected::Many);

    /// Moves to the next row, the first one to begin with; false at the end.
    bool next() { return source.step(); }
    bool isNull(int column) const { return !source.column(column).isValid(); }
    /// As it is stored; invalid for Null.
    QVariant value(int column) const { return source.column(column); }
    QString text(int column) const { return source.column(column, ColumnType::Text).toString(); }
    int number(int column) const { return source.column(column, ColumnType::Integer).toInt(); }
    QDate date(int column) const { return source.column(column, ColumnType::Date).toDate(); }

private:
    Prepared source;
};

} // namespace ado
