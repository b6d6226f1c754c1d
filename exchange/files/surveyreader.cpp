// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveyreader.h"

#include "core/store/store.h"
#include "core/store/worktable.h"
#include "exchange/files/filenames.h"
#include "exchange/files/surveylog.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

bool SurveyReader::read(const ReturnedFile& file, std::optional<bool> statusBefore) {
    return readTogether([&] {
        record.beginFile(file.title(), findRegisteredTitle(file.title()), statusBefore);
        readFile(file.path, openSurvey(file.path));
    });
}

QStringList SurveyReader::readAll(const std::vector<ReturnedFile>& files) {
    constexpr qint64 longestTransaction = 250; // milliseconds; the current file is read to its end
    QStringList titles;
    for (const ReturnedFile& file : files)
        titles << file.title();
    SurveyOpener opener(files);
    QStringList bad;
    qsizetype next = 0;
    for (bool going = true; going && next < titles.size();) {
        const qsizetype first = next;
        QElapsedTimer clock;
        clock.start();
        const bool good = readTogether([&] {
            do {
                going = !onFile || onFile(titles[next], titles.size() - next - 1);
                if (!going)
                    return;
                markAndRead(files[std::size_t(next++)], opener.takeNext());
            } while (next < titles.size() && clock.elapsed() < longestTransaction);
        });
        if (!good && committed)
            bad << titles[next - 1] + (failing ? u" (cell %1)"_s.arg(cellmap::nameOf(*failing)) : QString());
        else if (!good)
            bad += titles.sliced(first, next - first);
        going = going && !failedStore;
    }
    return bad + titles.sliced(next);
}

bool SurveyReader::readTogether(const std::function<void()>& files) {
    failing.reset();
    committed = false;
    failedStore = false;
    newRemarks.clear();
    newAnswers.clear();
    cnnMain->Errors().Clear(); // errors found afterwards are from this reading
    std::exception_ptr failure;
    try {
        failure = tryWriteTogether(files);
        committed = true;
        record.keep();
        keepFindings();
    } catch (const std::exception&) { // nothing of it is stored
        record.drop();
        failure = std::current_exception();
    }
    if (!failure)
        return true;
    failedStore =
        cnnMain->State() == ado::StateClosed || cnnMain->Errors().Count() > 0; // else a cell's conversion
    if (onFailure)
        onFailure(failedStore || !failing ? failure : withStop(failure));
    return false;
}

/// The failure of a cell, or of a file damaged at a cell, with the cell in its sentence.
std::exception_ptr SurveyReader::withStop(const std::exception_ptr& failure) const {
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return std::make_exception_ptr(Failure(
            known.number(),
            known.text() + u"\r\n%1 was not read beyond cell %2."_s.arg(title, cellmap::nameOf(*failing))));
    } catch (const std::exception&) {
        return failure;
    }
}

void SurveyReader::keepFindings() {
    written = written || !newAnswers.empty();
    if (onStored)
        onStored(newAnswers);
    allRemarks += newRemarks;
}

void SurveyReader::markAndRead(const ReturnedFile& file, const OpenedSurvey& opened) {
    title = file.title();
    failing.reset();
    if (!file.checkedHash.isEmpty()) {
        if (opened.hash.isEmpty())
            std::rethrow_exception(opened.failure);
        if (opened.hash != file.checkedHash)
            throw Failure(
                u"%1 has changed since it was checked and was not read. Check it again."_s.arg(title));
    }
    const QString registered = findRegisteredTitle(title);
    record.beginFile(title, registered, setLogStatus(registered));
    readFile(file.path, opened);
}

void SurveyReader::readFile(const QString& path, const OpenedSurvey& opened) {
    title = path.section(u'/', -1);
    failing.reset();
    try {
        record.setHash(opened.hash);
        if (opened.failure)
            std::rethrow_exception(opened.failure);
        readSheet(opened.sheet);
        opened.workbook.Close(false);
    } catch (const std::exception&) {
        if (cnnMain->InTransaction()) // else the store has rolled back
            record.endFile();
        throw;
    }
    record.endFile();
}

void SurveyReader::readSheet(const excel::Worksheet& sheet) {
    sheet.Unprotect(cellmap::sheetPassword.toString());
    const SheetAnswers read = AnswerSheet(sheet, title, [this](const QString& questionid) {
                                  return questionType(questionid);
                              }).read();
    writeAnswers(read.answers);
    for (const QString& remark : read.remarks)
        newRemarks << title + u", "_s + remark;
    if (!read.answers.empty())
        compareWithRegister(read.answers.front().keys);
    failing = read.failing;
    if (read.failure)
        std::rethrow_exception(read.failure);
    sheet.Protect(cellmap::sheetPassword.toString());
}

void SurveyReader::writeAnswers(const std::vector<FileAnswer>& answers) {
    for (const FileAnswer& answer : answers) {
        const AnswerKeys& keys = answer.keys;
        AnswerChange change;
        change.questionid = keys.questionid.toInt();
        change.isScore = answer.isScore;
        change.after = AnswerState{keys.surveyid.toInt(), answer.weightage, answer.score};
        if (!answer.isScore)
            change.after->content = answer.words ? QVariant(*answer.words) : ado::Null;
        change.before = answer.isScore ? toWriteObjectiveAnswer(keys, answer.weightage, answer.score)
                                       : toWriteDescriptiveAnswer(keys, answer.weightage, answer.words);
        record.add(keys, std::move(change));
        newAnswers.emplace(keys.respondentid, keys.surveydate);
    }
}

void SurveyReader::compareWithRegister(const AnswerKeys& keys) {
    const QString registered = findRegisteredTitle(title);
    if (registered != title)
        newRemarks << u"%1 was read as the returned %2"_s.arg(title, registered);
    for (const QString& difference : findDifferencesFromRegister(registered, keys))
        newRemarks << title + u", "_s + difference;
}

std::optional<bool> SurveyReader::questionType(const QString& questionid) {
    const auto known = types.find(questionid);
    return known != types.end() ? known->second
                                : types.emplace(questionid, toGetQuestionType(questionid)).first->second;
}
