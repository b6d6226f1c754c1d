// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/store.h"

/// custid of the customer with 4 respondents and 20 surveys; all others have 2 and 5.
inline constexpr int measured = 7;

inline void run(const QString& sql) {
    cnnMain->Execute(sql);
}

/// The beginning of a statement over the numbers from 1 on.
inline QString numbers(int count) {
    using namespace Qt::StringLiterals;
    return u"with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) "_s.arg(count);
}

/// Fills the empty store in a file that cnnMain has open: 500 answers and more for each customer, five
/// questions for each parameter.
inline void buildStore(int customers, int parameters = 40) {
    using namespace Qt::StringLiterals;

    const QString many = u"case when custid = %1 then "_s.arg(measured);
    cnnMain->BeginTrans();
    run(u"insert into customer (custid, custname, Address) "_s + numbers(customers) +
        u"select i, 'Customer ' || i, ' ' from n");
    run(u"insert into respondent (respondentid, custid, respondentname) "_s + numbers(4) +
        u"select custid * 10 + i, custid, 'Respondent ' || i from customer, n where i <= " + many +
        u"4 else 2 end");
    run(u"insert into parameter (paramid, parametername) "_s + numbers(parameters) +
        u"select i, 'Parameter ' || i from n");
    run(u"insert into questions (questionid, paramid, question, Type) "_s + numbers(5) +
        u"select paramid * 5 - 5 + i, paramid, 'Question ' || i || ' of ' || parametername, True from "
        u"parameter, n");
    run(u"insert into survey (surveyid, custid, sdate) "_s + numbers(20) +
        u"select custid * 100 + i, custid, date('2020-01-01', '+' || (i * 30) || ' days') from customer, n "
        u"where i <= " +
        many + u"20 else 5 end order by i");
    const QString asked =
        u" from survey join respondent on respondent.custid = survey.custid join questions on "
        u"questionid <= 50 order by sdate, surveyid, respondentid, questionid"_s;
    run(u"insert into responquesindex select respondentid, questionid, surveyid, questionid"_s + asked);
    run(u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage) "
        "select respondentid, questionid, surveyid, sdate, 1 + abs(random()) % 10, 1 + abs(random()) % 5"_s +
        asked);
    cnnMain->CommitTrans();
}
