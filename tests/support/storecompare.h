// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/recordset.h"
#include "platform/ado/session.h"
#include "tests/support/text.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

/// The rows of a table that meet a condition ("1=1" for all), as "table|field|field...", sorted.
inline QStringList storeRows(ado::Connection& store, const QString& table,
                             const QString& condition = u"1=1"_s) {
    ado::Recordset records(u"select * from ["_s + table + u"] where " + condition, store);
    QStringList result;
    for (; !records.Eof(); records.MoveNext()) {
        QString row = table;
        for (int i = 0; i < records.FieldCount(); ++i)
            row += u'|' + records.FieldAt(i).Text();
        result << row;
    }
    result.sort();
    return result;
}

/// The rows of all tables.
inline QStringList storeRows(ado::Connection& store) {
    QStringList result;
    for (const QString& name : store.Tables()) {
        if (store.session()->isTable(name) && name != u"sqlite_sequence")
            result += storeRows(store, name);
    }
    result.sort();
    return result;
}

/// The rows of `before` that are not in `after`; both are sorted.
inline QStringList removedRows(const QStringList& before, const QStringList& after) {
    QStringList result;
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(result));
    return result;
}
