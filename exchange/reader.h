// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answersheet.h"

#include <QObject>

#include <functional>
#include <map>
#include <optional>
#include <set>

/// Reads filled survey files into the answers of the store. No cell of a file reaches a statement before it
/// is a number or a date. Of a file that fails the answers before the failure stay, of one with too much text
/// nothing. The database is copied before the first read of a run. A reader lives no longer than one read of
/// the user's: it keeps the catalogue's types of question.
class SurveyReader {
public:
    /// Reads the file of that full path. False after the user was told what ended the read: the workbook's
    /// sentence; "Type mismatch" or "Overflow" with the file and the cell; or the store's errors.
    bool read(const QString& path);

    /// The file that is read next, by its title, and the number of those after it.
    using Tell = std::function<void(const QString& title, qsizetype left)>;
    /// Reads the files of these full paths one after the other; of each the row of its title in the register
    /// is marked as read in before the file is opened. The files of a quarter of a second are one
    /// transaction: a run is not to wait for the disk at each file, and another program not for the whole
    /// run. A failure is told as read tells it, after the files before it are committed, and does not keep
    /// the next ones, unless the store failed. Returns the titles of the files that were not read to their
    /// end, each with the cell that ended it, if one did.
    QStringList readAll(const QStringList& paths, const Tell& tell = {});

    /// Answers of this reader are in the store.
    bool hasWritten() const { return written; }
    /// The store ended the last read: the next file would fare no better.
    bool hasStoreFailed() const { return failedStore; }
    /// What is worth a look in the files that were read, each remark with its file and cell.
    const QStringList& remarks() const { return allRemarks; }

    /// The respondentid and date of each questionnaire whose answers were read.
    using Questionnaires = std::set<std::pair<QString, QDate>>;

private:
    /// Runs the reading of one or more files as one transaction; false after the user was told a failure.
    bool toReadTogether(const std::function<void()>& files);
    void toReadFile(const QString& path);
    void toWriteAnswers(const std::vector<FileAnswer>& answers);
    void toCompareWithRegister(const AnswerKeys& keys);
    std::optional<bool> questionType(const QString& questionid);
    /// Where the last read ended, to follow the message of its failure.
    QString stopSentence() const;
    /// Keeps what the transaction that has just been committed brought.
    void toKeepFindings();

    std::map<QString, std::optional<bool>> types; // of questions, as the catalogue gives them
    QString title;                                // of the file that is being read
    std::optional<cellmap::Place> failing;        // the cell that ended the last read
    bool committed = false;                       // what the last transaction wrote before it ended
    bool failedStore = false;
    bool written = false;
    QStringList allRemarks;

    // Of the transaction that is open.
    QStringList newRemarks;
    Questionnaires newAnswers;
};

/// Reports what the readers of the program have stored, once it is committed.
class ReadReport : public QObject {
    Q_OBJECT

public:
    static ReadReport& instance();

Q_SIGNALS:
    void answersStored(const SurveyReader::Questionnaires& questionnaires);
};

/// Names, in one message, the files that were not read to their end and what is worth a look in the others,
/// the first ones of each when they are many. Shows nothing when there is nothing to name.
void toNameAfterReading(const QStringList& bad, const QStringList& remarks);
