// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "reference/cataloguetable.h"

#include <memory>

namespace Ui {
class frmCustomer;
}

/// Edits the customers and the respondents of the current customer. Typing changes the grids only; the add
/// and save commands write a whole grid in one transaction.
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
    void cmdSaveCustomer();
    void cmdDeleteCustomer();
    void cmdAddRespondent();
    void cmdSaveRespondent();
    void cmdDeleteRespondent();
    void grdCustomerDtls_Click();
    void showLastRespondent();
    bool checkDesignations();
    QString customerSelect(int row) const;
    void writeCustomer(int row, ado::Recordset& customer) const;
    QString duplicateTest(int row) const;
    QString respondentSelect(int row) const;
    int custidByName() const;
    void writeRespondent(int row, ado::Recordset& respondent) const;

    std::unique_ptr<Ui::frmCustomer> ui;
    CatalogueTable* customers = nullptr;
    CatalogueTable* respondents = nullptr;
    int testedCustid = 0; ///< for the duplicate test of texts with an apostrophe, during a save
};
