// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/basis.h"

#include <boost/math/distributions/students_t.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <set>

namespace {

constexpr int fewest = 3; // respondents about whom a figure says something

bool isRated(const RatedAnswer& answer) {
    return answer.weightage.value_or(0) != 0 && answer.score.value_or(0) != 0;
}

std::set<int> ratersOf(const std::vector<RespondentAnswer>& answers) {
    std::set<int> raters;
    for (const RespondentAnswer& answer : answers) {
        if (isRated(answer.rating))
            raters.insert(answer.respondentid);
    }
    return raters;
}

template <class Condition>
double figureOf(const std::vector<RespondentAnswer>& answers, const Figure& figure, const Condition& counts) {
    std::vector<RatedAnswer> ratings;
    ratings.reserve(answers.size());
    for (const RespondentAnswer& answer : answers) {
        if (counts(answer.respondentid))
            ratings.push_back(answer.rating);
    }
    return figure(ratings);
}

/// From the figures with one respondent left out each.
double margin(const std::vector<double>& figures, int asked) {
    const auto n = static_cast<double>(figures.size());
    const double mean = std::accumulate(figures.begin(), figures.end(), 0.0) / n;
    const double squares = std::accumulate(figures.begin(), figures.end(), 0.0, [&](double sum, double f) {
        return sum + (f - mean) * (f - mean);
    });
    const double missing = 1 - std::min(1.0, n / asked);
    const double t = quantile(boost::math::students_t(n - 1), 0.975);
    return t * std::sqrt(missing * (n - 1) / n * squares);
}

} // namespace

bool Basis::isTooFew() const {
    return respondents < fewest;
}

Basis basisOf(const std::vector<RespondentAnswer>& answers, int asked, int questions) {
    const auto ratings = std::count_if(answers.begin(), answers.end(),
                                       [](const RespondentAnswer& answer) { return isRated(answer.rating); });
    const auto respondents = static_cast<int>(ratersOf(answers).size());
    return {.respondents = respondents,
            .asked = std::max(asked, respondents),
            .ratings = static_cast<int>(ratings),
            .questions = std::max(questions, static_cast<int>(ratings))};
}

double marginOf(const std::vector<RespondentAnswer>& answers, int asked, const Figure& figure) {
    std::vector<double> figures;
    for (const int leftOut : ratersOf(answers))
        figures.push_back(figureOf(answers, figure, [&](int respondent) { return respondent != leftOut; }));
    return margin(figures, asked);
}

Difference differenceOf(const std::vector<RespondentAnswer>& earlier,
                        const std::vector<RespondentAnswer>& later, int asked, const Figure& figure) {
    const std::set<int> before = ratersOf(earlier);
    const std::set<int> after = ratersOf(later);
    std::set<int> both;
    std::set_intersection(before.begin(), before.end(), after.begin(), after.end(),
                          std::inserter(both, both.end()));
    const auto difference = [&](int leftOut) {
        const auto counts = [&](int respondent) {
            return respondent != leftOut && both.contains(respondent);
        };
        return figureOf(later, figure, counts) - figureOf(earlier, figure, counts);
    };
    constexpr int nobody = -1;
    Difference result{.value = difference(nobody), .respondents = static_cast<int>(both.size())};
    if (result.respondents < fewest)
        return result;
    result.change = Change::OfAll;
    if (result.respondents >= asked)
        return result;
    std::vector<double> figures;
    for (const int leftOut : both)
        figures.push_back(difference(leftOut));
    result.margin = margin(figures, asked);
    result.change = std::abs(result.value) > result.margin ? Change::MoreThanChance : Change::WithinChance;
    return result;
}
