// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/celltable.h"

#include "platform/excel/bytes.h"
#include "platform/excel/formats.h"
#include "platform/excel/refusal.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr qsizetype rowSize = 16;
constexpr int rowsPerBlock = 32;

bool isFollower(quint16 id) {
    return id == id::String || id == id::SharedFormula || id == id::Array || id == id::Table ||
           id == id::Continue;
}

bool isRun(quint16 id) {
    return id == id::MultiRk || id == id::MultiBlank;
}

/// The minimum size of a cell's record.
qsizetype leastSize(quint16 id) {
    switch (id) {
    case id::Blank:
        return 6;
    case id::Rk:
    case id::LabelSst:
        return 10;
    case id::BoolError:
    case id::Label:
    case id::RichString:
        return 8; // an empty text has no flags
    case id::Formula:
        return 22;
    case id::Number:
    case id::Formula3:
    case id::Formula4:
        return 14;
    default:
        return 0;
    }
}

Place placeOf(const QByteArray& body) {
    const Place place{get16(body, 0), get16(body, 2)};
    if (place.column >= maxColumns)
        damaged(u"a cell lies beyond the last column"_s);
    return place;
}

/// The place of the formula whose shared, array or table definition this formula uses; {-1, -1} for none.
Place definitionOf(const Cell& cell) {
    constexpr qsizetype tokens = 22;
    if (!isFormula(cell.record.id) || cell.record.body.size() < tokens + 5)
        return {-1, -1};
    const quint8 token = get8(cell.record.body, tokens);
    if (token != 1 && token != 2)
        return {-1, -1};
    return {get16(cell.record.body, tokens + 1), get16(cell.record.body, tokens + 3)};
}

} // namespace

quint16 Cell::format() const {
    return get16(record.body, 4);
}
void Cell::setFormat(quint16 index) {
    put16(record.body, 4, index);
}

bool CellTable::isCellRecord(quint16 recordId) {
    return recordId == id::Row || leastSize(recordId) > 0 || isRun(recordId) ||
           (isFollower(recordId) && recordId != id::Continue);
}

void CellTable::take(const Record& record) {
    if (record.id == id::Row) {
        latest = {-1, -1};
        rowBodies[get16(record.body, 0)] = slice(record.body, 0, rowSize).toByteArray();
    } else if (isFollower(record.id)) {
        const auto owner = byPlace.find(latest);
        if (owner == byPlace.end() && record.id == id::Continue)
            return; // continues a record that has no continuation
        if (owner == byPlace.end())
            damaged(u"a formula's result stands without its formula"_s);
        owner->second.followers.push_back(record);
    } else if (isRun(record.id)) {
        takeRun(record);
    } else {
        slice(record.body, 0, leastSize(record.id));
        latest = placeOf(record.body);
        insert(latest, {record, {}});
    }
}

void CellTable::takeRun(const Record& record) {
    const qsizetype width = record.id == id::MultiRk ? 6 : 2;
    const Place first = placeOf(record.body);
    const int last = get16(record.body, record.body.size() - 2);
    const int count = last - first.column + 1;
    if (count < 1 || last >= maxColumns || record.body.size() != 6 + count * width)
        damaged(u"a run of cells is broken"_s);
    for (int i = 0; i < count; ++i) {
        Cell cell{{record.id == id::MultiRk ? id::Rk : id::Blank, {}}, {}};
        append16(cell.record.body, quint16(first.row));
        append16(cell.record.body, quint16(first.column + i));
        cell.record.body.append(slice(record.body, 4 + i * width, width));
        insert({first.row, first.column + i}, cell);
    }
    latest = {-1, -1};
}

void CellTable::insert(Place place, Cell cell) {
    byPlace.insert_or_assign(place, std::move(cell));
    if (byPlace.size() > maxCells)
        throw Refusal(u"has more than two million cells"_s);
}

const Cell* CellTable::find(Place place) const {
    const auto at = byPlace.find(place);
    return at == byPlace.end() ? nullptr : &at->second;
}

Cell* CellTable::find(Place place) {
    return const_cast<Cell*>(std::as_const(*this).find(place));
}

void CellTable::put(Place place, Cell cell) {
    refuseLossOfShared({place, place});
    insert(place, std::move(cell));
}

void CellTable::erase(const Area& area) {
    refuseLossOfShared(area);
    for (auto at = byPlace.lower_bound(area.first); at != byPlace.end() && at->first.row <= area.last.row;)
        at = area.contains(at->first) ? byPlace.erase(at) : std::next(at);
}

void CellTable::refuseLossOfShared(const Area& lost) const {
    const auto defines = [](const Record& r) {
        return r.id == id::SharedFormula || r.id == id::Array || r.id == id::Table;
    };
    std::set<Place> definitions;
    for (auto at = byPlace.lower_bound(lost.first); at != byPlace.end() && at->first <= lost.last; ++at) {
        const Records& followers = at->second.followers;
        if (lost.contains(at->first) && std::any_of(followers.begin(), followers.end(), defines))
            definitions.insert(at->first);
    }
    if (definitions.empty())
        return;
    for (const auto& [place, cell] : byPlace)
        if (!lost.contains(place) && definitions.contains(definitionOf(cell)))
            throw Refusal(u"has in %1 a formula that cell %2 shares; it cannot be replaced"_s.arg(
                definitionOf(cell).name(), place.name()));
}

QByteArray& CellTable::row(int row, quint16 height) {
    QByteArray& body = rowBodies[row];
    if (body.isEmpty()) {
        body = QByteArray(rowSize, '\0');
        put16(body, 0, quint16(row));
        put16(body, rowfield::height, height);
        put16(body, rowfield::flags, rowfield::alwaysSet);
        put16(body, rowfield::format, defaultCellFormat);
    }
    return body;
}

const QByteArray* CellTable::findRow(int row) const {
    const auto at = rowBodies.find(row);
    return at == rowBodies.end() ? nullptr : &at->second;
}

Area CellTable::used() const {
    Area area{{maxRows, maxColumns}, {-1, -1}};
    for (const auto& [place, cell] : byPlace) {
        area.first = {std::min(area.first.row, place.row), std::min(area.first.column, place.column)};
        area.last = {place.row, std::max(area.last.column, place.column)};
    }
    return area;
}

/// Appends the record of a cell, or one for the whole run of blanks that begins with it, and advances past
/// it. Single blanks would make a file of long runs many times larger than it was.
void CellTable::appendRun(Records& records, std::map<Place, Cell>::const_iterator& cell) const {
    const auto isBlank = [](const Cell& c) {
        return c.record.id == id::Blank && c.record.body.size() == 6 && c.followers.empty();
    };
    const auto first = cell++;
    Record run = first->second.record;
    auto last = first;
    while (isBlank(first->second) && cell != byPlace.end() && isBlank(cell->second) &&
           cell->first == Place{last->first.row, last->first.column + 1}) {
        run.body.append(slice(cell->second.record.body, 4, 2));
        last = cell++;
    }
    if (last != first) {
        run.id = id::MultiBlank;
        append16(run.body, quint16(last->first.column));
    }
    records.push_back(std::move(run));
    const Records& followers = first->second.followers;
    records.insert(records.end(), followers.begin(), followers.end());
}

void CellTable::appendTo(Records& records, quint16 defaultHeight) {
    for (auto& [number, body] : rowBodies)
        put32(body, rowfield::firstColumn, 0); // and the end column
    for (auto cell = byPlace.begin(); cell != byPlace.end();) {
        const int number = cell->first.row;
        QByteArray& body = row(number, defaultHeight);
        put16(body, rowfield::firstColumn, quint16(cell->first.column));
        while (cell != byPlace.end() && cell->first.row == number)
            put16(body, rowfield::endColumn, quint16((cell++)->first.column + 1));
    }
    auto cell = byPlace.cbegin();
    for (auto row = rowBodies.begin(); row != rowBodies.end();) {
        const int blockEnd = (row->first / rowsPerBlock + 1) * rowsPerBlock;
        for (; row != rowBodies.end() && row->first < blockEnd; ++row)
            records.push_back({id::Row, row->second});
        while (cell != byPlace.end() && cell->first.row < blockEnd)
            appendRun(records, cell);
    }
}

} // namespace excel::biff
