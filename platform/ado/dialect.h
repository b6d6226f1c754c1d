// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantList>

namespace ado {

/// The engines whose SQL the program's is translated into.
enum class Target { Sqlite };

/// One statement in the store's SQL. The literals of the text are in `parameters`, in order, replaced by ? in
/// the text: statements that differ only in their literals are compiled once.
struct Statement {
    QString sql = {};
    QVariantList parameters = {};
    /// The table that a writable recordset writes to: "select * from TABLE [where ...] [order by ...]". Empty
    /// for every other text.
    QString table = {};
};

/// Turns the program's SQL into the store's, token by token; quoted text is never changed.
///   delete * from t          -> delete from t
///   #mm/dd/yyyy#             -> the ISO date as text; blanks between the marks are allowed
///   True, False              -> -1, 0
///   t.order                  -> t."order", so that a reserved word can follow a dot
/// Throws Failure: number::syntax for a literal that is not closed, an invalid date, or a comment;
/// number::afterEnd for anything after the end of the statement.
Statement translate(const QString& text);

} // namespace ado
