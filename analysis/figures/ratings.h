// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/value.h"

#include <cstdint>
#include <optional>

/// The weightage or score of an answer; nullopt for Null.
inline std::optional<std::int16_t> toRating(const QVariant& value) {
    if (!value.isValid())
        return std::nullopt;
    return static_cast<std::int16_t>(ado::toWhole(value));
}
