// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/range.h"

#include "platform/excel/bytes.h"
#include "platform/excel/editor.h"
#include "platform/excel/openworkbook.h"
#include "platform/excel/refusal.h"

using namespace Qt::StringLiterals;

namespace excel {

using biff::Access;
using biff::CellFormat;
using biff::Editor;
using biff::Place;

namespace {

constexpr int maxCellsAtOnce = 100'000;
constexpr int paletteOffset = 7; // colour numbers of the file begin with eight fixed colours
constexpr int lastColorIndex = 56;
constexpr quint16 automaticFontColour = 0x7FFF;
constexpr quint8 automaticLineColour = 64; // and of a fill

quint16 fileColour(int colorIndex, quint16 automatic) {
    if (colorIndex == automaticColorIndex)
        return automatic;
    if (colorIndex < 1 || colorIndex > lastColorIndex)
        throw biff::Refusal(u"has no colour index %1"_s.arg(colorIndex));
    return quint16(colorIndex + paletteOffset);
}

CellFormat::LineStyle lineStyle(BorderWeight weight) {
    switch (weight) {
    case BorderWeight::Hairline:
        return CellFormat::Hair;
    case BorderWeight::Thin:
        return CellFormat::Thin;
    case BorderWeight::Medium:
        return CellFormat::Medium;
    case BorderWeight::Thick:
        return CellFormat::Thick;
    }
    throw biff::Refusal(u"has no border of weight %1"_s.arg(int(weight)));
}

void forEachCell(const biff::SheetHandle& sheet, const biff::Area& area,
                 const std::function<void(Editor&, Place)>& change) {
    sheet.edit(Access::Write, [&](Editor& editor) {
        if (area.rows() > maxCellsAtOnce / area.columns())
            throw biff::Refusal(u"cannot have more than %1 cells changed at once"_s.arg(maxCellsAtOnce));
        for (int row = area.first.row; row <= area.last.row; ++row)
            for (int column = area.first.column; column <= area.last.column; ++column)
                change(editor, {row, column});
    });
}

} // namespace

excel::Value Range::Value() const {
    if (const ValueBook* values = sheet.workbook().values.get())
        return values->value(sheet.sheet(), area.first);
    excel::Value value;
    sheet.edit(Access::Read, [&](Editor& editor) { value = editor.value(area.first); });
    return value;
}

void Range::setValue(const excel::Value& value) const {
    forEachCell(sheet, area, [&](Editor& editor, Place place) { editor.setValue(place, value); });
}

bool Range::Locked() const {
    bool locked = false;
    sheet.edit(Access::Read, [&](Editor& editor) { locked = editor.format(area.first).locked(); });
    return locked;
}

void Range::setLocked(bool locked) const {
    forEachCell(sheet, area, [=](Editor& editor, Place place) {
        editor.changeFormat(place, [=](CellFormat& format) { format.setLocked(locked); });
    });
}

bool Range::WrapText() const {
    bool wrapped = false;
    sheet.edit(Access::Read, [&](Editor& editor) { wrapped = editor.format(area.first).wrapped(); });
    return wrapped;
}

void Range::setWrapText(bool wrap) const {
    forEachCell(sheet, area, [=](Editor& editor, Place place) {
        editor.changeFormat(place, [=](CellFormat& format) { format.setWrapped(wrap); });
    });
}

void Range::setInteriorColorIndex(int index) const {
    forEachCell(sheet, area, [&](Editor& editor, Place place) {
        const auto colour = quint8(fileColour(index, automaticLineColour));
        editor.changeFormat(place, [=](CellFormat& format) { format.setFill(colour); });
    });
}

void Range::BorderAround(BorderWeight weight, int colorIndex) const {
    forEachCell(sheet, area, [&](Editor& editor, Place place) {
        const CellFormat::LineStyle style = lineStyle(weight);
        const auto colour = quint8(fileColour(colorIndex, automaticLineColour));
        editor.changeFormat(place, [&](CellFormat& format) {
            if (place.column == area.first.column)
                format.setEdge(CellFormat::Left, style, colour);
            if (place.column == area.last.column)
                format.setEdge(CellFormat::Right, style, colour);
            if (place.row == area.first.row)
                format.setEdge(CellFormat::Top, style, colour);
            if (place.row == area.last.row)
                format.setEdge(CellFormat::Bottom, style, colour);
        });
    });
}

void Range::Clear() const {
    sheet.edit(Access::Write, [&](Editor& editor) { editor.clear(area); });
}

excel::Font Range::Font() const {
    return excel::Font(*this);
}

Font::Font(const Range& range) : sheet(range.sheet), area(range.area) {}

int Font::ColorIndex() const {
    int colour = 0;
    sheet.edit(Access::Read, [&](Editor& editor) { colour = biff::get16(editor.font(area.first), 4); });
    const int index = colour - paletteOffset;
    return index >= 1 && index <= lastColorIndex ? index : automaticColorIndex;
}

void Font::setColorIndex(int index) const {
    forEachCell(sheet, area, [=](Editor& editor, Place place) {
        editor.setFontColour(place, fileColour(index, automaticFontColour));
    });
}

} // namespace excel
