// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmReading.h"
#include "feedback/frmFeedBackObj.h"
#include "tests/support/gridform.h"
#include "tests/support/surveytest.h"

namespace {
const QString overflow = u"Overflow"_s;
const QString mismatch = u"Type mismatch"_s;
const QString remarksHead = u"Read as it stands, but worth a look:\r\n"_s;

/// Ann has the questions 0 and 4 of the catalogue in the survey of today, exported under the name ann.xls.
struct ReadingTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addToRegister(u"ann.xls"_s);
    }
    void fill(const Cells& cells, const QString& name = u"ann.xls"_s) const { saveFile(name, ann, cells); }
    static QString failureAt(const char* cell, const QString& why = mismatch,
                             const QString& file = u"ann.xls"_s) {
        return why + u"\r\n%1 was not read beyond cell %2."_s.arg(file, QLatin1StringView(cell));
    }
    static QString remarks(const QStringList& lines) {
        return remarksHead + u"ann.xls, "_s + lines.join(u"\r\nann.xls, "_s);
    }
    void expectNotRead(const QString& names) {
        messages.expect(u"Not read to the end:\r\n"_s + names, style::information);
    }
    static void clearAnswers() {
        run(u"delete * from feedbackobjective"_s);
        run(u"delete * from feedbackdescriptive"_s);
        run(u"update log set Status=False"_s);
    }
    void importFiles(const QStringList& names = {u"ann.xls"_s}) {
        picked = path(names.join(u'\n' + home() + u'/'));
        frmReading& form = show<frmReading>();
        press(form, "cmdBrowse");
        auto* list = control<forms::ListBox>(form, "lstXlsFiles");
        EXPECT_EQ(list->ListCount(), names.size());
        list->setFocus();
        shortcut(Qt::Key_A);
        messages.expect(u"Import Done...."_s, style::information);
        press(form, "cmdImport");
        expectIdle();
    }
    /// The answers as "questionid:weightage,score" and "questionid:weightage words"; a Null is "-".
    static QString answers(int respondentid) {
        const QString of =
            u"select questionid || ':' || weightage || %2 || case when surveyid=1 and "
            "surveydate='2024-03-05' then '' else ' of another survey' end from %1 where respondentid="_s +
            QString::number(respondentid) + u" order by questionid";
        const QString words = u"' ' || coalesce(Description, '-')"_s;
        return (rows(of.arg(u"feedbackobjective"_s, u"',' || score"_s)) +
                rows(of.arg(u"feedbackdescriptive"_s, words)))
            .join(u' ');
    }
    /// Reads by the form of one respondent's answers.
    void readSelected() {
        press(show<frmFeedBackObj>(), "cmdRead");
        EXPECT_EQ(messages.left(), 0);
    }
    static QStringList shown() {
        const EditedGrid grid(frmFeedBackObj::instance(), "grdDtls", "txtDtls");
        return {grid.row(1), grid.row(2)};
    }
    /// Reads by both forms and compares Ann's and Bob's answers ("Ann's/Bob's"). A failing conversion names
    /// the last cell and ends the read; anything else reported is a remark.
    void expectRead(const Cells& cells, const QStringList& reported, const QString& expected) {
        SCOPED_TRACE(testing::PrintToString(reported) + testing::PrintToString(expected));
        fill(cells);
        for (const bool many : {true, false}) {
            clearAnswers();
            QString listed = path(u"ann.xls"_s);
            if (reported.contains(overflow) || reported.contains(mismatch)) {
                const QString failure = failureAt(cells.back().first, reported[0]);
                messages.expect(failure);
                listed += u"  \u2013  "_s + failure.simplified();
            } else if (!reported.isEmpty()) {
                messages.expect(remarks(reported), style::information);
            }
            many ? importFiles() : readSelected();
            if (many) {
                EXPECT_EQ(control<forms::ListBox>(frmReading::instance(), "lstXlsFiles")->item(0)->text(),
                          listed);
            }
            EXPECT_EQ(answers(ann) + u'/' + answers(bob), expected);
            EXPECT_EQ(rows(u"select xlsfilename, Status from log"_s).value(0), u"ann.xls|True");
        }
    }
};

TEST_F(ReadingTest, cellsBecomeAnswersOrEndTheRead) {
    const QString all = u"1:9,7 5:3  It's good /"_s;
    const QString noWords = u"1:9,7/"_s;
    const std::tuple<QStringList, QString, Cells> cases[] = {
        // of the cells one is changed at a time
        {{}, all, {{"D14", 9}, {"I3", u"05/03/2024"_s}, {"I3", 45356}}}, // the cell shows dates
        {{}, u"1:9,7 5:3 -/"_s, {{"B17", u"  Type your Answer here "_s}}},
        {{}, u"1:9,7 5:3 12.5/"_s, {{"B17", 12.5}}},
        {{}, u"1:9,7 5:3 /"_s, {{"B17", {}}}}, // no Null
        {{}, u"1:9,8 5:3  It's good /"_s, {{"C14", u" 7.5 "_s}}},
        {{}, noWords, {{"I16", {}}, {"I4", u"0"_s}}},
        {{}, u"/"_s, {{"I4", -1000}}},
        {{u"C14: mark -1 is outside 0 to 10"_s}, u"1:9,-1 5:3  It's good /"_s, {{"C14", -1}}},
        {{overflow}, u"/"_s, {{"C14", 32767.6}, {"I5", 1e300}, {"I4", 1e9}}},
        {{mismatch}, noWords, {{"D16", u"ten"_s}, {"D16", u" "_s}, {"D16", QDate(2024, 2, 1)}, {"I16", 5.5}}},
        {{mismatch}, noWords, {{"I16", u"5'; delete * from log"_s}, {"I16", excel::Value::boolean(true)}}},
        {{mismatch}, u"/"_s, {{"I2", u"1 or 1=1"_s}, {"I2", {}}, {"I3", u"#01/01/2000#"_s}, {"I3", -5}}},
    };
    for (const auto& [reported, expected, changes] : cases) {
        for (const auto& change : changes)
            expectRead({{"D14", 9}, {"C14", 7}, {"D16", 3}, {"B17", u" It's good "_s}, change}, reported,
                       expected);
    }
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList({u"*.mdb"_s}).size(), 1); // made before the first read
}

TEST_F(ReadingTest, filesThatAreNoSurveyFilesAreRefused) {
    for (const QString& sample : {u"t_xlwt.xls"_s, u"formulas_and_merges.xls"_s})
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/tests/data/xls/") + sample, path(sample));
    messages.expectBeginning(u"The file \"t_xlwt.xls\" has no sheet \"Sheet1\"."_s);
    importFiles({u"t_xlwt.xls"_s});

    // Formulas are read as their results, merged cells as their first; another sheet precedes Sheet1.
    messages.expect(failureAt("C21", mismatch, u"formulas_and_merges.xls"_s));
    importFiles({u"formulas_and_merges.xls"_s});
    EXPECT_EQ(answers(ann), u"1:9,7 2:0,5 5:4 Good work"_s);
}

TEST_F(ReadingTest, manyFilesOfWhichSomeAreBad) {
    QStringList files;
    for (int i = 1; i <= 6; ++i) {
        files << u"Anné %1 o'k.xls"_s.arg(i);
        const QString doubled = QString(files.back()).replace(u'\'', u"''"_s);
        addToRegister(i % 2 == 0 ? toStoredText(files.back()) : doubled, 100 + i);
        saveFile(files.back(), 100 + i,
                 {{"C14", i}, {"D16", i == 2 ? excel::Value(u"two"_s) : excel::Value()}});
    }
    QFile::resize(path(files[3]), 700);
    QFile::remove(path(files[5]));
    messages.expect(failureAt("D16", mismatch, files[1]));
    messages.expectBeginning(u"The file \"Anné 4 o'k.xls\" "_s);
    messages.expectBeginning(u"The file \"%1\" "_s.arg(path(files[5])));
    expectNotRead(u"Anné 2 o'k.xls (cell D16)\r\nAnné 4 o'k.xls\r\nAnné 6 o'k.xls"_s);
    importFiles(files);
    EXPECT_EQ(value(u"select count(*) from feedbackobjective"_s), u"4"_s);
    EXPECT_EQ(value(u"select count(*) from log where Status=True"_s), u"6"_s);
    EXPECT_EQ(answers(105), u"1:0,5 5:0 -"_s);
}

TEST_F(ReadingTest, theFileOfTheSelectionIsFoundOrLocated) {
    ASSERT_TRUE(QDir(home()).mkpath(u"elsewhere"_s));
    const QString name = u"Ann\u2019s.xls"_s;
    run(u"update log set xlsfilename='%1'"_s.arg(name));
    fill({{"D14", 9}, {"C14", 7}, {"B17", u"Good"_s}}, u"elsewhere/Ann's.xls"_s);
    picked.clear();
    readSelected();
    EXPECT_EQ(value(u"select Status from log"_s), u"True"_s) << "the row is marked as read all the same";
    picked = path(u"elsewhere/ann's.xls"_s);
    messages.expect(
        u"You have not specified the Correct XLS file.....The orignal file is - Ann\u2019s.xls Please "
        u"locate the same XLS file"_s,
        style::critical);
    readSelected();
    EXPECT_EQ(answers(ann), QString());
    EXPECT_TRUE(offered.endsWith(u";;Survey Files (*.xls *.xlsx *.xlsm *.ods)"));
    picked = path(u"elsewhere/Ann's.xls"_s);
    readSelected();
    EXPECT_EQ(shown(), (QStringList{u"On time?|9|7|"_s, u"What else?|||Good"_s}));

    fill({{"D14", 4}}, name);
    messages.expectBeginning(
        u"The file \"%1\" "_s.arg(name)); // until then looked up in the working directory
    readSelected();
    frmReading::instance().Show(); // the form becomes active again
    readSelected();
    EXPECT_EQ(shown(), (QStringList{u"On time?|4||"_s, u"What else?|||"_s}));
}

TEST_F(ReadingTest, answersReadElsewhereAreNotSavedOver) {
    frmFeedBackObj::instance().Show();
    fill({{"D14", 9}, {"C14", 7}});
    importFiles();
    press(show<frmFeedBackObj>(), "cmdSave");
    EXPECT_EQ(answers(ann), u"1:9,7 5:0 -"_s);
}

TEST_F(ReadingTest, aStoreFailureEndsTheReadAndIsReported) {
    fill({{"D14", 9}});
    refuse(u"insert on feedbackdescriptive"_s);
    expectFault(Refused);
    expectNotRead(u"ann.xls"_s);
    readSelected();
    EXPECT_EQ(answers(ann), u"1:9,0"_s);
}

TEST_F(ReadingTest, remarksAreShownByBothForms) {
    const auto lost = [](const QString& by) -> QString {
        return u"I16: question 5 was not read, it lies within the rows of question "_s + by;
    };
    const struct {
        Cells entered;
        QStringList reported;
        QString expected;
        QString type = {}; // of a question in the store since the export
    } cases[] = {
        {{{"C14", 10}, {"I15", 77}}, {}, u"1:0,10 5:0 -/"_s}, // a key left by an earlier export
        {{{"I14", 999}, {"D16", 3}},
         {u"I14: question 999 is not in the catalogue"_s, lost(u"999"_s)},
         u"999:0 /"_s},
        {{{"B16", u"What else?"_s}}, {lost(u"1"_s)}, u"1:0 /"_s, u"False where questionid=1"_s},
        {{{"B17", u"Good"_s}},
         {u"B17: the words were not read, question 5 asks for a score"_s},
         u"1:0,0 5:0,0/"_s,
         u"True where questionid=5"_s},
        {{{"I2", bob}, {"I3", QDate(2024, 3, 4)}, {"I5", 2}},
         {u"I2: respondent 2, in the register 1"_s, u"I3: date 04/03/2024, in the register 05/03/2024"_s,
          u"I5: survey 2, in the register 1"_s},
         u"/1:0,0 of another survey 5:0 - of another survey"_s},
    };
    for (const auto& [entered, reported, expected, type] : cases) {
        for (const QString& now : {u"True where questionid=1"_s, u"False where questionid=5"_s, type})
            run(u"update questions set Type="_s + (now.isEmpty() ? u"Type"_s : now));
        expectRead(entered, reported, expected);
    }
}

TEST_F(ReadingTest, aFileWithTooMuchTextIsNotReadAtAll) {
    SurveyFile huge{.respondentid = bob, .questions = std::vector(62, std::pair(question[4], false))};
    for (int row = 15; row < 15 + 3 * 62; row += 3)
        huge.entered[u"B%1"_s.arg(row)] = QString(32'767, u'x');
    huge.saveAs(path(u"huge.xls"_s));
    fill({{"C14", 5}});
    messages.expect(
        u"The file \"huge.xls\" holds more text than a survey file can have; nothing of it was read."_s);
    expectNotRead(u"huge.xls"_s);
    importFiles({u"ann.xls"_s, u"huge.xls"_s});
    EXPECT_EQ(answers(ann), u"1:0,5 5:0 -"_s);
    EXPECT_EQ(answers(bob), QString());
}

TEST_F(ReadingTest, aRefusedFileLeavesWhatHasBeenTyped) {
    addScore(ann, question[0], 1, today, 5, 0);
    frmFeedBackObj& form = show<frmFeedBackObj>();
    EditedGrid(form, "grdDtls", "txtDtls").enter(1, 2, u"8"_s);
    fill({{"D14", u"nine"_s}});
    messages.expect(failureAt("D14"));
    readSelected();
    EXPECT_EQ(shown(), (QStringList{u"On time?|8||"_s, u"What else?|||"_s}));
}

TEST_F(ReadingTest, aFileOpenInASpreadsheetIsAskedFor) {
    fill({{"C14", 7}});
    for (const QString& lock : {u".~lock.ann.xls#"_s, u"~$ann.xls"_s}) {
        const bool goesOn = lock.startsWith(u'~');
        copyHomeFile(u"template.xls"_s, lock);
        messages.expectOpenElsewhere(u"ann.xls"_s, goesOn ? Answer::Yes : Answer::No);
        goesOn ? readSelected() : importFiles();
        EXPECT_EQ(answers(ann).isEmpty(), !goesOn);
        QFile::remove(path(lock));
    }
}
} // namespace
