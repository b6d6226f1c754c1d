// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

/// Runs the program's selects that the dialect could misread. The store's texts contain words
/// that the dialect translates (True, False, a date in marks, .order, delete * from), and its dates are also
/// valid with day and month exchanged: a misread statement finds other rows.
class StatementTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        const QStringList contents = statements(uR"(
insert into customer values (1, 'True', ' ', null, null), (2, 'Other', ' ', null, null)
insert into respondent values (1, 1, 'a.order', 'Head', 'a@b.c'), (2, 1, 'Bob', '', ''),
 (3, 2, 'a.order', '', '')
insert into parameter values (1, '#05/03/2002#'), (2, 'Speed')
insert into questions values (1, 'False', -1, 1), (2, 'x; delete * from y', 0, 1), (3, 'False', -1, 2)
insert into survey values (1, '2002-05-03', 1), (2, '2002-03-05', 1), (3, '2002-05-03', 2)
insert into responquesindex values (1, 1, 1, 1), (1, 2, 1, 2), (1, 3, 1, 3), (1, 1, 2, 1), (2, 1, 1, 1)
insert into feedbackobjective values (1, 1, 1, 1, '2002-05-03', 7, 0), (2, 1, 3, 1, '2002-05-03', 8, 5),
 (3, 1, 1, 2, '2002-03-05', 4, 4), (4, 2, 1, 1, '2002-05-03', 9, 9)
insert into feedbackdescriptive values (1, 1, 2, 1, '2002-05-03', 'Too LATE?', 3),
 (2, 1, 2, 2, '2002-03-05', 'fine', 0)
insert into log values ('True', 'a.order', 1, '12.xls', '2002-05-03', 1, -1),
 ('True', 'a.order', 1, '13.xls', '2002-03-05', 2, 0), ('Other', 'Bob', 9, 'a*b.xls', '2002-05-03', 3, 0)
insert into actionplan values (1, 1, '2002-05-03', 'Be late no more', '2002-06-01', 0),
 (2, 1, '2002-03-05', 'Hurry', null, -1), (3, 2, '2002-05-03', 'Too late', null, 0)
update setting set checkeduser=-1
insert into report(question) values ('it''s #01/01/2001# ; -- /* "x" False delete * from')
)"_s);
        for (const QString& statement : contents)
            runRaw(statement); // the store's own SQL, not translated
    }
    /// The statements of a script, one per line; a line that begins with a blank continues the one before.
    static QStringList statements(QString script) {
        return script.replace(u"\n "_s, u" "_s).split(u'\n', Qt::SkipEmptyParts);
    }
    static QString plan(const QString& sql) {
        QStringList steps = rows(u"explain query plan "_s + sql);
        for (QString& step : steps)
            step = step.section(u'|', 3);
        return steps.join(u"; "_s);
    }
};

/// Each row: the number of records found, whether they are opened for reading or writing, and whether tables
/// may be scanned or only the rows found ("index") or the customer's own ("own").
TEST_F(StatementTest, selectsFindTheirRows) {
    const QStringList table = statements(uR"(
1 write index select * from respondent where respondentname='a.order' and custid=1 and
 respondentdesignation='Head'
1 read index select * from questions where Question='x; delete * from y' and paramid=1
1 read index select * from existingsurvey where sdate=#05/03/2002# and custname='True' and
 respondentname='a.order'
2 write index select * from ResponQuesIndex where respondentid=1 and ResponQuesIndex.order=1
3 read index select * from responquery where respondentid=1 and surveyid=1 order by responquery.order
3 read own select * from responquery where custid=1 and respondentid=1 and sdate=#05/03/2002# order by
 parametername
1 read own select * from responquery where parametername='#05/03/2002#' and question='False' and
 respondentid=1 and custid=1 and sdate=#05/03/2002#
1 read scan select * from setting where setting='UserDefine' and checkeduser=True
1 read index select * from log where xlsfilename='a*b.xls'
1 read own select * from objquery where custid=1 and respondentid=1 and surveydate < #05/03/2002# and
 questionid=1 order by surveydate asc
1 write index select * from feedbackobjective where questionid=1 and respondentid=1 and
 surveydate=#05/03/2002#
1 read index select * from feedbackdescriptive where respondentid=1 and questionid=2 and
 surveydate=#03/05/2002#
3 read own select * from scatterqry where custname='True' and surveydate between
 #03/06/2002# and  # 05/03/2002#
2 read own select distinct(parametername),surveydate from scatterqry where
 parametername='#05/03/2002#' and surveydate between #03/05/2002# and # 05/03/2002# and custname='True'
1 read scan select * from report where question='it''s #01/01/2001# ; -- /* "x" False delete * from'
1 read scan select * from (select custid as [a'b] from customer) where [a'b]=2 ;
2 read own select * from objquery where custname='True' and surveydate =#05/03/2002# and weightage <>0 and
 score <>0 order by parametername
1 read index select * from action where custname='True' and date>=#03/06/2002# and date <=#05/03/2002#
1 write index select * from actionplan where actionid=1 and date=# 05/03/2002# and customerid =1
4 read scan select * from objquery where( question like '%fals%')
1 read scan select * from descquery where( question like '%late%' or description like '%late%' or 
 question like '%zz%' or description like '%zz%')
)"_s);
    ASSERT_EQ(table.size(), 21);
    for (const QString& row : table) {
        SCOPED_TRACE(row.toStdString());
        const QString sql = row.section(u' ', 3);
        const auto lock = row.section(u' ', 1, 1) == u"write" ? ado::Recordset::Lock::Optimistic
                                                              : ado::Recordset::Lock::ReadOnly;
        ado::Recordset found;
        EXPECT_NO_THROW(found.Open(sql, *cnnMain, lock));
        EXPECT_EQ(found.IsOpen() ? found.RecordCount() : -1, row.section(u' ', 0, 0).toInt());
        const QString reach = row.section(u' ', 2, 2);
        QString steps = plan(sql);
        const QString first = steps.section(u';', 0, 0);
        // The parameters are few in any store: only they may be scanned.
        EXPECT_TRUE(reach == u"scan" || !steps.remove(u"SCAN parameter;"_s).contains(u"SCAN"))
            << steps.toStdString();
        EXPECT_TRUE(reach != u"own" || first.contains(u"customer") || first.contains(u"survey") ||
                    first.contains(u"respondent"))
            << steps.toStdString();
    }
}

TEST_F(StatementTest, deletingACustomerOrParameterRemovesItsDependentsOnly) {
    run(u"delete * from customer where custid=2"_s);
    EXPECT_EQ(addCustomer(u"New"_s), 3) << "a number is given once";
    run(u"delete * from customer where custid=1"_s);
    EXPECT_EQ(rows(u"select respondentname from respondent"_s), QStringList());
    const std::pair<QString, int> left[] = {
        {u"survey"_s, 3},      {u"responquesindex"_s, 5}, {u"feedbackobjective"_s, 4},
        {u"responquery"_s, 0}, {u"objquery"_s, 0},        {u"existingsurvey"_s, 0},
        {u"scatter"_s, 0}};
    for (const auto& [name, count] : left)
        EXPECT_EQ(rows(u"select * from "_s + name).size(), count) << name.toStdString();
    run(u"delete * from parameter where paramid=1"_s);
    EXPECT_EQ(rows(u"select questionid from questions"_s), QStringList{u"3"_s});
}

TEST_F(StatementTest, aQuestionIsNoLongerThanAFormTakes) {
    EXPECT_THROW(add(u"questions"_s, {{"question", QString(256, u'x')}}), Failure);
}

TEST_F(StatementTest, theMatrixAndTheIndexUseScoreQuestionsOnly) {
    for (const QString& answers : {u"scatter"_s, u"scatterqry"_s}) {
        run(u"update questions set Type=True where questionid=1"_s);
        EXPECT_EQ(rows(u"select score from "_s + answers).size(), 4);
        run(u"update questions set Type=False where questionid=1"_s); // three answers are there
        EXPECT_EQ(rows(u"select score from "_s + answers), QStringList{u"8"_s});
    }
}

} // namespace
