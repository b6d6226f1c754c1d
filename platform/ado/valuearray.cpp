// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/valuearray.h"

namespace ado {
namespace {

enum_field_types typeOf(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType: // Null is of any type
    case QMetaType::Int:
    case QMetaType::LongLong:
        return MYSQL_TYPE_LONGLONG;
    case QMetaType::Float:
    case QMetaType::Double:
        return MYSQL_TYPE_DOUBLE;
    default:
        return MYSQL_TYPE_STRING;
    }
}

} // namespace

ValueArray::ValueArray(const std::vector<const QVariantList*>& rows, qsizetype parameter) {
    for (const QVariantList* row : rows) {
        const enum_field_types needed = typeOf(row->at(parameter));
        if (needed == MYSQL_TYPE_STRING || type == MYSQL_TYPE_LONGLONG)
            type = needed;
    }
    for (const QVariantList* row : rows)
        take(row->at(parameter));
}

void ValueArray::take(const QVariant& value) {
    indicators.push_back(value.isValid() ? STMT_INDICATOR_NONE : STMT_INDICATOR_NULL);
    if (type == MYSQL_TYPE_LONGLONG) {
        wholes.push_back(value.toLongLong());
    } else if (type == MYSQL_TYPE_DOUBLE) {
        reals.push_back(value.toDouble());
    } else {
        texts.push_back(value.toString().toUtf8());
        starts.push_back(texts.back().data());
        lengths.push_back(static_cast<unsigned long>(texts.back().size()));
    }
}

qulonglong ValueArray::size() const {
    constexpr qulonglong lengthOfText = 9;
    qulonglong bytes = indicators.size() + 8 * (wholes.size() + reals.size());
    for (const unsigned long length : lengths)
        bytes += length + lengthOfText;
    return bytes;
}

MYSQL_BIND ValueArray::bind() {
    MYSQL_BIND bound{};
    bound.buffer_type = type;
    bound.u.indicator = indicators.data();
    if (type == MYSQL_TYPE_LONGLONG) {
        bound.buffer = wholes.data();
    } else if (type == MYSQL_TYPE_DOUBLE) {
        bound.buffer = reals.data();
    } else {
        bound.buffer = starts.data();
        bound.length = lengths.data();
    }
    return bound;
}

} // namespace ado
