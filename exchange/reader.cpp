// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/reader.h"

#include "core/backup.h"
#include "core/failure.h"
#include "core/gblGlobal.h"
#include "core/worktable.h"
#include "exchange/surveylog.h"
#include "platform/excel/application.h"

#include <QElapsedTimer>

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

bool SurveyReader::read(const QString& path) {
    return toReadTogether([&] { toReadFile(path); });
}

QStringList SurveyReader::readAll(const QStringList& paths, const Tell& tell) {
    constexpr qint64 longestTransaction = 250; // milliseconds; the file in hand is read to its end
    QStringList titles;
    for (const QString& path : paths)
        titles << path.section(u'/', -1);
    QStringList bad;
    qsizetype next = 0;
    for (bool going = true; going && next < paths.size();) {
        const qsizetype first = next;
        QElapsedTimer clock;
        clock.start();
        const bool good = toReadTogether([&] {
            do {
                const qsizetype now = next++;
                if (tell)
                    tell(titles[now], paths.size() - next);
                toSetLogStatus(titles[now]);
                toReadFile(paths[now]);
            } while (next < paths.size() && clock.elapsed() < longestTransaction);
        });
        if (!good && committed)
            bad << titles[next - 1] + failedCell();
        else if (!good)
            bad += titles.sliced(first, next - first);
        going = !failedStore;
    }
    return bad + titles.sliced(next);
}

bool SurveyReader::toReadTogether(const std::function<void()>& files) {
    reading.reset();
    committed = false;
    failedStore = false;
    return guardedWithDescription([&] {
        try {
            toReconnect();
            toBackupBeforeLoss();
            const std::exception_ptr failure = toKeepWritten(files);
            committed = true;
            if (failure)
                std::rethrow_exception(failure);
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
    if (!reading)
        return {};
    return u" (cell "_s + QChar(u'A' + reading->column - 1) + QString::number(reading->row) + u')';
}

void SurveyReader::toReadCells(const excel::Worksheet& sheet) {
    std::optional<AnswerKeys> keys; // all but the questionid are those of the first block
    const int last = cellmap::lastRow(questionCount(sheet));
    for (int row = cellmap::firstRow; row <= last;) {
        if (cell(sheet, {row, cellmap::column::key}).text().isEmpty()) {
            ++row;
            continue;
        }
        const QString questionid = key(sheet, {row, cellmap::column::key});
        if (!keys)
            keys = toReadKeys(sheet);
        keys->questionid = questionid;
        const bool isScore = isScoreQuestion(questionid);
        toReadBlock(sheet, row, isScore, *keys);
        row += cellmap::blockRows(isScore);
    }
    reading.reset();
}

AnswerKeys SurveyReader::toReadKeys(const excel::Worksheet& sheet) {
    AnswerKeys keys{.respondentid = key(sheet, cellmap::respondentIdPlace),
                    .surveydate = date(sheet, cellmap::surveyDatePlace),
                    .surveyid = key(sheet, cellmap::surveyIdPlace)};
    unseen.emplace(keys.respondentid, keys.surveydate);
    return keys;
}

bool SurveyReader::isScoreQuestion(const QString& questionid) {
    reading.reset();
    const auto known = scoreQuestions.find(questionid);
    return known != scoreQuestions.end()
               ? known->second
               : scoreQuestions.emplace(questionid, toGetQuestionType(questionid)).first->second;
}

void SurveyReader::toReadBlock(const excel::Worksheet& sheet, int row, bool isScore, const AnswerKeys& keys) {
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
