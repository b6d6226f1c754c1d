// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

#include <vector>

/// Draws the boxes of a column of ticks with a frame that is seen in a dark window too.
class TickDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// Ticks those of the rows that have a box in a column, or takes their ticks away when all of them are
/// ticked.
void toggleTicks(QAbstractItemModel& model, const std::vector<int>& rows, int column);
