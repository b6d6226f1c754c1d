// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "survey/questiongrid.h"
#include "survey/surveyform.h"

#include <memory>

namespace Ui {
class SurveyEditor;
}
class QTreeWidgetItem;

/// Composes the questionnaire of one respondent and survey. A tree offers the questions of the catalogue, a
/// grid shows the chosen ones in order of priority: its row number is the question's position in the store,
/// and its last row is always blank. Each change is written at once and the grid is read again.
class SurveyEditor : public SurveyForm {
    Q_OBJECT

public:
    ~SurveyEditor() override;

    int intDel = 0; ///< 1 after the last change was a removal or a save, 0 after a double click in the tree

    void buildTree();
    void toSaveParamAndQuest();
    void toRefreshGrid();
    void toSaveSurveyID();
    void toMoveRowUpward();
    void toMoveRowDownward();

    /// Whether that is the current survey.
    bool isFor(const SurveyContext& survey) const { return context() == survey; }

    /// Questions of a parameter, and whether they ask for a score.
    using Questions = std::vector<std::pair<QString, bool>>;

protected:
    explicit SurveyEditor(Kind windowKind);
    /// Lays the editor out below the controls that show or pick the survey.
    void setUp(QWidget* head);

    void onLoad() override;
    /// Another form may have changed the questionnaire meanwhile.
    void onActivate() override;

    virtual int helpContext() const = 0;
    /// Whether there is a survey date to change.
    virtual bool hasSurveyDate() const { return true; }
    bool hasQuestions() const override { return !grid().isEmpty(); }
    /// Whether a question may be added; shows why not.
    virtual bool mayAdd() { return true; }
    /// Writes the rows of the grid within the open transaction; returns the questions that were left out.
    virtual std::vector<ChosenQuestion> rewrite();
    /// Lets the user copy the questions of an existing survey into this one.
    virtual void importSurvey() = 0;
    QuestionGrid grid() const;
    /// False when the questionnaire could not be read last: the grid does not show what is stored.
    bool showsStore() const { return !unread; }

    std::unique_ptr<Ui::SurveyEditor> editor;

private:
    static void buildNode(QTreeWidgetItem* parameter, const Questions& questions);
    void connectTree();
    void connectButtons();
    void cmdAdd();
    void cmdRemove();
    void cmdSave() { toSaveParamAndQuest(); }
    void cmdCopy();
    void cmdMove(void (SurveyEditor::*command)());
    void trvParameter_DblClick();
    void trvParameter_KeyDown(int key);
    void trvParameter_OLECompleteDrag();
    void grdParamAndQuest_DblClick();
    void moveRow(int step);
    void showStored();
    /// Asks when someone else has changed the questionnaire since it was read; false to go on editing.
    bool settleChanges();
    bool isChangedElsewhere() const; ///< throws Failure
    ChangedRow changedMeanwhile() const;
    void noteAsRead();

    SurveyContext shown; ///< whose questionnaire the grid holds
    bool unread = false;
    std::vector<ChosenQuestion> asRead;                    ///< what the grid held then
    std::vector<int> idsAsRead;                            ///< of the stored questionnaire
    Settlement settlement;                                 ///< of the current save
    bool isOvertaken = false;                              ///< only someone else has changed it
    inline static const SurveyEditor* droppedOn = nullptr; ///< on whose grid the last node was dropped
};
