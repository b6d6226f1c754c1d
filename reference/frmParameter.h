// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

class QLineEdit;
namespace Ui {
class frmParameter;
}

class frmParameter : public forms::DefaultForm<frmParameter> {
    Q_OBJECT

public:
    ~frmParameter() override;
    QLineEdit* txtParameterDtls() const;

private:
    friend class DefaultForm<frmParameter>;
    frmParameter();
    std::unique_ptr<Ui::frmParameter> ui;
};
