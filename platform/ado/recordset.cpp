// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/recordset.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

QString quoted(const QString& name) {
    return u'"' + QString(name).replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

QString Field::Name() const {
    return recordset.columns.at(static_cast<std::size_t>(column)).name;
}

QVariant Field::Value() const {
    return recordset.value(column);
}

Field& Field::operator=(const QVariant& value) {
    recordset.assign(column, value);
    return *this;
}

void Recordset::Open(const QString& sql, Connection& connection, Lock lock) {
    Close();
    const std::shared_ptr<Session>& opened = connection.session();
    opened->requireOpen();
    Statement statement = opened->recorded([&] { return translate(sql); });
    if (lock == Lock::Optimistic) {
        table = opened->recorded([&] { return writableTable(sql); });
        if (table.isEmpty() || !opened->isTable(table))
            opened->fail({number::notWritable, u"Only the records of one table can be changed."_s});
        const qsizetype star = statement.sql.indexOf(u'*');
        statement.sql.replace(star, 1, u"rowid,*"_s);
    }
    source = opened->prepare(statement);
    const int count = sqlite3_column_count(source.get());
    if (!sqlite3_stmt_readonly(source.get()) || count == 0)
        opened->fail({number::notWritable, u"A recordset takes a select only."_s});
    for (int i = table.isEmpty() ? 0 : 1; i < count; ++i) {
        columns.push_back({QString::fromUtf8(sqlite3_column_name(source.get(), i)),
                           columnType(sqlite3_column_decltype(source.get(), i))});
    }
    session = opened;
    exhausted = false;
    changed.assign(columns.size(), false);
    pending.assign(columns.size(), {});
    fetch();
}

void Recordset::Close() {
    source = Prepared();
    session.reset();
    exhausted = true;
    adding = false;
    table.clear();
    columns.clear();
    rows.clear();
    position = 0;
}

void Recordset::requireOpen() const {
    if (!session)
        throw Failure({number::objectClosed, u"Operation is not allowed when the object is closed."_s});
}

/// Takes one more record from the store; false at its end.
bool Recordset::fetch() {
    if (exhausted)
        return false;
    if (!source.step()) {
        exhausted = true;
        source = Prepared(); // lets go of the read lock
        return false;
    }
    const int hidden = table.isEmpty() ? 0 : 1;
    Row row;
    row.reserve(columns.size() + 1);
    if (hidden)
        row.push_back(source.column(0));
    for (std::size_t i = 0; i < columns.size(); ++i)
        row.push_back(fromStore(columns[i].type, source.column(static_cast<int>(i) + hidden)));
    rows.push_back(std::move(row));
    return true;
}

bool Recordset::Eof() {
    requireOpen();
    return position >= rows.size() && !fetch();
}

int Recordset::RecordCount() {
    requireOpen();
    while (fetch()) {
    }
    return static_cast<int>(rows.size());
}

void Recordset::MoveNext() {
    if (Eof())
        throw Failure({number::noCurrentRecord, u"There is no current record."_s});
    ++position;
    adding = false;
    changed.assign(columns.size(), false);
}

void Recordset::MoveFirst() {
    requireOpen();
    position = 0;
    adding = false;
    changed.assign(columns.size(), false);
}

void Recordset::MoveLast() {
    const int count = RecordCount();
    MoveFirst();
    position = count > 0 ? static_cast<std::size_t>(count - 1) : 0;
}

Field Recordset::operator[](const char* name) {
    requireOpen();
    const QLatin1StringView wanted(name);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.compare(wanted, Qt::CaseInsensitive) == 0)
            return {*this, static_cast<int>(i)};
    }
    session->fail({number::itemNotFound, u"There is no column '"_s + wanted + u"'."});
}

Recordset::Row& Recordset::currentRow() {
    if (Eof())
        session->fail({number::noCurrentRecord, u"There is no current record."_s});
    return rows[position];
}

QVariant Recordset::value(int column) {
    const auto index = static_cast<std::size_t>(column);
    if (changed.at(index))
        return fromStore(columns[index].type, pending[index]);
    if (adding)
        return {};
    Row& row = currentRow();
    if (!table.isEmpty() && row.size() == 1)
        readAgain(row);
    return row.at(index + (table.isEmpty() ? 0 : 1));
}

void Recordset::assign(int column, const QVariant& value) {
    if (table.isEmpty())
        session->fail({number::notWritable, u"The recordset is read-only."_s});
    const auto index = static_cast<std::size_t>(column);
    if (!adding)
        currentRow();
    pending.at(index) = session->recorded([&] { return toStore(columns[index].type, value); });
    changed.at(index) = true;
}

void Recordset::AddNew() {
    requireOpen();
    if (table.isEmpty())
        session->fail({number::notWritable, u"The recordset is read-only."_s});
    adding = true;
    changed.assign(columns.size(), false);
}

void Recordset::Update() {
    requireOpen();
    if (adding)
        insertRow();
    else
        updateRow();
    adding = false;
    changed.assign(columns.size(), false);
}

void Recordset::insertRow() {
    QStringList names;
    QVariantList values;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (changed[i]) {
            names << quoted(columns[i].name);
            values << pending[i];
        }
    }
    QString sql = u"insert into "_s + quoted(table);
    if (names.isEmpty())
        sql += u" default values";
    else
        sql += u" ("_s + names.join(u", "_s) + u") values (?" + u", ?"_s.repeated(names.size() - 1) + u')';
    session->prepare({sql, values}).step();
    const qlonglong id = sqlite3_last_insert_rowid(session->handle());
    // The new record may or may not be among those that the select would still give, so fetching ends here.
    exhausted = true;
    source = Prepared();
    position = rows.size();
    rows.push_back({id});
}

void Recordset::updateRow() {
    const qlonglong id = currentRow().front().toLongLong();
    QStringList settings;
    QVariantList values;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (changed[i]) {
            settings << quoted(columns[i].name) + u" = ?";
            values << pending[i];
        }
    }
    if (settings.isEmpty())
        return;
    values << id;
    session
        ->prepare(
            {u"update "_s + quoted(table) + u" set " + settings.join(u", "_s) + u" where rowid = ?", values})
        .step();
    if (sqlite3_changes(session->handle()) == 0)
        session->fail({number::noCurrentRecord, u"The record has been deleted meanwhile."_s});
    rows[position] = {id};
}

/// Reads a record of which only the rowid is known, since it has been written: with what the store made of
/// it.
void Recordset::readAgain(Row& row) {
    const QVariant id = row.front();
    Prepared reader =
        session->prepare({u"select rowid, * from "_s + quoted(table) + u" where rowid = ?", {id}});
    if (!reader.step())
        session->fail({number::noCurrentRecord, u"The record has been deleted meanwhile."_s});
    for (std::size_t i = 0; i < columns.size(); ++i)
        row.push_back(fromStore(columns[i].type, reader.column(static_cast<int>(i) + 1)));
}

} // namespace ado
