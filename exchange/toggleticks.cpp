// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/toggleticks.h"

#include <QAbstractItemView>

#include <algorithm>

void toggleTicks(const QAbstractItemView& list, int column) {
    QModelIndexList rows = list.selectionModel()->selectedRows(column);
    if (rows.isEmpty())
        rows << list.currentIndex().siblingAtColumn(column);
    QList<QPersistentModelIndex> boxes; // a list that is sorted by its ticks moves the rows
    for (const QModelIndex& index : rows) {
        if (index.flags() & Qt::ItemIsUserCheckable)
            boxes << index;
    }
    const bool areAllTicked = std::all_of(boxes.begin(), boxes.end(), [](const QPersistentModelIndex& box) {
        return box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    });
    for (const QPersistentModelIndex& box : boxes)
        list.model()->setData(box, areAllTicked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}
