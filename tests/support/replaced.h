// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

/// Replaces the function of a hook and restores the former one when destroyed.
template <auto& hook> class Replaced {
public:
    using Function = std::remove_reference_t<decltype(hook)>;
    explicit Replaced(Function other) : former(std::exchange(hook, std::move(other))) {}
    ~Replaced() { hook = std::move(former); }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

private:
    Function former;
};
