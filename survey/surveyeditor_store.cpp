// SPDX-License-Identifier: GPL-3.0-or-later
// What a questionnaire editor reads from the store and writes into it.
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/store/transaction.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "survey/questiongrid.h"
#include "survey/surveyeditor.h"
#include "ui_surveyeditor.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void SurveyEditor::toSaveSurveyID() {
    guarded([this] { addSurvey(context()); });
}

std::vector<ChosenQuestion> SurveyEditor::rewrite() {
    return rewriteQuestionnaire(requireSurveyKey(context()), chosenQuestions());
}

void SurveyEditor::toSaveParamAndQuest() {
    if (unread) { // the grid does not show what is stored, so it must not be stored instead
        toRefreshGrid();
        return;
    }
    std::vector<ChosenQuestion> leftOut;
    const bool saved = guarded([&] {
        Transaction transaction;
        toSaveSurveyID();
        leftOut = rewrite();
        transaction.Commit();
        intDel = 1;
    });
    if (!saved) {
        showStored();
        return;
    }
    toRefreshGrid();
    if (leftOut.empty())
        return;
    QString sentence = u"No longer in the catalogue and not added:"_s;
    for (const ChosenQuestion& chosen : leftOut)
        sentence += u"\r\n"_s + chosen.question + u" (" + chosen.parameter + u")";
    forms::msgBox(sentence, forms::style::critical, u"Gaugewell v2.1"_s);
}

void SurveyEditor::toRefreshGrid() {
    unread = !guarded([this] { showQuestionnaire(editor->grdParamAndQuest, context()); });
    if (unread && shown != context())
        emptyGrid(editor->grdParamAndQuest); // else another questionnaire would stay
    shown = context();
}

/// The grid as the questionnaire is stored, with the cursor on the question that it is on. A failure shows in
/// the next command, which reads again first: the one that led here has been shown.
void SurveyEditor::showStored() {
    forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    unread = true;
    try {
        reconnect();
        const std::vector<ChosenQuestion> stored = readQuestionnaire(findSurveyKey(context()));
        unread = false;
        if (stored == chosenQuestions())
            return;
        const ChosenQuestion current = questionAt(grid->Row());
        const int row = grid->Row();
        showQuestions(grid, stored);
        const auto found = std::find(stored.begin(), stored.end(), current);
        grid->setRow(found != stored.end()         ? static_cast<int>(found - stored.begin()) + 1
                     : current == ChosenQuestion() ? grid->Rows() - 1
                                                   : std::min(row, grid->Rows() - 1));
    } catch (const Failure&) {
        cnnMain->Errors().Clear();
    }
}

void SurveyEditor::moveRow(int step, bool stays) {
    if (unread) {
        toRefreshGrid();
        return;
    }
    forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    const int row = grid->Row();
    const bool ended = guarded([&] {
        Transaction transaction;
        if (stays)
            return;
        moveQuestion(requireSurveyKey(context()), questionAt(row), row, step);
        transaction.Commit();
        toRefreshGrid();
        grid->setRow(row + step);
    });
    if (!ended)
        showStored();
}

void SurveyEditor::toMoveRowUpward() {
    const forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    moveRow(-1, grid->Row() == 1 || grid->Row() == grid->Rows() - 1);
}

/// From the blank row there is nothing to move: the store refuses the search for its question.
void SurveyEditor::toMoveRowDownward() {
    const forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    moveRow(1, grid->Row() == grid->Rows() - 2);
}
