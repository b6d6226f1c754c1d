// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "search/statements/keywords.h"

#include <QString>

#include <memory>

namespace Ui {
class frmSearch;
}

/// Searches the questions and answers of all surveys and all improvement actions for keywords, and opens the
/// form that shows a hit.
class frmSearch : public forms::DefaultForm<frmSearch> {
    Q_OBJECT

public:
    ~frmSearch() override;

    void toAddFiledsForSearch();
    /// Fills the work table with the hits of the entered keywords.
    void toSplitKeywords();
    void toFillListView();
    /// Opens the form that shows a hit of the work table. Errors are shown.
    void toOpenSearchHit(const QString& id, const QString& tablename);

private:
    friend class DefaultForm<frmSearch>;
    frmSearch();
    void onLoad() override;
    void onQueryUnload(bool& cancel) override;
    void connectEvents();

    void cmdOK_Click();
    void txtKeyword_Change();
    void jump();
    bool hasKeywords() const;

    std::unique_ptr<Ui::frmSearch> ui;
};
