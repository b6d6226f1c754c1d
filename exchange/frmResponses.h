// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/responselist.h"
#include "exchange/files/responsesettings.h"
#include "platform/forms/form.h"

#include <memory>

class ResponsesModel;

namespace Ui {
class frmResponses;
}

/// Lists who was asked, who has answered and who is late; reminds those who have not answered.
class frmResponses : public forms::DefaultForm<frmResponses> {
    Q_OBJECT

public:
    ~frmResponses() override;

private:
    friend class DefaultForm<frmResponses>;
    frmResponses();
    void onLoad() override;
    /// Shows what has been mailed, answered or deleted meanwhile; the ticks stay.
    void onActivate() override;
    bool onKeyDown(int key) override;

    void setUpList();
    void setUpFilters();
    void connectEvents();
    /// These return false after a failure, which is shown; what is shown, and its ticks, stay then.
    bool fillCustomers();
    bool fillRows();
    /// Sets the filters to those of the rows that are shown.
    void chooseListed();
    void showRows();
    /// The ticked rows; empty, after a message, without any.
    std::vector<Response> ticked();
    void cmdHandedOver_Click();
    void cmdDue_Click();
    void cmdRemind_Click();

    std::unique_ptr<Ui::frmResponses> ui;
    ResponsesModel* model;
    std::vector<Response> found; ///< of all states
    ResponseFilter listed;       ///< by which they were found
    ResponseSettings settings;
};
