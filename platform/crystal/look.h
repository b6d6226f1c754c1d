// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/layout.h"
#include "platform/crystal/textblock.h"

#include <QColor>
#include <QRectF>

namespace crystal {

inline constexpr QColor ink{0x1c, 0x27, 0x33};
inline constexpr QColor grey{0x5a, 0x66, 0x72};
inline constexpr QColor accent{0x1f, 0x4e, 0x79};
inline constexpr QColor band{0xe6, 0xed, 0xf4};
inline constexpr QColor hairline{0xd3, 0xda, 0xe1};

/// How a report looks: its paper, the places of its columns and its fonts. Lengths are in dots.
struct Look {
    explicit Look(const Layout& layout);

    QRectF paper;
    QRectF body;         ///< the area within the margins
    double rowsEnd;      ///< where the rows of a page end; the foot is below
    double laterTop;     ///< where the column headings begin on every page but the first
    double padding;      ///< above and below a row's text
    double headingSpace; ///< above a group's heading

    std::vector<double> columnLeft; ///< of the text
    double columnHeadHeight = 0;

    TextStyle organisation, title, label, value, small, smallRight, count;
    TextStyle headings[2]; ///< of the outermost groups, and of those within
    std::vector<TextStyle> columnHeads, cells, means;
    double labelWidth;

    const TextStyle& heading(int level) const { return headings[level == 0 ? 0 : 1]; }
};

} // namespace crystal
