// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/mariastatement.h"

#include "platform/ado/mariasession.h"
#include "platform/ado/valuearray.h"

#include <algorithm>
#include <numeric>

namespace ado {
namespace {

constexpr unsigned long usualText = 1020; // bytes; 255 characters

/// Of statements that can return rows and still write.
constexpr QStringView writingWords[] = {u"insert", u"replace", u"delete"};

using Result = std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)>;

Result resultOf(MYSQL_STMT* statement) {
    return {mysql_stmt_result_metadata(statement), mysql_free_result};
}

/// The declared type of a table's column; an expression has none.
ColumnType typeOf(const MYSQL_FIELD& field) {
    if (field.org_table_length == 0)
        return ColumnType::Undeclared;
    switch (field.type) {
    case MYSQL_TYPE_TINY:
        return ColumnType::YesNo;
    case MYSQL_TYPE_SHORT:
        return ColumnType::SmallInt;
    case MYSQL_TYPE_LONG:
    case MYSQL_TYPE_LONGLONG:
        return ColumnType::Integer;
    case MYSQL_TYPE_FLOAT:
        return ColumnType::Single;
    case MYSQL_TYPE_DOUBLE:
    case MYSQL_TYPE_NEWDECIMAL:
        return ColumnType::Double;
    case MYSQL_TYPE_DATE:
        return ColumnType::Date;
    case MYSQL_TYPE_BLOB:
    case MYSQL_TYPE_STRING:
    case MYSQL_TYPE_VAR_STRING:
        return ColumnType::Text;
    default:
        return ColumnType::Undeclared;
    }
}

QString nameOf(const MYSQL_FIELD& field) {
    const QString name = QString::fromUtf8(field.name, field.name_length);
    // A column has the name of its declaration, however the statement wrote it.
    const QString declared = QString::fromUtf8(field.org_name, field.org_name_length);
    return name.compare(declared, Qt::CaseInsensitive) == 0 ? declared : name;
}

/// While it exists, a run of the statement takes arrays of values.
class ArraySize {
public:
    ArraySize(MYSQL_STMT* statement, unsigned rows) : handle(statement) { set(rows); }
    ArraySize(const ArraySize&) = delete;
    ArraySize& operator=(const ArraySize&) = delete;
    ~ArraySize() { set(0); }

private:
    void set(unsigned rows) { mysql_stmt_attr_set(handle, STMT_ATTR_ARRAY_SIZE, &rows); }

    MYSQL_STMT* handle;
};

QDate dateOf(const MYSQL_TIME& time) {
    return {static_cast<int>(time.year), static_cast<int>(time.month), static_cast<int>(time.day)};
}

} // namespace

MariaStatement::MariaStatement(MariaSession& owner, QString text, MYSQL_STMT* statement)
    : Compiled(std::move(text)), session(owner), handle(statement) {
    const my_bool yes = 1; // text buffers are made to fit the longest text of a result
    mysql_stmt_attr_set(handle, STMT_ATTR_UPDATE_MAX_LENGTH, &yes);
    Columns found;
    if (const Result result = resultOf(handle)) {
        for (unsigned i = 0; i < mysql_num_fields(result.get()); ++i) {
            const MYSQL_FIELD& field = *mysql_fetch_field_direct(result.get(), i);
            found.push_back({nameOf(field), quoted(nameOf(field)), typeOf(field)});
        }
    }
    columns = std::make_shared<const Columns>(std::move(found));
}

MariaStatement::~MariaStatement() {
    mysql_stmt_close(handle);
}

MYSQL_BIND MariaStatement::bound(Cell& cell, const QVariant& value) {
    MYSQL_BIND bind{};
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        bind.buffer_type = MYSQL_TYPE_NULL;
        break;
    case QMetaType::Int:
    case QMetaType::LongLong:
        cell.whole = value.toLongLong();
        bind.buffer_type = MYSQL_TYPE_LONGLONG;
        bind.buffer = &cell.whole;
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        cell.real = value.toDouble();
        bind.buffer_type = MYSQL_TYPE_DOUBLE;
        bind.buffer = &cell.real;
        break;
    default:
        cell.text = value.toString().toUtf8();
        cell.length = static_cast<unsigned long>(cell.text.size());
        bind.buffer_type = MYSQL_TYPE_STRING;
        bind.buffer = cell.text.data();
        bind.buffer_length = cell.length;
        bind.length = &cell.length;
    }
    return bind;
}

void MariaStatement::bind(const QVariantList& values) {
    const unsigned long count = mysql_stmt_param_count(handle);
    parameters.assign(count, {});
    parameterBinds.clear();
    for (unsigned long i = 0; i < count; ++i)
        parameterBinds.push_back(bound(parameters[i], values.value(static_cast<qsizetype>(i))));
    session.requireTaken(
        std::accumulate(parameters.begin(), parameters.end(), qulonglong{0},
                        [](qulonglong bytes, const Cell& parameter) { return bytes + parameter.length; }));
    if (count > 0 && mysql_stmt_bind_param(handle, parameterBinds.data()))
        fail();
}

void MariaStatement::runForEach(const std::vector<const QVariantList*>& rows) {
    std::vector<ValueArray> arrays;
    std::vector<MYSQL_BIND> arrayBinds;
    for (unsigned long i = 0; i < mysql_stmt_param_count(handle); ++i)
        arrays.emplace_back(rows, static_cast<qsizetype>(i));
    for (ValueArray& array : arrays)
        arrayBinds.push_back(array.bind());
    session.requireTaken(
        std::accumulate(arrays.begin(), arrays.end(), qulonglong{0},
                        [](qulonglong bytes, const ValueArray& array) { return bytes + array.size(); }));
    const ArraySize together(handle, static_cast<unsigned>(rows.size()));
    if (mysql_stmt_bind_param(handle, arrayBinds.data()) || mysql_stmt_execute(handle))
        fail();
}

bool MariaStatement::step() {
    if (!hasRun)
        run();
    if (binds.empty())
        return false;
    const int code = mysql_stmt_fetch(handle);
    if (code == 1)
        fail();
    if (isInPieces && code != MYSQL_NO_DATA)
        takeCutTexts();
    return code != MYSQL_NO_DATA;
}

void MariaStatement::takeInPieces() {
    constexpr unsigned long piece = 4000; // rows
    constexpr unsigned long cursor = CURSOR_TYPE_READ_ONLY;
    isInPieces = true;
    if (mysql_stmt_attr_set(handle, STMT_ATTR_CURSOR_TYPE, &cursor) ||
        mysql_stmt_attr_set(handle, STMT_ATTR_PREFETCH_ROWS, &piece))
        fail();
}

/// The texts of the current row that are longer than their buffers, which grow.
void MariaStatement::takeCutTexts() {
    bool hasGrown = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        Cell& cell = cells[i];
        MYSQL_BIND& bind = binds[i];
        if (bind.buffer_type != MYSQL_TYPE_STRING || cell.isNull || cell.length <= bind.buffer_length)
            continue;
        cell.text.resize(static_cast<qsizetype>(cell.length));
        bind.buffer = cell.text.data();
        bind.buffer_length = cell.length;
        if (mysql_stmt_fetch_column(handle, &bind, static_cast<unsigned>(i), 0))
            fail();
        hasGrown = true;
    }
    if (hasGrown && mysql_stmt_bind_result(handle, binds.data()))
        fail();
}

void MariaStatement::run() {
    session.sendWaiting();
    binds.clear();
    if (mysql_stmt_execute(handle))
        fail();
    hasRun = true;
    if (mysql_stmt_field_count(handle) > 0)
        takeRows();
}

void MariaStatement::takeRows() {
    if (!isInPieces && mysql_stmt_store_result(handle))
        fail();
    const Result result = resultOf(handle); // again, for the lengths of this run
    const unsigned count = mysql_num_fields(result.get());
    cells.assign(count, {});
    for (unsigned i = 0; i < count; ++i) {
        const MYSQL_FIELD& field = *mysql_fetch_field_direct(result.get(), i);
        // How long the longest text is, is not known before all rows are here.
        binds.push_back(receiving(cells[i], field, isInPieces ? usualText : field.max_length));
    }
    if (mysql_stmt_bind_result(handle, binds.data()))
        fail();
}

/// size: of the buffer of a text, in bytes.
MYSQL_BIND MariaStatement::receiving(Cell& cell, const MYSQL_FIELD& field, unsigned long size) {
    MYSQL_BIND bind{};
    bind.is_null = &cell.isNull;
    bind.length = &cell.length;
    switch (field.type) {
    case MYSQL_TYPE_TINY:
    case MYSQL_TYPE_SHORT:
    case MYSQL_TYPE_INT24:
    case MYSQL_TYPE_LONG:
    case MYSQL_TYPE_LONGLONG:
        cell.kind = Kind::Whole;
        bind.buffer_type = MYSQL_TYPE_LONGLONG;
        bind.buffer = &cell.whole;
        break;
    case MYSQL_TYPE_FLOAT:
    case MYSQL_TYPE_DOUBLE:
        cell.kind = Kind::Real;
        bind.buffer_type = MYSQL_TYPE_DOUBLE;
        bind.buffer = &cell.real;
        break;
    case MYSQL_TYPE_DATE:
        cell.kind = Kind::Date;
        bind.buffer_type = MYSQL_TYPE_DATE;
        bind.buffer = &cell.date;
        break;
    default:
        cell.kind = field.type == MYSQL_TYPE_NEWDECIMAL ? Kind::Decimal : Kind::Text;
        cell.hasFraction = field.decimals > 0;
        cell.text.resize(static_cast<qsizetype>(size));
        bind.buffer_type = MYSQL_TYPE_STRING;
        bind.buffer = cell.text.data();
        bind.buffer_length = size;
    }
    return bind;
}

QVariant MariaStatement::column(int index) const {
    const Cell& cell = cells.at(static_cast<std::size_t>(index));
    if (cell.isNull)
        return {};
    const auto text = [&cell] { return QByteArrayView(cell.text.constData(), cell.length); };
    switch (cell.kind) {
    case Kind::Whole:
        return qlonglong{cell.whole};
    case Kind::Real:
        return cell.real;
    case Kind::Decimal: // as sum and avg return it
        return cell.hasFraction ? QVariant(text().toDouble()) : QVariant(text().toLongLong());
    case Kind::Date:
        return toIso(dateOf(cell.date));
    case Kind::Text:
        break;
    }
    return QString::fromUtf8(text());
}

QVariant MariaStatement::column(int index, ColumnType type) const {
    const Cell& cell = cells.at(static_cast<std::size_t>(index));
    if (type == ColumnType::Date && cell.kind == Kind::Date && !cell.isNull)
        return dateOf(cell.date);
    return fromStore(type, MariaStatement::column(index));
}

void MariaStatement::takeRow(std::vector<QVariant>& row) const {
    for (std::size_t i = 0; i < columns->size(); ++i)
        row.push_back(column(static_cast<int>(i), (*columns)[i].type));
}

bool MariaStatement::isReading() const {
    const QStringView text = QStringView(sql).trimmed();
    return std::none_of(std::begin(writingWords), std::end(writingWords),
                        [text](QStringView word) { return text.startsWith(word, Qt::CaseInsensitive); });
}

void MariaStatement::reset() {
    if (hasRun && !binds.empty())
        mysql_stmt_free_result(handle);
    if (isInPieces) {
        constexpr unsigned long none = CURSOR_TYPE_NO_CURSOR;
        mysql_stmt_attr_set(handle, STMT_ATTR_CURSOR_TYPE, &none);
    }
    hasRun = isInPieces = false;
    binds.clear();
    cells.clear();
    parameters.clear();
}

void MariaStatement::fail() {
    session.fail(static_cast<int>(mysql_stmt_errno(handle)), QString::fromUtf8(mysql_stmt_error(handle)));
}

} // namespace ado
