// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/basis.h"
#include "analysis/figures/period.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// The groups of a kind (core/store/segments.h) that are compared, and by which answers.
struct GroupChoice {
    QString kind;
    QStringList groups;
    std::vector<int> paramids;
    QDate first; ///< both included
    QDate last;
    Period period = Period::Quarter;
    bool isPerParameter = false; ///< else the answers to all parameters are put together
    bool isWithAsked = false;    ///< also counts who was asked, which takes a second pass
};

/// The answers of a group in one period to the Score questions of one parameter, or of all chosen ones, in
/// the order in which the index of one customer takes them: by respondent, question and date.
struct GroupPoint {
    int group = 0;   ///< its place in the choice
    int paramid = 0; ///< 0: all chosen ones
    QDate begin;     ///< of the period
    std::vector<RatedAnswer> answers;
    Basis basis; ///< without who was asked, unless that was wanted
};

/// Called now and then with the number of respondents read, in a second pass once more, and of all. False
/// cancels.
using GroupStep = std::function<bool(int done, int all)>;

/// Reads them by one pass over the answers of the groups' customers; ordered by group, parameter as chosen
/// and period. A point without answers is left out. Nothing when `step` has cancelled. Throws Failure.
std::optional<std::vector<GroupPoint>> readGroupPoints(const GroupChoice& choice, const GroupStep& step);
