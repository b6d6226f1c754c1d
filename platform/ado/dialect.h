// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantList>

namespace ado {

/// A name quoted for use in a statement of any engine, whatever characters it contains.
QString quoted(const QString& name);

/// The engines whose SQL the program's is translated into.
enum class Target { Sqlite, MariaDb };

/// One statement in the store's SQL. The literals of the text are in `parameters`, in order, replaced by ? in
/// the text: statements that differ only in their literals are compiled once.
struct Statement {
    QString sql = {};
    QVariantList parameters = {};
    /// The table that a writable recordset writes to: "select * from TABLE [where ...] [order by ...]". Empty
    /// for every other text.
    QString table = {};
    bool isWholeTable = false; ///< "select * from TABLE"
};

/// Turns the program's SQL into an engine's, token by token; quoted text is never changed.
///   delete * from t          -> delete from t
///   #mm/dd/yyyy#             -> the ISO date as text; blanks between the marks are allowed
///   True, False              -> -1, 0
///   t.order                  -> t."order", so that a reserved word can follow a dot
///   [a name]                 -> "a name"
///   like 'a\b'               -> a server's like takes a backslash for a mark unless it is doubled
/// A server tells capitals from small letters in the names of tables, which are all in small letters; the
/// words of its statements are turned into these.
/// Throws Failure: number::syntax for a literal that is not closed, an invalid date, or a comment;
/// number::afterEnd for anything after the end of the statement.
Statement translate(const QString& text, Target target = Target::Sqlite);

} // namespace ado
