// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/surveytest.h"

#include <QElapsedTimer>
#include <QLabel>

#include <iostream>

using namespace Qt::StringLiterals;
using forms::Answer;

namespace {

class SelectionTest : public SurveyTest {
protected:
    static frmSelectSurvey& select() {
        frmSelectSurvey& form = frmSelectSurvey::instance();
        form.Show();
        return form;
    }
    static QStringList labels() {
        QStringList result;
        for (const char* name : {"lblCustomerName", "lblRespondentName", "lblSurveyDate"})
            result << control<QLabel>(frmNewSurvey::instance(), name)->text();
        return result;
    }
    void expectQuestion(Answer answer) {
        messages.expect(u"Survey already exists for Selected Survey Date,Customer and Respondent....\r\n"
                        "Do you wish to Edit the same Survey....Press 'Yes' to continue"_s,
                        68, u"Gaugewell v2.1"_s, answer);
    }
};

TEST_F(SelectionTest, opensOnTheFirstCustomerTodayAndFollowsTheCustomer) {
    addRespondent(addCustomer(u"Bolt"_s), u"Carl"_s);
    addCustomer(u"Nobody"_s);
    frmSelectSurvey& form = select();
    QStringList respondents;
    for (const int customer : {0, 2, 1}) {
        form.cmbCustomer()->setListIndex(customer);
        respondents << form.lstRespondent()->Text();
    }
    EXPECT_EQ(respondents, (QStringList{u"Ann"_s, {}, u"Carl"_s}));
    EXPECT_EQ(form.Top(), qRound(form.ScreenHeight() * 0.65) / 2 - form.Height() / 2);
}

TEST_F(SelectionTest, asksBeforeAnExistingQuestionnaireIsEdited) {
    addStored(ann, today, {0});
    run(u"update setting set checkeduser = True"_s);
    struct Case {
        int respondent;
        QDate date;
        bool pasted;
        std::optional<Answer> question;
        QString caption; // of the editor; empty when it stays closed
        int rows;
    };
    const QDate future(2031, 12, 31);
    const std::vector<Case> cases = {{0, today, false, Answer::No, {}, 0},
                                     {0, today, false, Answer::Yes, u"Edit Selected Survey"_s, 3},
                                     {0, today, true, {}, u"New Survey"_s, 3},
                                     {1, today, false, {}, u"New Survey"_s, 2},
                                     {0, future, false, {}, u"New Survey"_s, 2}};
    for (const Case& c : cases) {
        frmSelectSurvey& form = select();
        form.lstRespondent()->setListIndex(c.respondent);
        form.dtSDate()->setValue(c.date);
        blnSurveyPasted = c.pasted;
        if (c.question)
            expectQuestion(*c.question);
        press(form, "cmdBlankSurvey");
        EXPECT_FALSE(blnSurveyPasted);
        EXPECT_EQ(messages.left(), 0);
        ASSERT_EQ(frmNewSurvey::loaded() != nullptr, !c.caption.isEmpty());
        if (c.caption.isEmpty())
            continue;
        EXPECT_EQ(frmNewSurvey::instance().Caption(), c.caption);
        EXPECT_TRUE(frmNewSurvey::instance().blnSetting);
        EXPECT_EQ(grid()->Rows(), c.rows);
        EXPECT_EQ(labels(), (QStringList{u"Acme"_s, form.lstRespondent()->Text(), form.dtSDate()->text()}));
        frmNewSurvey::unload();
    }
}

TEST_F(SelectionTest, anOpenEditorKeepsItsLabels) {
    frmSelectSurvey& form = select();
    press(form, "cmdBlankSurvey");
    form.lstRespondent()->setListIndex(1);
    press(form, "cmdBlankSurvey");
    EXPECT_EQ(labels()[1], u"Ann"_s);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_EQ(frmSelectSurvey::loaded(), nullptr);
    EXPECT_NE(frmNewSurvey::loaded(), nullptr);
    QTest::keyClick(tree(), Qt::Key_Escape);
    EXPECT_EQ(frmNewSurvey::loaded(), nullptr);
}

TEST_F(SelectionTest, aFailedLookUpCountsAsExisting) {
    frmSelectSurvey& form = select();
    run(u"drop view existingsurvey"_s);
    messages.expectBeginning(u"Error : 1\r\n"_s);
    expectQuestion(Answer::No);
    press(form, "cmdBlankSurvey");
}

TEST_F(SelectionTest, anEmptyStoreOpensAllTheSame) {
    run(u"delete * from customer"_s);
    run(u"delete * from parameter"_s);
    frmSelectSurvey& form = select();
    EXPECT_EQ(form.cmbCustomer()->ListCount() + form.lstRespondent()->ListCount(), 0);
    press(form, "cmdBlankSurvey");
    EXPECT_EQ(labels(), (QStringList{{}, {}, u"05/03/2024"_s}));
    EXPECT_EQ(tree()->topLevelItemCount(), 0);
}

TEST_F(SelectionTest, aLargeCatalogueOpensWithoutAWait) {
    int paramid = 0;
    cnnMain->BeginTrans();
    for (int i = 0; i < 2000; ++i)
        addRespondent(addCustomer(u"Customer %1"_s.arg(i)), u"Respondent"_s);
    for (int i = 0; i < 500; ++i)
        addQuestion(i % 10 ? paramid : paramid = addParameter(u"Parameter %1"_s.arg(i)),
                    u"Question %1?"_s.arg(i));
    cnnMain->CommitTrans();
    QElapsedTimer timer;
    timer.start();
    frmSelectSurvey& form = select();
    const qint64 selection = timer.restart();
    press(form, "cmdBlankSurvey");
    const qint64 editor = timer.elapsed();
    EXPECT_EQ(form.cmbCustomer()->ListCount(), 2001);
    EXPECT_EQ(tree()->topLevelItemCount(), 52);
    EXPECT_LT(selection, 2000);
    EXPECT_LT(editor, 2000);
    std::cout << "selection " << selection << " ms, editor " << editor << " ms\n";
}

} // namespace
