// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/satisfactionindex.h"

#include <QDate>
#include <QStringList>

#include <vector>

/// The answers to one parameter's Score questions on one date, in the order in which the store has them: the
/// index depends on it.
struct DateGroup {
    QString parameter;
    QDate surveydate;
    std::vector<RatedAnswer> answers;
    std::vector<int> respondentids; ///< of the answers, when they were asked for
};

/// The answers of a customer from the first date to the last, both included.
struct AnswerChoice {
    QString customer;
    QStringList parameters;
    QDate first;
    QDate last;
};

/// Reads them by one select, or by one for each parameter where the store's way to compare texts makes it
/// unclear to which of several an answer belongs; those of a parameter follow one another. Throws Failure.
std::vector<DateGroup> readDateGroups(const AnswerChoice& choice, bool withRespondents);
