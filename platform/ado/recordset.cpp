// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/recordset.h"

using namespace Qt::StringLiterals;

namespace ado {
namespace {

/// The columns of a writable record: the key, then those of the table.
QString keyed(const QString& key, const QString& table) {
    return quoted(key) + u',' + quoted(table) + u".*";
}

} // namespace

QString Field::Name() const {
    return recordset.columns->at(static_cast<std::size_t>(column)).name;
}

QVariant Field::Value() const {
    return recordset.value(column);
}

void Field::Restore() {
    recordset.changed.at(static_cast<std::size_t>(column)) = false;
}

Field& Field::operator=(const QVariant& value) {
    recordset.assign(column, value);
    return *this;
}

void Recordset::Open(const QString& sql, Connection& connection, Lock lock) {
    Close();
    const std::shared_ptr<Session>& opened = connection.session();
    opened->requireOpen();
    Statement statement = opened->recorded([&] { return translate(sql, opened->target()); });
    isBatched = lock == Lock::BatchOptimistic;
    const bool isWritable = lock != Lock::ReadOnly;
    if (isWritable) {
        const QString key = statement.table.isEmpty() ? QString() : opened->keyOf(statement.table);
        if (key.isEmpty())
            opened->fail({number::notWritable, u"Only the records of one table can be changed."_s});
        const qsizetype star = statement.sql.indexOf(u'*');
        statement.sql.replace(star, 1, keyed(key, statement.table));
    }
    source = opened->prepare(statement);
    if (!source->isReading() || source->columns->empty())
        opened->fail({number::notWritable, u"A recordset takes a select only."_s});
    columns = source->columns;
    if (isWritable)
        table = statement.table;
    session = opened;
    exhausted = false;
    changed.assign(columns->size(), false);
    pending.assign(columns->size(), {});
    // A whole table is opened to add to it, which is to cost the same on a large one, on any engine.
    if (!isWritable || !statement.isWholeTable)
        fetch();
}

void Recordset::Close() {
    source = Prepared();
    session.reset();
    exhausted = true;
    adding = false;
    table.clear();
    columns.reset();
    cells.clear();
    written.clear();
    writes.clear();
    position = 0;
}

void Recordset::requireOpen() const {
    if (!session)
        throw Failure(number::objectClosed, u"Operation is not allowed when the object is closed."_s);
}

/// Fetches one more record from the store; false at its end.
bool Recordset::fetch() {
    if (exhausted)
        return false;
    if (!source.step()) {
        exhausted = true;
        source = Prepared(); // releases the read lock
        return false;
    }
    source->takeRow(cells);
    return true;
}

bool Recordset::Eof() {
    requireOpen();
    return position >= rowCount() && !fetch();
}

int Recordset::RecordCount() {
    requireOpen();
    while (fetch()) {
    }
    return static_cast<int>(rowCount());
}

void Recordset::MoveNext() {
    if (Eof())
        throw Failure(number::noCurrentRecord, u"There is no current record."_s);
    ++position;
    adding = false;
    changed.assign(columns->size(), false);
}

void Recordset::MoveFirst() {
    setBookmark(0);
}

void Recordset::setBookmark(std::size_t bookmark) {
    requireOpen();
    position = bookmark;
    adding = false;
    changed.assign(columns->size(), false);
}

void Recordset::MoveLast() {
    const int count = RecordCount();
    MoveFirst();
    position = count > 0 ? static_cast<std::size_t>(count - 1) : 0;
}

Field Recordset::operator[](const char* name) {
    requireOpen();
    const QLatin1StringView wanted(name);
    for (auto i = static_cast<std::size_t>(hidden()); i < columns->size(); ++i) {
        const QString& column = (*columns)[i].name;
        if (column.size() == wanted.size() && column.compare(wanted, Qt::CaseInsensitive) == 0)
            return {*this, static_cast<int>(i)};
    }
    session->fail({number::itemNotFound, u"There is no column '"_s + wanted + u"'."});
}

QVariant* Recordset::currentRow() {
    if (Eof())
        session->fail({number::noCurrentRecord, u"There is no current record."_s});
    return &cells[position * columns->size()];
}

QVariant Recordset::value(int column) {
    const auto index = static_cast<std::size_t>(column);
    if (changed.at(index))
        return fromStore((*columns)[index].type, pending[index]);
    if (adding)
        return {};
    QVariant* row = currentRow();
    if (written.contains(position))
        readAgain(row);
    return row[index];
}

void Recordset::assign(int column, const QVariant& value) {
    if (table.isEmpty())
        session->fail({number::notWritable, u"The recordset is read-only."_s});
    const auto index = static_cast<std::size_t>(column);
    if (!adding)
        currentRow();
    pending.at(index) = session->recorded([&] { return toStore((*columns)[index].type, value); });
    changed.at(index) = true;
}

void Recordset::AddNew() {
    requireOpen();
    if (table.isEmpty())
        session->fail({number::notWritable, u"The recordset is read-only."_s});
    adding = true;
    changed.assign(columns->size(), false);
}

void Recordset::Update() {
    requireOpen();
    if (adding)
        insertRow();
    else
        updateRow();
    adding = false;
    changed.assign(columns->size(), false);
}

/// Adds or changes a record with the changed fields; kept, since many records are written alike.
const QString& Recordset::statementToWrite() {
    if (changed == writes && adding == writesNew)
        return writing;
    QStringList names;
    for (std::size_t i = 0; i < columns->size(); ++i) {
        if (changed[i])
            names << (*columns)[i].quoted;
    }
    writes = changed;
    writesNew = adding;
    const QString key = quoted(session->keyOf(table));
    if (!adding)
        writing = u"update "_s + quoted(table) + u" set " + names.join(u" = ?, "_s) + u" = ? where " + key +
                  u" = ?";
    else if (names.isEmpty()) // a record of defaults
        writing = u"insert into "_s + quoted(table) + u" (" + key + u") values (null)";
    else
        writing = u"insert into "_s + quoted(table) + u" (" + names.join(u", "_s) + u") values (?" +
                  u", ?"_s.repeated(names.size() - 1) + u')';
    return writing;
}

QVariantList Recordset::changedValues() const {
    QVariantList values;
    values.reserve(qsizetype(changed.size()) + 1);
    for (std::size_t i = 0; i < changed.size(); ++i) {
        if (changed[i])
            values << pending[i];
    }
    return values;
}

void Recordset::insertRow() {
    const RecordWrite record{statementToWrite(), changedValues()};
    isBatched ? session->write(record) : session->writeNow(record);
    // The new record may or may not be among those that the select would still return, so fetching ends here.
    exhausted = true;
    source = Prepared();
    position = rowCount();
    if (!isBatched)
        keepNew();
}

void Recordset::keepNew() {
    const qlonglong id = session->lastKey();
    cells.resize(cells.size() + columns->size());
    *currentRow() = id;
    written.insert(position);
}

void Recordset::updateRow() {
    const qlonglong id = currentRow()->toLongLong();
    QVariantList values = changedValues();
    if (values.isEmpty())
        return;
    values << id;
    const RecordWrite record{statementToWrite(), values, true};
    isBatched ? session->write(record) : session->writeNow(record);
    isBatched ? keepChanged() : static_cast<void>(written.insert(position));
}

/// Of a record that may wait the assigned values are known, without asking the store.
void Recordset::keepChanged() {
    QVariant* row = currentRow();
    for (std::size_t i = 0; i < columns->size(); ++i) {
        if (changed[i])
            row[i] = fromStore((*columns)[i].type, pending[i]);
    }
}

/// Reads a written record, of which only the key is known, with the values that the store gave it.
void Recordset::readAgain(QVariant* row) {
    const QVariant id = *row;
    const QString key = session->keyOf(table);
    Prepared reader = session->prepare(
        {u"select "_s + keyed(key, table) + u" from " + quoted(table) + u" where " + quoted(key) + u" = ?",
         {id}});
    if (!reader.step())
        session->fail({number::noCurrentRecord, u"The record has been deleted meanwhile."_s});
    for (std::size_t i = 1; i < columns->size(); ++i)
        row[i] = reader.column(static_cast<int>(i), (*columns)[i].type);
    written.erase(position);
}

} // namespace ado
