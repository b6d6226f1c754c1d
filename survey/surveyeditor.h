// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "survey/questionnaire.h"

class QAbstractButton;

namespace forms {
class MSHFlexGrid;
class TreeView;
} // namespace forms

/// Composes the questionnaire of one respondent and survey. A tree offers the questions of the catalogue, a
/// grid shows the chosen ones in order of priority: its row number is the question's position in the store,
/// and its last row is always blank. Each change is written at once and the grid is read again.
class SurveyEditor : public forms::Form {
    Q_OBJECT

public:
    QString strParam;        ///< the parameter whose questions are being added to the tree
    bool blnMail = false;    ///< an export is mailed as well
    bool blnSetting = false; ///< the user names the survey files
    int intDel = 0; ///< 1 after the last change was a removal or a save, 0 after a double click in the tree
    QString strXLSFileName; ///< of the last exported survey file

    void buildTree();
    /// Adds the questions of strParam under its node.
    void BuildNode();
    void toSaveParamAndQuest();
    void toRefreshGrid();
    void toSaveSurveyID();
    void toMoveRowUpward();
    void toMoveRowDownward();

protected:
    struct Controls {
        forms::TreeView* trvParameter;
        forms::MSHFlexGrid* grdParamAndQuest;
        QAbstractButton* cmdAdd;
        QAbstractButton* cmdRemove;
        QAbstractButton* cmdUpward;
        QAbstractButton* cmdDownward;
        QAbstractButton* cmdSave;
        QAbstractButton* cmdCopy;
        QAbstractButton* cmdHelp;
        QAbstractButton* cmdClose;
    };

    explicit SurveyEditor(Kind windowKind) : Form(windowKind) {}
    /// Takes the form's controls over: their pictures and their events.
    void toAdopt(const Controls& adopted);

    void onLoad() override;
    void onActivate() override;

    virtual SurveyContext context() const = 0;
    virtual int helpContext() const = 0;
    /// Whether there is a survey date to change.
    virtual bool hasSurveyDate() const { return true; }
    /// Whether the chosen question may be added; says why not.
    virtual bool mayAdd() { return true; }
    /// Writes the rows of the grid within the open transaction.
    virtual void toRewrite();
    /// Lets the user copy the questions of an existing survey into this one.
    virtual void toImport() = 0;
    std::vector<ChosenQuestion> chosenQuestions() const;
    /// False when the last refresh failed: the grid does not show what is stored.
    bool showsStore() const { return !unread; }

private:
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
    ChosenQuestion questionAt(int row) const;
    bool isChosen(const ChosenQuestion& question) const;
    void toInsertAtCursor(const ChosenQuestion& question);
    void toMoveRow(int step, bool stays);

    Controls control{};
    bool unread = false;
};
