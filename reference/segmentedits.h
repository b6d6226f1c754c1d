// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "core/store/segments.h"

#include <set>

/// What the user has changed in the groups of any kind and not saved.
class SegmentEdits {
public:
    bool isEmpty() const { return byKind.empty(); }
    /// The own group of a row of that kind: as changed, else as it was read.
    const QString& groupOf(const QString& kind, const SegmentRow& row) const;
    bool isChanged(const QString& kind, const SegmentRow& row) const { return find(kind, row) != nullptr; }
    /// An empty group takes the row out of its own.
    void set(const QString& kind, const SegmentRow& row, const QString& group);
    QStringList kinds() const;

    /// Writes the changes, and nothing else, in one transaction. Asks before about groups that someone else
    /// has changed too; false when the user goes back. Throws Failure, and Refusal with the names of those
    /// that have been deleted meanwhile, whose changes are dropped.
    bool save();

private:
    struct Edit {
        SegmentRow read; ///< as it was before the change
        QString group;
    };
    using Place = std::pair<int, int>; ///< customer and respondent
    struct OfKind {
        QString kind;
        std::map<Place, Edit> edits;
    };
    /// The groups that someone else has changed too, and whose they are: two rows may have the same name.
    struct Compared {
        ChangedRow row;
        std::set<Place> both;
    };

    const Edit* find(const QString& kind, const SegmentRow& row) const;
    static Compared compare(OfKind& ofKind);
    std::vector<SegmentChange> changesOf(const QString& key, const OfKind& ofKind,
                                         const std::set<Place>& both) const;

    std::map<QString, OfKind> byKind; ///< by the kind without regard to case
    Settlement settlement;
};
