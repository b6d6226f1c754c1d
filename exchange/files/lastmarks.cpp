// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/lastmarks.h"

#include "core/store/store.h"
#include "core/store/worktable.h"
#include "survey/questionnaires/questionnaire.h"

#include <map>
#include <set>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

/// The keys of the survey, as text for the statements.
struct Keys {
    QString custid;
    QString respondentid;
    QString date; // mm/dd/yyyy
};

QString selectQuestions(const Keys& keys) {
    return u"select * from responquery where custid="_s + keys.custid + u" and respondentid=" +
           keys.respondentid + u" and sdate=#" + keys.date + u"#";
}

void fillQuestions(const Keys& keys) {
    ado::Recordset responquery(selectQuestions(keys) + orderOfQuestions(), *cnnMain);
    ado::Recordset reportlinktable(u"select * from reportlinktable"_s, *cnnMain, Lock::BatchOptimistic);
    for (; !responquery.Eof(); responquery.MoveNext()) {
        reportlinktable.AddNew();
        for (const char* field : {"question", "respondentname", "custname", "Type", "sdate", "custid",
                                  "respondentid", "questionid", "paramid"})
            reportlinktable[field] = responquery[field].Value();
        reportlinktable["Parameter"] = responquery["parametername"].Value();
        reportlinktable.Update();
    }
}

/// The marks of an answer; empty for Null.
struct Marks {
    QString weightage;
    QString score;
};

/// Those of the latest earlier survey, by questionid.
std::map<QString, Marks> readLastMarks(bool isScore, const Keys& keys, HistoryOrder order) {
    const bool newestFirst = order == HistoryOrder::NewestFirst;
    ado::Recordset history((isScore ? u"select questionid,weightage,score from objquery"_s
                                    : u"select questionid,weightage from descquery"_s) +
                               u" where custid=" + keys.custid + u" and respondentid=" + keys.respondentid +
                               u" and surveydate < #" + keys.date + u"# order by surveydate" +
                               (newestFirst ? u" desc" : u" asc"),
                           *cnnMain);
    std::map<QString, Marks> last;
    for (; !history.Eof(); history.MoveNext()) {
        const Marks marks{history["weightage"].Text(), isScore ? history["score"].Text() : QString()};
        const QString questionid = history["questionid"].Text();
        newestFirst ? last.try_emplace(questionid, marks) : last.insert_or_assign(questionid, marks);
    }
    return last;
}

void copyMark(const QString& mark, ado::Recordset& target, const char* field) {
    if (!mark.isEmpty() && mark != u"0")
        target[field] = mark;
}

/// Only the first row of a question gets its marks.
void fillMarks(const Keys& keys, HistoryOrder order) {
    const std::map<QString, Marks> scores = readLastMarks(true, keys, order);
    const std::map<QString, Marks> words = readLastMarks(false, keys, order);
    ado::Recordset row(u"select * from reportlinktable where respondentid="_s + keys.respondentid, *cnnMain,
                       Lock::BatchOptimistic);
    row.RecordCount(); // takes all before the first is changed
    std::set<QString> filled;
    for (; !row.Eof(); row.MoveNext()) {
        const QString questionid = row["questionid"].Text();
        const std::map<QString, Marks>& last = row["Type"].Value().toBool() ? scores : words;
        const auto marks = last.find(questionid);
        if (!filled.insert(questionid).second || marks == last.end())
            continue;
        copyMark(marks->second.weightage, row, "weightage");
        copyMark(marks->second.score, row, "score");
        row.Update();
    }
}

} // namespace

void toGetTheLastScoreAndWeightage(const SurveyKey& survey, HistoryOrder order) {
    fillWorkTable([&] {
        cnnMain->Execute(u"delete * from reportlinktable"_s);
        if (survey.respondentid == 0 || !survey.date.isValid())
            return;
        const Keys keys{QString::number(survey.custid), QString::number(survey.respondentid),
                        toSqlDate(survey.date)};
        fillQuestions(keys);
        fillMarks(keys, order);
    });
}
