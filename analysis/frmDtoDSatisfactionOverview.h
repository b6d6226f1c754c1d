// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmDtoDSatisfactionOverview;
}

/// Prints descriptive answers, scores and planned actions of one customer between two dates, both included.
class frmDtoDSatisfactionOverview : public forms::DefaultForm<frmDtoDSatisfactionOverview> {
    Q_OBJECT

public:
    ~frmDtoDSatisfactionOverview() override;

    void toFillCustomerList();
    /// Rebuilds the table reporttable for the chosen customer and dates and opens the report.
    void toFillReporttable();

private:
    friend class DefaultForm<frmDtoDSatisfactionOverview>;
    frmDtoDSatisfactionOverview();
    void onLoad() override;

    void cmdPrint();
    void addDescriptive();
    void addObjective();
    void addActions();
    /// The where clause for the chosen customer and date range.
    QString within(const QString& field) const;

    std::unique_ptr<Ui::frmDtoDSatisfactionOverview> ui;
};
