// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

/// The program's deletes and every form of its selects that can be misread, run on a store whose names hold
/// what the dialect turns elsewhere (True, False, a date in marks, .order, delete * from) and whose dates are
/// another date with day and month exchanged: a statement that is misread finds or removes other rows.
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
insert into reportlinktable(respondentid, sdate) values (1, '2002-05-03'), (1, '2002-05-03'),
 (2, '2002-03-05')
insert into report(question) values ('it''s #01/01/2001# ; -- /* "x" False delete * from')
insert into reporttable(question) values ('False'), ('x')
insert into linetable values ('True', '#05/03/2002#', 5.5, '2002-05-03'),
 ('True', '#05/03/2002#', 0, '2002-03-05'), ('True', 'Speed', 2, '2002-05-03')
insert into surveydateorder values ('2002-05-03', 1), ('2002-05-03', 2), ('2002-03-05', 3)
insert into scattertable values ('True', 'Speed', 5, 8), ('True', '#05/03/2002#', 7, 3)
insert into search values (1, 'False', 'True', 'Survey (Objective)', '2002-05-03'),
 (1, 'Hurry', 'True', 'Improvement Plan', '2002-03-05')
insert into copydetails values (1, '2002-05-03', 1, 1)
insert into mscharttry values ('Speed'), ('SPEED'), ('x')
)"_s);
        for (const QString& statement : contents)
            runRaw(statement); // as the store keeps it, untouched by the dialect
    }
    /// The statements of a script, each ends with its line; a line that begins with a blank goes on.
    static QStringList statements(QString script) {
        return script.replace(u"\n "_s, u" "_s).split(u'\n', Qt::SkipEmptyParts);
    }
};

/// Each row: how many records are found, whether they are opened to be read or written, the statement.
TEST_F(StatementTest, selectsFindTheirRows) {
    const QStringList table = statements(uR"(
1 read select * from customer where custname ='True'
1 write select * from customer where CustName='TRUE'
1 write select * from respondent where respondentname='a.order' and custid=1 and
 respondentdesignation='Head'
1 write select * from parameter where parametername='#05/03/2002#'
1 write select * from questions where question='False' and Paramid=2
1 read select * from questions where Question='x; delete * from y' and paramid=1
1 read select * from custresp where custid=1 and respondentname='a.order'
1 read select * from existingsurvey where sdate=#05/03/2002# and custname='True' and
 respondentname='a.order'
1 read select distinct(sdate) from existingsurvey where custid=1 and respondentid=1 and sdate<>#05/03/2002#
  order by sdate asc
2 read select distinct(question),type from param where parametername='#05/03/2002#'
1 write select * from survey where sdate=#03/05/2002# and custid=1
2 write select * from ResponQuesIndex where respondentid=1 and ResponQuesIndex.order=1
3 read select * from responquery where respondentid=1 and surveyid=1 order by responquery.order
3 read select * from responquery where custid=1 and respondentid=1 and sdate=#05/03/2002# order by
 parametername
1 read select * from responquery where parametername='#05/03/2002#' and question='False' and respondentid=1
 and custid=1 and sdate=#05/03/2002#
2 read select distinct(sdate) as surveydate from responquery where custid=1
1 read select * from setting where setting='UserDefine' and checkeduser=True
1 write select * from setting where setting='UserDefine'
1 write select * from log where custname='True' and respname='a.order' and xlsfilename='12.xls' and
 sdate=#05/03/2002#
1 write select * from log where respid=1 and sdate=#03/05/2002#
1 read select * from objquery where custid=1 and respondentid=1 and surveydate < #05/03/2002# and
 questionid=1 order by surveydate asc
1 write select * from feedbackobjective where questionid=1 and respondentid=1 and surveydate=#05/03/2002#
3 read select * from scatterqry where custname='True' and surveydate between
 #03/06/2002# and  # 05/03/2002#
2 read select distinct(parametername),surveydate from scatterqry where parametername='#05/03/2002#' and
 surveydate between #03/05/2002# and # 05/03/2002# and custname='True'
1 read select * from report where question='it''s #01/01/2001# ; -- /* "x" False delete * from'
1 read select * from (select custid as [a'b] from customer) where [a'b]=2 ;
1 read select * from linetable where parameter='#05/03/2002#' and sindex <> 0 order by sdate asc
1 read select distinct(sdate) from linetable where sindex <> 0 order by sdate asc
1 read select * from surveydateorder where sdate=#03/05/2002#
2 read select distinct(parameter) from mscharttry
2 read select distinct(parametername) from scatter where custname='True' and sdate =#05/03/2002#
2 read select CustName,Parameter,Wt,Sc from ScatterTable Order by PARAMETER
2 read select * from objquery where custname='True' and surveydate =#05/03/2002# and weightage <>0 and
 score <>0 order by parametername
1 read select * from descquery where custname='True' and surveydate >=#03/06/2002# and surveydate
 <=#05/03/2002# order by parametername
1 read select * from action where custname='True' and date>=#03/06/2002# and date <=#05/03/2002#
1 write select * from actionplan where actionid=1 and date=# 05/03/2002# and customerid =1
2 read select * from action where customerid=1 order by date
4 read select * from objquery where( question like '%fals%')
1 read select * from descquery where( question like '%late%' or description like '%late%' or  question like
 '%zz%' or description like '%zz%')
3 read select * from action where( action like '%%')
1 read select * from search where tablename='Survey (Objective)' and ID=1
)"_s);
    ASSERT_EQ(table.size(), 41);
    for (const QString& row : table) {
        const auto lock = row.section(u' ', 1, 1) == u"write" ? ado::Recordset::Lock::Optimistic
                                                              : ado::Recordset::Lock::ReadOnly;
        ado::Recordset found;
        EXPECT_NO_THROW(found.Open(row.section(u' ', 2), *cnnMain, lock)) << row.toStdString();
        EXPECT_EQ(found.IsOpen() ? found.RecordCount() : -1, row.section(u' ', 0, 0).toInt())
            << row.toStdString();
    }
}

/// Each row: how many records go, the statement.
TEST_F(StatementTest, everyDeleteRemovesItsRows) {
    const QStringList table = statements(uR"(
1 delete * from customer where custid=1
1 delete * from respondent where respondentid=3
1 delete * from parameter where paramid=1
1 delete * from Questions where questionid=3
1 delete * from actionplan where customerid=1 and date=#03/05/2002#
1 delete * from log where xlsfilename='13.xls'
1 delete * from log where xlsfilename='a*b.xls'
1 delete * from log where surveyid=1 and respid=1
1 delete * from Survey where sdate=#05/03/2002# and custid=1 and surveyid=1
2 delete * from survey where custid=1
3 delete * from responquesindex where surveyid=1 and respondentid=1
1 delete * from responquesindex where respondentid=1 and surveyid=2
1 delete * from ResponQuesIndex where respondentid=1 and questionid=2 and ResponQuesIndex.order=2
2 delete * from reportlinktable where sdate=#05/03/2002# and respondentid=1
2 delete * from feedbackobjective where surveyid=1 and respondentid=1 and surveydate=#05/03/2002#
1 delete * from feedbackdescriptive where surveyid=1 and respondentid=1 and surveydate=#05/03/2002#
1 delete * from feedbackobjective where surveyid=2 and respondentid=1
1 delete * from copydetails
3 delete * from reportlinktable
3 delete * from linetable
3 delete * from surveydateorder
2 delete * from scattertable
1 delete * from report
2 delete * from reporttable
2 delete * from search
)"_s);
    ASSERT_EQ(table.size(), 25);
    for (const QString& row : table) {
        cnnMain->BeginTrans();
        run(row.section(u' ', 1));
        EXPECT_EQ(value(u"select changes()"_s), row.section(u' ', 0, 0)) << row.toStdString();
        cnnMain->RollbackTrans();
    }
}

} // namespace
