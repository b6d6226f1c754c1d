// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/person.h"
#include "platform/ado/besides.h"

#include <QDateTime>

// Erasing a respondent. These throw Failure.

struct ErasureChoice {
    bool keepsMarks = true; ///< without the person; otherwise the respondent is deleted with all of them
    bool renamesIn = true;  ///< the name is replaced in the texts of others that name the person
};

/// A step and the number of rows that it meets.
struct ErasureStep {
    QString what; ///< such as "Answers in words, emptied"
    int rows = 0;

    QString line() const { return what + u": " + QString::number(rows); }
};

/// What erasing does to the store now, without changing it. Steps without rows are left out.
struct ErasurePlan {
    QString newName; ///< unique among the customer's respondents
    std::vector<ErasureStep> steps;
    bool hasNamesake = false; ///< another respondent of the customer has the name: who is named is not known
};
ErasurePlan planErasure(const Person& person, const ErasureChoice& choice);

/// Carries it out as one transaction, with a row in table protocol. Throws Refusal when the person is no
/// longer stored as it was shown. Returns the plan that was carried out.
ErasurePlan erasePerson(const Person& shown, const ErasureChoice& choice, const QDateTime& now);

/// Rewrites a store in a file, so that nothing of what was deleted is left in it, and empties the work
/// tables. Does nothing more for a server's. False, with the file as it was, when the step has cancelled.
bool rewriteStore(const ado::Step& step = {});
