// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/sheet.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"

#include <algorithm>

namespace excel::biff {

namespace {

constexpr qsizetype dimensionsSize = 14;

/// The position for the cells of a sheet without cells: after everything that must precede them.
size_t placeForCells(const Records& records) {
    int last = 0;
    for (const quint16 id :
         {id::PageSetup, id::HeaderFooter, id::Protect, id::ScenarioProtect, id::ObjectProtect, id::Password,
          id::DefaultColumnWidth, id::ColumnInfo, id::Dimensions})
        last = std::max(last, lastOf(records, id));
    return size_t(last) + 1;
}

} // namespace

Records withoutIndexes(Records records) {
    eraseOwn(records, [](const Record& r) { return r.id == id::Index || r.id == id::DbCell; });
    return records;
}

Sheet::Sheet(const Records& records) : original(withoutIndexes(records)) {
    int depth = 0;
    bool inCell = false;
    bool seenCells = false;
    for (const Record& record : original) {
        depth += record.id == id::Bof;
        inCell = depth == 1 && (CellTable::isCellRecord(record.id) || (inCell && record.id == id::Continue));
        if (inCell)
            cells.take(record);
        else
            (seenCells ? after : before).push_back(record);
        seenCells = seenCells || inCell;
        depth -= record.id == id::Eof;
    }
    if (!seenCells) {
        const auto split = before.begin() + qsizetype(placeForCells(before));
        after.assign(split, before.end());
        before.erase(split, before.end());
    }
    readProtection();
    readColumns();
    readMergedAreas();
}

Records Sheet::records() {
    if (!changed)
        return original;
    updateDimensions();
    Records result = before;
    cells.appendTo(result, defaultRowHeight());
    result.insert(result.end(), after.begin(), after.end());
    return result;
}

void Sheet::updateDimensions() {
    const Area used = cells.used();
    if (used.last.row < 0)
        return;
    auto at =
        std::find_if(before.begin(), before.end(), [](const Record& r) { return r.id == id::Dimensions; });
    if (at == before.end())
        at = before.insert(at, {id::Dimensions, {}});
    QByteArray& body = at->body;
    Area area = used;
    if (body.size() >= dimensionsSize && get32(body, 0) < get32(body, 4)) {
        area.first = {std::min(used.first.row, int(get32(body, 0))),
                      std::min(used.first.column, int(get16(body, 8)))};
        area.last = {std::max(used.last.row, int(std::min<quint32>(get32(body, 4), maxRows)) - 1),
                     std::max(used.last.column, std::min(int(get16(body, 10)), maxColumns) - 1)};
    } else {
        body = QByteArray(dimensionsSize, '\0');
    }
    put32(body, 0, quint32(area.first.row));
    put32(body, 4, quint32(area.last.row + 1));
    put16(body, 8, quint16(area.first.column));
    put16(body, 10, quint16(area.last.column + 1));
}

quint16 Sheet::defaultRowHeight() const {
    constexpr quint16 usual = 255;
    const int at = lastOf(before, id::DefaultRowHeight);
    return at < 0 || before[size_t(at)].body.size() < 4 ? usual : get16(before[size_t(at)].body, 2);
}

bool Sheet::rowHasFormat(int row) const {
    const QByteArray* body = cells.findRow(row);
    return body && get16(*body, rowfield::flags) & rowfield::hasFormat;
}

quint16 Sheet::formatAt(Place place, quint16 plain) const {
    const Cell* cell = cells.find(place);
    return cell ? cell->format() : implicitFormat(place, plain);
}

quint16 Sheet::implicitFormat(Place place, quint16 plain) const {
    if (rowHasFormat(place.row))
        return get16(*cells.findRow(place.row), rowfield::format) & 0x0FFF;
    const ColumnInfo* info = column(place.column);
    return info ? info->format() : plain;
}

void Sheet::putBlanks(const Area& area, quint16 format) {
    for (int row = area.first.row; row <= area.last.row; ++row) {
        for (int column = area.first.column; column <= area.last.column; ++column) {
            if (cells.find({row, column}))
                continue;
            Cell blank{{id::Blank, QByteArray(6, '\0')}, {}};
            put16(blank.record.body, 0, quint16(row));
            put16(blank.record.body, 2, quint16(column));
            blank.setFormat(format);
            cells.put({row, column}, blank);
        }
    }
}

void Sheet::clear(const Area& area, quint16 plain, const std::function<bool(quint16)>& differs) {
    changed = true;
    cells.erase(area);
    unmerge(area);
    for (const auto& [row, body] : cells.rows()) {
        if (row < area.first.row || row > area.last.row)
            continue;
        touchedRows.insert(row);
        if (rowHasFormat(row) && differs(get16(body, rowfield::format) & 0x0FFF))
            putBlanks({{row, area.first.column}, {row, area.last.column}}, plain);
    }
    splitColumns(area);
    for (ColumnInfo& info : columnInfos)
        if (info.first >= area.first.column && info.last <= area.last.column && differs(info.format()))
            clearColumnFormat(info, area, plain);
    writeColumns();
}

/// A column's format covers all rows. When the smaller part of them is kept, that part gets cells of its own
/// and the column becomes plain; otherwise the cleared part gets plain cells.
void Sheet::clearColumnFormat(ColumnInfo& info, const Area& area, quint16 plain) {
    if (area.last.row < maxRows - 1 || area.first.row > area.rows()) {
        putBlanks({{area.first.row, info.first}, {area.last.row, info.last}}, plain);
        return;
    }
    for (int row = 0; row < area.first.row; ++row)
        if (!rowHasFormat(row))
            putBlanks({{row, info.first}, {row, info.last}}, info.format());
    put16(info.body, 6, plain);
}

} // namespace excel::biff
