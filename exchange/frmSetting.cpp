// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmSetting.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/setting.h"
#include "ui_frmSetting.h"

using namespace Qt::StringLiterals;

frmSetting::frmSetting() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSetting>()) {
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, [this] {
        toSaveSetting();
        Unload();
    });
}

frmSetting::~frmSetting() = default;

void frmSetting::onLoad() {
    toCenterForm(*this);
    asRead = toGetSetting();
    QRadioButton* chosen = asRead ? ui->opnUserDefined : ui->opnSystemDefined;
    chosen->setChecked(true);
    chosen->setFocus(); // the arrow keys move on from there
}

void frmSetting::toSaveSetting() {
    guarded([this] {
        if (ui->opnUserDefined->isChecked() == asRead)
            return;
        ado::Recordset setting(u"select * from setting where setting='UserDefine'"_s, *cnnMain,
                               ado::Recordset::Lock::Optimistic);
        setting["checkeduser"] = ui->opnUserDefined->isChecked();
        setting.Update();
        showDone(u"Setting saved"_s);
    });
}
