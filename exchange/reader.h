// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/answers.h"
#include "exchange/cellmap.h"
#include "platform/excel/worksheet.h"

#include <functional>
#include <map>
#include <optional>
#include <set>

/// Reads filled survey files into the answers of the store. What is in a file is nobody's word: keys must be
/// whole numbers of 32 bits and the date a date before a statement holds them, marks are whole numbers of 16
/// bits, rounded half to even. Of a file that fails the answers before the failure stay. The database is
/// copied before the first read of a run. A reader lives no longer than one read of the user's: it keeps the
/// catalogue's types of question.
class SurveyReader {
public:
    /// Reads the file of that full path. False after the user was told what ended the read: the workbook's
    /// sentence, "Type mismatch" or "Overflow" for a cell, or the store's errors.
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

    /// The respondentid and date of each questionnaire whose answers were read and are not on show yet.
    static inline std::set<std::pair<QString, QDate>> unseen;

private:
    /// Runs the reading of one or more files as one transaction; false after the user was told a failure.
    bool toReadTogether(const std::function<void()>& files);
    void toReadFile(const QString& path);
    void toReadCells(const excel::Worksheet& sheet);
    AnswerKeys toReadKeys(const excel::Worksheet& sheet);
    void toReadBlock(const excel::Worksheet& sheet, int row, bool isScore, const AnswerKeys& keys);
    bool isScoreQuestion(const QString& questionid);
    /// The cell that ended the last read, such as " (cell D16)"; empty when that was something else.
    QString failedCell() const;

    // The contents of a cell, converted. They throw ado::Failure with the conversion's message.
    excel::Value cell(const excel::Worksheet& sheet, cellmap::Place place);
    QString key(const excel::Worksheet& sheet, cellmap::Place place);
    QDate date(const excel::Worksheet& sheet, cellmap::Place place);
    int mark(const excel::Worksheet& sheet, cellmap::Place place);
    double questionCount(const excel::Worksheet& sheet);

    std::map<QString, bool> scoreQuestions; // whether the question asks for a score
    std::optional<cellmap::Place> reading;  // the cell that is being converted
    bool committed = false;                 // what the last transaction wrote before it ended
    bool failedStore = false; // the store ended the last read: the next file would fare no better
};
