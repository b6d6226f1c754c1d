// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/groupchart.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmCompareGroups;
}

/// Compares groups of customers and respondents: the Satisfaction Index of each as a line over periods, or
/// the mean weightage and score of each parameter and group as points. A change of the choice hides the
/// chart, since it no longer matches.
class frmCompareGroups : public forms::DefaultForm<frmCompareGroups> {
    Q_OBJECT

public:
    ~frmCompareGroups() override;

private:
    friend class DefaultForm<frmCompareGroups>;
    frmCompareGroups();
    void onLoad() override;
    void onActivate() override;
    bool onKeyDown(int key) override;

    void connectEvents();
    void setUpPeriods();
    void cmdView_Click();
    void cmdPrint();
    void cboView_Click();
    void fillKinds();
    /// Lists the groups of the chosen kind; after an error, which is shown, the former kind stays.
    void fillGroups();
    void fillParameters();
    bool isMatrix() const;
    GroupChoice choice() const;
    void view();
    void setResultVisible(bool isVisible);
    void markGroups(bool areDrawn);

    std::unique_ptr<Ui::frmCompareGroups> ui;
    QString listedKind;                              ///< of the groups in the list
    std::map<int, QString> members;                  ///< the groups of the respondents, as read for the list
    std::vector<std::pair<QString, int>> parameters; ///< names and paramids, as listed
    GroupChart shown;
};
