// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveycheck.h"

#include <QColor>

// Colours of the marks beside the words of a check; of a middle lightness, for light and dark windows.

QColor colourOf(Verdict verdict);
QColor colourOf(CheckedAnswer::Kind kind);

/// The width and height of such a mark, in pixels.
inline constexpr int colourMarkSize = 10;
