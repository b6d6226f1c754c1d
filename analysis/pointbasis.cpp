// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/pointbasis.h"

#include "core/store/store.h"
#include "core/store/textlookup.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

QString twoDecimals(double value) {
    return QString::number(value, 'f', 2);
}

QString plural(int count, const QString& word) {
    return QString::number(count) + u' ' + word + (count == 1 ? u""_s : u"s"_s);
}

const QString tooFew = u"too few to say"_s;

} // namespace

Basis PointBasis::counts() const {
    return basisOf(answers, static_cast<int>(asked.size()), questions);
}

PointBasis& basisOf(PointBases& all, const QString& parameter, const QDate& date) {
    return all[{parameter.toLower(), date}];
}

PointBases readPointBases(const QString& customer, const std::vector<DateGroup>& groups) {
    PointBases all;
    if (groups.empty())
        return all;
    const auto [first, last] =
        std::minmax_element(groups.begin(), groups.end(), [](const DateGroup& a, const DateGroup& b) {
            return a.surveydate < b.surveydate;
        });
    QStringList parameters;
    for (const DateGroup& group : groups) {
        parameters << group.parameter;
        std::vector<RespondentAnswer>& answers = basisOf(all, group.parameter, group.surveydate).answers;
        for (std::size_t i = 0; i < group.answers.size(); ++i)
            answers.push_back({group.respondentids[i], group.answers[i]});
    }
    parameters.removeDuplicates();
    std::map<int, QString> names;
    ado::Recordset named(
        u"select * from parameter where parametername in ("_s + toSqlTexts(parameters) + u')', *cnnMain);
    for (; !named.Eof(); named.MoveNext())
        names[named["paramid"].Value().toInt()] = named["parametername"].Text();
    ado::Recordset asked( // grouped by numbers alone, since comparing texts takes the store longer
        u"select questions.paramid, sdate, responquesindex.respondentid, count(*) as questions from customer "
        "cross join survey on survey.custid=customer.custid "
        "cross join responquesindex on responquesindex.surveyid=survey.surveyid "
        "cross join questions on questions.questionid=responquesindex.questionid "
        "where questions.Type<>0 and custname='"_s +
            customer + u"' and sdate between #" + toSqlDate(first->surveydate) + u"# and #" +
            toSqlDate(last->surveydate) +
            u"# group by survey.surveyid, responquesindex.respondentid, questions.paramid",
        *cnnMain);
    for (; !asked.Eof(); asked.MoveNext()) {
        const auto name = names.find(asked.FieldAt(0).Value().toInt());
        if (name == names.end())
            continue;
        PointBasis& point = basisOf(all, name->second, asked.FieldAt(1).Value().toDate());
        point.asked.insert(asked.FieldAt(2).Value().toInt());
        point.questions += asked.FieldAt(3).Value().toInt();
    }
    return all;
}

QString Estimate::intervalText() const {
    if (basis.isTooFew())
        return tooFew;
    return basis.isOfAll() ? u"all respondents asked"_s : twoDecimals(low()) + u" to " + twoDecimals(high());
}

Estimate estimateOf(const PointBasis& point, double value, const Figure& figure) {
    Estimate estimate{.basis = point.counts(), .value = value};
    if (estimate.hasInterval())
        estimate.margin = marginOf(point.answers, estimate.basis.asked, figure);
    return estimate;
}

QString basisText(const Basis& basis) {
    return u"%1 of %2, %3 of %4 rated"_s.arg(
        QString::number(basis.respondents), plural(basis.asked, u"respondent"_s),
        QString::number(basis.ratings), plural(basis.questions, u"question"_s));
}

QString answersText(const Basis& basis) {
    return plural(basis.respondents, u"respondent"_s) + u", "_s + plural(basis.ratings, u"rating"_s);
}

QString changeText(const PointBasis& earlier, const PointBasis& later, const Figure& figure) {
    std::vector<int> asked;
    std::set_intersection(earlier.asked.begin(), earlier.asked.end(), later.asked.begin(), later.asked.end(),
                          std::back_inserter(asked));
    const Difference difference =
        differenceOf(earlier.answers, later.answers, static_cast<int>(asked.size()), figure);
    if (difference.change == Change::TooFew)
        return tooFew;
    const QString value = (difference.value > 0 ? u"+"_s : QString()) + twoDecimals(difference.value);
    const QString respondents = plural(difference.respondents, u"respondent"_s);
    if (difference.change == Change::OfAll)
        return value + u", all "_s + respondents;
    return value + u", "_s + respondents +
           (difference.change == Change::MoreThanChance ? u": more than chance"_s : u": within chance"_s);
}
