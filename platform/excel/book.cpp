// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/book.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/repeats.h"
#include "platform/excel/rowheight.h"
#include "platform/excel/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr quint16 biff8 = 0x0600;
constexpr quint16 globalsType = 0x0005;
constexpr quint16 worksheetType = 0x0010;
constexpr int maxDepth = 8;

quint16 substreamType(const Record& bof, bool first) {
    if (get16(bof.body, 0) != biff8) {
        if (first)
            throw Refusal(u"is a workbook of Excel 95 or older, which cannot be read"_s);
        damaged(u"a sheet is of another version than its workbook"_s);
    }
    return get16(bof.body, 2);
}

bool onlyZerosFrom(const QByteArray& stream, qsizetype at) {
    return std::all_of(stream.begin() + at, stream.end(), [](char c) { return c == 0; });
}

} // namespace

Book::Book(const QByteArray& stream) {
    cut(stream);
    readSheets();
    const Records& globals = substreams[0].records;
    formatLists = std::make_unique<Formats>(globals);
    texts = std::make_unique<SharedStrings>(globals);
    const int dateMode = lastOf(globals, id::DateMode);
    countsFrom1904 = dateMode >= 0 && get16(globals[size_t(dateMode)].body, 0) == 1;
}

void Book::cut(const QByteArray& stream) {
    int depth = 0;
    size_t count = 0;
    for (qsizetype at = 0; at < stream.size();) {
        if (depth == 0 && !substreams.empty() && onlyZerosFrom(stream, at))
            return; // some programs pad the stream
        const quint16 recordId = get16(stream, at);
        Record record{recordId, slice(stream, at + 4, get16(stream, at + 2)).toByteArray()};
        if (++count > maxRecords || record.body.size() > maxRecordBody)
            damaged(u"the record at offset %1 is too long or one too many"_s.arg(at));
        if (recordId == id::Bof) {
            const quint16 type = substreamType(record, count == 1);
            if (depth == 0 && (type == globalsType) != substreams.empty())
                damaged(u"the workbook's global part is missing or stands twice"_s);
            if (depth == 0)
                substreams.push_back({quint32(at), type, {}});
            ++depth;
        } else if (depth == 0) {
            damaged(u"the record at offset %1 belongs to no sheet"_s.arg(at));
        } else if (recordId == id::FilePass) {
            throw Refusal(u"is encrypted with a password; it must be saved without one first"_s);
        }
        depth -= recordId == id::Eof;
        if (depth > maxDepth)
            damaged(u"its parts are nested too deeply"_s);
        at += 4 + record.body.size();
        substreams.back().records.push_back(std::move(record));
    }
    if (depth != 0 || substreams.empty())
        damaged(u"the end of a sheet is missing"_s);
}

void Book::readSheets() {
    std::map<quint32, size_t> unclaimed; // substreams by offset
    for (size_t i = 1; i < substreams.size(); ++i)
        unclaimed[substreams[i].offset] = i;
    for (const Record& record : substreams[0].records) {
        if (record.id != id::BoundSheet)
            continue;
        const auto place = unclaimed.find(get32(record.body, 0));
        if (place == unclaimed.end())
            damaged(u"the place of a sheet is wrong"_s);
        const size_t substream = place->second;
        const bool worksheet = get8(record.body, 5) == 0 && substreams[substream].type == worksheetType;
        sheets.push_back({shortText(record.body, 6), substream, worksheet, nullptr});
        unclaimed.erase(place);
    }
    if (sheets.empty())
        damaged(u"it has no sheet"_s);
}

int Book::findSheet(QStringView name) const {
    for (size_t i = 0; i < sheets.size(); ++i)
        if (sheets[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

Sheet& Book::sheet(int sheet) {
    SheetEntry& entry = sheets[size_t(sheet)];
    if (!entry.worksheet)
        throw Refusal(u"has in \"%1\" no worksheet but a chart or a macro sheet"_s.arg(entry.name));
    if (!entry.taken)
        entry.taken = std::make_unique<Sheet>(substreams[entry.substream].records);
    return *entry.taken;
}

/// The global records with the additions to their lists; the offsets of the sheets are still the old ones.
Records Book::globals() const {
    Records globals = substreams[0].records;
    formatLists->writeInto(globals);
    texts->writeInto(globals);
    const int calculation = lastOf(globals, id::RecalculationId);
    if (resultsStale && calculation >= 0)
        put32(globals[size_t(calculation)].body, 4, 0);
    return globals;
}

QByteArray Book::stream() {
    for (SheetEntry& entry : sheets)
        if (entry.taken) {
            fitRowHeights(*entry.taken, *formatLists, *texts);
            refreshRepeats(*entry.taken, *texts);
        }
    std::vector<Records> parts{globals()};
    for (size_t i = 1; i < substreams.size(); ++i)
        parts.push_back(withoutIndexes(substreams[i].records));
    for (SheetEntry& entry : sheets)
        if (entry.taken)
            parts[entry.substream] = entry.taken->records();
    std::vector<quint32> offsets;
    quint32 offset = 0;
    size_t count = 0;
    for (const Records& part : parts) {
        offsets.push_back(offset);
        if ((count += part.size()) > maxRecords)
            throw Refusal(u"has too much in it to be saved"_s);
        for (const Record& record : part)
            offset += 4 + quint32(record.body.size());
    }
    auto entry = sheets.begin();
    for (Record& record : parts[0])
        if (record.id == id::BoundSheet)
            put32(record.body, 0, offsets[(entry++)->substream]);

    QByteArray stream;
    stream.reserve(offset);
    for (const Records& part : parts)
        for (const Record& record : part)
            appendRecord(stream, record);
    return stream;
}

} // namespace excel::biff
