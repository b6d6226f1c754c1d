// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <map>
#include <vector>

// Groups of customers and respondents, such as the region "North". A customer's group is that of all its
// respondents who have none of their own. Kinds and names of groups that differ in case only are the same.
// These throw Failure.

inline constexpr int longestSegmentText = 50; ///< characters of a kind or a name

/// A customer or one of its respondents, with the group of one kind that was given to it itself.
struct SegmentRow {
    int custid = 0;
    int respondentid = 0; ///< 0: the customer with all its respondents
    QString customer;
    QString respondent;
    QString group; ///< empty: none of its own

    /// "Acme" or "Ann of Acme".
    QString name() const;
};

/// A group that is given to a customer or respondent; an empty one takes it out.
struct SegmentChange {
    int custid = 0;
    int respondentid = 0; ///< 0: the customer
    QString group;
};

/// Whether the store has groups; one of version 1 that could not be upgraded has none.
bool hasSegmentTable();

/// The kinds of the groups in the store, sorted.
QStringList readSegmentKinds();

/// All customers in order of entry, each followed by its respondents.
std::vector<SegmentRow> readSegmentRows(const QString& kind);

/// Replaces the groups of these customers and respondents, and no others. Call within a transaction.
void writeSegments(const QString& kind, const std::vector<SegmentChange>& changes);

/// The respondents in a group of the kind, by their own group or their customer's.
std::map<int, QString> groupsOfRespondents(const std::vector<SegmentRow>& rows);

/// Sorts the texts without regard to case and keeps one of each.
QStringList sortedOnce(QStringList texts);
