// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answerexport.h"

#include "core/store/store.h"
#include "platform/ado/forwardrows.h"
#include "platform/tables/tablefile.h"

#include <algorithm>
#include <limits>
#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Columns of the select.
enum Column {
    Customer,
    Custid,
    SurveyDate,
    Respondent,
    Respondentid,
    Part, ///< of the rows of one respondent and date: first the questionnaire, then the answers
    Questionid,
    Place, ///< in the questionnaire, in its rows only
    Designation,
    Parameter,
    Question,
    IsScore,
    Weightage,
    Score,
    Words
};
constexpr int placePart = 0;

/// The condition on customers and dates. The sum keeps a file from starting at the list of customers, so that
/// it reads them in the order of their names and sorts the rows of one customer at a time only.
QString chosen(const ExportChoice& choice, const QString& dateField) {
    QString condition =
        dateField + u" between #" + toSqlDate(choice.first) + u"# and #" + toSqlDate(choice.last) + u'#';
    QStringList custids;
    for (const int custid : choice.custids)
        custids << QString::number(custid);
    if (!custids.isEmpty())
        condition += u" and customer.custid + 0 in ("_s + custids.join(u',') + u')';
    return condition;
}

/// Each arm starts at the customer and goes along the indexes (CROSS JOIN keeps that order), so a file merges
/// the three and never holds more than one customer's rows.
QString selectOf(const ExportChoice& choice) {
    return u"select customer.custname, customer.custid, survey.sdate, respondent.respondentname, "
           "respondent.respondentid, 0 as part, responquesindex.questionid, responquesindex.Order, "
           "null as designation, null as parametername, null as question, 0 as isscore, 0 as weightage, "
           "0 as score, null as answer "
           "from customer "
           "cross join survey on survey.custid=customer.custid "
           "cross join responquesindex on responquesindex.surveyid=survey.surveyid "
           "cross join respondent on respondent.respondentid=responquesindex.respondentid "
           "where "_s +
           chosen(choice, u"survey.sdate"_s) +
           u" union all select customer.custname, customer.custid, feedbackobjective.surveydate, "
           "respondent.respondentname, respondent.respondentid, 1, questions.questionid, 0, "
           "respondent.respondentdesignation, parameter.parametername, questions.question, 1, "
           "feedbackobjective.weightage, feedbackobjective.score, null "
           "from customer "
           "cross join respondent on respondent.custid=customer.custid "
           "cross join feedbackobjective on feedbackobjective.respondentid=respondent.respondentid "
           "cross join questions on questions.questionid=feedbackobjective.questionid "
           "cross join parameter on parameter.paramid=questions.paramid "
           "where questions.Type<>0 and " +
           chosen(choice, u"feedbackobjective.surveydate"_s) +
           u" union all select customer.custname, customer.custid, feedbackdescriptive.surveydate, "
           "respondent.respondentname, respondent.respondentid, 1, questions.questionid, 0, "
           "respondent.respondentdesignation, parameter.parametername, questions.question, 0, "
           "feedbackdescriptive.weightage, 0, feedbackdescriptive.Description "
           "from customer "
           "cross join respondent on respondent.custid=customer.custid "
           "cross join feedbackdescriptive on feedbackdescriptive.respondentid=respondent.respondentid "
           "cross join questions on questions.questionid=feedbackdescriptive.questionid "
           "cross join parameter on parameter.paramid=questions.paramid "
           "where questions.Type=0 and " +
           chosen(choice, u"feedbackdescriptive.surveydate"_s) + u" order by 1, 2, 3, 4, 5, 6";
}

QVariant markOf(const ado::ForwardRows& stored, Column column) {
    const int mark = stored.number(column);
    return mark == 0 ? QVariant() : mark;
}

QVariantList cellsOf(const ado::ForwardRows& stored) {
    const bool isScore = stored.number(IsScore) != 0;
    return {stored.text(Customer),
            stored.text(Respondent),
            stored.text(Designation),
            stored.date(SurveyDate),
            stored.text(Parameter),
            stored.text(Question),
            isScore ? u"Score"_s : u"Descriptive"_s,
            markOf(stored, Weightage),
            markOf(stored, Score),
            stored.text(Words)};
}

/// The answers of one respondent on one date, and where the questions stand in the questionnaire.
class RespondentAnswers {
public:
    /// Whether the row belongs to another respondent or date than those before.
    bool ends(const ado::ForwardRows& stored) const {
        return stored.number(Respondentid) != respondentid || stored.date(SurveyDate) != date;
    }
    void begin(const ado::ForwardRows& stored) {
        respondentid = stored.number(Respondentid);
        date = stored.date(SurveyDate);
        places.clear();
        answers.clear();
    }
    void add(const ado::ForwardRows& stored) {
        const int questionid = stored.number(Questionid);
        if (stored.number(Part) == placePart) {
            const int place = stored.number(Place);
            const auto [known, isNew] = places.try_emplace(questionid, place);
            known->second = std::min(known->second, place);
        } else {
            const auto known = places.find(questionid);
            answers.push_back({known == places.end() ? last : known->second, questionid, cellsOf(stored)});
        }
    }
    /// Returns the number of rows.
    int writeTo(tables::TableFile& file) {
        std::stable_sort(answers.begin(), answers.end(), [](const Answer& a, const Answer& b) {
            return std::pair(a.place, a.questionid) < std::pair(b.place, b.questionid);
        });
        for (const Answer& answer : answers)
            file.addRow(answer.cells);
        return int(answers.size());
    }

private:
    static constexpr int last = std::numeric_limits<int>::max();
    struct Answer {
        int place;
        int questionid;
        QVariantList cells;
    };

    int respondentid = 0;
    QDate date;
    std::map<int, int> places; ///< by question
    std::vector<Answer> answers;
};

} // namespace

QStringList exportHeadings() {
    return {u"Customer"_s, u"Respondent"_s, u"Designation"_s, u"Survey Date"_s, u"Parameter"_s,
            u"Question"_s, u"Kind"_s,       u"Weightage"_s,   u"Score"_s,       u"Answer"_s};
}

int exportAnswers(const ExportChoice& choice, tables::TableFile& file, const ExportStep& step) {
    constexpr int piece = 1000; // answers
    ado::ForwardRows stored(selectOf(choice), *cnnMain);
    RespondentAnswers group;
    int custid = 0;
    int written = 0;
    int nextPiece = piece;
    while (stored.next()) {
        if (group.ends(stored)) {
            written += group.writeTo(file);
            group.begin(stored);
            const bool isNext = stored.number(Custid) != custid;
            if ((isNext || written >= nextPiece) && !step(stored.text(Customer), isNext))
                return -1;
            if (written >= nextPiece)
                nextPiece = written + piece;
            custid = stored.number(Custid);
        }
        group.add(stored);
    }
    return written + group.writeTo(file);
}
