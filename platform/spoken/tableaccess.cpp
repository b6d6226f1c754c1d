// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/spoken/tableaccess.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace spoken {
namespace {

int headColumnsOf(const tables::Table& table) {
    const auto isText = [&](qsizetype column) {
        return std::all_of(table.rows.begin(), table.rows.end(), [column](const QVariantList& row) {
            return tables::kindOf(row.value(column)) == tables::Kind::Text;
        });
    };
    qsizetype column = 0;
    while (column < table.headings.size() && isText(column))
        ++column;
    return column == table.headings.size() ? 1 : qMax(1, static_cast<int>(column));
}

/// One cell. It may outlive its row, and is not valid then.
class CellAccess : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    CellAccess(const TableAccess& table, int rowNumber, int columnNumber)
        : owner(const_cast<TableAccess*>(&table)), row(rowNumber), column(columnNumber) {}

    bool isValid() const override { return owner->has(row, column); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return owner->window(); }
    QAccessibleInterface* parent() const override { return owner; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QRect rect() const override { return owner->rect(); }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name || kind == QAccessible::Value)
            return owner->shown(row, column);
        return kind == QAccessible::Description && owner->isCurrent(row) ? owner->description() : QString();
    }
    QAccessible::Role role() const override {
        if (row == TableAccess::headings)
            return QAccessible::ColumnHeader;
        return owner->isHead(column) ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State state = owner->state();
        state.readOnly = true;
        state.focused = owner->focusChild() == this;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : nullptr;
    }

    int rowIndex() const override { return row; }
    int columnIndex() const override { return column; }
    int rowExtent() const override { return 1; }
    int columnExtent() const override { return 1; }
    bool isSelected() const override { return false; }
    QAccessibleInterface* table() const override { return owner; }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return {owner->cell(TableAccess::headings, column)};
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override {
        QList<QAccessibleInterface*> heads;
        for (int head = 0; row >= 0 && head < column && owner->isHead(head); ++head)
            heads << owner->cell(row, head);
        return heads;
    }

private:
    TableAccess* owner;
    int row;
    int column;
};

} // namespace

TableAccess::TableAccess(QWidget& shown, std::function<tables::Table()> tableSource)
    : QAccessibleWidget(&shown, QAccessible::Table), source(std::move(tableSource)) {}

TableAccess::~TableAccess() {
    for (const auto& [place, id] : cells)
        QAccessible::deleteAccessibleInterface(id);
}

bool TableAccess::forget() {
    const bool wasAsked = taken.has_value();
    taken.reset();
    return wasAsked;
}

const TableAccess::Taken& TableAccess::asked() const {
    if (!taken) {
        tables::Table table = source();
        const int headColumns = headColumnsOf(table);
        taken = Taken{std::move(table), headColumns};
    }
    return *taken;
}

bool TableAccess::has(int row, int column) const {
    return row >= headings && row < rowCount() && column >= 0 && column < columnCount();
}

QString TableAccess::shown(int row, int column) const {
    if (!has(row, column))
        return {};
    if (row == headings)
        return asked().table.headings[column];
    constexpr int digits = 7;
    const QVariant value = asked().table.rows[static_cast<std::size_t>(row)].value(column);
    return tables::kindOf(value) == tables::Kind::Number ? QString::number(value.toDouble(), 'g', digits)
                                                         : tables::shownText(value);
}

QAccessibleInterface* TableAccess::cell(int row, int column) const {
    if (!has(row, column))
        return nullptr;
    const auto [place, isNew] = cells.try_emplace({row, column});
    if (isNew)
        place->second = QAccessible::registerAccessibleInterface(new CellAccess(*this, row, column));
    return QAccessible::accessibleInterface(place->second);
}

void* TableAccess::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int TableAccess::childCount() const {
    return (rowCount() + 1) * columnCount();
}

QAccessibleInterface* TableAccess::child(int index) const {
    return index >= 0 && index < childCount() ? cell(index / columnCount() - 1, index % columnCount())
                                              : nullptr;
}

int TableAccess::indexOfChild(const QAccessibleInterface* child) const {
    if (!child || child->parent() != this || !child->isValid())
        return -1;
    auto* place = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
    return (place->rowIndex() + 1) * columnCount() + place->columnIndex();
}

QAccessibleInterface* TableAccess::focusChild() const {
    return isCurrent(current) ? cell(current, qMin(asked().headColumns, columnCount() - 1)) : nullptr;
}

QAccessibleInterface* TableAccess::cellAt(int row, int column) const {
    return row >= 0 ? cell(row, column) : nullptr;
}

QString TableAccess::rowDescription(int row) const {
    QStringList heads;
    for (int column = 0; column < columnCount() && isHead(column); ++column)
        heads << shown(row, column);
    return heads.join(u", "_s);
}

} // namespace spoken
