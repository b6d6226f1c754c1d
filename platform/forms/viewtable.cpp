// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/viewtable.h"

#include "platform/forms/flexgrid.h"

#include <QHeaderView>
#include <QListView>
#include <QTreeView>

#include <algorithm>
#include <functional>

namespace forms {
namespace {

const QHeaderView* headOf(const QAbstractItemView& view) {
    if (const auto* grid = qobject_cast<const QTableView*>(&view))
        return grid->horizontalHeader();
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    return tree ? tree->header() : nullptr;
}

/// The model's columns that are in sight, in the order on the screen.
std::vector<int> columnsOf(const QAbstractItemView& view) {
    const QHeaderView* head = headOf(view);
    if (!head)
        return {0};
    std::vector<int> columns;
    for (int place = 0; place < head->count(); ++place) {
        const int column = head->logicalIndex(place);
        if (!head->isSectionHidden(column))
            columns.push_back(column);
    }
    return columns;
}

QVariant valueOf(const QModelIndex& index) {
    const QString text = index.data().toString();
    const QVariant tick = index.data(Qt::CheckStateRole);
    return text.isEmpty() && tick.isValid() ? QVariant(tick.toInt() == Qt::Checked) : QVariant(text);
}

void eachRow(const QAbstractItemView& view, const std::function<void(const QModelIndex&)>& take,
             const QModelIndex& parent = {}) {
    const QAbstractItemModel& model = *view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        take(model.index(row, 0, parent));
        eachRow(view, take, model.index(row, 0, parent));
    }
}

/// The texts of a node and its parents, the outermost first.
QVariantList pathTo(const QModelIndex& node) {
    QVariantList texts;
    for (QModelIndex index = node; index.isValid(); index = index.parent())
        texts.prepend(valueOf(index));
    return texts;
}

/// Each node without children is a row, each level a column.
tables::Table nodesOf(const QTreeView& tree) {
    tables::Table table;
    qsizetype levels = 1;
    eachRow(tree, [&](const QModelIndex& node) {
        if (tree.model()->hasChildren(node))
            return;
        table.rows.push_back(pathTo(node));
        levels = std::max(levels, table.rows.back().size());
    });
    table.headings = QStringList(levels);
    table.headings[0] = tree.accessibleName();
    for (QVariantList& row : table.rows)
        row.resize(levels);
    return table;
}

bool isTree(const QAbstractItemView& view) {
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    return tree && tree->rootIsDecorated() && tree->isHeaderHidden();
}

/// The texts of a grid's fixed column, if there are any.
void addFixedColumn(const MSHFlexGrid& grid, tables::Table& table) {
    bool any = false;
    if (grid.verticalHeader()->isVisible()) {
        for (int row = 0; row < grid.Rows(); ++row)
            any = any || !grid.TextMatrix(row, 0).trimmed().isEmpty();
    }
    if (!any)
        return;
    table.headings.prepend(grid.TextMatrix(0, 0));
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        table.rows[row].prepend(grid.TextMatrix(static_cast<int>(row) + 1, 0));
}

QVariantList rowOf(const QModelIndex& first, const std::vector<int>& columns) {
    QVariantList row;
    for (const int column : columns)
        row << valueOf(first.siblingAtColumn(column));
    return row;
}

} // namespace

tables::Table tableOf(const QAbstractItemView& view) {
    if (isTree(view))
        return nodesOf(static_cast<const QTreeView&>(view));
    tables::Table table;
    const std::vector<int> columns = columnsOf(view);
    for (const int column : columns)
        table.headings << (headOf(view) ? view.model()->headerData(column, Qt::Horizontal).toString()
                                        : view.accessibleName());
    eachRow(view, [&](const QModelIndex& first) { table.rows.push_back(rowOf(first, columns)); });
    if (const auto* grid = qobject_cast<const MSHFlexGrid*>(&view))
        addFixedColumn(*grid, table);
    return table;
}

tables::Table chosenIn(const QAbstractItemView& view) {
    const QItemSelectionModel* chosen = view.selectionModel();
    if (!chosen || !chosen->hasSelection())
        return tableOf(view);
    tables::Table table;
    const std::vector<int> columns = columnsOf(view);
    eachRow(view, [&](const QModelIndex& first) {
        std::vector<int> marked;
        std::copy_if(columns.begin(), columns.end(), std::back_inserter(marked),
                     [&](int column) { return chosen->isSelected(first.siblingAtColumn(column)); });
        if (!marked.empty())
            table.rows.push_back(rowOf(first, marked));
    });
    return table;
}

} // namespace forms
