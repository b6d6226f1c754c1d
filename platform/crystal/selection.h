// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace crystal {

/// One comparison of a field with a value: QString or QDate.
struct Condition {
    QString table;
    QString field;
    QString comparison; ///< "=", ">=" or "<="
    QVariant value;
};

/// The conditions of a selection formula; a record has to meet them all. An empty formula has none.
///
///     {table.field}='text'                {table.field} = ['text']
///     {table.field}=date(2002,03,15)      also with >= and <=
///
/// joined by "and". Blanks are allowed between the parts. A text ends at the next apostrophe. Throws
/// Failure with that file's name for anything else and for a date that is not in the calendar.
std::vector<Condition> parseSelection(const QString& formula, const QString& file);

} // namespace crystal
