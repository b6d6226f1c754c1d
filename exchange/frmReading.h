// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmReading;
}

/// Reads any number of filled survey files that the user picks, wherever they are.
class frmReading : public forms::DefaultForm<frmReading> {
    Q_OBJECT

public:
    ~frmReading() override;

    forms::CommonDialog cmnDlg;

    /// Reads the chosen files. A file that cannot be read is reported at once and the next ones are read,
    /// unless the store failed. Of several files, those not read to their end are listed afterwards, with
    /// remarks on the files that were read.
    void toreadFromXlsFile();

private:
    friend class DefaultForm<frmReading>;
    frmReading();
    void onLoad() override;

    void cmdBrowse_Click();
    void lstXlsFiles_Click();
    void cmdImport_Click();
    void blankLabels();

    std::unique_ptr<Ui::frmReading> ui;
};
