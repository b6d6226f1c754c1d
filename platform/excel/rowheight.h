// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <limits>

namespace excel::biff {

class Formats;
class SharedStrings;
class Sheet;

/// Gives the touched rows of a sheet the height their texts need, as a spreadsheet program does while one
/// types. Rows with a height set by hand and hidden rows stay. The widths of characters are estimated from
/// the number of digits a column holds, so a text may get a line more than it needs.
void fitRowHeights(Sheet& sheet, const Formats& formats, const SharedStrings& strings);

/// Lines that a text takes when it is wrapped between words to `width` characters a line; it is not looked at
/// beyond `mostLines`.
int wrappedLines(const QString& text, double width, int mostLines = std::numeric_limits<int>::max());

} // namespace excel::biff
