// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// The most keywords that one search takes.
inline constexpr int mostKeywords = 10;

/// Splits a text at each single blank, the only separator; two blanks in a row give an empty keyword. Throws
/// Failure at the eleventh keyword.
QStringList keywordsOf(const QString& text);

/// The sources of a search, in the order in which they are gone through.
enum class SearchPass { Objective, Descriptive, Action };

/// The statement that finds what holds any of the keywords. They stand in it as they are.
QString searchSql(SearchPass pass, const QStringList& keywords);

/// The statement that adds all hits of that one to the work table at once: row by row it would take many
/// times as long as finding them.
QString hitInsertion(SearchPass pass, const QStringList& keywords);
