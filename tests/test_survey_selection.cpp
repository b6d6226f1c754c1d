// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/surveytest.h"

#include <QLabel>

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
        messages.expectTitled(
            u"Survey already exists for Selected Survey Date,Customer and Respondent....\r\n"
            "Do you wish to Edit the same Survey....Press 'Yes' to continue"_s,
            68, answer);
    }
};

TEST_F(SelectionTest, theRespondentFollowsTheCustomerAndAnOpenEditorKeepsItsOwn) {
    addRespondent(addCustomer(u"Bolt"_s), u"Carl"_s);
    addCustomer(u"Nobody"_s);
    frmSelectSurvey& form = select();
    for (const auto& [customer, respondent] : {std::pair(0, u"Ann"_s), {2, QString()}, {1, u"Carl"_s}}) {
        form.cmbCustomer()->setListIndex(customer);
        EXPECT_EQ(form.lstRespondent()->Text(), respondent);
    }
    press(form, "cmdBlankSurvey");
    form.cmbCustomer()->setListIndex(0);
    press(form, "cmdBlankSurvey");
    EXPECT_EQ(labels(), (QStringList{u"Bolt"_s, u"Carl"_s, u"05/03/2024"_s}));
    run(u"delete * from customer"_s);
    run(u"delete * from parameter"_s);
    frmSelectSurvey::unload();
    frmNewSurvey::unload();
    press(select(), "cmdBlankSurvey");
    EXPECT_EQ(labels(), (QStringList{{}, {}, u"05/03/2024"_s}));
}

TEST_F(SelectionTest, asksBeforeAnExistingQuestionnaireIsEdited) {
    addStored(ann, today, {0});
    run(u"update setting set checkeduser = True"_s);
    const QDate future(2031, 12, 31);
    const std::tuple<int, QDate, bool, std::optional<Answer>, QString, int> cases[] = {
        // respondent, date, pasted before, answer to the question, caption and rows of the editor
        {0, today, false, Answer::No, {}, 0},
        {0, today, false, Answer::Yes, u"Edit Selected Survey"_s, 3},
        {0, today, true, {}, u"New Survey"_s, 3},
        {1, today, false, {}, u"New Survey"_s, 2},
        {0, future, false, {}, u"New Survey"_s, 2}};
    for (const auto& [respondent, date, pasted, answer, caption, shownRows] : cases) {
        frmSelectSurvey& form = select();
        form.lstRespondent()->setListIndex(respondent);
        form.dtSDate()->setValue(date);
        blnSurveyPasted = pasted;
        if (answer)
            expectQuestion(*answer);
        press(form, "cmdBlankSurvey");
        EXPECT_FALSE(blnSurveyPasted);
        expectAtRest();
        ASSERT_EQ(frmNewSurvey::loaded() != nullptr, !caption.isEmpty());
        if (caption.isEmpty())
            continue;
        EXPECT_EQ(frmNewSurvey::instance().Caption(), caption);
        EXPECT_TRUE(frmNewSurvey::instance().blnSetting);
        EXPECT_EQ(grid()->Rows(), shownRows);
        EXPECT_EQ(labels(), (QStringList{u"Acme"_s, form.lstRespondent()->Text(), form.dtSDate()->text()}));
        frmNewSurvey::unload();
    }
}

TEST_F(SelectionTest, aFailedLookUpCountsAsExisting) {
    frmSelectSurvey& form = select();
    run(u"drop view existingsurvey"_s);
    messages.expectBeginning(u"Error : 1\r\n"_s);
    expectQuestion(Answer::No);
    press(form, "cmdBlankSurvey");
}

} // namespace
