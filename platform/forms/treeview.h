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
    /// MIME type of a dragged node; its data is the node's text.
    static constexpr const char* nodeMimeType = "application/x-gaugewell-node";

    explicit TreeView(QWidget* parent = nullptr);

    /// The chosen node, or null.
    QTreeWidgetItem* SelectedItem() const;

    /// Runs a drag until the node is dropped; a test replaces it.
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
