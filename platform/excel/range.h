// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/sheethandle.h"
#include "platform/excel/value.h"

namespace excel {

/// Line widths of a border.
enum class BorderWeight { Hairline = 1, Thin = 2, Medium = -4138, Thick = 4 };

/// The colour index of the automatic colour, beside 1 to 56 for the workbook's palette (in the standard
/// palette 1 is black, 3 red, 25 dark blue, 32 blue).
constexpr int automaticColorIndex = -4105;

class Range;

/// The font of a range's cells.
class Font {
public:
    int ColorIndex() const; ///< of the first cell
    void setColorIndex(int index) const;

private:
    friend class Range;
    explicit Font(const Range& range);
    biff::SheetHandle sheet;
    biff::Area area;
};

/// A rectangle of cells. Getters read its first cell, setters change every cell, at most 100000 at once.
/// While the sheet is protected every setter throws Failure, but values may be set in unlocked cells.
class Range {
public:
    excel::Value Value() const;
    /// A text is stored as text even if it looks like a number, and is at most 32767 UTF-16 units long; ""
    /// makes the cell blank. A date sets the format dd/mm/yyyy unless the cell has a date format already;
    /// dates run from 1 March 1900 to the end of 9999. Other values keep the format. A formula is replaced;
    /// Failure when other cells share it.
    void setValue(const excel::Value& value) const;

    /// A locked cell cannot be changed while its sheet is protected. Cells are locked by default.
    bool Locked() const;
    void setLocked(bool locked) const;
    /// Wrapped text is broken into lines within its cell. Rows without a custom height grow with it.
    bool WrapText() const;
    void setWrapText(bool wrap) const;
    excel::Font Font() const;

    /// Fills the cells with a colour. Colour indexes as for fonts.
    void setInteriorColorIndex(int index) const;
    /// A line around the whole range. Colour indexes as for fonts.
    void BorderAround(BorderWeight weight, int colorIndex) const;

    /// Removes contents and formats and unmerges cells, in a range of any size. Custom row heights, column
    /// widths, notes, links and drawings stay.
    void Clear() const;

private:
    friend class Worksheet;
    friend class excel::Font;
    Range(biff::SheetHandle handle, const biff::Area& cells) : sheet(std::move(handle)), area(cells) {}
    biff::SheetHandle sheet;
    biff::Area area;
};

} // namespace excel
