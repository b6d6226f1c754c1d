// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSatisfactionIndex.h"

#include "ui_frmSatisfactionIndex.h"

frmSatisfactionIndex::frmSatisfactionIndex()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSatisfactionIndex>()) {
    ui->setupUi(this);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSatisfactionIndex::~frmSatisfactionIndex() = default;
