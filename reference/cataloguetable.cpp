// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/cataloguetable.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/textlookup.h"
#include "core/store/transaction.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/msgbox.h"
#include "platform/spoken/notice.h"
#include "reference/gridtools.h"

#include <set>
#include <utility>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

/// The stored records of the rows that a save is to write: those found by their keys are read by one select,
/// and so are the duplicates of new rows.
class CatalogueTable::Stored {
public:
    explicit Stored(const CatalogueTable& shown);

    /// Moves to the record of a stored row; null when it is gone.
    ado::Recordset* find(int row);
    /// Whether a new row has a duplicate.
    bool hasDuplicate(int row);
    /// To add new rows to.
    ado::Recordset& added() { return newRecords; }

private:
    void findDuplicates();

    const CatalogueTable& owner;
    ado::Recordset records; ///< found by their keys
    std::map<QString, std::size_t> places;
    ado::Recordset other; ///< the last one that was found in another way
    ado::Recordset newRecords;
    bool hasLooked = false;                  ///< for the duplicates of all new rows
    std::optional<std::set<int>> duplicates; ///< nothing: each row is looked up by itself
};

CatalogueTable::Stored::Stored(const CatalogueTable& shown) : owner(shown) {
    QStringList keys;
    for (int row = 1; row < owner.grid->Rows(); ++row) {
        if (!owner.key(row).isEmpty() && owner.isTouched(row) && owner.selectFor(row).isEmpty())
            keys << owner.key(row);
    }
    const QString all = u"select * from "_s + owner.table;
    newRecords.Open(all, *cnnMain, Lock::BatchOptimistic);
    if (keys.isEmpty())
        return;
    const char* key = owner.fields.back();
    QString condition = u'=' + keys[0];
    if (keys.size() > 1)
        condition = u" in ("_s + keys.join(u',') + u')';
    records.Open(all + u" where " + QLatin1StringView(key) + condition, *cnnMain, Lock::BatchOptimistic);
    for (; !records.Eof(); records.MoveNext())
        places[records[key].Text()] = records.Bookmark();
}

ado::Recordset* CatalogueTable::Stored::find(int row) {
    if (const QString select = owner.selectFor(row); !select.isEmpty()) {
        other.Open(select, *cnnMain, Lock::BatchOptimistic);
        return other.Eof() ? nullptr : &other;
    }
    const auto place = places.find(owner.key(row));
    if (place == places.end())
        return nullptr;
    records.setBookmark(place->second);
    return &records;
}

bool CatalogueTable::Stored::hasDuplicate(int row) {
    if (!std::exchange(hasLooked, true))
        findDuplicates();
    return duplicates ? duplicates->contains(row) : hasRecords(owner.selectFor(row));
}

/// Together unless one new row could be a duplicate of another.
void CatalogueTable::Stored::findDuplicates() {
    constexpr qsizetype mostTogether = 200; // a file takes a union of 500
    QStringList selects, parts;
    for (int row = 1; row < owner.grid->Rows(); ++row) {
        if (!owner.key(row).isEmpty())
            continue;
        selects << owner.selectFor(row);
        parts << u"select %1 as place from ("_s.arg(row) + selects.last() + u") as found";
    }
    if (selects.size() == 1 || selects.removeDuplicates() > 0 || areConfusable(selects))
        return;
    duplicates.emplace();
    for (qsizetype first = 0; first < parts.size(); first += mostTogether) {
        ado::Recordset found(parts.mid(first, mostTogether).join(u" union all "_s), *cnnMain);
        for (; !found.Eof(); found.MoveNext())
            duplicates->insert(found["place"].Value().toInt());
    }
}

CatalogueTable::CatalogueTable(forms::Form& window, const GridEditorRules& rules, forms::MSHFlexGrid* edited,
                               QLineEdit* editor, const char* tableName, std::vector<const char*> columns)
    : GridEditor(rules, edited, editor), form(window), table(QLatin1StringView(tableName)),
      fields(std::move(columns)) {}

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
    asRead.clear();
    grid->setRows(records.RecordCount() + 1);
    for (int row = 1; !records.Eof(); records.MoveNext(), ++row) {
        QStringList texts;
        for (int col = 1; col <= keyColumn(); ++col) {
            texts << shownText(col, records); // also for Null: clears another row's text
            grid->setTextMatrix(row, col, texts.last());
        }
        asRead[key(row)] = texts;
    }
    for (int row = 1; row < grid->Rows() && !currentKey.isEmpty(); ++row) {
        if (key(row) == currentKey)
            grid->setRow(row);
    }
    return true;
}

QString CatalogueTable::shownText(int col, ado::Recordset& record) const {
    const QString text = record[fields[std::size_t(col - 1)]].Text();
    return displayText ? displayText(col, text) : text;
}

void CatalogueTable::read(const QString& sql) {
    guarded([&] {
        if (fill(sql))
            return;
        asRead.clear();
        emptyGrid(grid);
    });
}

void CatalogueTable::showNone() {
    asRead.clear();
    emptyGrid(grid);
    if (!keepsBoxHidden || !box->isHidden()) // it would still show another owner's text
        editCurrent();
}

void CatalogueTable::readOf(const QString& newOwner, const QString& sql) {
    if (shownOwner != newOwner) { // even if the read below fails
        setOwner({});
        showNone();
    }
    const bool read = guarded([&] {
        if (!newOwner.isEmpty() && fill(sql))
            editCurrent();
        else
            showNone();
    });
    if (read)
        setOwner(newOwner);
}

void CatalogueTable::setOwner(const std::optional<QString>& newOwner) {
    shownOwner = newOwner;
    const bool isUnsaved = shownOwner == QString();
    if (unsavedHint && isUnsaved == unsavedHint->isHidden()) {
        unsavedHint->setVisible(isUnsaved);
        if (isUnsaved)
            spoken::announce(*unsavedHint);
    }
}

bool CatalogueTable::save() {
    const Busy busy(form);
    if (!settleChanges())
        return false;
    QString currentKey;
    written = skipped = 0;
    const bool saved = guarded([&] {
        Transaction transaction;
        Stored stored(*this);
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString storedKey = saveRow(row, stored);
            if (row == grid->Row())
                currentKey = storedKey;
        }
        transaction.Commit();
    });
    if (!saved)
        return false;
    if (lower && key().isEmpty() && lower->owner() == QString())
        lower->setOwner(currentKey); // its rows were typed for the new record
    grid->setTextMatrix(grid->Row(), keyColumn(), currentKey);
    refresh();
    if (lower) {
        if (lower->owner() != key())
            refreshLower(); // the current row was skipped
        editCurrent();
    }
    showSaved();
    return true;
}

void CatalogueTable::showSaved() const {
    QString text = written > 0 ? counted(written, noun) + u" saved" : u"Nothing to save"_s;
    if (skipped > 0)
        text += u", %1 already there"_s.arg(skipped);
    showDone(text);
}

/// Whether the user has changed the cell of a stored row since the row was read.
bool CatalogueTable::isTouched(int row, int col) const {
    const auto read = asRead.find(key(row));
    return read == asRead.end() || read->second.value(col - 1) != cell(row, col);
}

bool CatalogueTable::isTouched(int row) const {
    for (int col = 1; col < keyColumn(); ++col) {
        if (isTouched(row, col))
            return true;
    }
    return false;
}

ChangedRow CatalogueTable::changedMeanwhile(int row, ado::Recordset& record) const {
    ChangedRow changed;
    const auto read = asRead.find(key(row));
    if (read == asRead.end())
        return changed;
    for (int col = 1; col < keyColumn(); ++col)
        addIfChanged(changed, {grid->TextMatrix(0, col), read->second[col - 1], shownText(col, record),
                               cell(row, col)});
    changed.name = grid->TextMatrix(0, 1) + u": " + read->second[0];
    return changed;
}

/// Asks about the rows that someone else has changed in the same fields; false when the user goes back.
bool CatalogueTable::settleChanges() {
    settlement.clear();
    const bool isRead = guarded([this] {
        Stored stored(*this);
        for (int row = 1; row < grid->Rows(); ++row) {
            if (key(row).isEmpty() || !isTouched(row))
                continue;
            if (ado::Recordset* record = stored.find(row))
                settlement.note(key(row), changedMeanwhile(row, *record));
        }
    });
    return isRead && settlement.ask();
}

/// Returns the key of the stored row. Skipped rows keep their key, new ones other than the current one are
/// given theirs by the reload.
QString CatalogueTable::saveRow(int row, Stored& stored) {
    if (key(row).isEmpty()) {
        const bool isDuplicate = stored.hasDuplicate(row);
        ++(isDuplicate ? skipped : written);
        return isDuplicate ? QString() : addRow(row, stored);
    }
    ado::Recordset* record = isTouched(row) ? stored.find(row) : nullptr;
    if (record) {
        settlement.require(key(row), changedMeanwhile(row, *record));
        write(row, *record);
        keepUntouched(row, *record);
        record->Update();
        ++written;
    }
    return key(row);
}

QString CatalogueTable::addRow(int row, Stored& stored) {
    const auto add = [&](ado::Recordset& record) {
        record.AddNew();
        write(row, record);
        record.Update();
    };
    if (row != grid->Row()) {
        add(stored.added());
        return {};
    }
    ado::Recordset record(u"select * from "_s + table, *cnnMain, Lock::Optimistic);
    add(record);
    return record[fields.back()].Text();
}

/// Leaves the fields as they are stored that the user has not changed, or has left to someone else.
void CatalogueTable::keepUntouched(int row, ado::Recordset& record) const {
    for (int col = 1; col < keyColumn(); ++col) {
        if (!isTouched(row, col) || settlement.isLeft(key(row), grid->TextMatrix(0, col)))
            record[fields[std::size_t(col - 1)]].Restore();
    }
}

void CatalogueTable::remove(const QString& deletion) {
    if (key().isEmpty())
        return;
    backUpBeforeLoss();
    cnnMain->Execute(deletion);
    showRemoved();
}

void CatalogueTable::showRemoved() const {
    showDone(u"1 "_s + noun + u" deleted");
}
