// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

class QAbstractItemView;

/// Draws the boxes of a column of ticks with a frame that is seen in a dark window too.
class TickDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// For the space bar: ticks those of the chosen rows that have a box in a column, or takes their ticks away
/// when all of them are ticked. Without a chosen row it is the current one.
void toggleTicks(const QAbstractItemView& list, int column);
