// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/application.h"
#include "tests/support/text.h"

#include <map>

/// Records the paths of files that the program opens in an external program.
struct ShownFiles {
    ShownFiles() {
        excel::Application::setFileShower([this](const QString& path) { paths << path; });
    }
    ~ShownFiles() { excel::Application::setFileShower({}); }
    QStringList paths;
};

using Cells = QList<std::pair<const char*, excel::Value>>; // address and content

/// A survey file: the cells that the reader uses, and the respondent's entries.
struct SurveyFile {
    int respondentid = 1, surveyid = 1;
    QDate date{2024, 3, 5};
    std::vector<std::pair<int, bool>> questions;  ///< questionid, whether it is a Score question
    std::map<QString, excel::Value> entered = {}; ///< by address such as "C14"; locked cells too

    void saveAs(const QString& path) const {
        std::map<QString, excel::Value> cells{{u"I2"_s, QString::number(respondentid)},
                                              {u"I3"_s, date},
                                              {u"I4"_s, QString::number(questions.size())},
                                              {u"I5"_s, QString::number(surveyid)}};
        int row = 14;
        for (const auto& [questionid, isScore] : questions) {
            cells[u"I%1"_s.arg(row)] = QString::number(questionid);
            if (!isScore)
                cells[u"B%1"_s.arg(row + 1)] = u"Type your Answer here"_s;
            row += isScore ? 2 : 3;
        }
        const excel::Workbook workbook =
            excel::Application().Workbooks().Open(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"));
        const excel::Worksheet sheet = workbook.Worksheets(u"Sheet1"_s);
        sheet.Unprotect(u"kvtwpa"_s);
        for (const auto& [address, value] : cells)
            sheet.Range(address).setValue(value);
        for (const auto& [address, value] : entered)
            sheet.Range(address).setValue(value);
        sheet.Protect(u"kvtwpa"_s);
        workbook.SaveAs(path);
    }
};
