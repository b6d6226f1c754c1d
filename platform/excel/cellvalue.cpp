// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/cellvalue.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/sharedstrings.h"
#include "platform/excel/text.h"

#include <bit>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr qsizetype content = 6; // after row, column and format

double fromRk(quint32 rk) {
    const double number = rk & 2 ? double(qint32(rk) >> 2) : std::bit_cast<double>(quint64(rk & ~3U) << 32);
    return rk & 1 ? number / 100 : number;
}

QString resultText(const Cell& cell) {
    std::vector<QByteArray> chunks;
    for (const Record& record : cell.followers)
        if (record.id == id::String || (record.id == id::Continue && !chunks.empty()))
            chunks.push_back(record.body);
    return chunks.empty() ? QString() : ChunkReader(chunks).richText();
}

Value formulaResult(const Cell& cell) {
    const QByteArray& body = cell.record.body;
    if (get16(body, content + 6) != 0xFFFF)
        return getDouble(body, content);
    const quint8 detail = get8(body, content + 2);
    switch (get8(body, content)) {
    case 0:
        return resultText(cell);
    case 1:
        return Value::boolean(detail != 0);
    case 2:
        return Value::error(detail);
    default:
        return {};
    }
}

} // namespace

Value cellValue(const Cell& cell, const SharedStrings& strings) {
    const QByteArray& body = cell.record.body;
    switch (cell.record.id) {
    case id::Number:
        return getDouble(body, content);
    case id::Rk:
        return fromRk(get32(body, content));
    case id::LabelSst:
        return strings.text(get32(body, content));
    case id::Label:
    case id::RichString:
        return longText(body, content);
    case id::BoolError:
        return get8(body, content + 1) ? Value::error(get8(body, content))
                                       : Value::boolean(get8(body, content) != 0);
    case id::Formula:
    case id::Formula3:
    case id::Formula4:
        return formulaResult(cell);
    default:
        return {};
    }
}

Cell makeCell(Place place, quint16 format, const Value& value, SharedStrings& strings) {
    Cell cell{{id::Blank, {}}, {}};
    QByteArray& body = cell.record.body;
    append16(body, quint16(place.row));
    append16(body, quint16(place.column));
    append16(body, format);
    switch (value.type()) {
    case Value::Type::Text:
        cell.record.id = id::LabelSst;
        append32(body, strings.intern(value.text()));
        break;
    case Value::Type::Number:
        cell.record.id = id::Number;
        appendDouble(body, *value.number());
        break;
    case Value::Type::Boolean:
        cell.record.id = id::BoolError;
        append8(body, *value.truth() ? 1 : 0);
        append8(body, 0);
        break;
    case Value::Type::Blank:
        break;
    case Value::Type::Date:
    case Value::Type::Error:
        throw Refusal(u"cannot take a value of this kind"_s);
    }
    return cell;
}

} // namespace excel::biff
