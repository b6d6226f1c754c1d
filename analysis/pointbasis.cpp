// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/pointbasis.h"

#include "analysis/figures/ratings.h"
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

PointBases readPointBases(const QString& customer, const QStringList& parameters, const QDate& first,
                          const QDate& last) {
    PointBases all;
    const QString isMeant = u"custname='"_s + customer + u"' and parametername in (" +
                            toSqlTexts(parameters) + u") and %1 between #" + toSqlDate(first) + u"# and #" +
                            toSqlDate(last) + u'#';
    ado::Recordset answers(
        u"select parametername, feedbackobjective.respondentid, surveydate, weightage, score from customer "
        "cross join parameter "
        "cross join respondent on respondent.custid=customer.custid "
        "cross join questions on questions.paramid=parameter.paramid "
        "cross join feedbackobjective on feedbackobjective.respondentid=respondent.respondentid "
        "and feedbackobjective.questionid=questions.questionid where questions.Type<>0 and "_s +
            isMeant.arg(u"surveydate"_s),
        *cnnMain);
    const ado::Field weightage = answers["weightage"];
    const ado::Field score = answers["score"];
    for (; !answers.Eof(); answers.MoveNext())
        basisOf(all, answers.FieldAt(0).Text(), answers.FieldAt(2).Value().toDate())
            .answers.push_back({answers.FieldAt(1).Value().toInt(), {toRating(weightage), toRating(score)}});
    ado::Recordset asked(u"select parametername, sdate, respondentid, count(*) as questions from responquery "
                         "where Type<>0 and "_s +
                             isMeant.arg(u"sdate"_s) + u" group by parametername, sdate, respondentid",
                         *cnnMain);
    for (; !asked.Eof(); asked.MoveNext()) {
        PointBasis& point = basisOf(all, asked.FieldAt(0).Text(), asked.FieldAt(1).Value().toDate());
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
