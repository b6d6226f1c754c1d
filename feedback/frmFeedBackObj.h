// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"
#include "survey/questionnaires/surveykey.h"

#include <QDate>

#include <memory>

class AnswerGrid;
class QLineEdit;

namespace Ui {
class frmFeedBackObj;
}

/// Keys in, shows and corrects the answers of a respondent to one survey. Typing changes the grid only; the
/// save command writes every row.
class frmFeedBackObj : public forms::DefaultForm<frmFeedBackObj> {
    Q_OBJECT

public:
    ~frmFeedBackObj() override;
    QLineEdit* txtDtls() const;

    /// Whether the user names the survey files, read when the form became active.
    bool blnSetting = false;

    forms::CommonDialog cmnDlg;
    QString strXLName;         ///< the registered file of the chosen survey
    QString strReturnFileName; ///< the file to open, if it was found
    bool blnLog = false;       ///< the chosen survey has a registered file
    /// strReturnFileName is a full path from the dialog. Stays set until the form becomes active again.
    bool blnBrowse = false;

    bool toFillcmbCustomername();
    /// Fills the list of the customer's survey dates.
    void toFillListView();
    void toFilllstRespondentName();
    void toSetWidthForGrid();
    void SetEditTextBox(int ColPos, int RowPos);
    /// Shows the questions of the chosen survey, one a row, without the answers.
    void toFillGrid();
    /// Shows the stored answers to the questions in the grid.
    void tofillscoreandweightage();
    /// Stores the rows in one transaction (one disk sync). Rows stored before a failure are kept.
    void toSaveDtls();
    void toShowFileName();
    /// Reads the survey file of the chosen survey, from the home directory or from where the user locates it.
    void toreadFromXlsFile();
    /// Asks where the file is and reads it if it has the registered name.
    void toLocateXlsFile();
    /// Reads strReturnFileName. If anything of it was stored the grid shows the stored answers afterwards.
    void XLSWrite();

private:
    friend class DefaultForm<frmFeedBackObj>;
    frmFeedBackObj();
    void onLoad() override;
    void onActivate() override;
    void connectEvents();
    /// Moves to the customer and date of the row that was chosen in the search.
    void goToHit();
    /// Shows what another form has read in meanwhile: a save would overwrite it with the answers shown.
    void showReadAnswers();

    void cmbCusName_Click();
    void lstRespname_Click();
    void lstSurveyDates_Click();
    void cmdRead_Click();
    void cmdSave_Click();

    /// The registered file of the chosen survey, or empty. Marks the file as read in.
    QString toGetLoggedFileName();
    bool toCheckFileExists(const QString& fileName);

    /// What is chosen in the lists.
    SurveyContext chosen() const;
    void showNothing();
    /// Shows that the hit of the search no longer exists.
    void showHitGone();
    void showFileLabel(const QString& text);
    void showFileNameOfChoice();

    std::unique_ptr<Ui::frmFeedBackObj> ui;
    AnswerGrid* answers = nullptr;
    std::optional<bool> logStatusBefore; // of the file's row in the register, before the current reading
    bool hasNewAnswers = false;          // read from a file since they were shown
};
