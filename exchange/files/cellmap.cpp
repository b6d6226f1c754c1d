// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/cellmap.h"

#include "platform/ado/value.h"

using namespace Qt::StringLiterals;

namespace cellmap {

namespace {

/// A date's cell keeps the date only; a missing date leaves it blank.
excel::Value dateValue(const QDate& date) {
    return date.isValid() ? excel::Value(date) : excel::Value();
}

/// Of the cells of a block that the respondent cannot fill in: what is framed and white can be.
constexpr Colour shade = Colour::Grey;

/// A mark given last; the frame stays around a cell without one.
Cell lastMark(int row, int column, int mark) {
    Cell cell{.place = {row, column}, .border = Colour::Black, .fill = shade};
    if (mark != 0)
        cell.value = excel::Value(mark);
    return cell;
}

Cell openBox(int row, int column) {
    return {.place = {row, column}, .lock = Lock::Unlocked, .border = Colour::Black};
}

} // namespace

QString nameOf(Place place) {
    return QChar(u'A' + place.column - 1) + QString::number(place.row);
}

std::vector<Cell> headCells(const Head& head) {
    constexpr int a = 1, b = 2, h = 8;
    return {
        {.place = {1, a}, .value = head.organisation, .wrapped = true},
        {.place = custIdPlace, .value = head.custid},
        {.place = respondentIdPlace, .value = head.respondentid},
        {.place = surveyDatePlace, .value = dateValue(head.surveyDate)},
        {.place = surveyIdPlace, .value = head.surveyid, .lock = Lock::Unlocked},
        {.place = {1, h}, .value = dateValue(head.exportDate)},
        {.place = {3, b}, .value = u"Customer Satisfaction Survey"_s},
        {.place = customerNamePlace, .value = QString(customerNameWords + head.customer)},
        {.place = respondentNamePlace, .value = QString(respondentNameWords + head.respondent)},
    };
}

Cell questionCountCell(int questions) {
    return {.place = questionCountPlace, .value = QString::number(questions), .lock = Lock::Untouched};
}

std::vector<Cell> blockCells(int row, const Question& question) {
    std::vector<Cell> cells;
    cells.push_back({.place = {row, column::question},
                     .value = question.text,
                     .border = question.isScore ? Colour::Red : Colour::DarkBlue,
                     .wrapped = true,
                     .fill = shade});
    if (question.startsParameter)
        cells.push_back({.place = {row, column::parameter},
                         .value = question.parameter,
                         .border = Colour::Black,
                         .wrapped = true,
                         .fill = shade});
    cells.push_back({.place = {row, column::key}, .value = question.questionid});
    if (question.isScore) {
        cells.push_back(openBox(row, column::score));
        cells.push_back(openBox(row, column::weightage));
        cells.push_back(lastMark(row, column::lastScore, question.lastScore));
        cells.push_back(lastMark(row, column::lastWeightage, question.lastWeightage));
        cells.push_back({.place = {row + 1, column::question}});
    } else {
        cells.push_back({.place = {row, column::score}, .fill = shade});
        cells.push_back(openBox(row, column::weightage));
        cells.push_back(lastMark(row, column::lastWeightage, question.lastWeightage));
        cells.push_back({.place = answerPlace(row),
                         .value = presetAnswer.toString(),
                         .lock = Lock::Unlocked,
                         .border = Colour::Blue,
                         .wrapped = true,
                         .font = Colour::DarkBlue});
    }
    return cells;
}

int lastRow(double questions) {
    constexpr int rowsOfSheet = 65536;
    constexpr int rowsPerQuestion = 3; // of the longer block
    const double row = questions * rowsPerQuestion + firstRow + 1;
    return static_cast<int>(ado::toWhole(row, INT32_MIN, rowsOfSheet));
}

} // namespace cellmap
