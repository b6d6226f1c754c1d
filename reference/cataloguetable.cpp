// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/cataloguetable.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/store/transaction.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"

CatalogueTable::CatalogueTable(forms::Form& window, const GridEditorRules& rules, forms::MSHFlexGrid* edited,
                               QLineEdit* editor, std::vector<const char*> columns)
    : GridEditor(rules, edited, editor), form(window), fields(std::move(columns)) {}

QString CatalogueTable::cell(int row, int col) const {
    return grid->TextMatrix(row, col);
}

QString CatalogueTable::key() const {
    return key(grid->Row());
}

void CatalogueTable::editCurrent() {
    setEdit(grid->Col(), grid->Row());
}

void CatalogueTable::editFirst() {
    setEdit(1, grid->Row());
    focusBox();
}

bool CatalogueTable::check(int column, const QString& message, const QString& title) {
    const int blank = findBlank(grid, column);
    if (blank == 0)
        return true;
    forms::msgBox(message, forms::style::critical, title);
    const bool moves = blank != grid->Row();
    setEdit(column, blank);
    if (moves && refreshLower)
        refreshLower();
    focusBox();
    return false;
}

void CatalogueTable::append() {
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    if (refreshLower)
        refreshLower();
    editFirst();
}

/// Returns false and leaves the grid unchanged if there are no records. The cursor follows the current row's
/// key, since a reload may change its position.
bool CatalogueTable::fill(const QString& sql) {
    ado::Recordset records(sql, *cnnMain);
    if (records.Eof())
        return false;
    const QString currentKey = key();
    grid->setRows(records.RecordCount() + 1);
    for (int row = 1; !records.Eof(); records.MoveNext(), ++row) {
        for (int col = 1; const char* field : fields) {
            const QString text = records[field].Text(); // also for Null: clears another row's text
            grid->setTextMatrix(row, col, displayText ? displayText(col, text) : text);
            ++col;
        }
    }
    for (int row = 1; row < grid->Rows() && !currentKey.isEmpty(); ++row) {
        if (key(row) == currentKey)
            grid->setRow(row);
    }
    return true;
}

void CatalogueTable::read(const QString& sql) {
    guarded([&] {
        if (!fill(sql))
            emptyGrid(grid);
    });
}

void CatalogueTable::showNone() {
    emptyGrid(grid);
    if (!keepsBoxHidden || !box->isHidden()) // it would still show another owner's text
        editCurrent();
}

void CatalogueTable::readOf(const QString& newOwner, const QString& sql) {
    if (owner != newOwner) { // even if the read below fails
        owner.reset();
        showNone();
    }
    const bool read = guarded([&] {
        if (!newOwner.isEmpty() && fill(sql))
            editCurrent();
        else
            showNone();
    });
    if (read)
        owner = newOwner;
}

bool CatalogueTable::save() {
    const Busy busy(form);
    QString currentKey;
    const bool saved = guarded([&] {
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString stored = saveRow(row);
            if (row == grid->Row())
                currentKey = stored;
        }
        transaction.Commit();
    });
    if (!saved)
        return false;
    if (lower && key().isEmpty() && lower->owner == QString())
        lower->owner = currentKey; // its rows were typed for the new record
    grid->setTextMatrix(grid->Row(), keyColumn(), currentKey);
    refresh();
    if (lower) {
        if (lower->owner != key())
            refreshLower(); // the current row was skipped
        editCurrent();
    }
    return true;
}

/// Returns the key of the stored row. Skipped rows keep their key.
QString CatalogueTable::saveRow(int row) {
    const bool isNew = key(row).isEmpty();
    ado::Recordset record(selectFor(row), *cnnMain, ado::Recordset::Lock::Optimistic);
    if (record.Eof() != isNew)
        return key(row);
    if (isNew)
        record.AddNew();
    write(row, record);
    record.Update();
    return record[fields.back()].Text();
}

void CatalogueTable::remove(const QString& deletion) {
    if (key().isEmpty())
        return;
    backUpBeforeLoss();
    cnnMain->Execute(deletion);
}
