// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answerrecords.h"
#include "exchange/files/answersheet.h"
#include "exchange/files/openedsurvey.h"
#include "exchange/files/readingrecord.h"
#include "exchange/files/surveylog.h"

#include <functional>
#include <map>
#include <optional>
#include <set>

/// Reads filled survey files into the answers of the store. No cell of a file reaches a statement before it
/// is a number or a date. Of a file that fails the answers before the failure are kept, of one with too much
/// text nothing is. Each reading is recorded, so that it can be undone. A reader is used for one command of
/// the user: it caches the catalogue's types of question.
class SurveyReader {
public:
    explicit SurveyReader(ReadingRun run) : record(std::move(run)) {}

    /// The respondentid and date of each questionnaire whose answers were read.
    using Questionnaires = std::set<std::pair<QString, QDate>>;

    /// Called with what ended the reading of a file, after the files before it are committed: the workbook's
    /// sentence; "Type mismatch" or "Overflow" with the file and the cell; or the store's failure.
    std::function<void(const std::exception_ptr& failure)> onFailure;
    /// Called with what a transaction has stored, once it is committed.
    std::function<void(const Questionnaires& stored)> onStored;
    /// Called before a file is read, with its title and the number of files after it. False ends the run.
    std::function<bool(const QString& title, qsizetype left)> onFile;

    /// Reads a file whose row in the register, if it has one, the caller has marked as read in; statusBefore
    /// is the mark before. False when it was not read to its end.
    bool read(const ReturnedFile& file, std::optional<bool> statusBefore);
    /// Reads the files one after the other; before each, the row of its title in the register is marked as
    /// read in. Of a checked file that has changed since, nothing is read or marked. The files of a quarter
    /// of a second share one transaction: a run is not to wait for the disk at each file, and another program
    /// not for the whole run. A failure does not keep the next files, unless it is the store's. Returns the
    /// titles of the files that were not read to their end, each with the cell that ended it, if one did.
    QStringList readAll(const std::vector<ReturnedFile>& files);

    /// Answers of this reader are in the store.
    bool hasWritten() const { return written; }
    /// The store ended the last reading; the next file would fail too.
    bool hasStoreFailed() const { return failedStore; }
    /// Why files were not read to their end, by path.
    const std::map<QString, QString>& reasons() const { return allReasons; }
    /// Remarks on the files that were read, each with file and cell.
    const QStringList& remarks() const { return allRemarks; }

private:
    /// A file whose cells are converted and whose answers are to be stored.
    struct ReadFile {
        explicit ReadFile(QString fileTitle, qsizetype numberInRun = 0)
            : title(std::move(fileTitle)), number(numberInRun) {}
        QString title;
        qsizetype number; ///< of the run
        QString hash;     ///< of its content; empty if it could not be read
        std::optional<bool> statusBefore;
        bool isMarked = false; ///< in the register, by the caller
        std::vector<FileAnswer> answers;
        QStringList remarks;
    };

    /// Runs the reading of one or more files as one transaction; false after it has reported a failure.
    bool readTogether(const std::function<void()>& files);
    void readFile(ReadFile file, const OpenedSurvey& opened);
    void readNext(const ReturnedFile& file, qsizetype number, const OpenedSurvey& opened);
    /// Stores the files that were read since.
    void storeRead();
    void storeTogether(const std::vector<ReadFile>& files);
    void store(const ReadFile& file, const QString& registered, const std::vector<LogRow>& rows);
    void writeAnswers(const std::vector<FileAnswer>& answers);
    void compareWithRegister(const ReadFile& file, const QString& registered,
                             const std::vector<LogRow>& rows);
    std::optional<bool> questionType(const QString& questionid);
    void noteBad(const std::vector<ReturnedFile>& files, qsizetype first, qsizetype number);
    std::exception_ptr withStop(const std::exception_ptr& failure) const;
    /// Keeps the findings of the transaction that was just committed.
    void keepFindings();

    std::optional<std::map<QString, bool>> types; // of questions, from the catalogue
    QString title;                                // of the file that is being read
    std::optional<cellmap::Place> failing;        // the cell that ended the last read
    bool committed = false;                       // what the last transaction wrote before it ended
    bool failedStore = false;
    bool written = false;
    QStringList allRemarks;
    QString lastFailure; // of the last transaction
    std::map<QString, QString> allReasons;
    ReadingRecord record;

    // Of the open transaction.
    std::vector<ReadFile> waiting;
    std::optional<qsizetype> failedAt; // the number of the file that could not be stored
    std::optional<AnswerRecords> scores, words;
    QStringList newRemarks;
    Questionnaires newAnswers;
};
