// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmExportAnswers;
}

/// Writes all answers of the chosen customers in a period to a table, one row an answer.
class frmExportAnswers : public forms::DefaultForm<frmExportAnswers> {
    Q_OBJECT

public:
    ~frmExportAnswers() override;

private:
    friend class DefaultForm<frmExportAnswers>;
    frmExportAnswers();
    void onLoad() override;
    bool onKeyDown(int key) override;

    void cmdAll_Click();
    void cmdExport_Click();
    /// Returns the number of answers written; -1 when the user has cancelled.
    int exportTo(const QString& path);
    std::vector<int> chosenCustomers() const;

    std::unique_ptr<Ui::frmExportAnswers> ui;
};
