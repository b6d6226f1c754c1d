// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/editor.h"

#include "platform/excel/bytes.h"
#include "platform/excel/cellvalue.h"
#include "platform/excel/protection.h"
#include "platform/excel/refusal.h"
#include "platform/excel/serialdate.h"
#include "platform/excel/text.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace excel::biff {

quint16 Editor::formatIndex(Place place) const {
    return sheet.formatAt(place, book.formats().defaultIndex());
}

CellFormat Editor::format(Place place) const {
    return book.formats().cellFormat(formatIndex(place));
}

QByteArray Editor::font(Place place) const {
    return book.formats().font(format(place).font());
}

Value Editor::value(Place place) const {
    const Cell* cell = sheet.cells.find(place);
    if (!cell)
        return {};
    Value value = cellValue(*cell, book.strings());
    if (value.number() && book.formats().isDate(format(place).numberFormat()))
        return fromSerial(*value.number(), book.from1904());
    return value;
}

void Editor::refuseIfProtected(Place place) const {
    if (sheet.isProtected())
        throw Refusal(u"is protected: cell %1 cannot be changed"_s.arg(place.name()));
}

/// Line ends in a cell are single line feeds.
static Value cellText(const QString& text) {
    QString cell = text;
    cell.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    if (cell.size() > maxCellText)
        throw Refusal(u"cannot take a text of more than %1 characters"_s.arg(maxCellText));
    return cell;
}

void Editor::setValue(Place place, const Value& value) {
    if (format(place).locked())
        refuseIfProtected(place);
    Value stored = value;
    quint16 format = formatIndex(place);
    if (value.type() == Value::Type::Text) {
        stored = cellText(value.text());
    } else if (value.type() == Value::Type::Date) {
        const auto serial = toSerial(value.date(), value.time(), book.from1904());
        if (!serial)
            throw Refusal(u"cannot take a date before 1900 or after 9999"_s);
        stored = *serial;
        format = formatForDate(format, value.time());
    } else if (value.number() && !std::isfinite(*value.number())) {
        throw Refusal(u"cannot take a number without end"_s);
    }
    if (book.formats().cellFormat(format).isStyle())
        format = book.formats().intern(book.formats().clone(format));
    sheet.cells.put(place, makeCell(place, format, stored, book.strings()));
    sheet.touchedRows.insert(place.row);
    sheet.changed = true;
    book.valuesChanged();
}

/// A date needs a date format; an existing one is kept.
quint16 Editor::formatForDate(quint16 format, QTime time) {
    Formats& formats = book.formats();
    if (formats.isDate(formats.cellFormat(format).numberFormat()))
        return format;
    CellFormat changed = formats.clone(format);
    changed.setNumberFormat(
        formats.numberFormat(time == QTime(0, 0) ? u"dd/mm/yyyy"_s : u"dd/mm/yyyy\\ hh:mm:ss"_s));
    return formats.intern(changed);
}

void Editor::changeFormat(Place place, const std::function<void(CellFormat&)>& change) {
    refuseIfProtected(place);
    const quint16 before = formatIndex(place);
    CellFormat format = book.formats().clone(before);
    change(format);
    const quint16 after = book.formats().intern(format);
    if (after != before)
        setFormat(place, after);
}

void Editor::setFormat(Place place, quint16 format) {
    if (Cell* cell = sheet.cells.find(place))
        cell->setFormat(format);
    else
        sheet.cells.put(place, makeCell(place, format, {}, book.strings()));
    sheet.touchedRows.insert(place.row);
    sheet.changed = true;
}

void Editor::setFontColour(Place place, quint16 colour) {
    const quint16 font = book.formats().fontInColour(format(place).font(), colour);
    changeFormat(place, [=](CellFormat& format) { format.setFont(font); });
}

quint16 Editor::plainFormat() {
    Formats& formats = book.formats();
    return formats.intern(formats.clone(formats.defaultIndex()));
}

void Editor::clear(const Area& area) {
    refuseIfProtected(area.first);
    const quint16 plain = plainFormat();
    sheet.clear(area, plain, [&formats = std::as_const(book.formats()), plain](quint16 format) {
        return !formats.cellFormat(format).looksLike(formats.cellFormat(plain));
    });
    book.valuesChanged();
}

void Editor::protect(const QString& password) {
    const quint16 hash = passwordHash(password);
    if (sheet.isProtected() && sheet.passwordHash() != hash)
        throw Refusal(u"is protected with another password"_s);
    if (!sheet.isProtected())
        sheet.protect(hash);
}

void Editor::unprotect(const QString& password) {
    if (!sheet.isProtected())
        return;
    if (sheet.passwordHash() != 0 && sheet.passwordHash() != passwordHash(password))
        throw Refusal(u"is protected with another password"_s);
    sheet.unprotect();
}

} // namespace excel::biff
