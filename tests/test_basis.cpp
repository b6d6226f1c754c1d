// SPDX-License-Identifier: GPL-3.0-or-later
// What stands behind a figure. The margins were computed by the R package survey 4.1: svydesign(ids=~id,
// fpc=~N), as.svrepdesign(type="JK1"), withReplicates, and qt(.975, degf) times the root of the variance.
#include "analysis/figures/basis.h"
#include "analysis/figures/performancematrix.h"
#include "analysis/figures/period.h"
#include "analysis/figures/satisfactionindex.h"
#include "platform/failure/failure.h"

#include <gtest/gtest.h>

#include <random>

namespace {
/// Each respondent's marks, weightage and score in turn.
std::vector<RespondentAnswer> answersOf(const std::map<int, std::vector<int>>& marks) {
    std::vector<RespondentAnswer> answers;
    for (const auto& [respondent, values] : marks) {
        for (std::size_t i = 0; i < values.size(); i += 2)
            answers.push_back({respondent, {std::int16_t(values[i]), std::int16_t(values[i + 1])}});
    }
    return answers;
}

const std::vector<RespondentAnswer> first = answersOf({{1, {9, 8, 7, 6, 8, 7}},
                                                       {2, {5, 9, 6, 5, 9, 8}},
                                                       {3, {10, 6, 8, 7, 0, 5}},
                                                       {4, {7, 9, 7, 8, 6, 7}},
                                                       {5, {9, 4, 4, 6, 8, 0}}});
const std::vector<RespondentAnswer> second = answersOf({{1, {9, 9, 8, 8, 8, 8}},
                                                        {2, {6, 9, 6, 7, 9, 9}},
                                                        {3, {9, 8, 8, 8, 7, 6}},
                                                        {4, {7, 9, 8, 9, 6, 9}},
                                                        {6, {5, 2, 5, 3, 5, 1}}});
const std::vector<RespondentAnswer> mixed = answersOf(
    {{1, {9, 9, 8, 8, 8, 8}}, {2, {6, 4, 6, 7, 9, 5}}, {3, {5, 8, 3, 8, 7, 6}}, {4, {7, 9, 8, 4, 6, 9}}});

const Figure index = [](const std::vector<RatedAnswer>& answers) { return satisfactionIndex(answers); };
const Figure weightage = meanWeightage, score = meanScore;

TEST(BasisTest, marginsAreThoseOfASurveyPackage) {
    const std::tuple<std::vector<RespondentAnswer>, Figure, int, double> cases[] = {
        {first, index, 8, 0.70785739},  {first, index, 20, 1.0010615},     {second, index, 8, 1.5479356},
        {second, index, 20, 2.1891115}, {first, weightage, 8, 0.55528902}, {first, weightage, 20, 0.78529726},
        {first, score, 8, 1.3882226},   {first, score, 20, 1.9632432},     {first, index, 5, 0},
    };
    for (const auto& [answers, figure, asked, margin] : cases)
        EXPECT_NEAR(marginOf(answers, asked, figure), margin, 1e-6) << margin;
}

TEST(BasisTest, aChangeIsThatOfTheRespondentsOfBothDates) {
    const Difference better = differenceOf(first, second, 7, index);
    EXPECT_NEAR(better.value, 0.9166666667, 1e-6);
    EXPECT_NEAR(better.margin, 0.52085004, 1e-6);
    EXPECT_EQ(better.respondents, 4);
    EXPECT_EQ(better.change, Change::MoreThanChance);
    const Difference same = differenceOf(first, mixed, 7, index);
    EXPECT_NEAR(same.value, -0.1666666667, 1e-6);
    EXPECT_NEAR(same.margin, 1.8455706, 1e-6);
    EXPECT_EQ(same.change, Change::WithinChance);
    EXPECT_EQ(differenceOf(first, second, 4, index).change, Change::OfAll);
    EXPECT_EQ(differenceOf(answersOf({{1, {5, 5}}, {2, {5, 5}}}), second, 7, index).change, Change::TooFew);
}

TEST(BasisTest, respondentsAndRatingsAreCounted) {
    const Basis some = basisOf(first, 8, 24);
    EXPECT_EQ(std::tuple(some.respondents, some.asked, some.ratings, some.questions),
              std::tuple(5, 8, 13, 24))
        << "two lack a mark";
    EXPECT_FALSE(some.isTooFew() || some.isOfAll());
    const Basis none = basisOf(answersOf({{1, {0, 5}}, {2, {5, 5}}}), 1, 1);
    EXPECT_EQ(none.respondents, 1);
    EXPECT_TRUE(none.isTooFew() && none.isOfAll());
}

TEST(GroupFigures, areThoseOfOneCustomerWithoutTheirLimit) {
    std::mt19937 chance(7);
    const auto mark = [&] { return std::int16_t(chance() % 11); };
    for (std::vector<RatedAnswer> answers; answers.size() < 300; answers.push_back({mark(), mark()})) {
        EXPECT_EQ(groupIndex(answers), satisfactionIndex(answers)) << answers.size();
        const auto means = groupMeans(answers);
        const auto given = matrixMeans(answers);
        ASSERT_EQ(means.has_value(), given.has_value());
        EXPECT_TRUE(!means || (means->score == given->score && means->weightage == given->weightage));
    }
    std::vector<RatedAnswer> many(10'000, {4, 9});
    many[0] = {4, 8};
    EXPECT_THROW(satisfactionIndex(many), Failure);
    EXPECT_EQ(groupIndex(many), float(89'999 / 10'000.0));
    EXPECT_EQ(groupMeans(many)->score, 9);
}

TEST(Period, beginsAndIsNamed) {
    const std::tuple<Period, QDate, QDate, const char*> cases[] = {
        {Period::SurveyDate, {2024, 12, 31}, {2024, 12, 31}, "31/12/2024"},
        {Period::Month, {2024, 2, 29}, {2024, 2, 1}, "02/2024"},
        {Period::Quarter, {2024, 3, 31}, {2024, 1, 1}, "Q1 2024"},
        {Period::Quarter, {2024, 10, 1}, {2024, 10, 1}, "Q4 2024"},
        {Period::Year, {2024, 7, 1}, {2024, 1, 1}, "2024"}};
    for (const auto& [period, date, begin, name] : cases) {
        EXPECT_EQ(beginOf(period, date), begin) << name;
        EXPECT_EQ(nameOf(period, begin), QLatin1StringView(name));
    }
}
} // namespace
