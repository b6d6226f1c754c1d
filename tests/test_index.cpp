// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/satisfactionindex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

constexpr auto none = std::nullopt;
constexpr std::int16_t largest = 32767;
constexpr std::int16_t smallest = -32768;

TEST(SatisfactionIndex, ofGroups) {
    struct Case {
        const char* what;
        std::vector<RatedAnswer> answers;
        double index;
    };
    const std::vector<Case> cases{
        {"no answer", {}, 0},
        {"worked example: a skipped row stays in the count", {{5, 8}, {3, 6}, {0, 9}}, 22.0 / 3},
        {"one answer is its score whatever its weightage", {{3, 7}}, 7},
        {"a weightage without a score weighs nothing", {{5, 0}, {5, 8}}, 8},
        {"Null in either is not rated", {{none, 9}, {4, none}, {4, 6}, {none, none}}, 6},
        {"nothing weighed", {{0, 9}, {0, 5}}, 0},
        {"nothing scored", {{5, 0}, {4, none}}, 0},
        // 5 x 0.5 = 2.5 -> 2, then 2 + 1 x 1.5 = 3.5 -> 4
        {"ties go to even in each step", {{1, 5}, {3, 1}}, 2},
        // the same answers the other way round: 1.5 -> 2, then 2 + 2.5 = 4.5 -> 4
        {"ties go to even downward too", {{3, 1}, {1, 5}}, 2},
        // 3 x 7.0588 and 15.0588 are 36.24 in all; each step loses its 0.0588
        {"rounding is in every step and not once", {{3, 10}, {3, 10}, {3, 10}, {8, 8}}, 9},
        // 3 x 1.4 and 2 x 0.4 are 5 in all
        {"fractions below a half are lost one by one", {{7, 1}, {7, 1}, {7, 1}, {2, 1}, {2, 1}}, 3.0 / 5},
        {"negative ratings", {{-5, 8}, {-3, 6}}, 7},
        {"weightages that cancel", {{5, 8}, {-5, 6}}, 0},
        {"the largest sum", {{1, largest}}, largest},
        {"the smallest sum", {{1, smallest}}, smallest},
        {"the sum of the weightages may pass 16 bits", {{largest, 1}, {largest, 1}, {largest, 1}}, 1},
    };
    for (const Case& one : cases)
        EXPECT_EQ(satisfactionIndex(one.answers), static_cast<float>(one.index)) << one.what;
}

TEST(SatisfactionIndex, leavingSixteenBitsIsAnOverflow) {
    using Group = std::vector<RatedAnswer>;
    for (const Group& answers : {Group{{1, largest}, {1, 1}}, Group{{1, smallest}, {1, -1}},
                                 Group{{1, largest}, {1, 1}, {1, -1}}, Group{{largest, largest}, {0, 0}}})
        EXPECT_THROW(satisfactionIndex(answers), std::overflow_error);
}

TEST(SatisfactionIndex, isHeldInSinglePrecision) {
    const std::vector<RatedAnswer> answers{{5, 8}, {3, 6}, {0, 9}};
    EXPECT_EQ(static_cast<double>(satisfactionIndex(answers)), 7.333333492279053);
}

} // namespace
