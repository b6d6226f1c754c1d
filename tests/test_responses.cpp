// SPDX-License-Identifier: GPL-3.0-or-later
// Who was asked, who has answered and who is late; handing over, by mail and by hand.
#include "tests/support/responsestest.h"

namespace {
TEST_F(ResponsesTest, theStateFollowsFromAnswersAndDueDate) {
    const QDate yesterday = today.addDays(-1), never;
    const struct {
        const char* about;
        int weightage, score; ///< of question 0; -1: no answer
        const char* words;    ///< of question 4
        QDate due;            ///< invalid: not handed over
        const char* state;
        const char* foot;
    } cases[] = {
        {"nothing", -1, -1, "", never, "composed", "asked 1, answered 0, 0 %"},
        {"not rated", 0, 5, " ", never, "composed", "asked 1, answered 0, 0 %"},
        {"one of two", 5, 5, "", never, "partly answered", "asked 1, answered 0, 0 %"},
        {"the other", 5, 0, "Fine", never, "partly answered", "asked 1, answered 0, 0 %"},
        {"all", 5, 5, "Fine", never, "answered", "asked 1, answered 1, 100 %"},
        {"handed over, due today", -1, -1, "", today, "handed over", "asked 1, answered 0, 0 %"},
        {"due yesterday", -1, -1, "", yesterday, "overdue", "asked 1, answered 0, 0 %"},
        {"due yesterday, one of two", 5, 5, "", yesterday, "overdue", "asked 1, answered 0, 0 %"},
        {"due yesterday, all", 5, 5, "Fine", yesterday, "answered", "asked 1, answered 1, 100 %"},
    };
    run(u"delete * from respondent where respondentid<>%1"_s.arg(ann)); // others' rows stay, hidden
    handOver(bob, yesterday);
    addScore(ann, question[1], 1, today, 9, 9);            // not asked
    addScore(ann, question[0], 1, today.addDays(1), 9, 9); // on another date
    run(u"insert into responquesindex (respondentid, questionid, surveyid) values (%1, 999, 1)"_s.arg(ann));
    for (const auto& given : cases) {
        SCOPED_TRACE(given.about);
        run(u"delete * from feedbackobjective where questionid=%1 and surveydate=#03/05/2024#"_s.arg(
            question[0]));
        run(u"delete * from feedbackdescriptive"_s);
        run(u"delete * from dispatch where respondentid=%1"_s.arg(ann));
        if (given.score >= 0)
            addScore(ann, question[0], 1, today, given.weightage, given.score);
        if (*given.words != 0)
            addWords(ann, question[4], 1, today, QLatin1StringView(given.words));
        if (given.due.isValid())
            handOver(ann, given.due);
        form();
        ASSERT_EQ(shown().size(), 1);
        EXPECT_EQ(shown()[0].section(u'|', State - 1, State - 1), QLatin1StringView(given.state));
        EXPECT_EQ(foot(), QLatin1StringView(given.foot));
        frmResponses::unload();
    }
}

TEST_F(ResponsesTest, bothMailDoorsNoteTheFirstHandOver) {
    copyHomeFile(u"template.xls"_s);
    QDate day = today;
    const Replaced<forms::todayHook> clock([&] { return day; });
    open();
    press(frmNewSurvey::instance(), "cmdmail");
    const QString file = value(u"select xlsfilename from log"_s);
    const QString noted = u"%1|1|%2|05/03/2024|19/03/2024"_s.arg(QString::number(ann), file);
    EXPECT_EQ(dispatches(), QStringList(noted));

    day = today.addDays(3);
    run(u"insert into programsetting (name, content) values ('ResponseDays', '30')"_s);
    registerFile(u"again.xls"_s, u"Ann"_s, ann);
    registerFile(u"bob.xls"_s, u"Robert"_s, bob); // renamed since
    frmLogDetails::instance().Show();
    shortcut(Qt::Key_A);
    auto* files = control<forms::ListView>(frmLogDetails::instance(), "lsvDtls");
    for (int row = 0; row < files->ListCount(); ++row)
        files->setSelected(row, true);
    failsOn = u"No email address found"_s;
    messages.expect(u"The client was cancelled."_s);
    press(frmLogDetails::instance(), "cmdmail");
    EXPECT_EQ(dispatches(), QStringList(noted)) << "not handed over";
    failsOn = u"nobody"_s;
    press(frmLogDetails::instance(), "cmdmail");
    EXPECT_EQ(mails.size(), 4);
    const QStringList both{u"%1|1|again.xls|05/03/2024|19/03/2024"_s.arg(ann),
                           u"%1|1|bob.xls|08/03/2024|07/04/2024"_s.arg(bob)};
    EXPECT_EQ(dispatches(), both);

    // A store that refuses the row, or could not be upgraded, lets the mail go without a word.
    OtherProgram::endWaiting();
    refuse(u"update on dispatch"_s);
    press(frmLogDetails::instance(), "cmdmail");
    allow();
    EXPECT_EQ(mails.size(), 7);
    if (!cnnMain->IsFile())
        return;
    run(u"drop table dispatch"_s);
    toOpenConnection();
    press(frmLogDetails::instance(), "cmdmail");
    EXPECT_EQ(mails.size(), 10);
    messages.expectCritical(u"This database could not be updated to this version of the program: it cannot "
                            "keep what has been handed over and reminded. See the help, topic Responses."_s);
    form();
    EXPECT_EQ(shown().size(), 3);
}

TEST_F(ResponsesTest, filtersAndHeadingsKeepTheTicks) {
    addQuestionnaire(cora, addSurvey(2, {2023, 3, 5}), {question[0]}); // a year before
    handOver(bob, today.addDays(-1));
    addReminders({1}, {2024, 3, 1});
    addReminders({1, 99}, {2024, 3, 3});
    const QString anns = u"Acme|Ann|05/03/2024|||composed||"_s;
    const QString bobs = u"Acme|Bob|05/03/2024|20/02/2024|04/03/2024|overdue|2|03/03/2024"_s;
    const QString coras = u"Brown|Cora|01/02/2024|||composed||"_s;
    EXPECT_EQ(shown(), QStringList({anns, bobs, coras}));
    EXPECT_EQ(foot(), u"asked 3, answered 0, 0 %"_s);
    const auto pick = [](const char* name, int entry) {
        control<forms::ComboBox>(form(), name)->setFocus();
        key(entry > 0 ? Qt::Key_End : Qt::Key_Home);
    };
    list().setFocus();
    key(Qt::Key_Space); // the first row is current and not chosen
    whileLocked([&] { pick("cmbCustomer", 1); });
    EXPECT_EQ(shown(), QStringList({anns, bobs, coras}));
    EXPECT_EQ(control<forms::ComboBox>(form(), "cmbCustomer")->ListIndex(), 0);
    clickHead(list(), Tick);
    clickHead(list(), Tick);
    EXPECT_EQ(shown()[2], anns) << "ticked still";
    clickHead(list(), Date);
    EXPECT_EQ(shown(), QStringList({coras, bobs, anns}));
    clickHead(list(), Due);
    clickHead(list(), Due);
    EXPECT_EQ(shown()[0], bobs);
    pick("cmbCustomer", 1);
    EXPECT_EQ(shown(), QStringList(coras));
    pick("cmbCustomer", 0);
    EXPECT_EQ(list().currentIndex().row(), shown().indexOf(coras)) << "not the one that is in its place";
    pick("cmbState", 1);
    EXPECT_EQ(shown(), QStringList(bobs));
    EXPECT_EQ(foot(), u"asked 1, answered 0, 0 %"_s);
    pick("cmbState", 0);
    control<forms::DTPicker>(form(), "dtFrom")->setFocus();
    type(u"05032023"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(shown().size(), 4);
    messages.expectInformation(u"Tick one or more respondents first."_s);
    press(form(), "cmdHandedOver"); // a row that was not shown has lost its tick
}

TEST_F(ResponsesTest, handsOverAndMovesDueDatesByHand) {
    form();
    tickAll();
    enterDate("cmdHandedOver", "dtHandedOver", {u"01032024"_s});
    const auto all = [&](const QString& due) {
        QStringList lines;
        for (const auto& [respondent, survey] : {std::pair(ann, 1), {bob, 1}, {cora, 2}})
            lines << u"%1|%2||01/03/2024|%3"_s.arg(respondent).arg(survey).arg(due);
        return lines;
    };
    EXPECT_EQ(dispatches(), all(u"15/03/2024"_s)) << "due 14 days later";
    const QString tooEarly = u": handed over on 01/03/2024"_s;
    messages.expectInformation(
        u"The due date is before the day of handing over of:\r\nAnn of Acme, 05/03/2024"_s + tooEarly +
        u"\r\nBob of Acme, 05/03/2024" + tooEarly + u"\r\nCora of Brown, 01/02/2024" + tooEarly);
    enterDate("cmdDue", "dtDue", {u"29022024"_s, u"04032024"_s});
    EXPECT_EQ(dispatches(), all(u"04/03/2024"_s));
    EXPECT_EQ(shown()[2], u"Brown|Cora|01/02/2024|01/03/2024|04/03/2024|overdue||"_s);

    ChangedRows changed;
    const QString moved = u"update dispatch set due='2024-03-31' where respondentid=%1"_s.arg(bob);
    enterDate("cmdDue", "dtDue", {u"20032024"_s}, moved);
    ASSERT_EQ(changed.asked.size(), 1U);
    EXPECT_EQ(changed.asked[0].fields,
              std::vector<ChangedField>({{u"Due"_s, u"04/03/2024"_s, u"31/03/2024"_s, u"20/03/2024"_s}}));
    changed.answer = Keep::Stored;
    run(u"update dispatch set due='2024-03-04'"_s);
    enterDate("cmdDue", "dtDue", {u"20032024"_s}, moved);
    EXPECT_EQ(rows(u"select due from dispatch order by respondentid"_s),
              QStringList({u"20/03/2024"_s, u"31/03/2024"_s, u"20/03/2024"_s}));

    const QStringList before = dispatches();
    const QString replacing =
        u"%1 of the 3 respondents %2 been handed a survey file already. Replace the dates "
        "that are noted? No keeps them."_s;
    messages.expectAsked(replacing.arg(u"3"_s, u"have"_s), Answer::No);
    press(form(), "cmdHandedOver");
    messages.expectCritical(u"Bob of Acme, 05/03/2024 was handed over on 22/03/2024, after the due date. "
                            "Nothing has been changed."_s);
    enterDate("cmdDue", "dtDue", {u"21032024"_s},
              u"update dispatch set handedover='2024-03-22' where respondentid=%1"_s.arg(bob));
    messages.expectCritical(u"The questionnaire of Bob of Acme, 05/03/2024 is no longer in the database. "
                            "Nothing has been changed."_s);
    enterDate("cmdDue", "dtDue", {u"24032024"_s},
              u"delete * from respondent where respondentid=%1"_s.arg(bob));
    EXPECT_EQ(dispatches().replaceInStrings(u"22/03"_s, u"01/03"_s), before);

    run(u"delete * from dispatch where respondentid=%1"_s.arg(ann));
    control<forms::DTPicker>(form(), "dtFrom")->setValue({2024, 1, 1}); // reads the rows again
    messages.expectAsked(replacing.arg(u"1"_s, u"has"_s).replace(u'3', u'2'), Answer::No);
    enterDate("cmdHandedOver", "dtHandedOver", {u"02032024"_s});
    ::clickRow(list(), 0, Qt::LeftButton, {}, Tick);
    enterDate("cmdHandedOver", "dtHandedOver", {u"03032024"_s},
              u"update dispatch set due='2024-04-01' where respondentid=%1"_s.arg(cora));
    EXPECT_EQ(dispatches(), QStringList({u"%1|1||02/03/2024|16/03/2024"_s.arg(ann),
                                         u"%1|1||22/03/2024|31/03/2024"_s.arg(bob),
                                         u"%1|2||03/03/2024|01/04/2024"_s.arg(cora)}))
        << "another's change of what is not edited here stays";
}
} // namespace
