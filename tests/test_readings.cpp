// SPDX-License-Identifier: GPL-3.0-or-later
// Each reading of survey files is recorded and can be undone.
#include "core/base/backup.h"
#include "exchange/files/answerrecords.h"
#include "exchange/files/readingundo.h"
#include "exchange/frmReading.h"
#include "exchange/frmReadingRuns.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/desktop/loginname.h"
#include "tests/support/killed.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

#include <QCryptographicHash>

namespace {
struct ReadingsTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addStored(bob, today, {0, 4});
        addToRegister(u"ann.xls"_s);
    }
    /// A filled file with a mark for question 0 and words for question 4.
    QString filled(const QString& name, int respondent, int score, const QString& words = u"Fine"_s) const {
        return saveFile(name, respondent, {{"C14", score}, {"B17", words}});
    }
    void read(const QString& name, int respondent, int score, const QString& words = u"Fine"_s) const {
        ASSERT_EQ(readSurveyFiles({filled(name, respondent, score, words)}).bad, QStringList());
    }
    AnswerKeys annsKeys(int number) const {
        return {QString::number(question[std::size_t(number)]), QString::number(ann), today, u"1"_s};
    }
    void typeScore(int score) const {
        AnswerRecords(true, {QString::number(ann)}, {today}).replace(annsKeys(0), 0, score);
    }
    /// Everything but the record of readings.
    static QStringList answersAndRegister() {
        return storeRows(*cnnMain).filter(QRegularExpression(u"^(?!reading)"_s));
    }
    static QStringList readIn() { return rows(u"select xlsfilename from log where Status=True"_s); }
    static QString scores() {
        return rows(u"select respondentid || ':' || score from feedbackobjective order by respondentid"_s)
            .join(u' ');
    }

    // The form.
    static frmReadingRuns& form() { return show<frmReadingRuns>(); }
    static const forms::ListView& list(const char* name) { return *control<forms::ListView>(form(), name); }
    void undo(int row, const QString& effects, Answer answer = Answer::Yes) {
        ::clickRow(list("lsvRuns"), row);
        const QString reading = list("lsvRuns").Text(row, 0);
        const QString files = list("lsvRuns").Text(row, 2);
        messages.expectAsked(u"Undo the reading of %1, %2?\r\n\r\n"_s.arg(
                                 reading, files == u"1" ? u"1 file"_s : files + u" files") +
                                 effects,
                             answer);
        press(form(), "cmdUndo");
        expectIdle();
    }
    static inline const QString removed = u"2 answers that it added are taken out."_s;
    static inline const QString unmarked = u"1 file is marked as not read in."_s;

    QDateTime now{{2024, 3, 5}, {10, 30}};
    Replaced<forms::nowHook> clock{[this] { return now; }};
};

TEST_F(ReadingsTest, bothDoorsRecordWhoReadWhatAndUndoTakesItBack) {
    const QStringList empty = answersAndRegister();
    const QString words = u"\"Gut\"\nund sch\u00F6n \U0001F600"_s;
    picked = filled(u"ann.xls"_s, ann, 7, words) + u'\n' + filled(u"bob.xls"_s, bob, 8);
    frmReading& reading = show<frmReading>();
    press(reading, "cmdBrowse");
    clickEntry(reading, "lstXlsFiles", 0);
    clickEntry(reading, "lstXlsFiles", 1, Qt::ControlModifier);
    messages.expect(u"Import Done...."_s, style::information);
    press(reading, "cmdImport");
    const QStringList afterImport = answersAndRegister();

    filled(u"ann.xls"_s, ann, 9, words);
    press(show<frmFeedBackObj>(), "cmdRead");
    const QString login = desktop::loginName();
    ASSERT_NE(login, QString());
    EXPECT_EQ(listed(list("lsvRuns")), QStringList({u"05/03/2024 10:30|%1|1|0|1|1|"_s.arg(login),
                                                    u"05/03/2024 10:30|%1|2|4|0|0|"_s.arg(login)}));
    ::clickRow(list("lsvRuns"), 0);
    const QString hash = QString::fromLatin1(
        QCryptographicHash::hash(contentOf(path(u"ann.xls"_s)), QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(listed(list("lsvFiles")), QStringList(u"ann.xls|Acme|Ann|05/03/2024|0|1|1|"_s + hash));

    const QString restored = u"1 answer that it changed gets back what was stored before."_s;
    undo(0, restored, Answer::No);
    EXPECT_EQ(scores(), u"1:9 2:8"_s);
    undo(0, restored);
    EXPECT_EQ(answersAndRegister(), afterImport);
    EXPECT_EQ(list("lsvRuns").Text(0, 6), u"Undone 05/03/2024 10:30"_s);
    EXPECT_FALSE(control<QPushButton>(form(), "cmdUndo")->isEnabled());
    EXPECT_EQ(listBackups(strDatabasePath).size(), 2) << "one before the readings and one before the undo";

    frmFeedBackObj::instance().Show();
    const auto* marks = control<forms::MSHFlexGrid>(frmFeedBackObj::instance(), "grdDtls");
    EXPECT_EQ(marks->TextMatrix(1, 3), u"7"_s) << "the open form reads them anew";
    undo(1, u"4 answers that it added are taken out.\r\n"_s + unmarked);
    EXPECT_EQ(answersAndRegister(), empty);
    read(u"ann.xls"_s, ann, 9);
    EXPECT_EQ(readIn(), QStringList(u"ann.xls"_s));
}

/// What happened to Ann's mark: typed (t) or read from a file (r); and the mark after the first reading and
/// then the later one are undone, empty: no answer.
TEST_F(ReadingsTest, anAnswerChangedSinceStaysAndIsNamed) {
    const std::tuple<QString, QString, QString> cases[] = {{u"r5"_s, {}, {}},
                                                           {u"t3 r5"_s, u"3"_s, u"3"_s},
                                                           {u"r5 t6"_s, u"6"_s, u"6"_s},
                                                           {u"r5 r8"_s, u"8"_s, {}},
                                                           {u"t3 r5 r8"_s, u"8"_s, u"3"_s},
                                                           {u"r5 r5"_s, u"5"_s, {}},
                                                           {u"r5 t6 r8"_s, u"8"_s, u"6"_s},
                                                           {u"t3 r5 r8 t9"_s, u"9"_s, u"9"_s}};
    for (const bool isFirstFirst : {true, false}) {
        for (const auto& [steps, afterFirst, afterBoth] : cases) {
            SCOPED_TRACE(steps);
            for (const char* table : {"feedbackobjective", "feedbackdescriptive", "reading", "readingfile"})
                run(u"delete * from "_s + QLatin1StringView(table));
            for (const QString& step : steps.split(u' ')) {
                const int mark = step.sliced(1).toInt();
                step[0] == u't' ? typeScore(mark) : read(u"ann.xls"_s, ann, mark);
            }
            const bool isReadAgain = steps.count(u'r') == 2;
            const int first = value(u"select min(readingid) from reading"_s).toInt();
            if (isReadAgain && !isFirstFirst)
                undoReading(first + 1, now);
            const ReadingUndo done = undoReading(first, now);
            if (isFirstFirst) {
                EXPECT_EQ(done.kept.contains({ann, today, question[0], true}), steps.contains(u"r5 "));
                EXPECT_EQ(value(u"select score from feedbackobjective"_s), afterFirst);
                EXPECT_EQ(readIn().size(), isReadAgain ? 1 : 0);
            }
            EXPECT_THROW(undoReading(first, now), Failure);
            if (isReadAgain && isFirstFirst)
                undoReading(first + 1, now);
            EXPECT_EQ(value(u"select score from feedbackobjective"_s), afterBoth);
            EXPECT_EQ(rows(u"select questionid from feedbackdescriptive"_s), QStringList());
            EXPECT_EQ(readIn(), QStringList());
        }
    }
}

TEST_F(ReadingsTest, theQuestionNamesWhatStays) {
    read(u"ann.xls"_s, ann, 5);
    typeScore(6);
    ::clickRow(list("lsvRuns"), 0);
    undo(0, u"1 answer that it added is taken out.\r\n"_s + unmarked +
                u"\r\n\r\nThese have been changed since, or read again, and stay as they are:\r\n"
                "ann.xls: Ann, 05/03/2024, On time?");
    EXPECT_EQ(scores(), u"1:6"_s);
}

TEST_F(ReadingsTest, aFileOfTheSameQuestionnaireTwiceInAReadingIsUndoneBackwards) {
    typeScore(3);
    ASSERT_EQ(readSurveyFiles({filled(u"ann.xls"_s, ann, 5), filled(u"ann2.xls"_s, ann, 8)}).bad,
              QStringList());
    EXPECT_EQ(scores(), u"1:8"_s);
    undo(0, u"1 answer that it added is taken out.\r\n1 answer that it changed gets back what was stored "
            "before.\r\n" +
                unmarked);
    EXPECT_EQ(scores(), u"1:3"_s);
}

TEST_F(ReadingsTest, killedOrLockedTheUndoIsWholeOrNotAtAll) {
    typeScore(3);
    const QStringList before = answersAndRegister();
    read(u"ann.xls"_s, ann, 5);
    const QStringList after = answersAndRegister();
    form();
    ::clickRow(list("lsvRuns"), 0);
    whileLocked([] { press(form(), "cmdUndo"); });
    EXPECT_EQ(answersAndRegister(), after);
    if (!cnnMain->IsFile())
        return; // the kill counts the statements of SQLite
    cnnMain->Close();

    int killed = 0;
    for (bool lives = false; !lives; ++killed) {
        SCOPED_TRACE(killed);
        lives = survivesKillAt(killed + 1, [this] {
            toOpenConnection();
            undoReading(1, now);
        });
        toOpenConnection();
        const bool isUndone = value(u"select undone from reading"_s) != QString();
        ASSERT_EQ(answersAndRegister(), isUndone ? before : after);
        ASSERT_TRUE(isUndone || !lives);
        cnnMain->Close();
    }
    EXPECT_GT(killed, 15);
    toOpenConnection();
}

TEST_F(ReadingsTest, readingsOlderThanAYearAreThinnedOutByChoice) {
    messages.expectInformation(u"No reading is older than a year."_s);
    press(form(), "cmdThin");
    messages.expectInformation(u"Choose the reading to undo."_s);
    press(form(), "cmdUndo");
    read(u"ann.xls"_s, ann, 5);
    now = now.addYears(1).addSecs(60);
    read(u"bob.xls"_s, bob, 5);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        messages.expectAsked(u"1 reading is older than a year. Remove what was stored before and after, to "
                             "make the database smaller? They stay in this list and cannot be undone any "
                             "more."_s,
                             answer);
        press(form(), "cmdThin");
        EXPECT_EQ(list("lsvRuns").Text(1, 6), answer == Answer::Yes ? u"Thinned out"_s : QString());
    }
    ::clickRow(list("lsvRuns"), 1);
    EXPECT_FALSE(control<QPushButton>(form(), "cmdUndo")->isEnabled());
    EXPECT_THROW(undoReading(1, now), Failure);
    undo(0, removed);
    EXPECT_EQ(scores(), u"1:5"_s);
}

TEST_F(ReadingsTest, aStoreThatCouldNotBeUpgradedIsReadWithoutARecord) {
    if (!cnnMain->IsFile())
        return; // a server's store is made with all tables
    run(u"drop table readingfile"_s);
    toOpenConnection();
    read(u"ann.xls"_s, ann, 5);
    EXPECT_EQ(scores(), u"1:5"_s);
    messages.expectCritical(u"This database could not be updated to this version of the program: readings "
                            "are not recorded in it and cannot be undone. See the help, topic Readings."_s);
    form();
    EXPECT_EQ(list("lsvRuns").ListCount(), 0);
}
} // namespace
