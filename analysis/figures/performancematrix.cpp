// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/performancematrix.h"

#include "platform/failure/failure.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double border = 5;
constexpr double topScore = 10;

constexpr std::array<MatrixMeans, 8> shifts{{{.weightage = -0.1, .score = 0.1},
                                             {.weightage = -0.1, .score = -0.1},
                                             {.weightage = 0.1, .score = -0.1},
                                             {.weightage = 0.1, .score = 0.1},
                                             {.weightage = 0, .score = 0.1},
                                             {.weightage = -0.1, .score = 0},
                                             {.weightage = 0, .score = -0.1},
                                             {.weightage = 0.1, .score = 0}}};

/// Rounds the exact binary value: 2.125 is a tie, 2.675 is slightly below one.
double toTwoDecimals(double value) {
    std::array<char, 64> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, 2); // ties to even
    double rounded = 0;
    std::from_chars(text.data(), written.ptr, rounded);
    return rounded;
}

template <class Total> Total addWhole(Total total, std::int16_t score) {
    const std::int64_t sum = std::int64_t{total} + score;
    using Range = std::numeric_limits<Total>;
    if (sum < Range::min() || sum > Range::max())
        throw Failure::ofOverflow();
    return static_cast<Total>(sum);
}

template <class Total> std::optional<MatrixMeans> meansOf(std::span<const RatedAnswer> answers) {
    double weightages = 0;
    Total scores = 0;
    for (const RatedAnswer& answer : answers) {
        weightages += answer.weightage.value_or(0);
        scores = addWhole(scores, answer.score.value_or(0));
    }
    if (weightages == 0 && scores == 0)
        return std::nullopt;
    const auto count = static_cast<double>(answers.size());
    return MatrixMeans{.weightage = toTwoDecimals(weightages / count),
                       .score = toTwoDecimals(static_cast<double>(scores) / count)};
}

double meanOf(std::span<const RatedAnswer> answers, std::optional<std::int16_t> RatedAnswer::*mark) {
    double sum = 0;
    for (const RatedAnswer& answer : answers)
        sum += (answer.*mark).value_or(0);
    return answers.empty() ? 0 : sum / static_cast<double>(answers.size());
}

} // namespace

double meanWeightage(std::span<const RatedAnswer> answers) {
    return meanOf(answers, &RatedAnswer::weightage);
}

double meanScore(std::span<const RatedAnswer> answers) {
    return meanOf(answers, &RatedAnswer::score);
}

std::optional<MatrixMeans> matrixMeans(std::span<const RatedAnswer> answers) {
    return meansOf<std::int16_t>(answers);
}

std::optional<MatrixMeans> groupMeans(std::span<const RatedAnswer> answers) {
    return meansOf<std::int64_t>(answers);
}

MatrixMeans MatrixPlaces::next(const MatrixMeans& point) {
    MatrixMeans place = point;
    if (previous && previous->score == point.score && previous->weightage == point.weightage) {
        if (shifted == shifts.size())
            throw Failure::ofSubscript();
        const MatrixMeans& shift = shifts[shifted++];
        place = {.weightage = std::nearbyint(point.weightage) + shift.weightage,
                 .score = std::nearbyint(point.score) + shift.score};
    }
    previous = point;
    return place;
}

QColor quadrantColor(double score, double weightage) {
    if (score >= border && weightage >= border)
        return {0x00, 0xFF, 0x00};
    if (weightage < border && score <= topScore)
        return {0xFF, 0xFF, 0x00};
    if (weightage >= border && score < border)
        return {0xFF, 0x00, 0x00};
    return {};
}
