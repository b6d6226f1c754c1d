// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmParameter.h"

#include "ui_frmParameter.h"

frmParameter::frmParameter() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmParameter>()) {
    ui->setupUi(this);
}
frmParameter::~frmParameter() = default;
QLineEdit* frmParameter::txtParameterDtls() const {
    return ui->txtParameterDtls;
}
