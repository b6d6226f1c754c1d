// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"

#include <memory>

class CheckedFilesModel;
class QModelIndex;
class QSortFilterProxyModel;

namespace Ui {
class frmCheckFiles;
}

/// Shows what a reading would do with survey files, and reads those that are ticked. Checking writes nothing.
class frmCheckFiles : public forms::DefaultForm<frmCheckFiles> {
    Q_OBJECT

public:
    ~frmCheckFiles() override;

    forms::CommonDialog cmnDlg;

    /// Checks files and adds them to the list; those in it already are checked anew. After a cancel the list
    /// has those checked so far.
    void checkFiles(const QStringList& paths);

private:
    friend class DefaultForm<frmCheckFiles>;
    frmCheckFiles();
    void onLoad() override;
    bool onKeyDown(int key) override;

    void cmdAddFiles_Click();
    void cmdAddFolder_Click();
    void cmdRemove_Click();
    void cmdImportTicked_Click();
    void setUpList();
    void compareAnswers(const QModelIndex& shown);
    void showSummary();
    std::vector<int> chosenRows() const; ///< of the model, in ascending order
    void chooseRow(int shownRow);

    std::unique_ptr<Ui::frmCheckFiles> ui;
    CheckedFilesModel* files;
    QSortFilterProxyModel* sorted;
    QString notice; ///< on the last check, behind the summary
};
