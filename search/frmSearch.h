// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "search/statements/keywords.h"

#include <QString>

#include <memory>

namespace Ui {
class frmSearch;
}

/// Finds keywords in the questions and answers of all surveys and in all improvement actions, and goes to the
/// form that shows a hit.
class frmSearch : public forms::DefaultForm<frmSearch> {
    Q_OBJECT

public:
    ~frmSearch() override;

    void toAddFiledsForSearch();
    /// Fills the work table with what the keywords find.
    void toSplitKeywords();
    void toFillListView();
    /// Opens the form that shows a hit.
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
