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

void CatalogueTable::editAgain() {
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
    if (moves && onOtherRow)
        onOtherRow();
    focusBox();
    return false;
}

void CatalogueTable::append() {
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    if (onOtherRow)
        onOtherRow();
    editFirst();
}

/// False when there are no records; the grid is then left as it is. The cursor follows the key of the row in
/// hand, which a reload may move.
bool CatalogueTable::fill(const QString& sql) {
    ado::Recordset records;
    records.Open(sql, *cnnMain);
    if (records.Eof())
        return false;
    const QString inHand = key();
    grid->setRows(records.RecordCount() + 1);
    for (int row = 1; !records.Eof(); records.MoveNext(), ++row) {
        for (int col = 1; const char* field : fields) {
            const QString text = records[field].Text(); // of Null too: what the cell held was another row's
            grid->setTextMatrix(row, col, shownAs ? shownAs(col, text) : text);
            ++col;
        }
    }
    for (int row = 1; row < grid->Rows() && !inHand.isEmpty(); ++row) {
        if (key(row) == inHand)
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
    if (!hasShyBox || !box->isHidden()) // it would go on showing a row of another owner
        editAgain();
}

void CatalogueTable::readOf(const QString& newOwner, const QString& sql) {
    if (owner != newOwner) { // also when they cannot be read
        owner.reset();
        showNone();
    }
    const bool read = guarded([&] {
        if (!newOwner.isEmpty() && fill(sql))
            editAgain();
        else
            showNone();
    });
    if (read)
        owner = newOwner;
}

bool CatalogueTable::save() {
    const Busy busy(form);
    QString inHand;
    const bool saved = guarded([&] {
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString stored = saveRow(row);
            if (row == grid->Row())
                inHand = stored;
        }
        transaction.Commit();
    });
    if (!saved)
        return false;
    if (lower && key().isEmpty() && lower->owner == QString())
        lower->owner = inHand; // its rows were typed for the new one
    grid->setTextMatrix(grid->Row(), keyColumn(), inHand);
    refresh();
    if (lower) {
        if (lower->owner != key())
            onOtherRow(); // the row in hand was not stored
        editAgain();
    }
    return true;
}

/// The key of the stored row; what the key cell holds of a row that is passed over.
QString CatalogueTable::saveRow(int row) {
    const bool isNew = key(row).isEmpty();
    ado::Recordset record;
    record.Open(selectFor(row), *cnnMain, ado::Recordset::Lock::Optimistic);
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
