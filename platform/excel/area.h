// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace excel::biff {

constexpr int maxRows = 65536;
constexpr int maxColumns = 256;

/// A cell's place, counted from 0, ordered row by row.
struct Place {
    int row = 0;
    int column = 0;
    auto operator<=>(const Place&) const = default;
    QString name() const { // A1 form
        const QString letter = QString(QChar(u'A' + column % 26));
        const QString before = column < 26 ? QString() : QString(QChar(u'A' + column / 26 - 1));
        return before + letter + QString::number(row + 1);
    }
};

/// A rectangle of cells, both corners included.
struct Area {
    Place first;
    Place last;
    int rows() const { return last.row - first.row + 1; }
    int columns() const { return last.column - first.column + 1; }
    bool contains(Place p) const {
        return p.row >= first.row && p.row <= last.row && p.column >= first.column && p.column <= last.column;
    }
    bool contains(const Area& other) const { return contains(other.first) && contains(other.last); }
};

} // namespace excel::biff
