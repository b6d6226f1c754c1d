// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/listview.h"

#include "platform/forms/celltip.h"
#include "platform/forms/listviewmodel.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace forms {

ListView::ListView(QWidget* parent) : QTreeView(parent), items(new ListViewModel(this)) {
    setModel(items);
    items->setRowHeight(fontMetrics().height() + 4);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // so that no row is measured before it is seen
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(20);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    header()->setSortIndicatorClearable(true);
    setSortingEnabled(true);
    // A column that the user drags wider keeps its new share.
    connect(header(), &QHeaderView::sectionResized, this, [this](int column, int, int size) {
        if (!applyingWidths && header()->underMouse() && viewport()->width() > 0)
            rememberWidth(column, double(size) / viewport()->width());
    });
}

void ListView::setColumns(const std::vector<Column>& columns) {
    QStringList heads;
    shares.clear();
    for (const Column& column : columns) {
        heads << column.head;
        shares.push_back(widths.share(int(shares.size()), column.share));
    }
    applyingWidths = true;
    items->setHeads(heads);
    applyingWidths = false;
    applyWidths();
}

void ListView::rememberWidth(int column, double share) {
    shares[static_cast<std::size_t>(column)] = share;
    widths.remember(column, share);
}

void ListView::setItems(std::vector<QStringList> rows) {
    if (items->shows(rows))
        clearSelection();
    else
        items->setRows(std::move(rows));
}

void ListView::AddItem(const QStringList& row) {
    items->addRow(row);
}

int ListView::ListCount() const {
    return items->rowCount();
}

QString ListView::Text(int row, int column) const {
    return items->text(row, column);
}

std::vector<int> ListView::SelectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(items->rowAt(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool ListView::Selected(int row) const {
    return selectionModel()->isSelected(items->indexOfRow(row));
}

void ListView::setSelected(int row, bool chosen) {
    const auto command = chosen ? QItemSelectionModel::Select : QItemSelectionModel::Deselect;
    selectionModel()->select(items->indexOfRow(row), command | QItemSelectionModel::Rows);
}

int ListView::CurrentRow() const {
    return items->rowAt(currentIndex().row());
}

bool ListView::hasMenu() const {
    return isSignalConnected(QMetaMethod::fromSignal(&ListView::RightClick));
}

void ListView::setCurrentRow(int row) {
    selectionModel()->setCurrentIndex(items->indexOfRow(row), QItemSelectionModel::NoUpdate);
}

void ListView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    const bool onRow = indexAt(event->position().toPoint()).isValid();
    pressedOnRow = event->button() == Qt::LeftButton && onRow;
    chosenAtPress = SelectedRows();
    if (onRow || selectionMode() != SingleSelection)
        QTreeView::mousePressEvent(event);
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    const bool inside = viewport()->rect().contains(event->position().toPoint());
    const bool chooses = SelectedRows() != chosenAtPress && !SelectedRows().empty();
    const bool clicks = event->button() == Qt::LeftButton && std::exchange(pressedOnRow, false) && inside;
    if (clicks || chooses)
        Q_EMIT Click();
    if (event->button() == Qt::RightButton && inside)
        Q_EMIT RightClick(event->globalPosition().toPoint());
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    QTreeView::mouseDoubleClickEvent(event); // the release that ends it is not a click
    if (indexAt(event->position().toPoint()).isValid())
        Q_EMIT DblClick();
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept(); // the right button is reported on release
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QRect row = visualRect(currentIndex()).intersected(viewport()->rect());
    Q_EMIT RightClick(viewport()->mapToGlobal(row.isEmpty() ? QPoint() : QPoint(20, row.bottom())));
}

void ListView::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key());
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return;
    const int before = CurrentRow();
    const std::vector<int> chosen = SelectedRows();
    const bool toNeighbour =
        event->key() == Qt::Key_Down || event->key() == Qt::Key_Up || event->key() == Qt::Key_Home;
    const bool choosing = !(event->modifiers() & Qt::ControlModifier);
    if (toNeighbour && choosing && before >= 0 && !selectionModel()->hasSelection()) {
        setSelected(before, true); // the cursor arrived with the focus; the key must not skip its row
        Q_EMIT Click();
        return;
    }
    QTreeView::keyPressEvent(event);
    if (CurrentRow() != before || (SelectedRows() != chosen && selectionModel()->hasSelection()))
        Q_EMIT Click();
}

void ListView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    applyWidths();
}

bool ListView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    showCutText(*this, *static_cast<QHelpEvent*>(event));
    return true;
}

void ListView::applyWidths() {
    applyingWidths = true;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const int column = static_cast<int>(i);
        setColumnHidden(column, shares[i] == 0);
        if (shares[i] > 0)
            setColumnWidth(column, static_cast<int>(std::floor(shares[i] * viewport()->width())));
    }
    applyingWidths = false;
}

} // namespace forms
