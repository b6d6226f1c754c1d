// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmSignIn.h"

#include "core/base/gblGlobal.h"
#include "ui_frmSignIn.h"

using namespace Qt::StringLiterals;

frmSignIn::frmSignIn() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmSignIn>()) {
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmSignIn::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSignIn::~frmSignIn() = default;

void frmSignIn::onLoad() {
    toCenterForm(*this);
    ui->lblRefusal->hide();
    ui->txtPassword->setFocus();
}

bool frmSignIn::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdOK) || DefaultForm::onKeyDown(key);
}

std::optional<EnteredPassword> frmSignIn::ask(const StoreChoice& choice, const QString& refusal) {
    entered.reset();
    const Ui::frmSignIn& shown = *instance().ui;
    shown.lblStore->setText(
        u"User '%1', database '%2', server '%3'"_s.arg(choice.user, choice.database, choice.server));
    shown.lblRefusal->setText(refusal);
    shown.lblRefusal->setVisible(!refusal.isEmpty());
    instance().ShowModal();
    return entered;
}

void frmSignIn::cmdOK_Click() {
    entered = {ui->txtPassword->text(), ui->chkKeep->isChecked()};
    Unload();
}
