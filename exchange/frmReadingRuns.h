// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/readinglist.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmReadingRuns;
}

/// Lists the readings of survey files, with what each did to the answers, and undoes them.
class frmReadingRuns : public forms::DefaultForm<frmReadingRuns> {
    Q_OBJECT

public:
    ~frmReadingRuns() override;

private:
    friend class DefaultForm<frmReadingRuns>;
    frmReadingRuns();
    void onLoad() override;
    void onActivate() override;

    void fillRuns();
    void fillFiles();
    void cmdUndo_Click();
    void cmdThin_Click();
    /// The chosen reading; null for none.
    const RecordedReading* chosen() const;
    bool askUndo(const RecordedReading& reading);
    void undo(int readingid);

    std::unique_ptr<Ui::frmReadingRuns> ui;
    std::vector<RecordedReading> readings; // in the order of the list
};
