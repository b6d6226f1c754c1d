// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/tickdelegate.h"

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

void toggleTicks(QAbstractItemModel& model, const std::vector<int>& rows, int column) {
    std::vector<QModelIndex> boxes;
    for (const int row : rows) {
        const QModelIndex index = model.index(row, column);
        if (model.flags(index) & Qt::ItemIsUserCheckable)
            boxes.push_back(index);
    }
    const bool areAllTicked = std::all_of(boxes.begin(), boxes.end(), [](const QModelIndex& box) {
        return box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    });
    for (const QModelIndex& box : boxes)
        model.setData(box, areAllTicked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}
