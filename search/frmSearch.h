// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "search/keywords.h"

#include <QString>

#include <memory>
#include <optional>

namespace Ui {
class frmSearch;
}

/// What a form that was opened from the search shows: its customer and a date dd/mm/yyyy.
struct SearchHit {
    QString customer;
    QString date;
};

/// Finds keywords in the questions and answers of all surveys and in all improvement actions, and goes to the
/// form that shows a hit. That form looks into this one's list by the number of the row, so this one stays
/// open behind it.
class frmSearch : public forms::DefaultForm<frmSearch> {
    Q_OBJECT

public:
    ~frmSearch() override;

    /// The row of the list that intSearchIndex names; nothing when the form is not open or has no such row.
    static std::optional<SearchHit> chosenHit();

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
    void toJump();
    bool hasKeywords() const;

    std::unique_ptr<Ui::frmSearch> ui;
};
