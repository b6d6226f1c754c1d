// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/grouppoints.h"

#include "core/store/segments.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "platform/ado/forwardrows.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

using namespace Qt::StringLiterals;

namespace {

using Members = std::unordered_map<int, int>; // group by respondent

/// The respondents of the chosen groups.
Members membersOf(const GroupChoice& choice) {
    std::unordered_map<QString, int> places;
    for (int place = 0; const QString& group : choice.groups)
        places.try_emplace(group.toCaseFolded(), place++);
    Members members;
    for (const auto& [respondentid, group] : groupsOfRespondents(readSegmentRows(choice.kind))) {
        if (const auto place = places.find(group.toCaseFolded()); place != places.end())
            members.emplace(respondentid, place->second);
    }
    return members;
}

QString numbers(const std::vector<int>& ids) {
    QStringList texts;
    for (const int id : ids)
        texts << QString::number(id);
    return texts.join(u',');
}

/// Customers with a chosen group, some of whose respondents may be in other ones.
QString conditionOf(const GroupChoice& choice, const QString& date) {
    return u"exists (select 1 from segment where segment.custid=customer.custid and kind='"_s + choice.kind +
           u"' and name in (" + toSqlTexts(choice.groups) + u")) and " + date + u" between #" +
           toSqlDate(choice.first) + u"# and #" + toSqlDate(choice.last) +
           u"# and questions.Type<>0 and questions.paramid in (" + numbers(choice.paramids) + u')';
}

/// The order is that of the indexes, so that a file does not sort.
QString answersOf(const GroupChoice& choice) {
    return u"select feedbackobjective.respondentid, questions.paramid, surveydate, weightage, score "
           "from customer "
           "cross join respondent on respondent.custid=customer.custid "
           "cross join feedbackobjective on feedbackobjective.respondentid=respondent.respondentid "
           "cross join questions on questions.questionid=feedbackobjective.questionid where "_s +
           conditionOf(choice, u"surveydate"_s) +
           u" order by customer.custid, respondent.respondentid, feedbackobjective.questionid, surveydate";
}

QString questionsAskedBy(const GroupChoice& choice) {
    return u"select responquesindex.respondentid, questions.paramid, sdate from customer "
           "cross join survey on survey.custid=customer.custid "
           "cross join responquesindex on responquesindex.surveyid=survey.surveyid "
           "cross join questions on questions.questionid=responquesindex.questionid where "_s +
           conditionOf(choice, u"sdate"_s);
}

std::optional<std::int16_t> ratingOf(const QVariant& value) {
    return value.isValid() ? std::optional(static_cast<std::int16_t>(ado::toWhole(value))) : std::nullopt;
}

/// Puts the answers together as they come, respondent by respondent.
class Points {
public:
    explicit Points(const GroupChoice& chosen) : choice(chosen) {
        for (int place = 0; const int paramid : choice.paramids)
            order[paramid] = place++;
    }

    void add(int group, int respondentid, int paramid, const QDate& date, const RatedAnswer& answer) {
        Growing& growing = points[placeOf(group, paramid, date)];
        growing.answers.push_back(answer);
        if (answer.weightage.value_or(0) == 0 || answer.score.value_or(0) == 0)
            return;
        ++growing.basis.ratings;
        if (std::exchange(growing.lastRespondent, respondentid) != respondentid)
            ++growing.basis.respondents;
    }

    /// A question in a questionnaire; those of points without an answer do not count.
    void addAsked(int group, int respondentid, int paramid, const QDate& date) {
        const auto found = points.find(placeOf(group, paramid, date));
        if (found == points.end())
            return;
        ++found->second.basis.questions;
        found->second.asked.insert(respondentid);
    }

    std::vector<GroupPoint> take() {
        std::vector<GroupPoint> result;
        for (auto& [place, growing] : points) {
            const auto& [group, parameter, begin] = place;
            Basis basis = growing.basis;
            if (choice.isWithAsked) { // those who answered without having been asked count as asked
                basis.asked = std::max(int(growing.asked.size()), basis.respondents);
                basis.questions = std::max(basis.questions, basis.ratings);
            }
            result.push_back({group, choice.isPerParameter ? choice.paramids[std::size_t(parameter)] : 0,
                              QDate::fromJulianDay(begin), std::move(growing.answers), basis});
        }
        return result;
    }

private:
    /// Group, parameter as chosen, and the Julian day at which the period begins: the order of the points.
    using Place = std::tuple<int, int, qint64>;
    struct Growing {
        std::vector<RatedAnswer> answers;
        Basis basis;
        int lastRespondent = 0;
        std::unordered_set<int> asked;
    };

    Place placeOf(int group, int paramid, const QDate& date) const {
        return {group, choice.isPerParameter ? order.at(paramid) : 0,
                beginOf(choice.period, date).toJulianDay()};
    }

    const GroupChoice& choice;
    std::unordered_map<int, int> order; // of the parameters
    std::map<Place, Growing> points;
};

/// Finds the groups of respondents, and tells in between how many have been read.
class Reading {
public:
    Reading(const GroupChoice& choice, const GroupStep& toCall) : members(membersOf(choice)), step(toCall) {}

    /// The group of the respondent of the next row; -1 for none.
    int groupOf(int respondentid) {
        if (std::exchange(respondent, respondentid) == respondentid)
            return group;
        const auto member = members.find(respondentid);
        group = member == members.end() ? -1 : member->second;
        if (group >= 0 && ++done % respondentsAStep == 0)
            isCancelled = !step(done, int(members.size()));
        return group;
    }
    bool hasBeenCancelled() const { return isCancelled; }

private:
    static constexpr int respondentsAStep = 20;

    Members members;
    const GroupStep& step;
    int respondent = 0;
    int group = -1;
    int done = 0;
    bool isCancelled = false;
};

/// Hands over the rows of the groups' respondents; false when cancelled.
template <class Take> bool readRows(const QString& sql, Reading& reading, const Take& take) {
    ado::ForwardRows row(sql, *cnnMain);
    while (row.next()) {
        const int group = reading.groupOf(row.number(0));
        if (reading.hasBeenCancelled())
            return false;
        if (group >= 0)
            take(row, group);
    }
    return true;
}

} // namespace

std::optional<std::vector<GroupPoint>> readGroupPoints(const GroupChoice& choice, const GroupStep& step) {
    if (choice.groups.isEmpty() || choice.paramids.empty())
        return std::vector<GroupPoint>();
    Points points(choice);
    Reading reading(choice, step);
    const bool isRead = readRows(answersOf(choice), reading, [&](const ado::ForwardRows& row, int group) {
        points.add(group, row.number(0), row.number(1), row.date(2),
                   {ratingOf(row.value(3)), ratingOf(row.value(4))});
    });
    const auto addAsked = [&](const ado::ForwardRows& row, int group) {
        points.addAsked(group, row.number(0), row.number(1), row.date(2));
    };
    if (!isRead || (choice.isWithAsked && !readRows(questionsAskedBy(choice), reading, addAsked)))
        return std::nullopt;
    return points.take();
}
