// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/celltip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace forms {

void showCutText(QAbstractItemView& view, const QHelpEvent& event) {
    constexpr int margins = 8; // pixels beside the text of a cell
    const QModelIndex index = view.indexAt(event.pos());
    const QRect cell = view.visualRect(index);
    const QString text = index.data().toString();
    if (view.fontMetrics().horizontalAdvance(text) > cell.width() - margins)
        QToolTip::showText(event.globalPos(), Qt::convertFromPlainText(text), view.viewport(), cell);
    else
        QToolTip::hideText();
}

} // namespace forms
