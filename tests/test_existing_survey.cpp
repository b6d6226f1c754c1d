// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "platform/crystal/previewwindow.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmPasteSurvey.h"
#include "tests/support/storecompare.h"
#include "tests/support/surveytest.h"

#include <QAction>
#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;
using forms::Answer;

namespace {

const QString title = u"Gaugewell v2.1"_s;
const QDate early{2024, 1, 31};
const QDate late{2024, 3, 4};

class ExistingTest : public SurveyTest {
protected:
    static frmEditExistingSurvey& edit() {
        control<QAction>(MDIMain::instance(), "mnuEditSurvey")->trigger();
        return frmEditExistingSurvey::instance();
    }
    template <class FormClass> static void pick(FormClass& form, const char* name, const QString& entry) {
        auto* list = control<forms::ListBox>(form, name);
        const auto found = list->findItems(entry, Qt::MatchExactly);
        ASSERT_FALSE(found.isEmpty()) << name << entry.toStdString();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found[0]).center());
    }
    template <class FormClass> static void pickCustomer(FormClass& form, const QString& entry) {
        auto* list = control<forms::ComboBox>(form, "cmbCustomer");
        list->setListIndex(list->findText(entry));
    }
    template <class FormClass> static QStringList entries(FormClass& form, const char* name) {
        QStringList result;
        const auto* list = control<forms::ListBox>(form, name);
        for (int i = 0; i < list->ListCount(); ++i)
            result << list->List(i) + (list->Selected(i) ? u"*" : u"");
        return result;
    }
    template <class FormClass> static int rowsOf(FormClass& form) {
        return control<forms::MSHFlexGrid>(form, "grdParamAndQuest")->Rows();
    }
    static QString status() { return MDIMain::instance().stsBar->Panels(1).Text(); }
    void pressDelete(const QString& date = {}, const QString& customer = {}, Answer answer = Answer::No,
                     const QString& failure = {}) {
        if (!date.isEmpty())
            messages.expect(u"You are about to delete the survey dated "_s + date + u" for Customer - " +
                                customer + u"\r\nAre you sure you want to delete...?",
                            4, title, answer);
        if (!failure.isEmpty())
            messages.expectBeginning(failure);
        QTest::keyClick(control<forms::ListBox>(edit(), "lstSurvetDates"), Qt::Key_Delete);
        EXPECT_EQ(messages.left(), 0);
        EXPECT_EQ(status(), QString());
        EXPECT_FALSE(cnnMain->InTransaction());
    }
    void add(int number, const QString& message = {}) {
        auto* questions = control<forms::TreeView>(edit(), "trvParameter");
        questions->setCurrentItem(
            questions->topLevelItem(number < 2 ? 0 : 1)->child(number < 2 ? number : number - 2));
        if (!message.isEmpty())
            messages.expect(message, 80, title);
        QTest::keyClick(questions, Qt::Key_Return);
    }
    /// Presses a button that opens the import, drives it, and leaves it by Esc when it is still open.
    template <class FormClass>
    static void import(FormClass& form, const char* button,
                       const std::function<void(frmPasteSurvey&)>& drive) {
        bool opened = false;
        QTimer::singleShot(0, &form, [&] {
            opened = frmPasteSurvey::loaded();
            ASSERT_TRUE(opened);
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
            drive(frmPasteSurvey::instance());
            if (frmPasteSurvey::loaded())
                QTest::keyClick(&frmPasteSurvey::instance(), Qt::Key_Escape);
        });
        press(form, button);
        EXPECT_TRUE(opened);
        EXPECT_EQ(frmPasteSurvey::loaded(), nullptr);
        EXPECT_EQ(status(), QString());
        EXPECT_TRUE(rows(u"select * from copydetails"_s).isEmpty());
    }
};

TEST_F(ExistingTest, theListsFollowEachOtherAndWithoutADateNothingIsChanged) {
    addStored(ann, late, {0, 1});
    addStored(ann, early, {2});
    addCustomer(u"Nobody"_s);
    frmEditExistingSurvey& form = edit();
    EXPECT_EQ(control<forms::ComboBox>(form, "cmbCustomer")->ListCount(), 1);
    EXPECT_EQ(entries(form, "lstRespondent"), (QStringList{u"Ann*"_s, u"Bob"_s}));
    EXPECT_EQ(entries(form, "lstSurvetDates"), (QStringList{u"31/01/2024*"_s, u"04/03/2024"_s}));
    EXPECT_EQ(rowsOf(form), 3);
    pick(form, "lstSurvetDates", u"04/03/2024"_s);
    EXPECT_EQ(rowsOf(form), 4);
    add(4);
    EXPECT_EQ(stored(ann), u"31/01 1:2 04/03 1:4 2:0 3:1"_s);

    pick(form, "lstRespondent", u"Bob"_s);
    EXPECT_EQ(rowsOf(form), 2);
    const QStringList before = storeRows(*cnnMain);
    add(3, u"No Survey Date available......"_s);
    pressDelete();
    messages.expect(u"No Survey Date available for the Selected Respondent...Import from other survey cannot "
                    "be performed.."_s,
                    16, title);
    press(form, "cmdCopy");
    messages.expect(u"No records selected to Print for Date - .....Kindly Add Question(s) and proceed"_s,
                    524352, title);
    press(form, "cmdPrint");
    press(form, "cmdRemove");
    EXPECT_EQ(status(), u"Removing...."_s);
    run(u"delete * from respondent where respondentname='Bob'"_s);
    pick(form, "lstRespondent", u"Ann"_s);
    EXPECT_EQ(goneRows(storeRows(*cnnMain), before), QStringList());
    run(u"delete * from respondent"_s);
    Q_EMIT control<forms::ComboBox>(form, "cmbCustomer")->Click();
    EXPECT_EQ(entries(form, "lstSurvetDates"), QStringList());
    messages.expect(u"No Respondent name present to Edit Survey"_s, 16, title);
    press(form, "cmdCopy");
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_EQ(frmEditExistingSurvey::loaded(), nullptr);
}

TEST_F(ExistingTest, theReportIsOfThePickedSurvey) {
    addStored(ann, early, {0});
    addStored(ann, late, {1, 4});
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/rptrating.rpt"), home() + u"/rptrating.rpt"));
    QString shown;
    crystal::previewSeat = [&](const auto&, const QString& windowTitle, int) { shown = windowTitle; };
    edit();
    pick(edit(), "lstSurvetDates", u"04/03/2024"_s);
    press(edit(), "cmdPrint");
    crystal::previewSeat = crystal::PreviewWindow::show;
    EXPECT_EQ(shown, u"Customer Satisfaction Survey Report"_s);
    EXPECT_EQ(rows(u"select sdate, question from reportlinktable"_s),
              (QStringList{u"04/03/2024|Overall?"_s, u"04/03/2024|What else?"_s}));
}

TEST_F(ExistingTest, anEmptyDateIsDeletedOnlyWithTheCustomersLastQuestions) {
    addStored(ann, early, {0});
    addStored(ann, late, {1});
    addScore(ann, question[0], toGetSurveyID(u"31/01/2024"_s, u"Acme"_s).toInt(), early, 1, 2);
    frmEditExistingSurvey& form = edit();
    press(form, "cmdRemove");
    QStringList before = storeRows(*cnnMain);
    pressDelete(u"31/01/2024"_s, u"Acme"_s, Answer::No);
    pressDelete(u"31/01/2024"_s, u"Acme"_s, Answer::Yes); // the later date still has questions
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_FALSE(QDir(home()).exists(u"backup"_s));
    EXPECT_EQ(entries(form, "lstSurvetDates"), QStringList{u"04/03/2024"_s});
    pressDelete();
    add(3, u"No Survey Date selected......Select one and proceed....."_s);
    pick(form, "lstSurvetDates", u"04/03/2024"_s);
    press(form, "cmdRemove");
    before = storeRows(*cnnMain);
    runRaw(u"create trigger refuses before delete on survey begin select raise(abort, 'no'); end"_s);
    pressDelete(u"04/03/2024"_s, u"Acme"_s, Answer::Yes, u"Error : 19\r\n"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    runRaw(u"drop trigger refuses"_s);
    run(u"update feedbackobjective set surveyid="_s + toGetSurveyID(u"04/03/2024"_s, u"Acme"_s));
    pressDelete(u"04/03/2024"_s, u"Acme"_s, Answer::Yes);
    EXPECT_EQ(rows(u"select surveyid from survey"_s) + rows(u"select score from feedbackobjective"_s),
              QStringList());
    EXPECT_TRUE(QDir(home()).exists(u"backup"_s));
}

/// The copy of Ann's survey of the early date, which has 0, 1, 3 and 4, into one that may have questions.
TEST_F(ExistingTest, eachCallerCopiesIntoItsOwnSurvey) {
    struct Case {
        const char* caller;
        std::vector<int> before; // Bob's questions of today
        const char* after;
        const char* saved; // after Sturdy? (3) or Overall? of Quality (2) has been added
    };
    const std::vector<Case> cases = {
        {"frmSelectSurvey", {}, "5:0 5:1 5:3 5:4", "1:2 2:0 3:1 4:3 5:4"},
        {"frmNewSurvey", {2, 1}, "1:2 2:1 5:0 5:3 5:4", "1:1 2:0 3:3 4:4"},
        {"frmEditExistingSurvey", {2, 1}, "1:2 2:1 5:0 5:3 5:4", "1:1 2:0 3:3 4:4"},
        {"closed", {4}, "1:4 5:0 5:1 5:3", "1:2 2:4 3:0 4:1 5:3"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.caller);
        run(u"delete * from responquesindex"_s);
        run(u"delete * from survey"_s);
        addStored(ann, early, {0, 1, 3, 4});
        if (!c.before.empty())
            addStored(bob, today, c.before);
        const QString annBefore = stored(ann);
        const bool edits = *c.caller == 'f' && c.caller[3] == 'E';
        if (edits) {
            frmSelectSurvey::instance().Show();
            edit();
            pick(edit(), "lstRespondent", u"Bob"_s);
        } else if (c.caller[3] != 'S') {
            open(1);
        } else {
            frmSelectSurvey::instance().Show();
            frmSelectSurvey::instance().lstRespondent()->setListIndex(1);
        }
        if (*c.caller == 'c')
            QTest::keyClick(&frmSelectSurvey::instance(), Qt::Key_Escape);
        const auto copy = [](frmPasteSurvey& form) {
            EXPECT_EQ(entries(form, "lstSurvetDates").last(), u"31/01/2024*"_s);
            EXPECT_EQ(rowsOf(form), 6);
            QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier);
        };
        if (edits)
            import(edit(), "cmdCopy", copy);
        else if (c.caller[3] == 'S')
            import(frmSelectSurvey::instance(), "cmdExistingSurvey", copy);
        else
            import(frmNewSurvey::instance(), "cmdCopy", copy);
        EXPECT_EQ(stored(bob), u"05/03 "_s + QString::fromLatin1(c.after));
        EXPECT_EQ(stored(ann), annBefore);
        EXPECT_EQ(frmSelectSurvey::loaded() != nullptr, !edits && *c.caller != 'c');
        SurveyEditor& editor = edits ? static_cast<SurveyEditor&>(edit()) : frmNewSurvey::instance();
        EXPECT_EQ(editor.Caption(), edits ? u"Edit Survey"_s : u"Edit Selected Survey"_s);
        EXPECT_EQ(rowsOf(editor), 2 + QString::fromLatin1(c.after).count(u':'));
        if (edits || c.before.size() == 2)
            press(editor, "cmdRemove"); // of the first
        else
            addByButton(2);
        EXPECT_EQ(stored(bob), u"05/03 "_s + QString::fromLatin1(c.saved));
        edits ? frmEditExistingSurvey::unload() : frmNewSurvey::unload();
        frmSelectSurvey::unload();
    }
}

TEST_F(ExistingTest, aSurveyIsNotOfferedToItselfAndAFailureKeepsWhatWasCopied) {
    addStored(ann, today, {0, 1, 4});
    addStored(bob, early, {0, 2, 3, 4});
    const QStringList before = storeRows(*cnnMain);
    frmSelectSurvey::instance().Show();
    import(frmSelectSurvey::instance(), "cmdExistingSurvey", [&](frmPasteSurvey& form) {
        EXPECT_EQ(entries(form, "lstSurvetDates"), QStringList());
    messages.expect(u"Select a Survey Date to import...."_s, 16, title);
    press(form, "cmdPaste");
    EXPECT_EQ(messages.left(), 0);
});
    import(edit(), "cmdCopy", [](frmPasteSurvey& form) { // itself: all is there already
        EXPECT_EQ(entries(form, "lstSurvetDates"), QStringList{u"05/03/2024*"_s});
    press(form, "cmdPaste");
    } // namespace
);
    import(edit(), "cmdCopy", [](frmPasteSurvey& form) { press(form, "cmdClose");
    });
    EXPECT_EQ(storeRows(*cnnMain), before);
    runRaw(u"create trigger refuses before insert on responquesindex when new.questionid="_s +
           QString::number(question[3]) + u" begin select raise(abort, 'no'); end");
    messages.expectBeginning(u"Error : 19\r\n"_s);
    import(edit(), "cmdCopy", [&](frmPasteSurvey& form) {
        pick(form, "lstRespondent", u"Bob"_s);
    press(form, "cmdPaste");
    });
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:1 3:4 5:2"_s);
    EXPECT_FALSE(cnnMain->InTransaction());
    }

    } // namespace
