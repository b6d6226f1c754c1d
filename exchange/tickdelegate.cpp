// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/tickdelegate.h"

#include <QAbstractItemView>

#include <algorithm>

void TickDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QColor text = option->palette.color(QPalette::Text);
    const QColor ground = option->palette.color(QPalette::Base);
    // The style takes a darker tone of this colour for the frame.
    option->palette.setColor(QPalette::Window,
                             QColor((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                                    (text.blue() + ground.blue()) / 2));
}

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
