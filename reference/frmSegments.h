// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "reference/segmentedits.h"

#include <memory>

class SegmentModel;

namespace Ui {
class frmSegments;
}

/// Puts customers and respondents into groups of a kind, such as regions. Changes of several kinds are saved
/// together.
class frmSegments : public forms::DefaultForm<frmSegments> {
    Q_OBJECT

public:
    ~frmSegments() override;

private:
    friend class DefaultForm<frmSegments>;
    frmSegments();
    void onLoad() override;
    void onActivate() override;
    void onQueryUnload(bool& cancel) override;
    bool onKeyDown(int key) override;

    void setUpList();
    void cmdSet_Click();
    void cmdTakeOut_Click();
    void cmdRename_Click();
    void cmdSave_Click();
    /// Reads what is stored of a kind; changes that are not saved stay. After an error, which is shown, the
    /// former kind stays.
    bool showKind(const QString& wanted);
    /// Shows the kind in its box; false when it cannot be read.
    bool takeKind();
    void fillKinds(const QStringList& used, const QString& shown);
    void showChanges();
    std::vector<int> chosenRows() const; ///< of the rows shown
    QString typedGroup() const;

    std::unique_ptr<Ui::frmSegments> ui;
    SegmentEdits edits;
    SegmentModel* rows;
};
