// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/tickdelegate.h"

void TickDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QColor text = option->palette.color(QPalette::Text);
    const QColor ground = option->palette.color(QPalette::Base);
    // The style takes a darker tone of this colour for the frame.
    option->palette.setColor(QPalette::Window,
                             QColor((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                                    (text.blue() + ground.blue()) / 2));
}
