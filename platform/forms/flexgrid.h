// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/columnwidths.h"
#include "platform/forms/flexgridmodel.h"
#include "platform/forms/screen.h"

#include <QTableView>

namespace forms {

/// A grid of texts with a cursor (Row, Col); it cannot be typed into. Row 0 is the head row, column 0 the
/// fixed column. Rows and columns count from 0, widths and positions are twips. The cell under the cursor is
/// the marked one. The last column fills the grid. However the user moves the cursor, MouseDown and Click
/// follow.
class MSHFlexGrid : public QTableView {
    Q_OBJECT

public:
    explicit MSHFlexGrid(QWidget* parent = nullptr);

    int Rows() const { return cells->rows(); }
    /// New rows are empty; when its row is removed the cursor moves to the last remaining one.
    void setRows(int count);
    int Cols() const { return cells->columns(); }
    /// One fixed column by default.
    void setCols(int count, int fixedColumns = 1);
    int Row() const { return row; }
    void setRow(int value) { moveTo(value, col); }
    int Col() const { return col; }
    void setCol(int value) { moveTo(row, value); }
    /// Moves the cursor; outside the grid it stops at the edge.
    void moveTo(int toRow, int toCol);
    /// The first row in view below the head row.
    int TopRow() const;
    void setTopRow(int value);

    QString TextMatrix(int atRow, int atCol) const { return cells->cell(atRow, atCol).text; }
    void setTextMatrix(int atRow, int atCol, const QString& text);
    void RemoveItem(int atRow);

    /// Of the cell under the cursor.
    QString Text() const { return TextMatrix(row, col); }
    static constexpr int centred = 4;
    void setCellAlignment(int alignment);
    void setCellFontBold(bool bold);
    void setCellBackColor(const QColor& color);
    QColor CellBackColor() const { return cells->cell(row, col).back; }

    int gridWidth() const { return toTwips(width()); }
    int ColWidth(int column) const;
    /// The column keeps its share of the grid's width when the grid is resized; 0 hides it.
    void setColWidth(int column, int twips);
    /// From now on the column is drawn up to twice as wide as its share where its texts need it, unless the
    /// user has dragged it. Call it again after a change of the texts.
    void fitColumn(int column);

    /// The cursor's row gets a tint: for a grid whose commands concern a row.
    void setMarksRow(bool marks) { marksRow = marks; }
    bool isMarked(const QModelIndex& index) const { return marksRow && index.row() == row - 1; }

    /// The rectangle of the cursor's cell in the viewport; empty when it is fixed or hidden.
    QRect cellRect() const;
    /// Scrolls until the cursor's cell is in sight.
    void showCell();
    /// Row of the last MouseDown; 0 on the head row.
    int MouseRow() const { return mouseRow; }

Q_SIGNALS:
    /// A press of the left button on a cell or the head row, or a key that has moved the cursor.
    void MouseDown();
    /// The left button was released, or a key has moved the cursor. The other buttons and the empty area emit
    /// nothing.
    void Click();
    /// On a cell; the empty area below the last row emits nothing.
    void DblClick();
    void Scroll();
    /// A node dragged from a tree was dropped on the grid.
    void DragDrop();

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void applyWidths();
    void rememberWidth(int column, double share);
    void showCursor();

    FlexGridModel* cells;
    int row = 1;
    int col = 1;
    int mouseRow = 0;
    QModelIndex pressed;
    QPersistentModelIndex firstPressed; ///< cell of the last press, the first of a double click
    bool movingCursor = false;
    bool marksRow = false;
    QHash<int, double> shares; ///< of the grid's width, by column
    int fitted = 0;            ///< the column of fitColumn
    ColumnWidths widths{*this};
};

} // namespace forms
