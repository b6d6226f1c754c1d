// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmDateToDate;
}

/// Prints all rated answers of one customer on one survey date.
class frmDateToDate : public forms::DefaultForm<frmDateToDate> {
    Q_OBJECT

public:
    ~frmDateToDate() override;

    void toFillCustomerList();
    /// The dates of the chosen customer's surveys, each once.
    void toFillSurveyDates();
    /// Rebuilds the table report for the chosen customer and date and opens the report.
    void toFillReporttable();

private:
    friend class DefaultForm<frmDateToDate>;
    frmDateToDate();
    void onLoad() override;

    void cmbCustomer_Click();
    void cmdPrint();
    void addScores(const QString& where);
    void addReplies(const QString& where);

    std::unique_ptr<Ui::frmDateToDate> ui;
};
