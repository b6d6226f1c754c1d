// SPDX-License-Identifier: GPL-3.0-or-later
// What a reading would do with a survey file.
#include "exchange/files/surveychecker.h"
#include "tests/support/checktest.h"

namespace {
struct SurveyCheckTest : CheckTest {
    static QString judged(const CheckedFile& file) {
        QString text = wordOf(file.verdict) + u"|"_s + file.remark;
        if (!file.answers.empty())
            text += u"|%1 %2 %3 %4"_s.arg(file.counts[0])
                        .arg(file.counts[1])
                        .arg(file.counts[2])
                        .arg(file.counts[3]);
        return text;
    }
};

TEST_F(SurveyCheckTest, eachVerdictNamesItsCell) {
    const QString score = u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, "
                          "weightage, score) values (1, 1, 1, '2024-03-05', 9, %1)"_s;
    const QString words = u"insert into feedbackdescriptive (respondentid, questionid, surveyid, surveydate, "
                          "weightage, Description) values (1, 5, 1, '2024-03-05', 0, 'It\u2019s good')"_s;
    const QString kind = u"update questions set Type=%2 where questionid=%1"_s;
    const QString registered =
        u"insert into log (respid, xlsfilename, sdate, surveyid) values (2, 'ann.xls', '2024-03-05', 1)"_s;
    const struct {
        QString expected; ///< answers are counted as new, same, changed, left out
        Cells cells = {};
        QString change = {}; ///< in the store
    } cases[] = {
        {u"unreadable|D16: Type mismatch"_s, {{"D16", u"ten"_s}, {"I1", u"2"_s}}},
        {u"unreadable|C14: Overflow"_s, {{"C14", 40'000}}},
        {u"no survey file|I4: empty"_s, {{"I4", {}}}},
        {u"no survey file|I2: empty"_s, {{"I2", {}}}},
        {u"no survey file|I5: Type mismatch"_s, {{"I5", u"x"_s}, {"D16", u"ten"_s}}},
        {u"no survey file|no question in column I from row 14 on"_s, {{"I14", {}}, {"I16", {}}}},
        {u"unknown survey|I5: survey 9 is not in the store"_s, {{"I5", 9}, {"B14", u"?"_s}}},
        {u"unknown survey|I2: respondent 2 has no questionnaire in survey 1"_s, {{"I2", bob}}},
        {u"foreign|B8: \"Acne\", in the store \"Acme\""_s, {{"B8", u"Customer Name : Acne"_s}}},
        {u"foreign|B9: \"Bob\", in the store \"Ann\""_s, {{"B9", u"Respondent Name : Bob"_s}}},
        {u"foreign|I1: \"2\", in the store \"1\""_s, {{"I1", u"2"_s}}},
        {u"foreign|I3: \"04/03/2024\", in the store \"05/03/2024\""_s, {{"I3", QDate(2024, 3, 4)}}},
        {u"foreign|B14: \"On tme?\", in the store \"On time?\""_s, {{"B14", u"On tme?"_s}, {"C14", 11}}},
        {u"foreign|I16: question 2 is not in the questionnaire of Ann"_s, {{"I16", u"2"_s}}},
        {u"foreign|I16: question 999 is not in the catalogue"_s, {{"I16", u"999"_s}}},
        {u"foreign|C14: a score, in the store the question asks for words"_s,
         {},
         kind.arg(u"1"_s, u"False"_s)},
        {u"foreign|B17: words, in the store the question asks for a score"_s,
         {},
         kind.arg(u"5"_s, u"True"_s)},
        {u"foreign|I16: question 5 was not read, it lies within the rows of question 1"_s,
         {{"C14", {}}},
         kind.arg(u"1"_s, u"False"_s)},
        {u"mark outside 0 to 10|C14: mark 11 is outside 0 to 10; D16: mark -1 is outside 0 to 10"_s,
         {{"C14", 11}, {"D16", -1}}},
        {u"changes stored answers|1 stored answer would change|0 0 1 1"_s, {}, score.arg(8)},
        {u"changes stored answers|1 stored answer would change|1 0 1 0"_s, {}, words}, // would be cleared
        {u"changes stored answers|1 stored answer would change|0 0 1 1"_s,
         {{"C14", {}}, {"D14", {}}},
         score.arg(7)},
        {u"read already, identical||0 1 0 1"_s, {}, score.arg(7)},
        {u"ready||1 1 0 0"_s, {{"B17", u" It's good\n"_s}}, words},
        {u"ready||1 0 0 1"_s},
        {u"ready||1 0 0 1"_s, {{"I16", {}}}, words}, // the file does not have the question
        {u"ready|I2: respondent 1, in the register 2|1 0 0 1"_s, {}, registered},
        {u"ready||1 0 0 1"_s, {{"C14", {}}, {"B8", u"customer name : ACME "_s}}}, // one of two marks
        {u"ready||1 0 0 1"_s, {{"B8", {}}, {"B9", {}}, {"I1", {}}, {"B14", u" On\ntime? "_s}}},
        {u"ready||0 0 0 2"_s, {{"C14", 0}, {"D14", {}}, {"B17", {}}}},
        {u"ready||1 0 0 2"_s, {{"I16", {}}, {"B16", {}}, {"B17", {}}, {"I19", u"999"_s}}}, // left behind
        {u"ready|I19: question 1 again, this answer counts|0 0 0 2"_s, {{"I19", u"1"_s}}},
    };
    for (const auto& [expected, cells, change] : cases) {
        run(u"delete * from feedbackobjective"_s);
        run(u"delete * from feedbackdescriptive"_s);
        run(u"delete * from log"_s);
        run(kind.arg(u"1"_s, u"True"_s));
        run(kind.arg(u"5"_s, u"False"_s));
        if (!change.isEmpty())
            run(change);
        const QStringList before = storeRows(*cnnMain);
        EXPECT_EQ(judged(SurveyChecker().check(fill(u"ann.xls"_s, cells))), expected);
        EXPECT_EQ(storeRows(*cnnMain), before);
    }
}

TEST_F(SurveyCheckTest, otherFilesAreNamedByWhatTheyAre) {
    copyHomeFile(u"template.xls"_s);
    writeFile(path(u"text.xls"_s), "no workbook");
    QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/tests/data/xls/t_xlwt.xls"), path(u"other.xls"_s));
    const std::pair<QString, QString> cases[] = {
        {u"template.xls"_s, u"no survey file|I2: empty"_s},
        {u"text.xls"_s, u"unreadable|The file \"text.xls\" "_s},
        {u"missing.xls"_s, u"unreadable|The file "_s},
        {u"other.xls"_s, u"no survey file|The file \"other.xls\" has no sheet \"Sheet1\""_s}};
    for (const auto& [name, beginning] : cases)
        EXPECT_EQ(judged(SurveyChecker().check(path(name))).left(beginning.size()), beginning);
}
} // namespace
