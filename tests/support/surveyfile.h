// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/cellmap.h"
#include "platform/excel/application.h"

#include <map>

/// A survey file made from the template as the export makes it, and what its respondent then entered.
struct SurveyFile {
    int respondentid = 1;
    int surveyid = 1;
    QDate date{2024, 3, 5};
    std::vector<std::pair<int, bool>> questions; ///< questionid, whether it is a Score question
    std::map<QString, excel::Value> entered;     ///< by address such as "C14"; any cell, also locked ones

    void saveAs(const QString& path) const {
        const excel::Application application;
        const excel::Workbook workbook =
            application.Workbooks().Open(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"));
        const excel::Worksheet sheet = workbook.Worksheets(cellmap::sheetName.toString());
        sheet.Unprotect(cellmap::sheetPassword.toString());
        const auto write = [&](const cellmap::Cell& cell) {
            if (cell.value)
                sheet.Cells(cell.place.row, cell.place.column).setValue(*cell.value);
        };
        cellmap::Head head;
        head.respondentid = QString::number(respondentid);
        head.surveyid = QString::number(surveyid);
        head.surveyDate = head.exportDate = date;
        for (const cellmap::Cell& cell : cellmap::headCells(head))
            write(cell);
        write(cellmap::questionCountCell(static_cast<int>(questions.size())));
        int row = cellmap::firstRow;
        for (const auto& [questionid, isScore] : questions) {
            cellmap::Question question;
            question.questionid = QString::number(questionid);
            question.isScore = isScore;
            for (const cellmap::Cell& cell : cellmap::blockCells(row, question))
                write(cell);
            row += cellmap::blockRows(isScore);
        }
        for (const auto& [address, value] : entered)
            sheet.Range(address).setValue(value);
        sheet.Protect(cellmap::sheetPassword.toString());
        workbook.SaveAs(path);
    }
};
