// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "survey/questiongrid.h"
#include "survey/surveylists.h"

#include <memory>

class QLineEdit;

namespace Ui {
class frmPasteSurvey;
}

/// Copies the questions of an existing survey into the survey that the caller hands over. The user picks the
/// source from the lists and sees its questions.
class frmPasteSurvey : public forms::DefaultForm<frmPasteSurvey> {
    Q_OBJECT

public:
    /// Opens the form on the target and returns when it is unloaded; blnExistingSurvey has been set.
    static void copyInto(const SurveyContext& target);

    ~frmPasteSurvey() override;

    /// The respondent of the survey composed from frmSelectSurvey when the copy is for it.
    QString strSelectedRespondent;

    void toFillCustomerList() { lists.toFillCustomerList(); }
    void toFillRespondentList() { lists.toFillRespondentList(); }
    /// Leaves out the date of the survey composed from frmSelectSurvey: a survey is not copied onto itself.
    void toFillSurveyDateList();
    void toRefreshGrid();
    /// The respondentid of the source customer's respondent of that name.
    QString toGetRespondentID(const QString& name) const;
    /// The respondentid of the source.
    QString toGetRespondent() const { return toGetRespondentID(lists.picked().respondent); }
    /// The respondentid of the target customer's respondent of that name.
    QString toGetCopiedRespondent(const QString& name) const;
    void toSaveSurveyID();
    void toDeleteCopyDeteails();
    /// Records the copy to be made in copydetails. False after a failure, and if source or target are not in
    /// the database; both are shown.
    bool toSaveTheCopyDetails();
    /// Makes the copy recorded in copydetails. Questions copied before a failure are kept.
    void toPasteCopyDetails();

private:
    friend class DefaultForm<frmPasteSurvey>;
    frmPasteSurvey();
    void onLoad() override;
    void onQueryUnload(bool& cancel) override;
    QuestionGrid grid() const;
    SurveyContext target() const;
    void cmbCustomer_Click();
    void lstRespondent_Click();
    void lstSurvetDates_Click();
    void cmdPaste();
    void showInNewSurvey();

    std::unique_ptr<Ui::frmPasteSurvey> ui;
    inline static SurveyContext targetOfNext; ///< of the form that is loaded next
    SurveyLists lists;
};
