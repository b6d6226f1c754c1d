// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/rowheight.h"

#include "platform/excel/bytes.h"
#include "platform/excel/cellvalue.h"
#include "platform/excel/formats.h"
#include "platform/excel/sharedstrings.h"
#include "platform/excel/sheet.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr int maxHeight = 8190;               // twips
constexpr qsizetype mostWrapped = 20'000'000; // characters, in one sheet; more than any questionnaire has
constexpr double lineSpacing = 1.275;         // height of a line to that of its font
constexpr quint16 bold = 700;

int fontHeight(const QByteArray& font) {
    return get16(font, 0);
} // twips

/// Digits of the cell's font that fit into a line of the cell.
double lineWidth(const Sheet& sheet, int column, const QByteArray& font, const QByteArray& baseFont) {
    const ColumnInfo* info = sheet.column(column);
    const int width = info ? int(info->width()) : sheet.defaultColumnWidth();
    const double scale = double(std::max(fontHeight(font), 1)) / std::max(fontHeight(baseFont), 1);
    const double weight = get16(font, 6) >= bold ? 1.1 : 1.0;
    return std::max(1.0, (width - cellPadding) / 256.0 / scale / weight);
}

bool isHidden(const Sheet& sheet, int column) {
    const ColumnInfo* info = sheet.column(column);
    return info && info->hidden();
}

/// Lines of a text, up to the number that fit the highest row. Beyond the budget, which is shared by all
/// texts of a sheet, a text counts as one line.
int shownLines(const QString& text, double width, double lineHeight, qsizetype& budget) {
    budget -= text.size();
    return budget < 0 ? 1 : wrappedLines(text, width, int(maxHeight / std::max(lineHeight, 1.0)) + 1);
}

int neededHeight(const Sheet& sheet, int row, const Formats& formats, const SharedStrings& strings,
                 qsizetype& budget) {
    double height = sheet.defaultRowHeight();
    const auto& cells = sheet.cells.cells();
    for (auto at = cells.lower_bound({row, 0});
         at != cells.end() && at->first.row == row && height < maxHeight; ++at) {
        const auto& [place, cell] = *at;
        if (isHidden(sheet, place.column))
            continue;
        const CellFormat format = formats.cellFormat(cell.format());
        const QByteArray font = formats.font(format.font());
        const double lineHeight = std::ceil(fontHeight(font) * lineSpacing);
        int lines = 1;
        if (format.wrapped())
            lines = shownLines(cellValue(cell, strings).text(),
                               lineWidth(sheet, place.column, font, formats.font(0)), lineHeight, budget);
        const double needed = lines * lineHeight;
        if (needed > height && !sheet.isMerged(place))
            height = needed;
    }
    return int(std::min<double>(height, maxHeight));
}

} // namespace

int wrappedLines(const QString& text, double width, int mostLines) {
    int lines = 0;
    for (const QStringView paragraph : QStringView(text).tokenize(u'\n')) {
        double filled = 0;
        ++lines;
        for (const QStringView word : paragraph.tokenize(u' ')) {
            if (lines >= mostLines)
                return mostLines;
            const double wide =
                double(std::count_if(word.begin(), word.end(), [](QChar c) { return c >= u'\u2E80'; }));
            const double length = double(word.size()) + wide;
            const double joined = filled == 0 ? length : filled + 1 + length;
            if (joined <= width) {
                filled = joined;
                continue;
            }
            lines += filled > 0;
            const double broken = std::max(0.0, std::ceil(length / width) - 1);
            lines += int(broken);
            filled = length - broken * width;
        }
    }
    return std::min(lines, mostLines);
}

void fitRowHeights(Sheet& sheet, const Formats& formats, const SharedStrings& strings) {
    qsizetype budget = mostWrapped;
    for (const int row : sheet.touchedRows) {
        const quint16 usual = sheet.defaultRowHeight();
        QByteArray& body = sheet.cells.row(row, usual);
        const quint16 flags = get16(body, rowfield::flags);
        if (!(flags & (rowfield::customHeight | rowfield::hidden)))
            put16(body, rowfield::height, quint16(neededHeight(sheet, row, formats, strings, budget)));
    }
    sheet.touchedRows.clear();
}

} // namespace excel::biff
