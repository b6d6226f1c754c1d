// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "reference/grideditor.h"
#include "survey/questionnaires/surveykey.h"

namespace ado {
class Recordset;
}

/// The grid of answers to one survey, a question a row, edited in place by the rules of its cells. Typing
/// changes the grid only. The statements throw Failure.
class AnswerGrid : public GridEditor {
public:
    AnswerGrid(forms::MSHFlexGrid* grid, QLineEdit* box);

    void setHeads();
    void clear();
    /// Empties the grid, which then belongs to no survey.
    void showNothing();
    /// Takes over a survey and shows its questions without the answers. False when there are none; then the
    /// grid is as before.
    bool showQuestions(const SurveyKey& survey);
    /// Shows the stored answers to the questions in the grid.
    void showAnswers();
    /// Whether a question's text is missing.
    bool hasBlankQuestion() const;
    /// Throws Refusal unless the customer and respondent of the grid are these. The survey may have been made
    /// meanwhile.
    void requireFor(const SurveyKey& current);
    /// Before save, outside its transaction: compares the answers with those stored. Then `settle` asks about
    /// those that someone else has changed since they were shown; false when the user goes back to editing.
    void findChanges();
    bool settle() { return settlement.ask(); }
    /// Stores the rows one after the other, of a stored answer the fields that were changed in the grid.
    /// Throws Refusal at a question that has left the survey.
    void save();

    /// The survey whose answers are shown; its keys are 0 if there is none.
    const SurveyKey& survey() const { return shown; }

private:
    class Stored;

    void change(const QString& text);
    std::optional<QString> fitting(int row, int col, const QString& text) const;
    QString cell(int row, int col) const;
    bool isScoreRow(int row) const;
    void fill(ado::Recordset& questions);
    void showAnswer(int row, ado::Recordset* answer);
    void noteShown();
    QString shownText(int col, ado::Recordset& answer) const;
    ChangedRow changedMeanwhile(int row, ado::Recordset& answer) const;
    bool isTouched(int row, int col) const;
    void forEachStored(Stored& stored,
                       const std::function<void(const QString& key, const ChangedRow&)>& take) const;
    void saveRow(int row, Stored& stored);

    SurveyKey shown;
    std::vector<QStringList> asShown; ///< the texts of each row when it was shown; row 0 is empty
    Settlement settlement;            ///< of the save that is going on, by row
};
