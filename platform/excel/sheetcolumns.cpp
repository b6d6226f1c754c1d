// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/sheet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

quint16 ColumnInfo::width() const {
    return get16(body, 4);
}
quint16 ColumnInfo::format() const {
    return get16(body, 6);
}
bool ColumnInfo::hidden() const {
    return get16(body, 8) & 1;
}

void Sheet::readColumns() {
    for (const Record& record : before) {
        if (record.id != id::ColumnInfo)
            continue;
        get16(record.body, 8); // the fields up to the flags must be present
        // Some programs refer to a column after the last one.
        const int last = std::min<int>(get16(record.body, 2), maxColumns - 1);
        if (columnInfos.size() == maxColumns)
            damaged(u"a sheet describes more columns than it has"_s);
        columnInfos.push_back({get16(record.body, 0), last, record.body});
    }
}

const ColumnInfo* Sheet::column(int column) const {
    const auto found = std::find_if(columnInfos.begin(), columnInfos.end(), [=](const ColumnInfo& c) {
        return c.first <= column && column <= c.last;
    });
    return found == columnInfos.end() ? nullptr : &*found;
}

int Sheet::defaultColumnWidth() const {
    const int exact = lastOf(before, id::StandardWidth);
    if (exact >= 0)
        return get16(before[size_t(exact)].body, 0);
    const int digits = lastOf(before, id::DefaultColumnWidth);
    return (digits < 0 ? 8 : get16(before[size_t(digits)].body, 0)) * 256 + cellPadding;
}

/// Cuts column ranges at the sides of the area, so that none lies across them.
void Sheet::splitColumns(const Area& area) {
    for (const int cut : {area.first.column, area.last.column + 1}) {
        for (size_t i = 0; i < columnInfos.size(); ++i) {
            if (columnInfos[i].first >= cut || columnInfos[i].last < cut)
                continue;
            ColumnInfo right = columnInfos[i];
            right.first = cut;
            columnInfos[i].last = cut - 1;
            columnInfos.insert(columnInfos.begin() + qsizetype(i) + 1, right);
        }
    }
}

void Sheet::writeColumns() {
    if (columnInfos.empty())
        return;
    const auto isColumn = [](const Record& r) { return r.id == id::ColumnInfo; };
    const auto first = std::find_if(before.begin(), before.end(), isColumn) - before.begin();
    std::erase_if(before, isColumn);
    Records records;
    for (const ColumnInfo& info : columnInfos) {
        records.push_back({id::ColumnInfo, info.body});
        put16(records.back().body, 0, quint16(info.first));
        put16(records.back().body, 2, quint16(info.last));
    }
    before.insert(before.begin() + first, records.begin(), records.end());
}

namespace {

constexpr size_t maxMergedAreas = 100'000;

Area mergedArea(const QByteArray& body, qsizetype index) {
    const qsizetype at = 2 + 8 * index;
    return {{get16(body, at), get16(body, at + 4)}, {get16(body, at + 2), get16(body, at + 6)}};
}

} // namespace

void Sheet::readMergedAreas() {
    for (const Records* part : {&before, &after}) {
        for (const Record& record : *part) {
            if (record.id != id::MergedCells)
                continue;
            for (int i = 0; i < get16(record.body, 0); ++i)
                mergedAreas.push_back(mergedArea(record.body, i));
            if (mergedAreas.size() > maxMergedAreas)
                damaged(u"a sheet has too many merged areas"_s);
        }
    }
}

bool Sheet::isMerged(Place place) const {
    return std::any_of(mergedAreas.begin(), mergedAreas.end(),
                       [=](const Area& area) { return area.contains(place); });
}

void Sheet::unmerge(const Area& area) {
    std::erase_if(mergedAreas, [&](const Area& merged) { return area.contains(merged); });
    for (Records* part : {&before, &after}) {
        for (Record& record : *part) {
            if (record.id != id::MergedCells)
                continue;
            QByteArray kept(2, '\0');
            for (int i = 0; i < get16(record.body, 0); ++i)
                if (!area.contains(mergedArea(record.body, i)))
                    kept.append(slice(record.body, 2 + 8 * i, 8));
            put16(kept, 0, quint16(kept.size() / 8));
            record.body = kept;
        }
        std::erase_if(*part, [](const Record& r) { return r.id == id::MergedCells && r.body.size() == 2; });
    }
}

} // namespace excel::biff
