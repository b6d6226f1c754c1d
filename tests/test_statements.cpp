// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/enginestest.h"

namespace {
/// Runs the program's statements that the dialect could misread on both engines. The stores' texts contain
/// words that the dialect translates (True, False, a date in marks, .order, delete * from), and its dates are
/// also valid with day and month exchanged: a misread statement finds other rows.
struct StatementTest : EnginesTest {
    void SetUp() override {
        EnginesTest::SetUp();
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
insert into reading (started, undone) values ('2026-01-01T10:00:00', null), ('2026-01-02T10:00:00', 'x')
insert into readingfile (readingid, filename, answers) values (1, 'a.xls', '[]'), (2, 'b.xls', null)
update setting set checkeduser=-1
insert into report(question) values ('it''s #01/01/2001# ; -- /* "x" False delete * from')
)"_s);
        for (const QString& statement : contents)
            for (ado::Connection* store : {&file, &server})
                store->session()->prepare({statement, {}}).step(); // the store's own SQL, not translated
    }
    /// The statements of a script, one per line; a line that begins with a blank continues the one before.
    static QStringList statements(QString script) {
        return script.replace(u"\n "_s, u" "_s).split(u'\n', Qt::SkipEmptyParts);
    }
    /// The rows, which are the same on both; in the same order where the statement asks for one.
    QStringList foundByBoth(const QString& sql) {
        return onBoth([&](ado::Connection& store) {
            QStringList all = rows(store, sql);
            if (!sql.contains(u"order by"))
                all.sort();
            return all;
        });
    }
    QString plan(const QString& sql) {
        QStringList steps = rows(file, u"explain query plan "_s + sql);
        for (QString& step : steps)
            step = step.section(u'|', 3);
        return steps.join(u"; "_s);
    }
};

/// Each row: the number of records found, whether they are opened for reading or writing, and whether tables
/// of the file may be scanned or only the rows found ("index") or the customer's own ("own").
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
1 read scan select * from (select custid as [a'b] from customer) as a where [a'b]=2 ;
2 read own select * from objquery where custname='True' and surveydate =#05/03/2002# and weightage <>0 and
 score <>0 order by parametername
1 read index select * from action where custname='True' and date>=#03/06/2002# and date <=#05/03/2002#
1 write index select * from actionplan where actionid=1 and date=# 05/03/2002# and customerid =1
1 read index select * from Customer where CustName='TRUE'
3 read scan select * from existingsurvey
2 read scan select distinct(parametername) from responquery where custname='true' order by parametername
2 read scan select distinct(question),type from param order by question
3 read own select * from objquery where custid=1 and weightage <>0 and score <>0 order by surveydate desc, score
3 read scan select * from scatter where sdate=#05/03/2002#
1 read scan select * from descquery where( question like '%zz%' or description like '%o%% LATE_')
1 read scan select custid as [a "b] from customer where custid == 2;
1 read scan select 1 from customer union all select 1 from parameter limit 1
2 read scan select reading.readingid, started, count(*) as files from reading join readingfile on
 readingfile.readingid=reading.readingid group by reading.readingid order by started desc
1 read scan select readingfile.*, started from readingfile join reading on reading.readingid=
 readingfile.readingid where readingfile.readingid in (select readingid from reading where undone is null)
1 read scan select count(*) from reading where started<'2026-01-02T00:00:00'
1 read scan select max(surveydate), min(score), sum(weightage) from feedbackobjective where surveyid=1
4 read scan select * from objquery where( question like '%fals%')
1 read scan select * from descquery where( question like '%late%' or description like '%late%' or 
 question like '%zz%' or description like '%zz%')
)"_s);
    ASSERT_EQ(table.size(), 34);
    for (const QString& row : table) {
        SCOPED_TRACE(row);
        const QString sql = row.section(u' ', 3);
        const auto lock = row.section(u' ', 1, 1) == u"write" ? ado::Recordset::Lock::Optimistic
                                                              : ado::Recordset::Lock::ReadOnly;
        for (ado::Connection* store : {&file, &server})
            EXPECT_EQ(failureOf([&] { ado::Recordset(sql, *store, lock); }), QString());
        EXPECT_EQ(foundByBoth(sql).size(), row.section(u' ', 0, 0).toInt());
        const QString reach = row.section(u' ', 2, 2);
        QString steps = plan(sql);
        const QString first = steps.section(u';', 0, 0);
        // The parameters are few in any store: only they may be scanned.
        EXPECT_TRUE(reach == u"scan" || !steps.remove(u"SCAN parameter;"_s).contains(u"SCAN")) << steps;
        EXPECT_TRUE(reach != u"own" || first.contains(u"customer") || first.contains(u"survey") ||
                    first.contains(u"respondent"))
            << steps;
    }
}

TEST_F(StatementTest, changesAreTheSame) {
    runOnBoth(
        u"insert into actionplan (customerid, [Date], [Action], Status) values (2, # 03/06/2002#, 'x', True)"_s);
    EXPECT_EQ(found(u"select [Date], Status from actionplan where actionid=4"_s),
              QStringList{u"QDate 06/03/2002|bool True"_s});
    runOnBoth(u"insert into search (sdate, [Desc], Id, custname) select surveydate, 'It''s', 2+1, custname "
              "from (select * from objquery where( question like '%FALS%')) as hits"_s);
    EXPECT_EQ(found(u"select * from search where ID=3 and search.desc='IT''S'"_s).size(), 4);
    runOnBoth(u"update readingfile set answers=null where readingid in "
              "(select readingid from reading where undone is null)"_s);
    EXPECT_EQ(found(u"select * from readingfile where answers is null"_s).size(), 2);
    runOnBoth(u"delete * from Survey where sdate=#03/05/2002# and custid=1"_s);
    EXPECT_EQ(found(u"select surveyid from survey order by surveyid"_s),
              QStringList({u"qlonglong 1"_s, u"qlonglong 3"_s}));
}

TEST_F(StatementTest, deletingACustomerOrParameterRemovesItsDependentsOnly) {
    runOnBoth(u"delete * from customer where custid=2"_s);
    for (ado::Connection* store : {&file, &server})
        EXPECT_EQ(add(*store, u"customer"_s, {{"custname", u"New"_s}}), 3) << "a number is given once";
    runOnBoth(u"delete * from customer where custid=1"_s);
    EXPECT_EQ(found(u"select respondentname from respondent"_s), QStringList());
    const std::pair<QString, int> left[] = {
        {u"survey"_s, 3},      {u"responquesindex"_s, 5}, {u"feedbackobjective"_s, 4},
        {u"responquery"_s, 0}, {u"objquery"_s, 0},        {u"existingsurvey"_s, 0},
        {u"scatter"_s, 0}};
    for (const auto& [name, count] : left)
        EXPECT_EQ(foundByBoth(u"select * from "_s + name).size(), count) << name;
    runOnBoth(u"delete * from parameter where paramid=1"_s);
    EXPECT_EQ(found(u"select questionid from questions"_s), QStringList{u"qlonglong 3"_s});
}

TEST_F(StatementTest, aQuestionIsNoLongerThanAFormTakes) {
    for (ado::Connection* store : {&file, &server})
        EXPECT_THROW(add(*store, u"questions"_s, {{"question", QString(256, u'x')}}), Failure);
}

TEST_F(StatementTest, theMatrixAndTheIndexUseScoreQuestionsOnly) {
    for (const QString& answers : {u"scatter"_s, u"scatterqry"_s}) {
        runOnBoth(u"update questions set Type=True where questionid=1"_s);
        EXPECT_EQ(found(u"select score from %1 order by score"_s.arg(answers)).size(), 4);
        runOnBoth(u"update questions set Type=False where questionid=1"_s); // three answers are there
        EXPECT_EQ(found(u"select score from "_s + answers), QStringList{u"qlonglong 8"_s});
    }
}
} // namespace
