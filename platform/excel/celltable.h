// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/area.h"
#include "platform/excel/record.h"

#include <map>

namespace excel::biff {

/// One cell: its record and what belongs to it (the text of a formula's result, a shared formula, an array).
struct Cell {
    Record record;
    Records followers;
    quint16 format() const;
    void setFormat(quint16 index);
};

/// The rows and cells of a worksheet, by place. Records of several cells are split on reading.
class CellTable {
public:
    static constexpr size_t maxCells = 2'000'000;

    /// Whether a record belongs to the table (rows, cells and the index of them).
    static bool isCellRecord(quint16 recordId);
    /// Adds the next record of the sheet, in file order; a later record for a place replaces an earlier one.
    void take(const Record& record);
    /// Row blocks of 32 rows, each followed by its cells, sorted.
    void appendTo(Records& records, quint16 defaultHeight);

    const Cell* find(Place place) const;
    Cell* find(Place place);
    /// Puts a cell in its place. Refusal when other cells depend on the formula that it would replace.
    void put(Place place, Cell cell);
    /// Removes cells; Refusal when cells outside the area depend on a formula inside.
    void erase(const Area& area);

    /// The body of a row's record, made when there is none; the height of a new row is in twips.
    QByteArray& row(int row, quint16 height);
    const QByteArray* findRow(int row) const;
    const std::map<int, QByteArray>& rows() const { return rowBodies; }
    const std::map<Place, Cell>& cells() const { return byPlace; }
    /// The smallest area with every cell; an empty one (last before first) without cells.
    Area used() const;

private:
    void appendRun(Records& records, std::map<Place, Cell>::const_iterator& cell) const;
    void takeRun(const Record& record);
    void insert(Place place, Cell cell);
    void refuseLossOfShared(const Area& lost) const;

    std::map<Place, Cell> byPlace;
    std::map<int, QByteArray> rowBodies;
    Place latest{-1, -1}; ///< the cell that followers belong to
};

/// Fields of a Row record.
namespace rowfield {
constexpr qsizetype firstColumn = 2;
constexpr qsizetype endColumn = 4;
constexpr qsizetype height = 6; ///< twips; the top bit is set for the sheet's default
constexpr qsizetype flags = 12;
constexpr qsizetype format = 14; ///< 12 bits
constexpr quint16 hidden = 0x20;
constexpr quint16 customHeight = 0x40;
constexpr quint16 hasFormat = 0x80;
constexpr quint16 alwaysSet = 0x100;
} // namespace rowfield

} // namespace excel::biff
