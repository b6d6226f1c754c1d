// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/reader.h"

#include "core/backup.h"
#include "core/failure.h"
#include "core/gblGlobal.h"
#include "core/worktable.h"
#include "exchange/answers.h"
#include "exchange/surveylog.h"
#include "platform/excel/application.h"

#include <cmath>

using namespace Qt::StringLiterals;
using cellmap::Place;

namespace {

[[noreturn]] void typeMismatch() {
    throw ado::Failure({ado::number::typeMismatch, u"Type mismatch"_s});
}

/// A number or a text that is to become one.
QVariant toConvertible(const excel::Value& value) {
    using Type = excel::Value::Type;
    if (value.type() == Type::Number)
        return *value.number();
    if (value.type() == Type::Text)
        return value.text();
    typeMismatch();
}

} // namespace

bool SurveyReader::read(const QString& path, const QString& registerName) {
    reading.reset();
    failedStore = false;
    return guardedWithDescription([&] {
        try {
            toReconnect();
            toBackupBeforeLoss();
            toWriteTogether([&] {
                if (!registerName.isEmpty())
                    toSetLogStatus(registerName);
                toReadFile(path);
            });
        } catch (const ado::Failure&) {
            failedStore = cnnMain->State() == 0 || cnnMain->Errors().Count() > 0; // else a cell's conversion
            throw;
        }
    });
}

void SurveyReader::toReadFile(const QString& path) {
    excel::Application appExcel;
    const excel::Workbook wkbExcel = appExcel.Workbooks().Open(path);
    const excel::Worksheet wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
    wksExcel.Unprotect(cellmap::sheetPassword.toString());
    toReadCells(wksExcel);
    wksExcel.Protect(cellmap::sheetPassword.toString());
    wkbExcel.Close(false);
    appExcel.Quit();
}

QString SurveyReader::failedCell() const {
    return reading ? QChar(u'A' + reading->column - 1) + QString::number(reading->row) : QString();
}

void SurveyReader::toReadCells(const excel::Worksheet& sheet) {
    const int last = cellmap::lastRow(questionCount(sheet));
    for (int row = cellmap::firstRow; row <= last;)
        row += cell(sheet, {row, cellmap::column::key}).text().isEmpty() ? 1 : toReadBlock(sheet, row);
    reading.reset();
}

int SurveyReader::toReadBlock(const excel::Worksheet& sheet, int row) {
    const QString questionid = key(sheet, {row, cellmap::column::key});
    const AnswerKeys keys{.questionid = questionid,
                          .respondentid = key(sheet, cellmap::respondentIdPlace),
                          .surveydate = date(sheet, cellmap::surveyDatePlace),
                          .surveyid = key(sheet, cellmap::surveyIdPlace)};
    reading.reset();
    unseen.emplace(keys.respondentid, keys.surveydate);
    const bool isScore = toGetQuestionType(questionid);
    const int weightage = mark(sheet, {row, cellmap::column::weightage});
    if (isScore) {
        const int score = mark(sheet, {row, cellmap::column::score});
        reading.reset();
        toWriteObjectiveAnswer(keys, weightage, score);
    } else {
        const QString words = cell(sheet, cellmap::answerPlace(row)).text();
        const bool isAnswer = words.trimmed() != cellmap::presetAnswer;
        reading.reset();
        toWriteDescriptiveAnswer(keys, weightage, isAnswer ? std::optional(words) : std::nullopt);
    }
    return cellmap::blockRows(isScore);
}

excel::Value SurveyReader::cell(const excel::Worksheet& sheet, Place place) {
    reading = place;
    return sheet.Cells(place.row, place.column).Value();
}

QString SurveyReader::key(const excel::Worksheet& sheet, Place place) {
    const QVariant content = toConvertible(cell(sheet, place));
    const qlonglong whole = ado::toWhole(content, INT32_MIN, INT32_MAX);
    if (static_cast<double>(whole) != content.toDouble())
        typeMismatch();
    return QString::number(whole);
}

QDate SurveyReader::date(const excel::Worksheet& sheet, Place place) {
    const excel::Value content = cell(sheet, place);
    const QDate day =
        content.type() == excel::Value::Type::Text ? toDate(content.text().trimmed()) : content.date();
    if (!day.isValid())
        typeMismatch();
    return day;
}

int SurveyReader::mark(const excel::Worksheet& sheet, Place place) {
    const excel::Value content = cell(sheet, place);
    return content.isBlank() ? 0 : static_cast<int>(ado::toWhole(toConvertible(content)));
}

double SurveyReader::questionCount(const excel::Worksheet& sheet) {
    const excel::Value content = cell(sheet, cellmap::questionCountPlace);
    if (content.isBlank())
        return 0;
    const QVariant count = toConvertible(content);
    ado::toWhole(count, INT32_MIN, INT32_MAX); // refuses what is no number
    return count.toString().trimmed().toDouble();
}
