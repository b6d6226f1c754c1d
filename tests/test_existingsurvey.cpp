// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/crystalreport.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmPasteSurvey.h"
#include "tests/support/surveytest.h"

namespace {
const QDate early{2024, 1, 31};
const QString lateText = u"04/03/2024"_s;

struct ExistingTest : SurveyTest {
    static frmEditExistingSurvey& edit() {
        control<QAction>(MDIMain::instance(), "mnuEditSurvey")->trigger();
        return frmEditExistingSurvey::instance();
    }
    static void pickCustomer(QWidget& form, const QString& entry) {
        auto* list = control<forms::ComboBox>(form, "cmbCustomer");
        list->setListIndex(list->findText(entry));
    }
    /// The listed dates; the selected one is starred.
    static QString dates(QWidget& form) {
        QStringList result;
        const auto* list = control<forms::ListBox>(form, "lstSurvetDates");
        for (int i = 0; i < list->ListCount(); ++i)
            result << list->List(i) + (list->Selected(i) ? u"*" : u"");
        return result.join(u' ');
    }
    static int rowsOf(QWidget& form) { return control<forms::MSHFlexGrid>(form, "grdParamAndQuest")->Rows(); }
    void expectAsked(const QString& date, Answer answer) {
        const QString asked = u"You are about to delete the survey dated %1 for Customer - %2\r\nAre you "
                              "sure you want to delete...?"_s;
        messages.expectTitled(asked.arg(date, control<forms::ComboBox>(edit(), "cmbCustomer")->Text()),
                              style::yesNo + style::secondButton, answer);
    }
    void pressDelete(const QString& date, Answer answer = Answer::Yes, bool isRefused = false) {
        if (!date.isEmpty())
            expectAsked(date, answer);
        if (isRefused)
            expectFault(Refused);
        QTest::keyClick(control<forms::ListBox>(edit(), "lstSurvetDates"), Qt::Key_Delete);
        expectIdle();
    }
    /// Presses a button that opens the import, drives it, and closes it by Esc if it is still open.
    void importInto(QWidget& form, const char* button, const std::function<void(frmPasteSurvey&)>& drive) {
        QTimer::singleShot(0, &form, [drive] {
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
            drive(frmPasteSurvey::instance());
            if (frmPasteSurvey::loaded())
                QTest::keyClick(&frmPasteSurvey::instance(), Qt::Key_Escape);
        });
        press(form, button);
        EXPECT_EQ(panel(), QString());
        EXPECT_TRUE(rows(u"select * from copydetails"_s).isEmpty());
    }
};

TEST_F(ExistingTest, withoutADateNothingIsChanged) {
    addStored(ann, early, {2});
    copyHomeFile(u"rptrating.rpt"_s);
    QString title;
    const Replaced<crystal::previewHook> preview(
        [&](const auto&, const QString& text, int) { title = text; });
    frmEditExistingSurvey& form = edit();
    press(form, "cmdPrint");
    EXPECT_EQ(title, u"Customer Satisfaction Survey Report"_s);
    EXPECT_EQ(rows(u"select sdate, question from reportlinktable"_s), QStringList{u"31/01/2024|Overall?"_s});

    clickEntry(form, "lstRespondent", 1);
    const QStringList before = storeRows(*cnnMain);
    auto* questions = control<forms::TreeView>(form, "trvParameter");
    questions->setCurrentItem(questions->topLevelItem(0)->child(0));
    messages.expectTitled(u"No Survey Date available......"_s, style::noIcon);
    keyOn(form, "trvParameter", Qt::Key_Return);
    pressDelete({});
    messages.expectCritical(u"No Survey Date available for the Selected Respondent...Import from other "
                            "survey cannot be performed.."_s);
    press(form, "cmdCopy");
    press(form, "cmdRemove");
    EXPECT_EQ(panel(), u"Removing...."_s);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(storeRows(*cnnMain), before);
    clickEntry(form, "lstRespondent", 0);
    run(u"delete * from respondent"_s);
    Q_EMIT control<forms::ComboBox>(form, "cmbCustomer")->Click();
    EXPECT_EQ(rowsOf(form), 2);
}

TEST_F(ExistingTest, aQuestionnaireThatCannotBeReadLeavesNoOtherOnShow) {
    addStored(ann, early, {0, 1});
    addStored(ann, today, {2});
    auto* list = control<forms::ListBox>(edit(), "lstSurvetDates");
    ASSERT_EQ(rowsOf(edit()), 4);
    whileLocked([&] { list->setListIndex(1); });
    EXPECT_EQ(rowsOf(edit()), 2);
    importInto(edit(), "cmdCopy", [&](frmPasteSurvey& form) {
        ASSERT_EQ(rowsOf(form), 4);
        whileLocked([&] { control<forms::ListBox>(form, "lstSurvetDates")->setListIndex(1); });
        EXPECT_EQ(rowsOf(form), 2);
        press(form, "cmdPaste");
        EXPECT_NE(frmPasteSurvey::loaded(), nullptr);
        EXPECT_EQ(rowsOf(form), 3) << "read now";
    });
}

TEST_F(ExistingTest, aDateWhoseQuestionsHaveLeftTheCatalogueCanBeDeleted) {
    addStored(ann, early, {3});
    addStored(ann, today, {1});
    addStored(bob, early, {2});
    dropQuestion(3);
    EXPECT_EQ(dates(edit()) + QString::number(rowsOf(edit())), u"31/01/2024* 05/03/20242"_s);
    whileLocked([] { QTest::keyClick(control<forms::ListBox>(edit(), "lstSurvetDates"), Qt::Key_Delete); });
    pressDelete(u"31/01/2024"_s);
    EXPECT_EQ(dates(edit()), u"05/03/2024"_s);
    EXPECT_EQ(stored(ann), u"05/03 1:1"_s);
    EXPECT_EQ(stored(bob), u"31/01 1:2"_s);
    EXPECT_EQ(value(u"select count(*) from survey"_s), u"2"_s);
}

TEST_F(ExistingTest, nothingIsDeletedOrImportedForADeletedOwner) {
    addStored(ann, early, {0});
    addStored(bob, today, {1});
    edit();
    withoutOwner(u"Ann"_s, [] { edit().toDeleteSurvey(); });
    expectAsked(u"31/01/2024"_s, Answer::Yes);
    withoutOwner(u"Ann"_s, [this] { pressDelete({}); }); // reads the grid again, which is then empty
    EXPECT_FALSE(QDir(home()).exists(u"backup"_s));
    for (const QString& name : {u"Ann"_s, u"Bob"_s}) { // target and source
        importInto(edit(), "cmdCopy", [&](frmPasteSurvey& form) {
            clickEntry(form, "lstRespondent", 1);
            withoutOwner(name, [&] { EXPECT_FALSE(form.toSaveTheCopyDetails()); });
            EXPECT_TRUE(form.toSaveTheCopyDetails());
            withoutOwner(name, [&] { form.toPasteCopyDetails(); });
        });
    }
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
    messages.expectCritical(u"No Survey Date selected......Select one and proceed....."_s);
    importInto(form, "cmdCopy", [](frmPasteSurvey& paste) { press(paste, "cmdPaste"); });
    EXPECT_EQ(storeRows(*cnnMain), before);
    clickEntry(form, "lstSurvetDates", 0);
    press(form, "cmdRemove"); // its last question
    addScore(ann, question[0], surveyOf(u"Acme"_s, toDate(lateText)), early, 1, 2);
    before = storeRows(*cnnMain);
    refuse(u"delete on survey"_s);
    pressDelete(lateText, Answer::Yes, true);
    EXPECT_EQ(storeRows(*cnnMain), before);
    allow();
    pressDelete(lateText);
    EXPECT_EQ(removedRows(before, storeRows(*cnnMain)).size(), 3); // two surveys, one answer
    EXPECT_TRUE(QDir(home()).exists(u"backup"_s));
}

TEST_F(ExistingTest, eachCallerCopiesIntoItsOwnSurvey) {
    addStored(ann, early, {3, 0, 4, 1});
    const auto paste = [](frmPasteSurvey& form) { QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier); };
    open(0); // closed in favour of the target's editor
    frmSelectSurvey::instance().lstRespondent()->setListIndex(1);
    frmSelectSurvey::instance().Show();
    importInto(frmSelectSurvey::instance(), "cmdExistingSurvey", paste);
    EXPECT_EQ(stored(bob), u"05/03 5:3 5:0 5:4 5:1"_s);
    press(frmNewSurvey::instance(), "cmdRemove");
    EXPECT_EQ(stored(bob), u"05/03 1:0 2:4 3:1"_s);

    frmSelectSurvey::unload();
    importInto(frmNewSurvey::instance(), "cmdCopy", paste);
    EXPECT_EQ(stored(bob), u"05/03 1:0 2:4 3:1 5:3"_s);
    EXPECT_EQ(grid()->Rows(), 6);
    EXPECT_EQ(frmSelectSurvey::loaded(), nullptr);
    EXPECT_EQ(stored(ann), u"31/01 1:3 2:0 3:4 4:1"_s);
}

TEST_F(ExistingTest, aSurveyIsNotOfferedToItselfAndAFailureKeepsWhatWasCopied) {
    addStored(ann, today, {0, 1, 4});
    addStored(bob, early, {0, 2, 3, 4});
    frmSelectSurvey::instance().Show();
    importInto(frmSelectSurvey::instance(), "cmdExistingSurvey", [&](frmPasteSurvey& form) {
        EXPECT_EQ(dates(form), QString());
        messages.expectCritical(u"Select a Survey Date to import...."_s);
        press(form, "cmdPaste");
    });
    refuse(u"insert on responquesindex"_s, u"new.questionid="_s + QString::number(question[3]));
    expectFault(Refused);
    importInto(edit(), "cmdCopy", [](frmPasteSurvey& form) {
        clickEntry(form, "lstRespondent", 1);
        press(form, "cmdPaste");
    });
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:1 3:4 5:2"_s);
    EXPECT_FALSE(cnnMain->InTransaction());
}

/// Six customers: Ann has the questions 1 to 3 on six dates, Bob 4 and 5 on all but the last.
TEST_F(ExistingTest, deletingAndCopyingTouchOnlyTheIntendedRows) {
    for (int i = 1; i < 6; ++i) {
        const int custid = addCustomer(u"Customer %1"_s.arg(i));
        addRespondent(custid, u"Ann"_s);
        addRespondent(custid, u"Bob"_s);
    }
    for (int month = 1; month <= 6; ++month)
        run(u"insert into survey (sdate, custid) select '2024-0%1-15', custid from customer"_s.arg(month));
    run(u"insert into responquesindex select respondentid, questionid, surveyid, (questionid - 1) % 3 + 1 "
        "from custresp join survey on survey.custid = custresp.custid join questions "
        "on (questionid < 4) = (respondentname = 'Ann') where questionid < 4 or sdate < '2024-06-01'"_s);
    const QString each = u" select respondentid, questionid, surveyid, sdate from responquery"_s;
    for (const QString& table : {u"feedbackobjective"_s, u"feedbackdescriptive"_s})
        run(u"insert into "_s + table + u" (respondentid, questionid, surveyid, surveydate)" + each);
    run(u"insert into log (respid, xlsfilename, surveyid, sdate)"_s + each);
    run(u"insert into reportlinktable (respondentid, questionid, custid, sdate)"_s + each);
    run(u"insert into dispatch (respondentid, surveyid, due) select respondentid, surveyid, sdate from existingsurvey"_s);
    run(u"insert into reminder select dispatchid, due from dispatch"_s);

    const QString customer = u"Customer 3"_s;
    const QString annId = QString::number(findRespondent(u"Ann"_s, findCustomer(customer)));
    pickCustomer(edit(), customer);
    for (const auto& [date, entry, alone] :
         {std::tuple(u"15/03/2024"_s, 2, false), {u"15/06/2024"_s, 4, true}}) {
        clickEntry(edit(), "lstSurvetDates", entry);
        const QStringList before = storeRows(*cnnMain);
        pressDelete(date, Answer::No);
        const QString ofSurvey = u"surveyid=%1"_s.arg(surveyOf(customer, toDate(date)));
        QStringList meant = alone ? storeRows(*cnnMain, u"survey"_s, ofSurvey) : QStringList();
        meant +=
            storeRows(*cnnMain, u"reminder"_s,
                      u"dispatchid in (select dispatchid from dispatch where %1 and respondentid=%2)"_s.arg(
                          ofSurvey, annId));
        for (const char* name : {"responquesindex", "reportlinktable", "feedbackobjective",
                                 "feedbackdescriptive", "log", "dispatch"}) {
            const QString table = QString::fromLatin1(name);
            meant += storeRows(*cnnMain, table,
                               (table == u"reportlinktable" ? u"custid"_s + ofSurvey.mid(8) : ofSurvey) +
                                   (table == u"log" ? u" and respid=" : u" and respondentid=") + annId);
            if (!cnnMain->IsFile() && table == u"reportlinktable")
                continue; // a server has no triggers on temporary tables
            refuse(u"delete on "_s + table);
            pressDelete(date, Answer::Yes, true);
            allow();
            clickEntry(edit(), "lstSurvetDates", entry);
        }
        meant.sort();
        EXPECT_EQ(storeRows(*cnnMain), before);
        pressDelete(date);
        const QStringList after = storeRows(*cnnMain);
        EXPECT_EQ(removedRows(before, after), meant);
        EXPECT_EQ(removedRows(after, before), QStringList());
        EXPECT_EQ(meant.size(), 17 + alone);
    }

    const QStringList before = storeRows(*cnnMain);
    importInto(edit(), "cmdCopy", [](frmPasteSurvey& form) {
        pickCustomer(form, u"Customer 4"_s);
        clickEntry(form, "lstRespondent", 1);
        clickEntry(form, "lstSurvetDates", 1);
        press(form, "cmdPaste");
    });
    const QStringList copied = storeRows(*cnnMain);
    const QString row =
        u"responquesindex|"_s + annId + u"|%1|" + QString::number(surveyOf(customer, {2024, 1, 15})) + u"|%2";
    EXPECT_EQ(removedRows(before, copied), QStringList());
    EXPECT_EQ(removedRows(copied, before), (QStringList{row.arg(4).arg(3), row.arg(5).arg(3)}));
}
} // namespace
