// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/storecopy.h"

#include "core/store/worktable.h"
#include "platform/ado/connection.h"
#include "platform/ado/session.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowsAStep = 1000;

/// Ends both transactions, also after a failure.
class Transactions {
public:
    Transactions(ado::Connection& source, ado::Connection& target) : from(source), to(target) {
        from.BeginOwnTrans(); // reads one state of all tables
        try {
            to.BeginTrans();
        } catch (const Failure&) {
            end(from);
            throw;
        }
    }
    Transactions(const Transactions&) = delete;
    Transactions& operator=(const Transactions&) = delete;
    ~Transactions() {
        end(to);
        end(from);
    }
    void commit() { to.CommitTrans(); }

private:
    static void end(ado::Connection& store) {
        try {
            store.RollbackTrans();
        } catch (const Failure&) {
            // The store has rolled back itself; the caller reports why.
        }
    }

    ado::Connection& from;
    ado::Connection& to;
};

/// The tables that are copied, each before those whose rows belong to its rows.
QStringList tablesOf(ado::Connection& store) {
    QStringList tables = store.Tables();
    const QStringList own = workTables();
    tables.removeIf([&](const QString& name) {
        return own.contains(name) || name.startsWith(u"sqlite_") || name == u"database_password" ||
               !store.session()->isTable(name);
    });
    std::stable_partition(tables.begin(), tables.end(),
                          [](const QString& name) { return name == u"customer" || name == u"parameter"; });
    return tables;
}

int countOf(ado::Connection& store, const QString& table) {
    ado::Prepared counted = store.session()->prepare({u"select count(*) from "_s + ado::quoted(table), {}});
    return counted.step() ? counted.column(0).toInt() : -1;
}

/// False when `step` has cancelled.
bool copyTable(ado::Connection& from, ado::Connection& to, const QString& table, const CopyStep& step) {
    const ado::Columns columns = to.session()->columnsOf(table);
    QStringList names;
    for (const ado::Column& column : columns)
        names << column.quoted;
    const QString list = names.join(u", "_s);
    const QString insertion = u"insert into "_s + ado::quoted(table) + u" (" + list + u") values (?" +
                              u", ?"_s.repeated(names.size() - 1) + u')';
    to.session()->prepare({u"delete from "_s + ado::quoted(table), {}}).step();
    ado::Prepared rows =
        from.session()->prepare({u"select "_s + list + u" from " + ado::quoted(table) + u" order by " +
                                     ado::quoted(from.session()->keyOf(table)),
                                 {}});
    for (int row = 0; rows.step(); ++row) {
        if (row % rowsAStep == 0 && step && !step(table))
            return false;
        QVariantList values;
        for (std::size_t i = 0; i < columns.size(); ++i)
            values << ado::toStore(columns[i].type, rows.column(int(i), columns[i].type));
        to.session()->write({insertion, values});
    }
    to.UpdateBatch();
    to.session()->setKeysGiven(table, from.session()->keysGiven(table));
    return true;
}

} // namespace

int countCopySteps(ado::Connection& from) {
    int steps = 0;
    for (const QString& table : tablesOf(from))
        steps += (countOf(from, table) + rowsAStep - 1) / rowsAStep;
    return steps;
}

bool copyAllRows(ado::Connection& from, ado::Connection& to, const CopyStep& step) {
    Transactions both(from, to);
    for (const QString& table : tablesOf(to)) {
        if (!copyTable(from, to, table, step))
            return false;
        const int expected = countOf(from, table);
        const int copied = countOf(to, table);
        if (copied != expected)
            throw Failure(u"The copy of table '%1' has %2 rows instead of %3."_s.arg(
                table, QString::number(copied), QString::number(expected)));
    }
    both.commit();
    return true;
}
