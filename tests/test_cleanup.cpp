// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/backup.h"
#include "core/frmCleanUp.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

namespace {
/// A store with rows of every table, of which those of the customer Gone, of the respondent Dan of Acme and
/// of the parameter Dropped have lost what they belong to.
struct CleanUpTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addRows(acme, ann, question[0], 1);
        visible = storeRows(*cnnMain);
        const int gone = addCustomer(u"Gone"_s);
        const int cora = addRespondent(gone, u"Cora"_s);
        const int dan = addRespondent(acme, u"Dan"_s);
        const int dropped = addParameter(u"Dropped"_s);
        const int why = addQuestion(dropped, u"Why?"_s);
        addRows(gone, cora, question[0], 1);
        addScore(dan, question[0], 1, today, 1, 1);
        addScore(ann, why, 1, today, 1, 1);
        run(u"insert into responquesindex values (1, 1, 99, 1)"_s);
        add(u"segment"_s, {{"custid", 1}, {"respondentid", dan}, {"kind", u"Role"_s}, {"name", u"Lead"_s}});
        run(u"insert into target (paramid, target) values (%1, 8)"_s.arg(dropped));
        run(u"insert into reading (started) values ('2024-01-01T10:00:00')"_s);
        run(u"insert into readingfile (readingid, filename, respondentid, answers) "
            "values (1, 'dan.xls', %1, '[[1,false,null,[1,1,\"Bad\"]]]')"_s.arg(dan));
        run(u"delete * from customer where custname='Gone'"_s);
        run(u"delete * from respondent where respondentname='Dan'"_s);
        run(u"delete * from parameter where parametername='Dropped'"_s);
        copyHomeFile(u"template.xls"_s, u"Cora.xls"_s);
    }
    /// A row of each table for a customer and its respondent.
    static void addRows(int custid, int respondent, int questionid, int paramid) {
        const QString name = respondent == 1 ? u"Acme"_s : u"Gone"_s;
        const int surveyid = addSurvey(custid, today);
        addQuestionnaire(respondent, surveyid, {questionid});
        addScore(respondent, questionid, surveyid, today, 4, 8);
        addWords(respondent, questionid, surveyid, today, u"Fine"_s, 2);
        add(u"log"_s, {{"custname", name}, {"respid", respondent}, {"xlsfilename", u"Cora.xls"_s}});
        run(u"insert into actionplan (customerid, [Action]) values (%1, 'Call')"_s.arg(custid));
        run(u"insert into standardmessage values (%1, 'Dear')"_s.arg(custid));
        const int dispatch =
            add(u"dispatch"_s, {{"custid", custid}, {"respondentid", respondent}, {"surveyid", surveyid}});
        run(u"insert into reminder values (%1, '2024-03-06')"_s.arg(dispatch));
        add(u"segment"_s,
            {{"custid", custid}, {"respondentid", respondent}, {"kind", u"Role"_s}, {"name", u"Lead"_s}});
        run(u"insert into target values (%1, %2, 8)"_s.arg(paramid).arg(custid));
        if (respondent == 1) {
            run(u"insert into reading (started) values ('2024-01-01T10:00:00')"_s);
            run(u"insert into readingfile (readingid, filename, respondentid, answers) values (1, 'a', 1, '[]')"_s);
        }
    }
    static frmCleanUp& form() { return show<frmCleanUp>(); }
    static QString done() { return control<QLabel>(form(), "lblDone")->text(); }

    QStringList visible; ///< the rows of the store without those that are left behind
};

const QString expected =
    u"Surveys: 1\r\nQuestions of questionnaires: 2\r\nMarks: 3\r\nAnswers in words: 1\r\n"
    "Register of survey files: 1\r\nImprovement actions: 1\r\nStandard messages: 1\r\n"
    "Hand-overs: 1\r\nReminders: 1\r\nGroups: 2\r\nTargets: 2\r\n"
    "Records of readings, emptied: 1\r\nReadings without files: 1"_s;

TEST_F(CleanUpTest, removesWhatNobodySeesAfterACopy) {
    press(form(), "cmdSearch");
    EXPECT_EQ(done(), u"18 rows can be removed."_s);
    const QString asked = u"Remove this for good? The store is copied before.\r\n\r\n"_s + expected;
    messages.expectAsked(asked, Answer::No);
    press(form(), "cmdRemove");
    EXPECT_EQ(listBackups(strDatabasePath).size(), 0);

    messages.expectAsked(asked, Answer::Yes);
    messages.expectInformation(
        u"These survey files are in the register no more. Delete them yourself:\r\n"_s + path(u"Cora.xls"_s));
    press(form(), "cmdRemove");
    expectIdle();
    EXPECT_TRUE(done().startsWith(u"18 rows removed. Protocol: "_s + home())) << done();
    EXPECT_EQ(listBackups(strDatabasePath).size(), 1);
    EXPECT_EQ(rows(u"select filename, answers from readingfile where readingfileid=2"_s),
              QStringList(u"erased|[]"_s));
    EXPECT_EQ(rows(u"select what from protocol"_s),
              QStringList(u"Cleaned up: "_s + QString(expected).replace(u"\r\n"_s, u"; "_s)));
    run(u"delete * from protocol"_s);
    run(u"delete * from readingfile where readingfileid=2"_s);
    EXPECT_EQ(storeRows(*cnnMain), visible);

    press(form(), "cmdSearch");
    EXPECT_EQ(done(), u"Nothing has been left behind."_s);
}

TEST_F(CleanUpTest, aCancelledOrFailedRemovalChangesNothing) {
    const QStringList before = storeRows(*cnnMain);
    int steps = 0;
    const OrphanResult result =
        removeOrphans([&](const QString& what) { return ++steps, what != u"Targets"; }, {});
    EXPECT_TRUE(result.isCancelled && steps > 5);
    EXPECT_EQ(storeRows(*cnnMain), before);

    press(form(), "cmdSearch");
    refuse(u"delete on target"_s);
    messages.expectTitledBeginning(u"Remove this for good?"_s,
                                   style::yesNo + style::information + style::secondButton, Answer::Yes);
    expectFault(Refused);
    press(form(), "cmdRemove");
    allow();
    EXPECT_EQ(storeRows(*cnnMain), before);
}

TEST_F(CleanUpTest, theFileIsRewritten) {
    if (!cnnMain->IsFile())
        GTEST_SKIP();
    for (int i = 0; i < 10; ++i)
        addWords(bob, question[4], 1, today, QString(500'000, u'x'));
    run(u"delete * from feedbackdescriptive where respondentid=2"_s);
    const auto expectQuestion = [this] {
        messages.expectTitledBeginning(u"Write the file"_s,
                                       style::yesNo + style::information + style::secondButton, Answer::Yes);
    };
    OtherProgram::endWaiting();
    other.lock();
    expectQuestion();
    messages.expectCritical(
        u"The database is in use by another program. Close that program and try again."_s);
    press(form(), "cmdRewrite");
    other.unlock();
    expectQuestion();
    press(form(), "cmdRewrite");
    EXPECT_EQ(done(), u"The file has 1 MB, before 6 MB."_s);
}
} // namespace
