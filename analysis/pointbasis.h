// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/dategroups.h"
#include "analysis/figures/basis.h"

#include <map>
#include <set>

/// The answers behind a point of a chart: to the Score questions of one parameter on one date.
struct PointBasis {
    std::vector<RespondentAnswer> answers;
    std::set<int> asked; ///< respondents with one of the questions in their questionnaire
    int questions = 0;   ///< in all questionnaires

    Basis counts() const;
};

/// By parameter, in small letters, and date.
using PointBases = std::map<std::pair<QString, QDate>, PointBasis>;

/// What stands behind the points of a customer's groups of answers, which have their respondents. Reads who
/// was asked. Throws Failure.
PointBases readPointBases(const QString& customer, const std::vector<DateGroup>& groups);
PointBasis& basisOf(PointBases& all, const QString& parameter, const QDate& date);

/// A figure of a point with its confidence interval.
struct Estimate {
    Basis basis;
    double value = 0;
    double margin = 0; ///< 0: no interval is given

    bool hasInterval() const { return !basis.isTooFew() && !basis.isOfAll(); }
    double low() const { return value - margin; }
    double high() const { return value + margin; }
    /// "6.25 to 7.61", or why there is no interval.
    QString intervalText() const;
};
Estimate estimateOf(const PointBasis& point, double value, const Figure& figure);

/// "5 of 8 respondents, 23 of 40 questions rated".
QString basisText(const Basis& basis);
/// "5 respondents, 23 ratings", where it is not known who was asked.
QString answersText(const Basis& basis);
/// "+0.92, 4 respondents: more than chance".
QString changeText(const PointBasis& earlier, const PointBasis& later, const Figure& figure);
