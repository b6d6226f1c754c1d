// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/columnwidths.h"

#include <QStringList>
#include <QTreeView>

#include <vector>

namespace forms {

class ListViewModel;

/// A list of items in report view: each item is a row of texts, the item's own text in column 0 and its
/// sub-items in the columns after it. The texts are read-only. Rows and columns count from 0. The user sorts
/// the list by a click on a heading, a third one restores its order; rows keep their numbers. The cost of
/// filling does not depend on the number of rows, unless they are sorted. Several rows can be chosen (as in a
/// list box of extended selection) unless the form sets SingleSelection.
class ListView : public QTreeView {
    Q_OBJECT

public:
    struct Column {
        QString head;
        double share; ///< of the list's width, kept when the list is resized; 0 hides the column
    };

    explicit ListView(QWidget* parent = nullptr);

    /// Sets the column heads; the list is empty afterwards.
    void setColumns(const std::vector<Column>& columns);

    void Clear() { setItems({}); }
    /// Replaces all rows; nothing is chosen afterwards. A row may have fewer texts than there are columns.
    /// Setting the same rows again does not scroll the list back to its beginning.
    void setItems(std::vector<QStringList> rows);
    /// Adds one row at the end. Use setItems for many rows.
    void AddItem(const QStringList& row);
    int ListCount() const;
    /// Empty outside the list.
    QString Text(int row, int column = 0) const;

    /// The chosen rows in ascending order.
    std::vector<int> SelectedRows() const;
    bool Selected(int row) const;
    void setSelected(int row, bool chosen);
    /// The row under the keyboard's cursor, chosen or not; -1 for none.
    int CurrentRow() const;
    /// Whether a right click is answered already.
    bool hasMenu() const;
    /// Moves the cursor and chooses nothing.
    void setCurrentRow(int row);

Q_SIGNALS:
    /// The user clicked a row with the left button, once for a double click, chose another one with the right
    /// button, or moved to another row by keys.
    /// The first arrow key in a list without a chosen row chooses the row under the cursor.
    void Click();
    /// On a row; the head and the empty area below the last row emit nothing.
    void DblClick();
    void KeyDown(int key);
    /// The right button was released anywhere over the list, after the row under it was chosen, or the menu
    /// key was pressed; the position is the screen's.
    void RightClick(const QPoint& globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void applyWidths();
    void rememberWidth(int column, double share);

    ListViewModel* items;
    std::vector<double> shares; ///< by column
    ColumnWidths widths{*this};
    bool applyingWidths = false;
    bool pressedOnRow = false;
    std::vector<int> chosenAtPress;
};

} // namespace forms
