// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questiongrid.h"

#include "platform/forms/flexgrid.h"
#include "reference/gridtools.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int parameterColumn = 1;
constexpr int questionColumn = 2;
constexpr int otherRows = 2; // the head row and the blank row

} // namespace

void QuestionGrid::setHeads() const {
    setHeadsAndWidths(grid, {u"Parameter"_s, u"Question"_s}, {0.05, 0.2, 0.7}, false);
}

int QuestionGrid::count() const {
    return grid->Rows() - otherRows;
}

int QuestionGrid::cursor() const {
    return grid->Row();
}

ChosenQuestion QuestionGrid::at(int row) const {
    return {grid->TextMatrix(row, parameterColumn), grid->TextMatrix(row, questionColumn)};
}

void QuestionGrid::put(int row, const ChosenQuestion& question) const {
    grid->setTextMatrix(row, parameterColumn, question.parameter);
    grid->setTextMatrix(row, questionColumn, question.question);
}

std::vector<ChosenQuestion> QuestionGrid::questions() const {
    std::vector<ChosenQuestion> all;
    for (int row = 1; row <= count(); ++row)
        all.push_back(at(row));
    return all;
}

bool QuestionGrid::contains(const ChosenQuestion& question) const {
    const std::vector<ChosenQuestion> all = questions();
    return std::find(all.begin(), all.end(), question) != all.end();
}

void QuestionGrid::clear() const {
    emptyGrid(grid);
}

void QuestionGrid::show(const std::vector<ChosenQuestion>& questions) const {
    clear();
    grid->setRows(static_cast<int>(questions.size()) + otherRows);
    int row = 0;
    for (const ChosenQuestion& chosen : questions)
        put(++row, chosen);
}

void QuestionGrid::show(const SurveyContext& survey) const {
    const SurveyKey key = findSurveyKey(survey);
    if (!survey.respondent.isEmpty() || key.surveyid == 0)
        show(readQuestionnaire(key));
}

void QuestionGrid::showKeepingCursor(const std::vector<ChosenQuestion>& questions) const {
    const int row = cursor();
    const ChosenQuestion current = at(row);
    show(questions);
    const auto found = std::find(questions.begin(), questions.end(), current);
    grid->setRow(found != questions.end()      ? static_cast<int>(found - questions.begin()) + 1
                 : current == ChosenQuestion() ? count() + 1
                                               : std::min(row, count() + 1));
}

void QuestionGrid::insertAtCursor(const ChosenQuestion& question) const {
    grid->setRows(grid->Rows() + 1);
    for (int row = count(); row > cursor(); --row)
        put(row, at(row - 1));
    put(cursor(), question);
}

void QuestionGrid::removeAtCursor() const {
    grid->RemoveItem(cursor());
}
