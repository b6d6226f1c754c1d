// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/treeview.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QTest>
#include <gtest/gtest.h>

/// Drags the node at that point of the tree by the mouse and lets it go over the target, or elsewhere without
/// one.
inline void dragNode(forms::TreeView* tree, const QPoint& node, QWidget* target) {
    forms::TreeView::dragSeat = [target](QDrag& carried) {
        if (!target)
            return;
        QDragEnterEvent enter({20, 20}, Qt::CopyAction, carried.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &enter);
        EXPECT_TRUE(target->acceptDrops() && enter.isAccepted());
        QDropEvent drop({20, 20}, Qt::CopyAction, carried.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &drop);
    };
    QWidget* source = tree->viewport();
    QTest::mousePress(source, Qt::LeftButton, {}, node);
    for (const int far : {10, 30}) {
        const QPoint at = node + QPoint(far, far);
        QMouseEvent move(QEvent::MouseMove, at, source->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(source, &move);
    }
    QTest::mouseRelease(source, Qt::LeftButton, {}, node);
}
