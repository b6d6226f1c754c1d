// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantList>

namespace ado {

/// One statement as the store understands it. The literals of the text stand in `parameters`, in order, and a
/// ? stands in their place: so statements that differ in their literals only are compiled once.
struct Statement {
    QString sql = {};
    QVariantList parameters = {};
    /// The table that a writable recordset writes to: the one of "select * from TABLE [where ...] [order by
    /// ...]". Empty for every other text.
    QString table = {};
};

/// Turns the program's SQL into the store's, token by token; what stands in quotes is never touched.
///   delete * from t          -> delete from t
///   #mm/dd/yyyy#             -> the ISO date as text; blanks within the marks are allowed
///   True, False              -> -1, 0
///   t.order                  -> t."order", so that a reserved word can follow a dot
/// Throws Failure: number::syntax for a literal that is not closed, a date that is none, or a comment;
/// number::afterEnd for anything behind the end of the statement.
Statement translate(const QString& text);

} // namespace ado
