// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/repeats.h"

#include "platform/excel/bytes.h"
#include "platform/excel/cellvalue.h"
#include "platform/excel/sharedstrings.h"
#include "platform/excel/sheet.h"

namespace excel::biff {

namespace {

constexpr qsizetype resultAt = 6;
constexpr qsizetype tokensAt = 22; // after their length
constexpr quint16 referenceSize = 5;

/// The cell that a formula repeats; {-1, -1} for any other cell.
Place repeatedPlace(const Cell& cell) {
    const QByteArray& body = cell.record.body;
    if (cell.record.id != id::Formula || !cell.followers.empty() || body.size() < tokensAt + referenceSize ||
        get16(body, tokensAt - 2) != referenceSize)
        return {-1, -1};
    const quint8 token = get8(body, tokensAt);
    if (token != 0x24 && token != 0x44 && token != 0x64) // a reference, as a cell, a value or an array
        return {-1, -1};
    return {get16(body, tokensAt + 1), get16(body, tokensAt + 3) & 0xFF};
}

} // namespace

void refreshRepeats(Sheet& sheet, const SharedStrings& strings) {
    if (!sheet.changed)
        return;
    for (const auto& [place, cell] : sheet.cells.cells()) {
        const Place source = repeatedPlace(cell);
        if (source.row < 0)
            continue;
        const Cell* const repeated = sheet.cells.find(source);
        const Value value = repeated ? cellValue(*repeated, strings) : Value();
        if (value.type() != Value::Type::Blank && !value.number())
            continue;
        QByteArray result;
        appendDouble(result, value.number().value_or(0));
        sheet.cells.find(place)->record.body.replace(resultAt, result.size(), result);
    }
}

} // namespace excel::biff
