// SPDX-License-Identifier: GPL-3.0-or-later
// demofiles HOME: exports the survey files of the last survey date of the demonstration store to HOME. The
// files of respondents with answers are filled in and marked as read; the others are outstanding.
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/cellmap.h"
#include "exchange/files/surveylog.h"
#include "exchange/surveyexport.h"
#include "platform/excel/application.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "tools/demotexts.h"

#include <QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QDate exportedOn{2026, 7, 2};
const QString sdate = u"06/30/2026"_s; // in statements

struct Respondent {
    SurveyContext survey;
    QString respondentid;
};

std::vector<Respondent> respondents() {
    std::vector<Respondent> result;
    ado::Recordset surveys(
        u"select * from existingsurvey where sdate=#"_s + sdate + u"# order by respondentid", *cnnMain);
    for (; !surveys.Eof(); surveys.MoveNext())
        result.push_back(
            {{surveys["custname"].Text(), surveys["respondentname"].Text(), surveys["sdate"].Text()},
             surveys["respondentid"].Text()});
    return result;
}

/// Enters the stored answer to the question whose block begins in that row; false if there is none.
bool enter(const excel::Worksheet& sheet, int row, const QString& respondentid) {
    const QString ofAnswer = u" where respondentid="_s + respondentid + u" and questionid=" +
                             sheet.Cells(row, cellmap::column::key).Value().text() + u" and surveydate=#" +
                             sdate + u"#";
    ado::Recordset marks(u"select * from feedbackobjective"_s + ofAnswer, *cnnMain);
    ado::Recordset words(u"select * from feedbackdescriptive"_s + ofAnswer, *cnnMain);
    if (marks.Eof() && words.Eof())
        return false;
    ado::Recordset& answer = marks.Eof() ? words : marks;
    sheet.Cells(row, cellmap::column::weightage).setValue(answer["weightage"].Value().toInt());
    if (marks.Eof()) {
        const cellmap::Place box = cellmap::answerPlace(row);
        sheet.Cells(box.row, box.column).setValue(words["Description"].Text());
    } else {
        sheet.Cells(row, cellmap::column::score).setValue(marks["score"].Value().toInt());
    }
    return true;
}

/// Fills the file in with the respondent's answers; leaves it unchanged if there are none.
void fillIn(const QString& name, const QString& respondentid) {
    const excel::Workbook workbook = excel::Application().Workbooks().Open(homeDirectory() + u'/' + name);
    const excel::Worksheet sheet = workbook.Worksheets(cellmap::sheetName.toString());
    sheet.Unprotect(cellmap::sheetPassword.toString());
    const QString count =
        sheet.Cells(cellmap::questionCountPlace.row, cellmap::questionCountPlace.column).Value().text();
    bool answered = false;
    for (int row = cellmap::firstRow; row <= cellmap::lastRow(count.toDouble()); ++row) {
        if (!sheet.Cells(row, cellmap::column::key).Value().isBlank())
            answered = enter(sheet, row, respondentid) || answered;
    }
    if (!answered)
        return;
    sheet.Protect(cellmap::sheetPassword.toString());
    workbook.Save();
    setLogStatus(name);
}

void exportAll() {
    for (const Respondent& respondent : respondents()) {
        const ExportResult exported = exportSurvey({.survey = respondent.survey});
        fillIn(exported.fileName, respondent.respondentid);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // nothing is shown
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: demofiles HOME\n", stderr);
        return 2;
    }
    setHomeDirectory(arguments[1]);
    strCompanyName = QString::fromUtf8(demo::organisation);
    bool failed = false;
    forms::messageHook = [&](const forms::Message& message) { // the question whether to view a file; any
                                                              // other message is a failure
        if (message.style != forms::style::yesNo + forms::style::information) {
            failed = true;
            std::fprintf(stderr, "%s\n", qPrintable(message.text));
        }
        return forms::Answer::No;
    };
    forms::todayHook = [] { return exportedOn; };
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    try {
        exportAll();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        failed = true;
    }
    cnnMain.reset();
    return failed ? 1 : 0;
}
