// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/gblGlobal.h"

/// Replaces the entries of a list by a field of the records of a select. Throws Failure.
/// unchanged.
template <class List> void fillList(List& list, const QString& sql, const char* field) {
    ado::Recordset records(sql, *cnnMain);
    list.Clear();
    for (; !records.Eof(); records.MoveNext())
        list.AddItem(records[field].Text());
}
