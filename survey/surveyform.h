// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/mailer.h"
#include "exchange/surveyexport.h"
#include "platform/crystal/crystalreport.h"
#include "platform/forms/form.h"
#include "survey/questionnaires/surveykey.h"

/// A form on the survey of one respondent: exports it, mails it and prints it.
class SurveyForm : public forms::Form {
    Q_OBJECT

public:
    bool blnMail = false;       ///< the export is followed by mail; false again after it
    bool blnSetting = false;    ///< the user names the survey files
    QString strGenerateXLSFile; ///< of the last export; empty when it got none
    QString strXLSFileName;     ///< the last name that the program made itself

    /// Exports the current survey, and mails it if blnMail is set.
    void toWriteToExcelSheet();
    /// Fills reportlinktable with the current survey and the marks given last.
    void toGetTheLastScoreAndWeightage();
    /// The id of a respondent of the current customer; empty when there is none.
    virtual QString toGetRespondentID(const QString& respondent) const;
    /// Hands the file exported last to the mail client.
    void sendmail();
    /// The customer's standard message; empty when there is none.
    QString toGetStandardMessage(const QString& customer) const;

protected:
    using Form::Form;

    virtual SurveyContext context() const = 0;
    virtual bool hasQuestions() const = 0;
    virtual HistoryOrder historyOrder() const { return HistoryOrder::OldestFirst; }
    /// Of the window that shows the survey report.
    virtual QString reportTitle() const { return QStringLiteral("Gaugewell v2.1 Survey Report"); }

    void startExport(bool mailed);
    void cmdPrint();

private:
    Mailer mailer;
    crystal::CrystalReport crptPrint;
};
