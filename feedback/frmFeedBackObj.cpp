// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/frmFeedBackObj.h"

#include "ui_frmFeedBackObj.h"

frmFeedBackObj::frmFeedBackObj() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmFeedBackObj>()) {
    ui->setupUi(this);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmFeedBackObj::~frmFeedBackObj() = default;

QLineEdit* frmFeedBackObj::txtDtls() const {
    return ui->txtDtls;
}
