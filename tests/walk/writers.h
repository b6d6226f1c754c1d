// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"

#include <QSet>

namespace walk {
/// Tells the rows that this program has written from those of another, which signs in as another user.
class Writers {
public:
    /// Makes the server record who writes these tables from now on. The connection has every right.
    static void record(ado::Connection& server, const QStringList& tables);
    /// Reads what has been committed since the last call.
    void read(ado::Connection& store);
    /// Whether someone else has written the row, or deleted it with the row that it belongs to.
    bool isOthers(const QString& row) const {
        return others.contains(row) || (othersDeleted && !mine.contains(row));
    }
    bool hasOthers() const { return !others.isEmpty(); }

private:
    QSet<qlonglong> seen; // a transaction that began earlier may end later
    QSet<QString> mine;
    QSet<QString> others;
    bool othersDeleted = false;
};
} // namespace walk
