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

template <class Total> Total addRounded(Total total, float weightedScore) {
    using Range = std::numeric_limits<Total>;
    const double sum =
        std::nearbyint(static_cast<double>(total) + static_cast<double>(weightedScore)); // ties to even
    if (!(sum >= static_cast<double>(Range::min()) && sum <= static_cast<double>(Range::max())))
        throw Failure::ofOverflow();
    return static_cast<Total>(sum);
}

template <class Total> float indexOf(std::span<const RatedAnswer> answers) {
    if (answers.empty())
        return 0;
    const auto count = static_cast<double>(answers.size());
    std::int64_t weightages = 0;
    for (const RatedAnswer& answer : answers)
        weightages += ratingOf(answer).weightage;
    const auto average = static_cast<float>(static_cast<double>(weightages) / count);
    if (average == 0)
        return 0;

    Total total = 0;
    for (const RatedAnswer& answer : answers) {
        const Rating rating = ratingOf(answer);
        const float normalised = static_cast<float>(rating.weightage) / average;
        const float weightedScore = static_cast<float>(rating.score) * normalised;
        total = addRounded(total, weightedScore);
    }
    return static_cast<float>(static_cast<double>(total) / count);
}

} // namespace

float satisfactionIndex(std::span<const RatedAnswer> answers) {
    return indexOf<std::int16_t>(answers);
}

float groupIndex(std::span<const RatedAnswer> answers) {
    return indexOf<std::int64_t>(answers);
}
