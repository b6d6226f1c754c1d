// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

/// Every form of statement that the program gives its store, run on a store whose names hold what the dialect
/// turns elsewhere (True, False, a date in marks, .order, delete * from) and whose dates are another date
/// with day and month exchanged: a statement that is misread finds or removes other rows.
class StatementTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        for (
            const char16_t* statement : {
                u"insert into customer values (1, 'True', ' ', null, null), (2, 'Other', ' ', null, null)",
                u"insert into respondent values (1, 1, 'a.order', 'Head', 'a@b.c'), (2, 1, 'Bob', '', ''), "
                u"(3, 2, 'a.order', '', '')",
                u"insert into parameter values (1, '#05/03/2002#'), (2, 'Speed')",
                u"insert into questions values (1, 'False', -1, 1), (2, 'x; delete * from y', 0, 1), "
                u"(3, 'False', -1, 2)",
                u"insert into survey values (1, '2002-05-03', 1), (2, '2002-03-05', 1), (3, '2002-05-03', 2)",
                u"insert into responquesindex values (1, 1, 1, 1), (1, 2, 1, 2), (1, 3, 1, 3), (1, 1, 2, 1), "
                u"(2, 1, 1, 1)",
                u"insert into feedbackobjective values (1, 1, 1, 1, '2002-05-03', 7, 0), "
                u"(2, 1, 3, 1, '2002-05-03', 8, 5), (3, 1, 1, 2, '2002-03-05', 4, 4), "
                u"(4, 2, 1, 1, '2002-05-03', 9, 9)",
                u"insert into feedbackdescriptive values (1, 1, 2, 1, '2002-05-03', 'Too LATE?', 3), "
                u"(2, 1, 2, 2, '2002-03-05', 'fine', 0)",
                u"insert into log values ('True', 'a.order', 1, '12.xls', '2002-05-03', 1, -1), "
                u"('True', 'a.order', 1, '13.xls', '2002-03-05', 2, 0), ('Other', 'Bob', 9, 'b.xls', "
                u"'2002-05-03', 3, 0)",
                u"insert into actionplan values (1, 1, '2002-05-03', 'Be late no more', '2002-06-01', 0), "
                u"(2, 1, '2002-03-05', 'Hurry', null, -1), (3, 2, '2002-05-03', 'Too late', null, 0)",
                u"insert into standardmessage values (1, 'Dear'), (2, 'Hello')",
                u"update setting set checkeduser=True",
                u"insert into reportlinktable values (1, 'True', 1, 'a.order', '2002-05-03', 1, 'False', 1, "
                u"'#05/03/2002#', -1, null, null), (1, 'True', 1, 'a.order', '2002-05-03', 3, 'False', 2, "
                u"'Speed', -1, null, null), (2, 'Other', 3, 'a.order', '2002-03-05', 1, 'False', 1, "
                u"'#05/03/2002#', -1, 5, 5)",
                u"insert into report(question) values ('False')",
                u"insert into reporttable(question) values ('False'), ('x')",
                u"insert into linetable values ('True', '#05/03/2002#', 5.5, '2002-05-03'), "
                u"('True', '#05/03/2002#', 0, '2002-03-05'), ('True', 'Speed', 2, '2002-05-03')",
                u"insert into surveydateorder values ('2002-05-03', 1), ('2002-05-03', 2), ('2002-03-05', 3)",
                u"insert into scattertable values ('True', 'Speed', 5, 8), ('True', '#05/03/2002#', 7, 3)",
                u"insert into search values (1, 'False', 'True', 'Survey (Objective)', '2002-05-03'), "
                u"(1, 'Hurry', 'True', 'Improvement Plan', '2002-03-05')",
                u"insert into copydetails values (1, '2002-05-03', 1, 1)",
                u"insert into mscharttry values ('Speed'), ('SPEED'), ('x')",
            })
            run(QString::fromUtf16(statement));
    }
};

TEST_F(StatementTest, everySelectFindsItsRows) {
    using enum ado::Recordset::Lock;
    const struct {
        const char16_t* sql;
        int found;
        ado::Recordset::Lock lock = ReadOnly;
    } table[] = {
        // customers, respondents, parameters, questions
        {u"select * from customer where custname ='True'", 1},
        {u"select * from customer", 2, Optimistic},
        {u"select * from customer where CustName='TRUE'", 1, Optimistic},
        {u"select * from customer where custid=2", 1, Optimistic},
        {u"select * from customer order by custname asc", 2},
        {u"select * from respondent where custid=1", 2, Optimistic},
        {u"select * from respondent where respondentid=3", 1, Optimistic},
        {u"select * from respondent where respondentname='a.order' and custid=1 and "
         u"respondentdesignation='Head'",
         1, Optimistic},
        {u"select * from respondent where respondentname='a.order' and custid=2", 1},
        {u"select * from parameter", 2, Optimistic},
        {u"select * from parameter where paramid=1", 1, Optimistic},
        {u"select * from parameter where parametername='#05/03/2002#'", 1, Optimistic},
        {u"select * from questions where paramid =1", 2},
        {u"select * from questions where question='False' and Paramid=2", 1, Optimistic},
        {u"select * from questions where questionid=2", 1, Optimistic},
        {u"select * from questions where Question='x; delete * from y' and paramid=1", 1},
        // surveys and questionnaires
        {u"select * from custresp where custname='True'", 2},
        {u"select * from custresp where custid=1 and respondentname='a.order'", 1},
        {u"select * from custresp where respondentname='a.order' and custid=2", 1},
        {u"select * from existingsurvey where sdate=#05/03/2002# and custname='True' and "
         u"respondentname='a.order'",
         1},
        {u"select distinct(custname) from existingsurvey", 1},
        {u"select distinct(sdate) from existingsurvey where custid=1 and respondentid=1 order by sdate asc",
         2},
        {u"select distinct(sdate) from existingsurvey where custid=1 and respondentid=1 and "
         u"sdate<>#05/03/2002#  order by sdate asc",
         1},
        {u"select distinct(parametername) from param", 2},
        {u"select distinct(question),type from param where parametername='#05/03/2002#'", 2},
        {u"select * from  param where question='False' and parametername='#05/03/2002#'", 1},
        {u"select * from survey where sdate=#03/05/2002# and custid=1", 1, Optimistic},
        {u"select * from survey where custid=1 order by sdate asc", 2},
        {u"select distinct(sdate) from survey where custid=1 order by sdate asc", 2},
        {u"select * from responquesindex", 5, Optimistic},
        {u"select * from ResponQuesIndex where respondentid=1 and ResponQuesIndex.order=1", 2, Optimistic},
        {u"select * from responquery where respondentid=1 and surveyid=1 order by responquery.order", 3},
        {u"select * from responquery where sdate=#05/03/2002# and custid=1", 4},
        {u"select * from responquery where custid=1", 5},
        {u"select * from responquery where custid=1 and respondentid=1 and sdate=#05/03/2002#", 3},
        {u"select * from responquery where custid=1 and respondentid=1 and sdate=#05/03/2002# order by "
         u"parametername",
         3},
        {u"select * from responquery where custid=1 and sdate=#03/05/2002# and respondentid=1", 1},
        {u"select * from responquery where parametername='#05/03/2002#' and question='False' and "
         u"respondentid=1 and custid=1 and sdate=#05/03/2002#",
         1},
        {u"select * from responquery where question='False' and custid=1 and sdate=#05/03/2002#", 3},
        {u"select * from responquery where  respondentid=1 and custid=1 and sdate=#03/05/2002#", 1},
        {u"select distinct(sdate) as surveydate from responquery where custid=1", 2},
        {u"select distinct(parametername) from responquery where custname='True'", 2},
        {u"select * from copydetails", 1, Optimistic},
        // survey files
        {u"select * from reportlinktable", 3, Optimistic},
        {u"select * from reportlinktable where custid=1 and respondentid=1 order by parameter asc", 2},
        {u"select * from reportlinktable where parameter='#05/03/2002#'", 2},
        {u"select * from reportlinktable where questionid=1 and respondentid=1 ", 1, Optimistic},
        {u"select * from reportlinktable where questionid=1 and respondentid=1", 1, Optimistic},
        {u"select * from setting where setting='UserDefine' and checkeduser=True", 1},
        {u"select * from setting where setting='UserDefine'", 1, Optimistic},
        {u"select * from log where custname='True' and respid=1 and sdate=#05/03/2002#", 1},
        {u"select * from log where xlsfilename='12.xls'", 1, Optimistic},
        {u"select * from log where respid=1 and sdate=#03/05/2002#", 1, Optimistic},
        {u"select * from log where custname='True' and respname='a.order' and xlsfilename='12.xls' and "
         u"sdate=#05/03/2002#",
         1, Optimistic},
        {u"select * from log where custname='True'", 2},
        {u"select * from standardmessage where customerid=1", 1, Optimistic},
        {u"select * from objquery where custid=1 and respondentid=1 and surveydate < #05/03/2002# and "
         u"questionid=1 order by surveydate asc",
         1},
        {u"select * from descquery where custid=1 and respondentid=1 and surveydate < #05/03/2002# and "
         u"questionid=2 order by surveydate desc",
         1},
        {u"select * from feedbackobjective where questionid=1 and respondentid=1 and "
         u"surveydate=#05/03/2002#",
         1, Optimistic},
        {u"select * from feedbackobjective where respondentid=1 and questionid=1 and "
         u"surveydate=#03/05/2002#",
         1, Optimistic},
        {u"select * from feedbackdescriptive where questionid=2 and respondentid=1 and "
         u"surveydate=#05/03/2002#",
         1, Optimistic},
        {u"select * from feedbackdescriptive where respondentid=1 and questionid=2 and "
         u"surveydate=#03/05/2002#",
         1, Optimistic},
        // analysis and reports
        {u"select * from scatterqry where custname='True' and surveydate between #03/06/2002# and  # "
         u"05/03/2002# ",
         3},
        {u"select distinct(parametername),surveydate from scatterqry where parametername='#05/03/2002#' and "
         u"surveydate between #03/05/2002# and # 05/03/2002# and custname='True'",
         2},
        {u"select * from scatterqry where parametername='#05/03/2002#' and custname='True' and surveydate "
         u"=#05/03/2002#",
         2},
        {u"select * from linetable", 3, Optimistic},
        {u"select * from linetable where sindex <> 0", 2},
        {u"select * from linetable where parameter='#05/03/2002#' and sindex <> 0 order by sdate asc", 1},
        {u"select distinct(sdate) from linetable where sindex <> 0 order by sdate asc", 1},
        {u"select * from surveydateorder", 3, Optimistic},
        {u"select * from surveydateorder where sdate=#03/05/2002#", 1},
        {u"select * from surveydateorder order by roworder asc", 3},
        {u"select distinct(sdate) from surveydateorder order by sdate asc", 2},
        {u"select distinct(parameter) from mscharttry", 2},
        {u"select distinct(parametername) from scatter where custname='True' and sdate =#05/03/2002#", 2},
        {u"select * from scatter where parametername='#05/03/2002#' and custname='True' and "
         u"sdate=#05/03/2002# ",
         2},
        {u"select * from scattertable", 2, Optimistic},
        {u"select CustName,Parameter,Wt,Sc from ScatterTable Order by PARAMETER", 2},
        {u"select * from scattertable order by sc", 2},
        {u"select * from report", 1, Optimistic},
        {u"select * from objquery where custname='True' and surveydate =#05/03/2002# and weightage <>0 and "
         u"score <>0 order by parametername",
         2},
        {u"select * from descquery where custname='True' and surveydate =#03/05/2002# and weightage <>0 "
         u"order "
         u"by parametername",
         0},
        {u"select * from descquery where custname='True' and surveydate >=#03/06/2002# and surveydate "
         u"<=#05/03/2002# order by parametername",
         1},
        {u"select * from objquery where custname='True' and surveydate >=#03/05/2002# and surveydate "
         u"<=#05/02/2002# order by parametername",
         1},
        {u"select * from action where custname='True' and date>=#03/06/2002# and date <=#05/03/2002#", 1},
        {u"select * from reporttable", 2, Optimistic},
        // actions and search
        {u"select * from action where custname='True' and date =#03/05/2002#", 1},
        {u"select * from actionplan where actionid=1 and date=# 05/03/2002# and customerid =1", 1,
         Optimistic},
        {u"select * from actionplan where date=# 05/03/2002# and customerid =2", 1, Optimistic},
        {u"select * from actionplan where customerid =1 and date=# 03/05/2002#", 1, Optimistic},
        {u"select * from action where customerid=1 order by date", 2},
        {u"select * from action where customerid=1 and date=#05/03/2002#", 1},
        {u"select * from objquery where( question like '%fals%')", 4},
        {u"select * from descquery where( question like '%late%' or description like '%late%' or  question "
         u"like '%zz%' or description like '%zz%')",
         1},
        {u"select * from action where( action like '%hurry%' or  action like '%LATE%' or  action like '%x%')",
         3},
        {u"select * from action where( action like '%%')", 3},
        {u"select * from search", 2, Optimistic},
        {u"select * from search where tablename='Survey (Objective)' and ID=1", 1},
    };
    for (const auto& row : table) {
        ado::Recordset found;
        const std::string sql = QString::fromUtf16(row.sql).toStdString();
        EXPECT_NO_THROW(found.Open(QString::fromUtf16(row.sql), *cnnMain, row.lock)) << sql;
        EXPECT_EQ(found.IsOpen() ? found.RecordCount() : -1, row.found) << sql;
    }
}

TEST_F(StatementTest, everyDeleteRemovesItsRows) {
    const std::pair<const char16_t*, const char*> table[] = {
        {u"delete * from customer where custid=1", "1"},
        {u"delete * from respondent where respondentid=3", "1"},
        {u"delete * from parameter where paramid=1", "1"},
        {u"delete * from Questions where questionid=3", "1"},
        {u"delete * from actionplan where customerid=1 and date=#03/05/2002#", "1"},
        {u"delete * from log where xlsfilename='13.xls'", "1"},
        {u"delete * from log where surveyid=1 and respid=1", "1"},
        {u"delete * from Survey where sdate=#05/03/2002# and custid=1 and surveyid=1", "1"},
        {u"delete * from survey where custid=1", "2"},
        {u"delete * from responquesindex where surveyid=1 and respondentid=1", "3"},
        {u"delete * from responquesindex where respondentid=1 and surveyid=2", "1"},
        {u"delete * from ResponQuesIndex where respondentid=1 and questionid=2 and ResponQuesIndex.order=2",
         "1"},
        {u"delete * from reportlinktable where sdate=#05/03/2002# and respondentid=1", "2"},
        {u"delete * from feedbackobjective where surveyid=1 and respondentid=1 and surveydate=#05/03/2002#",
         "2"},
        {u"delete * from feedbackdescriptive where surveyid=1 and respondentid=1 and "
         u"surveydate=#05/03/2002#",
         "1"},
        {u"delete * from feedbackobjective where surveyid=2 and respondentid=1", "1"},
        {u"delete * from copydetails", "1"},
        {u"delete * from reportlinktable", "3"},
        {u"delete * from linetable", "3"},
        {u"delete * from surveydateorder", "3"},
        {u"delete * from scattertable", "2"},
        {u"delete * from report", "1"},
        {u"delete * from reporttable", "2"},
        {u"delete * from search", "2"},
    };
    for (const auto& [sql, removed] : table) {
        cnnMain->BeginTrans();
        run(QString::fromUtf16(sql));
        EXPECT_EQ(value(u"select changes()"_s).toStdString(), removed)
            << QString::fromUtf16(sql).toStdString();
        cnnMain->RollbackTrans();
    }
}

} // namespace
