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

    /// Whether the user names the survey files, as it stood when the form last became active.
    bool blnSetting = false;

    forms::CommonDialog cmnDlg;
    QString strXLName;         ///< the file that the register has for the choice
    QString strReturnFileName; ///< the file to open, when it was found
    bool blnLog = false;       ///< the register has a file for the choice
    /// strReturnFileName is a full path from the dialog. Stays so after a read until the form becomes active
    /// again.
    bool blnBrowse = false;

    bool toFillcmbCustomername();
    /// Fills the list of the customer's survey dates.
    void toFillListView();
    void toFilllstRespondentName();
    void toSetWidthForGrid();
    void SetEditTextBox(int ColPos, int RowPos);
    /// One row a question of the chosen respondent, date and customer, without the answers.
    void toFillGrid();
    /// The stored answers to the questions in the grid.
    void tofillscoreandweightage();
    /// Stores the rows one after the other. The transaction around them, there for speed, is committed also
    /// when a row fails, so that the rows before it stay saved.
    void toSaveDtls();
    void toShowFileName();
    /// Reads the survey file of the choice: the one in the home directory, or one that the user locates.
    void toreadFromXlsFile();
    /// Asks where the file of the choice is and reads it, if it has the name that the register knows.
    void toLocateXlsFile();
    /// Reads strReturnFileName. When something of it is stored the grid shows the stored answers afterwards.
    void XLSWrite();

private:
    friend class DefaultForm<frmFeedBackObj>;
    frmFeedBackObj();
    void onLoad() override;
    void onActivate() override;
    void connectEvents();
    /// Moves to the customer and date of the row that was chosen in the search.
    void goToHit();
    /// Shows what another form has read in meanwhile; a save would store the answers from before.
    void showReadAnswers();

    void cmbCusName_Click();
    void lstRespname_Click();
    void lstSurveyDates_Click();
    void cmdRead_Click();
    void cmdSave_Click();

    /// The name that the register has for the choice, or empty. Finding it marks the file as read in.
    QString toGetLoggedFileName();
    bool toCheckFileExists(const QString& fileName);

    /// What is chosen in the lists.
    SurveyContext chosen() const;
    void showNothing();
    /// After a jump to a hit that is no longer there.
    void showHitGone();
    void showFileLabel(const QString& text);
    void showFileNameOfChoice();

    std::unique_ptr<Ui::frmFeedBackObj> ui;
    AnswerGrid* answers = nullptr;
    bool hasNewAnswers = false; // read from a file since they were shown
};
