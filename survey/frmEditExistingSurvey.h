// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/surveyeditor.h"
#include "survey/surveylists.h"

#include <memory>

namespace Ui {
class frmEditExistingSurvey;
}

/// Changes the questionnaire that is picked from three lists, and deletes survey dates. It cannot begin a new
/// date.
class frmEditExistingSurvey : public forms::DefaultForm<frmEditExistingSurvey, SurveyEditor> {
    Q_OBJECT

public:
    ~frmEditExistingSurvey() override;

    void toFillCustomerList() { lists.toFillCustomerList(); }
    void toFillRespondentList() { lists.toFillRespondentList(); }
    void toFillSurveyDateList() { lists.toFillSurveyDateList(); }
    /// Deletes the picked respondent's questionnaire of the picked date, with its answers, the register rows
    /// of its survey files and its report rows. The survey goes too if no one else has a questionnaire on
    /// that date: the number of its questions shows that.
    void toDeleteSurvey();

private:
    friend class DefaultForm<frmEditExistingSurvey, SurveyEditor>;
    frmEditExistingSurvey();
    void onLoad() override;
    SurveyContext context() const override { return lists.picked(); }
    int helpContext() const override;
    bool hasSurveyDate() const override { return !context().date.isEmpty(); }
    HistoryOrder historyOrder() const override { return HistoryOrder::NewestFirst; }
    QString reportTitle() const override;
    bool mayAdd() override;
    std::vector<ChosenQuestion> rewrite() override;
    void importSurvey() override;
    void cmbCustomer_Click();
    void lstRespondent_Click();
    void lstSurvetDates_Click();
    void lstSurvetDates_KeyDown(int key);
    void toDeleteEmptySurvey();
    void deleteQuestionnaire(const SurveyKey& survey, const QString& surveyid, bool isLastOfDate);

    std::unique_ptr<Ui::frmEditExistingSurvey> ui;
    SurveyLists lists;
};
