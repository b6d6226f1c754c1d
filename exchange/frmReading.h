// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"

#include <map>
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

    /// Reads the chosen files, as readChosenFiles.
    void toreadFromXlsFile();

private:
    friend class DefaultForm<frmReading>;
    frmReading();
    void onLoad() override;

    void cmdBrowse_Click();
    void lstXlsFiles_Click();
    void cmdImport_Click();
    void cmdCheck_Click();
    /// Adds dropped files to the list and chooses them.
    void addFiles(const QStringList& paths);
    void blankLabels();
    void noteReasons(const std::map<QString, QString>& reasons);

    std::unique_ptr<Ui::frmReading> ui;
};
