// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/treeview.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace forms {

std::function<void(QDrag&)> TreeView::dragHook = [](QDrag& drag) { drag.exec(Qt::CopyAction); };

TreeView::TreeView(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setDragEnabled(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
}

QTreeWidgetItem* TreeView::SelectedItem() const {
    const QList<QTreeWidgetItem*> chosen = selectedItems();
    return chosen.isEmpty() ? nullptr : chosen.first();
}

void TreeView::startDrag(Qt::DropActions) {
    const QTreeWidgetItem* node = SelectedItem();
    if (!node)
        return;
    auto* drag = new QDrag(this); // Qt deletes it when it has ended
    auto* carried = new QMimeData;
    carried->setData(QLatin1StringView(nodeMimeType), node->text(0).toUtf8());
    drag->setMimeData(carried);
    dragHook(*drag);
    Q_EMIT OLECompleteDrag();
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidget::mouseDoubleClickEvent(event);
    // On a folder's arrow it expands or collapses, without choosing a node.
    const QPoint at = event->position().toPoint();
    const bool onArrow = indexAt(at).isValid() && !visualRect(indexAt(at)).contains(at);
    if (event->button() == Qt::LeftButton && !onArrow)
        Q_EMIT DblClick();
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key());
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QTreeWidget::keyPressEvent(event);
}

} // namespace forms
