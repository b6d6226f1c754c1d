// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/look.h"
#include "platform/crystal/records.h"

namespace crystal {

/// A block on a page, or the part of a row that is too tall for one page.
struct Item {
    std::size_t block = 0;
    double y = 0;
    double height = 0;
    int firstLine = 0;
    int lines = 0;
    bool continued = false; ///< a heading whose rows began on an earlier page
};

struct Page {
    double top = 0; ///< of the column headings
    std::vector<Item> items;
};

/// Divides the blocks into pages; firstTop is where the first page's head ends. There is at least one page. A
/// heading stays with its first row and is repeated on each page that its rows reach; a mean stays with its
/// last row; a row is split only when it is taller than a page.
std::vector<Page> paginate(const Layout& layout, const Look& look, const std::vector<Block>& blocks,
                           double firstTop);

/// Whether a cell stays empty because the row above on the same page has the same text.
bool isLeftOut(const Layout& layout, std::size_t column, const Block& row, const Block* above);

/// The text of a group's heading.
QString headingText(const Block& heading, bool continued);

} // namespace crystal
