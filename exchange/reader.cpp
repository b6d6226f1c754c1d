// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/reader.h"

#include "core/base/backup.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/store/worktable.h"
#include "exchange/files/surveylog.h"
#include "platform/excel/application.h"
#include "platform/forms/msgbox.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

bool SurveyReader::read(const QString& path) {
    return toReadTogether([&] { toReadFile(path); });
}

QStringList SurveyReader::readAll(const QStringList& paths, const Tell& tell) {
    constexpr qint64 longestTransaction = 250; // milliseconds; the file in hand is read to its end
    QStringList titles;
    for (const QString& path : paths)
        titles << path.section(u'/', -1);
    QStringList bad;
    qsizetype next = 0;
    for (bool going = true; going && next < paths.size();) {
        const qsizetype first = next;
        QElapsedTimer clock;
        clock.start();
        const bool good = toReadTogether([&] {
            do {
                const qsizetype now = next++;
                if (tell)
                    tell(titles[now], paths.size() - next);
                setLogStatus(titles[now]);
                toReadFile(paths[now]);
            } while (next < paths.size() && clock.elapsed() < longestTransaction);
        });
        if (!good && committed)
            bad << titles[next - 1] + (failing ? u" (cell %1)"_s.arg(cellmap::nameOf(*failing)) : QString());
        else if (!good)
            bad += titles.sliced(first, next - first);
        going = !failedStore;
    }
    return bad + titles.sliced(next);
}

bool SurveyReader::toReadTogether(const std::function<void()>& files) {
    failing.reset();
    committed = false;
    failedStore = false;
    newRemarks.clear();
    newAnswers.clear();
    return guardedWithDescription([&] {
        try {
            toReconnect();
            toBackupBeforeLoss();
            const std::exception_ptr failure = toKeepWritten(files);
            committed = true;
            toKeepFindings();
            if (failure)
                std::rethrow_exception(failure);
        } catch (const ado::Failure& failure) {
            failedStore = cnnMain->State() == ado::StateClosed ||
                          cnnMain->Errors().Count() > 0; // else a cell's conversion
            if (failedStore || !failing)
                throw;
            throw ado::Failure({failure.cause().Number, failure.cause().Description + stopSentence()});
        } catch (const excel::Error& failure) { // of the file, or of a cell that is damaged
            if (!failing)
                throw;
            throw excel::Error(failure.text() + stopSentence());
        }
    });
}

QString SurveyReader::stopSentence() const {
    return u"\r\n%1 was not read beyond cell %2."_s.arg(title, cellmap::nameOf(*failing));
}

void SurveyReader::toKeepFindings() {
    written = written || !newAnswers.empty();
    Q_EMIT ReadReport::instance().answersStored(newAnswers);
    allRemarks += newRemarks;
}

void SurveyReader::toReadFile(const QString& path) {
    title = path.section(u'/', -1);
    failing.reset();
    excel::Application appExcel;
    const excel::Workbook wkbExcel = appExcel.Workbooks().Open(path);
    const excel::Worksheet wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
    wksExcel.Unprotect(cellmap::sheetPassword.toString());
    const SheetAnswers read = AnswerSheet(wksExcel, title, [this](const QString& questionid) {
                                  return questionType(questionid);
                              }).read();
    toWriteAnswers(read.answers);
    for (const QString& remark : read.remarks)
        newRemarks << title + u", "_s + remark;
    if (!read.answers.empty())
        toCompareWithRegister(read.answers.front().keys);
    failing = read.failing;
    if (read.failure)
        std::rethrow_exception(read.failure);
    wksExcel.Protect(cellmap::sheetPassword.toString());
    wkbExcel.Close(false);
    appExcel.Quit();
}

void SurveyReader::toWriteAnswers(const std::vector<FileAnswer>& answers) {
    for (const FileAnswer& answer : answers) {
        if (answer.isScore)
            toWriteObjectiveAnswer(answer.keys, answer.weightage, answer.score);
        else
            toWriteDescriptiveAnswer(answer.keys, answer.weightage, answer.words);
        newAnswers.emplace(answer.keys.respondentid, answer.keys.surveydate);
    }
}

/// Two surveys can have files of one name; the file is to be that of one of them.
void SurveyReader::toCompareWithRegister(const AnswerKeys& keys) {
    QStringList others;
    for (const LogRow& row : findLogRows(title)) {
        QStringList differing;
        if (!row.respid.isEmpty() && row.respid != keys.respondentid)
            differing << u"%1, I2: respondent %2, in the register %3"_s.arg(title, keys.respondentid,
                                                                            row.respid);
        if (row.sdate.isValid() && row.sdate != keys.surveydate)
            differing << u"%1, I3: date %2, in the register %3"_s.arg(
                title, keys.surveydate.toString(ado::dateTextFormat),
                row.sdate.toString(ado::dateTextFormat));
        if (!row.surveyid.isEmpty() && row.surveyid != keys.surveyid)
            differing << u"%1, I5: survey %2, in the register %3"_s.arg(title, keys.surveyid, row.surveyid);
        if (differing.isEmpty())
            return;
        if (others.isEmpty())
            others = differing;
    }
    newRemarks += others;
}

std::optional<bool> SurveyReader::questionType(const QString& questionid) {
    const auto known = types.find(questionid);
    return known != types.end() ? known->second
                                : types.emplace(questionid, toGetQuestionType(questionid)).first->second;
}

ReadReport& ReadReport::instance() {
    static ReadReport report;
    return report;
}

void toNameAfterReading(const QStringList& bad, const QStringList& remarks) {
    constexpr qsizetype mostNamed = 15;
    QStringList paragraphs;
    const auto name = [&](const QString& head, const QStringList& list) {
        if (list.isEmpty())
            return;
        QStringList lines = list.first(qMin(list.size(), mostNamed));
        lines.prepend(head);
        if (list.size() > mostNamed)
            lines << u"and %1 more"_s.arg(list.size() - mostNamed);
        paragraphs << lines.join(u"\r\n"_s);
    };
    name(u"Not read to the end:"_s, bad);
    name(u"Read as it stands, but worth a look:"_s, remarks);
    if (!paragraphs.isEmpty())
        forms::msgBox(paragraphs.join(u"\r\n\r\n"_s), forms::style::information);
}
