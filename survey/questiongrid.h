// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/questionnaire.h"

namespace forms {
class MSHFlexGrid;
}

/// A grid of chosen questions in order of priority, one a row from row 1 on, with a blank row at the end. It
/// refers to the grid of a form and holds nothing of its own.
class QuestionGrid {
public:
    explicit QuestionGrid(forms::MSHFlexGrid* shown) : grid(shown) {}

    void setHeads() const;
    int count() const;
    bool isEmpty() const { return count() == 0; }
    int cursor() const;
    bool isOnBlankRow() const { return cursor() == count() + 1; }
    /// Both texts are empty on the blank row.
    ChosenQuestion at(int row) const;
    std::vector<ChosenQuestion> questions() const;
    bool contains(const ChosenQuestion& question) const;

    void clear() const;
    void show(const std::vector<ChosenQuestion>& questions) const;
    /// Shows a stored questionnaire. For an empty respondent of an existing survey the grid is left as it is.
    /// Throws Failure.
    void show(const SurveyContext& survey) const;
    /// The cursor stays on its question, or near its row if the question is gone.
    void showKeepingCursor(const std::vector<ChosenQuestion>& questions) const;
    /// The rows from the cursor on move one down. The blank row moves down for the question as well.
    void insertAtCursor(const ChosenQuestion& question) const;
    void removeAtCursor() const;

private:
    void put(int row, const ChosenQuestion& question) const;

    forms::MSHFlexGrid* grid;
};
