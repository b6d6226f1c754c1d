// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "improvement/plannedaction.h"
#include "platform/forms/form.h"

#include <QDate>

#include <memory>
#include <optional>
#include <vector>

struct ActionDraft;

namespace Ui {
class frmImprovementPlan;
}

/// Edits the dated actions agreed with customers. Customer and plan date identify an action: saving again on
/// that date overwrites it. The pop-up menu of the main window changes the status of the chosen actions or
/// deletes them.
class frmImprovementPlan : public forms::DefaultForm<frmImprovementPlan> {
    Q_OBJECT

public:
    ~frmImprovementPlan() override;

    /// The status set by toupdateStatus: 1 Complete, 2 Not Complete.
    int intStatus = 0;

    /// Lists all customers, none chosen. On an error, which is shown, returns false.
    bool toFilllstCustomername();
    /// Stores the entered action for every chosen customer, in one transaction.
    void toSaveActionDtls();
    /// The actionid of a customer's action on the plan date; empty if there is none. Throws Failure.
    QString toGetActionID(const QString& customerName) const;
    /// Lists the actions of currentCustomer().
    void toFillListView();
    /// Loads the action of currentCustomer() on the plan date into the boxes.
    void torefreshOnCustomerNameClick();
    /// Fills the boxes for a new action of a customer, on the first day from today that has none. Asks before
    /// it replaces a description that has not been saved.
    void toStartAction(const ActionDraft& draft);
    /// Sets the status of every chosen customer's actions on the dates of the chosen rows.
    void toupdateStatus();
    /// Deletes every chosen customer's actions on the dates of the chosen rows.
    void toDeleteActionForSelectedCustomer();

private:
    friend class DefaultForm<frmImprovementPlan>;
    frmImprovementPlan();
    void onLoad() override;
    void onActivate() override;
    void connectEvents();

    void lstCusName_Click();
    void dtdate_Change();
    void lsvDtls_Click();
    void lsvDtls_RightClick(const QPoint& globalPosition);
    void cmdSave_Click();
    /// Asks about what someone else has changed in the action that is shown; false to go on editing.
    bool settleChanges();
    void saveActionOf(const QString& customerName);
    PlannedAction entered() const;
    /// Remembers the stored action as the one that was read. Throws Failure.
    void noteAsRead(int custid, const QDate& date);
    int customerRow(const QString& name) const; ///< -1: not listed
    void showNoAction();
    void showStatusOf(bool complete);
    /// The customer under the list's cursor if chosen, or if none is chosen; else the first chosen one.
    QString currentCustomer() const;
    QStringList chosenCustomers() const;
    /// The plan dates of the chosen rows.
    std::vector<QDate> chosenDates() const;

    std::unique_ptr<Ui::frmImprovementPlan> ui;
    std::optional<ReadAction> asRead; ///< nothing: the boxes are of no customer
    Settlement settlement;            ///< of the current save
};
