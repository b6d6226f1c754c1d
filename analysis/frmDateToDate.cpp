// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmDateToDate.h"

#include "analysis/choices.h"
#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "ui_frmDateToDate.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 8;

/// Begins the row of an answer.
void addAnswer(ado::Recordset& report, ado::Recordset& answer, bool isScore) {
    report.AddNew();
    report["responname"] = answer["respondentname"].Value();
    report["question"] = answer["question"].Value();
    report["Parameter"] = answer["parametername"].Value();
    if (!answer["weightage"].IsNull())
        report["wt"] = answer["weightage"].Value();
    report["Type"] = isScore;
}

} // namespace

frmDateToDate::frmDateToDate() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmDateToDate>()) {
    ui->setupUi(this);
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmDateToDate::cmbCustomer_Click);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &frmDateToDate::cmdPrint);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmDateToDate::~frmDateToDate() = default;

void frmDateToDate::onLoad() {
    toCenterForm(*this);
    toFillCustomerList();
    if (ui->cmbCustomer->ListCount() > 0)
        ui->cmbCustomer->setListIndex(0);
    if (ui->lstSurveyDate->ListCount() > 0)
        ui->lstSurveyDate->setListIndex(0);
}

void frmDateToDate::cmbCustomer_Click() {
    if (ui->cmbCustomer->ListIndex() < 0)
        return;
    toFillSurveyDates();
    if (ui->lstSurveyDate->ListCount() > 0 && ui->lstSurveyDate->SelCount() == 0)
        ui->lstSurveyDate->setListIndex(0);
}

void frmDateToDate::cmdPrint() {
    generateReport(*this, *ui->cmbCustomer, [this] { toFillReporttable(); });
}

void frmDateToDate::toFillCustomerList() {
    guarded([this] { listCustomers(*ui->cmbCustomer); });
}

void frmDateToDate::toFillSurveyDates() {
    guarded([this] {
        const int custid = findCustomer(ui->cmbCustomer->Text());
        fillList(*ui->lstSurveyDate,
                 u"select distinct(sdate) from survey where custid="_s + QString::number(custid) +
                     u" order by sdate asc",
                 "sdate");
    });
}

void frmDateToDate::toFillReporttable() {
    guarded([this] {
        const QString where = u" where custname='"_s + ui->cmbCustomer->Text() + u"' and surveydate =#" +
                              toSqlDate(toDate(ui->lstSurveyDate->Text())) + u"# and weightage <>0";
        fillWorkTable([&] {
            cnnMain->Execute(u"delete * from report"_s);
            addScores(where);
            addReplies(where);
        });
        startReport(Shell::current()->report(), u"surveyresponse.rpt"_s, u"CompanyName"_s, u"Survey Report"_s,
                    {},
                    {u"Customer='"_s + ui->cmbCustomer->Text() + u"'",
                     u"SurveyDate='"_s + ui->lstSurveyDate->Text() + u"'"});
    });
}

void frmDateToDate::addScores(const QString& where) {
    ado::Recordset answers(u"select * from objquery"_s + where +
                               u" and score <>0 order by parametername, "
                               "custid, respondentid, surveydate, feedbackobjid",
                           *cnnMain);
    ado::Recordset report(u"select * from report"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (; !answers.Eof(); answers.MoveNext()) {
        addAnswer(report, answers, true);
        if (!answers["score"].IsNull())
            report["sc"] = answers["score"].Value();
        report.Update();
    }
}

void frmDateToDate::addReplies(const QString& where) {
    ado::Recordset answers(u"select * from descquery"_s + where +
                               u" order by parametername, custid, respondentid, surveydate, feedbackdescid",
                           *cnnMain);
    ado::Recordset report(u"select * from report"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (; !answers.Eof(); answers.MoveNext()) {
        addAnswer(report, answers, false);
        report["Reply"] = answers["Description"].Value();
        report.Update();
    }
}
