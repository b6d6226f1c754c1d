// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

/// The ratings of one answer. Nullopt or 0 means not rated.
struct RatedAnswer {
    std::optional<std::int16_t> weightage;
    std::optional<std::int16_t> score;
};

/// The Satisfaction Index of a group of n answers, on the scale of the score:
///
///     A = (w1 + ... + wn) / n        the average weightage
///     v(k) = s(k) * (w(k) / A)       the weighted scores, 0 throughout when A is 0
///     T(k) = round(T(k-1) + v(k))    to a whole number in every step, ties to even, from T(0) = 0
///     index = T(n) / n
///
/// An answer without a weightage or score counts in n but adds nothing. A, w/A, v and the index are single
/// precision. Returns 0 for no answers. Throws Failure if a T leaves -32768..32767.
float satisfactionIndex(std::span<const RatedAnswer> answers);

/// The same for the answers of many customers, with a T of 64 bits, which none leaves: equal to
/// satisfactionIndex wherever that returns.
float groupIndex(std::span<const RatedAnswer> answers);
