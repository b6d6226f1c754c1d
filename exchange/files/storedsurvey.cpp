// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/storedsurvey.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

std::map<int, CatalogueQuestion> readCatalogue() {
    std::map<int, CatalogueQuestion> catalogue;
    ado::Recordset questions(u"select questionid, question, Type from questions"_s, *cnnMain);
    for (; !questions.Eof(); questions.MoveNext())
        catalogue[questions["questionid"].Value().toInt()] = {questions["question"].Text(),
                                                              questions["Type"].Value().toBool()};
    return catalogue;
}

std::optional<StoredSurvey> findStoredSurvey(int surveyid, int respondentid) {
    ado::Recordset rows(u"select survey.custid, customer.custname, respondent.respondentname, survey.sdate, "
                        "responquesindex.questionid from responquesindex "
                        "inner join survey on survey.surveyid = responquesindex.surveyid "
                        "inner join customer on customer.custid = survey.custid "
                        "inner join respondent on respondent.respondentid = responquesindex.respondentid "
                        "where responquesindex.surveyid="_s +
                            QString::number(surveyid) + u" and responquesindex.respondentid=" +
                            QString::number(respondentid) +
                            u" order by responquesindex.[Order], responquesindex.rowid",
                        *cnnMain);
    if (rows.Eof())
        return std::nullopt;
    StoredSurvey found{.custid = rows["custid"].Value().toInt(),
                       .customer = rows["custname"].Text(),
                       .respondent = rows["respondentname"].Text(),
                       .date = rows["sdate"].Value().toDate(),
                       .questions = {}};
    for (; !rows.Eof(); rows.MoveNext())
        found.questions.push_back(rows["questionid"].Value().toInt());
    return found;
}

StoredAnswers readStoredAnswers(int respondentid, const QDate& date) {
    const QString condition = u" where respondentid="_s + QString::number(respondentid) +
                              u" and surveydate=#" + toSqlDate(date) + u"#";
    StoredAnswers answers; // of several rows for one question the first counts, as in a reading
    ado::Recordset scores(u"select questionid, weightage, score from feedbackobjective"_s + condition,
                          *cnnMain);
    for (; !scores.Eof(); scores.MoveNext())
        answers.scores.emplace(scores["questionid"].Value().toInt(),
                               Answer{.weightage = scores["weightage"].Value().toInt(),
                                      .score = scores["score"].Value().toInt(),
                                      .words = {}});
    ado::Recordset words(u"select questionid, weightage, Description from feedbackdescriptive"_s + condition,
                         *cnnMain);
    for (; !words.Eof(); words.MoveNext())
        answers.words.emplace(
            words["questionid"].Value().toInt(),
            Answer{.weightage = words["weightage"].Value().toInt(), .words = words["Description"].Text()});
    return answers;
}
