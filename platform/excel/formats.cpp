// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/formats.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/serialdate.h"
#include "platform/excel/text.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr qsizetype cellFormatSize = 20;
constexpr quint16 missingFontIndex = 4; // no font has this index; the fifth font has index 5
constexpr quint16 firstOwnNumberFormat = 164;

constexpr size_t leastCellFormats = defaultCellFormat + 1; // the ones before it are styles

/// Arial of 10 points, for a workbook that lists no font.
QByteArray usualFont() {
    QByteArray font;
    for (const quint16 field : {200, 0, 0x7FFF, 400, 0, 0, 0})
        append16(font, field);
    append8(font, 5);
    append8(font, 0);
    appendCharacters(font, u"Arial", false);
    return font;
}

/// Without lines and colours, locked, for a workbook that lists no cell format.
QByteArray usualCellFormat(bool ofStyle) {
    QByteArray format(cellFormatSize, '\0');
    put16(format, 4, ofStyle ? 0xFFF5 : 1);
    put8(format, 6, 0x20);
    put16(format, 18, 0x20C0);
    return format;
}

quint32 checksum(const std::vector<QByteArray>& cellFormats) {
    static const auto table = [] {
        std::array<quint32, 256> entries{};
        for (quint32 i = 0; i < 256; ++i) {
            quint32 value = i << 24;
            for (int bit = 0; bit < 8; ++bit)
                value = value & 0x80000000 ? (value << 1) ^ 0xAF : value << 1;
            entries[i] = value & 0xFFFF;
        }
        return entries;
    }();
    quint32 crc = 0;
    for (const QByteArray& format : cellFormats)
        for (const char byte : format)
            crc = (crc << 8) ^ table[(crc >> 24) ^ quint8(byte)];
    return crc;
}

} // namespace

Formats::Formats(const Records& globals) {
    for (const Record& record : globals) {
        if (record.id == id::Font) {
            get16(record.body, 14); // the fixed part must be present
            fonts.push_back(record.body);
        } else if (record.id == id::Xf) {
            cellFormats.emplace_back(slice(record.body, 0, cellFormatSize).toByteArray());
        } else if (record.id == id::Format) {
            numberFormats[get16(record.body, 0)] = longText(record.body, 2);
        }
    }
    if (cellFormats.size() > 0xFFFF)
        damaged(u"the list of cell formats is too long"_s);
    readFonts = fonts.size();
    readCellFormats = cellFormats.size();
    if (fonts.empty())
        fonts.push_back(usualFont());
    while (cellFormats.size() < leastCellFormats && readCellFormats == 0)
        cellFormats.push_back(usualCellFormat(cellFormats.size() + 1 < leastCellFormats));
    cellDefault = quint16(std::min<size_t>(defaultCellFormat, cellFormats.size() - 1));
    for (size_t i = cellFormats.size(); i-- > 0;)
        cellFormatIndex[cellFormats[i]] = quint16(i);
}

CellFormat Formats::cellFormat(quint16 index) const {
    return CellFormat(cellFormats[valid(index)]);
}

quint16 Formats::intern(const CellFormat& format) {
    const auto known = cellFormatIndex.constFind(format.bytes());
    if (known != cellFormatIndex.constEnd())
        return *known;
    if (cellFormats.size() >= maxCellFormats)
        throw Refusal(u"has too many different cell formats"_s);
    cellFormats.push_back(format.bytes());
    const auto index = quint16(cellFormats.size() - 1);
    cellFormatIndex[format.bytes()] = index;
    return index;
}

QByteArray Formats::font(quint16 index) const {
    const size_t position = index > missingFontIndex ? size_t(index) - 1 : index;
    return fonts[position < fonts.size() ? position : 0];
}

quint16 Formats::fontInColour(quint16 index, quint16 colour) {
    QByteArray wanted = font(index);
    put16(wanted, 4, colour);
    auto found = std::find(fonts.begin(), fonts.end(), wanted);
    if (found == fonts.end()) {
        if (fonts.size() >= maxFonts)
            throw Refusal(u"has too many different fonts"_s);
        found = fonts.insert(fonts.end(), wanted);
    }
    const auto position = quint16(found - fonts.begin());
    return position < missingFontIndex ? position : quint16(position + 1);
}

bool Formats::isDate(quint16 numberFormat) const {
    const auto own = numberFormats.find(numberFormat);
    return own != numberFormats.end() ? isDateCode(own->second) : isBuiltInDate(numberFormat);
}

quint16 Formats::numberFormat(const QString& code) {
    for (const auto& [number, known] : numberFormats)
        if (known == code)
            return number;
    const quint16 last = numberFormats.empty() ? 0 : numberFormats.rbegin()->first;
    if (last == 0xFFFF)
        throw Refusal(u"has too many number formats"_s);
    const quint16 number = std::max<quint16>(firstOwnNumberFormat, quint16(last + 1));
    numberFormats[number] = code;
    QByteArray body;
    append16(body, number);
    newNumberFormats.push_back({id::Format, body + longTextBytes(code)});
    return number;
}

void Formats::writeInto(Records& globals) const {
    const auto sheets =
        std::find_if(globals.begin(), globals.end(), [](const Record& r) { return r.id == id::BoundSheet; });
    const int before = int(sheets - globals.begin()) - 1; // position of lists that the workbook lacks
    const auto insertAfter = [&globals, before](int last, const Records& records) {
        globals.insert(globals.begin() + (last < 0 ? before : last) + 1, records.begin(), records.end());
    };
    const auto added = [](quint16 id, const std::vector<QByteArray>& bodies, size_t read) {
        Records records;
        for (size_t i = read; i < bodies.size(); ++i)
            records.push_back({id, bodies[i]});
        return records;
    };
    insertAfter(lastOf(globals, id::Xf), added(id::Xf, cellFormats, readCellFormats));
    insertAfter(std::max(lastOf(globals, id::Format), lastOf(globals, id::Font)), newNumberFormats);
    insertAfter(lastOf(globals, id::Font), added(id::Font, fonts, readFonts));
    refreshChecksum(globals);
}

/// With a wrong checksum, readers ignore the extended properties (theme colours) of every cell.
void Formats::refreshChecksum(Records& globals) const {
    const int at = lastOf(globals, id::XfCrc);
    if (at < 0 || cellFormats.size() == readCellFormats)
        return;
    QByteArray& body = globals[size_t(at)].body;
    put16(body, 14, quint16(cellFormats.size()));
    put32(body, 16, checksum(cellFormats));
}

} // namespace excel::biff
