// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "platform/crystal/previewwindow.h"
#include "platform/mapi/client.h"
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
const QString lateText = u"04/03/2024"_s;

class ExistingTest : public SurveyTest {
protected:
    static frmEditExistingSurvey& edit() {
        control<QAction>(MDIMain::instance(), "mnuEditSurvey")->trigger();
        return frmEditExistingSurvey::instance();
    }
    static void pick(QWidget& form, const char* name, const QString& entry) {
        auto* list = control<forms::ListBox>(form, name);
        const auto found = list->findItems(entry, Qt::MatchExactly);
        ASSERT_FALSE(found.isEmpty()) << name << entry.toStdString();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found[0]).center());
    }
    static void pickCustomer(QWidget& form, const QString& entry) {
        auto* list = control<forms::ComboBox>(form, "cmbCustomer");
        list->setListIndex(list->findText(entry));
    }
    /// The dates offered, the picked one starred.
    static QString dates(QWidget& form) {
        QStringList result;
        const auto* list = control<forms::ListBox>(form, "lstSurvetDates");
        for (int i = 0; i < list->ListCount(); ++i)
            result << list->List(i) + (list->Selected(i) ? u"*" : u"");
        return result.join(u' ');
    }
    static int rowsOf(QWidget& form) { return control<forms::MSHFlexGrid>(form, "grdParamAndQuest")->Rows(); }
    static QString status() { return MDIMain::instance().stsBar->Panels(1).Text(); }
    void pressDelete(const QString& date, Answer answer = Answer::Yes, const QString& failure = {}) {
        if (!date.isEmpty())
            messages.expect(u"You are about to delete the survey dated "_s + date + u" for Customer - " +
                                control<forms::ComboBox>(edit(), "cmbCustomer")->Text() +
                                u"\r\nAre you sure you want to delete...?",
                            4, title, answer);
        if (!failure.isEmpty())
            messages.expectBeginning(failure);
        QTest::keyClick(control<forms::ListBox>(edit(), "lstSurvetDates"), Qt::Key_Delete);
        EXPECT_EQ(messages.left(), 0);
        EXPECT_EQ(status(), QString());
        EXPECT_FALSE(cnnMain->InTransaction());
    }
    void addFirst(const QString& message) {
        auto* questions = control<forms::TreeView>(edit(), "trvParameter");
        questions->setCurrentItem(questions->topLevelItem(0)->child(0));
        messages.expect(message, 80, title);
        QTest::keyClick(questions, Qt::Key_Return);
    }
    static void refuse(const QString& change) {
        runRaw(u"create trigger refuses before "_s + change + u" begin select raise(abort, 'no'); end");
    }
    /// Presses a button that opens the import, drives it, and leaves it by Esc when it is still open.
    static void importBy(QWidget& form, const char* button,
                         const std::function<void(frmPasteSurvey&)>& drive) {
        QTimer whenShown;
        whenShown.setSingleShot(true);
        QObject::connect(&whenShown, &QTimer::timeout, &form, [&] {
            ASSERT_NE(frmPasteSurvey::loaded(), nullptr);
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
            drive(frmPasteSurvey::instance());
            if (frmPasteSurvey::loaded())
                QTest::keyClick(&frmPasteSurvey::instance(), Qt::Key_Escape);
        });
        whenShown.start();
        press(form, button);
        EXPECT_EQ(status(), QString());
        EXPECT_TRUE(rows(u"select * from copydetails"_s).isEmpty());
    }
};

TEST_F(ExistingTest, theListsFollowEachOtherAndWithoutADateNothingIsChanged) {
    addStored(ann, {2024, 3, 4}, {0, 4});
    addStored(ann, early, {2});
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/rptrating.rpt"), home() + u"/rptrating.rpt"));
    crystal::previewSeat = [&](const auto&, const QString& text, int) { strCompanyName = text; };
    addCustomer(u"Nobody"_s);
    frmEditExistingSurvey& form = edit();
    auto* respondents = control<forms::ListBox>(form, "lstRespondent");
    EXPECT_EQ(control<forms::ComboBox>(form, "cmbCustomer")->ListCount(), 1);
    EXPECT_EQ(respondents->ListCount(), 2);
    EXPECT_EQ(dates(form), u"31/01/2024* 04/03/2024"_s);
    EXPECT_EQ(rowsOf(form), 3);
    pick(form, "lstSurvetDates", lateText);
    EXPECT_EQ(rowsOf(form), 4);
    press(form, "cmdPrint");
    crystal::previewSeat = crystal::PreviewWindow::show;
    EXPECT_EQ(std::exchange(strCompanyName, {}), u"Customer Satisfaction Survey Report"_s);
    EXPECT_EQ(rows(u"select sdate, question from reportlinktable"_s),
              (QStringList{lateText + u"|On time?", lateText + u"|What else?"}));

    pick(form, "lstRespondent", u"Bob"_s);
    EXPECT_EQ(rowsOf(form), 2);
    const QStringList before = storeRows(*cnnMain);
    addFirst(u"No Survey Date available......"_s);
    pressDelete({});
    messages.expect(u"No Survey Date available for the Selected Respondent...Import from other survey cannot "
                    "be performed.."_s,
                    16, title);
    press(form, "cmdCopy");
    messages.expect(u"No records selected to Print for Date - .....Kindly Add Question(s) and proceed"_s,
                    524352, title);
    press(form, "cmdPrint");
    press(form, "cmdRemove");
    EXPECT_EQ(status(), u"Removing...."_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    pick(form, "lstRespondent", u"Ann"_s);
    run(u"delete * from respondent"_s);
    Q_EMIT control<forms::ComboBox>(form, "cmbCustomer")->Click();
    EXPECT_EQ(dates(form) + QString::number(rowsOf(form)), u"2"_s);
    messages.expect(u"No Respondent name present to Edit Survey"_s, 16, title);
    press(form, "cmdCopy");
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_EQ(frmEditExistingSurvey::loaded(), nullptr);
}

TEST_F(ExistingTest, thePickedDateIsExportedAndMailed) {
    addStored(ann, {2024, 3, 4}, {0, 4});
    addStored(bob, early, {2});
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"), home() + u"/template.xls"));
    QStringList mails;
    mapi::hasClientSeat = [] { return true; };
    mapi::composeSeat = [&](const mapi::Mail& mail) { mails << QFileInfo(mail.attachmentPath).fileName(); };
    messages.expect(u"Survey File Exported...Do you want to view the file? "_s, 68, title, Answer::No);
    press(edit(), "cmdExport");
    pick(edit(), "lstRespondent", u"Bob"_s);
    press(edit(), "cmdmail");
    EXPECT_FALSE(edit().blnMail);
    EXPECT_EQ(rows(u"select respname, sdate from log"_s),
              (QStringList{u"Ann|"_s + lateText, u"Bob|31/01/2024"_s}));
    EXPECT_EQ(mails, rows(u"select xlsfilename from log where respname='Bob'"_s));
    EXPECT_EQ(rows(u"select question from reportlinktable"_s), QStringList{u"Overall?"_s});
}

TEST_F(ExistingTest, anEmptyDateIsDeletedOnlyWithTheCustomersLastQuestions) {
    addStored(ann, early, {0});
    addStored(ann, {2024, 3, 4}, {1});
    frmEditExistingSurvey& form = edit();
    press(form, "cmdRemove");
    QStringList before = storeRows(*cnnMain);
    pressDelete(u"31/01/2024"_s); // the later date still has questions
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_FALSE(QDir(home()).exists(u"backup"_s));
    EXPECT_EQ(dates(form), lateText);
    pressDelete({});
    addFirst(u"No Survey Date selected......Select one and proceed....."_s);
    messages.expectBeginning(u"Error : 13\r\nType mismatch"_s);
    importBy(form, "cmdCopy", [](frmPasteSurvey& paste) { press(paste, "cmdPaste"); });
    EXPECT_EQ(storeRows(*cnnMain), before);
    pick(form, "lstSurvetDates", lateText);
    press(form, "cmdRemove");
    addScore(ann, question[0], toGetSurveyID(lateText, u"Acme"_s).toInt(), early, 1, 2);
    before = storeRows(*cnnMain);
    refuse(u"delete on survey"_s);
    pressDelete(lateText, Answer::Yes, u"Error : 19\r\nno"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    runRaw(u"drop trigger refuses"_s);
    pressDelete(lateText);
    EXPECT_EQ(goneRows(before, storeRows(*cnnMain)).size(), 3); // two surveys, one answer
    EXPECT_TRUE(QDir(home()).exists(u"backup"_s));
}

TEST_F(ExistingTest, aDateStaysForOthersWhenQuestionsInSightAreNoLongerStored) {
    addStored(ann, early, {0, 1, 2});
    addStored(bob, early, {0});
    edit();
    run(u"delete * from questions where questionid="_s + QString::number(question[1]));
    pressDelete(u"31/01/2024"_s);
    EXPECT_EQ(stored(bob), u"31/01 1:0"_s);
}

/// Ann's survey of the early date has the questions 0, 1, 3 and 4.
TEST_F(ExistingTest, eachCallerCopiesIntoItsOwnSurvey) {
    enum Caller { Select, New, NewWithSelectClosed, Edit };
    struct Case {
        Caller caller;
        std::vector<int> before; // Bob's questions of today
        const char16_t* after;
        const char16_t* saved; // after the first has been removed
    };
    const std::vector<Case> cases = {
        {Select, {}, u"05/03 5:0 5:1 5:3 5:4", u"05/03 1:1 2:3 3:4"},
        {New, {2, 1}, u"05/03 1:2 2:1 5:0 5:3 5:4", u"05/03 1:1 2:0 3:3 4:4"},
        {NewWithSelectClosed, {4}, u"05/03 1:4 5:0 5:1 5:3", u"05/03 1:0 2:1 3:3"},
        {Edit, {2, 1}, u"05/03 1:2 2:1 5:0 5:3 5:4", u"05/03 1:1 2:0 3:3 4:4"}};
    addStored(ann, early, {0, 1, 3, 4});
    const QString annBefore = stored(ann);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.caller);
        run(u"delete * from responquesindex where respondentid="_s + QString::number(bob));
        run(u"delete * from survey where sdate=#03/05/2024#"_s);
        if (!c.before.empty())
            addStored(bob, today, c.before);
        frmSelectSurvey::instance().Show();
        frmSelectSurvey::instance().lstRespondent()->setListIndex(1);
        if (c.caller == New || c.caller == NewWithSelectClosed)
            open(1);
        if (c.caller == NewWithSelectClosed)
            frmSelectSurvey::unload();
        if (c.caller == Edit)
            pick(edit(), "lstRespondent", u"Bob"_s);
        QWidget& form = c.caller == Select ? static_cast<QWidget&>(frmSelectSurvey::instance())
                        : c.caller == Edit ? static_cast<QWidget&>(edit())
                                           : frmNewSurvey::instance();
        importBy(form, c.caller == Select ? "cmdExistingSurvey" : "cmdCopy", [](frmPasteSurvey& paste) {
            EXPECT_EQ(dates(paste), u"31/01/2024*"_s);
            EXPECT_EQ(rowsOf(paste), 6);
            QTest::keyClick(&paste, Qt::Key_O, Qt::AltModifier);
        });
        EXPECT_EQ(stored(bob), QString::fromUtf16(c.after));
        EXPECT_EQ(frmSelectSurvey::loaded() != nullptr, c.caller == Select || c.caller == New);
        SurveyEditor& editor =
            c.caller == Edit ? static_cast<SurveyEditor&>(edit()) : frmNewSurvey::instance();
        EXPECT_EQ(editor.Caption(), c.caller == Edit ? u"Edit Survey"_s : u"Edit Selected Survey"_s);
        EXPECT_EQ(rowsOf(editor), 2 + stored(bob).count(u':'));
        press(editor, "cmdRemove");
        EXPECT_EQ(stored(bob), QString::fromUtf16(c.saved));
        EXPECT_EQ(stored(ann), annBefore);
        editor.Unload();
    }
}

TEST_F(ExistingTest, aSurveyIsNotOfferedToItselfAndAFailureKeepsWhatWasCopied) {
    addStored(ann, today, {0, 1, 4});
    addStored(bob, early, {0, 2, 3, 4});
    const QStringList before = storeRows(*cnnMain);
    frmSelectSurvey::instance().Show();
    importBy(frmSelectSurvey::instance(), "cmdExistingSurvey", [&](frmPasteSurvey& form) {
        EXPECT_EQ(dates(form), QString());
        messages.expect(u"Select a Survey Date to import...."_s, 16, title);
        press(form, "cmdPaste");
        EXPECT_EQ(messages.left(), 0);
    });
    importBy(edit(), "cmdCopy", [](frmPasteSurvey& form) { // itself: all is there already
        EXPECT_EQ(dates(form), u"05/03/2024*"_s);
        press(form, "cmdPaste");
    });
    importBy(edit(), "cmdCopy", [](frmPasteSurvey& form) { press(form, "cmdClose"); });
    EXPECT_EQ(storeRows(*cnnMain), before);
    refuse(u"insert on responquesindex when new.questionid="_s + QString::number(question[3]));
    messages.expectBeginning(u"Error : 19\r\nno"_s);
    importBy(edit(), "cmdCopy", [](frmPasteSurvey& form) {
        pick(form, "lstRespondent", u"Bob"_s);
        press(form, "cmdPaste");
    });
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:1 3:4 5:2"_s);
    EXPECT_FALSE(cnnMain->InTransaction());
}

/// In 30 customers Ann has the questions 1 to 3 on six dates, Bob 4 and 5 on all of them but the last.
TEST_F(ExistingTest, deletingAndCopyingTouchTheRowsThatWereMeantAndNoOthers) {
    cnnMain->BeginTrans();
    for (int i = 1; i < 30; ++i) {
        const int custid = addCustomer(u"Customer %1"_s.arg(i));
        addRespondent(custid, u"Ann"_s);
        addRespondent(custid, u"Bob"_s);
    }
    for (int month = 1; month <= 6; ++month)
        run(u"insert into survey (sdate, custid) select '2024-0%1-15', custid from customer"_s.arg(month));
    run(u"insert into responquesindex select respondentid, questionid, surveyid, case when questionid < "
        u"4 then "
        "questionid else questionid - 3 end from custresp join survey on survey.custid = custresp.custid "
        "join "
        "questions on (questionid < 4) = (respondentname = 'Ann') where questionid < 4 or sdate < '2024-06-01'"_s);
    const QString each = u" select respondentid, questionid, surveyid, sdate from responquery"_s;
    for (const QString& table : {u"feedbackobjective"_s, u"feedbackdescriptive"_s})
        run(u"insert into "_s + table + u" (respondentid, questionid, surveyid, surveydate)" + each);
    run(u"insert into log (respid, xlsfilename, surveyid, sdate)"_s + each);
    run(u"insert into reportlinktable (respondentid, questionid, custid, sdate)"_s + each);
    cnnMain->CommitTrans();

    const QString customer = u"Customer 17"_s;
    const QString annId = toGetRespondentID(u"Ann"_s, customer);
    pickCustomer(edit(), customer);
    for (const auto& [date, alone] : {std::pair(u"15/03/2024"_s, false), {u"15/06/2024"_s, true}}) {
        pick(edit(), "lstSurvetDates", date);
        const QStringList before = storeRows(*cnnMain);
        pressDelete(date, Answer::No);
        const QString ofSurvey = u"surveyid="_s + toGetSurveyID(date, customer);
        QStringList meant = alone ? storeRows(*cnnMain, u"survey"_s, ofSurvey) : QStringList();
        for (const char* name :
             {"responquesindex", "reportlinktable", "feedbackobjective", "feedbackdescriptive", "log"}) {
            const QString table = QString::fromLatin1(name);
            meant += storeRows(*cnnMain, table,
                               (table == u"reportlinktable" ? u"custid"_s + ofSurvey.mid(8) : ofSurvey) +
                                   (table == u"log" ? u" and respid=" : u" and respondentid=") + annId);
            refuse(u"delete on "_s + table);
            pressDelete(date, Answer::Yes, u"Error : 19\r\nno"_s);
            runRaw(u"drop trigger refuses"_s);
            pick(edit(), "lstSurvetDates", date);
        }
        meant.sort();
        EXPECT_EQ(storeRows(*cnnMain), before);
        pressDelete(date);
        const QStringList after = storeRows(*cnnMain);
        EXPECT_EQ(goneRows(before, after), meant);
        EXPECT_EQ(goneRows(after, before), QStringList());
        EXPECT_EQ(meant.size(), 15 + alone);
        EXPECT_TRUE(dates(edit()).startsWith(u"15/01/2024* "));
        EXPECT_EQ(rowsOf(edit()), 5);
    }

    const QStringList before = storeRows(*cnnMain);
    importBy(edit(), "cmdCopy", [](frmPasteSurvey& form) {
        pickCustomer(form, u"Customer 4"_s);
        pick(form, "lstRespondent", u"Bob"_s);
        pick(form, "lstSurvetDates", u"15/02/2024"_s);
        press(form, "cmdPaste");
    });
    const QStringList copied = storeRows(*cnnMain);
    const QString row =
        u"responquesindex|"_s + annId + u"|%1|" + toGetSurveyID(u"15/01/2024"_s, customer) + u"|%2";
    EXPECT_EQ(goneRows(before, copied), QStringList());
    EXPECT_EQ(goneRows(copied, before), (QStringList{row.arg(4).arg(3), row.arg(5).arg(3)}));
    press(edit(), "cmdRemove"); // the first; the save gives the others their places
    EXPECT_EQ(goneRows(storeRows(*cnnMain), before),
              (QStringList{row.arg(2).arg(1), row.arg(3).arg(2), row.arg(4).arg(3), row.arg(5).arg(4)}));
    EXPECT_EQ(
        rows(u"select surveyid from responquesindex where surveyid not in (select surveyid from survey)"_s),
        QStringList());
    EXPECT_EQ(QDir(home() + u"/backup").entryList(QDir::Files).size(), 1);
}

} // namespace
