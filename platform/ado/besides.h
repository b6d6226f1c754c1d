// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <future>

namespace ado {

/// Called a few times a second while something long goes on; false cancels it.
using Step = std::function<bool()>;

/// Runs `work` in another thread and `step` in this one until it is done; calls `stop`, again and again since
/// the work may just begin, once the step has cancelled. Returns what the work returns and throws what it
/// throws.
template <class Work, class Stop> auto besides(const Step& step, Work work, Stop stop) {
    constexpr std::chrono::milliseconds pause(50);
    auto result = std::async(std::launch::async, std::move(work));
    bool isCancelled = false;
    while (result.wait_for(pause) != std::future_status::ready) {
        isCancelled = isCancelled || (step && !step());
        if (isCancelled)
            stop();
    }
    return result.get();
}

} // namespace ado
