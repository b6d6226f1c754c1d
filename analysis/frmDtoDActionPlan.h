// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmDtoDActionPlan;
}

/// Prints the actions of one customer that were planned between two dates, both included.
class frmDtoDActionPlan : public forms::DefaultForm<frmDtoDActionPlan> {
    Q_OBJECT

public:
    ~frmDtoDActionPlan() override;

    void toFillCustomerList();

private:
    friend class DefaultForm<frmDtoDActionPlan>;
    frmDtoDActionPlan();
    void onLoad() override;
    void cmdPrint();

    std::unique_ptr<Ui::frmDtoDActionPlan> ui;
};
