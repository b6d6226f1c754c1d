// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeWidget>

#include <functional>

class QDrag;

namespace forms {

/// A tree whose nodes can be dragged out and whose texts cannot be edited.
class TreeView : public QTreeWidget {
    Q_OBJECT

public:
    /// What a dragged node carries: its text.
    static constexpr const char* nodeMimeType = "application/x-gaugewell-node";

    explicit TreeView(QWidget* parent = nullptr);

    /// The chosen node, or null.
    QTreeWidgetItem* SelectedItem() const;

    /// Who runs a drag until the node is let go; a test drops the node itself.
    static std::function<void(QDrag&)> dragHook;

Q_SIGNALS:
    void DblClick();
    void KeyDown(int key);
    /// A drag has ended, on a target or elsewhere.
    void OLECompleteDrag();

protected:
    void startDrag(Qt::DropActions actions) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace forms
