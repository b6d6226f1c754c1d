// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/gblGlobal.h"

/// Replaces the entries of a list by a field of the records of a select. Throws Failure, after which the list
/// is empty or, if the select itself failed, unchanged.
template <class List> void fillList(List& list, const QString& sql, const char* field) {
    ado::Recordset records(sql, *cnnMain);
    list.Clear();
    QStringList texts;
    for (; !records.Eof(); records.MoveNext())
        texts << records[field].Text();
    list.AddItems(texts);
}
