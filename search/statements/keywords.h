// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// Maximum number of keywords in one search.
inline constexpr int mostKeywords = 10;

/// Splits a text at each blank, the only separator. Two blanks in a row, or an empty text, yield an empty
/// keyword. Throws Failure if there are more than mostKeywords.
QStringList keywordsOf(const QString& text);

/// The sources of a search, in search order.
enum class SearchPass { Objective, Descriptive, Action };

/// The select for the records that contain any of the keywords. The keywords are not escaped.
QString searchSql(SearchPass pass, const QStringList& keywords);

/// The statement that inserts all hits into the work table at once; inserting row by row takes many times as
/// long.
QString hitInsertion(SearchPass pass, const QStringList& keywords);
