// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/firststeps.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

bool isOne(ado::Recordset& counts, const char* field) {
    return counts[field].Value().toInt() > 0;
}

} // namespace

FirstSteps readFirstSteps() {
    FirstSteps steps;
    ado::Recordset counts(
        u"select (select count(*) from (select 1 from respondent limit 1) as a) as respondents,"
        " (select count(*) from (select 1 from questions limit 1) as b) as questions,"
        " (select count(*) from (select 1 from responquesindex limit 1) as c) as questionnaires,"
        " (select count(*) from (select 1 from log limit 1) as d) as files,"
        " (select count(*) from (select 1 from feedbackobjective limit 1) as e)"
        " + (select count(*) from (select 1 from feedbackdescriptive limit 1) as f) as answers"_s,
        *cnnMain);
    steps.hasRespondents = isOne(counts, "respondents");
    steps.hasQuestions = isOne(counts, "questions");
    steps.hasQuestionnaires = isOne(counts, "questionnaires");
    steps.hasFiles = isOne(counts, "files");
    steps.hasAnswers = isOne(counts, "answers");
    ado::Recordset surveys(u"select customer.custname, survey.sdate from survey"
                           " inner join customer on customer.custid = survey.custid"
                           " where survey.sdate is not null order by survey.surveyid desc limit 5"_s,
                           *cnnMain);
    for (; !surveys.Eof(); surveys.MoveNext())
        steps.surveys.push_back({surveys["custname"].Text(), surveys["sdate"].Value().toDate()});
    ado::Recordset files(u"select xlsfilename, respname from log where xlsfilename is not null"
                         " order by surveyid desc, respid desc limit 5"_s,
                         *cnnMain);
    for (; !files.Eof(); files.MoveNext())
        steps.files.push_back({files["xlsfilename"].Text(), files["respname"].Text()});
    return steps;
}
