// SPDX-License-Identifier: GPL-3.0-or-later
// A survey file that a spreadsheet program has saved in another format or with another name of its sheet.
#include "core/store/store.h"
#include "exchange/files/cellmap.h"
#include "exchange/reading.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

class AnswerFormats : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        strCompanyName = u"Larkmoor"_s;
        copyHomeFile(u"template.xls"_s);
        addStored(ann, today, {3, 0, 4});
    }
    /// Exports Ann's questionnaire by the form and enters her answers; the file's path.
    QString answeredFile() {
        messages.expectExported();
        press(open(), "cmdExport");
        frmNewSurvey::unload();
        const QString file = path(rows(u"select xlsfilename from log"_s).value(0));
        const excel::Workbook book = excel::Application().Workbooks().Open(file);
        const excel::Worksheet sheet = book.Worksheets(cellmap::sheetName.toString());
        const std::pair<const char*, excel::Value> entries[] = {{"C14", 7},   {"D14", 9}, {"C16", u"8"_s},
                                                                {"D16", 2.5}, {"D18", 3}, {"B19", words}};
        for (const auto& [address, value] : entries)
            sheet.Range(QString::fromLatin1(address)).setValue(value);
        book.Save();
        return file;
    }
    /// The stored answers after reading the file, which must be read to its end. The only remark is that it
    /// has come back in another format.
    QStringList read(const QString& file) {
        run(u"update feedbackobjective set weightage=0, score=0"_s);
        run(u"update feedbackdescriptive set weightage=0, description=null"_s);
        const Reading reading = readSurveyFiles({file});
        EXPECT_EQ(reading.bad, QStringList());
        const QString title = file.section(u'/', -1);
        QStringList expected;
        if (!title.endsWith(u".xls"))
            expected << u"%1 was read as the returned %2.xls"_s.arg(title, title.section(u'.', 0, -2));
        EXPECT_EQ(reading.remarks, expected);
        return rows(u"select questionid, surveyid, surveydate, respondentid, weightage, score from "
                    "feedbackobjective order by questionid"_s) +
               rows(u"select questionid, surveyid, surveydate, respondentid, weightage, description from "
                    "feedbackdescriptive"_s);
    }
    static inline const QString words = u"Très bien, \"vraiment\";\nit's <50 %  & 10 € \U0001F600"_s;
};

TEST_F(AnswerFormats, eachFormatGivesTheSameAnswers) {
    const QString file = answeredFile();
    const QString original = path(u"kept/"_s) + file.section(u'/', -1);
    ASSERT_TRUE(QDir(home()).mkdir(u"kept"_s) && QFile::copy(file, original));
    const QStringList answers = read(file);
    EXPECT_EQ(answers.size(), 3);
    EXPECT_TRUE(answers.join(u' ').contains(words));
    for (const auto& [type, byGnumeric] :
         {std::pair(u"xlsx"_s, false), {u"ods"_s, false}, {u"xlsx"_s, true}, {u"ods"_s, true}}) {
        SCOPED_TRACE(qPrintable(type));
        const QString converted = file.chopped(3) + type;
        if (byGnumeric)
            outputOf(u"ssconvert"_s, {original, converted});
        else
            convertByOffice(type, {original}, home());
        EXPECT_EQ(read(converted), answers);
        ASSERT_TRUE(QFile::remove(file) && QFile::rename(converted, file)); // under the old name
        EXPECT_EQ(read(file), answers);
    }
}

TEST_F(AnswerFormats, aRenamedSheetIsFoundByItsKeys) {
    const QString file = answeredFile();
    const QStringList answers = read(file);
    convertByOffice(u"xlsx"_s, {file}, home());
    const QString renamed = file.chopped(3) + u"xlsx"_s;
    runScript(u"renamesheets.py"_s, {renamed, u"Tabelle1"_s});
    EXPECT_EQ(read(renamed), answers);

    // Of two sheets with the keys, neither is taken.
    runScript(u"renamesheets.py"_s, {renamed, u"Tabelle1"_s, u"copy"_s});
    const QString title = renamed.section(u'/', -1);
    messages.expectBeginning(u"The file \"%1\" has no sheet \"Sheet1\"."_s.arg(title));
    EXPECT_EQ(readSurveyFiles({renamed}).bad, QStringList(title));
}

} // namespace
