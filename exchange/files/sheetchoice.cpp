// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/sheetchoice.h"

#include "exchange/files/cellmap.h"
#include "platform/failure/failure.h"

#include <algorithm>

namespace {

/// False also for a damaged sheet.
bool hasKeys(const excel::Workbook& workbook, const QString& name) {
    const cellmap::Place keys[] = {cellmap::respondentIdPlace, cellmap::surveyDatePlace,
                                   cellmap::surveyIdPlace};
    try {
        const excel::Worksheet sheet = workbook.Worksheets(name);
        return std::all_of(std::begin(keys), std::end(keys), [&](cellmap::Place place) {
            return !sheet.Cells(place.row, place.column).Value().isBlank();
        });
    } catch (const Failure&) {
        return false;
    }
}

} // namespace

excel::Worksheet surveySheetOf(const excel::Workbook& workbook) {
    const QString usual = cellmap::sheetName.toString();
    const QStringList names = workbook.SheetNames();
    if (names.contains(usual, Qt::CaseInsensitive))
        return workbook.Worksheets(usual);
    QStringList fitting;
    std::copy_if(names.begin(), names.end(), std::back_inserter(fitting),
                 [&](const QString& name) { return hasKeys(workbook, name); });
    return workbook.Worksheets(fitting.size() == 1 ? fitting.front() : usual);
}
