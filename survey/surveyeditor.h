// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/mailer.h"
#include "exchange/surveyexport.h"
#include "platform/crystal/crystalreport.h"
#include "platform/forms/form.h"
#include "survey/questionnaires/questionnaire.h"

#include <memory>

namespace Ui {
class SurveyEditor;
}

/// Composes the questionnaire of one respondent and survey. A tree offers the questions of the catalogue, a
/// grid shows the chosen ones in order of priority: its row number is the question's position in the store,
/// and its last row is always blank. Each change is written at once and the grid is read again.
class SurveyEditor : public forms::Form {
    Q_OBJECT

public:
    ~SurveyEditor() override;

    QString strParam;           ///< the parameter whose questions are being added to the tree
    bool blnMail = false;       ///< the export is followed by mail; false again after it
    bool blnSetting = false;    ///< the user names the survey files
    QString strGenerateXLSFile; ///< of the last export; empty when it got none
    QString strXLSFileName;     ///< the last name that the program made itself
    int intDel = 0; ///< 1 after the last change was a removal or a save, 0 after a double click in the tree

    void buildTree();
    /// Adds the questions of strParam under its node.
    void BuildNode();
    void toSaveParamAndQuest();
    void toRefreshGrid();
    void toSaveSurveyID();
    void toMoveRowUpward();
    void toMoveRowDownward();

    /// Whether that survey is the one in hand.
    bool isFor(const SurveyContext& survey) const { return context() == survey; }

    /// Exports the survey in hand, and mails it when blnMail says so.
    void toWriteToExcelSheet();
    /// Makes reportlinktable that of the survey in hand, with the marks given last.
    void toGetTheLastScoreAndWeightage();
    /// The id of a respondent of the customer in hand; empty when there is none.
    virtual QString toGetRespondentID(const QString& respondent) const;
    /// Hands the file exported last to the mail client.
    void sendmail();
    /// The customer's standard message; empty when there is none.
    QString toGetStandardMessage(const QString& customer) const;

protected:
    explicit SurveyEditor(Kind windowKind);
    /// Lays the editor out below the controls that show or pick the survey.
    void setUp(QWidget* head);

    void onLoad() override;
    /// Another form may have changed the questionnaire meanwhile.
    void onActivate() override;

    virtual SurveyContext context() const = 0;
    virtual int helpContext() const = 0;
    /// Whether there is a survey date to change.
    virtual bool hasSurveyDate() const { return true; }
    virtual HistoryOrder historyOrder() const { return HistoryOrder::OldestFirst; }
    /// Of the window that shows the survey report.
    virtual QString reportTitle() const { return QStringLiteral("Gaugewell v2.1 Survey Report"); }
    /// Whether the chosen question may be added; says why not.
    virtual bool mayAdd() { return true; }
    /// Writes the rows of the grid within the open transaction; returns the questions that were left out.
    virtual std::vector<ChosenQuestion> rewrite();
    /// Lets the user copy the questions of an existing survey into this one.
    virtual void importSurvey() = 0;
    std::vector<ChosenQuestion> chosenQuestions() const;
    std::unique_ptr<Ui::SurveyEditor> editor;
    /// False when the questionnaire could not be read last: the grid does not show what is stored.
    bool showsStore() const { return !unread; }

private:
    void connectTree();
    void connectButtons();
    void cmdAdd();
    void cmdRemove();
    void cmdSave() { toSaveParamAndQuest(); }
    void cmdCopy();
    void cmdMove(void (SurveyEditor::*command)());
    void startExport(bool mailed);
    void cmdPrint();
    bool hasQuestions() const;
    void trvParameter_DblClick();
    void trvParameter_KeyDown(int key);
    void trvParameter_OLECompleteDrag();
    void grdParamAndQuest_DblClick();
    ChosenQuestion questionAt(int row) const;
    bool isChosen(const ChosenQuestion& question) const;
    void insertAtCursor(const ChosenQuestion& question);
    void moveRow(int step, bool stays);
    void showStored();

    Mailer mailer;
    crystal::CrystalReport crptPrint;
    SurveyContext shown; ///< whose questionnaire the grid holds
    bool unread = false;
    inline static const SurveyEditor* droppedOn = nullptr; ///< whose grid the last node was let go over
};
