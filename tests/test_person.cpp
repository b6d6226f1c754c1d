// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/backup.h"
#include "core/frmErase.h"
#include "core/frmPerson.h"
#include "exchange/files/readingundo.h"
#include "exchange/reading.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

#include <QTextBrowser>

namespace {
/// Everything of Ann has "Secret" in it or her name. She has answered by 111.xls, of which an .xlsx file has
/// come back, and by a file of a name that Bob's has as well. Bob and an action name her.
struct PersonTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addStored(bob, today, {0, 4});
        run(u"update respondent set emailid='ann@secret.test', respondentdesignation='Secret' "
            "where respondentid=1"_s);
        addRespondent(acme, u"Erased respondent 1"_s); // the name is taken
        run(u"insert into segment (custid, respondentid, kind, name) values (1, 1, 'Role', 'Secret')"_s);
        add(u"actionplan"_s, {{"customerid", acme}, {"Action", u"Ask ANN or ann@secret.test, not Anna"_s}});
        add(u"dispatch"_s,
            {{"custid", acme}, {"respondentid", ann}, {"surveyid", 1}, {"filename", u"Secret.xls"_s}});
        run(u"insert into reminder values (1, '2024-03-06')"_s);
        for (const QString& name : {u"111.xls"_s, u"both.xls"_s})
            addToRegister(name);
        addToRegister(u"both.xls"_s, bob, u"Bob"_s);
        for (const auto& [name, respondent, words] : {std::tuple(u"111.xls"_s, ann, u"Secret one"_s),
                                                      {u"111.xls"_s, ann, u"Secret\ntwo"_s},
                                                      {u"112.xls"_s, bob, u"Line\nAnn"_s}})
            ASSERT_EQ(readSurveyFiles({saveFile(name, respondent, {{"C14", 7}, {"B17", words}})}).bad,
                      QStringList());
        for (const QString& name : {u"111.xlsx"_s, u"both.xls"_s, u"1111.xls"_s})
            copyHomeFile(u"template.xls"_s, name);
        if (cnnMain->IsFile()) { // as older programs deleted
            runRaw(u"pragma secure_delete = off"_s);
            addCustomer(u"Secret of old"_s);
            run(u"delete * from customer where custname='Secret of old'"_s);
        }
        backUpBeforeLoss();
        frmPerson::instance().Show();
        control<forms::ComboBox>(form(), "cmbRespondent")->setListIndex(0);
    }
    static frmPerson& form() { return frmPerson::instance(); }
    static QString page() { return control<QTextBrowser>(form(), "txtPage")->toPlainText(); }
    /// The file that is left is said afterwards.
    void eraseAll(const std::function<void(frmErase&)>& steps) {
        erase(steps, Answer::Yes, [this] {
            messages.expectTitledBeginning(
                u"Delete these files yourself:\n  "_s + path(u"both.xls"_s) +
                    u": another respondent has a file of this name, or it is no survey file\n",
                style::information);
        });
    }
    /// Presses Erase and, in the dialog, does the steps and presses its button.
    void erase(
        const std::function<void(frmErase&)>& steps, Answer answer = Answer::Yes,
        const std::function<void()>& expected = [] {}) {
        QTimer::singleShot(0, &form(), [=, this] {
            frmErase& dialog = frmErase::instance();
            EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
            steps(dialog);
            messages.expectTitledBeginning(u"Erase Ann of Acme? This cannot be undone.\r\n\r\n"_s,
                                           style::yesNo + style::critical + style::secondButton, answer);
            expected();
            press(dialog, "cmdErase");
            if (frmErase::loaded())
                frmErase::unload();
        });
        press(form(), "cmdErase");
    }
    /// What of Ann is left in the store, its file and the folder.
    QStringList traces() const {
        QStringList found = storeRows(*cnnMain).filter(QRegularExpression(u"(?i)secret|\\bann\\b"_s));
        if (cnnMain->IsFile() && contentOf(path(u"Tallywell.mdb"_s)).toLower().contains("secret"))
            found << u"the file of the store"_s;
        return found + QDir(home()).entryList({u"111.*"_s});
    }
};

TEST_F(PersonTest, showsAndSavesEverything) {
    EXPECT_EQ(listed(*control<forms::ListView>(form(), "lsvParts"))
                  .replaceInStrings(QRegularExpression(u"[|][^|]*$"_s), {}),
              QStringList({u"Respondent|1"_s, u"Groups|1"_s, u"Questionnaires|2"_s, u"Marks|1"_s,
                           u"Answers in words|1"_s, u"Register of survey files|2"_s, u"Handed over|1"_s,
                           u"Reminders|1"_s, u"Files read|2"_s, u"Answers in the records of readings|4"_s,
                           u"Texts that name the person|3"_s, u"Survey files|3"_s}));
    for (const auto& [button, name] : {std::pair("cmdPage", u"out.html"_s), {"cmdTable", u"out.csv"_s}}) {
        named = path(name);
        press(form(), button);
        const QString content = QString::fromUtf8(contentOf(path(name)));
        for (const QString& text : {u"ann@secret.test"_s, u"Secret.xls"_s, u"Secret one"_s, u"Ask ANN"_s})
            EXPECT_TRUE(content.contains(text)) << name << text;
        EXPECT_EQ(QFile::permissions(path(name)) & (QFile::ReadGroup | QFile::ReadOther),
                  QFile::Permissions());
    }
}

TEST_F(PersonTest, keepsTheMarksAndNothingElse) {
    SurveyFile unanswered{.date = today.addDays(1), .questions = {{question[4], false}}};
    unanswered.saveAs(path(u"111.xls"_s));
    ASSERT_EQ(readSurveyFiles({path(u"111.xls"_s)}).bad, QStringList());
    eraseAll([](frmErase& dialog) {
        control<QListWidget>(dialog, "lstCopies")->item(0)->setCheckState(Qt::Checked);
    });
    EXPECT_EQ(traces(), QStringList());
    EXPECT_EQ(
        rows(u"select respondentname, respondentdesignation, emailid from respondent where respondentid=1"_s),
        QStringList(u"Erased respondent 1 (2)||"_s));
    EXPECT_EQ(value(u"select score from feedbackobjective where respondentid=1"_s), u"7"_s);
    EXPECT_EQ(value(u"select [Action] from actionplan"_s),
              u"Ask Erased respondent 1 (2) or Erased respondent 1 (2), not Anna"_s);
    EXPECT_EQ(rows(u"select Description from feedbackdescriptive"_s),
              QStringList({{}, u"Line\nErased respondent 1 (2)"_s, {}}));
    EXPECT_EQ(listBackups(strDatabasePath), QStringList());
    EXPECT_TRUE(QFile::exists(path(u"both.xls"_s)) && QFile::exists(path(u"1111.xls"_s)));

    const QString protocols = home() + u"/protocols/"_s;
    const QString protocol =
        QString::fromUtf8(contentOf(protocols + QDir(protocols).entryList(QDir::Files).value(0)));
    EXPECT_EQ(page().trimmed(), protocol.trimmed());
    EXPECT_TRUE(protocol.contains(u"Survey files deleted: 2\n  111.xls\n  111.xlsx\n"_s)) << protocol;
    EXPECT_EQ(value(u"select what from protocol"_s).left(25), u"Respondent 1 erased: Answ"_s);
    EXPECT_FALSE(protocol.contains(QRegularExpression(u"(?i)secret|\\bann\\b|both"_s)));

    for (const int reading : {4, 3, 2, 1}) // their undoing meets what they left
        EXPECT_TRUE(undoReading(reading, QDateTime::currentDateTime()).kept.empty()) << reading;
    EXPECT_EQ(rows(u"select Description from feedbackdescriptive"_s), QStringList());
}

TEST_F(PersonTest, removesTheMarksByChoice) {
    eraseAll([](frmErase& dialog) { control<QRadioButton>(dialog, "opnRemove")->click(); });
    EXPECT_EQ(traces(), QStringList());
    for (const QString& table : {u"respondent"_s, u"responquesindex"_s, u"feedbackobjective"_s,
                                 u"feedbackdescriptive"_s, u"segment"_s, u"dispatch"_s})
        EXPECT_EQ(rows(u"select * from "_s + table + u" where respondentid=1"), QStringList());
    EXPECT_EQ(rows(u"select * from reminder"_s), QStringList());
    EXPECT_EQ(rows(u"select distinct answers from readingfile where respondentid=1"_s), QStringList(u"[]"_s));
    EXPECT_EQ(listBackups(strDatabasePath).size(), 1);
}

TEST_F(PersonTest, changesNothingUnlessAllOfItCanBeErased) {
    const QStringList before = storeRows(*cnnMain);
    const auto nothing = [](frmErase&) {};
    erase(nothing, Answer::No);
    EXPECT_EQ(storeRows(*cnnMain), before);

    refuse(u"update on respondent"_s, u"1=1"_s);
    erase(nothing, Answer::Yes, [this] { expectFault(Refused); });
    allow();
    EXPECT_EQ(storeRows(*cnnMain), before);

    const auto change = [](frmErase&) { run(u"update respondent set emailid='new' where respondentid=1"_s); };
    erase(change, Answer::Yes, [this] {
        messages.expectCritical(
            u"Someone else has changed this respondent meanwhile. Nothing has been changed."_s);
    });
    EXPECT_EQ(QDir(home()).entryList({u"111.*"_s}).size(), 2);
}
} // namespace
