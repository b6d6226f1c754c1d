// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/flexgrid.h"

#include "platform/forms/celltip.h"
#include "platform/forms/treeview.h"

#include <QDragEnterEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <cmath>
#include <utility>

namespace forms {
namespace {

class RowTint : public QStyledItemDelegate {
public:
    explicit RowTint(MSHFlexGrid* owner) : QStyledItemDelegate(owner), grid(owner) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        constexpr int strength = 40; // of 255
        QStyledItemDelegate::initStyleOption(option, index);
        if (!grid->isMarked(index) || option->backgroundBrush.style() != Qt::NoBrush)
            return;
        QColor tint = grid->palette().color(QPalette::Highlight);
        tint.setAlpha(strength);
        option->backgroundBrush = tint;
    }

private:
    MSHFlexGrid* grid;
};

} // namespace

MSHFlexGrid::MSHFlexGrid(QWidget* parent) : QTableView(parent), cells(new FlexGridModel(this)) {
    setModel(cells);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setStretchLastSection(true);
    setItemDelegate(new RowTint(this));
    verticalHeader()->setMinimumWidth(1);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionPressed, this, [this] {
        mouseRow = 0;
        Q_EMIT MouseDown();
    });
    // A column that the user drags wider keeps its new share.
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int size) {
        if (!movingCursor && horizontalHeader()->underMouse() && width() > 0)
            rememberWidth(section + cells->fixedColumns(), double(size) / width());
    });
}

void MSHFlexGrid::setRows(int count) {
    cells->setRows(count);
    moveTo(row, col);
}

void MSHFlexGrid::setCols(int count, int fixedColumns) {
    cells->setColumns(count, fixedColumns);
    verticalHeader()->setVisible(fixedColumns > 0);
    moveTo(row, col);
}

void MSHFlexGrid::moveTo(int toRow, int toCol) {
    row = qBound(0, toRow, Rows() - 1);
    col = qBound(0, toCol, Cols() - 1);
    showCursor();
}

/// Makes the cursor's cell the view's current one.
void MSHFlexGrid::showCursor() {
    movingCursor = true;
    const QModelIndex index = cells->indexOf(row, col);
    if (index.isValid())
        setCurrentIndex(index);
    movingCursor = false;
}

int MSHFlexGrid::TopRow() const {
    return rowAt(0) + 1;
}

void MSHFlexGrid::setTopRow(int value) {
    updateGeometries(); // rows added just now are not yet in the range of the scroll bar
    const QModelIndex top = cells->index(qBound(1, value, Rows() - 1) - 1, 0);
    if (top.isValid())
        scrollTo(top, PositionAtTop);
}

void MSHFlexGrid::setTextMatrix(int atRow, int atCol, const QString& text) {
    if (TextMatrix(atRow, atCol) != text)
        cells->change(atRow, atCol, [&](FlexGridModel::Cell& cell) { cell.text = text; });
}

void MSHFlexGrid::RemoveItem(int atRow) {
    const int before = row;
    cells->removeRow(atRow);
    moveTo(before, col);
}

void MSHFlexGrid::setCellAlignment(int alignment) {
    cells->change(row, col, [&](FlexGridModel::Cell& cell) { cell.centred = alignment == centred; });
}

void MSHFlexGrid::setCellFontBold(bool bold) {
    cells->change(row, col, [&](FlexGridModel::Cell& cell) { cell.bold = bold; });
}

void MSHFlexGrid::setCellBackColor(const QColor& color) {
    cells->change(row, col, [&](FlexGridModel::Cell& cell) { cell.back = color; });
}

int MSHFlexGrid::ColWidth(int column) const {
    return static_cast<int>(std::lround(shares.value(column) * gridWidth()));
}

void MSHFlexGrid::setColWidth(int column, int twips) {
    shares[column] = widths.share(column, gridWidth() > 0 ? double(twips) / gridWidth() : 0);
    applyWidths();
}

void MSHFlexGrid::fitColumn(int column) {
    fitted = column;
    applyWidths();
}

void MSHFlexGrid::rememberWidth(int column, double share) {
    shares[column] = share;
    widths.remember(column, share);
}

void MSHFlexGrid::applyWidths() {
    movingCursor = true;
    for (auto it = shares.cbegin(); it != shares.cend(); ++it) {
        int pixels = static_cast<int>(std::lround(it.value() * width()));
        if (it.key() < cells->fixedColumns()) {
            verticalHeader()->setFixedWidth(qMax(1, pixels));
        } else {
            if (it.key() == fitted && !widths.isRemembered(fitted))
                pixels = qBound(pixels, sizeHintForColumn(fitted - cells->fixedColumns()), 2 * pixels);
            setColumnHidden(it.key() - cells->fixedColumns(), pixels == 0);
            setColumnWidth(it.key() - cells->fixedColumns(), pixels);
        }
    }
    movingCursor = false;
}

QRect MSHFlexGrid::cellRect() const {
    return visualRect(cells->indexOf(row, col));
}

void MSHFlexGrid::showCell() {
    updateGeometries(); // rows added just now are not yet in the range of the scroll bar
    const QModelIndex index = cells->indexOf(row, col);
    if (index.isValid())
        scrollTo(index);
}

void MSHFlexGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (marksRow)
        viewport()->update();
    if (movingCursor || !current.isValid())
        return;
    row = current.row() + 1;
    col = current.column() + cells->fixedColumns();
}

void MSHFlexGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    pressed = indexAt(event->position().toPoint());
    firstPressed = pressed;
    if (!pressed.isValid())
        return;
    QTableView::mousePressEvent(event);
    mouseRow = pressed.row() + 1;
    Q_EMIT MouseDown();
}

/// A press that moves to another cell still belongs to the cell where it began: the cursor stays there.
void MSHFlexGrid::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void MSHFlexGrid::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    QTableView::mouseReleaseEvent(event);
    const bool clicked = pressed.isValid(); // wherever it is released: the press has moved the cursor
    pressed = {};
    if (clicked)
        Q_EMIT Click();
}

void MSHFlexGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool onOneCell = index.isValid() && index == firstPressed;
    QTableView::mouseDoubleClickEvent(event); // on another cell this is a press
    if (onOneCell)
        Q_EMIT DblClick();
}

void MSHFlexGrid::keyPressEvent(QKeyEvent* event) {
    const std::pair before(row, col);
    QTableView::keyPressEvent(event);
    if (before == std::pair(row, col))
        return;
    mouseRow = row;
    Q_EMIT MouseDown();
    Q_EMIT Click();
}

/// The pressed cell becomes the marked one whatever keys are held.
QItemSelectionModel::SelectionFlags MSHFlexGrid::selectionCommand(const QModelIndex& index,
                                                                  const QEvent*) const {
    const bool marks = index.isValid() && selectionMode() != NoSelection;
    return marks ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void MSHFlexGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    Q_EMIT Scroll();
}

void MSHFlexGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    applyWidths();
}

bool MSHFlexGrid::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        showCutText(*this, *static_cast<QHelpEvent*>(event));
        return true;
    }
    return QTableView::viewportEvent(event);
}

void MSHFlexGrid::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasFormat(QLatin1StringView(TreeView::nodeMimeType)))
        event->acceptProposedAction();
}

void MSHFlexGrid::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasFormat(QLatin1StringView(TreeView::nodeMimeType)))
        event->acceptProposedAction();
}

void MSHFlexGrid::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    Q_EMIT DragDrop();
}

} // namespace forms
