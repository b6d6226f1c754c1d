// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

#include <QAccessibleWidget>
#include <QWidget>

#include <functional>
#include <map>
#include <optional>

namespace spoken {

/// The accessibility interface of a widget that is read as a table. Its children are the headings and then
/// the cells row by row; `headings` is the row of the former.
class TableAccess : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    static constexpr int headings = -1;

    TableAccess(QWidget& shown, std::function<tables::Table()> tableSource);
    ~TableAccess() override;

    /// Takes the table anew at the next question; false when none has been asked.
    bool forget();
    void setCurrent(int row) { current = row; }
    bool isCurrent(int row) const { return row >= 0 && row == current && widget()->hasFocus(); }
    bool has(int row, int column) const;
    QString shown(int row, int column) const;
    QString description() const { return widget()->accessibleDescription(); }
    /// Whether the cells of a column head their rows: the texts before the first column of other values do,
    /// and always the first column.
    bool isHead(int column) const { return column < asked().headColumns; }
    QAccessibleInterface* cell(int row, int column) const;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    QString columnDescription(int column) const override { return shown(headings, column); }
    QString rowDescription(int row) const override;
    int columnCount() const override { return static_cast<int>(asked().table.headings.size()); }
    int rowCount() const override { return static_cast<int>(asked().table.rows.size()); }
    int selectedCellCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    struct Taken {
        tables::Table table;
        int headColumns = 1;
    };
    const Taken& asked() const;

    std::function<tables::Table()> source;
    mutable std::optional<Taken> taken;
    mutable std::map<std::pair<int, int>, QAccessible::Id> cells; ///< by row and column; each once asked for
    int current = -1;
};

} // namespace spoken
