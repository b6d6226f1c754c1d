// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmAboutUs.h"

#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "ui_frmAboutUs.h"

#include <QIcon>

using namespace Qt::StringLiterals;

frmAboutUs::frmAboutUs() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmAboutUs>()) {
    ui->setupUi(this);
    ui->Picture1->setPixmap(picture(u"splash"_s).pixmap(420, 130));
    ui->imgLogo->setPixmap(picture(u"logo"_s).pixmap(56, 56));
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmAboutUs::~frmAboutUs() = default;

void frmAboutUs::onLoad() {
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 2);
    ui->lblCompanyname->setText(strCompanyName);
    ui->lblCompanyname->setVisible(!strCompanyName.isEmpty());
}
