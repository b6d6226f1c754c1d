// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/sqlitestatement.h"

#include "platform/ado/sqlitesession.h"

#include <sqlite3.h>

namespace ado {
namespace {

void bindOne(sqlite3_stmt* statement, int position, const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        sqlite3_bind_null(statement, position);
        break;
    case QMetaType::Int:
    case QMetaType::LongLong:
        sqlite3_bind_int64(statement, position, value.toLongLong());
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        sqlite3_bind_double(statement, position, value.toDouble());
        break;
    default: {
        const QByteArray utf8 = value.toString().toUtf8();
        sqlite3_bind_text(statement, position, utf8.constData(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT);
    }
    }
}

} // namespace

SqliteStatement::SqliteStatement(SqliteSession& owner, QString text, sqlite3_stmt* statement)
    : Compiled(std::move(text)), session(owner), handle(statement) {
    Columns found;
    for (int i = 0; i < sqlite3_column_count(handle); ++i) {
        const QString name = QString::fromUtf8(sqlite3_column_name(handle, i));
        found.push_back({name, quoted(name), columnType(sqlite3_column_decltype(handle, i))});
    }
    columns = std::make_shared<const Columns>(std::move(found));
}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(handle);
}

void SqliteStatement::bind(const QVariantList& values) {
    for (qsizetype i = 0; i < values.size(); ++i)
        bindOne(handle, static_cast<int>(i) + 1, values[i]);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(handle);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        session.fail(code);
    return false;
}

QVariant SqliteStatement::column(int index) const {
    switch (sqlite3_column_type(handle, index)) {
    case SQLITE_INTEGER:
        return qlonglong{sqlite3_column_int64(handle, index)};
    case SQLITE_FLOAT:
        return sqlite3_column_double(handle, index);
    case SQLITE_NULL:
        return {};
    default:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(handle, index)),
                                 sqlite3_column_bytes(handle, index));
    }
}

QVariant SqliteStatement::column(int index, ColumnType type) const {
    if (type != ColumnType::Date || sqlite3_column_type(handle, index) != SQLITE_TEXT)
        return fromStore(type, SqliteStatement::column(index));
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle, index));
    return fromIso(QLatin1StringView(text, sqlite3_column_bytes(handle, index)));
}

bool SqliteStatement::isReading() const {
    return sqlite3_stmt_readonly(handle) != 0;
}

void SqliteStatement::reset() {
    sqlite3_reset(handle);
    sqlite3_clear_bindings(handle);
}

} // namespace ado
