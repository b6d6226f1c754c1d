// SPDX-License-Identifier: GPL-3.0-or-later
// A random walk through the running program: 20 seeds of 1,000 events, fewer on a server. Set
// GAUGEWELL_WALK_SEED (the first), GAUGEWELL_WALK_SEEDS (how many) and GAUGEWELL_WALK_EVENTS (per seed) to
// change it. A failure prints the seed, the step, at which the seed fails again, and the last events.
#include "tests/walk/walker.h"
#include "tests/walk/world.h"

using walk::setting;

namespace {
class RandomWalk : public walk::World, public ::testing::WithParamInterface<int> {};

TEST_P(RandomWalk, everyRowKeepsItsOwner) {
    const int events = setting("GAUGEWELL_WALK_EVENTS", 1000); // after more, little is left in the store
    const QString fault = walk::Walker(GetParam()).run(events);
    EXPECT_TRUE(fault.isEmpty()) << fault;
}

const int firstSeed = setting("GAUGEWELL_WALK_SEED", 1);
INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalk,
                         ::testing::Range(firstSeed, firstSeed + setting("GAUGEWELL_WALK_SEEDS", 20)));
} // namespace
