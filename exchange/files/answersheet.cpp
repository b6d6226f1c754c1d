// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answersheet.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;
using cellmap::Place;
namespace column = cellmap::column;

namespace {

constexpr int lowestMark = 0;
constexpr int highestMark = 10;

[[noreturn]] void typeMismatch() {
    throw Failure(Failure::typeMismatch, u"Type mismatch"_s);
}

/// A number or a text that is to become one.
QVariant convertible(const excel::Value& value) {
    using Type = excel::Value::Type;
    if (value.type() == Type::Number)
        return *value.number();
    if (value.type() == Type::Text)
        return value.text();
    typeMismatch();
}

bool isAnswer(const QString& words) {
    return words.trimmed() != cellmap::presetAnswer;
}

} // namespace

SheetAnswers AnswerSheet::read() {
    result = {};
    try {
        readRows();
    } catch (const TooMuchText&) {
        throw;
    } catch (const std::exception&) {
        result.failure = std::current_exception();
        result.failing = converting;
    }
    return std::move(result);
}

void AnswerSheet::readRows() {
    bool hasHead = false; // the keys of the head are those of the first block
    const int last = cellmap::lastRow(questionCount());
    for (int row = cellmap::firstRow; row <= last;) {
        if (cell({row, column::key}).text().isEmpty()) {
            ++row;
            continue;
        }
        const QString questionid = key({row, column::key});
        if (!std::exchange(hasHead, true))
            keys = headKeys();
        keys.questionid = questionid;
        converting.reset();
        const std::optional<bool> known = catalogue(questionid);
        if (!known)
            remark(Oddity::UnknownQuestion, {row, column::key},
                   u"question %1 is not in the catalogue"_s.arg(questionid));
        const bool isScore = known.value_or(false);
        readBlock(row, isScore);
        remarkSkipped(row, isScore);
        row += cellmap::blockRows(isScore);
    }
    converting.reset();
}

void AnswerSheet::readBlock(int row, bool isScore) {
    FileAnswer answer{
        .keys = keys, .row = row, .isScore = isScore, .weightage = mark({row, column::weightage})};
    if (isScore) {
        answer.score = mark({row, column::score});
    } else {
        const QString words = cell(cellmap::answerPlace(row)).text();
        if (isAnswer(words))
            answer.words = words;
    }
    result.answers.push_back(answer);
}

/// A file that was written for another kind of question has its blocks elsewhere. A key without a question
/// text or a mark beside it is one that an earlier export of the file left behind.
void AnswerSheet::remarkSkipped(int row, bool isScore) {
    for (int inside = row + 1; inside < row + cellmap::blockRows(isScore); ++inside) {
        const QString skipped = peek({inside, column::key});
        const bool hasText = inside > row + 1 && !peek({inside, column::question}).isEmpty();
        if (!skipped.isEmpty() && (hasText || !peek({inside, column::score}).isEmpty() ||
                                   !peek({inside, column::weightage}).isEmpty()))
            remark(Oddity::Skipped, {inside, column::key},
                   u"question %1 was not read, it lies within the rows of question %2"_s.arg(
                       skipped.left(20), keys.questionid));
    }
    const QString words = isScore ? peek(cellmap::answerPlace(row)).trimmed() : QString();
    if (!words.isEmpty() && isAnswer(words))
        remark(Oddity::Skipped, cellmap::answerPlace(row),
               u"the words were not read, question %1 asks for a score"_s.arg(keys.questionid));
}

void AnswerSheet::remark(Oddity oddity, Place place, const QString& text) {
    result.oddities.push_back(oddity);
    result.remarks << cellmap::nameOf(place) + u": " + text;
}

excel::Value AnswerSheet::cell(Place place) {
    converting = place;
    excel::Value value = sheet.Cells(place.row, place.column).Value();
    if (value.type() == excel::Value::Type::Text && (textRead += value.text().size()) > mostText)
        throw TooMuchText(
            u"The file \"%1\" holds more text than a survey file can have; nothing of it was read."_s.arg(
                title));
    return value;
}

QString AnswerSheet::peek(Place place) const {
    try {
        return sheet.Cells(place.row, place.column).Value().text();
    } catch (const Failure&) {
        return {}; // damaged, or below the sheet
    }
}

QString AnswerSheet::key(Place place) {
    const QVariant content = convertible(cell(place));
    const qlonglong whole = ado::toWhole(content, INT32_MIN, INT32_MAX);
    if (static_cast<double>(whole) != content.toDouble())
        typeMismatch();
    return QString::number(whole);
}

QDate AnswerSheet::date(Place place) {
    const excel::Value content = cell(place);
    const QDate day =
        content.type() == excel::Value::Type::Text ? toDate(content.text().trimmed()) : content.date();
    if (!day.isValid())
        typeMismatch();
    return day;
}

int AnswerSheet::mark(Place place) {
    const excel::Value content = cell(place);
    const int whole = content.isBlank() ? 0 : static_cast<int>(ado::toWhole(convertible(content)));
    if (whole < lowestMark || whole > highestMark)
        remark(Oddity::MarkOutside, place, u"mark %1 is outside 0 to 10"_s.arg(whole));
    return whole;
}

double AnswerSheet::questionCount() {
    const excel::Value content = cell(cellmap::questionCountPlace);
    if (content.isBlank())
        return 0;
    const QVariant count = convertible(content);
    ado::toWhole(count, INT32_MIN, INT32_MAX); // refuses what is no number
    return count.toString().trimmed().toDouble();
}

AnswerKeys AnswerSheet::headKeys() {
    return {.respondentid = key(cellmap::respondentIdPlace),
            .surveydate = date(cellmap::surveyDatePlace),
            .surveyid = key(cellmap::surveyIdPlace)};
}
