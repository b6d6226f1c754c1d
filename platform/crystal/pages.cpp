// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/pages.h"

#include <QCoreApplication>

#include <algorithm>

namespace crystal {
namespace {

using Kind = Block::Kind;

class Paginator {
public:
    Paginator(const Layout& description, const Look& appearance, const std::vector<Block>& lines)
        : layout(description), look(appearance), blocks(lines) {}

    std::vector<Page> run(double firstTop) {
        constexpr int fewestLines = 5;
        startPage(firstTop);
        if (blocks.empty())
            return pages;
        if (y + fewestLines * look.cells.front().lineHeight() > look.rowsEnd)
            startPage(look.laterTop);
        for (std::size_t i = 0; i < blocks.size(); ++i)
            place(i);
        return pages;
    }

private:
    void place(std::size_t index) {
        const Block& block = blocks[index];
        if (!pages.back().items.empty() && y + together(index) > look.rowsEnd)
            breakPage(block);
        if (block.kind == Kind::Row) {
            placeRow(index);
            return;
        }
        if (block.kind == Kind::Heading) {
            std::erase_if(open, [&](std::size_t heading) { return blocks[heading].level >= block.level; });
            open.push_back(index);
        }
        add(index, heightOf(index, false), 0, 1, false);
    }

    void placeRow(std::size_t index) {
        const int lines = linesOf(index);
        const double lineHeight = look.cells.front().lineHeight();
        for (int first = 0; first < lines;) {
            const int room = static_cast<int>((look.rowsEnd - y - 2 * look.padding) / lineHeight);
            const int count = std::clamp(room, 1, lines - first);
            add(index, count * lineHeight + 2 * look.padding, first, count, false);
            first += count;
            if (first < lines)
                breakPage(blocks[index]);
        }
    }

    /// The height that must fit on one page from this block on.
    double together(std::size_t index) const {
        double height = 0;
        for (; index < blocks.size() && blocks[index].kind == Kind::Heading; ++index)
            height += heightOf(index, false);
        if (index == blocks.size())
            return height;
        if (blocks[index].kind == Kind::Mean)
            return height; // its row has reserved the space
        const double row = heightOf(index, false);
        const double whole = look.rowsEnd - look.laterTop - look.columnHeadHeight;
        if (row > whole / 2)
            return height + whole / 4; // it may be split
        const bool meanFollows = index + 1 < blocks.size() && blocks[index + 1].kind == Kind::Mean;
        return height + row + (meanFollows ? heightOf(index + 1, false) : 0);
    }

    double heightOf(std::size_t index, bool continued) const {
        const Block& block = blocks[index];
        if (block.kind == Kind::Heading)
            return look.headingSpace + look.padding +
                   look.heading(block.level).height(headingText(block, continued));
        const int lines = block.kind == Kind::Row ? linesOf(index) : 1;
        return lines * look.cells.front().lineHeight() + 2 * look.padding;
    }

    int linesOf(std::size_t index) const {
        const Block& row = blocks[index];
        const auto& items = pages.back().items;
        const Block* above = items.empty() ? nullptr : &blocks[items.back().block];
        int lines = 1;
        for (std::size_t i = 0; i < look.cells.size(); ++i) {
            if (!isLeftOut(layout, i, row, above))
                lines = std::max(lines, look.cells[i].lines(row.texts[static_cast<qsizetype>(i)]));
        }
        return lines;
    }

    void add(std::size_t index, double height, int firstLine, int lines, bool continued) {
        pages.back().items.push_back({index, y, height, firstLine, lines, continued});
        y += height;
    }
    void startPage(double top) {
        pages.push_back({top, {}});
        y = top + look.columnHeadHeight;
    }
    /// A new page for the block, under the headings that it belongs to.
    void breakPage(const Block& block) {
        startPage(look.laterTop);
        for (const std::size_t heading : open) {
            if (block.kind != Kind::Heading || blocks[heading].level < block.level)
                add(heading, heightOf(heading, true), 0, 1, true);
        }
    }

    const Layout& layout;
    const Look& look;
    const std::vector<Block>& blocks;
    std::vector<Page> pages;
    std::vector<std::size_t> open; // headings of the current groups, from the outermost
    double y = 0;
};

} // namespace

std::vector<Page> paginate(const Layout& layout, const Look& look, const std::vector<Block>& blocks,
                           double firstTop) {
    return Paginator(layout, look, blocks).run(firstTop);
}

bool isLeftOut(const Layout& layout, std::size_t column, const Block& row, const Block* above) {
    if (layout.columns[column].repeats || !above || above->kind != Kind::Row)
        return false;
    for (std::size_t i = 0; i <= column; ++i) {
        const auto text = static_cast<qsizetype>(i);
        if (!layout.columns[i].repeats && row.texts[text] != above->texts[text])
            return false;
    }
    return true;
}

QString headingText(const Block& heading, bool continued) {
    const QString& text = heading.texts.first();
    return continued ? QCoreApplication::translate("crystal", "%1 (continued)").arg(text) : text;
}

} // namespace crystal
