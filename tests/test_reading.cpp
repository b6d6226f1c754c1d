// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmReading.h"
#include "exchange/reader.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/forms/lists.h"
#include "tests/support/gridform.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

#include <QDir>
#include <QLabel>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

const QString overflow = u"Overflow"_s;
const QString mismatch = u"Type mismatch"_s;
const QString lookAt = u"Read as it stands, but worth a look:\r\n"_s;

/// Ann has the questions 0 and 4 of the catalogue in the survey of today, exported under the name ann.xls.
class ReadingTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        logged(ann, u"ann.xls"_s);
        forms::openFileSeat = [this](const forms::CommonDialog& dialog) {
            flags = dialog.Flags;
            return picked;
        };
    }
    static void logged(int respondentid, const QString& name) {
        run(u"insert into log (custname, respname, respid, xlsfilename, sdate, surveyid) "
            "values ('Acme', 'Ann', %1, '%2', '2024-03-05', 1)"_s.arg(QString::number(respondentid), name));
    }
    SurveyFile file(const std::map<QString, excel::Value>& entered = {}) const {
        return {.respondentid = ann,
                .questions = {{question[0], true}, {question[4], false}},
                .entered = entered};
    }
    void importBy(const QString& files) {
        picked = files;
        frmReading& form = frmReading::instance();
        form.Show();
        press(form, "cmdBrowse");
        auto* list = control<forms::ListBox>(form, "lstXlsFiles");
        EXPECT_EQ(list->ListCount(), files.split(u'\n').size());
        list->setFocus();
        shortcut(Qt::Key_A);
        messages.expect(u"Import Done...."_s, style::information);
        press(form, "cmdImport");
        expectAtRest();
    }
    /// The answers as "questionid:weightage,score" and "questionid:weightage words"; a Null is "-".
    static QString answers(int respondentid) {
        const QString of =
            u"select questionid || ':' || weightage || %2 || iif(surveyid=1 and "
            "surveydate='2024-03-05', '', ' of another survey') from %1 where respondentid="_s +
            QString::number(respondentid);
        return (rows(of.arg(u"feedbackobjective"_s, u"',' || score"_s)) +
                rows(
                    of.arg(u"feedbackdescriptive"_s, u"' ' || iif(Description is null, '-', Description)"_s)))
            .join(u' ');
    }

    /// The other door: the form of one respondent's answers.
    void readIn() {
        frmFeedBackObj::instance().Show();
        press(frmFeedBackObj::instance(), "cmdRead");
        EXPECT_EQ(messages.left(), 0);
    }
    static QStringList shown() {
        const EditedGrid grid(frmFeedBackObj::instance(), "grdDtls", "txtDtls");
        return {grid.row(1), grid.row(2)};
    }

    QString picked; // in the open dialog
    int flags = 0;
};

TEST_F(ReadingTest, cellsBecomeAnswersOrEndTheRead) {
    using Entered = std::map<QString, excel::Value>;
    const Entered filled{{u"D14"_s, 9}, {u"C14"_s, 7}, {u"D16"_s, 3}, {u"B17"_s, u" It's good "_s}};
    const auto with = [&](const char* address, const excel::Value& value) {
        Entered entered = filled;
        entered[QString::fromLatin1(address)] = value;
        return entered;
    };
    const QString all = u"1:9,7 5:3  It's good "_s;
    const QString noWords = u"1:9,7"_s;
    // A conversion that fails ends the read and names its cell, any other message is a remark.
    const std::tuple<Entered, QString, QString> cases[] = {
        // without a message read to the end
        {{}, {}, u"1:0,0 5:0 -"_s},
        {filled, {}, all},
        {with("B17", u"  Type your Answer here "_s), {}, u"1:9,7 5:3 -"_s},
        {with("B17", {}), {}, u"1:9,7 5:3 "_s},
        {with("B17", 12.5), {}, u"1:9,7 5:3 12.5"_s},
        {with("C14", u" 7.5 "_s), {}, u"1:9,8 5:3  It's good "_s},
        {with("C14", 8.5), {}, u"1:9,8 5:3  It's good "_s},
        {with("C14", -32768), u"mark -32768 is outside 0 to 10"_s, u"1:9,-32768 5:3  It's good "_s},
        {with("D16", 11), u"mark 11 is outside 0 to 10"_s, u"1:9,7 5:11  It's good "_s},
        {with("C14", 32767.6), overflow, {}},
        {with("D16", 40000), overflow, noWords},
        {with("D16", u"ten"_s), mismatch, noWords},
        {with("D16", u" "_s), mismatch, noWords},
        {with("D16", QDate(2024, 2, 1)), mismatch, noWords},
        {with("I16", u"5'; delete * from log"_s), mismatch, noWords},
        {with("I16", 5.5), mismatch, noWords},
        {with("I16", u"99999999999"_s), overflow, noWords},
        {with("I16", excel::Value::boolean(true)), mismatch, noWords},
        {with("I16", {}), {}, noWords},
        {with("I2", u"1 or 1=1"_s), mismatch, {}},
        {with("I2", {}), mismatch, {}},
        {with("I5", 1e300), overflow, {}},
        {with("I3", u"05/03/2024"_s), {}, all},
        {with("I3", u"#01/01/2000#"_s), mismatch, {}},
        {with("I3", 45356), {}, all}, // the cell shows dates
        {with("I3", -5), mismatch, {}},
        {with("I4", u"0"_s), {}, noWords},
        {with("I4", -1000), {}, {}},
        {with("I4", 1e9), overflow, {}},
        {with("I4", u"many"_s), mismatch, {}},
    };
    for (const auto& [entered, message, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(message) + testing::PrintToString(expected));
        run(u"delete * from feedbackobjective"_s);
        run(u"delete * from feedbackdescriptive"_s);
        run(u"update log set Status=False"_s);
        file(entered).saveAs(path(u"ann.xls"_s));
        const auto changed = std::find_if(entered.begin(), entered.end(), [&](const auto& cell) {
            return !filled.contains(cell.first) || filled.at(cell.first) != cell.second;
        });
        if (message == overflow || message == mismatch)
            messages.expect(message + u"\r\nann.xls was not read beyond cell "_s + changed->first + u'.');
        else if (!message.isEmpty())
            messages.expect(lookAt + u"ann.xls, "_s + changed->first + u": "_s + message, style::information);
        importBy(path(u"ann.xls"_s));
        EXPECT_EQ(answers(ann), expected);
        EXPECT_EQ(answers(bob), QString());
        EXPECT_EQ(rows(u"select xlsfilename, Status from log"_s), QStringList(u"ann.xls|True"_s));
    }
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList({u"*.mdb"_s}).size(), 1); // before the first of them
}

TEST_F(ReadingTest, whatIsNoSurveyFileEndsWithItsSentence) {
    const QString samples = QStringLiteral(GAUGEWELL_SOURCE "/tests/data/xls/");
    messages.expectBeginning(u"The file \"t_xlwt.xls\" has no sheet \"Sheet1\"."_s);
    importBy(samples + u"t_xlwt.xls");
    file().saveAs(path(u"other password.xls"_s));
    const excel::Workbook workbook = excel::Application().Workbooks().Open(path(u"other password.xls"_s));
    workbook.Worksheets(u"Sheet1"_s).Unprotect(u"kvtwpa"_s);
    workbook.Worksheets(u"Sheet1"_s).Protect(u"other"_s);
    workbook.Save();
    messages.expectBeginning(u"Sheet \"Sheet1\" of the file \"other password.xls\" "_s);
    importBy(path(u"other password.xls"_s));
    EXPECT_EQ(answers(ann), QString());

    file({{u"C14"_s, 7}}).saveAs(path(u"damaged.xls"_s));
    QByteArray damaged = contentOf(path(u"damaged.xls"_s));
    const qsizetype answerBox = damaged.indexOf(QByteArray("\xFD\0\x0A\0\x10\0\x01\0", 8));
    damaged[answerBox + 12] = '\x7F'; // B17 refers to a text that the file does not have
    QFile changed(path(u"damaged.xls"_s));
    ASSERT_TRUE(answerBox > 0 && changed.open(QIODevice::WriteOnly) && changed.write(damaged) > 0);
    changed.close();
    QString told;
    const auto answer = std::exchange(forms::messageSeat, [&](const forms::Message& message) {
        told += message.text;
        return forms::Answer::Ok;
    });
    SurveyReader().read(changed.fileName());
    forms::messageSeat = answer;
    EXPECT_TRUE(told.contains(u"of the file \"damaged.xls\" is damaged"_s) &&
                told.endsWith(u"\r\ndamaged.xls was not read beyond cell B17."_s))
        << qPrintable(told);
    EXPECT_EQ(answers(ann), u"1:0,7"_s);
    run(u"delete * from feedbackobjective"_s);

    // Formulas count by their results, merged cells by their first; another sheet stands before Sheet1.
    messages.expect(mismatch + u"\r\nformulas_and_merges.xls was not read beyond cell C21."_s);
    importBy(samples + u"formulas_and_merges.xls");
    EXPECT_EQ(answers(ann), u"1:9,7 2:0,5 5:4 Good work"_s);
}

TEST_F(ReadingTest, manyFilesOfWhichSomeAreBad) {
    QStringList files;
    for (int i = 1; i <= 30; ++i) {
        const QString name = u"Anné %1 o'k.xls"_s.arg(i);
        logged(100 + i, toStoredText(name));
        SurveyFile survey = file({{u"C14"_s, i % 10}});
        survey.respondentid = 100 + i;
        if (i == 7)
            survey.entered[u"D16"_s] = u"seven"_s;
        survey.saveAs(path(name));
        if (i == 12)
            QFile::resize(path(name), 700);
        else if (i == 30)
            QFile::remove(path(name));
        files << path(name);
    }
    messages.expect(mismatch + u"\r\nAnné 7 o'k.xls was not read beyond cell D16."_s);
    messages.expectBeginning(u"The file \"Anné 12 o'k.xls\" "_s);
    messages.expectBeginning(u"The file \"%1\" "_s.arg(path(u"Anné 30 o'k.xls"_s)));
    messages.expect(
        u"Not read to the end:\r\nAnné 7 o'k.xls (cell D16)\r\nAnné 12 o'k.xls\r\nAnné 30 o'k.xls"_s,
        style::information);
    QStringList progress;
    const auto answer = forms::messageSeat;
    forms::messageSeat = [&](const forms::Message& message) {
        progress << panel();
        return answer(message);
    };
    importBy(files.join(u'\n'));
    forms::messageSeat = answer;
    EXPECT_EQ(progress.value(1), u"Importing Survey File(s)......Anné 12 o'k.xls, 18 left"_s);
    EXPECT_EQ(flags, 512);
    EXPECT_EQ(value(u"select count(*) from feedbackobjective"_s), u"28"_s);
    EXPECT_EQ(value(u"select count(*) from feedbackdescriptive"_s), u"27"_s);
    EXPECT_EQ(value(u"select count(*) from log where Status=True"_s), u"30"_s);
    EXPECT_EQ(answers(129), u"1:0,9 5:0 -"_s);
}

TEST_F(ReadingTest, theFormOfManyFiles) {
    frmReading& form = frmReading::instance();
    form.Show();
    messages.expect(u"No Xls files present in the List to Import"_s, style::information);
    press(form, "cmdImport");
    picked = u"/a/Template.xls\n/a/ann.xls\n/b c/template.xls"_s;
    press(form, "cmdBrowse");
    messages.expect(u"Select one or more file(s) to import"_s, style::information);
    press(form, "cmdImport");
    const auto expectDetails = [&](const QStringList& details) {
        int label = 0;
        for (const char* name : {"lblCustName", "lblRespName", "lblSDate"})
            EXPECT_EQ(control<QLabel>(form, name)->text(), details.value(label++));
    };
    clickEntry(form, "lstXlsFiles", 0);
    expectDetails({u"Acme"_s, u"Ann"_s, u"05/03/2024"_s});
    key(Qt::Key_Down); // a file that is not in the register
    expectDetails({});
    key(Qt::Key_Up, Qt::ShiftModifier);
    expectDetails({});
    picked.clear();
    press(form, "cmdBrowse");
    EXPECT_EQ(control<forms::ListBox>(form, "lstXlsFiles")->ListCount(), 2);
}

TEST_F(ReadingTest, theFileOfTheChoiceIsFoundOrLocated) {
    ASSERT_TRUE(QDir(home()).mkpath(u"elsewhere"_s));
    const SurveyFile filled = file({{u"D14"_s, 9}, {u"C14"_s, 7}, {u"B17"_s, u"Good"_s}});
    filled.saveAs(path(u"elsewhere/ann.xls"_s));

    for (const QString& answer : {QString(), path(u"Template.xls"_s)}) { // the row reads as read all the same
        run(u"update log set Status=False"_s);
        picked = answer;
        readIn();
        EXPECT_EQ(value(u"select Status from log"_s), u"True"_s);
    }
    picked = path(u"elsewhere/Ann.xls"_s);
    messages.expect(u"You have not specified the Correct XLS file.....The orignal file is - ann.xls Please "
                    u"locate the same XLS file"_s,
                    style::critical);
    readIn();
    EXPECT_EQ(answers(ann), QString());
    picked = path(u"elsewhere/ann.xls"_s);
    readIn();
    const QStringList good{u"On time?|9|7|"_s, u"What else?|||Good"_s};
    EXPECT_EQ(shown(), good);

    file({{u"D14"_s, 4}}).saveAs(path(u"ann.xls"_s));
    messages.expectBeginning(u"The file \"ann.xls\" "_s); // sought where the program runs, until then
    readIn();
    EXPECT_EQ(shown(), good);
    frmReading::instance().Show(); // the form becomes active again
    readIn();
    EXPECT_EQ(shown(), (QStringList{u"On time?|4||"_s, u"What else?|||"_s}));

    run(u"delete * from log"_s);
    messages.expectTitled(
        u"There is no Survey File Exported for the Selected Repondent and Selected Survey Date..."_s,
        style::information);
    readIn();
}

TEST_F(ReadingTest, answersReadElsewhereAreNotSavedOver) {
    frmFeedBackObj::instance().Show();
    file({{u"D14"_s, 9}, {u"C14"_s, 7}}).saveAs(path(u"ann.xls"_s));
    importBy(path(u"ann.xls"_s));
    frmFeedBackObj::instance().Show();
    press(frmFeedBackObj::instance(), "cmdSave");
    EXPECT_EQ(answers(ann), u"1:9,7 5:0 -"_s);
}

TEST_F(ReadingTest, aStoreThatFailsEndsTheReadAndIsTold) {
    file({{u"D14"_s, 9}}).saveAs(path(u"ann.xls"_s));
    runRaw(
        u"create trigger no before insert on feedbackdescriptive begin select raise(abort, 'full'); end"_s);
    messages.expectBeginning(u"Error : "_s);
    messages.expect(u"Not read to the end:\r\nann.xls"_s, style::information);
    readIn();
    EXPECT_EQ(answers(ann), u"1:9,0"_s);
    messages.expectBeginning(u"Error : "_s);
    messages.expect(u"Not read to the end:\r\nann.xls\r\nann.xls"_s, style::information);
    importBy(path(u"ann.xls"_s) + u'\n' + path(u"ann.xls"_s));
    run(u"update log set xlsfilename='../ann.xls'"_s); // no bare name
    picked.clear();
    readIn();
}

TEST_F(ReadingTest, whatIsWorthALookIsNamedAtBothDoors) {
    const QString asksForScore = u"update questions set Type=%2 where questionid=%1"_s;
    const QString second = QString::number(question[4]);
    const auto lost = [](const QString& by) -> QString {
        return u"I16: question 5 was not read, it lies within the rows of question "_s + by;
    };
    const struct {
        std::map<QString, excel::Value> entered;
        QStringList remarks;
        QString change = {}; // of the store, since the export
    } cases[] = {
        {{{u"C14"_s, 10}, {u"D14"_s, 0}, {u"I15"_s, 77}}, {}}, // a key that an earlier export left behind
        {{{u"I14"_s, 999}, {u"D16"_s, 3}}, {u"I14: question 999 is not in the catalogue"_s, lost(u"999"_s)}},
        {{{u"B16"_s, excel::Value(u"What else?"_s)}}, {lost(u"1"_s)}, asksForScore.arg(u"1"_s, u"False"_s)},
        {{{u"B17"_s, excel::Value(u"Good"_s)}},
         {u"B17: the words were not read, question 5 asks for a score"_s},
         asksForScore.arg(second, u"True"_s)},
        {{}, {}, asksForScore.arg(second, u"True"_s)},
        {{{u"I2"_s, bob}, {u"I3"_s, QDate(2024, 3, 4)}, {u"I5"_s, 2}},
         {u"I2: respondent 2, in the register 1"_s, u"I3: date 04/03/2024, in the register 05/03/2024"_s,
          u"I5: survey 2, in the register 1"_s}},
        {{{u"I2"_s, bob}}, {}, u"insert into log (respid, xlsfilename) values (2, 'ann.xls')"_s},
    };
    for (const auto& [entered, remarks, change] : cases) {
        SCOPED_TRACE(testing::PrintToString(remarks) + testing::PrintToString(change));
        run(asksForScore.arg(u"1"_s, u"True"_s));
        run(asksForScore.arg(second, u"False"_s));
        if (!change.isEmpty())
            run(change);
        file(entered).saveAs(path(u"ann.xls"_s));
        QStringList lines = remarks;
        for (QString& line : lines)
            line.prepend(u"ann.xls, "_s);
        const auto expectRemarks = [&] {
            if (!lines.isEmpty())
                messages.expect(lookAt + lines.join(u"\r\n"_s), style::information);
        };
        expectRemarks();
        importBy(path(u"ann.xls"_s));
        expectRemarks();
        readIn();
    }
    SurveyFile many{.respondentid = ann, .questions = std::vector(17, std::pair(question[0], true))};
    QStringList first;
    for (int row = 14; row < 14 + 2 * 17; row += 2) {
        many.entered[u"C%1"_s.arg(row)] = 11;
        first << u"ann.xls, C%1: mark 11 is outside 0 to 10"_s.arg(row);
    }
    many.saveAs(path(u"ann.xls"_s));
    messages.expect(lookAt + first.first(15).join(u"\r\n"_s) + u"\r\nand 2 more"_s, style::information);
    readIn();
}

TEST_F(ReadingTest, aFileWithTooMuchTextIsNotReadAtAll) {
    SurveyFile huge{.respondentid = bob, .questions = std::vector(62, std::pair(question[4], false))};
    for (int row = 15; row < 15 + 3 * 62; row += 3)
        huge.entered[u"B%1"_s.arg(row)] = QString(32'767, u'x');
    huge.saveAs(path(u"huge.xls"_s));
    file({{u"C14"_s, 5}}).saveAs(path(u"ann.xls"_s));
    messages.expect(
        u"The file \"huge.xls\" holds more text than a survey file can have; nothing of it was read."_s);
    messages.expect(u"Not read to the end:\r\nhuge.xls"_s, style::information);
    importBy(path(u"ann.xls"_s) + u'\n' + path(u"huge.xls"_s));
    EXPECT_EQ(answers(ann), u"1:0,5 5:0 -"_s);
    EXPECT_EQ(answers(bob), QString());
}

TEST_F(ReadingTest, aRefusedFileLeavesWhatHasBeenTyped) {
    addScore(ann, question[0], 1, today, 5, 0);
    frmFeedBackObj& form = frmFeedBackObj::instance();
    form.Show();
    form.SetEditTextBox(2, 1);
    form.txtDtls()->setFocus();
    form.txtDtls()->selectAll();
    key(Qt::Key_8);
    const QStringList typed{u"On time?|8||"_s, u"What else?|||"_s};
    ASSERT_EQ(shown(), typed);
    file({{u"D14"_s, u"nine"_s}}).saveAs(path(u"ann.xls"_s));
    messages.expect(mismatch + u"\r\nann.xls was not read beyond cell D14."_s);
    readIn();
    EXPECT_EQ(shown(), typed);
    file({{u"D14"_s, 9}, {u"D16"_s, u"nine"_s}}).saveAs(path(u"ann.xls"_s)); // a part of it counts
    messages.expect(mismatch + u"\r\nann.xls was not read beyond cell D16."_s);
    readIn();
    EXPECT_EQ(shown().value(0), u"On time?|9||"_s);
}

TEST_F(ReadingTest, aFileOpenInASpreadsheetIsAskedFor) {
    file({{u"C14"_s, 7}}).saveAs(path(u"ann.xls"_s));
    for (const QString& lock : {u".~lock.ann.xls#"_s, u"~$ann.xls"_s}) {
        run(u"update log set Status=False"_s);
        run(u"delete * from feedbackobjective"_s);
        bring(u"template.xls"_s, lock);
        const auto expectQuestion = [&](forms::Answer answer) {
            messages.expectTitled(
                u"ann.xls seems to be open in a spreadsheet program. What has been typed there and not been "
                u"saved is missing in it. Go on all the same?"_s,
                style::yesNo + style::information + style::secondButton, answer);
        };
        expectQuestion(forms::Answer::No);
        importBy(path(u"ann.xls"_s));
        EXPECT_EQ(value(u"select Status from log"_s), u"False"_s);
        expectQuestion(forms::Answer::No);
        readIn();
        EXPECT_EQ(rows(u"select score from feedbackobjective"_s), QStringList());
        expectQuestion(forms::Answer::Yes);
        readIn();
        EXPECT_EQ(rows(u"select score from feedbackobjective"_s), QStringList(u"7"_s));
        QFile::remove(path(lock));
    }
}

TEST_F(ReadingTest, eitherApostropheIsTheSameTitle) {
    ASSERT_TRUE(QDir(home()).mkpath(u"elsewhere"_s));
    for (const QString& stored : {u"Ann\u2019s.xls"_s, u"Ann''s.xls"_s}) {
        run(u"update log set Status=False, xlsfilename='"_s + stored + u'\'');
        file({{u"C14"_s, 7}}).saveAs(path(u"elsewhere/Ann's.xls"_s));
        importBy(path(u"elsewhere/Ann's.xls"_s));
        EXPECT_EQ(value(u"select Status from log"_s), u"True"_s);
        picked = path(u"elsewhere/Ann's.xls"_s);
        frmReading::instance().Show();
        readIn();
        EXPECT_EQ(shown().value(0), u"On time?||7|"_s);
    }
}

} // namespace
