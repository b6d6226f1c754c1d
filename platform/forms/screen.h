// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace forms {

/// Positions and sizes of forms and columns are in twips: 15 of them are one logical pixel.
inline constexpr int twipsPerPixel = 15;

constexpr int toPixels(int twips) {
    return twips / twipsPerPixel;
}

constexpr int toTwips(int pixels) {
    return pixels * twipsPerPixel;
}

/// The numbers of the mouse pointers that forms set.
enum MousePointer { DefaultPointer = 0, ArrowPointer = 1, Hourglass = 11 };

} // namespace forms
