// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/satisfactionindex.h"

#include <functional>
#include <vector>

/// An answer with the respondent who gave it.
struct RespondentAnswer {
    int respondentid = 0;
    RatedAnswer rating;
};

/// How many stand behind a figure of one parameter and date. An answer is rated when it has both a weightage
/// and a score.
struct Basis {
    int respondents = 0; ///< with at least one rated answer
    int asked = 0;       ///< respondents with at least one of the questions in their questionnaire
    int ratings = 0;     ///< rated answers
    int questions = 0;   ///< in all questionnaires

    bool isTooFew() const;
    /// Everyone who was asked has answered, so that nothing is left to chance.
    bool isOfAll() const { return respondents >= asked; }
};

/// A figure computed from answers in the order in which they are stored.
using Figure = std::function<double(const std::vector<RatedAnswer>&)>;

/// Counts the respondents and ratings. Those who answered without having been asked count as asked.
Basis basisOf(const std::vector<RespondentAnswer>& answers, int asked, int questions);

/// Half the width of the 95 % confidence interval of a figure, by leaving out one respondent at a time: with
/// the figures f(i) of the n respondents who rated, each without the answers of the ith, and their mean m,
///
///     t(0.975; n-1) * sqrt((1 - n/asked) * (n-1)/n * sum of (f(i) - m)^2)
///
/// This is the delete-a-group jackknife with the finite population correction (Wolter, Introduction to
/// Variance Estimation, chapter 4). Answers of respondents who rated nothing are never left out. 0 when all
/// who were asked have rated. Needs at least two who rated.
double marginOf(const std::vector<RespondentAnswer>& answers, int asked, const Figure& figure);

/// What became of a figure between two dates. OfAll: everyone who was asked on both dates has rated on both,
/// so that nothing is left to chance.
enum class Change { TooFew, OfAll, WithinChance, MoreThanChance };

/// A figure of the later date less that of the earlier one, of the respondents who rated on both.
struct Difference {
    double value = 0;
    double margin = 0; ///< half the width of its 95 % confidence interval, as in marginOf
    int respondents = 0;
    Change change = Change::TooFew;
};

/// asked: the respondents who were asked on both dates.
Difference differenceOf(const std::vector<RespondentAnswer>& earlier,
                        const std::vector<RespondentAnswer>& later, int asked, const Figure& figure);
