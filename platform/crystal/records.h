// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/layout.h"
#include "platform/crystal/selection.h"

#include <QStringList>

namespace ado {
class Connection;
}

namespace crystal {

/// One line of the report's body.
struct Block {
    enum class Kind {
        Heading, ///< of a group: its text and the row count
        Row,     ///< one text a column
        Mean,    ///< below a group: one text a column, empty for a column without a mean
    };

    Kind kind = Kind::Row;
    int level = 0; ///< of a heading, from 0
    QStringList texts;
};

/// The contents of a report, as texts.
struct Records {
    QStringList values; ///< of the head, one for each HeadValue; empty where nothing is known
    std::vector<Block> blocks;
};

/// Reads the layout's table through an open connection. Throws Failure for a missing table or field, and a
/// condition that does not match its field's type.
Records readRecords(const Layout& layout, const std::vector<Condition>& selection,
                    ado::Connection& connection);
/// Likewise, from the database file, which is opened for reading only; also for a wrong password.
Records readRecords(const Layout& layout, const std::vector<Condition>& selection, const QString& database,
                    const QString& password);

} // namespace crystal
