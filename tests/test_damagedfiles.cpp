// SPDX-License-Identifier: GPL-3.0-or-later
// Damaged survey files never hang or crash the program, and change no answers but their own survey's.
#include "exchange/files/readingundo.h"
#include "exchange/files/sheetchoice.h"
#include "exchange/reading.h"
#include "platform/excel/compoundfile.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

#include <QRandomGenerator>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

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
    const QString file = path(u"filled.xls"_s);
    addStored(ann, today, {0, 4});
    SurveyFile{.respondentid = ann,
               .questions = {{question[0], true}, {question[4], false}},
               .entered = {{u"C14"_s, 7}, {u"D14"_s, 9}, {u"D16"_s, 3}, {u"B17"_s, u"Good words"_s}}}
        .saveAs(file);
    add(u"log"_s, {{"custname", u"Acme"_s}, {"respid", ann}, {"xlsfilename", u"filled.xls"_s}});
    const QByteArray whole = contentOf(file);
    const auto otherRows = [] {
        return storeRows(*cnnMain).filter(QRegularExpression(u"^(?!feedback|log|reading)"_s)) +
               rows(u"select custname, respid, xlsfilename, sdate, surveyid from log"_s);
    };
    const QStringList before = otherRows();
    int shown = 0, good = 0, foreign = 0;
    const Replaced<forms::messageHook> agrees([&](const forms::Message& message) {
        ++shown;
        return message.style & forms::style::yesNo ? forms::Answer::Yes : forms::Answer::Ok;
    });
    runRaw(u"pragma synchronous = off"_s);
    QRandomGenerator random(20240305);
    alarm(120); // seconds; kills a test that hangs
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
