// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "reference/grideditor.h"

#include <map>

namespace ado {
class Recordset;
}
namespace forms {
class Form;
}

/// An editable grid of database records. The last column is hidden and holds the key; it is empty for a row
/// that is not stored yet. Typing changes the grid only; save writes all rows. Two tables can be linked: the
/// lower one shows the records that belong to the current row of the upper one.
class CatalogueTable : public GridEditor {
public:
    /// The records of `table`. `fields` are those of the columns from 1 on; the last one is the key.
    CatalogueTable(forms::Form& form, const GridEditorRules& rules, forms::MSHFlexGrid* grid, QLineEdit* box,
                   const char* table, std::vector<const char*> fields);

    /// For a new row, returns the select for a duplicate record; for a stored row the select for its record,
    /// which may be empty: then it is found by its key. save skips a row whose record is gone and a new row
    /// that has a duplicate.
    std::function<QString(int row)> selectFor;
    /// Assigns the texts of a row to the fields of its record.
    std::function<void(int row, ado::Recordset& record)> write;
    /// Reloads the rows after they were stored.
    std::function<void()> refresh;
    /// Upper table only: reloads the lower table for the current row.
    std::function<void()> refreshLower;
    /// Converts a field's text to the cell's text. Unset: no conversion.
    std::function<QString(int col, const QString& text)> displayText;
    /// The linked lower table; null if there is none.
    CatalogueTable* lower = nullptr;
    /// What a record is called in the status bar.
    QString noun;
    /// Lower table only: says that the upper row must be stored first; visible while it is not.
    QWidget* unsavedHint = nullptr;
    /// A hidden box stays hidden when the grid is emptied.
    bool keepsBoxHidden = false;

    /// Lower table only: the key of the upper row whose records are shown; empty if that row is not stored,
    /// nullopt if they could not be read.
    const std::optional<QString>& owner() const { return shownOwner; }
    QString cell(int row, int col) const;
    QString key(int row) const { return cell(row, keyColumn()); }
    /// The key of the current row.
    QString key() const;
    void editCurrent(); ///< shows the box on the current cell
    void editFirst();   ///< shows the box on column 1 of the current row and focuses it

    /// Returns whether every row has a text in a column. If not, shows the message and edits the first blank
    /// cell.
    bool check(int column, const QString& message, const QString& title);
    /// Appends an empty row and edits it.
    void append();
    /// Shows the records of a select. Errors are shown.
    void read(const QString& sql);
    /// Lower table only: shows the records of a select for the upper row with key newOwner. An empty key
    /// shows no rows and does not run the select. Errors are shown; rows of another owner are removed in any
    /// case.
    void readOf(const QString& newOwner, const QString& sql);
    /// Stores the changed rows, of each the changed fields, in one transaction and reloads the rows; the
    /// current row stays current. Asks about each row in which someone else has changed the same fields since
    /// they were read. On an error, which is shown, or when the user goes back, stores nothing and returns
    /// false.
    bool save();
    /// Backs up the database and executes the deletion of the current row. Does nothing if the row is not
    /// stored. Throws Failure.
    void remove(const QString& deletion);
    /// Says in the status bar that a row was deleted.
    void showRemoved() const;

private:
    int keyColumn() const { return static_cast<int>(fields.size()); }
    bool fill(const QString& sql);
    void showNone();
    void setOwner(const std::optional<QString>& newOwner);
    QString shownText(int col, ado::Recordset& record) const;
    bool isTouched(int row, int col) const;
    bool isTouched(int row) const;
    ChangedRow changedMeanwhile(int row, ado::Recordset& record) const;
    bool settleChanges();
    class Stored;
    void showSaved() const;
    QString saveRow(int row, Stored& stored);
    QString addRow(int row, Stored& stored);
    void keepUntouched(int row, ado::Recordset& record) const;

    forms::Form& form;
    std::optional<QString> shownOwner;
    const QString table;
    const std::vector<const char*> fields;
    std::map<QString, QStringList> asRead; ///< the texts of the stored rows by key, from column 1 on
    Settlement settlement;                 ///< of the save that is going on
    int written = 0;                       ///< rows that it has written
    int skipped = 0;                       ///< new rows that it has not, since they have a duplicate
};
