// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/dategroups.h"

#include "analysis/figures/ratings.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "platform/ado/forwardrows.h"

#include <iterator>
#include <map>
#include <optional>
#include <utility>

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
    ado::ForwardRows answers(
        withRespondents ? selectWithRespondents(choice)
                        : u"select parametername,surveydate,weightage,score from scatterqry where "_s +
                              conditionOf(choice),
        *cnnMain, ado::ForwardRows::Expected::Few);
    std::vector<AnswerGroups> byParameter(std::size_t(choice.parameters.size()));
    QString parameter;
    qsizetype place = -1; // of the parameter
    while (answers.next()) {
        if (QString next = answers.text(0); place < 0 || next != parameter) {
            parameter = std::move(next);
            place = choice.parameters.size() == 1 ? 0 : choice.parameters.indexOf(parameter);
        }
        if (place < 0)
            return std::nullopt;
        DateGroup& group = byParameter[std::size_t(place)].of(parameter, answers.date(1));
        group.answers.push_back({toRating(answers.value(2)), toRating(answers.value(3))});
        if (withRespondents)
            group.respondentids.push_back(answers.number(4));
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
