// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <limits>

namespace excel::biff {

class Formats;
class SharedStrings;
class Sheet;

/// Fits the heights of the touched rows of a sheet to their texts, as a spreadsheet program does during
/// typing. Hidden rows and rows with a custom height are left unchanged. Character widths are estimated from
/// the column's width in digits, so a text may get one line too many.
void fitRowHeights(Sheet& sheet, const Formats& formats, const SharedStrings& strings);

/// Lines of a text wrapped between words to `width` characters a line; counting stops at `mostLines`.
int wrappedLines(const QString& text, double width, int mostLines = std::numeric_limits<int>::max());

} // namespace excel::biff
