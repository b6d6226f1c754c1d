// SPDX-License-Identifier: GPL-3.0-or-later
// What a questionnaire editor gives away: survey files, mail and the survey report.
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "platform/forms/msgbox.h"
#include "survey/questiongrid.h"
#include "survey/surveyeditor.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

void SurveyEditor::toExport(bool mailed) {
    setMousePointer(forms::Hourglass);
    blnMail = mailed;
    if (hasQuestions()) {
        toShowStatus(u"Record Exporting......"_s);
        toWriteToExcelSheet();
    }
    toShowStatus({});
    setMousePointer(forms::DefaultPointer);
}

void SurveyEditor::toWriteToExcelSheet() {
    SurveyExport(*this, *this, context(), historyRoad(), [this] { sendmail(); }).run();
}

void SurveyEditor::toGetTheLastScoreAndWeightage() {
    setMousePointer(forms::Hourglass);
    guarded({.form = this}, [this] {
        toReconnect();
        ::toGetTheLastScoreAndWeightage(findSurveyKey(context()), historyRoad());
        setMousePointer(forms::DefaultPointer);
    });
}

QString SurveyEditor::toGetRespondentID(const QString& respondent) const {
    return respondentIdText(respondent, context().customer);
}

void SurveyEditor::sendmail() {
    const SurveyContext survey = context();
    mailer.sendmail({survey.customer, survey.respondent, strGenerateXLSFile});
}

QString SurveyEditor::toGetStandardMessage(const QString& customer) const {
    return mailer.toGetStandardMessage(customer);
}

void SurveyEditor::cmdPrint() {
    const SurveyContext survey = context();
    setMousePointer(forms::Hourglass);
    if (!hasQuestions()) {
        forms::msgBox(u"No records selected to Print for Date - "_s + survey.date +
                          u".....Kindly Add Question(s) and proceed",
                      style::information + style::rightAligned, u"Gaugewell v2.1"_s);
        setMousePointer(forms::DefaultPointer);
        return;
    }
    toShowStatus(u"Generating Report...."_s);
    toGetTheLastScoreAndWeightage();
    guarded({.form = this}, [&] {
        toReconnect();
        toStartReport(crptPrint, u"rptrating.rpt"_s, u"CompanyName"_s, reportTitle(),
                      u"{reportlinktable.respondentname} = ['"_s + survey.respondent +
                          u"'] and {reportlinktable.custname}=['" + survey.customer +
                          u"'] and {reportlinktable.sdate}=" + toFormulaDate(survey.date));
        toShowStatus({});
        setMousePointer(forms::DefaultPointer);
    });
}
