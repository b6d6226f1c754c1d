// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVariant>

#include <vector>

namespace tables {

/// Column headings and rows of values: a text, a number, a date, a yes/no, or nothing (an invalid QVariant).
struct Table {
    QStringList headings; ///< all empty: none is shown
    std::vector<QVariantList> rows;
};

enum class Kind { Nothing, Text, Number, Date, YesNo };

/// A number that is not finite is nothing.
Kind kindOf(const QVariant& value);

/// The value as the program shows it: a date as dd/mm/yyyy, Yes or No.
QString shownText(const QVariant& value);

/// Turns the texts of a column into numbers or dates (dd/mm/yyyy) where all of them are. A number with
/// leading zeros, a plus or more than 15 digits stays a text: it may be a code.
void recogniseColumns(Table& table);

/// Rows with line ends and tabs between the values, as spreadsheets paste them: a value that has one of these
/// or a quote is in quotes. The headings are the first row.
QString tabSeparated(const Table& table);

/// The text in quotes, those in it doubled.
QString inQuotes(const QString& text);

} // namespace tables
