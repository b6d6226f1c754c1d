// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace excel::biff {

class SharedStrings;
class Sheet;

/// Gives each formula that only repeats a cell of its own sheet, such as =I3, the number in that cell as its
/// stored result, 0 for a blank cell: viewers that do not compute show the stored one. No formula is
/// computed; the results of all others are left as they are.
void refreshRepeats(Sheet& sheet, const SharedStrings& strings);

} // namespace excel::biff
