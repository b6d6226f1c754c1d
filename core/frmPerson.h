// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/person.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmPerson;
}

/// Shows everything that is stored about one respondent, saves it, and erases it.
class frmPerson : public forms::DefaultForm<frmPerson> {
    Q_OBJECT

public:
    ~frmPerson() override;

private:
    friend class DefaultForm<frmPerson>;
    frmPerson();
    void onLoad() override;
    /// Shows what has been stored meanwhile.
    void onActivate() override;

    void fillCustomers();
    void fillRespondents();
    void fillParts();
    void showParts();
    void cmdPage_Click();
    void cmdTable_Click();
    void cmdErase_Click();

    std::unique_ptr<Ui::frmPerson> ui;
    Person person; ///< respondentid 0: none is chosen
    std::vector<PersonPart> parts;
    bool isProtocolShown = false; ///< of an erasure, until another respondent is chosen
};
