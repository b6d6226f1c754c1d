// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

class SchemaTest : public StoreTest {
protected:
    static QString plan(const QString& sql) {
        ado::Recordset explained;
        explained.Open(u"explain query plan "_s + sql, *cnnMain);
        QStringList steps;
        for (; !explained.Eof(); explained.MoveNext())
            steps << explained["detail"].Text();
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
    for (const char16_t* kept : {u"survey", u"responquesindex", u"feedbackobjective"})
        EXPECT_EQ(value(u"select count(*) from "_s + QString::fromUtf16(kept)), u"1"_s);
    for (const char16_t* hidden : {u"responquery", u"objquery", u"existingsurvey", u"scatter"})
        EXPECT_EQ(value(u"select count(*) from "_s + QString::fromUtf16(hidden)), u"0"_s);
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
    const char16_t* statements[] = {
        u"select * from customer where custname ='Acme'",
        u"select * from respondent where custid=7",
        u"select * from questions where question='Q' and Paramid=3",
        u"select * from custresp where respondentname='Ann' and custid=7",
        u"select * from  param where question='Q' and parametername='P'",
        u"select * from survey where sdate=#03/15/2002# and custid=7",
        u"select * from existingsurvey where sdate=#03/15/2002# and custname='A' and respondentname='R'",
        u"select * from responquery where respondentid=3 and surveyid=9 order by responquery.order",
        u"select * from responquery where  respondentid=3 and custid=7 and sdate=#03/15/2002#",
        u"select * from responquery where question='Q' and custid=7 and sdate=#03/15/2002#",
        u"select * from responquery where parametername='P' and question='Q' and respondentid=3 and custid=7 "
        u"and "
        u"sdate=#03/15/2002#",
        u"select distinct(parametername) from responquery where custname='Acme'",
        u"select distinct(sdate) as surveydate from responquery where custid=7",
        u"select * from ResponQuesIndex where respondentid=3 and ResponQuesIndex.order=2",
        u"select * from feedbackobjective where respondentid=3 and questionid=4 and surveydate=#03/15/2002#",
        u"select * from feedbackdescriptive where respondentid=3 and questionid=4 and "
        u"surveydate=#03/15/2002#",
        u"select * from objquery where custid=7 and respondentid=3 and surveydate < #03/15/2002# and "
        u"questionid=4",
        u"select * from scatterqry where custname='A' and surveydate between #03/15/2002# and #03/15/2003#",
        u"select * from scatterqry where parametername='P' and custname='A' and surveydate =#03/15/2002#",
        u"select distinct(parametername) from scatter where custname='A' and sdate =#03/15/2002#",
        u"select * from log where custname='A' and respid=3 and sdate=#03/15/2002#",
        u"select * from log where xlsfilename='1.xls'",
        u"select * from action where custname='A' and date =#03/15/2002#",
        u"select * from linetable where parameter='P' and sindex <> 0 order by sdate asc",
        u"select * from search where tablename='T' and ID=4",
        u"select * from reportlinktable where questionid=4 and respondentid=3 ",
    };
    for (const char16_t* sql : statements) {
        // The parameters are few whatever the store holds: they alone may be gone through.
        const QString steps = plan(QString::fromUtf16(sql)).remove(u"SCAN parameter;"_s);
        EXPECT_FALSE(steps.contains(u"SCAN"))
            << QString::fromUtf16(sql).toStdString() << "\n  " << steps.toStdString();
    }
    // A condition on the customer is where these must begin: their cost follows the customer's own rows.
    for (const int i : {8, 9, 10, 11, 12, 16, 17, 18, 19}) {
        const QString steps = plan(QString::fromUtf16(statements[i]));
        const QString first = steps.section(u';', 0, 0);
        EXPECT_TRUE(first.contains(u"customer") || first.contains(u"survey") || first.contains(u"respondent"))
            << QString::fromUtf16(statements[i]).toStdString() << "\n  " << steps.toStdString();
    }
}

} // namespace
