// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/look.h"

#include <algorithm>

namespace crystal {
namespace {

constexpr double columnGap = 5 * dotsPerMillimetre;

QRectF inDots(const QRectF& millimetres) {
    return {millimetres.topLeft() * dotsPerMillimetre, millimetres.size() * dotsPerMillimetre};
}

} // namespace

Look::Look(const Layout& layout)
    : paper(inDots(layout.page.fullRect(QPageLayout::Millimeter))),
      body(inDots(layout.page.paintRect(QPageLayout::Millimeter))), padding(2.5 * dotsPerPoint),
      headingSpace(7 * dotsPerPoint), labelWidth(34 * dotsPerMillimetre) {
    const double size = layout.fontSize;
    const double width = body.width();
    organisation = TextStyle(size + 1, width * 0.7, Qt::AlignLeft, true);
    title = TextStyle(size + 9, width, Qt::AlignLeft, true);
    label = TextStyle(size, labelWidth - columnGap);
    value = TextStyle(size + 1, width - labelWidth, Qt::AlignLeft, true);
    small = TextStyle(size - 1, width * 0.35);
    smallRight = TextStyle(size - 1, width * 0.65, Qt::AlignRight);
    count = TextStyle(size - 1, width * 0.25, Qt::AlignRight);
    headings[0] = TextStyle(size + 2, width * 0.75, Qt::AlignLeft, true);
    headings[1] = TextStyle(size + 0.5, width * 0.75, Qt::AlignLeft, true);
    rowsEnd = body.bottom() - small.lineHeight() * 1.8;
    laterTop = body.top() + small.lineHeight() * 2;

    double shares = 0;
    for (const Column& column : layout.columns)
        shares += column.share;
    double left = body.left();
    for (const Column& column : layout.columns) {
        const double whole = width * column.share / shares;
        const double inner = whole - columnGap;
        columnLeft.push_back(left + columnGap / 2);
        columnHeads.emplace_back(size, inner, column.align, true);
        cells.emplace_back(size, inner, column.align);
        means.emplace_back(size, inner, column.align, true);
        columnHeadHeight = std::max(columnHeadHeight, columnHeads.back().height(column.field.words));
        left += whole;
    }
    columnHeadHeight += 4 * padding;
}

} // namespace crystal
