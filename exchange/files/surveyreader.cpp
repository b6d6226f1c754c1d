// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveyreader.h"

#include "core/store/store.h"
#include "core/store/worktable.h"

#include <QElapsedTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestTransaction = 250; // milliseconds; the current file is read to its end
constexpr std::size_t mostTogether = 64;   // files that wait to be stored, for their memory

QString sentenceOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return known.text();
    } catch (const std::exception& other) {
        return QString::fromUtf8(other.what());
    }
}

} // namespace

bool SurveyReader::read(const ReturnedFile& file, std::optional<bool> statusBefore) {
    return readTogether([&] {
        ReadFile marked(file.title());
        marked.statusBefore = statusBefore;
        marked.isMarked = true;
        readFile(std::move(marked), openSurvey(file.path));
    });
}

QStringList SurveyReader::readAll(const std::vector<ReturnedFile>& files) {
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
                const qsizetype number = next++;
                readNext(files[std::size_t(number)], number, opener.takeNext());
                if (waiting.size() >= mostTogether)
                    storeRead();
            } while (next < titles.size() && clock.elapsed() < longestTransaction);
        });
        if (!good && committed) {
            if (failedAt) // those read after it have not been stored
                next = *failedAt + 1;
            noteBad(files, next - 1, 1);
            bad << titles[next - 1] + (failing ? u" (cell %1)"_s.arg(cellmap::nameOf(*failing)) : QString());
        } else if (!good) {
            noteBad(files, first, next - first);
            bad += titles.sliced(first, next - first);
        }
        going = going && !failedStore;
    }
    if (!failedStore)
        lastFailure = u"Cancelled, not read"_s;
    noteBad(files, next, titles.size() - next);
    return bad + titles.sliced(next);
}

void SurveyReader::noteBad(const std::vector<ReturnedFile>& files, qsizetype first, qsizetype number) {
    for (qsizetype file = first; file < first + number; ++file)
        allReasons[files[std::size_t(file)].path] = lastFailure;
}

bool SurveyReader::readTogether(const std::function<void()>& files) {
    failing.reset();
    failedAt.reset();
    committed = false;
    failedStore = false;
    waiting.clear();
    newRemarks.clear();
    newAnswers.clear();
    cnnMain->Errors().Clear(); // errors found afterwards are from this reading
    std::exception_ptr failure;
    try {
        failure = tryWriteTogether([&] {
            std::exception_ptr bad;
            try {
                files();
            } catch (const std::exception&) { // what was read before a bad cell or file is stored
                bad = std::current_exception();
                if (failedAt || !cnnMain->InTransaction())
                    throw;
            }
            storeRead();
            if (bad)
                std::rethrow_exception(bad);
        });
        committed = true;
        record.keep();
        keepFindings();
    } catch (const std::exception&) { // nothing of it is stored
        record.drop();
        failure = std::current_exception();
    }
    scores.reset();
    words.reset();
    if (!failure)
        return true;
    failedStore =
        cnnMain->State() == ado::StateClosed || cnnMain->Errors().Count() > 0; // else a cell's conversion
    if (!failedStore && failing)
        failure = withStop(failure);
    lastFailure = sentenceOf(failure);
    if (onFailure)
        onFailure(failure);
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

void SurveyReader::readNext(const ReturnedFile& file, qsizetype number, const OpenedSurvey& opened) {
    title = file.title();
    failing.reset();
    if (!file.checkedHash.isEmpty()) {
        if (opened.hash.isEmpty())
            std::rethrow_exception(opened.failure);
        if (opened.hash != file.checkedHash)
            throw Failure(
                u"%1 has changed since it was checked and was not read. Check it again."_s.arg(title));
    }
    readFile(ReadFile(title, number), opened);
}

void SurveyReader::readFile(ReadFile file, const OpenedSurvey& opened) {
    title = file.title;
    failing.reset();
    file.hash = opened.hash;
    ReadFile& read = waiting.emplace_back(std::move(file));
    if (opened.failure)
        std::rethrow_exception(opened.failure);
    opened.sheet.Unprotect(cellmap::sheetPassword.toString());
    SheetAnswers found = AnswerSheet(opened.sheet, title, [this](const QString& questionid) {
                             return questionType(questionid);
                         }).read();
    read.answers = std::move(found.answers);
    read.remarks = std::move(found.remarks);
    failing = found.failing;
    if (found.failure)
        std::rethrow_exception(found.failure);
    opened.sheet.Protect(cellmap::sheetPassword.toString());
    opened.workbook.Close(false);
}

void SurveyReader::storeRead() {
    const std::vector<ReadFile> files = std::exchange(waiting, {});
    if (files.empty())
        return;
    try {
        storeTogether(files);
        cnnMain->UpdateBatch();
    } catch (const std::exception&) {
        // Of several, a server does not tell which of them has failed: their records wait for each other.
        if (!failedAt || (!cnnMain->IsFile() && files.size() > 1)) {
            failedAt.reset();
            cnnMain->RollbackTrans();
        }
        throw;
    }
}

void SurveyReader::storeTogether(const std::vector<ReadFile>& files) {
    QStringList titles;
    std::set<QString> respondentids;
    std::set<QDate> dates;
    for (const ReadFile& file : files) {
        titles << file.title;
        for (const FileAnswer& answer : file.answers) {
            respondentids.insert(answer.keys.respondentid);
            dates.insert(answer.keys.surveydate);
        }
    }
    RegisterRows registeredRows(titles);
    scores.emplace(true, respondentids, dates);
    words.emplace(false, respondentids, dates);
    for (const ReadFile& file : files) {
        try {
            const QString registered = registeredRows.registeredTitle(file.title);
            const std::optional<bool> before =
                file.isMarked ? file.statusBefore : registeredRows.mark(registered);
            record.beginFile(file.title, registered, before);
            store(file, registered, registeredRows.rowsOf(registered));
        } catch (const std::exception&) {
            failing.reset();
            failedAt = file.number;
            throw;
        }
    }
}

void SurveyReader::store(const ReadFile& file, const QString& registered, const std::vector<LogRow>& rows) {
    try {
        record.setHash(file.hash);
        writeAnswers(file.answers);
        for (const QString& remark : file.remarks)
            newRemarks << file.title + u", " + remark;
        if (!file.answers.empty())
            compareWithRegister(file, registered, rows);
    } catch (const std::exception&) {
        if (cnnMain->InTransaction()) // else the store has rolled back
            record.endFile();
        throw;
    }
    record.endFile();
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
        change.before =
            (answer.isScore ? scores : words)->replace(keys, answer.weightage, change.after->content);
        record.add(keys, std::move(change));
        newAnswers.emplace(keys.respondentid, keys.surveydate);
    }
}

void SurveyReader::compareWithRegister(const ReadFile& file, const QString& registered,
                                       const std::vector<LogRow>& rows) {
    if (registered != file.title)
        newRemarks << u"%1 was read as the returned %2"_s.arg(file.title, registered);
    for (const QString& difference : differencesFrom(rows, file.answers.front().keys))
        newRemarks << file.title + u", " + difference;
}

std::optional<bool> SurveyReader::questionType(const QString& questionid) {
    if (!types)
        types = readQuestionTypes();
    const auto known = types->find(questionid);
    return known != types->end() ? std::optional(known->second) : std::nullopt;
}
