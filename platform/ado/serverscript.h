// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace ado {

/// The collation of the server's texts where a file has UNICODE_CI: it ignores case and heeds accents and
/// trailing blanks, in comparisons, sorting and `like`.
inline constexpr QStringView serverCollation = u"utf8mb4_uca1400_nopad_as_ci";

/// The view with the version of a server's store, which a file keeps as user_version.
inline constexpr QStringView versionView = u"database_version";

/// Sets what a session with a server needs. Names stand in double quotes and a backslash is a character, as
/// in a file; a value that does not fit is refused. Without join buffers the rows of a join come in the order
/// of its tables. Locks are waited for two seconds.
QString serverSettings();

struct ScriptStatement {
    QString sql;
    int line = 1; ///< of its beginning
};

/// The statements of a script in SQLite's SQL, without comments.
QList<ScriptStatement> scriptStatements(const QByteArray& script);

/// Whether the column of that table is a text.
using IsText = std::function<bool(const QString& table, const QString& column)>;

/// The server's statement for one of such a script; empty for one that only a file needs. It knows what makes
/// tables, indices and views:
///   types               TEXT COLLATE UNICODE_CI, TEXT (compares bytes), YESNO, SINGLE, DECIMAL
///   a table's key       AUTOINCREMENT, or without such a key an invisible column `rowid`
///   an index on texts   on their first 255 characters
///   CROSS JOIN          in the order written, as in SQLite
///   PRAGMA user_version a view
QString serverStatement(const QString& sqlite, const IsText& isText);

} // namespace ado
