// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveysheet.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

void writeCell(const excel::Worksheet& sheet, const cellmap::Cell& cell) {
    using cellmap::Colour;
    using cellmap::Lock;
    const excel::Range range = sheet.Cells(cell.place.row, cell.place.column);
    if (cell.border != Colour::None)
        range.BorderAround(excel::BorderWeight::Thin, static_cast<int>(cell.border));
    if (cell.fill != Colour::None)
        range.setInteriorColorIndex(static_cast<int>(cell.fill));
    if (cell.font != Colour::None)
        range.Font().setColorIndex(static_cast<int>(cell.font));
    if (cell.wrapped)
        range.setWrapText(true);
    if (cell.value)
        range.setValue(*cell.value);
    if (cell.lock != Lock::Untouched)
        range.setLocked(cell.lock == Lock::Locked);
}

void writeCells(const excel::Worksheet& sheet, const std::vector<cellmap::Cell>& cells) {
    for (const cellmap::Cell& cell : cells)
        writeCell(sheet, cell);
}

/// Writes the blocks of a parameter from that row on; returns the row below them.
int writeParameter(const excel::Worksheet& sheet, const QString& parameter, int row) {
    ado::Recordset reportlinktable(u"select * from reportlinktable where parameter='"_s + parameter + u"'",
                                   *cnnMain);
    for (bool first = true; !reportlinktable.Eof(); reportlinktable.MoveNext(), first = false) {
        const bool isScore = reportlinktable["Type"].Value().toBool();
        writeCells(sheet,
                   cellmap::blockCells(row, {.questionid = reportlinktable["questionid"].Text(),
                                             .text = reportlinktable["question"].Text(),
                                             .isScore = isScore,
                                             .lastScore = reportlinktable["score"].Value().toInt(),
                                             .lastWeightage = reportlinktable["weightage"].Value().toInt(),
                                             .parameter = parameter,
                                             .startsParameter = first}));
        row += cellmap::blockRows(isScore);
    }
    return row;
}

} // namespace

void fillSurveySheet(const excel::Worksheet& sheet, const cellmap::Head& head) {
    writeCells(sheet, cellmap::headCells(head));
    sheet.Range(cellmap::clearedFrom.toString(), cellmap::clearedTo.toString()).Clear();

    ado::Recordset reportlinktable(u"select * from reportlinktable where custid="_s + head.custid +
                                       u" and respondentid=" + head.respondentid +
                                       u" order by parameter asc, rowid",
                                   *cnnMain);
    writeCell(sheet, cellmap::questionCountCell(reportlinktable.RecordCount()));
    int row = cellmap::firstRow;
    while (!reportlinktable.Eof()) {
        // To the store, names that differ in case only are one parameter.
        const QString parameter = reportlinktable["Parameter"].Text();
        row = writeParameter(sheet, parameter, row);
        while (!reportlinktable.Eof() &&
               reportlinktable["Parameter"].Text().compare(parameter, Qt::CaseInsensitive) == 0)
            reportlinktable.MoveNext();
    }
}
