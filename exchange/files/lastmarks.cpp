// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/lastmarks.h"

#include "core/store/store.h"
#include "core/store/worktable.h"
#include "survey/questionnaires/questionnaire.h"

#include <unordered_map>
#include <vector>

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

/// The marks of an answer.
struct Marks {
    QVariant weightage;
    QVariant score;
};

/// Those of the latest earlier survey, by questionid.
std::unordered_map<int, Marks> readLastMarks(bool isScore, const Keys& keys, HistoryOrder order) {
    const bool newestFirst = order == HistoryOrder::NewestFirst;
    ado::Recordset history((isScore ? u"select questionid,weightage,score from objquery"_s
                                    : u"select questionid,weightage from descquery"_s) +
                               u" where custid=" + keys.custid + u" and respondentid=" + keys.respondentid +
                               u" and surveydate < #" + keys.date + u"# order by surveydate" +
                               (newestFirst ? u" desc" : u" asc"),
                           *cnnMain);
    const ado::Field questionid = history["questionid"];
    const ado::Field weightage = history["weightage"];
    const ado::Field score = history[isScore ? "score" : "weightage"];
    std::unordered_map<int, Marks> last;
    for (; !history.Eof(); history.MoveNext()) {
        const Marks marks{weightage.Value(), isScore ? score.Value() : QVariant()};
        const int id = questionid.Value().toInt();
        newestFirst ? last.try_emplace(id, marks) : last.insert_or_assign(id, marks);
    }
    return last;
}

/// A mark of 0 is shown as none.
QVariant shown(const QVariant& mark) {
    const QString text = ado::toText(mark);
    return text.isEmpty() || text == u"0" ? QVariant() : mark;
}

/// The questions of the survey, each with the marks given last; only its first row of a question has them.
void fillQuestions(const Keys& keys, HistoryOrder order) {
    auto scores = readLastMarks(true, keys, order);
    auto words = readLastMarks(false, keys, order);
    ado::Recordset responquery(selectQuestions(keys) + orderOfQuestions(), *cnnMain);
    ado::Recordset reportlinktable(u"select * from reportlinktable"_s, *cnnMain, Lock::BatchOptimistic);
    std::vector<std::pair<ado::Field, ado::Field>> copied{
        {responquery["parametername"], reportlinktable["Parameter"]}};
    for (const char* field : {"question", "respondentname", "custname", "Type", "sdate", "custid",
                              "respondentid", "questionid", "paramid"})
        copied.emplace_back(responquery[field], reportlinktable[field]);
    const ado::Field questionid = responquery["questionid"];
    const ado::Field type = responquery["Type"];
    ado::Field weightage = reportlinktable["weightage"];
    ado::Field score = reportlinktable["score"];
    for (; !responquery.Eof(); responquery.MoveNext()) {
        reportlinktable.AddNew();
        for (auto& [from, to] : copied)
            to = from.Value();
        auto& last = type.Value().toBool() ? scores : words;
        const auto marks = last.extract(questionid.Value().toInt());
        weightage = marks ? shown(marks.mapped().weightage) : ado::Null; // all rows by one statement
        score = marks ? shown(marks.mapped().score) : ado::Null;
        reportlinktable.Update();
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
        fillQuestions(keys, order);
    });
}
