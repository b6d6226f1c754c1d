// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/lastmarks.h"

#include "core/store/store.h"
#include "core/store/worktable.h"
#include "survey/questionnaires/questionnaire.h"

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
    for (; !responquery.Eof(); responquery.MoveNext()) {
        ado::Recordset reportlinktable(u"select * from reportlinktable"_s, *cnnMain, Lock::Optimistic);
        reportlinktable.AddNew();
        for (const char* field : {"question", "respondentname", "custname", "Type", "sdate", "custid",
                                  "respondentid", "questionid", "paramid"})
            reportlinktable[field] = responquery[field].Value();
        reportlinktable["Parameter"] = responquery["parametername"].Value();
        reportlinktable.Update();
    }
}

/// Moves to the answer of the latest earlier survey; false if there is none.
bool findLastAnswer(ado::Recordset& history, const QString& query, const Keys& keys,
                    const QString& questionid, HistoryOrder order) {
    const bool newestFirst = order == HistoryOrder::NewestFirst;
    history.Open(u"select * from "_s + query + u" where custid=" + keys.custid + u" and respondentid=" +
                     keys.respondentid + u" and surveydate < #" + keys.date + u"# and questionid=" +
                     questionid +
                     (newestFirst ? u" order by surveydate desc"_s : u" order by surveydate asc"_s),
                 *cnnMain);
    if (history.Eof())
        return false;
    if (!newestFirst)
        history.MoveLast();
    return true;
}

void copyMark(ado::Recordset& history, ado::Recordset& target, const char* field) {
    const QString mark = history[field].Text();
    if (!mark.isEmpty() && mark != u"0")
        target[field] = mark;
}

void fillScoreMarks(const Keys& keys, const QString& questionid, HistoryOrder order) {
    ado::Recordset objquery;
    if (!findLastAnswer(objquery, u"objquery"_s, keys, questionid, order))
        return;
    ado::Recordset reportlinktable(u"select * from reportlinktable where questionid="_s + questionid +
                                       u" and respondentid=" + keys.respondentid + u" ",
                                   *cnnMain, Lock::Optimistic);
    if (reportlinktable.Eof())
        return;
    copyMark(objquery, reportlinktable, "weightage");
    copyMark(objquery, reportlinktable, "score");
    reportlinktable.Update();
}

void fillDescriptiveMark(const Keys& keys, const QString& questionid, HistoryOrder order) {
    ado::Recordset descquery;
    if (!findLastAnswer(descquery, u"descquery"_s, keys, questionid, order))
        return;
    ado::Recordset reportlinktable(u"select * from reportlinktable where questionid="_s + questionid +
                                       u" and respondentid=" + keys.respondentid,
                                   *cnnMain, Lock::Optimistic);
    copyMark(descquery, reportlinktable, "weightage");
    reportlinktable.Update();
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
        ado::Recordset responquery(selectQuestions(keys) + (order == HistoryOrder::NewestFirst
                                                                ? u" order by parametername"_s
                                                                : QString()),
                                   *cnnMain);
        for (; !responquery.Eof(); responquery.MoveNext()) {
            const QString questionid = responquery["questionid"].Text();
            if (responquery["Type"].Value().toBool())
                fillScoreMarks(keys, questionid, order);
            else
                fillDescriptiveMark(keys, questionid, order);
        }
    });
}
