// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reference/grideditor.h"

namespace ado {
class Recordset;
}
namespace forms {
class Form;
}

/// A grid edited in place whose rows are records of the store. Its last column is hidden and holds the key; a
/// row with an empty key cell is not stored yet. Typing changes the grid only; save writes all its rows. Two
/// of them belong together where the lower one shows what hangs on the row in hand of the upper one.
class CatalogueTable : public GridEditor {
public:
    /// The fields of a record fill the columns from 1 on; the last field is the key.
    CatalogueTable(forms::Form& form, const GridEditorRules& rules, forms::MSHFlexGrid* grid, QLineEdit* box,
                   std::vector<const char*> fields);

    /// The select that finds the stored record of a row or, for a row that is not stored, a record that bars
    /// it. A row whose record is gone, and one that is barred, are passed over.
    std::function<QString(int row)> selectFor;
    /// Assigns the row's texts to the fields of its record.
    std::function<void(int row, ado::Recordset& record)> write;
    /// Shows the rows anew after they were stored.
    std::function<void()> refresh;
    /// Of an upper table: shows in the lower one what hangs on the row that has come into hand.
    std::function<void()> onOtherRow;
    /// What a cell shows of a field's text; the text itself unless it is set.
    std::function<QString(int col, const QString& text)> shownAs;
    /// Of an upper table.
    CatalogueTable* lower = nullptr;
    /// Of a lower table: the key of the upper row whose rows it shows, empty for a row that is not stored;
    /// nothing when they could not be read.
    std::optional<QString> owner;
    /// A box that is out of sight stays there when the grid is emptied.
    bool hasShyBox = false;

    QString cell(int row, int col) const;
    QString key(int row) const { return cell(row, keyColumn()); }
    /// Of the row in hand, as the two below.
    QString key() const;
    void editAgain(); ///< lays the box anew over the current cell
    void editFirst(); ///< goes to the mandatory cell, with the focus

    /// Whether every row has a text in that column. Else shows the message and goes to the first row without.
    bool check(int column, const QString& message, const QString& title);
    /// Appends an empty row and goes there.
    void append();
    /// Shows the records of a select. A failure is shown.
    void read(const QString& sql);
    /// Of a lower table: shows the records of a select as the rows of an owner; no rows, and no statement,
    /// for an owner that is not stored. A failure is shown and leaves no rows of another owner in sight.
    void readOf(const QString& newOwner, const QString& sql);
    /// Stores all rows in one transaction and shows them anew, the row in hand still in hand. False when it
    /// failed, which has been shown; then nothing is stored.
    bool save();
    /// Executes the deletion of the row in hand, the copy of the database before it; nothing for a row that
    /// is not stored. Throws Failure.
    void remove(const QString& deletion);

private:
    int keyColumn() const { return static_cast<int>(fields.size()); }
    bool fill(const QString& sql);
    void showNone();
    QString saveRow(int row);

    forms::Form& form;
    const std::vector<const char*> fields;
};
