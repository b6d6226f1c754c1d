// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

/// Holds another function in a hook of the program while it lives; then the hook has its former one back.
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
