// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmDtoDSatisfactionOverview.h"

#include "analysis/choices.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "platform/forms/clock.h"
#include "ui_frmDtoDSatisfactionOverview.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 9;

/// Starts a row for an answer; the caller sets Type and updates it.
void addAnswer(ado::Recordset& row, ado::Recordset& answer, const QString& tablename) {
    row.AddNew();
    row["responname"] = answer["respondentname"].Value();
    row["question"] = answer["question"].Value();
    if (answer["weightage"].Value().toInt() != 0)
        row["wt"] = answer["weightage"].Value();
    row["sdate"] = answer["surveydate"].Value();
    row["Parameter"] = answer["parametername"].Value();
    row["tablename"] = tablename;
}

} // namespace

frmDtoDSatisfactionOverview::frmDtoDSatisfactionOverview()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmDtoDSatisfactionOverview>()) {
    ui->setupUi(this);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &frmDtoDSatisfactionOverview::cmdPrint);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmDtoDSatisfactionOverview::~frmDtoDSatisfactionOverview() = default;

void frmDtoDSatisfactionOverview::onLoad() {
    toCenterForm(*this);
    toFillCustomerList();
    if (ui->cmbCustomer->ListCount() > 0)
        ui->cmbCustomer->setListIndex(0);
    ui->dtFrom->setValue(forms::today());
    ui->dtTo->setValue(forms::today());
}

void frmDtoDSatisfactionOverview::cmdPrint() {
    if (!forms::DTPicker::requireDates({ui->dtFrom, ui->dtTo}))
        return;
    generateReport(*this, *ui->cmbCustomer, [this] { toFillReporttable(); });
}

void frmDtoDSatisfactionOverview::toFillCustomerList() {
    guarded([this] { listCustomers(*ui->cmbCustomer); });
}

void frmDtoDSatisfactionOverview::toFillReporttable() {
    guarded([this] {
        fillWorkTable([this] {
            cnnMain->Execute(u"delete * from reporttable"_s);
            addDescriptive();
            addObjective();
            addActions();
        });
        startReport(Shell::current()->report(), u"satisfaction.rpt"_s, u"CompanyName"_s,
                    u"Satisfaction Overview"_s, {},
                    {u"Customer='"_s + ui->cmbCustomer->Text() + u"'",
                     u"Period='"_s + ui->dtFrom->text() + u" to " + ui->dtTo->text() + u"'"});
    });
}

QString frmDtoDSatisfactionOverview::within(const QString& field) const {
    return u" where custname='"_s + ui->cmbCustomer->Text() + u"' and " + field + u">=#" +
           toSqlDate(ui->dtFrom->Value()) + u"# and " + field + u"<=#" + toSqlDate(ui->dtTo->Value()) + u'#';
}

void frmDtoDSatisfactionOverview::addDescriptive() {
    ado::Recordset answers(u"select * from descquery"_s + within(u"surveydate"_s) +
                               u" order by parametername, custid, respondentid, surveydate, feedbackdescid",
                           *cnnMain);
    ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (; !answers.Eof(); answers.MoveNext()) {
        addAnswer(rows, answers, u"Survey Descriptive"_s);
        rows["Type"] = answers["Description"].Value();
        rows.Update();
    }
}

void frmDtoDSatisfactionOverview::addObjective() {
    ado::Recordset answers(u"select * from objquery"_s + within(u"surveydate"_s) +
                               u" order by parametername, custid, respondentid, surveydate, feedbackobjid",
                           *cnnMain);
    ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (; !answers.Eof(); answers.MoveNext()) {
        addAnswer(rows, answers, u"Survey Objective"_s);
        if (answers["score"].Text() != u"0")
            rows["Type"] = answers["score"].Text();
        rows.Update();
    }
}

void frmDtoDSatisfactionOverview::addActions() {
    ado::Recordset actions(u"select * from action"_s + within(u"date"_s) + u" order by date, actionid",
                           *cnnMain);
    ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (; !actions.Eof(); actions.MoveNext()) {
        rows.AddNew();
        rows["question"] = actions["Action"].Value();
        rows["Type"] = actions["Status"].Value().toBool() ? u"Completed"_s : u"Not Completed"_s;
        rows["sdate"] = actions["Date"].Value();
        rows["tablename"] = u"Planned Actions"_s;
        rows.Update();
    }
}
