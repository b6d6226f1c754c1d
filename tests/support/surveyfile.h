// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/application.h"

#include <map>

/// Records the paths of files that the program opens in an external program.
struct ShownFiles {
    ShownFiles() {
        excel::Application::setFileShower([this](const QString& path) { paths << path; });
    }
    ~ShownFiles() { excel::Application::setFileShower({}); }
    QStringList paths;
};

using Cells = std::vector<std::pair<const char*, excel::Value>>; // address and content

/// A survey file: the cells that the reader uses, and the respondent's entries.
struct SurveyFile {
    int respondentid = 1;
    int surveyid = 1;
    QDate date{2024, 3, 5};
    std::vector<std::pair<int, bool>> questions;  ///< questionid, whether it is a Score question
    std::map<QString, excel::Value> entered = {}; ///< by address such as "C14"; locked cells too

    void saveAs(const QString& path) const {
        std::map<QString, excel::Value> cells{{QStringLiteral("I2"), QString::number(respondentid)},
                                              {QStringLiteral("I3"), date},
                                              {QStringLiteral("I4"), QString::number(questions.size())},
                                              {QStringLiteral("I5"), QString::number(surveyid)}};
        int row = 14;
        for (const auto& [questionid, isScore] : questions) {
            cells[QStringLiteral("I%1").arg(row)] = QString::number(questionid);
            if (!isScore)
                cells[QStringLiteral("B%1").arg(row + 1)] = QStringLiteral("Type your Answer here");
            row += isScore ? 2 : 3;
        }
        const excel::Workbook workbook =
            excel::Application().Workbooks().Open(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"));
        const excel::Worksheet sheet = workbook.Worksheets(QStringLiteral("Sheet1"));
        sheet.Unprotect(QStringLiteral("kvtwpa"));
        for (const auto& [address, value] : cells)
            sheet.Range(address).setValue(value);
        for (const auto& [address, value] : entered)
            sheet.Range(address).setValue(value);
        sheet.Protect(QStringLiteral("kvtwpa"));
        workbook.SaveAs(path);
    }
};
