// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answers.h"
#include "exchange/files/cellmap.h"
#include "platform/excel/worksheet.h"
#include "platform/failure/failure.h"

#include <exception>
#include <functional>
#include <optional>
#include <vector>

/// One answer of a survey file, converted.
struct FileAnswer {
    AnswerKeys keys;
    int row = 0; ///< of the sheet, in which its block begins
    bool isScore = false;
    int weightage = 0;
    int score = 0;                     ///< of a Score question
    std::optional<QString> words = {}; ///< of a Descriptive question; nothing for the untouched preset text
};

/// What a remark is about.
enum class Oddity {
    UnknownQuestion, ///< not in the catalogue
    MarkOutside,     ///< beyond 0 to 10
    Skipped,         ///< not read, since the catalogue has another kind of question than the file
};

/// The answers of a survey file.
struct SheetAnswers {
    std::vector<FileAnswer> answers;       ///< in the order of the rows, those before the failure
    QStringList remarks;                   ///< remarks, each beginning with its cell
    std::vector<Oddity> oddities;          ///< of each remark
    std::exception_ptr failure;            ///< ended the reading; null when the sheet was read to its end
    std::optional<cellmap::Place> failing; ///< the cell whose conversion failed
};

/// A file with more text than any questionnaire has: of such a file nothing is read.
class TooMuchText : public Failure {
public:
    using Failure::Failure;
};

/// Converts the cells of a survey file. Keys must be whole numbers of 32 bits and the date a date; marks are
/// whole numbers of 16 bits, rounded half to even.
class AnswerSheet {
public:
    /// Characters read from one file at most.
    static constexpr qsizetype mostText = 2'000'000;

    /// Whether the question asks for a score; nothing for one that is not in the catalogue.
    using Catalogue = std::function<std::optional<bool>(const QString& questionid)>;

    /// The title is that of the file.
    AnswerSheet(const excel::Worksheet& worksheet, QString fileTitle, Catalogue questions)
        : sheet(worksheet), title(std::move(fileTitle)), catalogue(std::move(questions)) {}

    /// Throws TooMuchText.
    SheetAnswers read();

private:
    void readRows();
    void readBlock(int row, bool isScore);
    void remarkSkipped(int row, bool isScore);
    void remark(Oddity oddity, cellmap::Place place, const QString& text);

    /// The text of a cell that is needed for a remark only; a failure does not end the reading.
    QString peek(cellmap::Place place) const;

    // The contents of a cell, converted. They throw Failure with the conversion's message.
    excel::Value cell(cellmap::Place place);
    QString key(cellmap::Place place);
    QDate date(cellmap::Place place);
    int mark(cellmap::Place place);
    double questionCount();
    AnswerKeys headKeys();

    excel::Worksheet sheet;
    QString title;
    Catalogue catalogue;
    AnswerKeys keys; // of the block that is being read
    SheetAnswers result;
    std::optional<cellmap::Place> converting;
    qsizetype textRead = 0; // characters
};
