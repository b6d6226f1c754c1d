// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/value.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

/// The cells of a survey file, for the writer and the reader. Rows and
/// columns count from 1. The head, rows 1 to 13, belongs to the template but for the cells named here; the
/// questions follow from row 14 on, one block each. A row begins a block when its key cell, in column I, is
/// not empty.
namespace cellmap {

inline constexpr QStringView sheetName = u"Sheet1";
/// Protects the sheet. It keeps out mistakes, not attackers.
inline constexpr QStringView sheetPassword = u"kvtwpa";

inline constexpr int firstRow = 14;
/// The columns, from the first row on, that an export empties before it writes: A to G. Keys of an earlier
/// export further down in column I are kept.
inline constexpr QStringView clearedFrom = u"A14";
inline constexpr QStringView clearedTo = u"G65536";

namespace column {
inline constexpr int parameter = 1;
inline constexpr int question = 2; ///< and, one row below, the answer in words
inline constexpr int score = 3;
inline constexpr int weightage = 4;
inline constexpr int lastScore = 5;
inline constexpr int lastWeightage = 6;
inline constexpr int key = 9; ///< the questionid
} // namespace column

struct Place {
    int row;
    int column;
    bool operator==(const Place&) const = default;
};

/// The place's address, such as "C14".
QString nameOf(Place place);

// Cells of the head that are read back.
inline constexpr Place respondentIdPlace{2, 9};  ///< I2
inline constexpr Place surveyDatePlace{3, 9};    ///< I3
inline constexpr Place questionCountPlace{4, 9}; ///< I4
inline constexpr Place surveyIdPlace{5, 9};      ///< I5

// Cells of the head by which a file is compared with the store; the names stand behind their words.
inline constexpr Place custIdPlace{1, 9};         ///< I1
inline constexpr Place customerNamePlace{8, 2};   ///< B8
inline constexpr Place respondentNamePlace{9, 2}; ///< B9
inline constexpr QStringView customerNameWords = u"Customer Name : ";
inline constexpr QStringView respondentNameWords = u"Respondent Name : ";

/// The text in the box for words until the respondent replaces it.
inline constexpr QStringView presetAnswer = u"Type your Answer here";

/// Colour indexes of the standard palette.
enum class Colour { None = 0, Black = 1, Red = 3, Grey = 15, DarkBlue = 25, Blue = 32 };

enum class Lock { Untouched, Locked, Unlocked };

/// A cell to be written.
struct Cell {
    Place place;
    std::optional<excel::Value> value = {}; ///< without one the cell's content is not touched
    Lock lock = Lock::Locked;
    Colour border = Colour::None; ///< of a thin line around the cell
    bool wrapped = false;         ///< otherwise not touched
    Colour font = Colour::None;   ///< none: not touched
    Colour fill = Colour::None;   ///< none: not touched
};

/// For whom a survey file is.
struct Head {
    QString organisation;
    QString customer;
    QString respondent;
    QString custid;
    QString respondentid;
    QString surveyid;
    QDate surveyDate;
    QDate exportDate;
};

/// The cells of the head in the order of writing, all but the number of questions.
std::vector<Cell> headCells(const Head& head);
/// I4: the number of questions, which limits the rows that are read.
Cell questionCountCell(int questions);

struct Question {
    QString questionid;
    QString text;
    bool isScore = true;          ///< asks for marks; otherwise for words and a weightage
    int lastScore = 0;            ///< 0: none
    int lastWeightage = 0;        ///< 0: none
    QString parameter;            ///< its name
    bool startsParameter = false; ///< the first question of its parameter: column A shows the name
};

/// The number of rows of a question's block. Blocks follow one another without a gap.
constexpr int blockRows(bool isScore) {
    return isScore ? 2 : 3;
}

/// The box for words of the block that begins in that row.
constexpr Place answerPlace(int row) {
    return {row + 1, column::question};
}

/// The cells of the block that begins in that row, in the order of writing.
std::vector<Cell> blockCells(int row, const Question& question);

/// The last row in which a block may begin, by the number of questions in I4, whatever their kinds; a
/// fraction rounds half to even. Throws Failure ("Overflow") when that is beyond the sheet.
int lastRow(double questions);

} // namespace cellmap
