// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveycheck.h"

#include <QIcon>

// The coloured marks beside the words of a check; of a middle lightness, for light and dark windows. In a
// chosen row they have a white edge.

QIcon markOf(Verdict verdict);
/// As wide but not to be seen for an answer that is left out.
QIcon markOf(CheckedAnswer::Kind kind);

/// The width and height of a mark, in pixels.
inline constexpr int markSize = 10;
