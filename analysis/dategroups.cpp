// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/dategroups.h"

#include "analysis/figures/ratings.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"

#include <iterator>
#include <map>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Groups the answers to one parameter by date.
class AnswerGroups {
public:
    DateGroup& of(const QString& parameter, const QDate& date) {
        const auto [place, isNew] = places.try_emplace(date, groups.size());
        if (isNew)
            groups.push_back({parameter, date, {}, {}});
        return groups[place->second];
    }
    std::vector<DateGroup> groups;

private:
    std::map<QDate, std::size_t> places;
};

QString conditionOf(const AnswerChoice& choice) {
    return (choice.parameters.size() == 1 ? u"parametername='"_s + choice.parameters[0] + u'\''
                                          : u"parametername in ("_s + toSqlTexts(choice.parameters) + u')') +
           u" and surveydate between #" + toSqlDate(choice.first) + u"# and #" + toSqlDate(choice.last) +
           u"# and custname='" + choice.customer + u'\'';
}

/// As scatterqry, with the respondents.
QString selectWithRespondents(const AnswerChoice& choice) {
    return u"select parametername, surveydate, weightage, score, feedbackobjective.respondentid from "
           u"customer "
           "cross join parameter "
           "cross join respondent on respondent.custid=customer.custid "
           "cross join questions on questions.paramid=parameter.paramid "
           "cross join feedbackobjective on feedbackobjective.respondentid=respondent.respondentid "
           "and feedbackobjective.questionid=questions.questionid where questions.Type<>0 and "_s +
           conditionOf(choice);
}

/// Nothing when an answer's parameter is written in another way than those chosen.
std::optional<std::vector<DateGroup>> readTogether(const AnswerChoice& choice, bool withRespondents) {
    ado::Recordset answers(withRespondents
                               ? selectWithRespondents(choice)
                               : u"select parametername,surveydate,weightage,score from scatterqry where "_s +
                                     conditionOf(choice),
                           *cnnMain);
    const ado::Field parametername = answers["parametername"];
    const ado::Field surveydate = answers["surveydate"];
    const ado::Field weightage = answers["weightage"];
    const ado::Field score = answers["score"];
    const ado::Field respondentid = answers.FieldAt(answers.FieldCount() - 1);
    std::vector<AnswerGroups> byParameter(std::size_t(choice.parameters.size()));
    for (; !answers.Eof(); answers.MoveNext()) {
        const QString parameter = parametername.Text();
        const qsizetype place = choice.parameters.size() == 1 ? 0 : choice.parameters.indexOf(parameter);
        if (place < 0)
            return std::nullopt;
        DateGroup& group = byParameter[std::size_t(place)].of(parameter, surveydate.Value().toDate());
        group.answers.push_back({toRating(weightage), toRating(score)});
        if (withRespondents)
            group.respondentids.push_back(respondentid.Value().toInt());
    }
    std::vector<DateGroup> all;
    for (AnswerGroups& ofParameter : byParameter)
        std::move(ofParameter.groups.begin(), ofParameter.groups.end(), std::back_inserter(all));
    return all;
}

} // namespace

std::vector<DateGroup> readDateGroups(const AnswerChoice& choice, bool withRespondents) {
    std::optional<std::vector<DateGroup>> together;
    if (!choice.parameters.isEmpty() && !areConfusable(choice.parameters))
        together = readTogether(choice, withRespondents);
    if (together || choice.parameters.isEmpty())
        return std::move(together).value_or(std::vector<DateGroup>());
    std::vector<DateGroup> all;
    for (const QString& parameter : choice.parameters) {
        AnswerChoice one = choice;
        one.parameters = {parameter};
        const std::optional<std::vector<DateGroup>> read = readTogether(one, withRespondents);
        all.insert(all.end(), read->begin(), read->end());
    }
    return all;
}
