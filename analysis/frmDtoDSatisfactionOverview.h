// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmDtoDSatisfactionOverview;
}

/// Prints answers in words, scores and planned actions of one customer between two dates, both included.
class frmDtoDSatisfactionOverview : public forms::DefaultForm<frmDtoDSatisfactionOverview> {
    Q_OBJECT

public:
    ~frmDtoDSatisfactionOverview() override;

    void toFillCustomerList();
    /// Rebuilds the table reporttable from the choice and runs the report on it.
    void toFillReporttable();

private:
    friend class DefaultForm<frmDtoDSatisfactionOverview>;
    frmDtoDSatisfactionOverview();
    void onLoad() override;

    void cmdPrint();
    void addDescriptive();
    void addObjective();
    void addActions();
    /// The chosen range as a condition on a date field.
    QString within(const QString& field) const;

    std::unique_ptr<Ui::frmDtoDSatisfactionOverview> ui;
};
