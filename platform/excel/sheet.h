// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/celltable.h"

#include <functional>
#include <set>

namespace excel::biff {

constexpr int cellPadding = 182; ///< beside the text of a cell, 1/256 of a digit's width

/// A range of columns with its width and the format of cells without one of their own.
struct ColumnInfo {
    int first;
    int last;
    QByteArray body;
    quint16 format() const;
    quint16 width() const; ///< 1/256 of a digit's width
    bool hidden() const;
};

/// A sheet's records without the indexes of stream offsets, which are optional, but harmful when wrong.
Records withoutIndexes(Records records);

/// The records of one worksheet, parsed into its cells and everything else, which is kept as read.
class Sheet {
public:
    explicit Sheet(const Records& records);

    /// The records for the file; for an unchanged sheet those that were read.
    Records records();

    bool changed = false;
    CellTable cells;
    std::set<int> touchedRows; ///< their heights are fitted to their texts on saving

    /// The format of a cell or, when there is none, the one it would get: the row's, the column's, or
    /// `plain`.
    quint16 formatAt(Place place, quint16 plain) const;
    quint16 implicitFormat(Place place, quint16 plain) const;
    const ColumnInfo* column(int column) const;
    int defaultColumnWidth() const;   ///< 1/256 of a digit's width
    quint16 defaultRowHeight() const; ///< twips

    /// Removes contents and formats: cells are erased, or become `plain` where a row's or column's own format
    /// would show through; `differs` is true for a format that looks different from `plain`. Merged areas
    /// inside the area are unmerged; those across its edge stay, as do notes, links, validations and
    /// drawings.
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
