// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/satisfactionindex.h"

#include "platform/failure/failure.h"

#include <cmath>
#include <limits>

namespace {

struct Rating {
    int weightage = 0;
    int score = 0;
};

Rating ratingOf(const RatedAnswer& answer) {
    const int weightage = answer.weightage.value_or(0);
    const int score = answer.score.value_or(0);
    return weightage != 0 && score != 0 ? Rating{weightage, score} : Rating{};
}

std::int16_t addRounded(std::int16_t total, float weightedScore) {
    using Range = std::numeric_limits<std::int16_t>;
    const double sum =
        std::nearbyint(static_cast<double>(total) + static_cast<double>(weightedScore)); // ties to even
    if (!(sum >= Range::min() && sum <= Range::max()))
        throw Failure::ofOverflow();
    return static_cast<std::int16_t>(sum);
}

} // namespace

float satisfactionIndex(std::span<const RatedAnswer> answers) {
    if (answers.empty())
        return 0;
    const auto count = static_cast<double>(answers.size());
    std::int64_t weightages = 0;
    for (const RatedAnswer& answer : answers)
        weightages += ratingOf(answer).weightage;
    const auto average = static_cast<float>(static_cast<double>(weightages) / count);
    if (average == 0)
        return 0;

    std::int16_t total = 0;
    for (const RatedAnswer& answer : answers) {
        const Rating rating = ratingOf(answer);
        const float normalised = static_cast<float>(rating.weightage) / average;
        const float weightedScore = static_cast<float>(rating.score) * normalised;
        total = addRounded(total, weightedScore);
    }
    return static_cast<float>(static_cast<double>(total) / count);
}
