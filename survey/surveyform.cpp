// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/surveyform.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "platform/forms/msgbox.h"
#include "survey/surveylists.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

void SurveyForm::startExport(bool mailed) {
    Busy busy(*this);
    blnMail = mailed;
    if (hasQuestions()) {
        busy.say(u"Record Exporting......"_s);
        toWriteToExcelSheet();
    }
}

void SurveyForm::toWriteToExcelSheet() {
    const Busy busy(*this);
    const ExportResult result =
        exportSurvey({.survey = context(), .history = historyOrder(), .userNamesFiles = blnSetting});
    strGenerateXLSFile = result.fileName;
    strXLSFileName = result.generatedName.value_or(strXLSFileName);
    const bool isMailed = std::exchange(blnMail, false);
    if (result.isFinished && isMailed)
        sendmail();
    else if (result.isFinished)
        offerToView(strGenerateXLSFile);
}

void SurveyForm::toGetTheLastScoreAndWeightage() {
    const Busy busy(*this);
    guarded([this] { ::toGetTheLastScoreAndWeightage(findSurveyKey(context()), historyOrder()); });
}

QString SurveyForm::toGetRespondentID(const QString& respondent) const {
    return respondentIdText(respondent, context().customer);
}

void SurveyForm::sendmail() {
    const SurveyContext survey = context();
    mailer.sendmail({survey.customer, survey.respondent, strGenerateXLSFile, survey.date});
}

QString SurveyForm::toGetStandardMessage(const QString& customer) const {
    return mailer.toGetStandardMessage(customer);
}

void SurveyForm::cmdPrint() {
    const SurveyContext survey = context();
    Busy busy(*this);
    if (!hasQuestions()) {
        forms::msgBox(u"No records selected to Print for Date - "_s + survey.date +
                          u".....Kindly Add Question(s) and proceed",
                      style::information + style::rightAligned, titleWithVersion);
        return;
    }
    busy.say(u"Generating Report...."_s);
    toGetTheLastScoreAndWeightage();
    guarded([&] {
        startReport(crptPrint, u"rptrating.rpt"_s, u"CompanyName"_s, reportTitle(),
                    u"{reportlinktable.respondentname} = ['"_s + survey.respondent +
                        u"'] and {reportlinktable.custname}=['" + survey.customer +
                        u"'] and {reportlinktable.sdate}=" + toFormulaDate(survey.date));
    });
}
