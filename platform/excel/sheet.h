// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/celltable.h"

#include <functional>
#include <set>

namespace excel::biff {

constexpr int cellPadding = 182; ///< beside the text of a cell, 1/256 of a digit's width

/// A range of columns with a width and a format for cells that have none of their own.
struct ColumnInfo {
    int first;
    int last;
    QByteArray body;
    quint16 format() const;
    quint16 width() const; ///< 1/256 of a digit's width
    bool hidden() const;
};

/// A sheet's records without the indexes of stream offsets, which programs do without; wrong ones would do
/// harm.
Records withoutIndexes(Records records);

/// The records of one worksheet, taken apart into its cells and everything else, which is kept as it is.
class Sheet {
public:
    explicit Sheet(const Records& records);

    /// The records for the file; those of an unchanged sheet are those that were read.
    Records records();

    bool changed = false;
    CellTable cells;
    std::set<int> touchedRows; ///< their heights are fitted to their texts on saving

    /// The format that a cell has or, when there is none, would be given: the row's, the column's, or
    /// `plain`.
    quint16 formatAt(Place place, quint16 plain) const;
    quint16 implicitFormat(Place place, quint16 plain) const;
    const ColumnInfo* column(int column) const;
    int defaultColumnWidth() const;   ///< 1/256 of a digit's width
    quint16 defaultRowHeight() const; ///< twips

    /// Removes contents and formats: the cells go, and cells of the format `plain` stand where a row's or a
    /// column's own format would show through; `differs` tells which formats look other than `plain`.
    /// Merged areas inside the area are taken apart; those across its edge stay, as do notes, links,
    /// validations and drawings.
    void clear(const Area& area, quint16 plain, const std::function<bool(quint16)>& differs);
    bool isMerged(Place place) const;

    bool isProtected() const { return protectionOn; }
    quint16 passwordHash() const { return storedHash; } ///< 0 without a password
    void protect(quint16 hash);
    void unprotect();

private:
    void readProtection();
    void readColumns();
    void writeColumns();
    void splitColumns(const Area& area);
    void clearColumnFormat(ColumnInfo& column, const Area& area, quint16 plain);
    void putBlanks(const Area& area, quint16 format);
    bool rowHasFormat(int row) const;
    void readMergedAreas();
    void unmerge(const Area& area);
    void updateDimensions();

    Records original;
    Records before; ///< from the sheet's Bof to its cells
    Records after;
    std::vector<ColumnInfo> columnInfos;
    std::vector<Area> mergedAreas;
    bool protectionOn = false;
    quint16 storedHash = 0;
};

} // namespace excel::biff
