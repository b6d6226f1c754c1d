// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmDtoDActionPlan.h"

#include "analysis/choices.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "platform/ado/value.h"
#include "platform/forms/clock.h"
#include "ui_frmDtoDActionPlan.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 10;

} // namespace

frmDtoDActionPlan::frmDtoDActionPlan()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmDtoDActionPlan>()) {
    ui->setupUi(this);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &frmDtoDActionPlan::cmdPrint);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmDtoDActionPlan::~frmDtoDActionPlan() = default;

void frmDtoDActionPlan::onLoad() {
    toCenterForm(*this);
    toFillCustomerList();
    if (ui->cmbCustomer->ListCount() > 0)
        ui->cmbCustomer->setListIndex(0);
    ui->dtFrom->setValue(forms::today());
    ui->dtTo->setValue(forms::today());
}

void frmDtoDActionPlan::toFillCustomerList() {
    guarded([this] { listCustomers(*ui->cmbCustomer); });
}

void frmDtoDActionPlan::cmdPrint() {
    if (!forms::DTPicker::requireDates({ui->dtFrom, ui->dtTo}))
        return;
    generateReport(*this, *ui->cmbCustomer, [this] {
        const QString selection = u"{action.custname}='"_s + ui->cmbCustomer->Text() +
                                  u"' and {action.date}>=" + toFormulaDate(ado::toText(ui->dtFrom->Value())) +
                                  u"and {action.date}<=" + toFormulaDate(ado::toText(ui->dtTo->Value()));
        startReport(Shell::current()->report(), u"actionplan.rpt"_s, u"CompanyName"_s,
                    u"Analysis on Improvement Plan"_s, selection,
                    {u"Customer='"_s + ui->cmbCustomer->Text() + u"'",
                     u"Period='"_s + ui->dtFrom->text() + u" to " + ui->dtTo->text() + u"'"});
    });
}
