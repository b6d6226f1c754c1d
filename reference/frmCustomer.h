// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "reference/grideditor.h"

#include <memory>
#include <optional>

namespace Ui {
class frmCustomer;
}

/// Keeps the customers and, for the customer under the cursor, the respondents. Typing changes the grids
/// only; the add and save commands write a whole grid in one transaction. A row with an empty key cell is not
/// stored yet.
class frmCustomer : public forms::DefaultForm<frmCustomer> {
    Q_OBJECT

public:
    ~frmCustomer() override;
    QLineEdit* txtCustomerDtls() const;

    void toSetWidthForCusGrid();
    void toSetWidthForResGrid();
    void toRefreshCustomerDetails();
    void toSaveCustomerDtls();
    void toDeleteCustomer();
    void toRefreshRespondentDetails();
    void toSaveRespondentDetails();
    void toDeleteRespondentDetails();
    void SetEditTextBox(int ColPos, int RowPos);
    void SetEditRespondentTextBox(int ColPos, int RowPos);

private:
    friend class DefaultForm<frmCustomer>;
    frmCustomer();
    void onLoad() override;
    void connectEvents();

    void cmdAddCustomer();
    void toGoToCustomer(int row);
    void cmdSaveCustomer();
    void cmdDeleteCustomer();
    void cmdAddRespondent();
    void cmdSaveRespondent();
    void cmdDeleteRespondent();
    void grdCustomerDtls_Click();
    void toShowLastRespondent();
    void toShowNoRespondents();
    void toMoveWithCustomer(GridEditor::RowMove move);
    /// Whether every respondent has a designation; tells of the first that has none.
    bool toCheckDesignations(bool resetPointer);
    // They return the key of the stored row; empty when the row was passed over.
    QString toSaveCustomerRow(int row);
    QString toSaveRespondentRow(int row);
    QString toMakeDuplicateTest(int row) const;
    int newRespondents() const; ///< rows that are not stored
    QString currentCustID() const;

    std::unique_ptr<Ui::frmCustomer> ui;
    GridEditor* customers = nullptr;
    GridEditor* respondents = nullptr;
    /// The custid whose respondents the lower grid shows, empty for a customer that is not stored; nothing
    /// when they could not be read.
    std::optional<QString> respondentsOf;
};
