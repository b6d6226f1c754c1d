// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveysheet.h"

#include "core/store/store.h"

#include <optional>

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

} // namespace

void fillSurveySheet(const excel::Worksheet& sheet, const cellmap::Head& head) {
    writeCells(sheet, cellmap::headCells(head));
    sheet.Range(cellmap::clearedFrom.toString(), cellmap::clearedTo.toString()).Clear();

    ado::Recordset reportlinktable(u"select * from reportlinktable where custid="_s + head.custid +
                                       u" and respondentid=" + head.respondentid +
                                       u" order by parameter asc, rowid",
                                   *cnnMain);
    writeCell(sheet, cellmap::questionCountCell(reportlinktable.RecordCount()));
    const ado::Field type = reportlinktable["Type"];
    const ado::Field questionid = reportlinktable["questionid"];
    const ado::Field question = reportlinktable["question"];
    const ado::Field score = reportlinktable["score"];
    const ado::Field weightage = reportlinktable["weightage"];
    const ado::Field name = reportlinktable["Parameter"];
    std::optional<QString> parameter; // of the blocks above
    for (int row = cellmap::firstRow; !reportlinktable.Eof(); reportlinktable.MoveNext()) {
        // To the store, names that differ in case only are one parameter.
        const bool starts = !parameter || name.Text().compare(*parameter, Qt::CaseInsensitive) != 0;
        if (starts)
            parameter = name.Text();
        const bool isScore = type.Value().toBool();
        writeCells(sheet, cellmap::blockCells(row, {.questionid = questionid.Text(),
                                                    .text = question.Text(),
                                                    .isScore = isScore,
                                                    .lastScore = score.Value().toInt(),
                                                    .lastWeightage = weightage.Value().toInt(),
                                                    .parameter = *parameter,
                                                    .startsParameter = starts}));
        row += cellmap::blockRows(isScore);
    }
}
