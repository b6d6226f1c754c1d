// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/valuebook.h"

#include "platform/excel/odsbook.h"
#include "platform/excel/refusal.h"
#include "platform/excel/xlsxbook.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel {

namespace {

constexpr int millisecondsPerSecond = 1000;

void readSheets(const QByteArray& content, ValueBook& book) {
    ZipPackage package(content);
    if (package.has(u"mimetype"_s) && !package.has(u"[Content_Types].xml"_s))
        readOds(package, book);
    else if (package.has(u"_rels/.rels"_s))
        readXlsx(package, book);
    else
        throw biff::Refusal(u"is a zip file and no workbook"_s);
}

} // namespace

int ValueBook::findSheet(QStringView name) const {
    const auto found = std::find_if(sheets.begin(), sheets.end(), [=](const ValueSheet& sheet) {
        return sheet.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == sheets.end() ? -1 : int(found - sheets.begin());
}

void ValueBook::put(ValueSheet& sheet, biff::Place place, const Value& value) {
    if (value.isBlank() || place.row < 0 || place.row >= biff::maxRows || place.column < 0 ||
        place.column >= biff::maxColumns)
        return;
    if (cellCount == maxCells)
        throw biff::Refusal(u"is too large: it has more than %1 filled cells"_s.arg(maxCells));
    ++cellCount;
    sheet.cells.insert_or_assign(sheet.cells.end(), place, value);
}

Value ValueBook::value(int sheet, biff::Place place) const {
    const auto& cells = sheets[size_t(sheet)].cells;
    const auto found = cells.find(place);
    return found == cells.end() ? Value() : found->second;
}

Value errorNamed(QStringView name) {
    for (const quint8 code : {0x00, 0x07, 0x0F, 0x17, 0x1D, 0x24, 0x2A})
        if (Value::error(code).text() == name)
            return Value::error(code);
    return Value::error(0x0F);
}

std::optional<Value> momentOf(const QString& text) {
    QString day = text.section(u'T', 0, 0);
    const QString time = text.section(u'T', 1);
    const QDate date = QDate::fromString(day, Qt::ISODate);
    const QTime clock = time.isEmpty() ? QTime(0, 0) : QTime::fromString(time, Qt::ISODateWithMs);
    if (!date.isValid() || !clock.isValid())
        return std::nullopt;
    const int seconds = (clock.msecsSinceStartOfDay() + millisecondsPerSecond / 2) / millisecondsPerSecond;
    const QDateTime moment = QDateTime(date, QTime(0, 0), Qt::UTC).addSecs(seconds);
    return Value(moment.date(), moment.time());
}

std::unique_ptr<ValueBook> readPackage(const QString& path, const QByteArray& content) {
    auto book = std::make_unique<ValueBook>();
    book->path = path;
    try {
        readSheets(content, *book);
    } catch (const biff::Refusal& refusal) {
        biff::refuse(path, refusal.reason());
    }
    return book;
}

} // namespace excel
