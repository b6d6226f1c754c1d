// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

class SchemaTest : public StoreTest {
protected:
    static QString plan(const QString& sql) {
        QStringList steps = rows(u"explain query plan "_s + sql);
        for (QString& step : steps)
            step = step.section(u'|', 3);
        return steps.join(u"; "_s);
    }
};

TEST_F(SchemaTest, aDeletedCustomerOrParameterTakesWhatHangsOnItAndNothingElse) {
    const int acme = addCustomer(u"Acme"_s);
    const int other = addCustomer(u"Other"_s);
    const int ann = addRespondent(acme, u"Ann"_s);
    addRespondent(other, u"Otto"_s);
    const int price = addParameter(u"Price"_s);
    const int fair = addQuestion(price, u"Is it fair?"_s);
    const int survey = addSurvey(acme, {2002, 3, 15});
    addQuestionnaire(ann, survey, {fair});
    addScore(ann, fair, survey, {2002, 3, 15}, 5, 8);
    EXPECT_EQ(rows(u"select custname, parametername, surveydate, weightage, score from scatterqry"_s),
              QStringList{u"Acme|Price|15/03/2002|5|8"_s});
    EXPECT_EQ(value(u"select count(*) from existingsurvey where custname='ACME'"_s), u"1"_s);

    run(u"delete * from customer where custid="_s + QString::number(acme));
    EXPECT_EQ(rows(u"select respondentname from respondent"_s), QStringList{u"Otto"_s});
    for (const QString& kept : {u"survey"_s, u"responquesindex"_s, u"feedbackobjective"_s})
        EXPECT_EQ(rows(u"select * from "_s + kept).size(), 1);
    for (const QString& hidden : {u"responquery"_s, u"objquery"_s, u"existingsurvey"_s, u"scatter"_s})
        EXPECT_EQ(rows(u"select * from "_s + hidden).size(), 0);
    run(u"delete * from parameter where paramid="_s + QString::number(price));
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"0"_s);
}

TEST_F(SchemaTest, defaultsAndNullsAreAsTheFormsCountOnThem) {
    add(u"log"_s, {{"custname", u"Acme"_s}});
    add(u"log"_s, {{"custname", u"Acme"_s}, {"Status", ado::Null}});
    EXPECT_EQ(rows(u"select Status from log"_s), (QStringList{u"False"_s, u""_s}));
    add(u"feedbackdescriptive"_s, {{"respondentid", 1}});
    EXPECT_EQ(rows(u"select weightage, Description from feedbackdescriptive"_s), QStringList{u"0|"_s});
    EXPECT_EQ(rows(u"select setting, checkeduser from setting"_s), QStringList{u"UserDefine|False"_s});
    EXPECT_THROW(add(u"questions"_s, {{"question", QString(256, u'x')}}), ado::Failure);
}

TEST_F(SchemaTest, theHotStatementsAreServedByIndexes) {
    const QString statements[] = {
        u"select * from customer where custname ='Acme'"_s,
        u"select * from respondent where custid=7"_s,
        u"select * from questions where question='Q' and Paramid=3"_s,
        u"select * from custresp where respondentname='Ann' and custid=7"_s,
        u"select * from  param where question='Q' and parametername='P'"_s,
        u"select * from survey where sdate=#03/15/2002# and custid=7"_s,
        u"select * from existingsurvey where sdate=#03/15/2002# and custname='A' and respondentname='R'"_s,
        u"select * from responquery where respondentid=3 and surveyid=9 order by responquery.order"_s,
        u"select * from responquery where  respondentid=3 and custid=7 and sdate=#03/15/2002#"_s,
        u"select * from responquery where question='Q' and custid=7 and sdate=#03/15/2002#"_s,
        u"select * from responquery where parametername='P' and question='Q' and respondentid=3 and custid=7 "
        u"and sdate=#03/15/2002#"_s,
        u"select distinct(parametername) from responquery where custname='Acme'"_s,
        u"select distinct(sdate) as surveydate from responquery where custid=7"_s,
        u"select * from ResponQuesIndex where respondentid=3 and ResponQuesIndex.order=2"_s,
        u"select * from feedbackobjective where respondentid=3 and questionid=4 and surveydate=#03/15/2002#"_s,
        u"select * from feedbackdescriptive where respondentid=3 and questionid=4 and "
        u"surveydate=#03/15/2002#"_s,
        u"select * from objquery where custid=7 and respondentid=3 and surveydate < #03/15/2002# and "
        u"questionid=4"_s,
        u"select * from scatterqry where custname='A' and surveydate between #03/15/2002# and #03/15/2003#"_s,
        u"select * from scatterqry where parametername='P' and custname='A' and surveydate =#03/15/2002#"_s,
        u"select distinct(parametername) from scatter where custname='A' and sdate =#03/15/2002#"_s,
        u"select * from log where custname='A' and respid=3 and sdate=#03/15/2002#"_s,
        u"select * from log where xlsfilename='1.xls'"_s,
        u"select * from action where custname='A' and date =#03/15/2002#"_s,
        u"select * from linetable where parameter='P' and sindex <> 0 order by sdate asc"_s,
        u"select * from search where tablename='T' and ID=4"_s,
        u"select * from reportlinktable where questionid=4 and respondentid=3 "_s,
    };
    for (const QString& sql : statements) {
        // The parameters are few whatever the store holds: they alone may be gone through.
        EXPECT_FALSE(plan(sql).remove(u"SCAN parameter;"_s).contains(u"SCAN")) << sql.toStdString();
    }
    // A condition on the customer is where these must begin: their cost follows the customer's own rows.
    for (const int i : {8, 9, 10, 11, 12, 16, 17, 18, 19}) {
        const QString first = plan(statements[i]).section(u';', 0, 0);
        EXPECT_TRUE(first.contains(u"customer") || first.contains(u"survey") || first.contains(u"respondent"))
            << statements[i].toStdString() << "\n  " << first.toStdString();
    }
}

} // namespace
