// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/session.h"
#include "platform/ado/value.h"

#include <QVariant>

#include <memory>
#include <set>
#include <vector>

namespace ado {

class Recordset;

/// One column of the current record.
class Field {
public:
    Field(Recordset& owner, int index) : recordset(owner), column(index) {}
    QString Name() const;
    /// QString, qlonglong, float, double, QDate or bool by the column's declared type; invalid for Null.
    QVariant Value() const;
    bool IsNull() const { return !Value().isValid(); }
    /// The value as the program shows it; the empty text for Null.
    QString Text() const { return toText(Value()); }
    /// Takes the value for the next Update, converted to the column's declared type. Throws Failure
    /// Failure::typeMismatch or Failure::overflow for what does not fit.
    Field& operator=(const QVariant& value);
    Field& operator=(const QString& text) { return *this = QVariant(text); }
    /// Takes back what has been assigned, so that the next Update does not write the field.
    void Restore();

private:
    Recordset& recordset;
    int column;
};

/// The records of one select, fetched on demand: opening fetches one at most, and none of a whole table that
/// can be written; RecordCount and MoveLast fetch all. Closing and destroying release everything. Every
/// operation that fails throws Failure and, when the store failed, records it in the connection's errors.
class Recordset {
public:
    /// BatchOptimistic: what Update writes within a transaction may wait for what follows, at the latest
    /// until another statement or the commit, since a server takes many records as fast as one. A record
    /// added so is not the current one afterwards.
    enum class Lock { ReadOnly, Optimistic, BatchOptimistic };

    Recordset() = default;
    /// Opens it at once.
    Recordset(const QString& sql, Connection& connection, Lock lock = Lock::ReadOnly) {
        Open(sql, connection, lock);
    }
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Opens one select. Both optimistic locks: the records of "select * from TABLE ..." that can be changed
    /// and added to; any other text is refused. ReadOnly refuses a statement that writes.
    void Open(const QString& sql, Connection& connection, Lock lock = Lock::ReadOnly);
    void Close();
    bool IsOpen() const { return session != nullptr; }

    bool Eof();
    int RecordCount();
    void MoveNext();
    void MoveFirst();
    void MoveLast();
    /// The place of the current record, to which setBookmark returns.
    std::size_t Bookmark() const { return position; }
    void setBookmark(std::size_t bookmark);

    /// The column of that name, case-insensitive.
    Field operator[](const char* name);
    int FieldCount() const { return columns ? static_cast<int>(columns->size()) - hidden() : 0; }
    Field FieldAt(int index) { return {*this, index + hidden()}; }

    /// Begins a new record; its fields return the assigned values, and after Update the table's defaults as
    /// well.
    void AddNew();
    /// Writes the changed fields of the current record, or the new one, which becomes the current.
    void Update();

private:
    friend class Field;

    /// Columns before those of the select: the key of a writable record.
    int hidden() const { return table.isEmpty() ? 0 : 1; }
    void requireOpen() const;
    bool fetch();
    std::size_t rowCount() const { return cells.size() / columns->size(); }
    QVariant* currentRow();
    const QString& statementToWrite();
    QVariantList changedValues() const;
    void insertRow();
    void updateRow();
    void keepNew();
    void keepChanged();
    void readAgain(QVariant* row);
    void assign(int column, const QVariant& value);
    QVariant value(int column);

    std::shared_ptr<Session> session;
    Prepared source;
    bool exhausted = true;
    bool isBatched = false;
    QString table; ///< empty when read only
    std::shared_ptr<const Columns> columns;
    std::vector<QVariant> cells;   ///< row by row
    std::set<std::size_t> written; ///< rows of which only the key is valid until they are read again
    std::size_t position = 0;
    bool adding = false;
    std::vector<QVariant> pending; ///< values to be written, in the store's form
    std::vector<bool> changed;     ///< whether each of them has changed
    QString writing;               ///< the statement for the record written last, ...
    std::vector<bool> writes;      ///< ... which is the same for all with the same changed fields
    bool writesNew = false;
};

} // namespace ado
