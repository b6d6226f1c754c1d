// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmSelectSurvey.h"

#include "ui_frmSelectSurvey.h"

frmSelectSurvey::frmSelectSurvey()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSelectSurvey>()) {
    ui->setupUi(this);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSelectSurvey::~frmSelectSurvey() = default;
