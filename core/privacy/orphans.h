// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QStringList>

#include <functional>
#include <vector>

// Rows whose customer, respondent, parameter, question or survey has been deleted: no window and no figure
// shows them. These throw Failure.

/// The rows of one table. Records of readings stay and lose answers and names, all others are removed.
struct Orphans {
    QString what; ///< such as "Marks"
    QString table;
    int rows = 0;

    QString line() const { return what + QStringLiteral(": ") + QString::number(rows); }
};

/// Called before each part of a large table with what is looked for; false cancels.
using OrphanStep = std::function<bool(const QString& what)>;

/// How often countOrphans calls its step, and removeOrphans at most.
int countOrphanSteps();

struct OrphanResult {
    std::vector<Orphans> found; ///< all tables, also those without
    QStringList files;          ///< survey files on the disk that only the removed rows of the register named
    bool isCancelled = false;   ///< nothing has been changed

    int rows() const;
};

/// What there is to remove.
OrphanResult countOrphans(const OrphanStep& step);

/// Removes it as one transaction, with a row in table protocol.
OrphanResult removeOrphans(const OrphanStep& step, const QDateTime& now);
