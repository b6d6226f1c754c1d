// SPDX-License-Identifier: GPL-3.0-or-later
// A survey file in another format or with a renamed sheet, and damaged ones. These never hang or crash the
// program, and change no answers but their own survey's.

#include "exchange/files/cellmap.h"
#include "exchange/files/readingundo.h"
#include "exchange/files/sheetchoice.h"
#include "exchange/reading.h"
#include "platform/excel/compoundfile.h"
#include "tests/support/surveytest.h"

#include <QRandomGenerator>
#include <unistd.h>

namespace {
struct AnswerFormats : SurveyTest {
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
    /// The stored answers after the file was read to its end; its other format is the only remark.
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
    /// Renames the first sheet by openpyxl, and copies it that often.
    static void renameSheet(const QString& file, int copies) {
        const QString script = u"import openpyxl, sys\n"
                               "book = openpyxl.load_workbook(sys.argv[1])\n"
                               "book.worksheets[0].title = 'Tabelle1'\n"
                               "for _ in range(int(sys.argv[2])): book.copy_worksheet(book.worksheets[0])\n"
                               "book.save(sys.argv[1])"_s;
        outputOf(u"/usr/bin/python3"_s, {u"-c"_s, script, file, QString::number(copies)});
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
        SCOPED_TRACE(type);
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
    renameSheet(renamed, 0);
    EXPECT_EQ(read(renamed), answers);

    // Of two sheets with the keys, neither is taken.
    renameSheet(renamed, 1);
    const QString title = renamed.section(u'/', -1);
    messages.expectBeginning(u"The file \"%1\" has no sheet \"Sheet1\"."_s.arg(title));
    EXPECT_EQ(readSurveyFiles({renamed}).bad, QStringList(title));
}

/// A copy with some bytes changed; in every fourth file digits, mostly of keys, become other digits.
QByteArray damagedCopy(int round, const QByteArray& whole, QRandomGenerator& random) {
    auto book = excel::biff::CompoundFile::parse(whole);
    const int stream = book.findStream(u"Workbook");
    QByteArray bytes = book.data(stream);
    for (int n = random.bounded(1, 6); n > 0; --n) {
        const quint8 values[] = {0, 0xFF, 0x7F, 0x80, quint8(random.generate())};
        qsizetype at = random.bounded(int(bytes.size()));
        while (round % 4 == 0 && !std::isdigit(quint8(bytes[at])))
            at = (at + 1) % bytes.size();
        bytes[at] = char(round % 4 == 0 ? '0' + random.bounded(10) : values[random.bounded(5)]);
    }
    book.setData(stream, bytes);
    return book.serialize();
}

TEST_F(SurveyTest, damagedSurveyFilesWriteTheirOwnAnswersOrNothing) {
    addStored(ann, today, {0, 4});
    const QString file =
        saveFile(u"filled.xls"_s, ann, {{"C14", 7}, {"D14", 9}, {"D16", 3}, {"B17", u"Good words"_s}});
    addToRegister(u"filled.xls"_s);
    const QByteArray whole = contentOf(file);
    const auto otherRows = [] {
        return storeRows(*cnnMain).filter(QRegularExpression(u"^(?!feedback|log|reading)"_s)) +
               rows(u"select custname, respid, xlsfilename, sdate, surveyid from log"_s);
    };
    const QStringList before = otherRows();
    int shown = 0, good = 0, foreign = 0;
    const Replaced<forms::messageHook> agrees([&](const forms::Message& message) {
        ++shown;
        return message.style & style::yesNo ? Answer::Yes : Answer::Ok;
    });
    runRaw(u"pragma synchronous = off"_s);
    QRandomGenerator random(20240305);
    alarm(400); // seconds; kills a test that hangs
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE(round);
        writeFile(file, damagedCopy(round, whole, random));
        shown = 0;
        const bool read = readSurveyFiles({file}).bad.isEmpty();
        ASSERT_EQ(shown, read ? 0 : 1);
        good += read;
        const QStringList owners = rows(u"select respondentid, surveyid from feedbackobjective union all "
                                        "select respondentid, surveyid from feedbackdescriptive"_s);
        if (owners.isEmpty())
            continue;
        const excel::Application application;
        const auto sheet = surveySheetOf(application.Workbooks().Open(file));
        const auto keyAt = [&](int row) {
            const excel::Value key = sheet.Cells(row, 9).Value();
            return QString::number(qlonglong(key.number().value_or(key.text().toDouble())));
        };
        const QString own = keyAt(2) + u'|' + keyAt(5);
        foreign += own != QString::number(ann) + u"|1"_s;
        ASSERT_EQ(owners.count(own), owners.size());
        undoReading(round + 1, {});
        ASSERT_EQ(storeRows(*cnnMain).filter(QRegularExpression(u"^feedback"_s)), QStringList());
    }
    alarm(0);
    EXPECT_EQ(otherRows(), before);
    EXPECT_TRUE(good > 300 && good < 1900 && foreign > 3)
        << good << " read, " << foreign << " under other keys";
}
} // namespace
